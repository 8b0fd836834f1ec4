#include "sheet/TASetGroup.h"

#include "groupfile/TAGroupExport.h"
#include "groupfile/TAGroupImport.h"
#include "platform/FormatText.h"
#include "platform/QuoteInterface.h"
#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"
#include "sheet/GroupRows.h"
#include "sheet/ScreenLines.h"
#include "sheet/SettingsSession.h"
#include "sheet/TAGroupEditDlg.h"
#include "ui_TASetGroup.h"

#include <QFileInfo>
#include <QSignalBlocker>

#include <algorithm>

using namespace ta::ui;
using ta::GroupNames;
using ta::Repository;
using namespace ta::sheet;

namespace {

/// In double-byte characters: the longest name, the frame and the scroll bar.
constexpr int kListWidth = 15 + 2;
/// A row of so many characters is never cut, whichever they are, and so need not be measured.
constexpr int kSurelyWhole = 14;

constexpr int kUp = -1;
constexpr int kDown = 1;

/// Asks for a name, preset with `name`, which it replaces; false when the user cancelled.
bool AskName(QWidget& parent, CTAGroupEditDlg::Mode mode, CString& name) {
    CTAGroupEditDlg dialog(&parent);
    dialog.SetMode(mode);
    dialog.SetName(name);
    const bool entered = dialog.DoModal() == kIdOk;
    name = dialog.GetName();
    return entered;
}

}  // namespace

CTASetGroup::CTASetGroup()
    : SessionPage("IDS_TECHVIEW-STRING_GROUPSETTING_TITLE"),
      m_ui(std::make_unique<Ui::TASetGroup>()) {}

CTASetGroup::~CTASetGroup() = default;

int CTASetGroup::IsDragList() const {
    return Session().IsDragged() ? 1 : 0;
}

int CTASetGroup::IsEditGroup() const {
    return Session().IsEdited() ? 1 : 0;
}

void CTASetGroup::ConnectControls() {
    Handle(m_ui->addButton, &QPushButton::clicked, [this] { OnAdd(); });
    Handle(m_ui->modifyButton, &QPushButton::clicked, [this] { OnModify(); });
    Handle(m_ui->deleteButton, &QPushButton::clicked, [this] { OnDelete(); });
    Handle(m_ui->importButton, &QPushButton::clicked, [this] { OnImport(); });
    Handle(m_ui->exportButton, &QPushButton::clicked, [this] { OnExport(); });
    Handle(m_ui->moveUpButton, &QPushButton::clicked, [this] { OnMoveStudy(kUp); });
    Handle(m_ui->moveDownButton, &QPushButton::clicked, [this] { OnMoveStudy(kDown); });
    Handle(m_ui->groupList, &DragListBox::dragEnded, [this] { OnDragEnd(); });
    Handle(m_ui->groupList, &DragListBox::currentItemChanged, [this] { ShowSelectedGroup(); });
    Handle(m_ui->studyTree, &StudyTree::currentItemChanged, [this] { UpdateButtons(); });
}

void CTASetGroup::AddShortcuts() {
    const struct {
        QKeySequence keys;
        QWidget* list;
        QPushButton* button;
    } shortcuts[] = {
        {Qt::Key_Insert, m_ui->groupList, m_ui->addButton},
        {Qt::Key_F2, m_ui->groupList, m_ui->modifyButton},
        {Qt::Key_Delete, m_ui->groupList, m_ui->deleteButton},
        {Qt::CTRL | Qt::Key_Up, m_ui->studyTree, m_ui->moveUpButton},
        {Qt::CTRL | Qt::Key_Down, m_ui->studyTree, m_ui->moveDownButton},
    };
    for (const auto& shortcut : shortcuts) {
        AddShortcut(shortcut.keys, *shortcut.list, *shortcut.button);
    }
}

bool CTASetGroup::OnInitDialog() {
    auto* form = new QWidget;
    m_ui->setupUi(form);
    m_ui->groupList->setMinimumWidth(fontMetrics().horizontalAdvance(QString(kListWidth, u'功')));
    SetForm(*form);
    ConnectControls();
    AddShortcuts();
    LoadScreens();
    ReloadGroups(Session().ActiveGroup());
    m_ui->groupList->setFocus();
    return true;
}

void CTASetGroup::vLoadLanguageString() {
    SessionPage::vLoadLanguageString();
    for (const QLabel* label : {m_ui->groupLabel, m_ui->studyLabel, m_ui->screenLabel}) {
        label->buddy()->setAccessibleName(WithoutMnemonic(label->text()));
    }
}

