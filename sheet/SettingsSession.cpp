#include "sheet/SettingsSession.h"

#include "platform/ConfigStore.h"
#include "platform/SyncInfo.h"
#include "settings/Messages.h"
#include "settings/Repository.h"
#include "settings/SettingsSnapshot.h"

#include <algorithm>

namespace ta::sheet {
namespace {

using settings::SettingsSnapshot;
using ReloadHold = CTaSettingHandle::ReloadHold;

bool Contains(const std::vector<CString>& names, const CString& name) {
    return std::ranges::find(names, name) != names.end();
}

/// `names` in the order in which `order` has them; what it does not have, behind.
std::vector<CString> InOrder(std::vector<CString> names, const std::vector<CString>& order) {
    std::ranges::stable_sort(names, {}, [&order](const CString& name) {
        return std::ranges::find(order, name) - order.begin();
    });
    return names;
}

}  // namespace

/// Hears when the repository was loaded again; registered while it lives.
class SettingsSession::Watch : public CView {
public:
    explicit Watch(SettingsSession& session) : m_session(session) {
        Repository().AddTechViewPtr(this);
    }
    ~Watch() override { Repository().RemoveTechViewPtr(this); }

    std::intptr_t WindowProc(unsigned message, std::uintptr_t wParam,
                             std::intptr_t lParam) override {
        // One message a group; the first one is enough. Others may send it too.
        const unsigned count = Repository().GetReloadCount();
        if (message == kGroupChangeMessage && wParam == 0 && count != m_count) {
            m_count = count;
            m_session.OnReloaded();
        }
        return CView::WindowProc(message, wParam, lParam);
    }

private:
    SettingsSession& m_session;
    unsigned m_count = Repository().GetReloadCount();
};

SettingsSession::SettingsSession() {
    Repository().ReloadTASetting();
    if (SMXCfgIO2* store = CSyncInfo::GetSettingCFG().CApi_pGetUserCfgIO()) {
        store->PackFile();
    }
    RememberState();
    m_namesAtFirst = m_before->GroupNames();
    m_watch = std::make_unique<Watch>(*this);
}

SettingsSession::~SettingsSession() = default;

void SettingsSession::RememberState() {
    m_before = std::make_unique<SettingsSnapshot>(SettingsSnapshot::Take(Repository()));
    m_stored.clear();
    for (const CString& name : m_before->GroupNames()) {
        m_stored.insert(Repository().GetUniNumByGroupName(name));
    }
    m_stored.erase(-1);
}

void SettingsSession::SetActiveGroup(const CString& name) {
    m_active = name;
    m_activeNumber = Repository().GetUniNumByGroupName(name);
}

// ---- Drafts ----

GroupDraft& SettingsSession::Draft(const CString& group) {
    const auto found = std::ranges::find(m_drafts, group, &GroupDraft::Group);
    return found != m_drafts.end() ? *found : m_drafts.emplace_back(group);
}

void SettingsSession::DropDraft(const CString& group) {
    const auto found = std::ranges::find(m_drafts, group, &GroupDraft::Group);
    if (found != m_drafts.end()) {
        m_gone.splice(m_gone.end(), m_drafts, found);
    }
}

bool SettingsSession::HasDraftEdits() const {
    return std::ranges::any_of(m_drafts, &GroupDraft::IsChanged);
}

QStringList SettingsSession::WriteDrafts() {
    const ReloadHold hold(Repository());
    QStringList refused;
    for (GroupDraft& draft : m_drafts) {
        const GroupDraft::Written written = draft.Write();
        if (written.any) {
            ReportGroup(static_cast<unsigned>(draft.UniNum()));
        }
        m_written.Add(written);
        refused += written.refused;
    }
    return refused;
}

void SettingsSession::WriteStudies(const CString& group) {
    const ReloadHold hold(Repository());
    const GroupDraft& draft = Draft(group);
    Repository().SetStudyListByGroupName(group, draft.Studies());
    if (draft.AreStudiesChanged()) {
        m_written.any = true;
        ReportGroup(static_cast<unsigned>(draft.UniNum()));
    }
}

std::optional<StudyFacts> SettingsSession::Facts(StudyType type) {
    auto study = FactsOf(type);
    if (study) {
        if (m_defaults == nullptr) {
            m_defaults = std::make_unique<StudyDefaults>();
        }
        m_defaults->Apply(*study);
    }
    return study;
}

// ---- The list of groups ----

bool SettingsSession::AddGroup(const CString& name) {
    if (Repository().AddGroupSetting(name) == 0) {
        return false;
    }
    DropDraft(name);  // of a group that another party had deleted
    m_modified = m_edited = m_unstored = true;
    ReportGroup(static_cast<unsigned>(Repository().GetUniNumByGroupName(name)));
    return true;
}

bool SettingsSession::RenameGroup(const CString& oldName, const CString& newName) {
    Repository().ReloadTASetting();
    const ReloadHold hold(Repository());
    if (Repository().FindGroup(oldName) == 0) {
        return false;
    }
    GroupDraft& draft = Draft(oldName);  // while it can still be read
    if (Repository().ModifyGroupName(oldName, newName) == 0) {
        return false;
    }
    DropDraft(newName);
    draft.SetGroup(newName);
    m_modified = m_edited = m_unstored = true;
    ReportGroup(static_cast<unsigned>(Repository().GetUniNumByGroupName(newName)));
    return true;
}

bool SettingsSession::DeleteGroup(const CString& name) {
    Repository().ReloadTASetting();
    const ReloadHold hold(Repository());
    std::vector<CString> names = GroupNames();
    if (std::erase(names, name) == 0 || names.empty()) {
        return false;
    }
    ReportGroup(static_cast<unsigned>(Repository().GetUniNumByGroupName(name)));
    Repository().SetGroupNameList(names);
    DropDraft(name);
    m_modified = m_edited = m_unstored = true;
    return true;
}

void SettingsSession::StoreOrder(const std::vector<CString>& names) {
    // Groups that another terminal has added or deleted meanwhile stay so.
    std::vector<CString> ordered = InOrder(GroupNames(), names);
    const ReloadHold hold(Repository());
    Repository().SetGroupNameList(ordered);
}

void SettingsSession::NoteImport(const std::vector<CString>& imported) {
    for (const CString& name : imported) {
        DropDraft(name);
    }
    m_modified = m_edited = true;
    m_unstored = false;
    for (const CString& name : GroupNames()) {
        ReportGroup(static_cast<unsigned>(Repository().GetUniNumByGroupName(name)));
    }
}

bool SettingsSession::HasListEdits() const {
    const std::vector<CString> names = GroupNames();  // first: it may load again what is before
    return m_modified || m_edited || m_dragged || names != m_before->GroupNames();
}

// ---- What changed ----

void SettingsSession::ReportGroup(unsigned value) {
    if (std::ranges::find(m_changed, value) == m_changed.end()) {
        m_changed.push_back(value);
    }
}

void SettingsSession::GetChangeGroupList(std::vector<unsigned>& out) {
    if (m_dragged) {
        out.clear();
        return;
    }
    const std::vector<CString> names = GroupNames();
    const std::vector<CString>& before = m_namesAtFirst;
    for (std::size_t i = 0; names.size() == before.size() && i < names.size(); ++i) {
        if (names[i] != before[i]) {
            ReportGroup(static_cast<unsigned>(i));
        }
    }
    if (!m_changed.empty()) {
        out = m_changed;
    }
}

// ---- The end ----

void SettingsSession::SetAnswer(bool save) {
    m_save = save;
    m_answered = true;
}

void SettingsSession::Discard() {
    Repository().ReloadTASetting();
    const ReloadHold hold(Repository());
    if (SettingsSnapshot::Take(Repository()) != *m_before) {
        m_before->Restore(Repository());
        Repository().SaveAllGroupSetting();
    }
}

// ---- Reloads ----

void SettingsSession::StopWatching() {
    m_watch.reset();
    m_onReload = {};
}

void SettingsSession::AcknowledgeReload() {
    m_news = {};
    m_gone.clear();
}

CString SettingsSession::NameNow(const CString& name, int uniNum,
                                 const std::vector<CString>& names) const {
    const bool isListed = Contains(names, name);
    if (isListed && Repository().GetUniNumByGroupName(name) == uniNum) {
        return name;
    }
    // Another group may have got the number of one that was not stored.
    const CString renamed =
        m_stored.contains(uniNum) ? Repository().GetGroupNameByUniNum(uniNum) : CString();
    if (Contains(names, renamed)) {
        return renamed;
    }
    return isListed ? name : CString();
}

void SettingsSession::OnReloaded() {
    const ReloadHold hold(Repository());
    m_news.pending = true;
    m_news.lostListEdits = m_news.lostListEdits || m_unstored || m_dragged;
    m_modified = m_edited = m_unstored = m_dragged = false;
    m_defaults.reset();
    const std::vector<CString> names = GroupNames();
    const CString active = NameNow(m_active, m_activeNumber, names);
    RebaseDrafts(names);
    SetActiveGroup(active.empty() ? Repository().GetSystemDefaultGroup() : active);
    RememberState();
    if (m_onReload) {
        m_onReload();
    }
}

void SettingsSession::RebaseDrafts(const std::vector<CString>& names) {
    std::set<CString> kept;
    for (auto next = m_drafts.begin(); next != m_drafts.end();) {
        const auto draft = next++;
        const CString name = NameNow(draft->Group(), draft->UniNum(), names);
        if (!name.empty() && kept.insert(name).second) {
            draft->Rebase(name);
            continue;
        }
        if (draft->IsChanged()) {
            m_news.lostDrafts.push_back(draft->Group());
        }
        m_gone.splice(m_gone.end(), m_drafts, draft);
    }
}

}  // namespace ta::sheet
