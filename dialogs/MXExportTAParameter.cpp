#include "dialogs/MXExportTAParameter.h"

#include "platform/ui/TextBridge.h"
#include "ui_MXExportTAParameter.h"

#include <QHeaderView>
#include <QSignalBlocker>

#include <algorithm>

using namespace ta::ui;

namespace {

constexpr int kNameColumns[] = {1, 2};
constexpr int kNameColumnWidth = 130;

}  // namespace

MXExportTAParameter::MXExportTAParameter(const std::vector<std::vector<CString>>& rows,
                                         QWidget* parent)
    : DialogBase(parent), m_rows(rows), m_ui(std::make_unique<Ui::MXExportTAParameter>()) {
    m_ui->setupUi(this);
    m_ui->studyList->horizontalHeader()->setStretchLastSection(false);
    SetButtons(*m_ui->okButton, *m_ui->cancelButton);
    Handle(m_ui->selectButton, &QPushButton::clicked, [this] { OnSelectAll(); });
    Handle(m_ui->studyList, &QTableWidget::itemChanged, [this] { ShowWhatSelectDoes(); });
}

MXExportTAParameter::~MXExportTAParameter() = default;

bool MXExportTAParameter::OnInitDialog() {
    m_checkedNames.clear();
    vFillItem();
    ShowWhatSelectDoes();
    m_ui->selectButton->setEnabled(!m_rows.empty());
    m_ui->studyList->setCurrentCell(0, 0);
    m_ui->studyList->setFocus();
    return true;
}

void MXExportTAParameter::vFillItem() {
    std::vector<QStringList> rows;
    for (const std::vector<CString>& row : m_rows) {
        QStringList& texts = rows.emplace_back();
        std::ranges::transform(row, std::back_inserter(texts), ToQString);
    }
    const QSignalBlocker filling(m_ui->studyList);
    m_ui->studyList->SetRows(rows);
    for (const int column : kNameColumns) {  // wider for a longer name, which is not cut
        m_ui->studyList->setColumnWidth(column, std::max(kNameColumnWidth, NameWidth(column)));
    }
}

/// The width of the longest name, which is in the code page that of the most bytes.
int MXExportTAParameter::NameWidth(int column) const {
    constexpr int kMargins = 9;
    const auto index = static_cast<std::size_t>(column - 1);
    CString longest;
    for (const std::vector<CString>& row : m_rows) {
        if (row.size() > index && row[index].size() > longest.size()) {
            longest = row[index];
        }
    }
    return m_ui->studyList->fontMetrics().horizontalAdvance(ToQString(longest)) + kMargins;
}

bool MXExportTAParameter::AreAllChecked() const {
    return !m_rows.empty() && m_ui->studyList->CheckedRows().size() == m_rows.size();
}

void MXExportTAParameter::OnSelectAll() {
    {
        const QSignalBlocker all(m_ui->studyList);
        m_ui->studyList->CheckAll(!AreAllChecked());
    }
    ShowWhatSelectDoes();
}

void MXExportTAParameter::ShowWhatSelectDoes() {
    SetTextKey(*m_ui->selectButton, AreAllChecked() ? "IDS_TECHVIEW-STRING_GROUPEXPORT_UNCHECK_ALL"
                                                    : "IDS_TECHVIEW-STRING_GROUPEXPORT_CHECK_ALL");
}

void MXExportTAParameter::vGetCheckedName() {
    m_checkedNames.clear();
    for (const int row : m_ui->studyList->CheckedRows()) {
        const std::vector<CString>& names = m_rows[static_cast<std::size_t>(row)];
        m_checkedNames.push_back(names.empty() ? CString() : names.front());
    }
}

void MXExportTAParameter::vGetCheckBoxStatus(std::vector<CString>& names) const {
    names = m_checkedNames;
}

void MXExportTAParameter::OnOK() {
    vGetCheckedName();
    DialogBase::OnOK();
}
