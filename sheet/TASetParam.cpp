#include "sheet/TASetParam.h"

#include "groupfile/GroupSummary.h"
#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"
#include "sheet/SettingsSession.h"
#include "sheet/StudyPageState.h"
#include "ui_TASetParam.h"

#include <QSignalBlocker>

#include <algorithm>

using namespace ta::ui;
using ta::Repository;
using namespace ta::sheet;

namespace {

// The room for the longest names of studies.
constexpr int kTreeCharacters = 42;

/// The rows of the study's parameters (shapes) in the editor.
std::vector<CTaParamSettingView::ParamRow> ParamRows(const StudyFacts& study,
                                                     const StudyValues& values) {
    std::vector<CTaParamSettingView::ParamRow> rows;
    for (std::size_t i = 0; i < study.params.size(); ++i) {
        rows.push_back({study.ParamName(i), study.params[i], values.params[static_cast<int>(i)]});
    }
    return rows;
}

std::vector<CTaParamSettingView::ShapeRow> ShapeRows(const StudyFacts& study,
                                                     const StudyValues& values) {
    std::vector<CTaParamSettingView::ShapeRow> rows;
    for (std::size_t i = 0; i < study.shapes.size(); ++i) {
        const StudyShapeInfo& info = study.shapes[i];
        rows.push_back({study.ShapeName(i), info.kind, values.shapes[i], info.defaultShape});
    }
    return rows;
}

}  // namespace

CTASetParam::CTASetParam()
    : SessionPage("IDS_TADIALOGS-SHEET_PARAM_TITLE"),
      m_state(std::make_unique<StudyPageState>()),
      m_ui(std::make_unique<Ui::TASetParam>()) {}

CTASetParam::~CTASetParam() = default;

void CTASetParam::SetInitialSelection(const CString& group, int nShowCount, int nSelPane,
                                      int nSelStudy) {
    const int paneCount =
        nShowCount > 0 ? nShowCount : Repository().GetStudyCountByGroupName(group);
    const int pane = std::max(nSelPane, 0);
    const bool isThere = pane < paneCount && pane < kPaneCount;
    m_state->initial = {group, isThere ? Place{pane, std::max(nSelStudy, 0) - 1} : Place()};
}

void CTASetParam::SetStudySpecialType(VolumeAmountType type, bool first, bool second) {
    m_state->specialType = type;
    m_state->specialFlags = {first, second};
}

bool CTASetParam::OnInitDialog() {
    auto* form = new QWidget;
    m_ui->setupUi(form);
    m_ui->studyTree->SetDragEnabled(true);
    m_ui->studyTree->setMinimumWidth(fontMetrics().horizontalAdvance('0') * kTreeCharacters);
    SetForm(*form);
    ConnectControls();
    AddShortcuts();
    if (SharedSession() == nullptr && m_state->initial) {
        Session().SetActiveGroup(m_state->initial->group);
    }
    m_ui->studyTree->setFocus();
    return true;
}

// ---- Showing ----

void CTASetParam::OnSetActive() {
    Refresh();
    if (Session().Draft(m_state->group).FaultyStudies().contains(m_ui->studyTree->CurrentType())) {
        ShowFirstFault();
    }
}

void CTASetParam::OnSettingsReloaded() {
    if (IsCreated()) {
        Refresh();
    }
}

void CTASetParam::Refresh() {
    SettingsSession& session = Session();
    if (Repository().FindGroup(session.ActiveGroup()) == 0) {
        session.SetActiveGroup(Repository().GetSystemDefaultGroup());
    }
    const GroupDraft& draft = session.Draft(session.ActiveGroup());
    const bool isOther = m_state->number != draft.UniNum() || m_ui->studyTree->Studies().empty();
    m_state->group = draft.Group();
    m_state->number = draft.UniNum();
    const QString name = ToQString(m_state->group);
    m_ui->groupLabel->setText(LangText("IDS_TADIALOGS-SHEET_GROUP", name));
    m_ui->groupLabel->setToolTip(name);
    const auto initial = std::exchange(m_state->initial, std::nullopt);
    if (initial && initial->group == m_state->group) {
        FillTree(&initial->place);
    } else {
        const Place first{0, -1};
        FillTree(isOther ? &first : nullptr);
    }
}

void CTASetParam::FillTree(const Place* select) {
    const GroupDraft& draft = Session().Draft(m_state->group);
    StudyTree& tree = *m_ui->studyTree;
    const QSignalBlocker quiet(m_ui->showCountSpin);
    m_ui->showCountSpin->setValue(draft.ShowCount());
    if (select != nullptr) {
        tree.SetStudies(draft.Studies(), draft.ShowCount(), *select);
    } else {
        tree.SetStudies(draft.Studies(), draft.ShowCount());
    }
}

void CTASetParam::ShowCurrentStudy() {
    CTaParamSettingView& view = *m_ui->settingView;
    GroupDraft& draft = Session().Draft(m_state->group);
    const StudyType type = m_ui->studyTree->CurrentType();
    m_state->study = draft.IsEditable() ? Session().Facts(type) : std::nullopt;
    if (type == kNoStudy) {
        view.ShowHint(LangText("IDS_TADIALOGS-SHEET_NO_STUDY_SELECTED"));
    } else if (!m_state->study) {
        view.ShowHint(LangText("IDS_TADIALOGS-SHEET_STUDY_NOT_EDITABLE",
                               ta::groupfile::StudyLabel(Repository(), type)));
    } else {
        const StudyFacts& study = *m_state->study;
        const StudyValues& values = draft.SettingsOf(study);
        view.ShowStudy(LangText("IDS_TADIALOGS-SHEET_STUDY_TITLE", study.name, study.abbreviation),
                       ParamRows(study, values), ShapeRows(study, values));
    }
    ShowFaults();
    UpdateButtons();
}

void CTASetParam::ShowFaults() {
    GroupDraft& draft = Session().Draft(m_state->group);
    if (m_state->study) {
        m_ui->settingView->SetParamFaults(draft.Faults(*m_state->study));
    }
    m_ui->studyTree->SetFaulty(draft.FaultyStudies());
}

void CTASetParam::ShowFirstFault() {
    GroupDraft& draft = Session().Draft(m_state->group);
    const std::set<StudyType> faulty = draft.FaultyStudies();
    if (!faulty.contains(m_ui->studyTree->CurrentType())) {
        const auto types = StudiesIn(draft.Studies());
        m_ui->studyTree->SelectType(*std::ranges::find_if(
            types, [&faulty](StudyType type) { return faulty.contains(type); }));
    }
    if (m_state->study) {
        const QStringList faults = draft.Faults(*m_state->study);
        const auto fault =
            std::ranges::find_if(faults, [](const QString& reason) { return !reason.isEmpty(); });
        m_ui->settingView->FocusParam(static_cast<int>(fault - faults.begin()));
    }
}

// ---- Saving and closing ----

bool CTASetParam::CanSave() {
    const CTaSettingHandle::ReloadHold hold(Repository());
    for (GroupDraft& draft : Session().Drafts()) {
        if (draft.FaultyStudies().empty()) {
            continue;
        }
        Session().SetActiveGroup(draft.Group());
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
    const QStringList refused = Session().WriteDrafts();
    if (!refused.isEmpty()) {
        Tell(LangText("IDS_TADIALOGS-SHEET_REFUSED", refused.join('\n')));
    }
    return refused.isEmpty() ? 1 : 0;
}

bool CTASetParam::HasEdits() const {
    return Session().HasDraftEdits();
}

void CTASetParam::WriteEdits() {
    SaveStudy();
}
