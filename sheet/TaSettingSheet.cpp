#include "sheet/TaSettingSheet.h"

#include "groupfile/GroupSummary.h"
#include "platform/ui/TextBridge.h"
#include "settings/Messages.h"
#include "settings/SettingsSnapshot.h"
#include "settings/TaSettingHandle.h"
#include "sheet/TASetGroup.h"
#include "sheet/TASetParam.h"

#include <QApplication>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <functional>

using namespace ta::ui;
using ta::settings::SettingsSnapshot;

namespace {

constexpr int kModalGoneMilliseconds = 100;

CTaSettingHandle& Repository() {
    return CTaSettingHandle::GetInstance();
}

/// Hears when the repository was loaded again; registered while it lives.
class ReloadWatch : public CView {
public:
    /// `onReload` runs within the reload, after the groups were loaded.
    explicit ReloadWatch(std::function<void()> onReload) : m_onReload(std::move(onReload)) {
        Repository().AddTechViewPtr(this);
    }
    ~ReloadWatch() override { Repository().RemoveTechViewPtr(this); }

    std::intptr_t WindowProc(unsigned message, std::uintptr_t wParam,
                             std::intptr_t lParam) override {
        // One message a group; the first one is enough.
        if (message == ta::kGroupChangeMessage && wParam == 0) {
            m_onReload();
        }
        return CView::WindowProc(message, wParam, lParam);
    }

private:
    std::function<void()> m_onReload;
};

}  // namespace

/// What the sheet keeps to be able to leave everything as it was.
struct CTaSettingSheet::Session {
    SettingsSnapshot before = SettingsSnapshot::Take(Repository());
    bool storeCommitted = false;  ///< edits are in the file, and not only pending
    bool reloaded = false;        ///< and the user does not know yet
    bool lostEdits = false;       ///< edits of the group page went with it
    bool closingFailed = false;   ///< OK, or a Yes when closing, could not be done
    QTimer tellReload;
    std::unique_ptr<ReloadWatch> watch;
};

CTaSettingSheet::CTaSettingSheet(const char* captionKey, QWidget* parent, unsigned firstPage,
                                 const CString& group, int nShowCount, int nSelPane, int nSelStudy)
    : CTaSettingSheet(LangText(captionKey), parent, firstPage, group, nShowCount, nSelPane,
                      nSelStudy) {}

CTaSettingSheet::CTaSettingSheet(const QString& caption, QWidget* parent, unsigned firstPage,
                                 const CString& group, int nShowCount, int nSelPane, int nSelStudy)
    : PropertySheet(caption, parent, static_cast<int>(firstPage)), m_strActiveGroup(group) {
    if (Repository().GetGroupAuthorize() != 0) {
        m_pGroupPage = new CTASetGroup;
        AddPage(*m_pGroupPage);
    }
    m_pParamPage = new CTASetParam;
    m_pParamPage->SetInitialSelection(group, nShowCount, nSelPane, nSelStudy);
    AddPage(*m_pParamPage);
    SetResizable(false);
    Repository().GetGroupNameList(m_vOrigGroupName);
    m_session = std::make_unique<Session>();
    m_session->tellReload.setSingleShot(true);
    connect(&m_session->tellReload, &QTimer::timeout, this, &CTaSettingSheet::TellReload);
    m_session->watch = std::make_unique<ReloadWatch>([this] { OnReloaded(); });
}

CTaSettingSheet::~CTaSettingSheet() {
    hide();  // so that no page comes to the front when the other one goes
    m_session.reset();
    if (m_pGroupPage != nullptr) {
        RemovePage(*m_pGroupPage);
        delete std::exchange(m_pGroupPage, nullptr);
    }
    if (m_pParamPage != nullptr) {
        RemovePage(*m_pParamPage);
        delete std::exchange(m_pParamPage, nullptr);
    }
}

bool CTaSettingSheet::OnInitDialog() {
    const bool result = PropertySheet::OnInitDialog();
    // The row closes up: OK stands where Cancel stood, and Cancel where Apply stood.
    if (QWidget* apply = GetDlgItem(kIdApply)) {
        apply->hide();
    }
    SetButtonText(kIdOk, LangText("IDS_TECHVIEW-STRING_GROUPSETTING_SAVE"));
    SetButtonText(kIdCancel, LangText("IDS_TECHVIEW-STRING_GROUPSETTING_CANCEL"));
    if (!result && GetActivePage() != nullptr) {
        GetActivePage()->OnSetActive();
    }
    return result;
}

