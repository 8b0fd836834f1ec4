#include "groupfile/TAGroupExport.h"

#include "groupfile/GroupFile.h"
#include "groupfile/GroupSummary.h"
#include "platform/ui/FileAccess.h"
#include "platform/ui/TextBridge.h"
#include "settings/TaSettingHandle.h"
#include "ui_TAGroupExport.h"

#include <QFileInfo>
#include <QStyledItemDelegate>

#include <algorithm>

using namespace ta::ui;

namespace {

constexpr int kCheckColumn = 0;
constexpr int kNameColumn = 1;
constexpr int kCheckColumnWidth = 20;

/// Outlines check boxes so that they are seen on a dark list as well: styles take the outline from
/// the window colour, which is as dark as the list.
class CheckBoxDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->palette.setColor(QPalette::Window, option->palette.color(QPalette::Text));
    }
};

/// The path that the user chose; empty when he cancelled. A name with a wildcard is a filter and no
/// file; for that, and when a new file shall not be created after all, the file dialog comes again.
QString AskPath(DialogBase& dialog) {
    const QString title = LangText("IDS_DIALOG-EXPORTTA_TITLE");
    for (;;) {
        const QString path = CurrentPrompts().SaveFile(
            &dialog, {.title = title, .name = "*.TASG", .filter = "*.TASG"});
        const QString name = QFileInfo(path).fileName();
        if (name.contains('*')) {
            continue;
        }
        const QString question = LangText("IDS_TADIALOGS-GROUPFILE_ASK_CREATE", name);
        if (path.isEmpty() || CTAGroupExport::CheckFileExist(path) == 1 ||
            CurrentPrompts().AskYesNo(&dialog, PromptIcon::Question, title, question,
                                      Answer::Yes) == Answer::Yes) {
            return path;
        }
    }
}

}  // namespace

CTAGroupExport::CTAGroupExport(QWidget* parent)
    : DialogBase(parent), m_ui(std::make_unique<Ui::TAGroupExport>()) {
    CTaSettingHandle::GetInstance().GetGroupNameList(m_groupNames);
    m_ui->setupUi(this);
    SetButtons(*m_ui->okButton, *m_ui->cancelButton);
    Handle(m_ui->selectButton, &QPushButton::clicked, [this] { OnButtonSelect(); });
    // The space bar checks the row, in whichever column it was clicked.
    Handle(m_ui->groupList, &QTableWidget::currentCellChanged, [this] {
        m_ui->groupList->setCurrentCell(m_ui->groupList->currentRow(), kCheckColumn);
    });
}

CTAGroupExport::~CTAGroupExport() = default;

bool CTAGroupExport::OnInitDialog() {
    m_ui->groupList->setFont(font());
    vFillItem();
    vLoadLanguageString();
    m_ui->groupList->setFocus();
    return true;
}

void CTAGroupExport::vFillItem() {
    QTableWidget& list = *m_ui->groupList;
    list.setHorizontalHeaderItem(kCheckColumn, new QTableWidgetItem);
    list.setHorizontalHeaderItem(
        kNameColumn, new QTableWidgetItem(LangText("IDS_TECHVIEW-STRING_GROUPEXPORT_GROUPNAME")));
    list.setRowCount(static_cast<int>(m_groupNames.size()));
    for (int row = 0; row < list.rowCount(); ++row) {
        auto* check = new QTableWidgetItem;
        check->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        check->setCheckState(Qt::Unchecked);
        list.setItem(row, kCheckColumn, check);
        const CString& name = m_groupNames[static_cast<std::size_t>(row)];
        list.setItem(row, kNameColumn, new QTableWidgetItem(ToQString(name)));
    }
    list.setItemDelegateForColumn(kCheckColumn, new CheckBoxDelegate(&list));
    list.horizontalHeader()->setMinimumSectionSize(kCheckColumnWidth);
    list.setColumnWidth(kCheckColumn, kCheckColumnWidth);
    list.resizeRowsToContents();
}

