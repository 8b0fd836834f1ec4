#include "settings/TaSettingHandle.h"

#include "platform/ConfigStore.h"
#include "platform/DrawInfo.h"
#include "platform/Entitlement.h"
#include "platform/SyncInfo.h"
#include "settings/Messages.h"
#include "settings/SettingsParts.h"
#include "settings/StudyLists.h"

#include <algorithm>
#include <optional>

using namespace ta::settings;

// ---- Life cycle ----

CTaSettingHandle::ReloadHold::ReloadHold(CTaSettingHandle& repository) : m_repository(repository) {
    ++m_repository.m_parts->reloadHolds;
}

CTaSettingHandle::ReloadHold::~ReloadHold() {
    --m_repository.m_parts->reloadHolds;
}

CTaSettingHandle& CTaSettingHandle::GetInstance() {
    static CTaSettingHandle instance;
    return instance;
}

CTaSettingHandle::CTaSettingHandle() : m_parts(std::make_unique<Parts>()) {
    m_parts->capabilities = AskCapabilities();
    vCreate(CSyncInfo::GetSettingCFG().GetServices().frameWindow);
    LoadAll();
}

CTaSettingHandle::~CTaSettingHandle() {
    ClearTechViewPtr();
    ReleaseTASetting();
    DestroyWindow();
}

void CTaSettingHandle::vCreate(CWnd* pParent) {
    CreateHiddenChild(pParent);
}

void CTaSettingHandle::ReleaseTASetting() {
    m_parts->groups.Clear();
    m_parts->defaults = {};
}

int CTaSettingHandle::IsReload() const {
    bool reload = false;
    SMXCfgIO2* store = Parts::Store();
    return store != nullptr && store->GetTASettingReloadType(reload) && reload ? 1 : 0;
}

void CTaSettingHandle::ReloadTASetting() {
    bReloadIfFlagged();
}

unsigned CTaSettingHandle::GetReloadCount() const {
    return m_parts->reloads;
}

bool CTaSettingHandle::bReloadIfFlagged() {
    if (m_parts->reloadHolds > 0 || IsReload() != 1) {
        return false;
    }
    // A store that cannot lower its flag must not bring a reload for each question of a view.
    const bool lowered = Parts::Store()->SetTASettingReloadType(false);
    std::optional<ReloadHold> hold;
    if (!lowered) {
        hold.emplace(*this);
    }
    ++m_parts->reloads;
    ReleaseTASetting();
    ReleaseTrendLine(kTechViewClass);
    LoadAll();
    // A view that calls back may bring the next reload: the number of groups is read again.
    for (unsigned index = 0; index < m_parts->groups.Names().size(); ++index) {
        SendMsg2AllTechView(ta::kGroupChangeMessage, index);
    }
    SendTLineUpdate2AllTechView();
    return true;
}

void CTaSettingHandle::LoadAll() {
    SMXCfgIO2* store = Parts::Store();
    if (store == nullptr) {
        return;
    }
    m_parts->LoadGroupSetting(GetMaxTAGroupCount());
    m_parts->groups.InitDrawInfo(*this);
    LoadParamSetting(*store, m_parts->groups, m_parts->defaults);
    LoadShapeSetting(*store, m_parts->groups, m_parts->defaults);
    LoadStudyShowCount(*store, m_parts->groups);
    LoadTechWndShowKey(*store, m_parts->groups);
    LoadTACommonSetting(*store, m_parts->groups);
    m_parts->limits = AskTrendLineLimits({});
    m_parts->trendLines.LoadTrendLineData(*store);
}

// ---- Group table ----

int CTaSettingHandle::FindGroup(const CString& name) {
    ReloadTASetting();
    return m_parts->groups.IndexOf(name) ? 1 : 0;
}

unsigned CTaSettingHandle::GetGroupIndexByName(const CString& name) {
    ReloadTASetting();
    return m_parts->groups.IndexOf(name).value_or(0);
}

