#include "terminal/frame/openers/ParameterPreviewDialog.h"

#include "platform/ui/CheckList.h"
#include "platform/ui/TextBridge.h"
#include "settings/Messages.h"
#include "settings/Repository.h"
#include "terminal/lang/Language.h"
#include "terminal/parameters/GroupParameters.h"

#include <QHeaderView>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace ta::terminal {
namespace {

enum Column { kName, kNow, kThen, kColumnCount };

constexpr QSize kFirstSize(560, 480);
using ReloadHold = CTaSettingHandle::ReloadHold;

void ShowColour(QTreeWidgetItem& row, Column column, std::optional<std::uint32_t> colour) {
    if (colour) {
        row.setData(column, Qt::DecorationRole, QColor::fromRgb(*colour));
    }
}

/// The studies whose rows are so.
template <class Predicate>
std::set<StudyType> StudiesOf(const QTreeWidget& list, const Predicate& isSo) {
    std::set<StudyType> studies;
    for (int row = 0; row < list.topLevelItemCount(); ++row) {
        const QTreeWidgetItem& item = *list.topLevelItem(row);
        if (isSo(item)) {
            studies.insert(item.data(kName, Qt::UserRole).toInt());
        }
    }
    return studies;
}

}  // namespace

ParameterPreviewDialog::ParameterPreviewDialog(const CString& group,
                                               std::vector<StudySettings> file, QWidget* parent)
    : DialogBase(parent),
      m_group(group),
      m_file(std::move(file)),
      m_heading(new QLabel(this)),
      m_list(new QTreeWidget(this)),
      m_count(new QLabel(this)),
      m_select(new QPushButton(this)),
      m_ok(new QPushButton("IDS_TERMINAL-PARAMETERS_OK", this)),
      m_cancel(new QPushButton("IDS_TERMINAL-PARAMETERS_CANCEL", this)) {
    MakeControls();
    SetButtons(*m_ok, *m_cancel);
    Handle(m_select, &QPushButton::clicked, [this] { CheckAll(); });
    Handle(m_list, &QTreeWidget::itemChanged, [this] { ShowState(); });
    m_changes = ChangesNow();
    Repository().AddTechViewPtr(this);
}

ParameterPreviewDialog::~ParameterPreviewDialog() {
    Repository().RemoveTechViewPtr(this);
}

void ParameterPreviewDialog::MakeControls() {
    setWindowTitle("IDS_TERMINAL-PARAMETERS_IMPORT_TITLE");
    resize(kFirstSize);
    m_heading->setWordWrap(true);
    m_heading->setBuddy(m_list);
    m_list->setObjectName("changeList");
    m_list->setColumnCount(kColumnCount);
    ui::OutlineCheckBoxes(*m_list, kName);
    SetHeadKey(*m_list, kName, "IDS_TERMINAL-PARAMETERS_STUDY");
    SetHeadKey(*m_list, kNow, "IDS_TERMINAL-PARAMETERS_NOW");
    SetHeadKey(*m_list, kThen, "IDS_TERMINAL-PARAMETERS_IN_FILE");
    m_list->setAccessibleName("IDS_TERMINAL-PARAMETERS_IMPORT_TITLE");
    m_select->setObjectName("selectButton");
    m_ok->setObjectName("okButton");
    m_cancel->setObjectName("cancelButton");
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_select);
    buttons->addStretch();
    buttons->addWidget(m_ok);
    buttons->addWidget(m_cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_heading);
    layout->addWidget(m_list);
    layout->addWidget(m_count);
    layout->addLayout(buttons);
}

bool ParameterPreviewDialog::OnInitDialog() {
    Fill(ChangesNow());
    m_list->setFocus();
    return true;
}

// ---- The list ----

std::vector<StudyChanges> ParameterPreviewDialog::ChangesNow() const {
    std::vector<StudyType> types;
    std::ranges::transform(m_file, std::back_inserter(types), &StudySettings::type);
    return Differences(m_file, ReadGroup(m_group, types));
}

/// Shows what another party has changed.
void ParameterPreviewDialog::Refresh() {
    std::vector<StudyChanges> changes = ChangesNow();  // it may load again, and come back here
    if (changes != m_changes) {
        Fill(std::move(changes));
    }
}