void CTAGroupExport::vLoadLanguageString() {
    LoadLanguageStrings();
}

void CTAGroupExport::OnButtonSelect() {
    m_ui->selectButton->setText(LangText(m_checkAll == 0
                                             ? "IDS_TECHVIEW-STRING_GROUPEXPORT_CHECK_ALL"
                                             : "IDS_TECHVIEW-STRING_GROUPEXPORT_UNCHECK_ALL"));
    for (int row = 0; row < m_ui->groupList->rowCount(); ++row) {
        m_ui->groupList->item(row, kCheckColumn)
            ->setCheckState(m_checkAll == 1 ? Qt::Checked : Qt::Unchecked);
    }
    m_checkAll = 1 - m_checkAll;
}

bool CTAGroupExport::IsChecked(int row) const {
    return m_ui->groupList->item(row, kCheckColumn)->checkState() == Qt::Checked;
}

bool CTAGroupExport::IsAnyChecked() const {
    bool any = false;
    for (int row = 0; row < m_ui->groupList->rowCount(); ++row) {
        any = any || IsChecked(row);
    }
    return any;
}

void CTAGroupExport::OnOK() {
    if (!IsAnyChecked()) {
        TellKey("IDS_DIALOG-EXPORTTA_SELECT");
        return;
    }
    SelectPathAndExport();
    DialogBase::OnOK();
}

int CTAGroupExport::SelectPathAndExport() {
    QString path;
    if (GetSaveFilePath(path) == 0) {
        return 1;
    }
    if (path.isEmpty()) {
        TellKey("IDS_TECHVIEW-STRING_GROUPEXPORT_NOSELECTFILE");
        return 0;
    }
    if (ExportFile(path) != 0) {
        TellKey("IDS_TECHVIEW-STRING_GROUPEXPORT_EXPORT_OK", PromptIcon::None);
        TellGroupsNotCarried(path);
    }
    return 1;
}

int CTAGroupExport::GetSaveFilePath(QString& path) {
    path.clear();
    if (!Guard([&] { path = AskPath(*this); })) {
        return 0;
    }
    return path.isEmpty() ? kIdCancel : kIdOk;
}

int CTAGroupExport::CheckFileExist(const QString& path) {
    return QFileInfo::exists(path) ? 1 : 0;
}

int CTAGroupExport::ExportFile(const QString& path) {
    if (path.isEmpty()) {
        return 0;
    }
    CTaSettingHandle& repository = CTaSettingHandle::GetInstance();
    repository.SaveAllGroupSetting();
    const QString fault =
        WriteWholeFile(path, ta::groupfile::ExportGroups(repository, ExportList()));
    if (!fault.isEmpty()) {
        Tell(fault);
    }
    return fault.isEmpty() ? 1 : 0;
}

std::vector<CString> CTAGroupExport::ExportList() const {
    if (static_cast<std::size_t>(m_ui->groupList->rowCount()) != m_groupNames.size()) {
        return m_groupNames;
    }
    std::vector<CString> names;
    for (std::size_t row = 0; row < m_groupNames.size(); ++row) {
        if (IsChecked(static_cast<int>(row))) {
            names.push_back(m_groupNames[row]);
        }
    }
    return names;
}

void CTAGroupExport::TellGroupsNotCarried(const QString& path) {
    std::string bytes;
    const QString fault = ReadWholeFile(path, bytes);
    if (!fault.isEmpty()) {
        Tell(fault);
        return;
    }
    const std::vector<CString> names = ta::groupfile::GroupsNotCarried(
        CTaSettingHandle::GetInstance(), ExportList(), ta::ProfileReader(bytes));
    if (!names.empty()) {
        Tell(LangText("IDS_TADIALOGS-GROUPFILE_NOT_CARRIED", ta::groupfile::Listed(names)));
    }
}
