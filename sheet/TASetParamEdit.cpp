// The study page's controls: what the user edits.

#include "platform/SyncInfo.h"
#include "platform/ui/TextBridge.h"
#include "sheet/PaneLists.h"
#include "sheet/StudyPicker.h"
#include "sheet/TASetParam.h"
#include "sheet/TASetParamState.h"
#include "ui_TASetParam.h"

#include <QShortcut>

#include <algorithm>

using namespace ta::ui;
using namespace ta::sheet;

void CTASetParam::ConnectControls() {
    Handle(m_ui->studyTree, &QTreeWidget::currentItemChanged, [this] { ShowCurrentStudy(); });
    connect(m_ui->studyTree, &StudyTree::studyDropped, this,
            [this](int pane, int study, int toPane, int toStudy) {
                Guard([&] { OnStudyDropped(pane, study, toPane, toStudy); });
            });
    connect(m_ui->showCountSpin, &QSpinBox::valueChanged, this,
            [this](int count) { Guard([&] { OnShowCount(count); }); });
    connect(m_ui->settingView, &CTaParamSettingView::paramEdited, this,
            [this](int index, const QString& text) {
                Guard([&] {
                    m_state->Draft().SetParamText(*m_state->shown, index, text);
                    ShowFaults();
                    UpdateButtons();
                });
            });
    connect(m_ui->settingView, &CTaParamSettingView::shapeEdited, this,
            [this](int index, const StudyShape& shape) {
                Guard([&] {
                    m_state->Draft().SetShape(*m_state->shown, index, shape);
                    UpdateButtons();
                });
            });
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
        auto* shortcut = new QShortcut(key, m_ui->studyTree);
        shortcut->setContext(Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, button, &QPushButton::click);
    }
}

void CTASetParam::UpdateButtons() {
    const StudyTree& tree = *m_ui->studyTree;
    const int pane = tree.CurrentPane();
    const int study = tree.CurrentStudy();
    const bool isStudy = study >= 0;
    const int place = isStudy ? study : pane;
    const int siblings = isStudy ? tree.topLevelItem(pane)->childCount() : tree.topLevelItemCount();
    m_ui->addButton->setEnabled(pane >= 0);
    m_ui->removeButton->setEnabled(isStudy);
    m_ui->upButton->setEnabled(place > 0);
    m_ui->downButton->setEnabled(place >= 0 && place + 1 < siblings);
    m_ui->previousPaneButton->setEnabled(isStudy && pane > 0);
    m_ui->nextPaneButton->setEnabled(isStudy && pane + 1 < tree.topLevelItemCount());
    GroupDraft& draft = m_state->Draft();
    m_ui->restoreStudyButton->setEnabled(m_state->shown &&
                                         !draft.ChangesToDefaults(*m_state->shown).isEmpty());
    m_ui->restoreGroupButton->setEnabled(!m_state->StudiesOffDefaults().empty());
}

// ---- Studies ----

bool CTASetParam::IsTreeUpToDate() {
    // The settings may have been loaded again just now.
    const bool upToDate = m_state->filled == m_state->Draft().Studies();
    if (!upToDate) {
        FillTree();
    }
    return upToDate;
}

void CTASetParam::SetStudies(const StudyLists& lists, int pane, int study) {
    m_state->Draft().SetStudies(lists);
    FillTree();
    m_ui->studyTree->Select(pane, study);
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
    m_state->Draft().SetShowCount(count);
    FillTree();
}

void CTASetParam::OnAddStudy() {
    const int pane = m_ui->studyTree->CurrentPane();
    if (!IsTreeUpToDate() || RefuseFullPane(m_state->filled, pane)) {
        return;
    }
    StudyPicker picker(this);
    const bool chosen = picker.DoModal() == kIdOk;
    m_ui->studyTree->setFocus();
    if (chosen && IsTreeUpToDate()) {
        StudyLists lists = m_state->filled;
        AppendStudy(lists, pane, picker.ChosenStudy());
        SetStudies(lists, pane, StudyCount(lists, pane) - 1);
    }
}

void CTASetParam::OnRemoveStudy() {
    const int pane = m_ui->studyTree->CurrentPane();
    const int study = m_ui->studyTree->CurrentStudy();
    if (IsTreeUpToDate()) {
        StudyLists lists = m_state->filled;
        RemoveStudy(lists, pane, study);
        SetStudies(lists, pane, std::min(study, StudyCount(lists, pane) - 1));
    }
}

void CTASetParam::OnMove(int by) {
    const int pane = m_ui->studyTree->CurrentPane();
    const int study = m_ui->studyTree->CurrentStudy();
    if (!IsTreeUpToDate()) {
        return;
    }
    StudyLists lists = m_state->filled;
    if (study < 0) {
        SwapPanes(lists, pane, pane + by);
        SetStudies(lists, pane + by, -1);
    } else {
        MoveStudy(lists, pane, study, pane, by < 0 ? study - 1 : study + 2);
        SetStudies(lists, pane, study + by);
    }
}

void CTASetParam::OnMoveToPane(int by) {
    const int pane = m_ui->studyTree->CurrentPane();
    OnStudyDropped(pane, m_ui->studyTree->CurrentStudy(), pane + by, kSlotsPerPane);
}

void CTASetParam::OnStudyDropped(int pane, int study, int toPane, int toStudy) {
    if (!IsTreeUpToDate()) {
        return;
    }
    StudyLists lists = m_state->filled;
    if (toPane != pane && RefuseFullPane(lists, toPane)) {
        return;
    }
    const int place = MoveStudy(lists, pane, study, toPane, toStudy);
    SetStudies(lists, toPane, place);
}

// ---- Defaults ----

bool CTASetParam::AskRestore(const QString& question) {
    const QString title = ToQString(CSyncInfo::GetSettingCFG().SYS_szGetMessageBoxTitle());
    return CurrentPrompts().AskYesNo(this, PromptIcon::Question, title, question) == Answer::Yes;
}

void CTASetParam::OnRestoreStudy() {
    const StudyFacts study = *m_state->shown;
    const QStringList changes = m_state->Draft().ChangesToDefaults(study);
    if (AskRestore(
            LangText("IDS_TADIALOGS-SHEET_ASK_RESTORE_STUDY", study.name, changes.join('\n')))) {
        m_state->Draft().RestoreDefaults(study);
        ShowCurrentStudy();
    }
}

void CTASetParam::OnRestoreGroup() {
    const std::vector<StudyFacts> studies = m_state->StudiesOffDefaults();
    const QString group = ToQString(m_state->group);
    if (AskRestore(LangText("IDS_TADIALOGS-SHEET_ASK_RESTORE_GROUP", group,
                            QString::number(studies.size()), m_state->ChangesOf(studies)))) {
        for (const StudyFacts& study : studies) {
            m_state->Draft().RestoreDefaults(study);
        }
        ShowCurrentStudy();
    }
}
