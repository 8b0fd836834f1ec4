#include "settings/Messages.h"
#include "settings/Repository.h"
#include "terminal/chart/ChartScene.h"
#include "terminal/chart/ChartView.h"
#include "terminal/plot/PlotMapping.h"
#include "tour/Guide.h"
#include "tour/Steps.h"

#include <qcustomplot.h>
#include <QApplication>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>

namespace ta::tour {
namespace {

/// Studies of the prices, and one that has another scale.
const StudyLists kOverPrices{{0, 7, 24}, {16}};

void Enter(QWidget& dialog, const char* edit, const QString& text) {
    auto& field = Find<QLineEdit>(dialog, edit);
    field.setFocus();
    field.selectAll();
    Type(field, text);
}

void Take(QWidget& dialog, const char* radio) {
    auto& button = Find(dialog, radio);
    button.setFocus();
    QTest::keyClick(&button, Qt::Key_Space);
    Settle();
}

QPoint OnPriceAxis(Guide& guide) {
    const terminal::PlotMapping mapping = guide.Chart().Mapping();
    return QPointF(mapping.left + mapping.width + 12, mapping.panes[0].top + 60).toPoint();
}

void ShowMenus(Guide& guide, const QString& language) {
    guide.MenuPicture(MenuId::Axes, "axis-menu-" + language);
    QWidget& plot = Find<QCustomPlot>(guide.Chart(), {});
    const QPoint at = OnPriceAxis(guide);
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, plot.mapToGlobal(at));
    QApplication::sendEvent(&plot, &event);
    Settle();
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    Expect(menu != nullptr, "the axis has no menu");
    menu->move(menu->pos() - QPoint(menu->width(), 0));  // into the picture
    guide.Picture("axis-context-menu-" + language);
    menu->close();
    Settle();
}

/// Automatic, each refusal, and a range by hand.
void SetRange(Guide& guide, const QString& language) {
    const auto picture = [&guide, language](const QString& kind) {
        guide.Picture("axis-range-" + kind + '-' + language);
    };
    const auto refusal = [picture](const char* kind) {
        return [picture, kind](QWidget& message) {
            picture(kind);
            Confirm(message);
        };
    };
    const auto dialog = [picture](QWidget& shown) {
        picture("automatic");
        Take(shown, "userRadio");
        Enter(shown, "maximumEdit", "1");
        Push(shown, "okButton");
        Enter(shown, "maximumEdit", "3600.1234");
        Push(shown, "okButton");
        Enter(shown, "maximumEdit", "3600");
        Enter(shown, "minimumEdit", "2000");
        picture("by-hand");
        Confirm(shown);
    };
    guide.Choose(Command::AxisRange, {dialog, refusal("order"), refusal("digits")});
    guide.ExpectChart(guide.Chart().PaneCount());
    Expect(guide.Chart().AxisAt({0, 0})->byHand, "the range is not set");
    picture("chart");
    guide.Choose(Command::AxisRange, {[picture](QWidget& shown) {
                     picture("again");
                     Dismiss(shown);
                 }});
}

void SetPercent(Guide& guide, Command command, const char* percent, const QString& name) {
    const auto dialog = [&](QWidget& shown) {
        guide.Picture(name + "-default");
        Take(shown, "userRadio");
        Enter(shown, "percentEdit", "101");
        Push(shown, "okButton");
        Enter(shown, "percentEdit", percent);
        guide.Picture(name + "-by-hand");
        Confirm(shown);
    };
    guide.Choose(command, {dialog, [&](QWidget& message) {
                               guide.Picture(name + "-outside");
                               Confirm(message);
                           }});
    guide.Picture(name + "-chart");
}

void SetDefault(Guide& guide, Command command) {
    guide.Choose(command, {[](QWidget& shown) {
                     Take(shown, "defaultRadio");
                     Confirm(shown);
                 }});
}

void ShowAxes(Guide& guide) {
    guide.Choose(Command::NewTab);
    guide.ChooseDefaultGroup();
    guide.Open("SPX");
    guide.ChoosePeriod("IDS_TERMINAL-FRAME_PERIOD_DAY");
    guide.Choose(Command::ShowLatest);
    InBothLanguages(guide, [&guide](const QString& language) {
        SetRange(guide, language);
        ShowMenus(guide, language);
        guide.Choose(Command::AxisAutomatic);
        SetPercent(guide, Command::AxisWidth, "75", "axis-width-" + language);
        SetPercent(guide, Command::EdgeSpace, "25", "edge-space-" + language);
        SetDefault(guide, Command::AxisWidth);
        SetDefault(guide, Command::EdgeSpace);
    });
}

void ShowNarrowAxis(Guide& guide) {
    guide.Choose(Command::AxisWidth, {[](QWidget& shown) {
                     Take(shown, "userRadio");
                     Enter(shown, "percentEdit", "40");
                     Confirm(shown);
                 }});
    guide.Picture("axis-width-too-narrow");
    SetDefault(guide, Command::AxisWidth);
}

/// A study of another scale on the prices, with the level lines, in the light and in the dark.
void ShowOwnAxis(Guide& guide) {
    AddGroupInSheet(guide, "座標軸", nullptr);
    const CString group = guide.Chart().GroupName();
    CTaSettingHandle& repository = CTaSettingHandle::GetInstance();
    const auto tell = [&] {
        repository.SendMsg2AllTechView(kGroupChangeMessage, repository.GetGroupIndexByName(group));
        guide.ExpectChart(2);
    };
    repository.SetStudyListByGroupName(group, kOverPrices);
    repository.SetStudyCountByGroupName(group, 2);
    tell();
    guide.Picture("own-axis");
    CommonProp& options = repository.GetDrawInfo(group)->CommonProperty();
    options.bLowIdx = true;
    options.bCDP = true;
    tell();
    guide.Picture("level-lines");
    repository.GetDrawInfo(group)->CommonProperty().uScalePos = 2;
    tell();
    guide.Choose(Command::AxisRange, {[](QWidget& shown) {
                     Take(shown, "userRadio");
                     Confirm(shown);
                 }});
    guide.DarkPicture("own-axis-dark");
    guide.Choose(Command::CloseTab);
    repository.DeleteGroupSetting(group);
    repository.SaveAllGroupSetting();
}

}  // namespace

std::vector<Step> AxisSteps() {
    return {{"axes", ShowAxes}, {"narrow axis", ShowNarrowAxis}, {"own axis", ShowOwnAxis}};
}

}  // namespace ta::tour
