// The chart view on the terminal's own studies and data: what it shows, and what the user and the
// settings repository make of it.

#include "settings/Messages.h"
#include "settings/TaSettingHandle.h"
#include "terminal/chart/ChartView.h"
#include "terminal/lang/Language.h"
#include "terminal/plot/ChartModel.h"
#include "terminal/plot/PlotMapping.h"
#include "terminal/quotes/MarketData.h"
#include "terminal/quotes/TerminalQuotes.h"
#include "terminal/studies/TerminalChartModule.h"
#include "tests/support/MemoryConfigStore.h"

#include <gtest/gtest.h>

#include <qcustomplot.h>
#include <QApplication>
#include <QLabel>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>

#include <cmath>

namespace ta::terminal {
namespace {

constexpr std::uint8_t kUser = UserMarket::kId;
const CString kFirst = "First";
const CString kSecond = "Second";

/// Services that live as long as the process, as the settings repository does.
test::MemoryConfigStore& Store() {
    static test::MemoryConfigStore store;
    static TerminalChartModule chartModule;
    static const bool hung = [] {
        Services services;
        services.configStore = &store;
        services.chartModule = &chartModule;
        CSyncInfo::GetSettingCFG().SetServices(services);
        return true;
    }();
    (void)hung;
    return store;
}

/// Closes 100, 102, 101, 103, 102 ...: even bars rise by 2 from their open, odd ones fall by 1.
BarSeries ZigZag(int count) {
    BarSeries bars;
    double close = 98;
    for (int i = 0; i < count; ++i) {
        Bar bar;
        bar.time = 16000 + i;
        bar.open = close;
        close += i % 2 == 0 ? 2 : -1;
        bar.close = close;
        bar.high = std::max(bar.open, bar.close) + 0.5;
        bar.low = std::min(bar.open, bar.close) - 0.25;
        bar.volume = 1000 + i;
        bars.push_back(bar);
    }
    return bars;
}

class ChartViewTest : public testing::Test {
protected:
    ChartViewTest() : data(DefaultDataFolder(), folder.path()), quotes(data) {
        BKQuoteInterface::SetBKInterface(&quotes);
        test::MemoryConfigStore& store = Store();
        store = {};
        store.names = {{kFirst, kSecond}};
        for (unsigned group = 0; group < 2; ++group) {
            store.uniNums[group] = static_cast<int>(group) + 5;
            store.showCounts[group] = group == 0 ? 4 : 2;
            store.studyLists[{group, "StudyTypeLogKey01"}] = {0, 4};
            store.studyLists[{group, "StudyTypeLogKey02"}] = {group == 0 ? 16 : 22};
            store.studyLists[{group, "StudyTypeLogKey03"}] = {23};
            store.studyLists[{group, "StudyTypeLogKey04"}] = {22};
        }
        Reload();
        zigZag = Add(ZigZag(600));
    }
    ~ChartViewTest() override {
        view.reset();
        BKQuoteInterface::SetBKInterface(nullptr);
    }

    static CTaSettingHandle& Settings() { return CTaSettingHandle::GetInstance(); }
    /// What another terminal's save does to this process.
    static void Reload() {
        Store().reloadFlag = true;
        Settings().ReloadTASetting();
    }
    static void TellGroupChange(const CString& name) {
        Settings().SendMsg2AllTechView(kGroupChangeMessage, Settings().GetGroupIndexByName(name));
    }
    static CommonProp& Options(const CString& name) {
        return Settings().GetDrawInfo(name)->CommonProperty();
    }

