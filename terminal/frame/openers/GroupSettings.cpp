#include "terminal/chart/ChartView.h"
#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Frame.h"
#include "terminal/frame/Session.h"
#include "terminal/frame/SettingsOpener.h"
#include "terminal/frame/openers/Openers.h"

#include <QMainWindow>

namespace ta::terminal {
namespace {

void Edit(const Frame& frame, SettingsPlace::Page page, int pane, int study) {
    ChartView& chart = frame.tabs.Current();
    const CString added = OpenSettings(frame.window, frame.session.Store(),
                                       {page, chart.GroupName(), chart.PaneCount(), pane, study});
    if (!added.empty()) {
        chart.SetGroup(added);
    }
    chart.setFocus();
}

}  // namespace

void EditGroups(const Frame& frame) {
    Edit(frame, SettingsPlace::Page::Groups, 0, 0);
}

void EditStudies(const Frame& frame, int pane, int study) {
    Edit(frame, SettingsPlace::Page::Studies, pane, study);
}

}  // namespace ta::terminal
