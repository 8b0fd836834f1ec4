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

// Saves of one group's strings, as its draw info holds them.
void SaveParamSetting(SMXCfgIO2& store, unsigned index, const ST_TA_DRAWINFO& group);
void SaveShapeSetting(SMXCfgIO2& store, unsigned index, const ST_TA_DRAWINFO& group);

/// Hands the default strings to the group's draw info, as a replacement, and saves them under
/// `index`, when there is a store and the group has a place in the list. Nothing happens without
/// default strings or without draw info.
void RestoreTAStudyParamToDefault(SMXCfgIO2* store, std::optional<unsigned> index,
                                  ST_TA_DRAWINFO& group, const DefaultStrings& defaults);
void RestoreTAStudyShapeToDefault(SMXCfgIO2* store, std::optional<unsigned> index,
                                  ST_TA_DRAWINFO& group, const DefaultStrings& defaults);

/// Saves all that is stored of one group: study lists, parameters, shapes, show count, window key,
/// common options, unique number, in this order. A group without draw info has no parameters,
/// shapes, options and number to save.
void SaveGroup(SMXCfgIO2& store, unsigned index, const ST_TA_DRAWINFO& group);

}  // namespace ta::settings
