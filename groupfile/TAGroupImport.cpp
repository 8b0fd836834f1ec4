#include "groupfile/TAGroupImport.h"

#include "groupfile/GroupContents.h"
#include "groupfile/GroupFile.h"
#include "groupfile/GroupMerge.h"
#include "groupfile/GroupSummary.h"
#include "platform/ui/FileAccess.h"
#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"
#include "ui_TAGroupImport.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>

using namespace ta::ui;
using ta::GroupNames;
using ta::ProfileReader;
using ta::Repository;
using ta::groupfile::GroupMerge;

struct CTAGroupImport::Merge {
    GroupMerge lists;
    std::optional<ProfileReader> file;  ///< once it could be read
    std::vector<CString> fromFile;      ///< the names in the file
    std::size_t listed = 0;             ///< how many names it lists
    std::vector<CString> added;
    std::vector<CString> overwritten;

    std::vector<CString> GroupsToBeReplaced() const;
};

namespace {

/// Parses the file into `file`. Returns an empty string, or why it could not be read.
QString ReadGroupFile(const QString& path, std::optional<ProfileReader>& file) {
    std::string bytes;
    const QString fault = ReadWholeFile(path, bytes);
    if (fault.isEmpty()) {
        file.emplace(bytes);
    }
    return fault;
}

/// The row's group, in the code page's bytes, which a hostile name may not survive as shown.
CString NameOf(const QListWidgetItem& row) {
    return row.data(Qt::UserRole).toByteArray().toStdString();
}

void AddRow(QListWidget& list, const CString& name, const CString& text) {
    auto* row = new QListWidgetItem(ToQString(text), &list);
    row->setData(Qt::UserRole, QByteArray::fromStdString(name));
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
    const auto show = [this, &list](const QListWidgetItem* item) { ShowSummary(list, item); };
    Handle(&list, &QListWidget::itemEntered, show);
    Handle(&list, &QListWidget::currentItemChanged, show);
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

QString CTAGroupImport::ReadFile() {
    return m_merge->file ? QString() : ReadGroupFile(m_path, m_merge->file);
}

int CTAGroupImport::CheckImportFile() {
    bool isRight = false;
    Guard(
        [&] { isRight = ReadFile().isEmpty() && ta::groupfile::CheckImportFile(*m_merge->file); });
    return isRight ? 1 : 0;
}

void CTAGroupImport::RefuseWrongFile() {
    const QString fault = ReadFile();
    if (!fault.isEmpty()) {
        Tell(fault);
        PostClose();
    } else if (!ta::groupfile::CheckImportFile(*m_merge->file)) {
        TellKey("IDS_TECHVIEW-STRING_GROUPIMPORT_VERSION_ERR");
        PostClose();
    }
}

void CTAGroupImport::InitialGroupListBox() {
    const std::vector<CString> existing = GroupNames();
    for (const CString& name : existing) {
        AddRow(*m_ui->existingList, name, name);
    }
    if (m_merge->file) {
        bool noMemory = false;
        m_merge->listed =
            ta::groupfile::GetGroupNameListFromFile(*m_merge->file, m_merge->fromFile, &noMemory);
        if (noMemory) {
            TellKey("IDS_TECHVIEW-STRING_MEMORY_ERR");
        }
    }
    for (const CString& name : m_merge->fromFile) {
        AddRow(*m_ui->fileList, name, name);
    }
    m_merge->lists.SetMergeList(existing);
    UpdateRightListBox();
}

void CTAGroupImport::InsertAllGroup() {
    const int maxCount = Repository().GetMaxTAGroupCount();
    const int rows = m_ui->mergeList->count();
    if (m_merge->lists.InsertAllGroup(GroupNames(), m_merge->fromFile, maxCount,
                                      m_replaceExisting == 1, static_cast<std::size_t>(rows))) {
        UpdateRightListBox();
    }
    UpdateNotice(maxCount, rows >= maxCount);
}

void CTAGroupImport::UpdateRightListBox() {
    m_ui->mergeList->setUpdatesEnabled(false);
    m_ui->mergeList->clear();
    for (const CString& name : m_merge->lists.GetMergeList()) {
        AddRow(*m_ui->mergeList, name, m_merge->lists.RowText(name));
    }
    m_ui->mergeList->setCurrentRow(0);
    m_ui->mergeList->setUpdatesEnabled(true);
    UpdateMergeList();
}

void CTAGroupImport::UpdateMergeList() {
    std::vector<CString> names;
    names.reserve(static_cast<std::size_t>(m_ui->mergeList->count()));
    for (int row = 0; row < m_ui->mergeList->count(); ++row) {
        names.push_back(NameOf(*m_ui->mergeList->item(row)));
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
    if (const std::size_t read = m_merge->fromFile.size(); m_merge->listed > read) {
        lines.append(LangText("IDS_TADIALOGS-GROUPFILE_TOO_MANY_NAMES",
                              QString::number(m_merge->listed), QString::number(read)));
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
    const CString name = NameOf(*item);
    const bool fromFile = &list == m_ui->mergeList ? m_merge->lists.IsLoadSettingFromFile(name)
                                                   : &list == m_ui->fileList;
    bool noMemory = false;
    const GroupContents existing = ContentsInRepository(Repository(), name);
    const GroupContents contents =
        fromFile ? ContentsInFile(*m_merge->file, name, &noMemory) : existing;
    QStringList lines{ToQString(name), DescribeGroup(Repository(), contents)};
    if (fromFile) {
        lines.insert(1, Repository().FindGroup(name) == 1
                            ? DescribeDifferences(contents, existing)
                            : LangText("IDS_TADIALOGS-GROUPFILE_NEW"));
    }
    if (noMemory) {
        lines.append(LangText("IDS_TECHVIEW-STRING_MEMORY_ERR"));
    }
    m_ui->summaryText->setPlainText(lines.join('\n'));
}

void CTAGroupImport::OnOK() {
    if (CheckImportFile() != 1) {
        return;
    }
    UpdateMergeList();
    bool noMemory = false;
    Repository().ReloadTASetting();
    {
        // Another party's commit in between would leave names of the list without their groups.
        const CTaSettingHandle::ReloadHold hold(Repository());
        std::vector<CString> names = LoadMergeList(noMemory);
        Repository().SetGroupNameList(names);
        Repository().SaveAllGroupSetting();
    }
    if (noMemory) {
        TellKey("IDS_TECHVIEW-STRING_MEMORY_ERR");
    }
    DialogBase::OnOK();
}

std::vector<CString> CTAGroupImport::LoadMergeList(bool& noMemory) {
    m_merge->added.clear();
    m_merge->overwritten.clear();
    std::vector<CString> names;
    for (const CString& name : m_merge->lists.GetMergeList()) {
        const bool exists = Repository().FindGroup(name) == 1;
        const bool isLoaded = m_merge->lists.IsLoadSettingFromFile(name);
        if (isLoaded) {
            ta::groupfile::ImportGroupSetting(Repository(), name, *m_merge->file, &noMemory);
            (exists ? m_merge->overwritten : m_merge->added).push_back(name);
        }
        if (isLoaded || exists) {
            names.push_back(name);
        }
    }
    const std::set<CString> merged(names.begin(), names.end());
    std::ranges::copy_if(GroupNames(), std::back_inserter(names),
                         [&merged](const CString& name) { return !merged.contains(name); });
    return names;
}

int CTAGroupImport::ImportGroupSetting(const CString& name, const QString& path) {
    bool isImported = false;
    bool noMemory = false;
    Guard([&] {
        std::optional<ProfileReader> file;
        if (ReadGroupFile(path, file).isEmpty()) {
            ta::groupfile::ImportGroupSetting(Repository(), name, *file, &noMemory);
            isImported = true;
        }
    });
    if (noMemory) {
        Guard([&] { TellKey("IDS_TECHVIEW-STRING_MEMORY_ERR"); });
    }
    return isImported ? 1 : 0;
}

const std::vector<CString>& CTAGroupImport::AddedGroups() const {
    return m_merge->added;
}

const std::vector<CString>& CTAGroupImport::OverwrittenGroups() const {
    return m_merge->overwritten;
}

/// The imported groups without a study in the first pane that the user may use. The next load puts
/// the default studies in the place of theirs.
std::vector<CString> CTAGroupImport::Merge::GroupsToBeReplaced() const {
    std::vector<CString> groups;
    for (const auto* names : {&added, &overwritten}) {
        std::ranges::copy_if(*names, std::back_inserter(groups), [](const CString& name) {
            StudyLists studies;
            return Repository().GetStudyListByGroupName(name, studies) != 0 &&
                   std::ranges::none_of(studies.front(), [](StudyType type) {
                       return Repository().IsStudyCanUse(type) != 0;
                   });
        });
    }
    return groups;
}

QString CTAGroupImport::ResultText() const {
    if (m_merge->added.empty() && m_merge->overwritten.empty()) {
        return LangText("IDS_TADIALOGS-GROUPFILE_NOTHING_IMPORTED");
    }
    QStringList lines{
        LangText("IDS_TECHVIEW-STRING_GROUPIMPORT_IMPORT_OK"),
        LangText("IDS_TADIALOGS-GROUPFILE_IMPORTED", QString::number(m_merge->added.size()),
                 QString::number(m_merge->overwritten.size()))};
    if (const std::vector<CString> losing = m_merge->GroupsToBeReplaced(); !losing.empty()) {
        lines.append(
            LangText("IDS_TADIALOGS-GROUPFILE_NO_FIRST_PANE", ta::groupfile::Listed(losing)));
    }
    return lines.join('\n');
}
