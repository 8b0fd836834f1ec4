#include "groupfile/TAGroupExport.h"

#include "groupfile/GroupFile.h"
#include "groupfile/GroupSummary.h"
#include "platform/ui/ComponentFont.h"
#include "platform/ui/FileAccess.h"
#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"
#include "ui_TAGroupExport.h"

#include <QFileInfo>

using namespace ta::ui;

CTAGroupExport::CTAGroupExport(QWidget* parent)
    : DialogBase(parent), m_ui(std::make_unique<Ui::TAGroupExport>()) {
    m_groupNames = ta::GroupNames();
    m_ui->setupUi(this);
    SetButtons(*m_ui->okButton, *m_ui->cancelButton);
    Handle(m_ui->selectButton, &QPushButton::clicked, [this] { OnButtonSelect(); });
}

CTAGroupExport::~CTAGroupExport() = default;

bool CTAGroupExport::OnInitDialog() {
    m_ui->groupList->setFont(CComponentComFont::GetComponentComFont());
    vFillItem();
    m_ui->groupList->setFocus();
    return true;
}

void CTAGroupExport::vFillItem() {
    std::vector<QStringList> rows;
    for (const CString& name : m_groupNames) {
        rows.push_back({ToQString(name)});
    }
    m_ui->groupList->SetRows(rows);
}

void CTAGroupExport::OnButtonSelect() {
    SetTextKey(*m_ui->selectButton, m_checkAll == 0
                                        ? "IDS_TECHVIEW-STRING_GROUPEXPORT_CHECK_ALL"
                                        : "IDS_TECHVIEW-STRING_GROUPEXPORT_UNCHECK_ALL");
    m_ui->groupList->CheckAll(m_checkAll == 1);
    m_checkAll = 1 - m_checkAll;
}

void CTAGroupExport::OnOK() {
    if (m_ui->groupList->CheckedRows().empty()) {
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
        Guard([&] { TellKey("IDS_TECHVIEW-STRING_GROUPEXPORT_NOSELECTFILE"); });
        return 0;
    }
    if (ExportFile(path) != 0) {
        Guard([&] {
            TellKey("IDS_TECHVIEW-STRING_GROUPEXPORT_EXPORT_OK", PromptIcon::None);
            TellGroupsNotCarried(path);
        });
    }
    return 1;
}

int CTAGroupExport::GetSaveFilePath(QString& path) {
    path.clear();
    if (!Guard([&] {
            path = AskSaveFile(this, {.title = LangText("IDS_DIALOG-EXPORTTA_TITLE"),
                                      .name = "*.TASG",
                                      .filter = "*.TASG",
                                      .asksCreate = true});
        })) {
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
    bool isWritten = false;
    Guard([&] {
        CTaSettingHandle& repository = ta::Repository();
        repository.ReloadTASetting();
        // One state, from the save to the file.
        const CTaSettingHandle::ReloadHold hold(repository);
        repository.SaveAllGroupSetting();
        const QString fault =
            WriteWholeFile(path, ta::groupfile::ExportGroups(repository, ExportList()));
        isWritten = fault.isEmpty();
        if (!isWritten) {
            Tell(fault);
        }
    });
    return isWritten ? 1 : 0;
}

std::vector<CString> CTAGroupExport::ExportList() const {
    if (static_cast<std::size_t>(m_ui->groupList->rowCount()) != m_groupNames.size()) {
        return m_groupNames;
    }
    std::vector<CString> names;
    for (const int row : m_ui->groupList->CheckedRows()) {
        names.push_back(m_groupNames[static_cast<std::size_t>(row)]);
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
    const std::vector<CString> names =
        ta::groupfile::GroupsNotCarried(ta::Repository(), ExportList(), ta::ProfileReader(bytes));
    if (!names.empty()) {
        Tell(LangText("IDS_TADIALOGS-GROUPFILE_NOT_CARRIED", ta::groupfile::Listed(names)));
    }
}
