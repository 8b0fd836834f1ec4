#include "dialogs/MXSetHistData.h"

#include "dialogs/DigitsValidator.h"
#include "dialogs/HistoryRules.h"
#include "platform/FormatText.h"
#include "platform/QuoteInterface.h"
#include "platform/ui/ComponentFont.h"
#include "platform/ui/DateBridge.h"
#include "platform/ui/Guard.h"
#include "platform/ui/RadioTable.h"
#include "platform/ui/TextBridge.h"
#include "ui_MXSetHistData.h"

#include <QSignalBlocker>

using namespace ta::history;
using namespace ta::ui;

struct MXSetHistData::Parts {
    AllowedPeriods allowed;
    RadioTable dataType;
    RadioTable readMode;
};

namespace {

/// What to tell about a start date that is refused, else null.
const char* FaultOf(const QDate& date) {
    constexpr const char* kFaults[] = {nullptr, "IDS_DIALOG-SETHISTDATA_VALID_DATE_BEFORE",
                                       "IDS_DIALOG-SETHISTDATA_VALID_DATE_AFTER",
                                       "IDS_DIALOG-SETHISTDATA_VALID_DATE_MID"};
    const auto fault = date.isValid() ? CheckStartDate(QDate(1970, 1, 1).daysTo(date), Today())
                                      : StartDateFault::None;
    return kFaults[static_cast<int>(fault)];
}

}  // namespace

MXSetHistData::MXSetHistData(std::uint8_t market, const CString& symbol, int dataType, int minutes,
                             int readMode, long recordCount, long startDate, bool flag,
                             QWidget* parent)
    : DialogBase(parent),
      m_flag(flag),
      m_parts(std::make_unique<Parts>()),
      m_ui(std::make_unique<Ui::MXSetHistData>()) {
    const Values values = Repaired({dataType, minutes, readMode, recordCount, startDate});
    m_dataType = values.dataType;
    m_minutes = values.minutes;
    m_readMode = values.readMode;
    m_recordCount = values.recordCount;
    m_startDate = values.startDate;
    m_start = DateOfDay(m_startDate);
    m_parts->allowed = PeriodsOf(market, symbol);

    m_ui->setupUi(this);
    SetButtons(*m_ui->okButton, *m_ui->cancelButton);
    m_ui->minutesCombo->setCompleter(nullptr);  // it would make 120 of a typed 1
    m_ui->minutesCombo->setValidator(new ta::dialogs::DigitsValidator(this));
    m_ui->countEdit->setValidator(new ta::dialogs::DigitsValidator(this));
    m_parts->dataType.SetRows({{kDaily, m_ui->dailyRadio},
                               {kWeekly, m_ui->weeklyRadio},
                               {kMonthly, m_ui->monthlyRadio},
                               {kMinutes, m_ui->minutesRadio, {m_ui->minutesCombo}}});
    m_parts->readMode.SetRows({{kReadLast, m_ui->readRadio, {m_ui->countEdit}},
                               {kReadFromDate, m_ui->sinceRadio, {m_ui->startDate}}});
    Handle(&m_parts->dataType, &RadioTable::chosen, [this](int type) { OnDataType(type); });
    Handle(&m_parts->readMode, &RadioTable::chosen, [this](int mode) { OnReadMode(mode); });
    Handle(m_ui->minutesCombo, &QComboBox::activated, [this] { OnSelchangeComboMinutes(); });
    Handle(m_ui->minutesCombo->lineEdit(), &QLineEdit::editingFinished,
           [this] { OnKillfocusComboMinutes(); });
    Handle(m_ui->startDate, &QDateEdit::dateChanged, [this] { OnDateTimeChange(); });
}

MXSetHistData::~MXSetHistData() {
    // They tell what was typed when they lose the focus, which they do when they go.
    m_ui->minutesCombo->lineEdit()->disconnect(this);
    m_ui->startDate->disconnect(this);
}

void MXSetHistData::vCheckSymbolAllowTA(std::uint8_t market, const CString& symbol,
                                        bool& allowDaily, bool& allowWeekly, bool& allowMonthly,
                                        bool& allowMinute, bool& allowSecond,
                                        bool& supportDividend) {
    const AllowedPeriods allowed = NothingOnFailure([&] { return PeriodsOf(market, symbol); });
    allowDaily = allowed.daily;
    allowWeekly = allowed.weekly;
    allowMonthly = allowed.monthly;
    allowMinute = allowed.minute;
    allowSecond = allowed.second;
    supportDividend = allowed.dividend;
}