int CTaSettingHandle::GetGroupIndexByUniNum(int uniNum) {
    ReloadTASetting();
    const CString name = GetGroupNameByUniNum(uniNum);
    return name.empty() ? -1 : static_cast<int>(GetGroupIndexByName(name));
}

CString CTaSettingHandle::GetGroupNameByIndex(unsigned index) {
    ReloadTASetting();
    return m_parts->groups.NameAt(index);
}

CString CTaSettingHandle::GetGroupNameByUniNum(int uniNum) const {
    return m_parts->groups.NameOfUniNum(uniNum);
}

int CTaSettingHandle::GetUniNumByGroupIndex(int index) {
    if (index < 0) {
        return -1;
    }
    const CString name = GetGroupNameByIndex(static_cast<unsigned>(index));
    return name.empty() ? -1 : GetUniNumByGroupName(name);
}

int CTaSettingHandle::GetUniNumByGroupName(const CString& name) const {
    const ST_TA_DRAWINFO* group = m_parts->groups.Find(name);
    return group == nullptr ? -1 : group->iUniNum;
}

unsigned CTaSettingHandle::GetGroupNameList(std::vector<CString>& out) {
    ReloadTASetting();
    out = m_parts->groups.Names();
    return static_cast<unsigned>(out.size());
}

void CTaSettingHandle::SetGroupNameList(std::vector<CString>& names) {
    ReloadTASetting();
    m_parts->groups.SetNames(names);
    for (const CString& name : names) {
        if (m_parts->groups.Find(name) == nullptr) {
            ST_TA_DRAWINFO& group = m_parts->PutNewGroup(name, *this, GetMaxTAGroupCount());
            RestoreTAStudyShapeToDefault(nullptr, {}, group, m_parts->defaults);
            RestoreTAStudyParamToDefault(nullptr, {}, group, m_parts->defaults);
        }
    }
    m_parts->SaveGroupNameList();
}

CString CTaSettingHandle::GetSystemDefaultGroup() {
    return GetGroupNameByIndex(0);
}

int CTaSettingHandle::GetMaxTAGroupCount() const {
    constexpr int kLeast = 10;
    constexpr int kMost = 50;
    int count = kLeast;
    if (SMXCfgIO2* store = Parts::Store()) {
        store->GetTAGroupMaxCount(count);
    }
    return std::clamp(count, kLeast, kMost);
}

int CTaSettingHandle::GetGroupAuthorize() const {
    const ta::EntitlementService* service = CSyncInfo::GetSettingCFG().GetServices().entitlement;
    return service == nullptr || service->bIsFunctionAllowed(ta::Function::TaGroupEditing) ? 1 : 0;
}

int CTaSettingHandle::AddGroupSetting(const CString& name) {
    ReloadTASetting();
    if (m_parts->groups.IndexOf(name)) {
        return 0;
    }
    // A record whose name has left the list gives way.
    m_parts->groups.Erase(name);
    ST_TA_DRAWINFO& group = m_parts->PutNewGroup(name, *this, GetMaxTAGroupCount());
    m_parts->groups.AppendName(name);
    // Not another reload in between: it would take the new group away again.
    SMXCfgIO2* store = Parts::Store();
    const auto index = m_parts->groups.IndexOf(name);
    RestoreTAStudyShapeToDefault(store, index, group, m_parts->defaults);
    RestoreTAStudyParamToDefault(store, index, group, m_parts->defaults);
    return 1;
}

int CTaSettingHandle::DeleteGroupSetting(const CString& name) {
    ReloadTASetting();
    const bool hadRecord = m_parts->groups.Erase(name);
    const bool wasListed = m_parts->groups.EraseName(name);
    return hadRecord || wasListed ? 1 : 0;
}

int CTaSettingHandle::ModifyGroupName(const CString& oldName, const CString& newName) {
    ReloadTASetting();
    GroupTable& groups = m_parts->groups;
    if (groups.IndexOf(newName) || !groups.IndexOf(oldName) || groups.Find(oldName) == nullptr) {
        return 0;
    }
    // A record whose name has left the list gives way.
    groups.Erase(newName);
    groups.Rename(oldName, newName);
    return 1;
}

