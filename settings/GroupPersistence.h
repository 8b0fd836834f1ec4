#pragma once

#include "settings/GroupTable.h"

#include <functional>
#include <optional>
#include <vector>

class SMXCfgIO2;

namespace ta::settings {

/// The strings that new groups and groups without stored strings get.
struct DefaultStrings {
    std::vector<CString> params;
    std::vector<CString> shapes;
};

/// The key of a pane's study list, pane 1 to 10: "StudyTypeLogKey01" and so on.
const CString& StudyListKey(int pane);

/// The study lists that are stored for a group: of each pane the first 8 that `usable` accepts; the
/// default lists when none is left in pane 1.
StudyLists LoadGroupStudyList(SMXCfgIO2& store, unsigned index,
                              const std::function<bool(StudyType)>& usable);

// Loads of one kind of setting for all listed groups. What is not stored keeps its default.
void LoadParamSetting(SMXCfgIO2& store, GroupTable& groups, DefaultStrings& defaults);
void LoadShapeSetting(SMXCfgIO2& store, GroupTable& groups, DefaultStrings& defaults);
void LoadStudyShowCount(SMXCfgIO2& store, GroupTable& groups);
void LoadTechWndShowKey(SMXCfgIO2& store, GroupTable& groups);
void LoadTACommonSetting(SMXCfgIO2& store, GroupTable& groups);

// Saves of one group under its index, which the caller has looked up by the group's name: the 10
// study lists of 8 slots, the strings as the draw info holds them (nothing without a draw info),
// the panes shown, the layout key.
void SaveGroupSettingByName(SMXCfgIO2& store, unsigned index, const ST_TA_DRAWINFO& group);
void SaveParamSettingByName(SMXCfgIO2& store, unsigned index, const ST_TA_DRAWINFO& group);
void SaveShapeSettingByName(SMXCfgIO2& store, unsigned index, const ST_TA_DRAWINFO& group);
void SaveStudyShowCount(SMXCfgIO2& store, unsigned index, const ST_TA_DRAWINFO& group);
void SaveTechWndShowKey(SMXCfgIO2& store, unsigned index, const ST_TA_DRAWINFO& group);
/// The eleven common options and then the number; nothing without a draw info.
void SaveTACommonSetting(SMXCfgIO2& store, unsigned index, const ST_TA_DRAWINFO& group);

/// Hands the default strings to the group's draw info, as a replacement, and saves them under
/// `index`, when there is a store and the group has a place in the list. Nothing happens without
/// default strings or without draw info.
void RestoreTAStudyParamToDefault(SMXCfgIO2* store, std::optional<unsigned> index,
                                  ST_TA_DRAWINFO& group, const DefaultStrings& defaults);
void RestoreTAStudyShapeToDefault(SMXCfgIO2* store, std::optional<unsigned> index,
                                  ST_TA_DRAWINFO& group, const DefaultStrings& defaults);

/// Saves all that is stored of one group, in the order of the saves above.
void SaveGroup(SMXCfgIO2& store, unsigned index, const ST_TA_DRAWINFO& group);

}  // namespace ta::settings
