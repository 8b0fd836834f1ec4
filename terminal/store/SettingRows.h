#pragma once

#include "platform/ConfigStore.h"
#include "terminal/store/SettingKey.h"
#include "terminal/store/ValueCodec.h"

#include <functional>
#include <optional>
#include <string>

namespace ta::terminal {

/// Which row each operation of the configuration store reads or writes. What a row is kept in is
/// the derived class's business.
///
/// Loads give false, and leave their output as it was, when the row is missing or its bytes are
/// not such a value. Saves give true, except when memory runs out.
class SettingRows : public SMXCfgIO2 {
public:
    using K = SettingKind;
    using Names = std::vector<CString>;
    using Studies = std::vector<std::int32_t>;

    bool GetTAGroupMaxCount(int& count) override { return Load({K::GroupMaxCount}, count); }
    /// The terminal's side of GetTAGroupMaxCount.
    bool SetTAGroupMaxCount(int count) { return Save({K::GroupMaxCount}, count); }

    // clang-format off
    bool LoadTAGroupNameList(Names& v) override { return Load({K::GroupNames}, v); }
    bool SaveTAGroupNameList(const Names& v) override { return Save({K::GroupNames}, v); }
    bool LoadTAGroupStudyList(unsigned i, const CString& key, Studies& v) override { return Load({K::StudyList, i, {}, key}, v); }
    bool SaveTAGroupStudyList(unsigned i, const CString& key, const Studies& v) override { return Save({K::StudyList, i, {}, key}, v); }
    bool LoadTAGroupUniNum(unsigned i, int& v) override { return Load({K::UniNum, i}, v); }
    bool SaveTAGroupUniNum(unsigned i, int v) override { return Save({K::UniNum, i}, v); }
    bool LoadTAStudyParamSetting(unsigned i, Names& v) override { return Load({K::ParamStrings, i}, v); }
    bool SaveTAStudyParamSetting(unsigned i, const Names& v) override { return Save({K::ParamStrings, i}, v); }
    bool LoadTAStudyShapeSetting(unsigned i, Names& v) override { return Load({K::ShapeStrings, i}, v); }
    bool SaveTAStudyShapeSetting(unsigned i, const Names& v) override { return Save({K::ShapeStrings, i}, v); }
    bool LoadTAStudyShowCount(unsigned i, int& v) override { return Load({K::ShowCount, i}, v); }
    bool SaveTAStudyShowCount(unsigned i, int v) override { return Save({K::ShowCount, i}, v); }
    bool LoadTATechWndShowKey(unsigned i, int& v) override { return Load({K::TechWndShowKey, i}, v); }
    bool SaveTATechWndShowKey(unsigned i, int v) override { return Save({K::TechWndShowKey, i}, v); }

