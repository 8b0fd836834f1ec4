#pragma once

#include "platform/DrawInfo.h"
#include "platform/Export.h"
#include "platform/Types.h"
#include "platform/ui/DialogBase.h"
#include "platform/ui/RadioTable.h"

#include <memory>

class QLineEdit;

namespace ta::axis {
struct Range;
}

namespace Ui {
class CSetYaxisRangeDlg;
}

/// Chooses between the automatic range of a value axis and one that the user types. Modal. OK
/// writes into the draw info, for the axis that its common properties name as the current one;
/// Cancel writes nothing.
class TADIALOGS_EXPORT CSetYaxisRangeDlg : public ta::ui::DialogBase {
    Q_OBJECT

public:
    /// `drawInfo` stays the caller's and outlives the dialog; with null the dialog is automatic and
    /// writes nothing. `maximum` and `minimum` are shown, and bound what the user may choose; both
    /// are rounded to 6 decimals, and 0 when not finite. When one of them is 999999999.99 or
    /// -999999999.99, the dialog begins as automatic whatever the draw info says. `digitLimit`:
    /// the most digits behind the point that are taken, counted as GetUserInputDigits does.
    CSetYaxisRangeDlg(ChartBaseDrawInfo* drawInfo, double maximum, double minimum, int digitLimit,
                      QWidget* parent = nullptr);
    ~CSetYaxisRangeDlg() override;

    /// Shows another range than the bounds, before the dialog opens. Bounds that it does not lie
    /// within become as wide.
    void ShowRange(double maximum, double minimum);

    // The two radios.
    void OnAutoButtonClicked();
    void OnSetRangeButtonClicked();

    /// See ta::axis::UserInputDigits.
    static int GetUserInputDigits(const CString& text);
    /// Tells the text, then takes the typing in the edit back, and selects all of it.
    void ShowErrorMessage(QLineEdit& edit, const QString& text);

protected:
    bool OnInitDialog() override;
    /// A range that the rules refuse is told, and the dialog stays. What stands in an edit as the
    /// dialog has shown it is never refused for its digits.
    void OnOK() override;

private:
    bool BeginsAutomatic() const;
    bool CheckOrderAndBounds(const ta::axis::Range& chosen);
    bool CheckDigits(QLineEdit& edit, double shown);
    QString RangeErrorText() const;

    ChartBaseDrawInfo* m_drawInfo;
    std::unique_ptr<ta::axis::Range> m_shown;
    std::unique_ptr<ta::axis::Range> m_bounds;
    int m_digitLimit;
    std::unique_ptr<Ui::CSetYaxisRangeDlg> m_ui;
    ta::ui::RadioTable m_mode;
};
