#pragma once

#include "platform/ConfigStore.h"

#include <any>
#include <map>

/// A configuration store that keeps every value in memory, under the name of the setting and the
/// index of the group. A real one writes a file in PackFile. This program has no trend lines and
/// no stored window layouts, so those operations give and take nothing.
class MemoryStore final : public SMXCfgIO2 {
public:
    using Strings = std::vector<CString>;
    using Studies = std::vector<std::int32_t>;
    using Number = std::uint32_t;

    /// What a user of this program starts with.
    explicit MemoryStore(const Strings& groupNames) { SaveTAGroupNameList(groupNames); }

    bool GetTASettingReloadType(bool& reload) override {
        reload = m_reload;
        return true;
    }
    bool SetTASettingReloadType(bool reload) override {
        m_reload = reload;
        return true;
    }
    bool GetTAGroupMaxCount(int& count) override {
        count = 20;
        return true;
    }

    bool LoadTAGroupNameList(Strings& names) override { return Load("names", 0, names); }
    bool SaveTAGroupNameList(const Strings& names) override { return Save("names", 0, names); }
    bool LoadTAGroupStudyList(unsigned i, const CString& key, Studies& studies) override {
        return Load(key, i, studies);
    }
    bool SaveTAGroupStudyList(unsigned i, const CString& key, const Studies& studies) override {
        return Save(key, i, studies);
    }
    bool LoadTAGroupUniNum(unsigned i, int& v) override { return Load("uniNum", i, v); }
    bool SaveTAGroupUniNum(unsigned i, int v) override { return Save("uniNum", i, v); }

    bool LoadTAStudyParamDefaultSetting(Strings&) override { return false; }
    bool LoadTAStudyShapeDefaultSetting(Strings&) override { return false; }
    bool LoadTAStudyParamSetting(unsigned i, Strings& v) override { return Load("params", i, v); }
    bool SaveTAStudyParamSetting(unsigned i, const Strings& v) override {
        return Save("params", i, v);
    }
    bool LoadTAStudyShapeSetting(unsigned i, Strings& v) override { return Load("shapes", i, v); }
    bool SaveTAStudyShapeSetting(unsigned i, const Strings& v) override {
        return Save("shapes", i, v);
    }
    bool LoadTAStudyShowCount(unsigned i, int& v) override { return Load("panes", i, v); }
    bool SaveTAStudyShowCount(unsigned i, int v) override { return Save("panes", i, v); }
    bool LoadTATechWndShowKey(unsigned i, int& v) override { return Load("layout", i, v); }
    bool SaveTATechWndShowKey(unsigned i, int v) override { return Save("layout", i, v); }

    bool LoadTASettingScalePos(unsigned i, Number& v) override { return Load("scale", i, v); }
    bool SaveTASettingScalePos(unsigned i, Number v) override { return Save("scale", i, v); }
    bool LoadTASettingChartGrid(unsigned i, bool& v) override { return Load("grid", i, v); }
    bool SaveTASettingChartGrid(unsigned i, bool v) override { return Save("grid", i, v); }
    bool LoadTASettingCursor(unsigned i, bool& v) override { return Load("cursor", i, v); }
    bool SaveTASettingCursor(unsigned i, bool v) override { return Save("cursor", i, v); }
    bool LoadTASettingCursorOld(unsigned i, bool& v) override { return Load("oldCursor", i, v); }
    bool SaveTASettingCursorOld(unsigned i, bool v) override { return Save("oldCursor", i, v); }
    bool LoadTASettingShowTAInfo(unsigned i, bool& v) override { return Load("info", i, v); }
    bool SaveTASettingShowTAInfo(unsigned i, bool v) override { return Save("info", i, v); }
    bool LoadTASettingCrossLine(unsigned i, bool& v) override { return Load("cross", i, v); }
    bool SaveTASettingCrossLine(unsigned i, bool v) override { return Save("cross", i, v); }
    bool LoadTASettingLowIdx(unsigned i, bool& v) override { return Load("lowIdx", i, v); }
    bool SaveTASettingLowIdx(unsigned i, bool v) override { return Save("lowIdx", i, v); }
    bool LoadTASettingHighLow(unsigned i, bool& v) override { return Load("highLow", i, v); }
    bool SaveTASettingHighLow(unsigned i, bool v) override { return Save("highLow", i, v); }
    bool LoadTASettingCDP(unsigned i, bool& v) override { return Load("cdp", i, v); }
    bool SaveTASettingCDP(unsigned i, bool v) override { return Save("cdp", i, v); }
    bool LoadTASettingCursorLineLockMode(unsigned i, Number& v) override {
        return Load("lock", i, v);
    }
    bool SaveTASettingCursorLineLockMode(unsigned i, Number v) override {
        return Save("lock", i, v);
    }
    bool LoadTASettingCursorMoveStyle(unsigned i, Number& v) override { return Load("move", i, v); }
    bool SaveTASettingCursorMoveStyle(unsigned i, Number v) override { return Save("move", i, v); }

    bool GetTAViewGroupSetting(int, std::vector<std::pair<CString, int>>&) override {
        return false;
    }

    bool LoadTATrendLineSettingClass(Strings&) override { return false; }
    bool LoadTATrendLineSettingSymbols(const CString&, Strings&) override { return false; }
    bool LoadTATrendLine(const CString&, const CString&, TrendLinesByType&) override {
        return false;
    }
    bool SaveTATrendLine(const CString&, const CString&, const TrendLinesByType&) override {
        return false;
    }
    bool RemoveAllTrendLineData(const CString&) override { return false; }
    bool LoadTATrendLineSymbolUpdTime(const CString&, unsigned char, const CString&,
                                      CString&) override {
        return false;
    }
    bool SaveTATrendLineSymbolUpdTime(const CString&, unsigned char, const CString&,
                                      const CString&) override {
        return false;
    }

    void PackFile() override { ++m_packs; }
    int Packs() const { return m_packs; }

private:
    template <class Value>
    bool Load(const CString& setting, unsigned index, Value& value) const {
        const auto found = m_values.find({setting, index});
        if (found == m_values.end()) {
            return false;
        }
        value = std::any_cast<Value>(found->second);
        return true;
    }

    template <class Value>
    bool Save(const CString& setting, unsigned index, const Value& value) {
        m_values[{setting, index}] = value;
        return true;
    }

    std::map<std::pair<CString, unsigned>, std::any> m_values;
    bool m_reload = false;
    int m_packs = 0;
};