    bool LoadTASettingScalePos(unsigned i, std::uint32_t& v) override { return Load({K::ScalePos, i}, v); }
    bool SaveTASettingScalePos(unsigned i, std::uint32_t v) override { return Save({K::ScalePos, i}, v); }
    bool LoadTASettingChartGrid(unsigned i, bool& v) override { return Load({K::ChartGrid, i}, v); }
    bool SaveTASettingChartGrid(unsigned i, bool v) override { return Save({K::ChartGrid, i}, v); }
    bool LoadTASettingCursor(unsigned i, bool& v) override { return Load({K::Cursor, i}, v); }
    bool SaveTASettingCursor(unsigned i, bool v) override { return Save({K::Cursor, i}, v); }
    bool LoadTASettingCursorOld(unsigned i, bool& v) override { return Load({K::CursorOld, i}, v); }
    bool SaveTASettingCursorOld(unsigned i, bool v) override { return Save({K::CursorOld, i}, v); }
    bool LoadTASettingShowTAInfo(unsigned i, bool& v) override { return Load({K::ShowTAInfo, i}, v); }
    bool SaveTASettingShowTAInfo(unsigned i, bool v) override { return Save({K::ShowTAInfo, i}, v); }
    bool LoadTASettingCrossLine(unsigned i, bool& v) override { return Load({K::CrossLine, i}, v); }
    bool SaveTASettingCrossLine(unsigned i, bool v) override { return Save({K::CrossLine, i}, v); }
    bool LoadTASettingLowIdx(unsigned i, bool& v) override { return Load({K::LowIdx, i}, v); }
    bool SaveTASettingLowIdx(unsigned i, bool v) override { return Save({K::LowIdx, i}, v); }
    bool LoadTASettingHighLow(unsigned i, bool& v) override { return Load({K::HighLow, i}, v); }
    bool SaveTASettingHighLow(unsigned i, bool v) override { return Save({K::HighLow, i}, v); }
    bool LoadTASettingCDP(unsigned i, bool& v) override { return Load({K::CDP, i}, v); }
    bool SaveTASettingCDP(unsigned i, bool v) override { return Save({K::CDP, i}, v); }
    bool LoadTASettingCursorLineLockMode(unsigned i, std::uint32_t& v) override { return Load({K::CursorLineLockMode, i}, v); }
    bool SaveTASettingCursorLineLockMode(unsigned i, std::uint32_t v) override { return Save({K::CursorLineLockMode, i}, v); }
    bool LoadTASettingCursorMoveStyle(unsigned i, std::uint32_t& v) override { return Load({K::CursorMoveStyle, i}, v); }
    bool SaveTASettingCursorMoveStyle(unsigned i, std::uint32_t v) override { return Save({K::CursorMoveStyle, i}, v); }
    // clang-format on

    using ViewGroups = std::vector<std::pair<CString, int>>;

    bool GetTAViewGroupSetting(int layout, ViewGroups& views) override {
        return Load({K::ViewGroups, layout}, views);
    }
    /// The terminal's side of GetTAViewGroupSetting; no views remove the row.
    bool SetTAViewGroupSetting(int layout, const ViewGroups& views);

    /// The classes that have lines, in byte order.
    bool LoadTATrendLineSettingClass(std::vector<CString>& classes) override;
    /// The symbols of the class that have lines, in byte order.
    bool LoadTATrendLineSettingSymbols(const CString& chartClass,
                                       std::vector<CString>& symbolKeys) override;
    bool LoadTATrendLine(const CString& chartClass, const CString& symbolKey,
                         TrendLinesByType& lines) override;
    bool SaveTATrendLine(const CString& chartClass, const CString& symbolKey,
                         const TrendLinesByType& lines) override;
    bool RemoveAllTrendLineData(const CString& chartClass) override;
    bool LoadTATrendLineSymbolUpdTime(const CString& chartClass, unsigned char service,
                                      const CString& symbol, CString& date) override;
    bool SaveTATrendLineSymbolUpdTime(const CString& chartClass, unsigned char service,
                                      const CString& symbol, const CString& date) override;

protected:
    /// The bytes of a row, valid until the next write.
    virtual std::optional<std::string_view> FindRow(const SettingKey& key) const = 0;
    virtual void PutRow(const SettingKey& key, std::string_view value) = 0;
    virtual void RemoveRow(const SettingKey& key) = 0;
    /// Removes every row of the trend-line kinds whose name is exactly this class.
    virtual void RemoveClassRows(const CString& chartClass) = 0;
    /// Calls `visit` with every row, in key order.
    virtual void ForEachRow(const std::function<void(const SettingRow&)>& visit) const = 0;

    /// Runs `operation`; false instead of an exception.
    template <typename Operation>
    static bool Guarded(Operation operation) noexcept {
        try {
            return operation();
        } catch (...) {
            return false;
        }
    }

private:
    template <typename T>
    bool Load(const SettingKey& key, T& out) const {
        return Guarded([&] {
            const auto bytes = FindRow(key);
            return bytes && DecodeValue(*bytes, out);
        });
    }
    template <typename T>
    bool Save(const SettingKey& key, const T& value) {
        return Guarded([&] {
            ValueWriter writer;
            writer.Put(value);
            PutRow(key, writer.Bytes());
            return true;
        });
    }
};

}  // namespace ta::terminal
