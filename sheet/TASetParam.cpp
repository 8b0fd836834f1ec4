#include "sheet/TASetParam.h"

#include "platform/ui/TextBridge.h"
#include "settings/TaSettingHandle.h"
#include "sheet/GroupDrafts.h"
#include "sheet/TASetParamState.h"
#include "sheet/TaSettingSheet.h"
#include "ui_TASetParam.h"

#include <QSignalBlocker>

#include <algorithm>

using namespace ta::ui;
using namespace ta::sheet;

namespace {

// The room for the longest names of studies.
constexpr int kTreeCharacters = 42;

CTaSettingHandle& Repository() {
    return CTaSettingHandle::GetInstance();
}

CTaSettingSheet* SheetOf(const PropertyPage& page) {
    return qobject_cast<CTaSettingSheet*>(page.GetSheet());
}

}  // namespace

CTASetParam::CTASetParam()
    : m_state(std::make_unique<State>()), m_ui(std::make_unique<Ui::TASetParam>()) {
    m_ui->setupUi(this);
    m_ui->studyTree->SetDragEnabled(true);
    m_ui->studyTree->setMinimumWidth(fontMetrics().horizontalAdvance('0') * kTreeCharacters);
    ConnectControls();
    AddShortcuts();
}

CTASetParam::~CTASetParam() = default;

void CTASetParam::SetInitialSelection(const CString& group, int nShowCount, int nSelPane,
                                      int nSelStudy) {
    m_state->group = group;
    const int paneCount =
        nShowCount > 0 ? nShowCount : Repository().GetStudyCountByGroupName(group);
    m_state->initial =
        State::Selection{group, paneCount, std::max(nSelPane, 0), std::max(nSelStudy, 0)};
}

void CTASetParam::SetStudySpecialType(VolumeAmountType type, bool first, bool second) {
    m_state->specialType = type;
    m_state->specialFlags = {first, second};
}

bool CTASetParam::OnInitDialog() {
    LoadLanguageStrings();
    m_ui->studyTree->setFocus();
    return true;
}

// ---- Showing ----

void CTASetParam::OnSetActive() {
    Refresh();
    if (const auto selection = std::exchange(m_state->initial, std::nullopt);
        selection && selection->group == m_state->group) {
        SelectAtFirst(selection->pane < selection->paneCount ? selection->pane : -1,
                      selection->study);
    } else if (m_ui->studyTree->CurrentPane() < 0) {
        m_ui->studyTree->Select(0);
    }
    if (m_state->Draft().FaultyStudies().contains(m_ui->studyTree->CurrentType())) {
        ShowFirstFault();
    }
}

void CTASetParam::SelectAtFirst(int pane, int study) {
    m_ui->studyTree->setCurrentItem(nullptr);
    if (pane >= 0 && pane < kPaneCount) {
        m_ui->studyTree->Select(pane);
        m_ui->studyTree->Select(pane, study - 1);
    }
}

void CTASetParam::Refresh() {
    State& state = *m_state;
    state.drafts.Update();
    CTaSettingSheet* sheet = SheetOf(*this);
    if (sheet != nullptr) {
        state.group = sheet->GetActiveGroup();
    }
    if (Repository().FindGroup(state.group) == 0) {
        state.group = Repository().GetSystemDefaultGroup();
        if (sheet != nullptr) {
            sheet->SetActiveGroup(state.group);
        }
    }
    if (std::exchange(state.shownGroup, state.group) != state.group) {
        m_ui->studyTree->clear();
    }
    const QString name = ToQString(state.group);
    m_ui->groupLabel->setText(LangText("IDS_TADIALOGS-SHEET_GROUP", name));
    m_ui->groupLabel->setToolTip(name);
    FillTree();
}

void CTASetParam::FillTree() {
    State& state = *m_state;
    const int showCount = state.Draft().ShowCount();
    const QSignalBlocker quiet(m_ui->showCountSpin);
    m_ui->showCountSpin->setValue(showCount);
    state.filled = state.Draft().Studies();
    m_ui->studyTree->SetStudies(state.filled, showCount);
}

void CTASetParam::ShowCurrentStudy() {
    State& state = *m_state;
    CTaParamSettingView& view = *m_ui->settingView;
    const StudyType type = m_ui->studyTree->CurrentType();
    state.shown = type == kNoStudy ? std::nullopt : FactsOf(type);
    if (type == kNoStudy) {
        view.ShowHint(LangText("IDS_TADIALOGS-SHEET_NO_STUDY_SELECTED"));
    } else if (!state.shown || !state.Draft().IsEditable()) {
        state.shown.reset();
        view.ShowHint(LangText("IDS_TADIALOGS-SHEET_STUDY_NOT_EDITABLE", StudyLabel(type)));
    } else {
        const StudyFacts& study = *state.shown;
        const QString title =
            LangText("IDS_TADIALOGS-SHEET_STUDY_TITLE", study.name, study.abbreviation);
        view.ShowStudy(title, state.ParamRows(), state.ShapeRows());
    }
    ShowFaults();
    UpdateButtons();
}

