#pragma once

#include "platform/ConfigStore.h"

#include <map>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

// The values of a group: operation, type, and the field of MemoryConfigStore that keeps them.
#define TA_TEST_GROUP_VALUES(M)                                       \
    M(TAGroupUniNum, int, uniNums)                                    \
    M(TAStudyShowCount, int, showCounts)                              \
    M(TATechWndShowKey, int, wndShowKeys)                             \
    M(TASettingScalePos, std::uint32_t, scalePos)                     \
    M(TASettingChartGrid, bool, chartGrid)                            \
    M(TASettingCursor, bool, cursor)                                  \
    M(TASettingCursorOld, bool, cursorOld)                            \
    M(TASettingShowTAInfo, bool, showTAInfo)                          \
    M(TASettingCrossLine, bool, crossLine)                            \
    M(TASettingLowIdx, bool, lowIdx)                                  \
    M(TASettingHighLow, bool, highLow)                                \
    M(TASettingCDP, bool, cdp)                                        \
    M(TASettingCursorLineLockMode, std::uint32_t, cursorLineLockMode) \
    M(TASettingCursorMoveStyle, std::uint32_t, cursorMoveStyle)

namespace ta::test {

/// A configuration store in plain fields (with those of the table above), which tests preset and
/// look at. A load of something that is not there fails and leaves its output as it was. Writes are
/// there at once; PackFile only counts.
class MemoryConfigStore : public SMXCfgIO2 {
public:
    template <class T>
    using ByGroup = std::map<unsigned, T>;
    using Strings = std::vector<CString>;
    using Studies = std::vector<std::int32_t>;
    using Views = std::vector<std::pair<CString, int>>;

    bool reloadFlag = false;
    int packCount = 0;
    std::optional<int> maxCount;

    std::optional<Strings> names;
    /// By group index and pane key ("StudyTypeLogKey01").
    std::map<std::pair<unsigned, CString>, Studies> studyLists;
    std::optional<Strings> paramDefaults;
    std::optional<Strings> shapeDefaults;
    ByGroup<Strings> params;
    ByGroup<Strings> shapes;

    /// By layout number.
    std::map<int, Views> viewGroups;
    /// By chart class and symbol key.
    std::map<CString, std::map<CString, TrendLinesByType>> trendLines;
    /// By chart class, service and symbol.
    std::map<std::tuple<CString, unsigned char, CString>, CString> trendLineDates;

// The load and the save of one item of a group.
#define TA_TEST_ITEM(Operation, Value, Saved, field)      \
    bool Load##Operation(unsigned i, Value& v) override { \
        return Find(field, i, v);                         \
    }                                                     \
    bool Save##Operation(unsigned i, Saved v) override {  \
        return Set(field[i], v);                          \
    }
    TA_TEST_ITEM(TAStudyParamSetting, Strings, const Strings&, params)
    TA_TEST_ITEM(TAStudyShapeSetting, Strings, const Strings&, shapes)
#define TA_TEST_VALUE(Operation, Value, field) \
    ByGroup<Value> field;                      \
    TA_TEST_ITEM(Operation, Value, Value, field)
    TA_TEST_GROUP_VALUES(TA_TEST_VALUE)
#undef TA_TEST_VALUE
#undef TA_TEST_ITEM

    bool GetTASettingReloadType(bool& reload) override {
        return Set(reload, reloadFlag);
    }
    bool SetTASettingReloadType(bool reload) override {
        return Set(reloadFlag, reload);
    }
    bool GetTAGroupMaxCount(int& count) override {
        return Take(maxCount, count);
    }
    bool LoadTAGroupNameList(Strings& out) override {
        return Take(names, out);
    }
    bool SaveTAGroupNameList(const Strings& in) override {
        return Set(names, in);
    }
    bool LoadTAStudyParamDefaultSetting(Strings& out) override {
        return Take(paramDefaults, out);
    }
    bool LoadTAStudyShapeDefaultSetting(Strings& out) override {
        return Take(shapeDefaults, out);
    }
    bool LoadTAGroupStudyList(unsigned index, const CString& key, Studies& studies) override {
        return Find(studyLists, {index, key}, studies);
    }
    bool SaveTAGroupStudyList(unsigned index, const CString& key, const Studies& in) override {
        return Set(studyLists[{index, key}], in);
    }
    bool GetTAViewGroupSetting(int layout, Views& views) override {
        return Find(viewGroups, layout, views);
    }
    bool LoadTATrendLineSettingClass(Strings& classes) override {
        return TakeKeys(trendLines, classes);
    }
    bool LoadTATrendLineSettingSymbols(const CString& chartClass, Strings& symbolKeys) override {
        return trendLines.contains(chartClass) && TakeKeys(trendLines[chartClass], symbolKeys);
    }
    bool LoadTATrendLine(const CString& chartClass, const CString& symbolKey,
                         TrendLinesByType& lines) override {
        return trendLines.contains(chartClass) && Find(trendLines[chartClass], symbolKey, lines);
    }
    bool SaveTATrendLine(const CString& chartClass, const CString& symbolKey,
                         const TrendLinesByType& lines) override;
    bool RemoveAllTrendLineData(const CString& chartClass) override {
        trendLines.erase(chartClass);
        return true;
    }
    bool LoadTATrendLineSymbolUpdTime(const CString& chartClass, unsigned char service,
                                      const CString& symbol, CString& date) override {
        return Find(trendLineDates, {chartClass, service, symbol}, date);
    }
    bool SaveTATrendLineSymbolUpdTime(const CString& chartClass, unsigned char service,
                                      const CString& symbol, const CString& date) override {
        return Set(trendLineDates[{chartClass, service, symbol}], date);
    }
    void PackFile() override {
        ++packCount;
    }

private:
    template <class To, class From>
    static bool Set(To& to, const From& from) {
        to = from;
        return true;
    }
    template <class T>
    static bool Take(const std::optional<T>& stored, T& value) {
        return stored.has_value() && Set(value, *stored);
    }
    template <class Map>
    static bool Find(const Map& map, const typename Map::key_type& key,
                     typename Map::mapped_type& value) {
        const auto found = map.find(key);
        return found != map.end() && Set(value, found->second);
    }
    template <class Map>
    static bool TakeKeys(const Map& map, Strings& keys) {
        if (map.empty()) {
            return false;
        }
        keys.clear();
        for (const auto& [key, value] : map) {
            keys.push_back(key);
        }
        return true;
    }
};

}  // namespace ta::test
