#pragma once

#include "platform/ConfigStore.h"

#include <fmt/format.h>

#include <cstdint>
#include <vector>

/// Full groups for measuring: every pane filled, strings for every study, all options set.
namespace ta::bench {

struct BenchGroup {
    CString name;
    int uniNum = 0;
    std::vector<std::vector<std::int32_t>> studies;  ///< 10 panes of 8
    std::vector<CString> paramStrings;               ///< one per study
    std::vector<CString> shapeStrings;
};

/// `variant` changes every value, so that a store cannot leave a row out as unchanged.
inline std::vector<BenchGroup> MakeGroups(int count, int variant) {
    constexpr int kStudies = 24;
    std::vector<BenchGroup> groups;
    for (int i = 0; i < count; ++i) {
        BenchGroup group;
        group.name = fmt::format("group {} of variant {}", i, variant);
        group.uniNum = i + 50 * variant;
        for (int pane = 0; pane < kPaneCount; ++pane) {
            group.studies.emplace_back(kSlotsPerPane, 4 + pane + variant);
        }
        for (int study = 0; study < kStudies; ++study) {
            group.paramStrings.push_back(fmt::format("{};5;10;20;60;{};{}", study, i, variant));
            group.shapeStrings.push_back(
                fmt::format("{};ff0000,1,0,1;00ff00,2,0,1;0000ff,1,2,{};{}", study, variant, i));
        }
        groups.push_back(std::move(group));
    }
    return groups;
}

/// The keys of the panes, "StudyTypeLogKey01" to "StudyTypeLogKey10".
inline const std::vector<CString>& PaneKeys() {
    static const std::vector<CString> keys = [] {
        std::vector<CString> made;
        for (int pane = 1; pane <= kPaneCount; ++pane) {
            made.push_back(fmt::format("StudyTypeLogKey{:02d}", pane));
        }
        return made;
    }();
    return keys;
}

/// Calls `visit(flag operation's load, its save)` for the eight options that are flags.
template <typename Visit>
void ForEachFlag(Visit visit) {
    using S = SMXCfgIO2;
    visit(&S::LoadTASettingChartGrid, &S::SaveTASettingChartGrid);
    visit(&S::LoadTASettingCursor, &S::SaveTASettingCursor);
    visit(&S::LoadTASettingCursorOld, &S::SaveTASettingCursorOld);
    visit(&S::LoadTASettingShowTAInfo, &S::SaveTASettingShowTAInfo);
    visit(&S::LoadTASettingCrossLine, &S::SaveTASettingCrossLine);
    visit(&S::LoadTASettingLowIdx, &S::SaveTASettingLowIdx);
    visit(&S::LoadTASettingHighLow, &S::SaveTASettingHighLow);
    visit(&S::LoadTASettingCDP, &S::SaveTASettingCDP);
}

/// Writes the groups as the repository does: 1 row for the names and 26 for each group. Not packed.
inline void SaveGroups(SMXCfgIO2& store, const std::vector<BenchGroup>& groups) {
    std::vector<CString> names;
    for (const BenchGroup& group : groups) {
        names.push_back(group.name);
    }
    store.SaveTAGroupNameList(names);
    for (unsigned i = 0; i < groups.size(); ++i) {
        const BenchGroup& group = groups[i];
        const auto number = static_cast<std::uint32_t>(group.uniNum);
        for (std::size_t pane = 0; pane < PaneKeys().size(); ++pane) {
            store.SaveTAGroupStudyList(i, PaneKeys()[pane], group.studies[pane]);
        }
        store.SaveTAStudyParamSetting(i, group.paramStrings);
        store.SaveTAStudyShapeSetting(i, group.shapeStrings);
        store.SaveTAStudyShowCount(i, group.uniNum);
        store.SaveTATechWndShowKey(i, group.uniNum);
        store.SaveTASettingScalePos(i, number);
        ForEachFlag([&](auto, auto save) { (store.*save)(i, number / 50 % 2 != 0); });
        store.SaveTASettingCursorLineLockMode(i, number);
        store.SaveTASettingCursorMoveStyle(i, number);
        store.SaveTAGroupUniNum(i, group.uniNum);
    }
}

/// Loads all that SaveGroups wrote, in the order in which the repository does. Returns how many
/// loads found a value.
inline int LoadGroups(SMXCfgIO2& store) {
    std::vector<CString> strings;
    std::vector<std::int32_t> studies;
    int number = 0;
    std::uint32_t option = 0;
    bool flag = false;
    int found = store.LoadTAGroupNameList(strings) ? 1 : 0;
    const auto count = static_cast<unsigned>(strings.size());
    const auto each = [&](auto load) {
        for (unsigned i = 0; i < count; ++i) {
            found += load(i) ? 1 : 0;
        }
    };
    each([&](unsigned i) {
        for (const CString& key : PaneKeys()) {
            found += store.LoadTAGroupStudyList(i, key, studies) ? 1 : 0;
        }
        return store.LoadTAGroupUniNum(i, number);
    });
    each([&](unsigned i) { return store.LoadTAStudyParamSetting(i, strings); });
    each([&](unsigned i) { return store.LoadTAStudyShapeSetting(i, strings); });
    each([&](unsigned i) { return store.LoadTAStudyShowCount(i, number); });
    each([&](unsigned i) { return store.LoadTATechWndShowKey(i, number); });
    each([&](unsigned i) {
        ForEachFlag([&](auto load, auto) { found += (store.*load)(i, flag) ? 1 : 0; });
        found += store.LoadTASettingCursorLineLockMode(i, option) ? 1 : 0;
        found += store.LoadTASettingCursorMoveStyle(i, option) ? 1 : 0;
        return store.LoadTASettingScalePos(i, option);
    });
    return found;
}

/// Rows in the store after SaveGroups, without the store's own.
constexpr int RowCount(int groups) {
    return 1 + 26 * groups;
}

}  // namespace ta::bench
