// The study page's controls: what the user edits.

#include "sheet/TASetParam.h"

#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"
#include "sheet/DefaultChanges.h"
#include "sheet/FreeColours.h"
#include "sheet/SettingsSession.h"
#include "sheet/StudyPageState.h"
#include "sheet/StudyPicker.h"
#include "ui_TASetParam.h"

#include <algorithm>

using namespace ta::ui;
using ta::Repository;
using namespace ta::sheet;

namespace {

/// The group's studies whose settings are not the defaults, with what restoring them changes.
std::vector<DefaultChanges> ChangesOfGroup(SettingsSession& session, const CString& group) {
    std::vector<DefaultChanges> changes;
    GroupDraft& draft = session.Draft(group);
    for (const StudyType type : StudiesIn(draft.Studies())) {
        const auto study = draft.IsEditable() ? session.Facts(type) : std::nullopt;
        if (study && !IsDefault(*study, draft.SettingsOf(*study))) {
            changes.push_back({*study, ChangesToDefaults(*study, draft.SettingsOf(*study))});
        }
    }
    return changes;
}

}  // namespace

void CTASetParam::ConnectControls() {
    Handle(m_ui->studyTree, &QTreeWidget::currentItemChanged, [this] { ShowCurrentStudy(); });
    Handle(m_ui->studyTree, &StudyTree::studyDropped,
           [this](int pane, int study, int toPane, int toStudy) {
               OnStudyDropped(pane, study, toPane, toStudy);
           });
    Handle(m_ui->showCountSpin, &QSpinBox::valueChanged, [this](int count) { OnShowCount(count); });
    Handle(m_ui->settingView, &CTaParamSettingView::paramEdited,
           [this](int index, const QString& text) { OnParamEdited(index, text); });
    Handle(m_ui->settingView, &CTaParamSettingView::shapeEdited,
           [this](int index, const StudyShape& shape) { OnShapeEdited(index, shape); });
    Handle(m_ui->addButton, &QPushButton::clicked, [this] { OnAddStudy(); });
    Handle(m_ui->removeButton, &QPushButton::clicked, [this] { OnRemoveStudy(); });
    Handle(m_ui->upButton, &QPushButton::clicked, [this] { OnMove(-1); });
    Handle(m_ui->downButton, &QPushButton::clicked, [this] { OnMove(1); });
    Handle(m_ui->previousPaneButton, &QPushButton::clicked, [this] { OnMoveToPane(-1); });
    Handle(m_ui->nextPaneButton, &QPushButton::clicked, [this] { OnMoveToPane(1); });
    Handle(m_ui->restoreStudyButton, &QPushButton::clicked, [this] { OnRestoreStudy(); });
    Handle(m_ui->restoreGroupButton, &QPushButton::clicked, [this] { OnRestoreGroup(); });
}

void CTASetParam::AddShortcuts() {
    const std::pair<QKeySequence, QPushButton*> keys[] = {
        {Qt::Key_Insert, m_ui->addButton},
        {Qt::Key_Delete, m_ui->removeButton},
        {Qt::CTRL | Qt::Key_Up, m_ui->upButton},
        {Qt::CTRL | Qt::Key_Down, m_ui->downButton},
        {Qt::CTRL | Qt::Key_Left, m_ui->previousPaneButton},
        {Qt::CTRL | Qt::Key_Right, m_ui->nextPaneButton},
    };
    for (const auto& [key, button] : keys) {
        AddShortcut(key, *m_ui->studyTree, *button);
    }
}

void CTASetParam::UpdateButtons() {
    const StudyTree& tree = *m_ui->studyTree;
    const Place place = tree.CurrentPlace();
    const bool isStudy = place.study >= 0;
    m_ui->addButton->setEnabled(place.pane >= 0);
    m_ui->removeButton->setEnabled(isStudy);
    m_ui->upButton->setEnabled(tree.CanMove(-1));
    m_ui->downButton->setEnabled(tree.CanMove(1));
    m_ui->previousPaneButton->setEnabled(isStudy && place.pane > 0);
    m_ui->nextPaneButton->setEnabled(isStudy && place.pane + 1 < tree.topLevelItemCount());
    GroupDraft& draft = Session().Draft(m_state->group);
    m_ui->restoreStudyButton->setEnabled(
        m_state->study && !IsDefault(*m_state->study, draft.SettingsOf(*m_state->study)));
    m_ui->restoreGroupButton->setEnabled(!ChangesOfGroup(Session(), m_state->group).empty());
}

// The settings may have been loaded again just now, and then the place is another one.

bool CTASetParam::IsGroupUpToDate() {
    Repository().ReloadTASetting();
    const bool upToDate = Session().ActiveGroup() == m_state->group;
    if (!upToDate) {
        Refresh();
    }
    return upToDate;
}

