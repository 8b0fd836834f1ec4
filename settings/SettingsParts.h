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

/// What stands behind the repository's header.
struct CTaSettingHandle::Parts {
    ta::settings::Capabilities capabilities;
    ta::settings::TrendLineLimits limits;
    ta::settings::GroupTable groups;
    ta::settings::DefaultStrings defaults;
    ta::settings::TrendLineTable trendLines;
    ta::settings::ChartViewRegistry views;
    int reloadHolds = 0;

    static SMXCfgIO2* Store();
    int GetFreeUniNum(int maxGroupCount) const;
    bool IsStudyUsable(StudyType type) const;
    void LoadGroupSetting(int maxGroupCount);
};
