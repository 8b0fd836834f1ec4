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
        // A chart of seconds, which the dialog does not offer, keeps its bars.
        const int count = type == kMinutes         ? dialog.GetMinutes()
                          : type == chart.Period() ? chart.Count()
                                                   : 0;
        chart.Show({chart.Market(), chart.SymbolId(), type, count},
                   {dialog.GetReadMode(), dialog.GetRecordCount(), dialog.GetStartDate()});
    }
    chart.setFocus();
}

}  // namespace ta::terminal
