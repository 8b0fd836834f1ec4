#include "dialogs/MXSetCursorLine.h"
#include "platform/DrawInfo.h"
#include "settings/Messages.h"
#include "settings/Repository.h"
#include "terminal/chart/ChartView.h"
#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Frame.h"
#include "terminal/frame/openers/Openers.h"
#include "terminal/plot/ChartModel.h"

#include <QMainWindow>

namespace ta::terminal {
namespace {

template <class Option, class Choice>
void TakeChange(Option& now, const Option& before, Choice chosen) {
    if (static_cast<Option>(chosen) != before) {
        now = static_cast<Option>(chosen);
    }
}

/// What the user changed of `before`, into the options of a group as they are now, which another
/// terminal may have changed meanwhile, and into the store. false when the group is gone.
bool Save(int uniNum, const CommonProp& before, const MXSetCursorLine& chosen) {
    Repository().ReloadTASetting();
    const CTaSettingHandle::ReloadHold hold(Repository());
    ChartBaseDrawInfo* drawInfo =
        Repository().GetDrawInfo(Repository().GetGroupNameByUniNum(uniNum));
    if (drawInfo == nullptr) {
        return false;
    }
    CommonProp& options = drawInfo->CommonProperty();
    TakeChange(options.uCursorLineLockMode, before.uCursorLineLockMode, chosen.m_uLockStyle);
    TakeChange(options.bCrossLine, before.bCrossLine, chosen.m_uDisplayStyle);
    TakeChange(options.uCursorMoveStyle, before.uCursorMoveStyle, chosen.m_uMoveStyle);
    Repository().SaveAllGroupSetting();
    return true;
}

}  // namespace

void SetCursorLine(const Frame& frame) {
    const ChartView& chart = *frame.tabs.CurrentChart();
    const int group = chart.GroupUniNum();
    const CommonProp options = chart.Model().Options();
    MXSetCursorLine dialog(options.uCursorLineLockMode, options.bCrossLine ? 1 : 0,
                           options.uCursorMoveStyle, &frame.window);
    if (dialog.DoModal() == ui::kIdOk && Save(group, options, dialog)) {
        Repository().SendMsg2AllTechView(
            kGroupChangeMessage, static_cast<unsigned>(Repository().GetGroupIndexByUniNum(group)));
    }
    frame.tabs.Current().setFocus();
}

}  // namespace ta::terminal
