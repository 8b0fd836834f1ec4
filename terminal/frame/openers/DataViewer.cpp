#include "terminal/frame/DataViewer.h"

#include "terminal/chart/ChartPage.h"
#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Frame.h"
#include "terminal/frame/openers/Openers.h"

namespace ta::terminal {

void ViewData(const Frame& frame) {
    DataViewer::Of(frame.tabs.Current()).Open();
}

}  // namespace ta::terminal