    CString Add(const BarSeries& series) {
        QString error;
        const Symbol* symbol = data.User().Add("bars.csv", series, 0.25, &error);
        EXPECT_NE(symbol, nullptr) << error.toStdString();
        return symbol ? symbol->id : CString();
    }
    ChartView& Show(const CString& symbol) {
        view = std::make_unique<ChartView>(data);
        view->resize(900, 640);
        view->show();
        view->SetSymbol(kUser, symbol);
        return *view;
    }
    const BarSeries& Bars() {
        bars = data.LoadBars({view->Market(), view->SymbolId(), view->Period(), view->Count()},
                             nullptr);
        return *bars;
    }
    QWidget* Plot() { return view->findChild<QCustomPlot*>(); }
    QPoint PointOf(double bar, int pane, double y) {
        const PlotMapping mapping = view->Mapping();
        const auto& at = mapping.panes[static_cast<std::size_t>(pane)];
        return QPointF(mapping.XOf(bar), at.YOf(y)).toPoint();
    }
    void Wheel(const QPointF& at, int notches) {
        QWheelEvent event(at, Plot()->mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(Plot(), &event);
    }
    void Drag(const QPoint& from, const QPoint& to) {
        QTest::mousePress(Plot(), Qt::LeftButton, {}, from);
        QTest::mouseMove(Plot(), (from + to) / 2);
        QTest::mouseMove(Plot(), to);
        QTest::mouseRelease(Plot(), Qt::LeftButton, {}, to);
    }

    QTemporaryDir folder;
    Language language;
    MarketData data;
    TerminalQuotes quotes;
    CString zigZag;
    std::unique_ptr<ChartView> view;
    std::shared_ptr<const BarSeries> bars;
};

// ---- Groups ----

TEST_F(ChartViewTest, OnlyChangedStudiesAreCalculatedAgain) {
    ChartModel model;
    model.SetBars(std::make_shared<const BarSeries>(ZigZag(50)), {});
    model.LoadGroup(kFirst);
    EXPECT_EQ(model.CalculationCount(), 5);
    model.LoadGroup(kFirst);
    EXPECT_EQ(model.CalculationCount(), 5);
    auto* drawInfo = dynamic_cast<TaDrawInfo*>(Settings().GetDrawInfo(kFirst));
    ASSERT_TRUE(drawInfo->bSetStudyParams(4, {2, 10, 20, 60}));
    model.LoadGroup(kFirst);
    EXPECT_EQ(model.CalculationCount(), 6);
    model.SetBars(std::make_shared<const BarSeries>(ZigZag(60)), {});
    model.LoadGroup(kFirst);
    EXPECT_EQ(model.CalculationCount(), 11);
    EXPECT_EQ(model.Panes()[1][0].values->front().size(), 60u);
}

TEST_F(ChartViewTest, AReloadWithAnotherOrderAndNameIsFollowed) {
    Show(zigZag);
    QSignalSpy vanished(view.get(), &ChartView::groupVanished);
    Store().names = {{kSecond, "Renamed"}};
    Store().uniNums = {{0, 6}, {1, 5}};
    std::swap(Store().showCounts[0], Store().showCounts[1]);
    Store().showCounts[1] = 3;
    Reload();
    EXPECT_EQ(view->GroupName(), "Renamed");
    EXPECT_EQ(view->GroupUniNum(), 5);
    EXPECT_EQ(view->PaneCount(), 3);
    EXPECT_EQ(vanished.size(), 0);
    EXPECT_EQ(view->BarCount(), 600);
}

TEST_F(ChartViewTest, AReloadInTheMiddleOfACallIsFollowed) {
    Show(zigZag);
    Store().names = {{"New", kSecond}};
    Store().uniNums[0] = 9;
    Store().showCounts[0] = 3;
    Store().reloadFlag = true;
    view->SetGroup(kSecond);  // its first question reloads, and the shown group is gone
    EXPECT_EQ(view->GroupName(), kSecond);
    EXPECT_EQ(view->PaneCount(), 2);
    Store().showCounts[1] = 5;
    Store().reloadFlag = true;
    view->SetSymbol(kUser, zigZag);
    EXPECT_EQ(view->PaneCount(), 5);
    EXPECT_EQ(view->LegendTexts().size(), 5);
}

TEST_F(ChartViewTest, LeavesTheRegistryWhenItIsDestroyed) {
    {
        ChartView first(data);
        ChartView second(data);
        first.SetSymbol(kUser, zigZag);
    }
    Settings().SendMsg2AllTechView(kGroupChangeMessage, 0);
    Settings().SendTLineUpdate2AllTechView();
    Reload();
    Show(zigZag);
    QSignalSpy replotted(view->findChild<QCustomPlot*>(), &QCustomPlot::afterReplot);
    Settings().SendTLineUpdate2AllTechView();
    EXPECT_EQ(replotted.size(), 1);
}

TEST_F(ChartViewTest, ViewsOfAGroupShareHistoryWhileOneShowsIt) {
    const BarsKey key{kUser, zigZag, 0, 0};
    const auto shared = [&] { return Settings().GetTaDataInterface(kFirst)->pGetBars(key); };
    Show(zigZag);
    const auto* first = shared().get();
    ASSERT_NE(first, nullptr);
    ChartView second(data);
    second.SetSymbol(kUser, zigZag);
    EXPECT_EQ(second.Mapping().bars.get(), first);
    Reload();  // makes a new, empty data repository
    EXPECT_EQ(shared().get(), first);
    view.reset();
    EXPECT_EQ(shared().get(), first);
    second.SetSymbol(kUser, {});
    EXPECT_EQ(shared(), nullptr);
}

// ---- Zoom and pan ----

TEST_F(ChartViewTest, TheWheelKeepsTheBarUnderTheMouse) {
    Show(zigZag);
    view->ScrollBars(-200);
    const QPointF mouse(view->Mapping().left + 333, 100);
    const double bar = view->Mapping().BarAt(mouse.x());
    const double width = view->Mapping().PixelsPerBar();
    Wheel(mouse, 3);
    EXPECT_GT(view->Mapping().PixelsPerBar(), 1.5 * width);
    EXPECT_NEAR(view->Mapping().BarAt(mouse.x()), bar, 0.05);
    Wheel(mouse, -4);
    EXPECT_LT(view->Mapping().PixelsPerBar(), width);
    EXPECT_NEAR(view->Mapping().BarAt(mouse.x()), bar, 0.05);
}

TEST_F(ChartViewTest, ADragPans) {
    Show(zigZag);
    view->ScrollBars(-200);
    const PlotMapping before = view->Mapping();
    const QPoint from(300, 200);
    const int distance = 20;
    Drag(from, from + QPoint(static_cast<int>(distance * before.PixelsPerBar()), 15));
    EXPECT_NEAR(view->Mapping().firstBar, before.firstBar - distance, 0.2);
    QTest::mouseMove(Plot(), from);
    EXPECT_NEAR(view->Mapping().firstBar, before.firstBar - distance, 0.2) << "The button is up.";
    Drag(from, from + QPoint(100000, 0));
    EXPECT_EQ(view->VisibleBars().first, 0);
}

TEST_F(ChartViewTest, Keys) {
    Show(zigZag);
    const auto key = [&](Qt::Key k, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(view.get(), k, modifiers);
        return view->VisibleBars();
    };
    const auto [first, last] = view->VisibleBars();
    EXPECT_EQ(last, 599);
    EXPECT_EQ(key(Qt::Key_Home).first, 0);
    EXPECT_EQ(key(Qt::Key_PageDown).first, std::lround(130 * 0.9));
    EXPECT_EQ(key(Qt::Key_PageUp).first, 0);
    EXPECT_EQ(key(Qt::Key_End), std::pair(first, last));
    EXPECT_GT(key(Qt::Key_Up).first, first);
    EXPECT_EQ(key(Qt::Key_Down), std::pair(first, last));
    EXPECT_GT(key(Qt::Key_Plus).first, first);
    EXPECT_EQ(key(Qt::Key_Minus), std::pair(first, last));
    EXPECT_EQ(key(Qt::Key_Left, Qt::ControlModifier).first, first - 13);
    EXPECT_EQ(key(Qt::Key_Right, Qt::ControlModifier), std::pair(first, last));

    EXPECT_EQ(view->CursorBar(), -1);
    key(Qt::Key_Left);
    EXPECT_EQ(view->CursorBar(), 599);
    key(Qt::Key_Left);
    EXPECT_EQ(view->CursorBar(), 598);
    key(Qt::Key_Home);
    key(Qt::Key_Right);
    EXPECT_EQ(view->CursorBar(), 599);
    EXPECT_EQ(view->VisibleBars().second, 599) << "The view follows the cursor.";
    key(Qt::Key_Escape);
    EXPECT_EQ(view->CursorBar(), -1);

    key(Qt::Key_End);
    Options(kFirst).bCursor = false;
    TellGroupChange(kFirst);
    EXPECT_EQ(key(Qt::Key_Left).first, first - 13);
    EXPECT_EQ(view->CursorBar(), -1);
}

// ---- The cursor line ----

TEST_F(ChartViewTest, TheCursorFollowsTheMouseAndTellsTheBar) {
    Show(zigZag);
    const BarSeries& shown = Bars();
    QSignalSpy moved(view.get(), &ChartView::cursorMoved);
    QTest::mouseMove(Plot(), PointOf(550, 0, shown[550].low));
    EXPECT_EQ(view->CursorBar(), 550);
    const QString text =
        QStringLiteral("2015/04/25  開 %1  高 %2  低 %3  收 %4  量 1550  +2.00 (+%5%)")
            .arg(shown[550].open, 0, 'f', 2)
            .arg(shown[550].high, 0, 'f', 2)
            .arg(shown[550].low, 0, 'f', 2)
            .arg(shown[550].close, 0, 'f', 2)
            .arg(200 / shown[549].close, 0, 'f', 2);
    EXPECT_EQ(view->CursorText(), text);
    ASSERT_GE(moved.size(), 1);
    EXPECT_EQ(moved.back()[0].toString(), text);
    EXPECT_TRUE(view->LegendTexts()[1].contains(" 1550 "));

    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(Plot(), &leave);
    EXPECT_EQ(view->CursorBar(), -1);
    EXPECT_TRUE(view->CursorText().startsWith("2015/06/13"));
    EXPECT_EQ(view->accessibleDescription(), view->CursorText());
}

TEST_F(ChartViewTest, ByOptionTheCursorJumpsToTheClick) {
    Options(kFirst).uCursorMoveStyle = 1;
    Show(zigZag);
    QTest::mouseMove(Plot(), PointOf(550, 1, 500));
    EXPECT_EQ(view->CursorBar(), -1);
    QTest::mouseClick(Plot(), Qt::LeftButton, {}, PointOf(540, 1, 500));
    EXPECT_EQ(view->CursorBar(), 540);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(Plot(), &leave);
    EXPECT_EQ(view->CursorBar(), 540);
    Drag(PointOf(530, 1, 500), PointOf(520, 1, 500));
    EXPECT_EQ(view->CursorBar(), 540) << "A drag is no click.";
}

TEST_F(ChartViewTest, DoubleClicksTellThePaneAndTheStudy) {
    Show(zigZag);
    QSignalSpy clicked(view.get(), &ChartView::legendDoubleClicked);
    const PlotMapping mapping = view->Mapping();
    const auto click = [&](double x, double y) {
        QTest::mouseDClick(Plot(), Qt::LeftButton, {}, QPointF(x, y).toPoint());
        const auto arguments = clicked.takeFirst();
        return std::pair(arguments[0].toInt(), arguments[1].toInt());
    };
    EXPECT_EQ(click(mapping.left + 10, mapping.panes[1].top + 8), std::pair(1, 1));
    EXPECT_EQ(click(mapping.left + 200, mapping.panes[1].Bottom() - 5), std::pair(1, 0));
    EXPECT_EQ(click(mapping.left + 10, mapping.panes[0].top + 8), std::pair(0, 0)) << "The symbol.";
    QTest::mouseDClick(Plot(), Qt::LeftButton, {}, QPoint(400, view->height() - 2));
    EXPECT_EQ(clicked.size(), 0);
}

// ---- Symbols and periods ----

TEST_F(ChartViewTest, WithoutDataItSaysWhy) {
    view = std::make_unique<ChartView>(data);
    view->resize(600, 400);
    view->show();
    const auto* message = view->findChild<QLabel*>();
    EXPECT_TRUE(message->isVisible());
    EXPECT_EQ(message->text(), "尚未選擇商品");
    EXPECT_EQ(view->VisibleBars(), std::pair(-1, -1));
    EXPECT_EQ(view->CursorText(), "");

    QSignalSpy failed(view.get(), &ChartView::loadFailed);
    view->SetSymbol(2, "NOSUCH");
    ASSERT_EQ(failed.size(), 1);
    const QString reason = failed[0][0].toString();
    EXPECT_FALSE(reason.isEmpty());
    EXPECT_EQ(message->text(), "沒有資料\n" + reason);
    EXPECT_EQ(view->PaneCount(), 4);
    // Nothing to move, nothing to fall over.
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Up, Qt::Key_Home, Qt::Key_PageDown}) {
        QTest::keyClick(view.get(), key);
    }
    view->ShowAll();
    Wheel({200, 100}, -2);
    Drag({200, 100}, {250, 100});
    EXPECT_EQ(view->CursorBar(), -1);
    view->grab();

    view->SetSymbol(kUser, zigZag);
    EXPECT_FALSE(message->isVisible());
    EXPECT_EQ(view->BarCount(), 600);
}

TEST_F(ChartViewTest, OneBarAndLevelPricesAreDrawn) {
    Bar bar;
    bar.time = 18000;
    bar.open = bar.high = bar.low = bar.close = 50;
    Show(Add({bar}));
    EXPECT_EQ(view->VisibleBars(), std::pair(0, 0));
    const PlotMapping::Pane pane = view->Mapping().panes[0];
    EXPECT_LT(pane.low, 50);
    EXPECT_GT(pane.high, 50);
    view->grab();
}

}  // namespace
}  // namespace ta::terminal
