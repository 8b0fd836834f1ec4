#include "groupfile/TAGroupImport.h"

#include "groupfile/GroupContents.h"
#include "groupfile/GroupFile.h"
#include "groupfile/GroupMerge.h"
#include "groupfile/GroupSummary.h"
#include "platform/ui/FileAccess.h"
#include "platform/ui/TextBridge.h"
#include "settings/TaSettingHandle.h"
#include "ui_TAGroupImport.h"

#include <algorithm>

using namespace ta::ui;
using ta::ProfileReader;
using ta::groupfile::GroupMerge;

struct CTAGroupImport::Merge {
    GroupMerge lists;
    ProfileReader shownFile;  ///< the file as it was when the lists were filled
    ProfileReader fileAtOk;
};

namespace {

CTaSettingHandle& Repository() {
    return CTaSettingHandle::GetInstance();
}

std::vector<CString> ExistingGroups() {
    std::vector<CString> names;
    Repository().GetGroupNameList(names);
    return names;
}

/// Parses the file into `file`. Returns an empty string or why it could not be read.
QString ReadGroupFile(const QString& path, ProfileReader& file) {
    std::string bytes;
    const QString fault = ReadWholeFile(path, bytes);
    file = ProfileReader(bytes);
    return fault;
}

/// The row's text in the code page's bytes, which a hostile name may not survive as shown.
CString RowText(const QListWidgetItem& row) {
    return row.data(Qt::UserRole).toByteArray().toStdString();
}

void AddRow(QListWidget& list, const CString& text) {
    auto* row = new QListWidgetItem(ToQString(text), &list);
    row->setData(Qt::UserRole, QByteArray::fromStdString(text));
}

bool Contains(const std::vector<CString>& names, const CString& name) {
    return std::ranges::find(names, name) != names.end();
}

}  // namespace

CTAGroupImport::CTAGroupImport(const QString& path, QWidget* parent)
    : DialogBase(parent),
      m_path(path),
      m_merge(std::make_unique<Merge>()),
      m_ui(std::make_unique<Ui::TAGroupImport>()) {
    m_ui->setupUi(this);
    SetButtons(*m_ui->okButton, *m_ui->cancelButton);
    for (QListWidget* list : {m_ui->existingList, m_ui->fileList}) {
        ConnectSummary(*list);
    }
    ConnectSummary(*m_ui->mergeList);
    Handle(m_ui->replaceExistingCheckBox, &QCheckBox::clicked, [this] { OnBtnReplaceExistGrp(); });
    Handle(m_ui->mergeList, &DragListBox::dragEnded, [this] { UpdateMergeList(); });
}

CTAGroupImport::~CTAGroupImport() = default;

void CTAGroupImport::ConnectSummary(QListWidget& list) {
    const auto show = [this, &list](const QListWidgetItem* item) {
        Guard([&] { ShowSummary(list, item); });
    };
    connect(&list, &QListWidget::itemEntered, this, show);
    connect(&list, &QListWidget::currentItemChanged, this, show);
}

bool CTAGroupImport::OnInitDialog() {
    m_ui->replaceButton->hide();
    RefuseWrongFile();
    InitialGroupListBox();
    m_replaceExisting = 1;
    m_ui->replaceExistingCheckBox->setChecked(true);
    InsertAllGroup();
    m_ui->mergeList->setFocus();
    return true;
}

int CTAGroupImport::CheckImportFile() {
    ProfileReader file;
    return ReadGroupFile(m_path, file).isEmpty() && ta::groupfile::CheckImportFile(file) ? 1 : 0;
}

void CTAGroupImport::RefuseWrongFile() {
    const QString fault = ReadGroupFile(m_path, m_merge->shownFile);
    if (!fault.isEmpty()) {
        Tell(fault);
        PostClose();
    } else if (!ta::groupfile::CheckImportFile(m_merge->shownFile)) {
        TellKey("IDS_TECHVIEW-STRING_GROUPIMPORT_VERSION_ERR");
        PostClose();
    }
}

void CTAGroupImport::InitialGroupListBox() {
    const std::vector<CString> existing = ExistingGroups();
    for (const CString& name : existing) {
        AddRow(*m_ui->existingList, name);
    }
    for (const CString& name : ta::groupfile::GetGroupNameListFromFile(m_merge->shownFile)) {
        AddRow(*m_ui->fileList, name);
    }
    m_merge->lists.SetMergeList(existing);
    UpdateRightListBox();
}

void CTAGroupImport::InsertAllGroup() {
    const int maxCount = Repository().GetMaxTAGroupCount();
    const int rows = m_ui->mergeList->count();
    ReadGroupFile(m_path, m_merge->shownFile);
    m_merge->lists.InsertAllGroup(ExistingGroups(),
                                  ta::groupfile::GetGroupNameListFromFile(m_merge->shownFile),
                                  maxCount, m_replaceExisting == 1, static_cast<std::size_t>(rows));
    UpdateRightListBox();
    UpdateNotice(maxCount, rows >= maxCount);
}

