// The repository's words for studies, periods and layouts.

#include "platform/ConfigStore.h"
#include "platform/DrawInfo.h"
#include "settings/SettingsParts.h"
#include "settings/StudyNames.h"
#include "settings/TaSettingHandle.h"

using namespace ta::settings;

CString CTaSettingHandle::StudyTypeToStudyName(StudyType type) {
    const ChartBaseDrawInfo* drawInfo = GetDrawInfo(GetSystemDefaultGroup());
    return drawInfo == nullptr ? CString() : StudyName(*drawInfo, type);
}

StudyType CTaSettingHandle::StudyNameToStudyType(const CString& name) {
    const CString group = GetSystemDefaultGroup();
    const ChartBaseDrawInfo* drawInfo = GetDrawInfo(group);
    return drawInfo == nullptr || group.empty() ? 0 : StudyOfName(*drawInfo, name);
}

CString CTaSettingHandle::PackTADataTypeString(int periodCode, int count) const {
    return DataPeriodLabel(periodCode, count);
}

CString CTaSettingHandle::TransSystemLayoutString(const CString& stored) const {
    return LayoutDisplayName(stored);
}

bool CTaSettingHandle::GetTAViewGroupSetting(int layout, std::vector<ST_TA_ViewGroupInfo>& out) {
    ReloadTASetting();
    SMXCfgIO2* store = Parts::Store();
    if (store == nullptr) {
        return false;
    }
    store->PackFile();
    std::vector<std::pair<CString, int>> views;
    if (!store->GetTAViewGroupSetting(layout, views)) {
        return false;
    }
    for (const auto& [name, value] : views) {
        out.push_back({LayoutDisplayName(name), value});
    }
    return true;
}
