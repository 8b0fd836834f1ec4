#include "settings/GroupPersistence.h"

#include "platform/ConfigStore.h"
#include "platform/DrawInfo.h"
#include "settings/CommonOptions.h"
#include "settings/StudyLists.h"

#include <fmt/printf.h>

namespace ta::settings {
namespace {

/// The two kinds of strings that a draw info holds, and everything that differs between them.
struct StringKind {
    std::vector<CString> DefaultStrings::*defaults;
    bool (SMXCfgIO2::*loadDefaults)(std::vector<CString>&);
    bool (SMXCfgIO2::*load)(unsigned, std::vector<CString>&);
    bool (SMXCfgIO2::*save)(unsigned, const std::vector<CString>&);
    void (ChartBaseDrawInfo::*put)(const std::vector<CString>&, int);
    void (ChartBaseDrawInfo::*get)(std::vector<CString>&) const;
};

constexpr StringKind kParams{&DefaultStrings::params,
                             &SMXCfgIO2::LoadTAStudyParamDefaultSetting,
                             &SMXCfgIO2::LoadTAStudyParamSetting,
                             &SMXCfgIO2::SaveTAStudyParamSetting,
                             &ChartBaseDrawInfo::vVecCstring2MapParam,
                             &ChartBaseDrawInfo::vMapParam2VecCstring};
constexpr StringKind kShapes{&DefaultStrings::shapes,
                             &SMXCfgIO2::LoadTAStudyShapeDefaultSetting,
                             &SMXCfgIO2::LoadTAStudyShapeSetting,
                             &SMXCfgIO2::SaveTAStudyShapeSetting,
                             &ChartBaseDrawInfo::vVecCstring2MapShapeParam,
                             &ChartBaseDrawInfo::vMapShapeParam2VecCstring};

/// Calls visit(index, record) for each listed group, in list order.
template <class Visit>
void ForEachListed(GroupTable& groups, const Visit& visit) {
    for (unsigned index = 0; index < groups.Names().size(); ++index) {
        if (ST_TA_DRAWINFO* group = groups.Find(groups.Names()[index])) {
            visit(index, *group);
        }
    }
}

void LoadStrings(SMXCfgIO2& store, GroupTable& groups, DefaultStrings& defaults,
                 const StringKind& kind) {
    std::vector<CString>& defaultStrings = defaults.*kind.defaults;
    (store.*kind.loadDefaults)(defaultStrings);
    std::vector<CString> strings;  // one for all groups, whose memory serves again
    ForEachListed(groups, [&](unsigned index, ST_TA_DRAWINFO& group) {
        if (group.pDrawInfo == nullptr) {
            return;
        }
        const bool stored = (store.*kind.load)(index, strings);
        (group.pDrawInfo->*kind.put)(stored ? strings : defaultStrings, kDrawInfoLoad);
    });
}

void SaveStrings(SMXCfgIO2& store, unsigned index, const ST_TA_DRAWINFO& group,
                 const StringKind& kind) {
    if (group.pDrawInfo == nullptr) {
        return;
    }
    std::vector<CString> strings;
    (group.pDrawInfo->*kind.get)(strings);
    (store.*kind.save)(index, strings);
}

void RestoreStrings(SMXCfgIO2* store, std::optional<unsigned> index, ST_TA_DRAWINFO& group,
                    const DefaultStrings& defaults, const StringKind& kind) {
    const std::vector<CString>& strings = defaults.*kind.defaults;
    if (strings.empty() || group.pDrawInfo == nullptr) {
        return;
    }
    (group.pDrawInfo->*kind.put)(strings, kDrawInfoReplace);
    if (store != nullptr && index) {
        SaveStrings(*store, *index, group, kind);
    }
}

}  // namespace

const CString& StudyListKey(int pane) {
    static const std::vector<CString> keys = [] {
        std::vector<CString> made;
        for (int number = 1; number <= kPaneCount; ++number) {
            made.push_back(fmt::sprintf("StudyTypeLogKey%02d", number));
        }
        return made;
    }();
    return keys[static_cast<std::size_t>(pane - 1)];
}

StudyLists LoadGroupStudyList(SMXCfgIO2& store, unsigned index,
                              const std::function<bool(StudyType)>& usable) {
    StudyLists lists;
    InitStudyType(lists);
    std::vector<std::int32_t> stored;
    for (int pane = 1; pane <= kPaneCount; ++pane) {
        if (store.LoadTAGroupStudyList(index, StudyListKey(pane), stored)) {
            FillPane(lists[static_cast<std::size_t>(pane - 1)], stored, usable);
        }
    }
    if (lists.front().front() == kNoStudy) {
        // The default lists take panes 1 to 4; what the others loaded stays.
        const StudyLists& defaults = DefaultStudyLists();
        for (std::size_t pane = 0; pane < lists.size(); ++pane) {
            if (defaults[pane].front() != kNoStudy) {
                lists[pane] = defaults[pane];
            }
        }
    }
    return lists;
}

void LoadParamSetting(SMXCfgIO2& store, GroupTable& groups, DefaultStrings& defaults) {
    LoadStrings(store, groups, defaults, kParams);
}

void LoadShapeSetting(SMXCfgIO2& store, GroupTable& groups, DefaultStrings& defaults) {
    LoadStrings(store, groups, defaults, kShapes);
}

void LoadStudyShowCount(SMXCfgIO2& store, GroupTable& groups) {
    ForEachListed(groups, [&](unsigned index, ST_TA_DRAWINFO& group) {
        store.LoadTAStudyShowCount(index, group.iStudyShowCount);
    });
}

void LoadTechWndShowKey(SMXCfgIO2& store, GroupTable& groups) {
    ForEachListed(groups, [&](unsigned index, ST_TA_DRAWINFO& group) {
        store.LoadTATechWndShowKey(index, group.iTechWndShowKey);
    });
}

void LoadTACommonSetting(SMXCfgIO2& store, GroupTable& groups) {
    ForEachListed(groups, [&](unsigned index, ST_TA_DRAWINFO& group) {
        if (group.pDrawInfo == nullptr) {
            return;
        }
        CommonProp& properties = group.pDrawInfo->CommonProperty();
        for (const AnyCommonOption& any : kCommonOptions) {
            std::visit(
                [&](const auto& option) { (store.*option.load)(index, properties.*option.field); },
                any);
        }
    });
}

void SaveGroupSettingByName(SMXCfgIO2& store, unsigned index, const ST_TA_DRAWINFO& group) {
    for (int pane = 1; pane <= kPaneCount; ++pane) {
        store.SaveTAGroupStudyList(index, StudyListKey(pane),
                                   group.vStudyList[static_cast<std::size_t>(pane - 1)]);
    }
}

void SaveParamSettingByName(SMXCfgIO2& store, unsigned index, const ST_TA_DRAWINFO& group) {
    SaveStrings(store, index, group, kParams);
}

void SaveShapeSettingByName(SMXCfgIO2& store, unsigned index, const ST_TA_DRAWINFO& group) {
    SaveStrings(store, index, group, kShapes);
}

void SaveStudyShowCount(SMXCfgIO2& store, unsigned index, const ST_TA_DRAWINFO& group) {
    store.SaveTAStudyShowCount(index, group.iStudyShowCount);
}

void SaveTechWndShowKey(SMXCfgIO2& store, unsigned index, const ST_TA_DRAWINFO& group) {
    store.SaveTATechWndShowKey(index, group.iTechWndShowKey);
}

void SaveTACommonSetting(SMXCfgIO2& store, unsigned index, const ST_TA_DRAWINFO& group) {
    if (group.pDrawInfo == nullptr) {
        return;
    }
    const CommonProp& properties = group.pDrawInfo->CommonProperty();
    for (const AnyCommonOption& any : kCommonOptions) {
        std::visit(
            [&](const auto& option) { (store.*option.save)(index, properties.*option.field); },
            any);
    }
    store.SaveTAGroupUniNum(index, group.iUniNum);
}

void RestoreTAStudyParamToDefault(SMXCfgIO2* store, std::optional<unsigned> index,
                                  ST_TA_DRAWINFO& group, const DefaultStrings& defaults) {
    RestoreStrings(store, index, group, defaults, kParams);
}

void RestoreTAStudyShapeToDefault(SMXCfgIO2* store, std::optional<unsigned> index,
                                  ST_TA_DRAWINFO& group, const DefaultStrings& defaults) {
    RestoreStrings(store, index, group, defaults, kShapes);
}

void SaveGroup(SMXCfgIO2& store, unsigned index, const ST_TA_DRAWINFO& group) {
    for (const auto save : {SaveGroupSettingByName, SaveParamSettingByName, SaveShapeSettingByName,
                            SaveStudyShowCount, SaveTechWndShowKey, SaveTACommonSetting}) {
        save(store, index, group);
    }
}

}  // namespace ta::settings
