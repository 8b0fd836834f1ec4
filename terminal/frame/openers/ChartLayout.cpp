#include "dialogs/MXSELTAWND.h"
#include "terminal/chart/ChartPage.h"
#include "terminal/frame/ChartGrid.h"
#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Frame.h"
#include "terminal/frame/openers/Openers.h"

#include <QMainWindow>

namespace ta::terminal {

void ChooseLayout(const Frame& frame) {
    MXSELTAWND dialog(frame.tabs.CurrentGrid().State().format, &frame.window);
    if (dialog.DoModal() == ui::kIdOk) {
        frame.tabs.SetFormat(dialog.GetCurrentFormatNumber());
    }
    frame.tabs.Current().setFocus();
}

}  // namespace ta::terminal
