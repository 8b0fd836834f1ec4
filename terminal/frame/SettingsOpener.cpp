#include "terminal/frame/SettingsOpener.h"

#include "platform/ui/DialogBase.h"
#include "settings/Messages.h"
#include "settings/Repository.h"
#include "sheet/TaSettingSheet.h"

#include <set>

namespace ta::terminal {
namespace {

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

unsigned FirstPage(SettingsPlace::Page page) {
    // Without the group page the studies are the first one.
    return page == SettingsPlace::Page::Studies && Repository().GetGroupAuthorize() != 0 ? 1 : 0;
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

}  // namespace

void TellChartsOfGroups() {
    for (unsigned i = 0; i < GroupNames().size(); ++i) {
        Tell(i);
    }
}

CString OpenSettings(QWidget& parent, const SettingsPlace& place) {
    const std::set<int> before = GroupNumbers();
    CTaSettingSheet sheet("IDS_TERMINAL-FRAME_SETTINGS_TITLE", &parent, FirstPage(place.page),
                          place.group, place.paneCount, place.pane, place.study);
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

}  // namespace ta::terminal