void CTaSettingHandle::ClearNoUseGroup() {
    ReloadTASetting();
    for (const CString& name : m_parts->groups.UnlistedNames()) {
        m_parts->groups.Erase(name);
    }
}

int CTaSettingHandle::GetStudyCountByGroupName(const CString& name) {
    ReloadTASetting();
    const ST_TA_DRAWINFO* group = m_parts->groups.Find(name);
    return group == nullptr ? 1 : group->iStudyShowCount;
}

void CTaSettingHandle::SetStudyCountByGroupName(const CString& name, int count) {
    ReloadTASetting();
    m_parts->SetAndSave(name, &ST_TA_DRAWINFO::iStudyShowCount, count, SaveStudyShowCount);
}

unsigned CTaSettingHandle::GetTechCountByGroup(const CString& name) {
    ReloadTASetting();
    const ST_TA_DRAWINFO* group = m_parts->groups.Find(name);
    if (group == nullptr) {
        return 0;
    }
    return static_cast<unsigned>(std::ranges::count_if(
        group->vStudyList,
        [](const std::vector<StudyType>& pane) { return !pane.empty() && pane.front() >= 0; }));
}

int CTaSettingHandle::GetStudyListByGroupName(const CString& name, StudyLists& out) {
    ReloadTASetting();
    out.clear();
    const ST_TA_DRAWINFO* group = m_parts->groups.Find(name);
    if (group == nullptr) {
        return 0;
    }
    out = group->vStudyList;
    return 1;
}

void CTaSettingHandle::SetStudyListByGroupName(const CString& name, const StudyLists& lists) {
    ReloadTASetting();
    if (ST_TA_DRAWINFO* group = m_parts->groups.Find(name)) {
        group->vStudyList = PackStudyLists(lists);
    }
}

int CTaSettingHandle::GetTechWndKeyByGroupName(const CString& name) {
    ReloadTASetting();
    const ST_TA_DRAWINFO* group = m_parts->groups.Find(name);
    return group == nullptr ? 1 : group->iTechWndShowKey;
}

void CTaSettingHandle::SetTechWndKeyByGroupName(const CString& name, int key) {
    ReloadTASetting();
    m_parts->SetAndSave(name, &ST_TA_DRAWINFO::iTechWndShowKey, key, SaveTechWndShowKey);
}

int CTaSettingHandle::IsStudyCanUse(StudyType type) const {
    return m_parts->IsStudyUsable(type) ? 1 : 0;
}

int CTaSettingHandle::IsSecondlyDataCanUse(unsigned char) const {
    return m_parts->capabilities.secondData ? 1 : 0;
}

// ---- Saving ----

void CTaSettingHandle::SaveAllGroupSetting() {
    ReloadTASetting();
    SMXCfgIO2* store = Parts::Store();
    if (store == nullptr) {
        return;
    }
    const ReloadHold hold(*this);
    SaveTrendLineData();
    const std::vector<CString>& names = m_parts->groups.Names();
    m_parts->SaveGroupNameList();
    for (unsigned index = 0; index < names.size(); ++index) {
        if (const ST_TA_DRAWINFO* group = m_parts->groups.Find(names[index])) {
            SaveGroup(*store, index, *group);
        }
    }
    store->PackFile();
}

// ---- Chart views ----

void CTaSettingHandle::AddTechViewPtr(CView* view) {
    m_parts->views.Add(view);
}

void CTaSettingHandle::RemoveTechViewPtr(CView* view) {
    m_parts->views.Remove(view);
}

void CTaSettingHandle::ClearTechViewPtr() {
    m_parts->views.Clear();
}

void CTaSettingHandle::SendMsg2AllTechView(unsigned message, unsigned wParam) {
    m_parts->views.Send(message, wParam);
}

void CTaSettingHandle::SendTLineUpdate2AllTechView() {
    m_parts->views.Send(ta::kTrendLineChangeMessage, 0);
}
