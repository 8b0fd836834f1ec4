#include "dialogs/SetXaxisRangeDlg.h"

#include "dialogs/AxisRangeRules.h"
#include "platform/ui/TextBridge.h"
#include "ui_SetXaxisRangeDlg.h"

using namespace ta;

struct TADIALOGS_HIDDEN CSetXaxisRangeDlg::ModeInfo {
    bool CommonProp::*usesDefault;
    int (CommonProp::*percent)() const;
    int defaultPercent;
    const char* defaultKey;
    const char* noticeKey;  ///< "" for none
    void (*setPercent)(CommonProp& common, int percent, int barWidth);

    static const ModeInfo kAxisWidth;
    static const ModeInfo kEdgeSpace;
};

const CSetXaxisRangeDlg::ModeInfo CSetXaxisRangeDlg::ModeInfo::kAxisWidth{
    &CommonProp::bYaxisWidthDefault,
    &CommonProp::iGetYaxisWidth,
    100,
    "IDS_DIALOG-YAXIS_DEFAULT",
    "IDS_DIALOG-YAXIS_NOTICE",
    [](CommonProp& common, int percent, int) { common.vSetYaxisWidth(percent); },
};

const CSetXaxisRangeDlg::ModeInfo CSetXaxisRangeDlg::ModeInfo::kEdgeSpace{
    &CommonProp::bEdgeSpaceDefault,
    &CommonProp::iGetEdgeSpace,
    0,
    "IDS_DIALOG-YAXIS_SPACE_DEFAULT",
    "",
    [](CommonProp& common, int percent, int barWidth) {
        common.SetDrawChartMovePixel(barWidth / 2, percent);
    },
};

namespace {

enum Choice : int { kDefault, kUserDefined };

}  // namespace

CSetXaxisRangeDlg::CSetXaxisRangeDlg(ChartBaseDrawInfo* drawInfo, int barWidth, int mode,
                                     QWidget* parent)
    : DialogBase(parent),
      m_drawInfo(drawInfo),
      m_barWidth(barWidth),
      m_info(mode == kAxisWidthMode ? ModeInfo::kAxisWidth : ModeInfo::kEdgeSpace),
      m_ui(std::make_unique<Ui::CSetXaxisRangeDlg>()) {
    m_ui->setupUi(this);
    SetButtons(*m_ui->okButton, *m_ui->cancelButton);
    m_choice.SetRows({{kDefault, m_ui->defaultRadio, {}, true},
                      {kUserDefined, m_ui->userRadio, {m_ui->percentEdit}}});
}

CSetXaxisRangeDlg::~CSetXaxisRangeDlg() = default;

bool CSetXaxisRangeDlg::OnInitDialog() {
    int percent = 0;
    bool usesDefault = true;
    if (m_drawInfo != nullptr) {
        const CommonProp& common = m_drawInfo->CommonProperty();
        percent = (common.*m_info.percent)();
        usesDefault = common.*m_info.usesDefault;
    }
    m_ui->percentEdit->setText(QString::number(percent));
    if (usesDefault) {
        OnSetForDefault();
    } else {
        OnSetForUserDef();
        m_ui->percentEdit->setFocus();
        m_ui->percentEdit->selectAll();
    }
    return true;
}

void CSetXaxisRangeDlg::vLoadLanguageString() {
    LoadLanguageStrings();
    m_ui->defaultRadio->setText(ui::LangText(m_info.defaultKey) +
                                QString("%1%").arg(m_info.defaultPercent));
    const CString notice = m_info.noticeKey;
    m_ui->noticeLabel->setText(notice.empty() ? QString() : ui::LangText(notice));
    m_ui->noticeLabel->setVisible(!notice.empty());
}

void CSetXaxisRangeDlg::OnSetForDefault() {
    m_choice.SetValue(kDefault);
}

void CSetXaxisRangeDlg::OnSetForUserDef() {
    m_choice.SetValue(kUserDefined);
}

void CSetXaxisRangeDlg::OnOK() {
    if (m_drawInfo == nullptr) {
        return DialogBase::OnOK();
    }
    if (m_choice.GetValue() == kDefault) {
        TakeDefault();
        return DialogBase::OnOK();
    }
    const int percent = axis::IntegerOfText(ui::FromQString(m_ui->percentEdit->text()));
    if (percent < axis::kLeastPercent || percent > axis::kMostPercent) {
        return Refuse(*m_ui->percentEdit, OutsideText(), ui::PromptIcon::None);
    }
    TakePercent(percent);
    DialogBase::OnOK();
}

void CSetXaxisRangeDlg::TakeDefault() {
    CommonProp& common = m_drawInfo->CommonProperty();
    common.*m_info.usesDefault = true;
    if (&m_info == &ModeInfo::kAxisWidth) {
        common.vSetYaxisWidth(m_info.defaultPercent);
    }
}

void CSetXaxisRangeDlg::TakePercent(int percent) {
    CommonProp& common = m_drawInfo->CommonProperty();
    common.*m_info.usesDefault = false;
    m_info.setPercent(common, percent, m_barWidth);
}

QString CSetXaxisRangeDlg::OutsideText() const {
    return ui::LangText("IDS_DIALOG-YAXIS_MESSAGE1") +
           QString("%1 ~ %2").arg(axis::kLeastPercent).arg(axis::kMostPercent) +
           ui::LangText("IDS_DIALOG-YAXIS_MESSAGE2");
}
