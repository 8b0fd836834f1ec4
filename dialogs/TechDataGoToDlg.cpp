#include "dialogs/TechDataGoToDlg.h"

#include "dialogs/TechDataTexts.h"
#include "platform/ui/DateBridge.h"
#include "platform/ui/TextBridge.h"
#include "ui_TechDataGoToDlg.h"

#include <QPointer>

#include <algorithm>
#include <limits>

namespace ta::techdata {
namespace {

long DayOf(const OneRecord* record) {
    DayAndSecond parts;
    return record != nullptr && SplitTime(record->time, parts) ? parts.day : 0;
}

const OneRecord* LastRecord(const TechDataTable& table) {
    const std::size_t count = table.RowFrom(std::numeric_limits<double>::infinity());
    return table.RecordToCome(std::max(count, std::size_t{1}) - 1);
}

QString DayText(const OneRecord* record) {
    CString text;
    AppendDay(text, DayOf(record));
    return ui::ToQString(text);
}

}  // namespace

TechDataGoToDlg::TechDataGoToDlg(const TechDataTable& table, int current, QWidget* parent)
    : DialogBase(parent),
      m_table(table),
      m_current(current),
      m_ui(std::make_unique<Ui::TechDataGoToDlg>()) {
    m_ui->setupUi(this);
    SetButtons(*m_ui->okButton, *m_ui->cancelButton);
}

TechDataGoToDlg::~TechDataGoToDlg() = default;

bool TechDataGoToDlg::OnInitDialog() {
    const OneRecord* const current =
        m_current < 0 ? nullptr : m_table.Record(static_cast<std::size_t>(m_current));
    m_ui->dateEdit->setDate(
        ui::DateOfDay(DayOf(current == nullptr ? LastRecord(m_table) : current)));
    m_ui->dateEdit->setFocus();
    return true;
}

void TechDataGoToDlg::OnOK() {
    m_ui->dateEdit->interpretText();
    const auto day = static_cast<long>(ui::DateOfDay(0).daysTo(m_ui->dateEdit->date()));
    if (const auto row = m_table.RowOfDay(day)) {
        m_row = *row;
        DialogBase::OnOK();
        return;
    }
    const QPointer<TechDataGoToDlg> self(this);
    Tell(RangeText());
    if (self == nullptr) {
        return;  // gone with its owner while the user read
    }
    m_ui->dateEdit->setFocus();
    m_ui->dateEdit->selectAll();
}

QString TechDataGoToDlg::RangeText() const {
    return ui::LangText("IDS_TADIALOGS-TECHDATA_GOTO_OUTSIDE", DayText(m_table.RecordToCome(0)),
                        DayText(LastRecord(m_table)));
}

}  // namespace ta::techdata
