#include "sheet/TASetGroup.h"

#include "groupfile/TAGroupExport.h"
#include "groupfile/TAGroupImport.h"
#include "platform/FormatText.h"
#include "platform/QuoteInterface.h"
#include "platform/ui/TextBridge.h"
#include "settings/TaSettingHandle.h"
#include "sheet/GroupRows.h"
#include "sheet/ScreenLines.h"
#include "sheet/TAGroupEditDlg.h"
#include "sheet/TaSettingSheet.h"
#include "ui_TASetGroup.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QShortcut>
#include <QSignalBlocker>

#include <algorithm>

using namespace ta::ui;
using namespace ta::sheet;

namespace {

/// In double-byte characters: the longest name, the frame and the scroll bar.
constexpr int kListWidth = 15 + 2;

constexpr int kUp = -1;
constexpr int kDown = 1;

CTaSettingHandle& Repository() {
    return CTaSettingHandle::GetInstance();
}

/// The studies of every group that is in the list.
std::map<CString, StudyLists> StudiesOfGroups() {
    std::map<CString, StudyLists> studies;
    for (const CString& name : GroupNames()) {
        Repository().GetStudyListByGroupName(name, studies[name]);
    }
    return studies;
}

/// Asks for a name, preset with `name`, which it replaces; false when the user cancelled.
bool AskName(QWidget& parent, CTAGroupEditDlg::Mode mode, CString& name) {
    CTAGroupEditDlg dialog(&parent);
    dialog.SetMode(mode);
    dialog.SetName(name);
    const bool entered = dialog.DoModal() == kIdOk;
    name = dialog.GetName();
    return entered;
}

bool Ask(QWidget& parent, const QString& question) {
    return CurrentPrompts().AskYesNo(&parent, PromptIcon::Question, {}, question) == Answer::Yes;
}

}  // namespace

CTASetGroup::CTASetGroup() : m_ui(std::make_unique<Ui::TASetGroup>()) {
    m_ui->setupUi(this);
    m_ui->groupList->setMinimumWidth(fontMetrics().horizontalAdvance(QString(kListWidth, u'功')));
    ConnectControls();
}

CTASetGroup::~CTASetGroup() = default;

CTaSettingSheet* CTASetGroup::Sheet() const {
    return qobject_cast<CTaSettingSheet*>(GetSheet());
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
        auto* key = new QShortcut(shortcut.keys, shortcut.list);
        key->setContext(Qt::WidgetShortcut);
        connect(key, &QShortcut::activated, shortcut.button, &QPushButton::click);
    }
}

bool CTASetGroup::OnInitDialog() {
    LoadLanguageStrings();
    NameLists();
    LoadScreens();
    ReloadGroups(Sheet() != nullptr ? Sheet()->GetActiveGroup() : m_group);
    m_ui->groupList->setFocus();
    return true;
}

void CTASetGroup::NameLists() {
    // The labels' texts without their mnemonics, "(&G)" or "&G".
    static const QRegularExpression mnemonic(R"(\s*\(&.\)|&)");
    for (const QLabel* label : {m_ui->groupLabel, m_ui->studyLabel, m_ui->screenLabel}) {
        label->buddy()->setAccessibleName(label->text().remove(mnemonic));
    }
}

void CTASetGroup::OnSetActive() {
    if (CTaSettingSheet* sheet = Sheet(); sheet != nullptr && sheet->GetActiveGroup() != m_group) {
        m_ui->groupList->setCurrentRow(RowOf(*m_ui->groupList, sheet->GetActiveGroup()));
    }
    // The study page may have edited them.
    RefreshStudies();
}

bool CTASetGroup::HasEdits() const {
    return m_bEditGroup != 0 || m_bDragList != 0 || m_bModify != 0;
}

void CTASetGroup::ForgetEdits() {
    m_bModify = 0;
    m_bEditGroup = 0;
    m_bDragList = 0;
}

void CTASetGroup::OnSettingsReloaded() {
    if (!IsCreated()) {
        return;
    }
    m_canEdit = true;
    m_ui->groupList->SetDragEnabled(true);
    m_ui->hintLabel->clear();
    if (m_bEditGroup != 0 || m_bDragList != 0) {
        RefreshHint();
    }
    if (!HasEdits()) {
        LoadScreens();
    }
    ReloadGroups(Sheet() != nullptr ? Sheet()->GetActiveGroup() : m_group);
}