/// Studies that stay are checked, folded and current as before.
void ParameterPreviewDialog::Fill(std::vector<StudyChanges> changes) {
    const std::set<StudyType> left = StudiesOf(
        *m_list, [](const auto& item) { return item.checkState(kName) == Qt::Unchecked; });
    const std::set<StudyType> folded =
        StudiesOf(*m_list, [](const auto& item) { return !item.isExpanded(); });
    const std::set<StudyType> current = StudiesOf(*m_list, [this](const auto& item) {
        const QTreeWidgetItem* at = m_list->currentItem();
        return at != nullptr && (at == &item || at->parent() == &item);
    });
    {
        const QSignalBlocker filling(m_list);
        m_list->clear();
        m_changes = std::move(changes);
        for (const StudyChanges& study : m_changes) {
            const StudyType type = study.settings.type;
            QTreeWidgetItem& item = AddStudy(study, !left.contains(type));
            item.setExpanded(!folded.contains(type));
            if (current.contains(type)) {
                m_list->setCurrentItem(&item);
            }
        }
        if (m_list->currentItem() == nullptr) {
            m_list->setCurrentItem(m_list->topLevelItem(0));
        }
        m_list->resizeColumnToContents(kName);
        m_list->resizeColumnToContents(kNow);
    }
    const bool isThere = Repository().FindGroup(m_group) == 1;
    m_heading->setText(Tr(isThere ? "IDS_TERMINAL-PARAMETERS_IMPORT_HEADING"
                                  : "IDS_TERMINAL-PARAMETERS_GROUP_GONE")
                           .arg(ui::ToQString(m_group)));
    ShowState();
}

QTreeWidgetItem& ParameterPreviewDialog::AddStudy(const StudyChanges& study, bool checked) {
    auto* item = new QTreeWidgetItem(m_list, {StudyName(study.settings.type)});
    item->setCheckState(kName, checked ? Qt::Checked : Qt::Unchecked);
    item->setData(kName, Qt::UserRole, study.settings.type);
    item->setFirstColumnSpanned(true);
    for (const ParameterChange& change : study.changes) {
        auto* row = new QTreeWidgetItem(item, {change.name, change.now, change.then});
        ShowColour(*row, kNow, change.nowColour);
        ShowColour(*row, kThen, change.thenColour);
    }
    return *item;
}

std::vector<StudySettings> ParameterPreviewDialog::Checked() const {
    std::vector<StudySettings> checked;
    for (int row = 0; row < m_list->topLevelItemCount(); ++row) {
        if (m_list->topLevelItem(row)->checkState(kName) == Qt::Checked) {
            checked.push_back(m_changes[static_cast<std::size_t>(row)].settings);
        }
    }
    return checked;
}

void ParameterPreviewDialog::CheckAll() {
    const bool check = Checked().size() < m_changes.size();
    for (int row = 0; row < m_list->topLevelItemCount(); ++row) {
        m_list->topLevelItem(row)->setCheckState(kName, check ? Qt::Checked : Qt::Unchecked);
    }
}

void ParameterPreviewDialog::ShowState() {
    const std::size_t checked = Checked().size();
    m_count->setText(Tr("IDS_TERMINAL-PARAMETERS_COUNT").arg(checked).arg(m_changes.size()));
    m_ok->setEnabled(checked > 0);
    m_select->setEnabled(!m_changes.empty());
    const bool all = checked > 0 && checked == m_changes.size();
    SetTextKey(*m_select, all ? "IDS_TECHVIEW-STRING_GROUPEXPORT_UNCHECK_ALL"
                              : "IDS_TECHVIEW-STRING_GROUPEXPORT_CHECK_ALL");
}

std::intptr_t ParameterPreviewDialog::WindowProc(unsigned message, std::uintptr_t wParam,
                                                 std::intptr_t lParam) {
    if (message == kGroupChangeMessage && IsCreated()) {
        Guard([this] { Refresh(); });
    }
    return CView::WindowProc(message, wParam, lParam);
}

// ---- OK ----

std::vector<StudyType> ParameterPreviewDialog::Save() {
    const std::vector<StudySettings> checked = Checked();
    const std::vector<StudyType> refused = WriteGroup(m_group, checked);
    Repository().SaveAllGroupSetting();
    m_taken = static_cast<int>(checked.size() - refused.size());
    return refused;
}

void ParameterPreviewDialog::OnOK() {
    const std::vector<StudyChanges> shown = m_changes;
    Repository().ReloadTASetting();
    std::vector<StudyType> refused;
    bool isSaved = false;
    {
        const ReloadHold hold(Repository());
        if (ChangesNow() == shown) {
            refused = Save();
            isSaved = true;
        }
    }
    if (!isSaved) {
        Refresh();
        TellKey("IDS_TERMINAL-PARAMETERS_CHANGED_ELSEWHERE");
        return;
    }
    if (!refused.empty()) {
        QStringList names;
        std::ranges::transform(refused, std::back_inserter(names), StudyName);
        Tell(Tr("IDS_TERMINAL-PARAMETERS_REFUSED").arg(names.join('\n')));
    }
    DialogBase::OnOK();
}

}  // namespace ta::terminal
