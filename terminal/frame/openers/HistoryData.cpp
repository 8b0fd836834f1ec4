#include "dialogs/MXSetHistData.h"
#include "terminal/chart/ChartPage.h"
#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Frame.h"
#include "terminal/frame/openers/Openers.h"

#include <QMainWindow>

namespace ta::terminal {

void SetHistory(const Frame& frame) {
    constexpr int kMinutes = 3;
    ChartPage& chart = frame.tabs.Current();
    const BarsKey& shown = chart.Shown();
    const HistoryDepth depth = chart.Depth();
    MXSetHistData dialog(shown.market, shown.symbol, shown.period, shown.count, depth.readMode,
                         depth.recordCount, depth.startDay, false, &frame.window);
    if (dialog.DoModal() == ui::kIdOk) {
        const int type = dialog.GetDataType();
        // A chart of seconds, which the dialog does not offer, keeps its bars.
        const int count = type == kMinutes       ? dialog.GetMinutes()
                          : type == shown.period ? shown.count
                                                 : 0;
        chart.Show({shown.market, shown.symbol, type, count},
                   {dialog.GetReadMode(), dialog.GetRecordCount(), dialog.GetStartDate()});
    }
    chart.setFocus();
}

}  // namespace ta::terminal
