#include "dialogs/SetYaxisRangeDlg.h"

#include "dialogs/AxisRangeRules.h"
#include "platform/FormatText.h"
#include "platform/QuoteInterface.h"
#include "platform/ui/TextBridge.h"
#include "ui_SetYaxisRangeDlg.h"

#include <algorithm>

using namespace ta;

namespace {

enum Mode : int { kAutomatic, kUserRange };

constexpr const char* kRangeErrorKey = "IDC_DLGSETAAXISRANGE-STRING_SET_RANGE_ERROR";
constexpr const char* kDigitErrorKey = "IDC_DLGSETAAXISRANGE-STRING_DIGNUM_ERROR";

double NumberIn(const QLineEdit& edit) {
    return axis::NumberOfText(ui::FromQString(edit.text()));
}

axis::Range Rounded(double maximum, double minimum) {
    return {axis::RoundedByText(maximum), axis::RoundedByText(minimum)};
}

void ShowNumber(QLineEdit& edit, double value) {
    edit.setText(ui::ToQString(axis::TextOfNumber(value)));
}

}  // namespace

CSetYaxisRangeDlg::CSetYaxisRangeDlg(ChartBaseDrawInfo* drawInfo, double maximum, double minimum,
                                     int digitLimit, QWidget* parent)
    : DialogBase(parent),
      m_drawInfo(drawInfo),
      m_shown(std::make_unique<axis::Range>(Rounded(maximum, minimum))),
      m_bounds(std::make_unique<axis::Range>(*m_shown)),
      m_digitLimit(digitLimit),
      m_ui(std::make_unique<Ui::CSetYaxisRangeDlg>()) {
    m_ui->setupUi(this);
    SetButtons(*m_ui->okButton, *m_ui->cancelButton);
    m_mode.SetRows({{kAutomatic, m_ui->automaticRadio, {}, true},
                    {kUserRange, m_ui->userRadio, {m_ui->maximumEdit, m_ui->minimumEdit}}});
}

CSetYaxisRangeDlg::~CSetYaxisRangeDlg() = default;

void CSetYaxisRangeDlg::ShowRange(double maximum, double minimum) {
    *m_shown = Rounded(maximum, minimum);
    m_bounds->maximum = std::max(m_bounds->maximum, m_shown->maximum);
    m_bounds->minimum = std::min(m_bounds->minimum, m_shown->minimum);
}

bool CSetYaxisRangeDlg::BeginsAutomatic() const {
    return m_drawInfo == nullptr || axis::IsUnknown(*m_bounds) ||
           m_drawInfo->bGetYaxisRangeAutomatically(m_drawInfo->CommonProperty().iCurrentAxis);
}

bool CSetYaxisRangeDlg::OnInitDialog() {
    ShowNumber(*m_ui->maximumEdit, m_shown->maximum);
    ShowNumber(*m_ui->minimumEdit, m_shown->minimum);
    if (BeginsAutomatic()) {
        OnAutoButtonClicked();
    } else {
        OnSetRangeButtonClicked();
        m_ui->maximumEdit->setFocus();
        m_ui->maximumEdit->selectAll();
    }
    return true;
}

void CSetYaxisRangeDlg::OnAutoButtonClicked() {
    m_mode.SetValue(kAutomatic);
}

void CSetYaxisRangeDlg::OnSetRangeButtonClicked() {
    m_mode.SetValue(kUserRange);
}

int CSetYaxisRangeDlg::GetUserInputDigits(const CString& text) {
    return axis::UserInputDigits(text);
}

void CSetYaxisRangeDlg::ShowErrorMessage(QLineEdit& edit, const QString& text) {
    Refuse(edit, text);
}

void CSetYaxisRangeDlg::OnOK() {
    if (m_drawInfo == nullptr) {
        return DialogBase::OnOK();
    }
    const int current = m_drawInfo->CommonProperty().iCurrentAxis;
    if (m_mode.GetValue() == kAutomatic) {
        m_drawInfo->vSetYaxisRangeAutomatically(current, true);
        return DialogBase::OnOK();
    }
    const axis::Range chosen{NumberIn(*m_ui->maximumEdit), NumberIn(*m_ui->minimumEdit)};
    if (CheckOrderAndBounds(chosen) && CheckDigits(*m_ui->maximumEdit, m_shown->maximum) &&
        CheckDigits(*m_ui->minimumEdit, m_shown->minimum)) {
        m_drawInfo->vSetYaxisRangeAutomatically(current, false);
        m_drawInfo->vSetYaxisMaxVal(current, chosen.maximum);
        m_drawInfo->vSetYaxisMinVal(current, chosen.minimum);
        DialogBase::OnOK();
    }
}

bool CSetYaxisRangeDlg::CheckOrderAndBounds(const axis::Range& chosen) {
    const axis::RangeFault fault = axis::CheckRange(chosen, *m_bounds);
    if (fault == axis::RangeFault::None) {
        return true;
    }
    ShowErrorMessage(
        fault == axis::RangeFault::BelowMinimum ? *m_ui->minimumEdit : *m_ui->maximumEdit,
        RangeErrorText());
    return false;
}

bool CSetYaxisRangeDlg::CheckDigits(QLineEdit& edit, double shown) {
    const CString text = ui::FromQString(edit.text());
    if (text == axis::TextOfNumber(shown) || GetUserInputDigits(text) <= m_digitLimit) {
        return true;
    }
    ShowErrorMessage(edit, ui::LangText(kDigitErrorKey));
    return false;
}

QString CSetYaxisRangeDlg::RangeErrorText() const {
    const CString format = BKQuoteInterface::GetBKInterface().LangGetLangString(kRangeErrorKey);
    return ui::ToQString(text::Format(format, m_bounds->minimum, m_bounds->maximum));
}
