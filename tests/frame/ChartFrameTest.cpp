// What the frame makes of a chart: the dialog of its cursor line, its menu, the heights of its
// panes, and its periods.

#include "tests/frame/FrameFixture.h"

#include "terminal/plot/ChartModel.h"
#include "terminal/plot/PlotMapping.h"
#include "tests/support/DialogDriver.h"

#include <qcustomplot.h>
#include <QContextMenuEvent>
#include <QFile>
#include <QRadioButton>

#include <cmath>
#include <tuple>

namespace ta::test {
namespace {

using terminal::Command;
using terminal::SqliteStore;

class ChartFrameTest : public FrameTest {
protected:
    ChartFrameTest() { m_options.language = terminal::Language::English; }

    static void Check(QWidget& dialog, const char* radio) {
        dialog.findChild<QRadioButton*>(radio)->setFocus();
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Space);
    }
    /// High, vertical and click, and then a key.
    static void ChooseOthers(QWidget& dialog, Qt::Key key) {
        for (const char* radio : {"highRadio", "verticalRadio", "clickRadio"}) {
            Check(dialog, radio);
        }
        QTest::keyClick(&dialog, key);
    }
    const CommonProp& Shown(int tab) { return Tabs().ChartAt(tab)->Model().Options(); }
    static std::tuple<std::uint32_t, bool, std::uint32_t> CursorOf(const CommonProp& options) {
        return {options.uCursorLineLockMode, options.bCrossLine, options.uCursorMoveStyle};
    }
    std::vector<double> Heights() {
        std::vector<double> heights;
        for (const terminal::PlotMapping::Pane& pane : Chart().Mapping().panes) {
            heights.push_back(std::round(pane.height));
        }
        return heights;
    }
    void InOther(const std::function<void(SqliteStore&)>& action) {
        SqliteStore other;
        ASSERT_EQ(other.Open(StorePath()).state, terminal::OpenResult::Opened);
        action(other);
    }
};

const std::tuple kChosen{2u, false, 1u};
const std::tuple kFirst{0u, true, 0u};

TEST_F(ChartFrameTest, WhatIsChosenIsSavedAndFollowedByTheGroupsCharts) {
    Choose(Command::NewTab);
    DialogDriver user;
    user.Expect([](QWidget& dialog) { ChooseOthers(dialog, Qt::Key_Escape); });
    Choose(Command::CursorLine);
    EXPECT_EQ(CursorOf(Shown(1)), kFirst);
    user.Expect([&](QWidget& dialog) {
        EXPECT_TRUE(dialog.findChild<QRadioButton*>("intelligentRadio")->isChecked());
        InOther([](SqliteStore& other) {  // another terminal's edit stays
            other.SaveTASettingChartGrid(0, false);
            other.PackFile();
        });
        ChooseOthers(dialog, Qt::Key_Return);
    });
    Choose(Command::CursorLine);
    EXPECT_EQ(Window().focusWidget(), &Chart());
    for (const int tab : {0, 1}) {
        EXPECT_EQ(CursorOf(Shown(tab)), kChosen) << tab;
        EXPECT_FALSE(Shown(tab).bChartGrid) << tab;
    }
    InOther([](SqliteStore& other) {
        std::uint32_t lock = 0;
        bool grid = true;
        EXPECT_TRUE(other.LoadTASettingCursorLineLockMode(0, lock));
        EXPECT_TRUE(other.LoadTASettingChartGrid(0, grid));
        EXPECT_EQ(lock, 2u);
        EXPECT_FALSE(grid);
    });
    End();
    Start();
    EXPECT_EQ(CursorOf(Shown(0)), kChosen);
    user.Expect([&](QWidget& dialog) {
        InOther([](SqliteStore& other) {
            other.SaveTASettingCursorLineLockMode(0, 4);
            other.PackFile();
        });
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    Choose(Command::CursorLine);
    EXPECT_EQ(CursorOf(Shown(0)), (std::tuple{4u, false, 1u})) << "what the user left alone";
}

TEST_F(ChartFrameTest, NoOtherGroupTakesWhatWasChosenForOneThatIsGone) {
    AddGroup("Short-lived");
    DialogDriver user;
    user.Expect([&](QWidget& dialog) {
        Repository().DeleteGroupSetting("Short-lived");
        Repository().SaveAllGroupSetting();
        ChooseOthers(dialog, Qt::Key_Return);
    });
    Choose(Command::CursorLine);
    const CString first = Repository().GetSystemDefaultGroup();
    EXPECT_EQ(CursorOf(Repository().GetDrawInfo(first)->CommonProperty()), kFirst);
}

TEST_F(ChartFrameTest, TheChartsMenuOffersIt) {
    auto* plot = Chart().findChild<QCustomPlot*>();
    const QPoint point(300, 200);
    QContextMenuEvent event(QContextMenuEvent::Mouse, point, plot->mapToGlobal(point));
    QApplication::sendEvent(plot, &event);
    auto* menu = Chart().findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(menu->isVisible());
    EXPECT_TRUE(menu->actions().contains(&Action(Command::CursorLine)));
    EXPECT_TRUE(menu->actions().contains(&Action(Command::ViewData)));
    DialogDriver user;
    user.Expect([](QWidget& dialog) { ChooseOthers(dialog, Qt::Key_Return); });
    menu->close();
    Action(Command::CursorLine).trigger();
    EXPECT_EQ(CursorOf(Shown(0)), kChosen);
}

TEST_F(ChartFrameTest, PaneHeightsLastThroughARestart) {
    Tabs().OpenSymbol(2, "SPX");
    const std::vector<double> before = Heights();
    ASSERT_EQ(before.size(), 4u);
    QWidget* plot = Chart().findChild<QCustomPlot*>();
    const QPoint border(300, static_cast<int>(Chart().Mapping().panes[2].Bottom()) + 1);
    QTest::mousePress(plot, Qt::LeftButton, {}, border);
    QTest::mouseMove(plot, border + QPoint(0, 25));
    QTest::mouseMove(plot, border + QPoint(0, 30));
    QTest::mouseRelease(plot, Qt::LeftButton, {}, border + QPoint(0, 30));
    const std::vector<double> dragged = Heights();
    EXPECT_GT(dragged[2], before[2] + 25);
    Choose(Command::NewTab);
    EXPECT_EQ(Heights(), dragged) << "of every chart of the group";
    AddGroup("Another");
    EXPECT_EQ(Heights(), before);
    End();
    QFile state(FilePath("settings-window.ini"));
    ASSERT_TRUE(state.open(QIODevice::Append));
    state.write("\n[paneHeights]\n7=nonsense/0.5\nx=1\n1=1e300/-3\n");
    state.close();
    Start();
    EXPECT_EQ(Heights(), before);
    Tabs().setCurrentIndex(0);
    for (std::size_t pane = 0; pane < dragged.size(); ++pane) {
        EXPECT_NEAR(Heights()[pane], dragged[pane], 1);
    }
}

TEST_F(ChartFrameTest, ThePeriodBoxKeepsTheDateInView) {
    Tabs().OpenSymbol(2, "SPX");
    Chart().ZoomIn();
    Chart().ScrollBars(-120);
    const auto middle = [this] {
        const auto [first, last] = Chart().VisibleBars();
        return Chart().Model().Bars()[static_cast<std::size_t>((first + last) / 2)].time;
    };
    const double before = middle();
    emit ToolBar().periodChosen(1);
    ASSERT_EQ(Chart().Period(), 1);
    emit ToolBar().periodChosen(0);
    EXPECT_NEAR(middle(), before, 8);
    EXPECT_LT(Chart().VisibleBars().second, Chart().BarCount() - 1);
}

TEST_F(ChartFrameTest, TheCodeStandsBesideTheName) {
    Tabs().OpenSymbol(16, "9901");
    EXPECT_EQ(Tabs().tabText(0), "9901 Simulated Electronics Daily");
    EXPECT_TRUE(Window().windowTitle().startsWith("9901 Simulated Electronics Daily"));
    EXPECT_TRUE(Chart().LegendTexts()[0].startsWith("9901 Simulated Electronics "));
}

}  // namespace
}  // namespace ta::test
