// A small host of the library: it hangs its services in, adds an indicator group, saves it, and
// has a chart view that is told when the settings change.

#include "MemoryStore.h"
#include "PlainChart.h"
#include "platform/Text.h"
#include "settings/Messages.h"
#include "settings/TaSettingHandle.h"

#include <iostream>

namespace {

// Names are bytes of the user's code page; this program reads and prints UTF-8.
using ta::text::FromUtf8;
using ta::text::ToUtf8;

class ExampleView final : public CView {
public:
    std::intptr_t WindowProc(unsigned message, std::uintptr_t wParam, std::intptr_t) override {
        if (message == ta::kGroupChangeMessage) {
            const auto index = static_cast<unsigned>(wParam);
            const CString name = CTaSettingHandle::GetInstance().GetGroupNameByIndex(index);
            std::cout << "view: draw group " << index << " again: " << ToUtf8(name) << '\n';
        } else if (message == ta::kTrendLineChangeMessage) {
            std::cout << "view: draw the trend lines again\n";
        }
        return 0;
    }
};

void AddDayTradingGroup(CTaSettingHandle& repository, const CString& name) {
    constexpr StudyType kCandlesticks = 0;
    constexpr StudyType kMovingAverages = 4;
    constexpr StudyType kVolume = 16;

    if (repository.AddGroupSetting(name) == 0) {
        std::cout << "there is a group of this name already\n";
        return;
    }
    repository.SetStudyListByGroupName(name, {{kCandlesticks, kMovingAverages}, {kVolume}});
    repository.SetStudyCountByGroupName(name, 2);
    repository.GetDrawInfo(name)->CommonProperty().bChartGrid = false;
}

void PrintGroups(CTaSettingHandle& repository) {
    std::vector<CString> names;
    repository.GetGroupNameList(names);
    for (const CString& name : names) {
        std::cout << "group " << repository.GetUniNumByGroupName(name) << ": " << ToUtf8(name)
                  << ", panes " << repository.GetStudyCountByGroupName(name) << ", grid "
                  << (repository.GetDrawInfo(name)->CommonProperty().bChartGrid ? "on" : "off")
                  << '\n';
    }
}

}  // namespace

int main() {
    // The services outlive the repository, which is destroyed at exit.
    static MemoryStore store({FromUtf8("長期")});
    static PlainChartModule chartModule;
    ta::Services services;
    services.configStore = &store;
    services.chartModule = &chartModule;
    CSyncInfo::GetSettingCFG().SetServices(services);

    CTaSettingHandle& repository = CTaSettingHandle::GetInstance();
    AddDayTradingGroup(repository, FromUtf8("當沖"));
    repository.SaveAllGroupSetting();
    std::cout << "committed " << store.Packs() << " time(s)\n";

    ExampleView view;
    repository.AddTechViewPtr(&view);
    // As when another window of the terminal has saved: the next call loads everything again.
    store.SetTASettingReloadType(true);
    PrintGroups(repository);
    repository.RemoveTechViewPtr(&view);
}
