// Several charts in a tab: the layout, what is parked, what the charts have in common, the next
// run.

#include "platform/ui/TextBridge.h"
#include "terminal/frame/BarAtTime.h"
#include "terminal/frame/ChartGrid.h"
#include "tests/frame/FrameFixture.h"
#include "tests/support/DialogDriver.h"

#include <QContextMenuEvent>
#include <QFile>
#include <QRadioButton>
#include <QTabBar>

namespace ta::test {
namespace {

using terminal::ChartGrid;
using terminal::ChartPage;
using terminal::ChartView;
using terminal::Command;

class ChartLayoutTest : public FrameTest {
protected:
    ChartGrid& Grid() { return Tabs().CurrentGrid(); }
    ChartView& ChartIn(std::size_t window) {
        return *static_cast<ChartView*>(Grid().InView().at(window));
    }
    /// By the dialog's key.
    void ChooseFormat(int format) {
        DialogDriver user;
        user.Expect([format](QWidget& dialog) {
            auto* radio = dialog.findChild<QRadioButton*>(QString("format%1Radio").arg(format));
            QTest::mouseClick(radio, Qt::LeftButton);
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
        QTest::keyClick(&Window(), Qt::Key_W, Qt::ControlModifier | Qt::ShiftModifier);
        Window().activateWindow();
        ASSERT_TRUE(Await([this] { return Window().isActiveWindow(); }));
    }
    void ClickOn(std::size_t window) {
        QTest::mouseClick(ChartIn(window).childAt(ChartIn(window).rect().center()), Qt::LeftButton);
    }
    /// "SPX0 9901/3": the symbols and periods in view, "*" behind the active one.
    QString InView() {
        QStringList texts;
        for (std::size_t i = 0; i < Grid().InView().size(); ++i) {
            texts.append(ui::ToQString(ChartIn(i).SymbolId()) + '/' +
                         QString::number(ChartIn(i).Period()) +
                         (&ChartIn(i) == &Grid().Active() ? "*" : ""));
        }
        return texts.join(' ');
    }
    /// Each chart stands where the layout has its window, all but the lines around it.
    void ExpectPlaced() {
        const auto& state = Grid().State();
        const auto dividers = state.dividers.find(state.format);
        const std::vector<layout::Area> areas =
            layout::Windows(layout::LayoutOf(state.format),
                            dividers == state.dividers.end() ? layout::Places() : dividers->second);
        ASSERT_EQ(areas.size(), Grid().InView().size());
        for (std::size_t i = 0; i < areas.size(); ++i) {
            const QRectF place(areas[i].left * Grid().width(), areas[i].top * Grid().height(),
                               areas[i].width * Grid().width(), areas[i].height * Grid().height());
            const QRectF real = ChartIn(i).geometry();
            EXPECT_TRUE(place.adjusted(-1, -1, 1, 1).contains(real)) << i;
            EXPECT_LT(place.width() - real.width() + place.height() - real.height(), 16) << i;
            EXPECT_TRUE(ChartIn(i).isVisible());
        }
    }
    /// Symbols in the windows of a layout of four, the third one active.
    void ShowFour() {
        Tabs().OpenSymbol(2, "SPX");
        ChooseFormat(4);
        ClickOn(1);
        Tabs().OpenSymbol(16, "9901");
        ClickOn(3);
        Tabs().OpenSymbol(2, "AMZN");
        ClickOn(2);
        Tabs().SelectPeriod(1);
        ASSERT_EQ(InView(), "SPX/0 9901/0 SPX/1* AMZN/2");
    }
    static void DragDivider(ChartGrid& grid, QPoint from, QPoint to) {
        QTest::mousePress(&grid, Qt::LeftButton, {}, from);
        QMouseEvent move(QEvent::MouseMove, to, grid.mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                         {});
        QCoreApplication::sendEvent(&grid, &move);
        QTest::mouseRelease(&grid, Qt::LeftButton, {}, to);
    }
};

TEST_F(ChartLayoutTest, NewWindowsBeginAsTheActiveChartAndGoTheirOwnWay) {
    AddGroup("趨勢");
    Tabs().OpenSymbol(16, "9901");
    Tabs().SelectPeriod(4);
    for (const layout::Layout& layout : layout::Layouts()) {
        ChooseFormat(layout.format);
        ExpectPlaced();
    }
    EXPECT_EQ(Grid().Charts().size(), 10U);
    ChooseFormat(3);
    EXPECT_EQ(InView(), "9901/3* 9901/3 9901/3");
    EXPECT_EQ(ChartIn(2).GroupName(), ui::FromQString("趨勢"));
    EXPECT_EQ(ChartIn(2).Count(), 5);
    EXPECT_EQ(Window().focusWidget(), &ChartIn(0));

    ClickOn(2);
    EXPECT_EQ(Window().focusWidget(), &ChartIn(2));
    Tabs().OpenSymbol(2, "SPX");
    ChooseGroup(GroupsInRepository().first());
    EXPECT_EQ(InView(), "9901/3 9901/3 SPX/0*");
    EXPECT_EQ(ToolBar().Symbol().text(), "SPX S&P 500 指數");
    EXPECT_TRUE(Window().windowTitle().contains("S&P 500"));
    EXPECT_EQ(Tabs().tabText(0), "SPX S&&P 500 指數 日線 (3)");
    QTest::keyClick(&Window(), Qt::Key_F6);
    EXPECT_EQ(Window().focusWidget(), &ChartIn(0)) << "round in a circle";
    EXPECT_EQ(ToolBar().Symbol().text(), "9901 模擬電子");
    EXPECT_EQ(ToolBar().Group().currentText(), "趨勢");
    QTest::keyClick(&Window(), Qt::Key_F6, Qt::ShiftModifier);
    QTest::keyClick(&Window(), Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(InView(), "9901/3 9901/3* SPX/0");
    Choose(Command::NewTab);
    EXPECT_EQ(InView(), "9901/3*") << "the current chart alone";
    EXPECT_FALSE(Action(Command::NextChart).isEnabled());
}

TEST_F(ChartLayoutTest, SurplusChartsAreParkedAndComeBack) {
    ShowFour();
    ChartIn(1).ScrollBars(-20);
    const auto inView = ChartIn(1).VisibleBars();
    const auto charts = Grid().Charts();
    ChooseFormat(1);
    EXPECT_EQ(InView(), "SPX/1*") << "the active one stays";
    EXPECT_EQ(Chart().geometry(), Grid().rect());
    ExpectPlaced();
    EXPECT_FALSE(charts[1]->isVisible());
    ChooseFormat(2);
    EXPECT_EQ(InView(), "SPX/0 SPX/1*");
    ChooseFormat(4);
    EXPECT_EQ(InView(), "SPX/0 9901/0 SPX/1* AMZN/2");
    EXPECT_EQ(Grid().Charts(), charts);
    EXPECT_EQ(ChartIn(1).VisibleBars(), inView);
    // A guest that is left for another chart goes back to its place, too.
    ChooseFormat(2);
    ClickOn(0);
    ChooseFormat(2);
    EXPECT_EQ(InView(), "SPX/0* SPX/1") << "OK on the same layout";
    ChooseFormat(3);
    EXPECT_EQ(InView(), "SPX/0* 9901/0 SPX/1");
}

TEST_F(ChartLayoutTest, DividersAreDraggedAsFarAsThereIsRoom) {
    ChooseFormat(4);
    ChartGrid& grid = Grid();
    const QPoint middle(grid.width() / 2, grid.height() / 4);
    const int below = ChartIn(3).width();
    DragDivider(grid, middle, middle - QPoint(grid.width() / 4, 0));
    ExpectPlaced();
    EXPECT_NEAR(ChartIn(0).width(), grid.width() / 4, 8);
    EXPECT_NEAR(ChartIn(1).width(), grid.width() * 3 / 4, 8);
    EXPECT_EQ(ChartIn(3).width(), below) << "the other row";
    DragDivider(grid, {grid.width() / 4, middle.y()}, {-500, middle.y()});
    EXPECT_GT(ChartIn(0).width(), 90);
    DragDivider(grid, {5, grid.height() / 2}, {5, grid.height() / 3});
    EXPECT_NEAR(ChartIn(0).height(), grid.height() / 3, 8);
    const int moved = ChartIn(0).height();
    ChooseFormat(1);
    ChooseFormat(4);
    EXPECT_EQ(ChartIn(0).height(), moved);
    Window().resize(Window().size() + QSize(100, 60));
    ExpectPlaced();
    QTest::mouseDClick(&grid, Qt::LeftButton, {}, {5, grid.height() / 3});
    EXPECT_NEAR(ChartIn(0).height(), grid.height() / 2, 8);
    // Back to the layout's place, where a neighbour has come close to it.
    ChooseFormat(9);
    const int y = grid.height() / 6;
    const int right = grid.width() * 85 / 100;
    DragDivider(grid, {grid.width() * 2 / 3, y}, {right, y});
    DragDivider(grid, {grid.width() / 3, y}, {grid.width() * 62 / 100, y});
    QTest::mouseDClick(&grid, Qt::LeftButton, {}, {right, y});
    EXPECT_GT(ChartIn(1).width(), 90);
    EXPECT_LT(ChartIn(1).width(), 120);
}

TEST_F(ChartLayoutTest, KeysMoveTheDividersOfTheActiveWindow) {
    const auto press = [this](Qt::Key key, int times = 1) {
        for (int i = 0; i < times; ++i) {
            QTest::keyClick(&Window(), key, Qt::ControlModifier | Qt::ShiftModifier);
        }
        ExpectPlaced();
    };
    EXPECT_FALSE(Action(Command::WidenWindow).isEnabled());
    ChooseFormat(4);
    const QSize whole = Grid().size();
    press(Qt::Key_Right, 2);
    EXPECT_NEAR(ChartIn(0).width(), whole.width() * 0.6, 8);
    press(Qt::Key_Up);
    EXPECT_NEAR(ChartIn(0).height(), whole.height() * 0.55, 8);
    ClickOn(1);
    press(Qt::Key_Right);
    EXPECT_NEAR(ChartIn(0).width(), whole.width() * 0.55, 8) << "the only line beside it";
    press(Qt::Key_Left, 20);
    EXPECT_NEAR(ChartIn(1).width(), 110, 10);
    ClickOn(3);
    press(Qt::Key_Up, 20);
    EXPECT_NEAR(ChartIn(0).height(), 80, 10);
    press(Qt::Key_Down);
    EXPECT_NEAR(ChartIn(0).height(), 80 + whole.height() * 0.05, 10);
    press(Qt::Key_M);
    EXPECT_TRUE(Grid().State().dividers.empty());
    ChooseFormat(9);
    ClickOn(4);
    press(Qt::Key_Right, 20);
    EXPECT_NEAR(ChartIn(3).width(), 110, 10) << "when there is no room behind it";
    EXPECT_NEAR(ChartIn(5).width(), 110, 10);
}

TEST_F(ChartLayoutTest, TheNextRunHasItAll) {
    ShowFour();
    DragDivider(Grid(), {5, Grid().height() / 2}, {5, Grid().height() / 3});
    Choose(Command::SameCursor);
    ChooseFormat(2);  // the third one is a guest, the second and the fourth are parked
    Choose(Command::NewTab);
    Tabs().SetFormat(3);
    ClickOn(2);
    Tabs().setCurrentIndex(0);
    const QList<terminal::TabState> tabs = Window().State().tabs;
    ASSERT_EQ(tabs[0].charts.size(), 4);
    EXPECT_EQ(tabs[0].grid.guest, 2);
    EXPECT_EQ(tabs[1].grid.active, 2);

    End();
    Start();
    EXPECT_EQ(Window().State().tabs, tabs);
    EXPECT_EQ(InView(), "SPX/0 SPX/1*");
    EXPECT_TRUE(Action(Command::SameCursor).isChecked());
    ChooseFormat(4);
    EXPECT_EQ(InView(), "SPX/0 9901/0 SPX/1* AMZN/2");
    EXPECT_NEAR(ChartIn(0).height(), Grid().height() / 3, 8);
    QTest::mouseClick(Tabs().tabBar(), Qt::LeftButton, {}, Tabs().tabBar()->tabRect(1).center());
    EXPECT_EQ(&Chart(), &ChartIn(2)) << "the active one, when the tab comes to the front";
    EXPECT_FALSE(Action(Command::SameCursor).isChecked());
}

TEST_F(ChartLayoutTest, LayoutsThatMakeNoSenseAreMended) {
    End();
    terminal::FrameState state;
    state.tabs = {{{{2, "SPX", 0, 0, 0}}, {99, 7, 5, {}, {}}},
                  {{{16, "9901", 0, 0, 0}, {2, "SPX", 0, 0, 0}}, {4, 1, -8, {}, {}}}};
    const QString path = terminal::FrameStatePath(StorePath());
    ASSERT_TRUE(SaveFrameState(path, state));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray text = file.readAll();
    file.close();
    text.replace("2\\dividers=@Invalid()", "2\\dividers=4/0.5/nan/2, 9/0.5, x, 2/0.75");
    ASSERT_TRUE(text.contains("0.75")) << text.toStdString();
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) > 0);
    file.close();
    Start();
    EXPECT_EQ(InView(), "SPX/0*");
    Tabs().setCurrentIndex(1);
    EXPECT_EQ(InView(), "9901/0 SPX/0* SPX/0 SPX/0") << "what is missing is as the active one";
    ExpectPlaced();
    EXPECT_EQ(Grid().State().dividers.size(), 1U);
    ChooseFormat(2);
    EXPECT_NEAR(ChartIn(0).width(), Grid().width() * 3 / 4, 8);
}

TEST_F(ChartLayoutTest, ChartsInViewFollowWhatIsSwitchedOn) {
    ShowFour();
    Choose(Command::SameSymbol);
    EXPECT_EQ(InView(), "SPX/0 SPX/0 SPX/1* SPX/2");
    ClickOn(1);
    Tabs().OpenSymbol(16, "9901");
    EXPECT_EQ(InView(), "9901/0 9901/0* 9901/1 9901/2") << "each in its period";
    Tabs().OpenSymbol(2, "AMZN");
    EXPECT_EQ(InView(), "AMZN/2 AMZN/2* AMZN/2 AMZN/2") << "there is nothing else of it";
    Tabs().OpenSymbol(16, "9901");
    EXPECT_EQ(InView(), "9901/0 9901/2* 9901/1 9901/2") << "again";
    Choose(Command::SamePeriod);
    Tabs().ShowPeriod(3, 15);
    EXPECT_EQ(InView(), "9901/3 9901/3* 9901/3 9901/3");
    EXPECT_EQ(ChartIn(3).Count(), 15);
    Tabs().OpenSymbol(2, "AMZN");
    EXPECT_EQ(InView(), "AMZN/2 AMZN/2* AMZN/2 AMZN/2");
    // What is parked stays as it is, and follows when it is seen again.
    ChooseFormat(1);
    Tabs().OpenSymbol(2, "SPX");
    EXPECT_EQ(static_cast<ChartView*>(Grid().Charts()[3])->SymbolId(), "AMZN");
    ChooseFormat(4);
    EXPECT_EQ(InView(), "SPX/2 SPX/2* SPX/2 SPX/2");
    Choose(Command::SameSymbol);
    Tabs().OpenSymbol(16, "9901");
    EXPECT_EQ(InView(), "SPX/2 9901/2* SPX/2 SPX/2");
    Tabs().ShowPeriod(3, 5);
    EXPECT_EQ(InView(), "SPX/2 9901/3* SPX/2 SPX/2") << "there are no minutes of it";
    EXPECT_TRUE(Status().contains("S&P 500")) << Status().toStdString();
}

TEST_F(ChartLayoutTest, CursorLinesStandAtTheSameTime) {
    Tabs().OpenSymbol(16, "9901");
    ChooseFormat(4);
    ClickOn(1);
    Tabs().SelectPeriod(1);
    ClickOn(2);
    Tabs().SelectPeriod(4);  // 5 minutes, all of 2019-01-02
    ClickOn(3);
    Tabs().OpenSymbol(2, "SPX");
    ClickOn(0);
    const int before = ChartIn(1).CursorBar();
    ChartIn(0).SetCursorBar(1);
    EXPECT_EQ(ChartIn(1).CursorBar(), before);
    Choose(Command::SameCursor);
    EXPECT_EQ(ChartIn(1).CursorBar(), 0) << "the week";
    EXPECT_EQ(ChartIn(2).CursorBar(), 47) << "the end of the day";
    EXPECT_EQ(ChartIn(3).CursorBar(), 1);
    QTest::keyClick(&ChartIn(0), Qt::Key_Right);
    EXPECT_EQ(ChartIn(2).CursorBar(), -1) << "there are no minutes of that day";
    EXPECT_EQ(ChartIn(3).CursorBar(), 2);
    ChartIn(2).SetCursorBar(7);  // any chart leads
    EXPECT_EQ(ChartIn(0).CursorBar(), 1);
    ClickOn(3);
    ChartIn(3).SetCursorBar(299);
    EXPECT_EQ(ChartIn(0).CursorBar(), -1);
    EXPECT_EQ(ChartIn(3).CursorBar(), 299) << "the leader's stays";
    QTest::keyClick(&ChartIn(3), Qt::Key_Escape);
    Choose(Command::SameCursor);
    ChartIn(0).SetCursorBar(5);
    EXPECT_EQ(ChartIn(3).CursorBar(), -1);
}

TEST_F(ChartLayoutTest, TheBarOfATime) {
    const auto bars = [](std::initializer_list<double> times) {
        BarSeries series;
        for (const double time : times) {
            series.push_back({});
            series.back().time = time;
        }
        return series;
    };
    constexpr double kMonday = 17903;  // 2019-01-07
    const BarSeries days = bars({kMonday, kMonday + 1, kMonday + 3, kMonday + 9});
    const BarSeries weeks = bars({kMonday + 4, kMonday + 9});  // each at its last trading day
    const BarSeries minutes =
        bars({kMonday + 0.40, kMonday + 0.45, kMonday + 0.50, kMonday + 1.40, kMonday + 1.45});
    const struct {
        const BarSeries& bars;
        int period;
        double time;
        int ofPeriod, bar;
    } cases[] = {
        {days, 0, kMonday + 1, 0, 1},       {days, 0, kMonday + 2, 0, 1},
        {days, 0, kMonday + 3.9, 3, 2},     {days, 0, kMonday - 1, 0, -1},
        {days, 0, kMonday + 10, 0, -1},     {days, 0, kMonday + 4, 1, 2},
        {weeks, 1, kMonday, 0, 0},          {weeks, 1, kMonday + 6, 0, 0},
        {weeks, 1, kMonday + 7, 0, 1},      {weeks, 1, kMonday + 13.5, 3, 1},
        {weeks, 1, kMonday + 14, 0, -1},    {weeks, 2, kMonday - 2, 0, 1},
        {minutes, 3, kMonday, 0, 2},        {minutes, 3, kMonday + 1, 1, 4},
        {minutes, 3, kMonday + 2, 0, -1},   {minutes, 3, kMonday - 1, 0, -1},
        {minutes, 3, kMonday + 0.41, 3, 1}, {minutes, 3, kMonday + 0.45, 4, 1},
        {minutes, 3, kMonday + 0.55, 3, 2}, {minutes, 3, kMonday + 1.1, 3, 3},
        {minutes, 3, kMonday + 1.46, 3, 4}, {minutes, 3, kMonday + 2.4, 3, -1},
        {bars({}), 0, kMonday, 0, -1},      {bars({}), 3, kMonday, 0, -1},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(terminal::BarAtTime(each.bars, each.period, each.time, each.ofPeriod), each.bar)
            << each.period << ' ' << each.time - kMonday << ' ' << each.ofPeriod;
    }
}

TEST_F(ChartLayoutTest, ATabWithSeveralChartsIsNotClosedUnasked) {
    AddGroup("趨勢");
    const int group = Chart().GroupUniNum();
    Tabs().OpenSymbol(2, "SPX");
    Choose(Command::NewTab);
    Tabs().OpenSymbol(16, "9901");
    Tabs().SetFormat(2);
    Tabs().SetFormat(1);
    std::vector<std::pair<CString, int>> views;
    ASSERT_TRUE(Session().Store().GetTAViewGroupSetting(group, views));
    EXPECT_EQ(views.size(), 3U) << "a parked chart shows the group, too";
    EXPECT_EQ(views.back().second, 1);
    m_prompts.ExpectYesNo(false);
    Choose(Command::CloseTab);
    EXPECT_EQ(Tabs().count(), 2);
    EXPECT_TRUE(m_prompts.Last().text.contains("（未顯示）9901 模擬電子 日線"))
        << m_prompts.Last().text.toStdString();
    EXPECT_EQ(m_prompts.Last().presetAnswer, ui::Answer::No);
    m_prompts.ExpectCancel(ScriptedPrompts::Kind::YesNo);
    Choose(Command::CloseTab);
    EXPECT_EQ(Tabs().count(), 2);
    m_prompts.ExpectYesNo(true);
    Choose(Command::CloseTab);
    EXPECT_EQ(Tabs().count(), 1);
    EXPECT_EQ(Chart().SymbolId(), "SPX");
}

TEST_F(ChartLayoutTest, TheTabsMenuIsForItsTab) {
    Tabs().OpenSymbol(2, "SPX");
    Tabs().Compare({{{2, "SPX"}, {16, "9901"}}, {.recordCount = 60}, 0});
    EXPECT_FALSE(Action(Command::ChooseLayout).isEnabled()) << "a comparison has its own tab";
    EXPECT_FALSE(Action(Command::SameSymbol).isEnabled());
    Tabs().SetFormat(4);
    EXPECT_EQ(Grid().Charts().size(), 1U);
    QTabBar& bar = *Tabs().tabBar();
    const QPoint first = bar.tabRect(0).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, first, bar.mapToGlobal(first));
    QCoreApplication::sendEvent(&bar, &event);
    auto* menu = bar.findChild<QMenu*>("tabMenu");
    ASSERT_TRUE(menu->isVisible());
    EXPECT_EQ(Tabs().currentIndex(), 0);
    EXPECT_TRUE(menu->actions().first()->isEnabled());
    QTest::keyClick(menu, Qt::Key_Up);
    QTest::keyClick(menu, Qt::Key_Return);
    ASSERT_EQ(Tabs().count(), 1);
    EXPECT_NE(Tabs().CurrentComparison(), nullptr) << "the tab of the menu is closed";
}

}  // namespace
}  // namespace ta::test