void CTASetParam::ShowFaults() {
    GroupDraft& draft = m_state->Draft();
    if (m_state->shown) {
        m_ui->settingView->SetParamFaults(draft.Faults(*m_state->shown));
    }
    m_ui->studyTree->SetFaulty(draft.FaultyStudies());
}

bool CTASetParam::ShowFirstFault() {
    const std::set<StudyType> faulty = m_state->Draft().FaultyStudies();
    if (faulty.empty()) {
        return false;
    }
    StudyTree& tree = *m_ui->studyTree;
    if (!faulty.contains(tree.CurrentType())) {
        const auto types = StudiesIn(m_state->filled);
        const auto first = std::ranges::find_if(
            types, [&faulty](StudyType type) { return faulty.contains(type); });
        tree.SelectType(first == types.end() ? *faulty.begin() : *first);
    }
    if (m_state->shown) {
        const QStringList faults = m_state->Draft().Faults(*m_state->shown);
        const auto fault =
            std::ranges::find_if(faults, [](const QString& reason) { return !reason.isEmpty(); });
        m_ui->settingView->FocusParam(static_cast<int>(fault - faults.begin()));
    }
    return true;
}

// ---- Saving and closing ----

bool CTASetParam::CanSave() {
    State& state = *m_state;
    state.drafts.Update();
    for (const GroupDraft& draft : state.drafts.All()) {
        if (draft.FaultyStudies().empty()) {
            continue;
        }
        state.group = draft.Group();
        if (CTaSettingSheet* sheet = SheetOf(*this)) {
            sheet->SetActiveGroup(state.group);
        }
        Refresh();
        ShowFirstFault();
        return false;
    }
    return true;
}

int CTASetParam::SaveStudy() {
    if (!CanSave()) {
        return 0;
    }
    QStringList refused;
    for (GroupDraft& draft : m_state->drafts.All()) {
        if (!draft.IsChanged()) {
            continue;
        }
        const GroupDraft::Saved saved = draft.Save();
        std::ranges::copy(saved.types, std::back_inserter(m_state->savedTypes));
        std::ranges::copy(saved.shapeNames, std::back_inserter(m_state->savedNames));
        refused += saved.refused;
        m_state->saved = true;
        if (CTaSettingSheet* sheet = SheetOf(*this)) {
            sheet->AddToChangeGroupList(static_cast<unsigned>(draft.UniNum()));
        }
    }
    if (IsCreated()) {
        Refresh();
    }
    if (!refused.isEmpty()) {
        Tell(LangText("IDS_TADIALOGS-SHEET_REFUSED", refused.join('\n')));
    }
    return refused.isEmpty() ? 1 : 0;
}

void CTASetParam::OnCancel() {
    CTaSettingSheet* sheet = SheetOf(*this);
    if (sheet != nullptr && sheet->IsAskBeforeClose() != 0) {
        return;
    }
    if (!HasEdits()) {
        PropertyPage::OnCancel();
        return;
    }
    const QString question = LangText("IDS_TECHVIEW-STRING_GROUPSETTING_SAVE_CHECK");
    const bool save =
        CurrentPrompts().AskYesNo(this, PromptIcon::Question, {}, question) == Answer::Yes;
    if (save && !CanSave()) {
        if (GetSheet() != nullptr) {
            GetSheet()->StayOpen(*this);
        }
        return;
    }
    if (save) {
        SaveStudy();
    }
    if (sheet != nullptr) {
        sheet->SetAlwaysSaveFlag(save ? 1 : 0);
    }
    if (!save) {
        PropertyPage::OnCancel();
    }
}

// ---- What others ask ----

bool CTASetParam::HasEdits() const {
    m_state->drafts.Update();
    return m_state->drafts.IsChanged();
}

bool CTASetParam::IsEditStudy() const {
    return m_state->saved || HasEdits();
}

const std::vector<StudyType>& CTASetParam::GetChangeStudyType() const {
    return m_state->savedTypes;
}

const std::vector<CString>& CTASetParam::GetChangeStudyName() const {
    return m_state->savedNames;
}

const std::vector<std::vector<StudyType>>* CTASetParam::DraftStudies(const CString& group) const {
    m_state->drafts.Update();
    const GroupDraft* draft = m_state->drafts.Find(group);
    return draft == nullptr ? nullptr : draft->EditedStudies();
}

int CTASetParam::DraftShowCount(const CString& group) const {
    m_state->drafts.Update();
    const GroupDraft* draft = m_state->drafts.Find(group);
    return draft == nullptr ? -1 : draft->EditedShowCount().value_or(-1);
}

bool CTASetParam::TakeDraftStudies(const CString& group) {
    m_state->drafts.Update();
    GroupDraft* draft = m_state->drafts.Find(group);
    if (draft == nullptr || draft->EditedStudies() == nullptr) {
        return false;
    }
    draft->ForgetStudies();
    m_state->saved = true;
    return true;
}

void CTASetParam::NoteReload() {
    m_state->drafts.NoteReload();
}

std::vector<CString> CTASetParam::TakeLostDrafts() {
    m_state->drafts.Update();
    return m_state->drafts.TakeLost();
}

void CTASetParam::OnSettingsReloaded() {
    m_state->drafts.Update();
    if (IsCreated()) {
        Refresh();
    }
}
