#include "sheet/TaSettingSheet.h"

#include "groupfile/GroupSummary.h"
#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"
#include "sheet/SettingsSession.h"
#include "sheet/TASetGroup.h"
#include "sheet/TASetParam.h"

#include <QApplication>

using namespace ta::ui;
using ta::Repository;
using ta::sheet::SettingsSession;

namespace {

constexpr int kModalGoneMilliseconds = 100;
constexpr int kClose = 1;  ///< of the choice after a reload

}  // namespace

CTaSettingSheet::CTaSettingSheet(const char* captionKey, QWidget* parent, unsigned firstPage,
                                 const CString& group, int nShowCount, int nSelPane, int nSelStudy)
    : CTaSettingSheet(QString(captionKey), parent, firstPage, group, nShowCount, nSelPane,
                      nSelStudy) {}

CTaSettingSheet::CTaSettingSheet(const QString& caption, QWidget* parent, unsigned firstPage,
                                 const CString& group, int nShowCount, int nSelPane, int nSelStudy)
    : PropertySheet(caption, parent, static_cast<int>(firstPage)),
      m_session(std::make_unique<SettingsSession>()) {
    m_session->SetActiveGroup(group);
    if (Repository().GetGroupAuthorize() != 0) {
        m_pGroupPage = new CTASetGroup;
        AddPage(*m_pGroupPage);
    }
    m_pParamPage = new CTASetParam;
    m_pParamPage->SetInitialSelection(group, nShowCount, nSelPane, nSelStudy);
    AddPage(*m_pParamPage);
    SetResizable(false);
    m_tellReload.setSingleShot(true);
    Handle(&m_tellReload, &QTimer::timeout, [this] { TellReload(); });
    m_session->WatchReloads([this] { m_tellReload.start(0); });
}

CTaSettingSheet::~CTaSettingSheet() {
    hide();  // so that no page comes to the front when the other one goes
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
    SetButtonText(kIdOk, "IDS_TECHVIEW-STRING_GROUPSETTING_SAVE");
    SetButtonText(kIdCancel, "IDS_TECHVIEW-STRING_GROUPSETTING_CANCEL");
    if (m_session->News().pending) {
        m_tellReload.start(0);  // it came before there was anything to see
    }
    if (!result && GetActivePage() != nullptr) {
        GetActivePage()->OnSetActive();
    }
    return result;
}

// ---- What the creator asks ----

SettingsSession& CTaSettingSheet::Session() const {
    return *m_session;
}

void CTaSettingSheet::SetActiveGroup(const CString& name) {
    m_session->SetActiveGroup(name);
}

CString CTaSettingSheet::GetActiveGroup() const {
    return m_session->ActiveGroup();
}

void CTaSettingSheet::AddToChangeGroupList(const unsigned int& value) {
    m_session->ReportGroup(value);
}

int CTaSettingSheet::GetChangeGroupList(std::vector<unsigned int>& out) {
    m_session->GetChangeGroupList(out);
    return 0;
}

int CTaSettingSheet::GetChangeStudy(std::vector<StudyType>& types, std::vector<CString>& names) {
    int copied = 0;
    if (!m_session->ChangedStudies().empty()) {
        types = m_session->ChangedStudies();
        copied = 1;
    }
    if (!m_session->ChangedNames().empty()) {
        names = m_session->ChangedNames();
        copied = 1;
    }
    return copied;
}

void CTaSettingSheet::SetStudySpecialType(VolumeAmountType type, bool first, bool second) {
    m_pParamPage->SetStudySpecialType(type, first, second);
}

int CTaSettingSheet::IsAlwaysSave() const {
    return m_session->IsToBeSaved() ? 1 : 0;
}

void CTaSettingSheet::SetAlwaysSaveFlag(int save) {
    m_session->SetAnswer(save != 0);
}

int CTaSettingSheet::IsAskBeforeClose() const {
    return m_session->IsAnswered() ? 1 : 0;
}

