#pragma once

#include "settings/ChartViewRegistry.h"
#include "settings/GroupPersistence.h"
#include "settings/GroupTable.h"
#include "settings/TaSettingHandle.h"
#include "settings/TrendLineTable.h"

namespace ta::settings {

/// What the user may use, asked once.
struct Capabilities {
    bool groups = true;
    bool advancedStudies = true;
    bool secondData = true;
};

/// The most trend lines that the user may keep; negative: no limit.
struct TrendLineLimits {
    int inAll = -1;
    int perSymbol = -1;
};

/// What the entitlement service says; without one everything is allowed.
Capabilities AskCapabilities();
/// Without a service, the limits given.
TrendLineLimits AskTrendLineLimits(TrendLineLimits limits);

}  // namespace ta::settings

/// What stands behind the repository's header. Nothing in here looks for a reload: the header's
/// operations have done that.
struct CTaSettingHandle::Parts {
    ta::settings::Capabilities capabilities;
    ta::settings::TrendLineLimits limits;  ///< as the last load found them
    ta::settings::GroupTable groups;
    ta::settings::DefaultStrings defaults;
    ta::settings::TrendLineTable trendLines;
    ta::settings::ChartViewRegistry views;
    int reloadHolds = 0;   ///< how many hold reloads off
    unsigned reloads = 0;  ///< so far

    /// The configuration store, or null.
    static SMXCfgIO2* Store();
    /// The smallest free number; -1 when all ten of each possible group are taken.
    int GetFreeUniNum(int maxGroupCount) const;
    bool IsStudyUsable(StudyType type) const;
    /// Fills the list and the records, which have no objects yet.
    void LoadGroupSetting(int maxGroupCount);
    /// Puts a record with the default studies and a free number into the table, not into the list.
    ST_TA_DRAWINFO& PutNewGroup(const CString& name, CWnd& window, int maxGroupCount);
    /// Sets a field of a group's record, if there is one, and saves it by `save`, if the group has
    /// a place in the list.
    void SetAndSave(const CString& name, int ST_TA_DRAWINFO::*field, int value,
                    void (*save)(SMXCfgIO2&, unsigned, const ST_TA_DRAWINFO&));
    /// Writes the list, if there is a store.
    void SaveGroupNameList() const;
};