void CTAGroupImport::UpdateRightListBox() {
    m_ui->mergeList->setUpdatesEnabled(false);
    m_ui->mergeList->clear();
    for (const CString& name : m_merge->lists.MergeList()) {
        AddRow(*m_ui->mergeList, m_merge->lists.RowText(name));
    }
    m_ui->mergeList->setCurrentRow(0);
    m_ui->mergeList->setUpdatesEnabled(true);
    UpdateMergeList();
}

void CTAGroupImport::UpdateMergeList() {
    std::vector<CString> names;
    names.reserve(static_cast<std::size_t>(m_ui->mergeList->count()));
    for (int row = 0; row < m_ui->mergeList->count(); ++row) {
        names.push_back(GroupMerge::NameOfRow(RowText(*m_ui->mergeList->item(row))));
    }
    m_merge->lists.SetMergeList(std::move(names));
}

void CTAGroupImport::UpdateNotice(int maxCount, bool wasFull) {
    const QString most = QString::number(maxCount);
    QStringList lines;
    if (m_ui->fileList->count() == 0) {
        lines.append(LangText("IDS_TADIALOGS-GROUPFILE_EMPTY"));
    } else if (m_ui->existingList->count() >= maxCount) {
        lines.append(LangText("IDS_TADIALOGS-GROUPFILE_FULL", most));
    } else if (wasFull) {
        lines.append(LangText("IDS_TADIALOGS-GROUPFILE_NOT_MERGED_AGAIN", most));
    }
    if (const std::size_t leftOut = m_merge->lists.LeftOutCount(); leftOut > 0) {
        lines.append(LangText("IDS_TADIALOGS-GROUPFILE_LEFT_OUT", QString::number(leftOut), most));
    }
    m_ui->noticeLabel->setText(lines.join('\n'));
    m_ui->noticeLabel->setVisible(!lines.isEmpty());
}

void CTAGroupImport::OnBtnReplaceExistGrp() {
    m_replaceExisting = 1 - m_replaceExisting;
    m_ui->replaceExistingCheckBox->setChecked(m_replaceExisting == 1);
    InsertAllGroup();
}

void CTAGroupImport::ShowSummary(const QListWidget& list, const QListWidgetItem* item) {
    if (item == nullptr) {
        m_ui->summaryText->clear();
        return;
    }
    using namespace ta::groupfile;
    const bool isMerged = &list == m_ui->mergeList;
    const CString name = isMerged ? GroupMerge::NameOfRow(RowText(*item)) : RowText(*item);
    const bool fromFile =
        isMerged ? m_merge->lists.IsLoadSettingFromFile(name) : &list == m_ui->fileList;
    const GroupContents existing = ContentsInRepository(Repository(), name);
    const GroupContents contents = fromFile ? ContentsInFile(m_merge->shownFile, name) : existing;
    QStringList lines{ToQString(name), DescribeGroup(Repository(), contents)};
    if (fromFile) {
        lines.insert(1, Repository().FindGroup(name) == 1
                            ? DescribeDifferences(contents, existing)
                            : LangText("IDS_TADIALOGS-GROUPFILE_NEW"));
    }
    m_ui->summaryText->setPlainText(lines.join('\n'));
}

bool CTAGroupImport::HasVanished(const CString& name) const {
    const auto has = [&name](const ProfileReader& file) {
        return Contains(ta::groupfile::GetGroupNameListFromFile(file), name);
    };
    return !has(m_merge->fileAtOk) ||
           (m_merge->shownFile.HasSection(name) && !m_merge->fileAtOk.HasSection(name));
}

void CTAGroupImport::OnOK() {
    // Another program may have changed the file since it was shown.
    if (const QString fault = ReadGroupFile(m_path, m_merge->fileAtOk); !fault.isEmpty()) {
        Tell(fault);
        return;
    }
    if (!ta::groupfile::CheckImportFile(m_merge->fileAtOk)) {
        TellKey("IDS_TECHVIEW-STRING_GROUPIMPORT_VERSION_ERR");
        return;
    }
    UpdateMergeList();
    std::vector<CString> result;
    std::vector<CString> vanished;
    for (const CString& name : m_merge->lists.MergeList()) {
        const bool isThere = !m_merge->lists.IsLoadSettingFromFile(name) ||
                             (!HasVanished(name) && ImportGroupSetting(name, m_path) == 1);
        if (!isThere) {
            vanished.push_back(name);
        }
        if (isThere || Repository().FindGroup(name) == 1) {
            result.push_back(name);
        }
    }
    Repository().SetGroupNameList(result);
    Repository().SaveAllGroupSetting();
    if (!vanished.empty()) {
        Tell(LangText("IDS_TADIALOGS-GROUPFILE_VANISHED", ta::groupfile::Listed(vanished)));
    }
    DialogBase::OnOK();
}

int CTAGroupImport::ImportGroupSetting(const CString& name, const QString& path) {
    ProfileReader file;
    if (!ReadGroupFile(path, file).isEmpty()) {
        return 0;
    }
    ta::groupfile::ImportGroupSetting(Repository(), name, file);
    return 1;
}