// ---- What the pages and the creator ask and tell ----

void CTaSettingSheet::SetActiveGroup(const CString& name) {
    m_strActiveGroup = name;
}

CString CTaSettingSheet::GetActiveGroup() const {
    return m_strActiveGroup;
}

void CTaSettingSheet::AddToChangeGroupList(const unsigned int& value) {
    if (std::ranges::find(m_vChangeGroup, value) == m_vChangeGroup.end()) {
        m_vChangeGroup.push_back(value);
    }
}

int CTaSettingSheet::GetChangeGroupList(std::vector<unsigned int>& out) {
    if (IsDragList() != 0) {
        out.clear();
        return 0;
    }
    std::vector<CString> names;
    Repository().GetGroupNameList(names);
    if (names.size() == m_vOrigGroupName.size()) {
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (names[i] != m_vOrigGroupName[i]) {
                AddToChangeGroupList(static_cast<unsigned>(i));
            }
        }
    }
    if (!m_vChangeGroup.empty()) {
        out = m_vChangeGroup;
    }
    return 0;
}

int CTaSettingSheet::GetChangeStudy(std::vector<StudyType>& types, std::vector<CString>& names) {
    if (m_pParamPage == nullptr) {
        return 0;
    }
    int copied = 0;
    if (!m_pParamPage->GetChangeStudyType().empty()) {
        types = m_pParamPage->GetChangeStudyType();
        copied = 1;
    }
    if (!m_pParamPage->GetChangeStudyName().empty()) {
        names = m_pParamPage->GetChangeStudyName();
        copied = 1;
    }
    return copied;
}

void CTaSettingSheet::SetStudySpecialType(VolumeAmountType type, bool first, bool second) {
    if (m_pParamPage != nullptr) {
        m_pParamPage->SetStudySpecialType(type, first, second);
    }
}

int CTaSettingSheet::IsAlwaysSave() const {
    return m_bAlwaysSave;
}

void CTaSettingSheet::SetAlwaysSaveFlag(int save) {
    m_bAlwaysSave = save;
    m_bAskedBeforeClose = 1;
}

int CTaSettingSheet::IsAskBeforeClose() const {
    return m_bAskedBeforeClose;
}

int CTaSettingSheet::IsDragList() const {
    return m_pGroupPage == nullptr ? 0 : m_pGroupPage->IsDragList();
}

int CTaSettingSheet::IsEditGroup() const {
    return m_pGroupPage == nullptr ? 0 : m_pGroupPage->IsEditGroup();
}

bool CTaSettingSheet::IsEditStudy() const {
    return m_pParamPage != nullptr && m_pParamPage->IsEditStudy();
}

StudyLists CTaSettingSheet::GetShownStudies(const CString& group) const {
    StudyLists studies;
    if (const StudyLists* draft = m_pParamPage->DraftStudies(group)) {
        studies = *draft;
    } else {
        Repository().GetStudyListByGroupName(group, studies);
    }
    return studies;
}

int CTaSettingSheet::GetShownCount(const CString& group) const {
    const int draft = m_pParamPage->DraftShowCount(group);
    return draft >= 0 ? draft : Repository().GetStudyCountByGroupName(group);
}

void CTaSettingSheet::OnStudiesStored(const CString& group) {
    if (m_pParamPage->TakeDraftStudies(group)) {
        AddToChangeGroupList(static_cast<unsigned>(Repository().GetUniNumByGroupName(group)));
    }
}

void CTaSettingSheet::NoteStoreCommitted() {
    m_session->storeCommitted = true;
}

bool CTaSettingSheet::IsReloadPending() const {
    return m_session->reloaded;
}

// ---- Closing ----

int CTaSettingSheet::SaveChange() const {
    if (m_pParamPage != nullptr && m_pParamPage->IsCreated()) {
        m_pParamPage->SaveStudy();
    }
    if (m_pGroupPage != nullptr && m_pGroupPage->IsCreated()) {
        m_pGroupPage->SaveChange();
    }
    return 0;
}

