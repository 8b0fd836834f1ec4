#pragma once

#include "platform/DrawInfo.h"
#include "platform/Export.h"
#include "platform/ui/DialogBase.h"
#include "platform/ui/RadioTable.h"

#include <memory>

namespace Ui {
class CSetXaxisRangeDlg;
}

/// Chooses between the default and a percentage of the user's, 0 to 100: for the width of the value
/// axis, or for the space that is kept free at the chart's edge. Modal. OK writes into the draw
/// info's common properties; Cancel writes nothing.
class TADIALOGS_EXPORT CSetXaxisRangeDlg : public ta::ui::DialogBase {
    Q_OBJECT

public:
    static constexpr int kAxisWidthMode = 1;
    static constexpr int kEdgeSpaceMode = 2;  ///< as any other number

    /// `drawInfo` stays the caller's and outlives the dialog; with null the dialog shows the
    /// default and writes nothing. `barWidth`: half of it goes to SetDrawChartMovePixel with the
    /// user's edge space.
    CSetXaxisRangeDlg(ChartBaseDrawInfo* drawInfo, int barWidth, int mode,
                      QWidget* parent = nullptr);
    ~CSetXaxisRangeDlg() override;

    // The two radios.
    void OnSetForDefault();
    void OnSetForUserDef();

protected:
    bool OnInitDialog() override;
    /// A number outside 0 to 100 is told, and the dialog stays; a text that is none counts as 0.
    void OnOK() override;
    void vLoadLanguageString() override;

private:
    struct TADIALOGS_HIDDEN ModeInfo;

    void TakeDefault();
    void TakePercent(int percent);
    QString OutsideText() const;

    ChartBaseDrawInfo* m_drawInfo;
    int m_barWidth;
    const ModeInfo& m_info;
    std::unique_ptr<Ui::CSetXaxisRangeDlg> m_ui;
    ta::ui::RadioTable m_choice;
};