void CTASetGroup::OnSetActive() {
    if (Session().ActiveGroup() != m_group) {
        m_ui->groupList->setCurrentRow(RowOf(*m_ui->groupList, Session().ActiveGroup()));
    }
    // The study page may have edited them.
    RefreshStudies();
}

void CTASetGroup::OnSettingsReloaded() {
    if (!IsCreated()) {
        return;
    }
    m_canEdit = true;
    m_ui->groupList->SetDragEnabled(true);
    m_ui->hintLabel->clear();
    if (HasEdits()) {  // done between the reload and now
        RefreshHint();
    } else {
        LoadScreens();
    }
    ReloadGroups(Session().ActiveGroup());
}

// ---- What is shown ----

void CTASetGroup::ReloadGroups(const CString& select) {
    {
        const QSignalBlocker quiet(m_ui->groupList);
        FillGroupRows(*m_ui->groupList);
        m_ui->groupList->setUniformItemSizes(!HasLongRow(*m_ui->groupList, kSurelyWhole));
        m_ui->groupList->setCurrentRow(RowOf(*m_ui->groupList, select));
    }
    ShowSelectedGroup();
}

void CTASetGroup::ShowSelectedGroup() {
    const QListWidgetItem* row = m_ui->groupList->currentItem();
    m_group = row == nullptr ? CString() : NameOfRow(*row);
    Session().SetActiveGroup(m_group);
    RefreshStudies();
    ShowScreens();
    UpdateButtons();
}

void CTASetGroup::RefreshStudies() {
    StudyTree& tree = *m_ui->studyTree;
    const GroupDraft& draft = Session().Draft(m_group);
    if (tree.Studies() != draft.Studies() || m_showCount != draft.ShowCount()) {
        m_showCount = draft.ShowCount();
        tree.SetStudies(draft.Studies(), m_showCount);
    }
}

void CTASetGroup::LoadScreens() {
    // The question commits what is pending, so it is put for all groups at once and only while
    // nothing is half edited.
    m_screens.clear();
    for (const CString& name : GroupNames()) {
        const int uniNum = Repository().GetUniNumByGroupName(name);
        std::vector<ST_TA_ViewGroupInfo> views;
        Repository().GetTAViewGroupSetting(uniNum, views);
        m_screens[uniNum] = ScreenLines(views);
    }
}

void CTASetGroup::ShowScreens() {
    QListWidget& list = *m_ui->screenList;
    list.setUpdatesEnabled(false);
    list.clear();
    if (const QListWidgetItem* row = m_ui->groupList->currentItem()) {
        for (const CString& line : m_screens[UniNumOfRow(*row)]) {
            list.addItem(ToQString(line));
        }
    }
    list.setUpdatesEnabled(true);
}

void CTASetGroup::RefreshHint() {
    if (!Session().IsEdited()) {
        m_canEdit = false;
        m_ui->hintLabel->setText(LangText("IDS_TECHVIEW-STRING_GROUPSETTING_DISABLE_EDIT"));
    } else {
        m_ui->groupList->SetDragEnabled(false);
        m_ui->hintLabel->setText(LangText("IDS_TECHVIEW-STRING_GROUPSETTING_DISABLE_DRAG"));
    }
    UpdateButtons();
}

void CTASetGroup::UpdateButtons() {
    const bool selected = m_ui->groupList->currentRow() >= 0;
    m_ui->addButton->setEnabled(m_canEdit);
    m_ui->importButton->setEnabled(m_canEdit);
    m_ui->modifyButton->setEnabled(m_canEdit && selected);
    m_ui->deleteButton->setEnabled(m_canEdit && selected && m_ui->groupList->count() > 1);
    m_ui->moveUpButton->setEnabled(m_ui->studyTree->CanMove(kUp));
    m_ui->moveDownButton->setEnabled(m_ui->studyTree->CanMove(kDown));
}

// ---- Saving ----

int CTASetGroup::SaveChange() {
    StoreOrder();
    StoreStudies();
    Session().ClearModified();
    return 1;
}

bool CTASetGroup::HasEdits() const {
    return Session().HasListEdits();
}

void CTASetGroup::WriteEdits() {
    SaveChange();
}

void CTASetGroup::StoreOrder() {
    Repository().ReloadTASetting();
    if (SharedSession() != nullptr && Session().News().pending) {
        return;  // the rows are of the old state and will be filled again
    }
    Session().StoreOrder(NamesOfRows(*m_ui->groupList));
}

void CTASetGroup::StoreStudies() {
    Session().WriteStudies(m_group);
}

// ---- Editing the list of groups ----

