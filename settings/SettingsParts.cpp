#include "settings/SettingsParts.h"

#include "platform/ConfigStore.h"
#include "platform/Entitlement.h"
#include "platform/FormatText.h"
#include "platform/QuoteInterface.h"
#include "platform/SyncInfo.h"
#include "settings/StudyLists.h"

#include <utility>

namespace ta::settings {

Capabilities AskCapabilities() {
    const CSyncInfo& session = CSyncInfo::GetSettingCFG();
    Capabilities capabilities;
    if (const EntitlementService* service = session.GetServices().entitlement) {
        capabilities.groups = service->bIsFunctionAllowed(Function::TaGroups);
        capabilities.advancedStudies = service->bIsFunctionAllowed(Function::AdvancedStudies);
        capabilities.secondData = service->bIsFunctionAllowed(Function::SecondData);
    }
    if (session.SYS_bIsTidewrightVersion()) {
        capabilities.groups = true;
    }
    return capabilities;
}

TrendLineLimits AskTrendLineLimits(TrendLineLimits limits) {
    if (const EntitlementService* service = CSyncInfo::GetSettingCFG().GetServices().entitlement) {
        service->GetTATrendLineMaxCount(limits.inAll, limits.perSymbol);
    }
    return limits;
}

}  // namespace ta::settings

using namespace ta::settings;

SMXCfgIO2* CTaSettingHandle::Parts::Store() {
    return CSyncInfo::GetSettingCFG().CApi_pGetUserCfgIO();
}

int CTaSettingHandle::Parts::GetFreeUniNum(int maxGroupCount) const {
    constexpr int kNumbersPerGroup = 10;
    return groups.FreeUniNum(kNumbersPerGroup * maxGroupCount);
}

bool CTaSettingHandle::Parts::IsStudyUsable(StudyType type) const {
    return type >= 0 && (capabilities.advancedStudies || IsDefaultStudy(type));
}

void CTaSettingHandle::Parts::LoadGroupSetting(int maxGroupCount) {
    SMXCfgIO2* store = Store();
    if (store == nullptr) {
        return;
    }
    std::vector<CString> names;
    if (capabilities.groups) {
        store->LoadTAGroupNameList(names);
    }
    if (names.empty()) {
        names.push_back(BKQuoteInterface::GetBKInterface().LangGetLangString(
            "IDS_TECHVIEW-STRING_TAGROUP_DEFAULT_NAME"));
    }
    groups.SetNames(names);
    const auto usable = [this](StudyType type) { return IsStudyUsable(type); };
    for (unsigned index = 0; index < names.size(); ++index) {
        ST_TA_DRAWINFO group;
        group.vStudyList = LoadGroupStudyList(*store, index, usable);
        if (!store->LoadTAGroupUniNum(index, group.iUniNum)) {
            group.iUniNum = GetFreeUniNum(maxGroupCount);
        }
        groups.Put(names[index], std::move(group));
    }
}

ST_TA_DRAWINFO& CTaSettingHandle::Parts::PutNewGroup(const CString& name, CWnd& window,
                                                     int maxGroupCount) {
    ST_TA_DRAWINFO record;
    MakeDrawInfo(record, window);
    MakeDataRepository(record);
    record.vStudyList = DefaultStudyLists();
    record.iUniNum = GetFreeUniNum(maxGroupCount);
    return groups.Put(name, std::move(record));
}

void CTaSettingHandle::Parts::SetAndSave(const CString& name, int ST_TA_DRAWINFO::*field, int value,
                                         void (*save)(SMXCfgIO2&, unsigned,
                                                      const ST_TA_DRAWINFO&)) {
    ST_TA_DRAWINFO* group = groups.Find(name);
    if (group == nullptr) {
        return;
    }
    group->*field = value;
    const auto index = groups.IndexOf(name);
    if (SMXCfgIO2* store = Store(); store != nullptr && index) {
        save(*store, *index, *group);
    }
}

void CTaSettingHandle::Parts::SaveGroupNameList() const {
    if (SMXCfgIO2* store = Store()) {
        store->SaveTAGroupNameList(groups.Names());
    }
}