bool CTASetParam::IsTreeUpToDate() {
    if (!IsGroupUpToDate()) {
        return false;
    }
    const bool upToDate = Session().Draft(m_state->group).Studies() == m_ui->studyTree->Studies();
    if (!upToDate) {
        FillTree();
    }
    return upToDate;
}

// ---- Settings ----

void CTASetParam::OnParamEdited(int index, const QString& text) {
    if (IsGroupUpToDate()) {
        Session().Draft(m_state->group).SetParamText(*m_state->study, index, text);
        ShowFaults();
        UpdateButtons();
    }
}

void CTASetParam::OnShapeEdited(int index, const StudyShape& shape) {
    if (IsGroupUpToDate()) {
        Session().Draft(m_state->group).SetShape(*m_state->study, index, shape);
        UpdateButtons();
    }
}

// ---- Studies ----

void CTASetParam::SetStudies(const StudyLists& lists, Place place) {
    if (TellEmptyPane(m_ui->studyTree->Studies(), lists)) {
        return;
    }
    GroupDraft& draft = Session().Draft(m_state->group);
    draft.SetStudies(lists);
    m_ui->studyTree->SetStudies(draft.Studies(), draft.ShowCount(), place);
}

bool CTASetParam::RefuseFullPane(const StudyLists& lists, int pane) {
    const bool full = IsPaneFull(lists, pane);
    if (full) {
        Tell(LangText("IDS_TADIALOGS-SHEET_PANE_FULL", QString::number(pane + 1),
                      QString::number(kSlotsPerPane)));
    }
    return full;
}

void CTASetParam::OnShowCount(int count) {
    if (IsGroupUpToDate()) {
        Session().Draft(m_state->group).SetShowCount(count);
        FillTree();
    }
}

void CTASetParam::OnAddStudy() {
    const int pane = m_ui->studyTree->CurrentPlace().pane;
    if (!IsTreeUpToDate() || RefuseFullPane(m_ui->studyTree->Studies(), pane)) {
        return;
    }
    StudyPicker picker(this);
    const bool chosen = picker.DoModal() == kIdOk;
    m_ui->studyTree->setFocus();
    if (chosen && IsTreeUpToDate()) {
        StudyLists lists = m_ui->studyTree->Studies();
        AppendStudy(lists, pane, picker.ChosenStudy());
        TakeFreeColours(Session().Draft(m_state->group), lists, pane, picker.ChosenStudy());
        SetStudies(lists, {pane, StudyCount(lists, pane) - 1});
    }
}

void CTASetParam::OnRemoveStudy() {
    const auto [pane, study] = m_ui->studyTree->CurrentPlace();
    if (IsTreeUpToDate()) {
        StudyLists lists = m_ui->studyTree->Studies();
        RemoveStudy(lists, pane, study);
        SetStudies(lists, {pane, std::min(study, StudyCount(lists, pane) - 1)});
    }
}

void CTASetParam::OnMove(int by) {
    const Place place = m_ui->studyTree->CurrentPlace();
    if (IsTreeUpToDate()) {
        StudyLists lists = m_ui->studyTree->Studies();
        const Place moved = MoveBy(lists, place, by);
        SetStudies(lists, moved);
    }
}

void CTASetParam::OnMoveToPane(int by) {
    const auto [pane, study] = m_ui->studyTree->CurrentPlace();
    OnStudyDropped(pane, study, pane + by, kSlotsPerPane);
}

void CTASetParam::OnStudyDropped(int pane, int study, int toPane, int toStudy) {
    if (!IsTreeUpToDate() ||
        (toPane != pane && RefuseFullPane(m_ui->studyTree->Studies(), toPane))) {
        return;
    }
    StudyLists lists = m_ui->studyTree->Studies();
    const int place = MoveStudy(lists, pane, study, toPane, toStudy);
    SetStudies(lists, {toPane, place});
}

// ---- Defaults ----

void CTASetParam::OnRestoreStudy() {
    const StudyFacts study = *m_state->study;
    const StudyValues values = Session().Draft(m_state->group).SettingsOf(study);
    if (Ask(LangText("IDS_TADIALOGS-SHEET_ASK_RESTORE_STUDY", study.name,
                     ChangesToDefaults(study, values).join('\n'))) == Answer::Yes &&
        IsGroupUpToDate()) {
        Session().Draft(m_state->group).RestoreDefaults(study);
        ShowCurrentStudy();
    }
}

void CTASetParam::OnRestoreGroup() {
    const std::vector<DefaultChanges> changes = ChangesOfGroup(Session(), m_state->group);
    if (Ask(LangText("IDS_TADIALOGS-SHEET_ASK_RESTORE_GROUP", ToQString(m_state->group),
                     QString::number(changes.size()), InSomeLines(changes))) == Answer::Yes &&
        IsGroupUpToDate()) {
        for (const DefaultChanges& each : changes) {
            Session().Draft(m_state->group).RestoreDefaults(each.study);
        }
        ShowCurrentStudy();
    }
}
