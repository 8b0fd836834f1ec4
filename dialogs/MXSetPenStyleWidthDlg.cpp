#include "dialogs/MXSetPenStyleWidthDlg.h"

#include "platform/QuoteInterface.h"
#include "platform/ui/PenSamples.h"
#include "ui_MXSetPenStyleWidthDlg.h"

using namespace ta::ui;

namespace {

constexpr const char* kCursorLineKey = "IDS_TECHWND-CANVAS_COMMON_CURSORHEAD_OPEN";
constexpr int kWidestCursorLine = 2;

}  // namespace

MXSetPenStyleWidthDlg::MXSetPenStyleWidthDlg(int style, int width, const CString& tag,
                                             QWidget* parent)
    : DialogBase(parent),
      m_nStyle(style),
      m_nWidth(width),
      m_tag(tag),
      m_ui(std::make_unique<Ui::MXSetPenStyleWidthDlg>()) {
    m_ui->setupUi(this);
    SetButtons(*m_ui->okButton, *m_ui->cancelButton);
    std::vector<RadioTable::Row> styles;
    std::vector<RadioTable::Row> widths;
    for (int i = 0; i < kCount; ++i) {
        const auto adopt = [&](const char* name, int number, int place) {
            m_radios[place] = findChild<QRadioButton*>(QString("%1%2Radio").arg(name).arg(number));
            m_samples[place] = findChild<PenSample*>(QString("%1%2Sample").arg(name).arg(number));
            return RadioTable::Row{number, m_radios[place], {}, i == 0};
        };
        styles.push_back(adopt("style", i, i));
        widths.push_back(adopt("width", i + 1, kCount + i));
        m_samples[i]->SetPen(i, 1);
        m_samples[kCount + i]->SetPen(0, i + 1);
    }
    m_styles.SetRows(std::move(styles));
    m_widths.SetRows(std::move(widths));
    ConnectSamples();
    Handle(&m_widths, &RadioTable::chosen, [this] { ApplyWidthRule(); });
}

MXSetPenStyleWidthDlg::~MXSetPenStyleWidthDlg() = default;

void MXSetPenStyleWidthDlg::ConnectSamples() {
    for (int i = 0; i < 2 * kCount; ++i) {
        Handle(m_samples[i], &PenSample::clicked, [radio = m_radios[i]] {
            radio->setFocus();
            radio->click();
        });
    }
}

bool MXSetPenStyleWidthDlg::OnInitDialog() {
    m_isCursorLine = BKQuoteInterface::GetBKInterface().LangGetLangString(kCursorLineKey) == m_tag;
    m_styles.SetValue(m_nStyle);
    m_widths.SetValue(m_nWidth);
    if (m_isCursorLine) {
        m_styles.EnableRows([](int) { return false; });
        m_widths.EnableRows([](int width) { return width <= kWidestCursorLine; });
    }
    ApplyWidthRule();
    if (!m_styles.FocusChecked()) {
        m_widths.FocusChecked();
    }
    return true;
}

void MXSetPenStyleWidthDlg::ApplyWidthRule() {
    if (!m_isCursorLine) {
        const bool isThin = m_widths.GetValue() == 1;
        if (!isThin) {
            m_styles.SetValue(0);
        }
        m_styles.EnableRows([isThin](int style) { return isThin || style == 0; });
    }
    EnableSamples();
}

void MXSetPenStyleWidthDlg::EnableSamples() {
    for (int i = 0; i < 2 * kCount; ++i) {
        m_samples[i]->setEnabled(m_radios[i]->isEnabled());
    }
}

void MXSetPenStyleWidthDlg::vLoadLanguageString() {
    LoadLanguageStrings();
    // The radios have no texts; this is what a screen reader says.
    const QString width = LangText("IDS_DIALOG-SET-PENSTYLEWIDTH_WIDTH");
    for (int i = 0; i < kCount; ++i) {
        m_radios[i]->setAccessibleName(LangText(PenStyleKey(i)));
        m_radios[kCount + i]->setAccessibleName(QString("%1 %2").arg(width).arg(i + 1));
    }
}

void MXSetPenStyleWidthDlg::OnOK() {
    m_nStyle = m_styles.GetValue(0);
    m_nWidth = m_widths.GetValue(1);
    DialogBase::OnOK();
}