int CTaSettingSheet::IsDragList() const {
    return m_session->IsDragged() ? 1 : 0;
}

int CTaSettingSheet::IsEditGroup() const {
    return m_session->IsEdited() ? 1 : 0;
}

bool CTaSettingSheet::IsEditStudy() const {
    return m_session->IsStudyEdited();
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
    // What another party has saved is loaded first; behind that nothing comes in between.
    Repository().ReloadTASetting();
    const CTaSettingHandle::ReloadHold hold(Repository());
    if (m_session->News().pending || !CanSavePages()) {
        return false;
    }
    SaveChange();
    if (!m_session->WriteDrafts().isEmpty()) {
        SetActivePage(*m_pParamPage);  // the chart module has refused a value, which was told
        return false;
    }
    Repository().SaveAllGroupSetting();
    return true;
}

void CTaSettingSheet::OnOK() {
    if (Save()) {
        End(QDialog::Accepted);
    }
}

void CTaSettingSheet::OnCancel() {
    const bool answeredBefore = m_session->IsAnswered();
    if (!CancelPages()) {
        return;
    }
    // The pages ask no more after an earlier closing that came to nothing, and a page that was
    // never shown does not ask for the drafts that it would have.
    const bool askedNow = m_session->IsAnswered() && !answeredBefore;
    if (!askedNow && m_session->HasEdits()) {
        const Answer answer = ta::sheet::AskSave(*this);
        if (answer == Answer::None) {
            return;
        }
        m_session->SetAnswer(answer == Answer::Yes);
    }
    if (m_session->IsToBeSaved() && !Save()) {
        m_session->TakeBackAnswer();
        return;
    }
    if (m_session->IsAnswered() && !m_session->IsToBeSaved()) {
        m_session->Discard();
    }
    End(QDialog::Rejected);
}

void CTaSettingSheet::End(int result) {
    m_tellReload.stop();
    m_session->StopWatching();  // what follows is the creator's doing
    done(result);
}

// ---- The settings were changed elsewhere ----

QString CTaSettingSheet::ReloadText() const {
    const SettingsSession::ReloadNews& news = m_session->News();
    QStringList texts{LangText("IDS_TADIALOGS-SHEET_CHANGED_ELSEWHERE")};
    if (news.lostListEdits) {
        texts.append(LangText("IDS_TADIALOGS-SHEET_LOST_GROUP_EDITS"));
    }
    if (!news.lostDrafts.empty()) {
        texts.append(LangText("IDS_TADIALOGS-SHEET_LOST_STUDY_EDITS",
                              ta::groupfile::Listed(news.lostDrafts)));
    }
    if (m_session->HasDraftEdits()) {
        texts.append(LangText("IDS_TADIALOGS-SHEET_KEPT_STUDY_EDITS"));
    }
    return texts.join("\n\n");
}

void CTaSettingSheet::TellReload() {
    if (!isVisible() || !m_session->News().pending) {
        return;
    }
    // Not over a dialog of a page, which stands in the middle of its work.
    if (QApplication::activeModalWidget() != nullptr && QApplication::activeModalWidget() != this) {
        m_tellReload.start(kModalGoneMilliseconds);
        return;
    }
    int choice = 0;
    QString told;
    do {  // again when there was more to tell meanwhile
        told = ReloadText();
        choice = CurrentPrompts().AskChoice(
            this, PromptIcon::Warning, TerminalTitle(), told,
            {LangText("IDS_TADIALOGS-SHEET_GO_ON"), LangText("IDS_TADIALOGS-SHEET_CLOSE")});
    } while (choice != kClose && ReloadText() != told);
    if (choice == kClose) {
        m_session->Discard();
        m_session->TakeBackAnswer();
        End(QDialog::Rejected);
        return;
    }
    m_session->AcknowledgeReload();
    if (m_pGroupPage != nullptr) {
        m_pGroupPage->OnSettingsReloaded();
    }
    m_pParamPage->OnSettingsReloaded();
}