bool MXSetHistData::OnInitDialog() {
    m_ui->startDate->setFont(CComponentComFont::GetComponentComFont());
    ShowFields();
    m_parts->dataType.EnableRows([this](int type) { return IsAllowed(m_parts->allowed, type); });
    for (const int minutes : kBarLengths) {
        m_ui->minutesCombo->addItem(QString::number(minutes));
    }
    m_ui->minutesCombo->setEditText(QString::number(kDefaultMinutes));
    vSetDataType(m_dataType, m_minutes);
    m_parts->readMode.SetValue(m_readMode);
    if (QAbstractButton* radio = m_parts->dataType.GetButton(m_dataType)) {
        radio->setFocus();
    }
    return true;
}

void MXSetHistData::vSetDataType(int dataType, int minutes) {
    m_parts->dataType.SetValue(-1);
    m_ui->minutesCombo->setEditText(QString::number(minutes));
    const int shown = ShownType(m_parts->allowed, dataType);
    if (shown != dataType && shown >= 0) {
        vSetFirstAllowTA();
        return;
    }
    m_parts->dataType.SetValue(shown);
    if (shown == kMinutes) {
        OnKillfocusComboMinutes();
    }
}

void MXSetHistData::vSetFirstAllowTA() {
    m_dataType = FirstAllowedType(m_parts->allowed);
    m_parts->dataType.SetValue(m_dataType);
}

void MXSetHistData::OnDataType(int dataType) {
    m_dataType = dataType;
}

void MXSetHistData::OnReadMode(int readMode) {
    m_readMode = readMode;
    TakeControls();  // the date may have been passed by on the way to OK
}

void MXSetHistData::OnSelchangeComboMinutes() {
    const int row = std::max(0, m_ui->minutesCombo->currentIndex());
    m_ui->minutesCombo->setEditText(m_ui->minutesCombo->itemText(row));
    OnKillfocusComboMinutes();
}

void MXSetHistData::OnKillfocusComboMinutes() {
    m_minutes = MinutesOfText(m_ui->minutesCombo->currentText().toStdString());
    m_ui->minutesCombo->setEditText(QString::number(m_minutes));
}

// ---- The start date ----

void MXSetHistData::OnDateTimeChange() {
    // OK looks at the date itself, and Cancel does not need one.
    if (!m_ui->okButton->hasFocus() && !m_ui->cancelButton->hasFocus()) {
        TakeControls();
    }
}

bool MXSetHistData::TakeControls() {
    const QSignalBlocker quiet(m_ui->startDate);
    m_ui->startDate->interpretText();
    const QDate date = m_ui->startDate->date();
    if (date != m_start && !bChangeDate(date)) {
        return false;
    }
    ReadControls();
    return true;
}

void MXSetHistData::ReadControls() {
    m_recordCount = m_ui->countEdit->text().toLong();
    m_start = m_ui->startDate->date();
}

void MXSetHistData::ShowFields() {
    const QSignalBlocker quiet(m_ui->startDate);
    m_ui->countEdit->setText(QString::number(m_recordCount));
    m_ui->startDate->setDate(m_start);
}

bool MXSetHistData::bChangeDate(const QDate& date) {
    bool isTaken = false;
    Guard([&] {
        if (const char* const fault = FaultOf(date)) {
            TellKey(fault);
            ShowFields();
            m_ui->startDate->setFocus();
        } else {
            ReadControls();
            isTaken = true;
        }
    });
    return isTaken;
}

// ---- OK ----

bool MXSetHistData::LimitCount() {
    if (!LimitRecordCount(m_recordCount)) {
        return true;
    }
    m_ui->countEdit->setText(QString::number(m_recordCount));
    const CString text =
        BKQuoteInterface::GetBKInterface().LangGetLangString("IDS_DIALOG-SETHISTDATA_LASTREC_ERR");
    Refuse(*m_ui->countEdit, ToQString(ta::text::Format(text, kMinRecordCount, kMaxRecordCount)));
    return false;
}

void MXSetHistData::OnOK() {
    if (m_dataType == kMinutes) {
        OnKillfocusComboMinutes();
    }
    if (!TakeControls() || (m_readMode == kReadLast && !LimitCount())) {
        return;
    }
    m_startDate = DayOfDate(m_ui->startDate->date()).value_or(m_startDate);
    DialogBase::OnOK();
}

void MXSetHistData::OnCancel() {
    m_ui->startDate->disconnect(this);  // a date that is half typed needs no complaint now
    DialogBase::OnCancel();
}