bool CTaSettingSheet::Save() {
    // What another party has saved is loaded first, which would drop the edits on the way.
    Repository().ReloadTASetting();
    if (m_session->reloaded || !CanSavePages()) {
        return false;
    }
    SaveChange();
    m_session->closingFailed = true;  // the pages have written their edits: they ask no more
    if (m_pParamPage->HasEdits()) {
        SetActivePage(*m_pParamPage);  // the chart module has refused a value, which was told
        return false;
    }
    Repository().SaveAllGroupSetting();
    return !m_session->reloaded;
}

void CTaSettingSheet::OnOK() {
    if (Save()) {
        m_session->watch.reset();
        done(QDialog::Accepted);
    }
}

void CTaSettingSheet::OnCancel() {
    const int askedBefore = m_bAskedBeforeClose;
    if (!CancelPages()) {
        return;
    }
    if (m_session->closingFailed && m_bAskedBeforeClose == askedBefore) {
        SetAlwaysSaveFlag(AskSave() ? 1 : 0);
    }
    if (m_bAlwaysSave != 0 && !Save()) {
        m_bAlwaysSave = 0;
        m_session->closingFailed = true;
        return;
    }
    if (m_bAlwaysSave == 0 && m_bAskedBeforeClose != 0) {
        Discard();
    }
    m_session->watch.reset();
    done(QDialog::Rejected);
}

bool CTaSettingSheet::AskSave() {
    return CurrentPrompts().AskYesNo(this, PromptIcon::Question, {},
                                     LangText("IDS_TECHVIEW-STRING_GROUPSETTING_SAVE_CHECK")) ==
           Answer::Yes;
}

void CTaSettingSheet::Discard() {
    Repository().ReloadTASetting();
    m_session->before.Restore(Repository());
    if (m_session->storeCommitted) {
        Repository().SaveAllGroupSetting();
    }
}

// ---- The settings were changed elsewhere ----

void CTaSettingSheet::OnReloaded() {
    m_session->before = SettingsSnapshot::Take(Repository());
    m_session->storeCommitted = false;
    m_session->reloaded = true;
    if (m_pGroupPage != nullptr) {
        m_session->lostEdits = m_session->lostEdits || m_pGroupPage->HasEdits();
        m_pGroupPage->ForgetEdits();
    }
    m_pParamPage->NoteReload();
    m_vOrigGroupName = m_session->before.GroupNames();
    m_session->tellReload.start(0);
}

QString CTaSettingSheet::ReloadText() {
    QStringList texts{LangText("IDS_TADIALOGS-SHEET_CHANGED_ELSEWHERE")};
    if (m_session->lostEdits) {
        texts.append(LangText("IDS_TADIALOGS-SHEET_LOST_GROUP_EDITS"));
    }
    if (const std::vector<CString> lost = m_pParamPage->TakeLostDrafts(); !lost.empty()) {
        texts.append(LangText("IDS_TADIALOGS-SHEET_LOST_STUDY_EDITS", ta::groupfile::Listed(lost)));
    }
    if (m_pParamPage->HasEdits()) {
        texts.append(LangText("IDS_TADIALOGS-SHEET_KEPT_STUDY_EDITS"));
    }
    return texts.join("\n\n");
}

void CTaSettingSheet::TellReload() {
    if (!isVisible() || !m_session->reloaded) {
        return;
    }
    // Not over a dialog of a page, which stands in the middle of its work.
    if (QApplication::activeModalWidget() != nullptr && QApplication::activeModalWidget() != this) {
        m_session->tellReload.start(kModalGoneMilliseconds);
        return;
    }
    const int choice = CurrentPrompts().AskChoice(
        this, PromptIcon::Warning, windowTitle(), ReloadText(),
        {LangText("IDS_TADIALOGS-SHEET_GO_ON"), LangText("IDS_TADIALOGS-SHEET_CLOSE")});
    if (choice == 1) {
        Discard();
        m_bAlwaysSave = 0;
        m_session->watch.reset();
        done(QDialog::Rejected);
        return;
    }
    m_session->reloaded = false;
    m_session->lostEdits = false;
    if (Repository().FindGroup(m_strActiveGroup) == 0) {
        m_strActiveGroup = Repository().GetSystemDefaultGroup();
    }
    if (m_pGroupPage != nullptr) {
        m_pGroupPage->OnSettingsReloaded();
    }
    m_pParamPage->OnSettingsReloaded();
}