// ---- What is shown ----

void CTASetGroup::ReloadGroups(const CString& select) {
    {
        const QSignalBlocker quiet(m_ui->groupList);
        FillGroupRows(*m_ui->groupList);
        m_ui->groupList->setCurrentRow(RowOf(*m_ui->groupList, select));
    }
    ShowSelectedGroup();
}

void CTASetGroup::ShowSelectedGroup() {
    const QListWidgetItem* row = m_ui->groupList->currentItem();
    m_group = row == nullptr ? CString() : NameOfRow(*row);
    if (CTaSettingSheet* sheet = Sheet()) {
        sheet->SetActiveGroup(m_group);
    }
    RefreshStudies();
    ShowScreens();
    UpdateButtons();
}

CTASetGroup::Studies CTASetGroup::ShownStudies() const {
    Studies studies{.group = m_group, .lists = {}, .showCount = 0};
    if (const CTaSettingSheet* sheet = Sheet()) {
        studies.lists = sheet->GetShownStudies(m_group);
        studies.showCount = sheet->GetShownCount(m_group);
    } else {
        Repository().GetStudyListByGroupName(m_group, studies.lists);
        studies.showCount = Repository().GetStudyCountByGroupName(m_group);
    }
    return studies;
}

void CTASetGroup::RefreshStudies() {
    Studies shown = ShownStudies();
    if (shown != m_studies) {
        m_ui->studyTree->SetStudies(shown.lists, shown.showCount);
        m_studies = std::move(shown);
        UpdateButtons();
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
    if (m_bEditGroup == 0) {
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
    m_ui->moveUpButton->setEnabled(CanMoveStudy(kUp));
    m_ui->moveDownButton->setEnabled(CanMoveStudy(kDown));
}

bool CTASetGroup::CanMoveStudy(int by) const {
    QTreeWidgetItem* item = m_ui->studyTree->currentItem();
    if (item == nullptr) {
        return false;
    }
    const QTreeWidgetItem* parent =
        item->parent() != nullptr ? item->parent() : m_ui->studyTree->invisibleRootItem();
    return parent->child(parent->indexOfChild(item) + by) != nullptr;
}

// ---- Saving ----

int CTASetGroup::SaveChange() {
    StoreOrder();
    StoreStudies();
    m_bModify = 0;
    return 1;
}

void CTASetGroup::StoreOrder() {
    // Groups that another terminal has added or deleted since the list was filled stay so.
    const std::vector<CString> before = GroupNames();
    std::vector<CString> names = InOrder(before, NamesOfRows(*m_ui->groupList));
    if (names != before) {
        m_bModify = 1;
    }
    Repository().SetGroupNameList(names);
}

void CTASetGroup::StoreStudies() {
    // What the study page has edited or saved in the meantime.
    RefreshStudies();
    Repository().SetStudyListByGroupName(m_group, m_ui->studyTree->Studies());
    if (CTaSettingSheet* sheet = Sheet()) {
        sheet->OnStudiesStored(m_group);
    }
    m_studies = ShownStudies();
}

void CTASetGroup::ReportChange(int uniNum) {
    if (CTaSettingSheet* sheet = Sheet()) {
        sheet->AddToChangeGroupList(static_cast<unsigned>(uniNum));
    }
}

// ---- Editing the list of groups ----

void CTASetGroup::OnListEdited(const CString& select) {
    ReloadGroups(select);
    m_bModify = 1;
    m_bEditGroup = 1;
    RefreshHint();
    m_ui->groupList->setFocus();
}

void CTASetGroup::OnAdd() {
    if (m_bDragList != 0) {
        return;
    }
    if (IsFull(GroupNames().size(), Repository().GetMaxTAGroupCount())) {
        TellKey("IDS_TECHVIEW-STRING_GROUPSETTING_MAXCNT");
        return;
    }
    CString name;
    while (AskName(*this, CTAGroupEditDlg::kAdd, name)) {
        if (Repository().AddGroupSetting(name) != 0) {
            StoreStudies();
            OnListEdited(name);
            ReportChange(Repository().GetUniNumByGroupName(name));
            return;
        }
        TellKey("IDS_TECHVIEW-STRING_GROUPIMPORT_EXIST_ALREADY");
    }
}

void CTASetGroup::OnModify() {
    if (m_bDragList != 0 || m_group.empty()) {
        return;
    }
    const CString oldName = m_group;
    CString name = oldName;
    while (AskName(*this, CTAGroupEditDlg::kModify, name)) {
        if (Repository().FindGroup(name) == 0) {
            SaveChange();
            if (Repository().ModifyGroupName(oldName, name) != 0) {
                OnListEdited(name);
                ReportChange(Repository().GetUniNumByGroupName(name));
            }
            return;
        }
        const CString format = BKQuoteInterface::GetBKInterface().LangGetLangString(
            "IDS_OPTIONAL-SHEET_MSG_ITEM_EXIST");
        Tell(ToQString(ta::text::Format(format, name)));
    }
}

void CTASetGroup::OnDelete() {
    const QListWidgetItem* row = m_ui->groupList->currentItem();
    if (m_bDragList != 0 || row == nullptr || GroupNames().size() <= 1) {
        return;
    }
    const CString name = NameOfRow(*row);
    const int uniNum = UniNumOfRow(*row);
    const auto position = static_cast<std::size_t>(m_ui->groupList->currentRow());
    if (!::Ask(*this,
             QString("%1 - 「%2」")
                 .arg(LangText("IDS_TECHVIEW-STRING_GROUPSETTING_CHKDELETE"), ToQString(name)))) {
        return;
    }
    std::vector<CString> names = GroupNames();
    std::erase(names, name);
    if (names.empty()) {
        return;  // another terminal has deleted the others
    }
    Repository().SetGroupNameList(names);
    OnListEdited(position < names.size() ? names[position] : Repository().GetSystemDefaultGroup());
    ReportChange(uniNum);
}

void CTASetGroup::OnDragEnd() {
    if (m_bEditGroup != 0) {
        return;
    }
    const std::vector<CString> names = GroupNames();
    if (Sheet() != nullptr && Sheet()->IsReloadPending()) {
        return;  // the rows are of the old state and will be filled again
    }
    const std::vector<CString> rows = NamesOfRows(*m_ui->groupList);
    if (names.size() != rows.size()) {
        m_bEditGroup = 1;
        RefreshHint();
        return;
    }
    m_bDragList = names != rows ? 1 : 0;
    if (m_bDragList != 0) {
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
    const auto before = StudiesOfGroups();
    if (CTAGroupImport(path, this).DoModal() != kIdOk) {
        return;
    }
    if (CTaSettingSheet* sheet = Sheet()) {
        sheet->NoteStoreCommitted();
        for (const auto& [name, studies] : StudiesOfGroups()) {
            const auto old = before.find(name);
            if (old != before.end() && old->second != studies) {
                sheet->OnStudiesStored(name);
            }
        }
    }
    OnImported(row);
}

void CTASetGroup::OnImported(int row) {
    LoadScreens();
    OnListEdited(Repository().GetGroupNameByIndex(static_cast<unsigned>(row)));
    const int count = m_ui->groupList->count();
    for (int index = 0; index < count; ++index) {
        ReportChange(Repository().GetUniNumByGroupIndex(index));
    }
    TellKey("IDS_TECHVIEW-STRING_GROUPIMPORT_IMPORT_OK", PromptIcon::None);
}

void CTASetGroup::OnExport() {
    StoreOrder();
    if (CTAGroupExport(this).DoModal() == kIdOk && Sheet() != nullptr) {
        Sheet()->NoteStoreCommitted();
    }
}

// ---- Moving studies ----

void CTASetGroup::OnMoveStudy(int by) {
    RefreshStudies();
    if (!m_ui->studyTree->MoveCurrent(by)) {
        return;
    }
    m_bModify = 1;
    StoreStudies();
    ReportChange(Repository().GetUniNumByGroupName(m_group));
    m_ui->studyTree->setFocus();
    UpdateButtons();
}

// ---- Closing ----

void CTASetGroup::OnCancel() {
    CTaSettingSheet* sheet = Sheet();
    if (sheet != nullptr && sheet->IsAskBeforeClose() != 0) {
        return;
    }
    if (!HasEdits()) {
        PropertyPage::OnCancel();
        return;
    }
    const bool save = ::Ask(*this, LangText("IDS_TECHVIEW-STRING_GROUPSETTING_SAVE_CHECK"));
    if (save) {
        SaveChange();
    }
    if (sheet != nullptr) {
        sheet->SetAlwaysSaveFlag(save ? 1 : 0);
    }
    if (!save) {
        PropertyPage::OnCancel();
    }
}
