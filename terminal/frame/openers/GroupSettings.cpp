#include "platform/ui/DialogBase.h"
#include "settings/Messages.h"
#include "settings/Repository.h"
#include "sheet/TaSettingSheet.h"
#include "terminal/chart/ChartView.h"
#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Frame.h"
#include "terminal/frame/openers/Openers.h"
#include "terminal/plot/ChartModel.h"

#include <QMainWindow>

#include <algorithm>
#include <set>

namespace ta::terminal {
namespace {

enum class Page { Groups, Studies };

std::set<int> GroupNumbers() {
    std::set<int> numbers;
    for (const CString& name : GroupNames()) {
        numbers.insert(Repository().GetUniNumByGroupName(name));
    }
    return numbers;
}

void Tell(unsigned groupIndex) {
    Repository().SendMsg2AllTechView(kGroupChangeMessage, groupIndex);
}

/// Of the group; a chart may leave out some.
int PanesOf(const CString& group) {
    return std::clamp(Repository().GetStudyCountByGroupName(group), 1, kPaneCount);
}

unsigned FirstPage(Page page) {
    // Without the group page the studies are the first one.
    return page == Page::Studies && Repository().GetGroupAuthorize() != 0 ? 1 : 0;
}

/// The sheet's list holds numbers of groups and positions of renamed ones alike.
std::set<unsigned> ChangedPositions(const std::vector<unsigned>& changed) {
    std::set<unsigned> positions;
    const std::size_t count = GroupNames().size();
    for (const unsigned value : changed) {
        if (const int index = Repository().GetGroupIndexByUniNum(static_cast<int>(value));
            index >= 0) {
            positions.insert(static_cast<unsigned>(index));
        }
        if (value < count) {
            positions.insert(value);
        }
    }
    return positions;
}

void TellChartsOfChanges(CTaSettingSheet& sheet) {
    if (sheet.IsDragList() != 0) {
        return TellChartsOfGroups();
    }
    std::vector<unsigned> changed;
    sheet.GetChangeGroupList(changed);
    for (const unsigned position : ChangedPositions(changed)) {
        Tell(position);
    }
    if (sheet.IsEditGroup() != 0) {
        // No group stands there: heard by the charts whose own group is gone.
        Tell(static_cast<unsigned>(GroupNames().size()));
    }
}

/// Runs the sheet with a study (from 1; 0 the pane) of a pane (from 0) selected. What it saves is
/// told to the chart views of the changed groups; those whose group was deleted fall back on the
/// default group. The group to show: the active one of the sheet when the user has added it; else
/// empty.
CString RunSheet(const Frame& frame, Page page, int pane, int study) {
    const ChartView& chart = *frame.tabs.CurrentChart();
    const std::set<int> before = GroupNumbers();
    CTaSettingSheet sheet("IDS_TERMINAL-FRAME_SETTINGS_TITLE", &frame.window, FirstPage(page),
                          chart.GroupName(), PanesOf(chart.GroupName()), pane, study);
    if (sheet.DoModal() != ui::kIdOk && sheet.IsAlwaysSave() == 0) {
        if (sheet.IsAskBeforeClose() != 0) {
            TellChartsOfGroups();  // one may have drawn itself meanwhile
        }
        return {};
    }
    Repository().ClearNoUseGroup();
    TellChartsOfChanges(sheet);
    const CString active = sheet.GetActiveGroup();
    return before.contains(Repository().GetUniNumByGroupName(active)) ? CString() : active;
}

void Edit(const Frame& frame, Page page, int pane, int study) {
    const CString added = RunSheet(frame, page, pane, study);
    ChartView& chart = *frame.tabs.CurrentChart();
    if (!added.empty()) {
        chart.SetGroup(added);
    }
    chart.setFocus();
}

}  // namespace

void TellChartsOfGroups() {
    for (unsigned i = 0; i < GroupNames().size(); ++i) {
        Tell(i);
    }
}

void EditGroups(const Frame& frame) {
    Edit(frame, Page::Groups, 0, 0);
}

void EditStudies(const Frame& frame, int pane, int study) {
    Edit(frame, Page::Studies, frame.tabs.CurrentChart()->Model().GroupPane(pane), study);
}

}  // namespace ta::terminal
