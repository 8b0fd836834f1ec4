#include "dialogs/MXSetHistData.h"
#include "terminal/chart/ChartView.h"
#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Frame.h"
#include "terminal/frame/openers/Openers.h"

#include <QMainWindow>

namespace ta::terminal {

void SetHistory(const Frame& frame) {
    constexpr int kMinutes = 3;
    ChartView& chart = frame.tabs.Current();
    const HistoryDepth depth = chart.Depth();
    MXSetHistData dialog(chart.Market(), chart.SymbolId(), chart.Period(), chart.Count(),
                         depth.readMode, depth.recordCount, depth.startDay, false, &frame.window);
    if (dialog.DoModal() == ui::kIdOk) {
        const int type = dialog.GetDataType();
        chart.Show(
            {chart.Market(), chart.SymbolId(), type, type == kMinutes ? dialog.GetMinutes() : 0},
            {dialog.GetReadMode(), dialog.GetRecordCount(), dialog.GetStartDate()});
    }
    chart.setFocus();
}

}  // namespace ta::terminal
