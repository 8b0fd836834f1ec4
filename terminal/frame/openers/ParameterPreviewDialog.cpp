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
    m_list->setHeaderLabels({Tr("IDS_TERMINAL-PARAMETERS_STUDY"), Tr("IDS_TERMINAL-PARAMETERS_NOW"),
                             Tr("IDS_TERMINAL-PARAMETERS_IN_FILE")});
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
    Fill();
    m_list->setFocus();
    return true;
}

// ---- The list ----

std::vector<StudyChanges> ParameterPreviewDialog::ChangesNow() const {
    std::vector<StudyType> types;
    std::ranges::transform(m_file, std::back_inserter(types), &StudySettings::type);
    return Differences(m_file, ReadGroup(m_group, types));
}

void ParameterPreviewDialog::Fill() {
    std::vector<StudyChanges> changes = ChangesNow();  // first: it may load again, and fill
    std::set<StudyType> left;
    for (int row = 0; row < m_list->topLevelItemCount(); ++row) {
        const QTreeWidgetItem& item = *m_list->topLevelItem(row);
        if (item.checkState(kName) == Qt::Unchecked) {
            left.insert(item.data(kName, Qt::UserRole).toInt());
        }
    }
    {
        const QSignalBlocker filling(m_list);
        m_list->clear();
        m_changes = std::move(changes);
        for (const StudyChanges& study : m_changes) {
            AddStudy(study, !left.contains(study.settings.type));
        }
        m_list->setCurrentItem(m_list->topLevelItem(0));
        m_list->expandAll();
        m_list->resizeColumnToContents(kName);
        m_list->resizeColumnToContents(kNow);
    }
    const bool isThere = Repository().FindGroup(m_group) == 1;
    m_heading->setText(Tr(isThere ? "IDS_TERMINAL-PARAMETERS_IMPORT_HEADING"
                                  : "IDS_TERMINAL-PARAMETERS_GROUP_GONE")
                           .arg(ui::ToQString(m_group)));
    ShowState();
}

void ParameterPreviewDialog::AddStudy(const StudyChanges& study, bool checked) {
    auto* item = new QTreeWidgetItem(m_list, {StudyName(study.settings.type)});
    item->setCheckState(kName, checked ? Qt::Checked : Qt::Unchecked);
    item->setData(kName, Qt::UserRole, study.settings.type);
    item->setFirstColumnSpanned(true);
    for (const ParameterChange& change : study.changes) {
        auto* row = new QTreeWidgetItem(item, {change.name, change.now, change.then});
        ShowColour(*row, kNow, change.nowColour);
        ShowColour(*row, kThen, change.thenColour);
    }
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
        Guard([this] {
            if (ChangesNow() != m_changes) {
                Fill();
            }
        });
    }
    return CView::WindowProc(message, wParam, lParam);
}

// ---- OK ----

/// Looks whether another party has changed the group; the list shows it then.
bool ParameterPreviewDialog::AreChangesAsShown() {
    const std::vector<StudyChanges> shown = m_changes;
    if (ChangesNow() != m_changes) {
        Fill();
    }
    return m_changes == shown;
}

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
        if (AreChangesAsShown() && m_changes == shown) {
            refused = Save();
            isSaved = true;
        }
    }
    if (!isSaved) {
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