void CTASetGroup::OnListEdited(const CString& select) {
    ReloadGroups(select);
    RefreshHint();
    m_ui->groupList->setFocus();
}

void CTASetGroup::OnAdd() {
    if (Session().IsDragged()) {
        return;
    }
    if (IsFull(GroupNames().size(), Repository().GetMaxTAGroupCount())) {
        TellKey("IDS_TECHVIEW-STRING_GROUPSETTING_MAXCNT");
        return;
    }
    CString name;
    while (AskName(*this, CTAGroupEditDlg::kAdd, name)) {
        if (Session().AddGroup(name)) {
            StoreStudies();
            OnListEdited(name);
            return;
        }
        TellKey("IDS_TECHVIEW-STRING_GROUPIMPORT_EXIST_ALREADY");
    }
}

void CTASetGroup::OnModify() {
    if (Session().IsDragged() || m_group.empty()) {
        return;
    }
    CString name = m_group;
    while (AskName(*this, CTAGroupEditDlg::kModify, name)) {
        if (Repository().FindGroup(name) == 0) {
            SaveChange();
            if (Session().RenameGroup(m_group, name)) {
                OnListEdited(name);
            }
            return;
        }
        const CString format = BKQuoteInterface::GetBKInterface().LangGetLangString(
            "IDS_OPTIONAL-SHEET_MSG_ITEM_EXIST");
        Tell(ToQString(ta::text::Format(format, name)));
        name = m_group;
    }
}

void CTASetGroup::OnDelete() {
    if (Session().IsDragged() || m_group.empty() || GroupNames().size() <= 1) {
        return;
    }
    const CString name = m_group;
    const auto position = static_cast<unsigned>(m_ui->groupList->currentRow());
    const QString question = LangText("IDS_TECHVIEW-STRING_GROUPSETTING_CHKDELETE");
    // Other terminals may delete groups while the question stands.
    if (Ask(QString("%1 - 「%2」").arg(question, ToQString(name)), "") == Answer::Yes &&
        Session().DeleteGroup(name)) {
        const CString next = Repository().GetGroupNameByIndex(position);
        OnListEdited(next.empty() ? Repository().GetSystemDefaultGroup() : next);
    }
}

void CTASetGroup::OnDragEnd() {
    if (Session().IsEdited()) {
        return;
    }
    const std::vector<CString> names = GroupNames();
    if (SharedSession() != nullptr && Session().News().pending) {
        return;  // the rows are of the old state and will be filled again
    }
    const std::vector<CString> rows = NamesOfRows(*m_ui->groupList);
    if (names.size() != rows.size()) {
        Session().SetEdited();
        RefreshHint();
        return;
    }
    Session().SetDragged(names != rows);
    if (names != rows) {
        RefreshHint();
    }
}

// ---- Group files ----

void CTASetGroup::OnImport() {
    const QString path = CurrentPrompts().OpenFile(
        this, LangText("IDS_TECHVIEW-STRING_GROUPIMPORT_TITLE"), "*.TASG", "*.TASG");
    if (path.isNull()) {
        return;
    }
    if (!QFileInfo::exists(path)) {
        TellKey("IDS_TECHVIEW-STRING_GROUPIMPORT_NOSELECT_FILE");
        return;
    }
    StoreOrder();
    const int row = std::max(m_ui->groupList->currentRow(), 0);
    CTAGroupImport import(path, this);
    if (import.DoModal() == kIdOk) {
        Session().NoteImport(import.OverwrittenGroups());
        Session().NoteImport(import.AddedGroups());
        LoadScreens();
        OnListEdited(Repository().GetGroupNameByIndex(static_cast<unsigned>(row)));
        Tell(import.ResultText(), PromptIcon::None);
    }
}

void CTASetGroup::OnExport() {
    StoreOrder();
    CTAGroupExport(this).DoModal();
}

// ---- Moving studies ----

void CTASetGroup::OnMoveStudy(int by) {
    StudyTree& tree = *m_ui->studyTree;
    RefreshStudies();
    if (!tree.CanMove(by)) {
        return;
    }
    StudyLists lists = tree.Studies();
    const Place place = MoveBy(lists, tree.CurrentPlace(), by);
    if (TellEmptyPane(tree.Studies(), lists)) {
        return;
    }
    Session().Draft(m_group).SetStudies(lists);
    Session().NoteModified();
    tree.SetStudies(lists, m_showCount, place);
    StoreStudies();
    Session().ReportGroup(static_cast<unsigned>(Repository().GetUniNumByGroupName(m_group)));
    tree.setFocus();
}
