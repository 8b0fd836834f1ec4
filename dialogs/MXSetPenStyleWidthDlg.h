#pragma once

#include "platform/Export.h"
#include "platform/Types.h"
#include "platform/ui/DialogBase.h"
#include "platform/ui/RadioTable.h"

#include <memory>

class QRadioButton;

namespace Ui {
class MXSetPenStyleWidthDlg;
}

namespace ta::ui {
class PenSample;
}

/// Asks for the style and width of a line, with a sample line beside each choice. Only lines of one
/// pixel have styles: with a greater width the style is solid. Modal; the caller reads the fields
/// after DoModal gave kIdOk. Nothing is stored.
class TADIALOGS_EXPORT MXSetPenStyleWidthDlg : public ta::ui::DialogBase {
    Q_OBJECT

public:
    /// A style outside of 0 to 4 is taken as 0, a width outside of 1 to 5 as 1. `tag` says which
    /// line it is, in the user's code page: when it is the text of
    /// "IDS_TECHWND-CANVAS_COMMON_CURSORHEAD_OPEN", only the widths 1 and 2 can be chosen, and the
    /// style stays as it is.
    MXSetPenStyleWidthDlg(int style, int width, const CString& tag, QWidget* parent = nullptr);
    ~MXSetPenStyleWidthDlg() override;

    int m_nStyle;  ///< 0 to 4: solid, dashes, dots, dash-dot, dash-dot-dot; set by OK
    int m_nWidth;  ///< 1 to 5 pixels; set by OK

protected:
    bool OnInitDialog() override;
    void OnOK() override;
    void vLoadLanguageString() override;

private:
    static constexpr int kCount = 5;  ///< styles, and widths

    void ConnectSamples();
    /// Which choices the width that is checked leaves.
    void ApplyWidthRule();
    void EnableSamples();

    CString m_tag;
    bool m_isCursorLine = false;
    std::unique_ptr<Ui::MXSetPenStyleWidthDlg> m_ui;
    QRadioButton* m_radios[2 * kCount] = {};  ///< the styles' and behind them the widths'
    ta::ui::PenSample* m_samples[2 * kCount] = {};
    ta::ui::RadioTable m_styles;
    ta::ui::RadioTable m_widths;
};
