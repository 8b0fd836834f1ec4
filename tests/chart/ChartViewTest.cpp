// The chart view on the terminal's own studies and data: what it shows, and what the user and the
// settings repository make of it.

#include "settings/Messages.h"
#include "terminal/chart/ChartTable.h"
#include "terminal/chart/PaneHeights.h"
#include "terminal/plot/ChartModel.h"
#include "terminal/plot/PlotTheme.h"
#include "tests/chart/ChartFixture.h"

#include <QLabel>
#include <QRegularExpression>
#include <QWheelEvent>

#include <array>

namespace ta::terminal {
namespace {

const CString kFirst = "First";
const CString kSecond = "Second";

/// Closes 100, 102, 101, 103, 102 ...: even bars rise by 2 from their open, odd ones fall by 1.
BarSeries ZigZag(int count) {
    return MakeBars(count, [close = 98.0](int i) mutable {
        const double open = close;
        close += i % 2 == 0 ? 2 : -1;
        return std::pair(open, close);
    });
}

class ChartViewTest : public ChartFixture {
protected:
    ChartViewTest() {
        StoreGroup(kFirst, 5, {{0, 4}, {16}, {23}, {22}}, 4);
        StoreGroup(kSecond, 6, {{0, 4}, {22}, {23}, {22}}, 2);
        Reload();
        zigZag = Add(ZigZag(600));
        view = MakeView(zigZag);
    }

    static void TellGroupChange(const CString& name) {
        Repository().SendMsg2AllTechView(kGroupChangeMessage,
                                         Repository().GetGroupIndexByName(name));
    }
    static CommonProp& Options(const CString& name) {
        return Repository().GetDrawInfo(name)->CommonProperty();
    }
    const BarSeries& Bars() {
        bars = data.LoadBars(view->Shown(), nullptr);
        return *bars;
    }
    /// The time in the middle of the view.
    double Middle() {
        const auto [first, last] = view->VisibleBars();
        return Bars()[static_cast<std::size_t>(first + (last - first) / 2)].time;
    }
    double ZoomInAndScroll(int scrolled) {
        for (int i = 0; i < 4; ++i) {
            view->ZoomIn();
        }
        view->ScrollBars(scrolled);
        return Middle();
    }
    void Wheel(const QPointF& at, int notches) {
        QWheelEvent event(at, Plot()->mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(Plot(), &event);
    }

    BarsKey zigZag;
    std::shared_ptr<const BarSeries> bars;
};

// ---- Groups ----

TEST_F(ChartViewTest, ShowsItsGroupAndWhatAMessageSaysOfIt) {
    EXPECT_EQ(view->GroupUniNum(), 5);
    EXPECT_TRUE(QRegularExpression("\\nMA5 [0-9.]+ MA10 [0-9.]+ MA20 [0-9.]+ MA60 [0-9.]+$")
                    .match(view->LegendTexts()[0])
                    .hasMatch())
        << view->LegendTexts()[0].toStdString();
    EXPECT_TRUE(view->LegendTexts()[2].startsWith("KD(9,3,3) K "));
    EXPECT_TRUE(view->LegendTexts()[3].startsWith("MACD(12,26,9) DIF "));
    EXPECT_EQ(view->Mapping().panes[1].low, 0) << "Volumes stand on the ground.";
    QSignalSpy changed(view.get(), &ChartView::groupChanged);
    view->SetGroup("No such group");
    EXPECT_EQ(changed.size(), 0);
    Repository().SetStudyListByGroupName(kFirst, {{0}, {99, 16}});
    Repository().SetStudyCountByGroupName(kFirst, 2);
    TellGroupChange(kSecond);
    EXPECT_EQ(view->PaneCount(), 4) << "Another group's message.";
    TellGroupChange(kFirst);
    EXPECT_EQ(view->PaneCount(), 2);
    EXPECT_TRUE(view->LegendTexts()[1].startsWith("#99\n成交量 1599 MV5 1597 MV20 "));

    Options(kFirst).bShowTAInfo = false;
    const double before = view->Mapping().panes[0].top;
    TellGroupChange(kFirst);
    EXPECT_LT(view->Mapping().panes[0].top, before) << "A hidden legend leaves its room.";
    EXPECT_FALSE(view->LegendTexts()[0].isEmpty());
    for (const std::uint32_t side : {0u, 1u, 2u}) {
        Options(kFirst).uScalePos = side;
        TellGroupChange(kFirst);
        const PlotMapping mapping = view->Mapping();
        EXPECT_EQ(mapping.left > 25, side != 0) << side;
        EXPECT_EQ(view->width() - mapping.left - mapping.width > 25, side != 1) << side;
    }
}

TEST_F(ChartViewTest, EachOptionChangesThePicture) {
    view->SetCursorBar(560);
    const auto picture = [&] { return view->grab().toImage(); };
    for (bool CommonProp::*option :
         {&CommonProp::bChartGrid, &CommonProp::bHighLow, &CommonProp::bShowTAInfo,
          &CommonProp::bCursor, &CommonProp::bCrossLine, &CommonProp::bCursorOld,
          &CommonProp::bLowIdx, &CommonProp::bCDP}) {
        const auto flipped = [&] {
            Options(kFirst).*option = !(Options(kFirst).*option);
            TellGroupChange(kFirst);
            return picture();
        };
        const QImage before = picture();
        EXPECT_TRUE(flipped() != before);
        EXPECT_TRUE(flipped() == before);
    }
    const QImage before = picture();
    view->SetRisingRed(false);
    EXPECT_TRUE(picture() != before);
    QPalette dark = view->palette();
    dark.setColor(QPalette::Base, Qt::black);
    view->setPalette(dark);
    EXPECT_LT(qGray(picture().pixel(1, 1)), 60);
}

TEST_F(ChartViewTest, ALanguageSwitchIsFollowed) {
    view->ScrollBars(-100);
    const auto inView = view->VisibleBars();
    language.Select(Language::English);
    EXPECT_TRUE(view->LegendTexts()[1].startsWith("Volume 1599 MV5 "));
    EXPECT_TRUE(view->CursorText().contains("  C "));
    EXPECT_EQ(view->VisibleBars(), inView);
    view->Show({kUser, zigZag.symbol, 3, 1});
    const auto* message = view->findChild<QLabel*>();
    EXPECT_TRUE(message->text().startsWith("No data\n"));
    language.Select(Language::TraditionalChinese);
    EXPECT_TRUE(message->text().startsWith("沒有資料\n"));
}

TEST_F(ChartViewTest, AVanishedGroupGivesWayToTheDefault) {
    view->SetGroup(kSecond);
    QSignalSpy vanished(view.get(), &ChartView::groupVanished);
    ASSERT_EQ(Repository().DeleteGroupSetting(kSecond), 1);
    TellGroupChange(kFirst);
    EXPECT_EQ(view->GroupName(), kFirst);
    EXPECT_EQ(view->PaneCount(), 4);
    ASSERT_EQ(vanished.size(), 1);
    EXPECT_EQ(vanished[0][0].toString(), "First");
    TellGroupChange(kFirst);
    EXPECT_EQ(vanished.size(), 1);
}

TEST_F(ChartViewTest, OnlyChangedStudiesAreCalculatedAgain) {
    ChartModel model;
    model.SetBars(std::make_shared<const BarSeries>(ZigZag(50)), {});
    model.LoadGroup(kFirst);
    EXPECT_EQ(model.CalculationCount(), 5);
    model.LoadGroup(kFirst);
    EXPECT_EQ(model.CalculationCount(), 5);
    auto* drawInfo = dynamic_cast<TaDrawInfo*>(Repository().GetDrawInfo(kFirst));
    ASSERT_TRUE(drawInfo->bSetStudyParams(4, {2, 10, 20, 60}));
    model.LoadGroup(kFirst);
    EXPECT_EQ(model.CalculationCount(), 6);
    model.SetBars(std::make_shared<const BarSeries>(ZigZag(60)), {});
    model.LoadGroup(kFirst);
    EXPECT_EQ(model.CalculationCount(), 11);
    EXPECT_EQ(model.Panes()[1][0].values->front().size(), 60u);
}

TEST_F(ChartViewTest, AReloadWithAnotherOrderAndNameIsFollowed) {
    QSignalSpy vanished(view.get(), &ChartView::groupVanished);
    g_store.names = {{kSecond, "Renamed"}};
    g_store.uniNums = {{0, 6}, {1, 5}};
    std::swap(g_store.showCounts[0], g_store.showCounts[1]);
    g_store.showCounts[1] = 3;
    Reload();
    EXPECT_EQ(view->GroupName(), "Renamed");
    EXPECT_EQ(view->GroupUniNum(), 5);
    EXPECT_EQ(view->PaneCount(), 3);
    EXPECT_EQ(vanished.size(), 0);
    EXPECT_EQ(view->BarCount(), 600);
}

TEST_F(ChartViewTest, AReloadInTheMiddleOfACallIsFollowed) {
    g_store.names = {{"New", kSecond}};
    g_store.uniNums[0] = 9;
    g_store.showCounts[0] = 3;
    g_store.reloadFlag = true;
    view->SetGroup(kSecond);  // its first question reloads, and the shown group is gone
    EXPECT_EQ(view->GroupName(), kSecond);
    EXPECT_EQ(view->PaneCount(), 2);
    g_store.showCounts[1] = 5;
    g_store.reloadFlag = true;
    view->Show(zigZag);
    EXPECT_EQ(view->PaneCount(), 5);
    EXPECT_EQ(view->LegendTexts().size(), 5);
}

TEST_F(ChartViewTest, LeavesTheRegistryWhenItIsDestroyed) {
    {
        ChartView first(data);
        ChartView second(data);
        first.Show(zigZag);
    }
    Repository().SendMsg2AllTechView(kGroupChangeMessage, 0);
    Repository().SendTLineUpdate2AllTechView();
    Reload();
    QSignalSpy replotted(view->findChild<QCustomPlot*>(), &QCustomPlot::afterReplot);
    Repository().SendTLineUpdate2AllTechView();
    EXPECT_EQ(replotted.size(), 1);
}

TEST_F(ChartViewTest, ViewsOfAGroupShareHistoryWhileOneShowsIt) {
    const auto shared = [&] { return Repository().GetTaDataInterface(kFirst)->pGetBars(zigZag); };
    const auto* first = shared().get();
    ASSERT_NE(first, nullptr);
    ChartView second(data);
    second.Show(zigZag);
    EXPECT_EQ(second.Mapping().bars.get(), first);
    Reload();  // makes a new, empty data repository
    EXPECT_EQ(shared().get(), first);
    view.reset();
    EXPECT_EQ(shared().get(), first);
    second.Show({});
    EXPECT_EQ(shared(), nullptr);
}

// ---- Zoom and pan ----

TEST_F(ChartViewTest, TheWheelKeepsTheBarUnderTheMouse) {
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

TEST_F(ChartViewTest, BarsWithoutAPixelOfTheirOwnAreJoined) {
    view->resize(300, 400);
    view->ShowAll();
    const auto* plot = view->findChild<QCustomPlot*>();
    auto* candles = qobject_cast<QCPFinancial*>(plot->axisRects()[0]->plottables()[0]);
    ASSERT_NE(candles, nullptr);
    const auto shown = candles->data();
    const int step = static_cast<int>(shown->at(1)->key - shown->at(0)->key);
    ASSERT_GT(step, 1);
    Bar joined = Bars()[0];
    for (int i = 1; i < step; ++i) {
        const Bar& bar = (*bars)[static_cast<std::size_t>(i)];
        joined = {0,
                  joined.open,
                  std::max(joined.high, bar.high),
                  std::min(joined.low, bar.low),
                  bar.close,
                  0};
    }
    const QCPFinancialData& first = *shown->at(0);
    EXPECT_EQ(std::tuple(first.open, first.high, first.low, first.close),
              std::tuple(joined.open, joined.high, joined.low, joined.close));
}

TEST_F(ChartViewTest, ADragPans) {
    view->ScrollBars(-200);
    const PlotMapping before = view->Mapping();
    const QPoint from(300, 200);
    const int distance = 20;
    Drag(from, from + QPoint(static_cast<int>(distance * before.PixelsPerBar()), 15));
    EXPECT_NEAR(view->Mapping().firstBar, before.firstBar - distance, 0.2);
    Move(from);
    EXPECT_NEAR(view->Mapping().firstBar, before.firstBar - distance, 0.2) << "The button is up.";
    Drag(from, from + QPoint(100000, 0));
    EXPECT_EQ(view->VisibleBars().first, 0);
}

TEST_F(ChartViewTest, Keys) {
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
    const BarSeries& shown = Bars();
    QSignalSpy moved(view.get(), &ChartView::cursorMoved);
    Move(Point(550, shown[550].low));
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

    Leave();
    EXPECT_EQ(view->CursorBar(), -1);
    EXPECT_TRUE(view->CursorText().startsWith("2015/06/13"));
    EXPECT_EQ(view->accessibleDescription(), view->CursorText());
}

TEST_F(ChartViewTest, TheLevelLineLocksOnWhatTheOptionSays) {
    const Bar bar = Bars()[550];
    view->ZoomIn();
    const auto expectPlaced = [&](std::uint32_t mode, double near, double pixels, double value,
                                  std::size_t at = 0) {
        Options(kFirst).uCursorLineLockMode = mode;
        TellGroupChange(kFirst);
        const PlotMapping mapping = view->Mapping();
        const QPointF mouse(mapping.XOf(550), mapping.panes[at].YOf(near) + pixels);
        const QPointF placed = view->PlacedPoint(mouse);
        EXPECT_EQ(placed.x(), mouse.x());
        const double free = mapping.panes[at].ValueAt(mouse.y());
        EXPECT_NEAR(mapping.panes[at].ValueAt(placed.y()), value < 0 ? free : value, 1e-6)
            << mode << " at " << near << " and " << pixels;
    };
    constexpr double kFree = -1;
    expectPlaced(0, bar.high, -7.9, bar.high);
    expectPlaced(0, bar.high, -8.1, kFree);
    expectPlaced(0, bar.low, 7.9, bar.low);
    expectPlaced(0, bar.low, 8.1, kFree);
    expectPlaced(0, bar.close, 1, bar.close);
    expectPlaced(0, bar.open, -1, bar.open);
    expectPlaced(6, bar.high, -7.9, bar.high);
    expectPlaced(6, bar.high, -8.1, kFree);
    expectPlaced(1, bar.high, -30, bar.open);
    expectPlaced(2, bar.low, 30, bar.high);
    expectPlaced(3, bar.high, -30, bar.low);
    expectPlaced(4, bar.high, 0, bar.close);
    expectPlaced(5, bar.close, 0.4, kFree);
    expectPlaced(0, bar.volume, -3, bar.volume, 1);
    expectPlaced(0, bar.volume, -9, kFree, 1);
    expectPlaced(4, bar.volume, -3, kFree, 1);
    Options(kFirst).bCursor = false;
    expectPlaced(4, bar.high, 0, kFree);
}

TEST_F(ChartViewTest, OutOfViewTheCursorLeavesTheTextsToTheLastBarInView) {
    Options(kFirst).uCursorMoveStyle = 1;
    TellGroupChange(kFirst);
    QSignalSpy moved(view.get(), &ChartView::cursorMoved);
    view->SetCursorBar(560);
    EXPECT_TRUE(view->LegendTexts()[1].contains("1560"));
    moved.clear();
    Key(Qt::Key_Home);
    const int last = view->VisibleBars().second;
    ASSERT_LT(last, 200);
    EXPECT_EQ(view->CursorBar(), 560);
    EXPECT_TRUE(view->LegendTexts()[1].contains(QString::number(1000 + last)));
    ASSERT_EQ(moved.size(), 1);
    EXPECT_TRUE(moved[0][0].toString().contains(QString(" %1 ").arg(1000 + last)));
    EXPECT_EQ(view->accessibleDescription(), view->CursorText());
    Key(Qt::Key_End);
    EXPECT_TRUE(view->CursorText().contains(" 1560 "));
    EXPECT_EQ(moved.size(), 2);
    view->ScrollBars(-3);
    EXPECT_EQ(moved.size(), 2) << "The bar is the same.";
}

TEST_F(ChartViewTest, TheLegendHasAStripThatValuesDoNotMove) {
    // Volumes of one to twelve digits.
    BarSeries series = ZigZag(300);
    for (std::size_t i = 0; i < series.size(); ++i) {
        series[i].volume = std::round(std::pow(10, static_cast<double>(i % 12)));
    }
    view->Show(Add(series));
    view->resize(420, 640);
    const auto places = [&] {
        std::vector<double> all;
        for (const PlotMapping::Pane& pane : view->Mapping().panes) {
            all.insert(all.end(), {pane.top, pane.height, pane.low, pane.high});
        }
        return all;
    };
    const auto before = places();
    for (int bar = 270; bar < 300; ++bar) {
        view->SetCursorBar(bar);
        EXPECT_EQ(places(), before) << bar;
    }
    // Not even the upright cursor line runs over it.
    const PlotMapping mapping = view->Mapping();
    const auto columnAt = [&](int bar) {
        view->SetCursorBar(bar);
        const QImage picture = view->grab().toImage();
        std::vector<QRgb> column;
        const int x = static_cast<int>(std::lround(mapping.XOf(280)));
        for (int y = static_cast<int>(mapping.panes[0].Bottom()) + 2; y < mapping.panes[1].top;
             ++y) {
            column.push_back(picture.pixel(x, y));
        }
        return column;
    };
    EXPECT_GT(mapping.panes[1].top, mapping.panes[0].Bottom() + 10);
    EXPECT_EQ(columnAt(280), columnAt(292)) << "The volumes are alike.";
    Move({static_cast<int>(mapping.XOf(285)), static_cast<int>(mapping.panes[1].top) - 6});
    EXPECT_EQ(view->CursorBar(), 285) << "On a legend the cursor stays.";
    const auto entry = view->Model().Panes()[1][0].outputs[0];
    EXPECT_EQ(entry.widest.size(), QStringLiteral("9999.99萬").size());
}

TEST_F(ChartViewTest, TheLastPriceIsMarkedWhileItIsInView) {
    const auto tag = [&] {
        const QImage picture = view->grab().toImage();
        const PlotMapping mapping = view->Mapping();
        const double y = mapping.panes[0].YOf(Bars().back().close);
        const double x = mapping.left + mapping.width + 4;
        return y > mapping.panes[0].top && y < mapping.panes[0].Bottom()
                   ? picture.pixelColor(static_cast<int>(x), static_cast<int>(std::lround(y)))
                   : QColor(Qt::transparent);
    };
    const PlotTheme theme = PlotTheme::FromPalette(view->palette(), true);
    EXPECT_EQ(tag(), theme.falling);
    BarSeries risen = ZigZag(599);
    view->Show(Add(risen));
    EXPECT_EQ(tag(), theme.rising);
    Key(Qt::Key_Home);
    EXPECT_EQ(tag(), QColor(Qt::transparent));
}

TEST_F(ChartViewTest, LevelsOfAStudyAreAlwaysInView) {
    Repository().SetStudyListByGroupName(kFirst, {{0}, {23}, {24}});
    TellGroupChange(kFirst);
    for (const auto& [pane, low, high] : {std::tuple(1, 20, 80), std::tuple(2, 30, 70)}) {
        const PlotMapping::Pane shown = view->Mapping().panes[static_cast<std::size_t>(pane)];
        EXPECT_LT(shown.low, low);
        EXPECT_GT(shown.high, high);
        // A dashed line: some of its pixels differ from those below.
        const QImage picture = view->grab().toImage();
        const int y = static_cast<int>(std::lround(shown.YOf(high)));
        int drawn = 0;
        for (int x = 40; x < 140; ++x) {
            drawn += picture.pixel(x, y) != picture.pixel(x, y + 3) ||
                             picture.pixel(x, y - 1) != picture.pixel(x, y + 3)
                         ? 1
                         : 0;
        }
        EXPECT_GT(drawn, 30) << pane;
    }
    auto* drawInfo = dynamic_cast<TaDrawInfo*>(Repository().GetDrawInfo(kFirst));
    std::vector<StudyShape> shapes = drawInfo->vecGetStudyShapes(24);
    shapes[0].visible = false;
    ASSERT_TRUE(drawInfo->bSetStudyShapes(24, shapes));
    TellGroupChange(kFirst);
    EXPECT_GT(view->Mapping().panes[2].high, 70) << "of the first line that is shown";
    EXPECT_TRUE(view->LegendTexts()[2].startsWith("RSI12 "));
}

TEST_F(ChartViewTest, ClosesAloneAreALineWithoutVolumes) {
    BarSeries closes = ZigZag(200);
    for (Bar& bar : closes) {
        bar.open = bar.high = bar.low = bar.close;
        bar.volume = 0;
    }
    view->Show(Add(closes));
    ASSERT_EQ(view->PaneCount(), 3);
    EXPECT_EQ(view->Model().GroupPane(1), 2);
    EXPECT_TRUE(view->LegendTexts()[0].contains(
        QString("\n收 %1 -1.00 ").arg(closes.back().close, 0, 'f', 2)))
        << view->LegendTexts()[0].toStdString();
    EXPECT_FALSE(view->CursorText().contains("開") || view->CursorText().contains("量"));
    auto* plot = view->findChild<QCustomPlot*>();
    EXPECT_NE(qobject_cast<QCPGraph*>(plot->axisRects()[0]->plottables()[0]), nullptr);
    EXPECT_EQ(view->Table().headers.size(), 6u + 4 + 2 + 3) << "no closes twice";
    closes[3].volume = 1;
    view->Show(Add(closes));
    EXPECT_EQ(view->PaneCount(), 4);
    view->Show({});
    EXPECT_EQ(view->PaneCount(), 4);
    Repository().SetStudyListByGroupName(kFirst, {{16}});
    Repository().SetStudyCountByGroupName(kFirst, 1);
    closes[3].volume = 0;
    view->Show(Add(closes));
    EXPECT_EQ(view->PaneCount(), 1) << "never without a pane";
}

TEST_F(ChartViewTest, ByOptionTheCursorJumpsToTheClick) {
    Options(kFirst).uCursorMoveStyle = 1;
    TellGroupChange(kFirst);
    Move(Point(550, 500, 1));
    EXPECT_EQ(view->CursorBar(), -1);
    Click(Point(540, 500, 1));
    EXPECT_EQ(view->CursorBar(), 540);
    Leave();
    EXPECT_EQ(view->CursorBar(), 540);
    Drag(Point(530, 500, 1), Point(520, 500, 1));
    EXPECT_EQ(view->CursorBar(), 540) << "A drag is no click.";
}

TEST_F(ChartViewTest, DoubleClicksTellThePaneAndTheStudy) {
    QSignalSpy clicked(view.get(), &ChartView::legendDoubleClicked);
    const PlotMapping mapping = view->Mapping();
    const auto click = [&](double x, double y) {
        QTest::mouseDClick(Plot(), Qt::LeftButton, {}, QPointF(x, y).toPoint());
        const auto arguments = clicked.takeFirst();
        return std::pair(arguments[0].toInt(), arguments[1].toInt());
    };
    EXPECT_EQ(click(mapping.left + 10, mapping.panes[1].top - 8), std::pair(1, 1));
    EXPECT_EQ(click(mapping.left + 200, mapping.panes[1].Bottom() - 5), std::pair(1, 0));
    EXPECT_EQ(click(mapping.left + 10, mapping.panes[0].top + 8), std::pair(0, 0));
    EXPECT_EQ(click(mapping.left + 10, 12), std::pair(0, 0)) << "The symbol.";
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
    view->Show({2, "NOSUCH", 3, 5});
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

    view->Show(zigZag);
    EXPECT_FALSE(message->isVisible());
    EXPECT_EQ(view->BarCount(), 600);
}

TEST_F(ChartViewTest, AnotherSymbolAndPeriodAreOneLoadAndOneRedraw) {
    QSignalSpy replotted(view->findChild<QCustomPlot*>(), &QCustomPlot::afterReplot);
    QSignalSpy changed(view.get(), &ChartView::symbolChanged);
    QSignalSpy failed(view.get(), &ChartView::loadFailed);
    const auto counts = [&] {
        return std::vector{replotted.size(), changed.size(), failed.size()};
    };
    view->Show({2, "NOSUCH", 3, 5});
    EXPECT_EQ(counts(), (std::vector<qsizetype>{1, 1, 1}));
    const BarsKey weekly{kUser, zigZag.symbol, 1, 0};
    view->Show(weekly);
    EXPECT_EQ(counts(), (std::vector<qsizetype>{2, 2, 1}));
    EXPECT_EQ(view->Shown(), weekly);
    view->hide();
    view->Show(zigZag);
    view->SetGroup(kSecond);
    EXPECT_EQ(replotted.size(), 2) << "A hidden view draws when it is shown.";
    EXPECT_TRUE(view->LegendTexts()[1].startsWith("MACD("));
    view->resize(700, 500);
    view->show();
    view->resize(710, 500);
    EXPECT_EQ(replotted.size(), 2) << "Drawn when it is painted,";
    view->grab();
    EXPECT_EQ(replotted.size(), 3);
    view->resize(720, 510);
    EXPECT_EQ(view->Mapping().panes.size(), 2u);
    EXPECT_EQ(replotted.size(), 4) << "or asked where its panes are.";
}

// ---- The depth of the history ----

struct DepthCase {
    HistoryDepth depth;
    int first, count;  ///< of the part; the bars are of the days 100, 101, 104 and 105.5
    bool isShort;
};

TEST(HistoryDepthTest, PartAndShortfall) {
    const Language language;
    const auto all = std::make_shared<const BarSeries>(
        BarSeries{{.time = 100}, {.time = 101}, {.time = 104}, {.time = 105.5}});
    for (const DepthCase& c : std::vector<DepthCase>{{{}, 0, 4, false},
                                                     {{0, 3, 1}, 1, 3, false},
                                                     {{0, 4, 1}, 0, 4, false},
                                                     {{0, 5, 1}, 0, 4, true},
                                                     {{1, 1, 100}, 0, 4, false},
                                                     {{1, 1, 99}, 0, 4, true},
                                                     {{1, 1, 102}, 2, 2, false},
                                                     {{1, 1, 105}, 3, 1, false},
                                                     {{1, 1, 106}, 4, 0, true}}) {
        const auto part = PartOf(all, c.depth);
        EXPECT_EQ(*part, BarSeries(all->begin() + c.first, all->begin() + c.first + c.count));
        EXPECT_EQ(part == all, c.count == 4) << "shared when it is everything";
        EXPECT_EQ(!ShortfallText(*all, c.depth).isEmpty(), c.isShort) << c.depth.startDay;
    }
    EXPECT_EQ(PartOf(nullptr, {0, 5, 1}), nullptr);
    EXPECT_EQ(ShortfallText({}, {0, 5, 1}), "");
}

TEST_F(ChartViewTest, ADepthHoldsForItsPeriodAndIsNotShared) {
    QSignalSpy told(view.get(), &ChartView::historyShort);
    QSignalSpy failed(view.get(), &ChartView::loadFailed);
    view->Show(zigZag, {0, 50, 1});
    EXPECT_EQ(view->BarCount(), 50);
    EXPECT_EQ(told.size(), 0);
    EXPECT_EQ(MakeView(zigZag)->BarCount(), 600) << "another view of the same group";
    const BarsKey weekly{kUser, zigZag.symbol, 1, 0};
    view->Show(weekly);
    const int weeks = view->BarCount();
    EXPECT_GT(weeks, 50);
    view->Show(weekly, {0, 4000, 1});
    EXPECT_EQ(view->BarCount(), weeks);
    EXPECT_EQ(told.size(), 1);
    view->Show(zigZag);
    EXPECT_EQ(view->BarCount(), 50);
    EXPECT_EQ(view->Depth(), (HistoryDepth{0, 50, 1}));
    view->Reload();
    EXPECT_EQ(view->BarCount(), 50);
    view->Show(zigZag, {1, 1, static_cast<long>(kFirstDay) + 600});
    EXPECT_EQ(view->BarCount(), 0);
    EXPECT_EQ(failed.size(), 1) << "the data end before the start day";
}

TEST_F(ChartViewTest, AnotherPeriodKeepsTheDateInTheMiddle) {
    view->ShowPeriod(1, 0);
    const double before = ZoomInAndScroll(-25);
    view->ShowPeriod(0, 0);
    EXPECT_NEAR(Middle(), before, 3);
    view->ShowPeriod(7, 0);
    EXPECT_EQ(view->BarCount(), 0);
    view->ShowPeriod(0, 0);
    EXPECT_EQ(view->BarCount(), 600);
}

TEST_F(ChartViewTest, EveryPairOfPeriodsKeepsTheDateInView) {
    BarSeries minutes = ZigZag(4 * 400);  // four of each day of more than a year
    for (std::size_t i = 0; i < minutes.size(); ++i) {
        minutes[i].time = kFirstDay + static_cast<double>(i / 4) +
                          (9 * 60 + 1 + static_cast<double>(i % 4)) / 1440;
    }
    view->Show(Add(minutes));
    const std::pair<int, int> periods[] = {{0, 0}, {1, 0}, {2, 0}, {3, 1}, {3, 2}};
    const auto barOf = [&](double time) {
        const double wanted = view->Period() < 3 ? std::floor(time) : time;
        const BarSeries& shown = view->Model().Bars();
        return static_cast<int>(std::ranges::lower_bound(shown, wanted, {}, &Bar::time) -
                                shown.begin());
    };
    const auto expectInView = [&](double time, const std::string& what) {
        const auto [first, last] = view->VisibleBars();
        EXPECT_LE(first, barOf(time)) << what;
        EXPECT_GE(last, barOf(time)) << what;
    };
    for (const auto& from : periods) {
        for (const auto& to : periods) {
            const std::string what = testing::PrintToString(std::pair(from, to));
            view->SwitchPeriod(from.first, from.second);
            ASSERT_GT(view->BarCount(), 0) << what;
            for (int i = 0; i < 8; ++i) {
                view->ZoomIn();
            }
            view->ScrollBars(barOf(kFirstDay + 150) - view->VisibleBars().first - 8);
            const auto inView = view->VisibleBars();
            const double middle =
                view->Model()
                    .Bars()[static_cast<std::size_t>(inView.first + inView.second) / 2]
                    .time;
            const bool isLatest = view->VisibleBars().second == view->BarCount() - 1;
            view->ShowPeriod(to.first, to.second);
            if (!isLatest) {
                expectInView(middle, what);
            }
            view->SwitchPeriod(from.first, from.second);
            view->SetCursorBar(barOf(kFirstDay + 150));
            const double time =
                view->Model().Bars()[static_cast<std::size_t>(view->CursorBar())].time;
            view->ShowPeriod(to.first, to.second);
            EXPECT_EQ(view->CursorBar(), barOf(time)) << what;
            expectInView(time, what);
            view->ShowPeriod(from.first, from.second);
            EXPECT_EQ(view->CursorBar(), barOf(time)) << "and back, " << what;
            Key(Qt::Key_Escape);
            Key(Qt::Key_End);
            view->ShowPeriod(to.first, to.second);
            EXPECT_EQ(view->VisibleBars().second, view->BarCount() - 1) << "the latest stay";
        }
    }
}

TEST_F(ChartViewTest, ADateThatAPeriodLacksComesBackWithTheNext) {
    ZoomInAndScroll(-300);
    const double before = Middle();
    view->ShowPeriod(7, 0);  // no bars at all
    view->ShowPeriod(1, 0);
    view->ShowPeriod(0, 0);
    EXPECT_NEAR(Middle(), before, 7);
}

TEST_F(ChartViewTest, BordersOfPanesAreDraggedForEveryChartOfTheGroup) {
    PaneHeights heights;
    const auto other = MakeView(zigZag);
    other->move(2000, 0);
    for (ChartView* each : {view.get(), other.get()}) {
        each->SetPaneHeights(heights);
    }
    const auto height = [](const ChartView& of, std::size_t pane) {
        return of.Mapping().panes[pane].height;
    };
    const auto border = [&](std::size_t below) {
        const PlotMapping mapping = view->Mapping();
        const auto first = static_cast<int>(mapping.panes[below - 1].Bottom());
        return QPoint(400, first + 1);
    };
    const std::array before{height(*view, 0), height(*view, 1), height(*view, 2)};
    const auto bar = view->VisibleBars();
    Move(border(1));
    EXPECT_EQ(view->cursor().shape(), Qt::SplitVCursor);
    Drag(border(1), border(1) - QPoint(0, 60));
    EXPECT_NEAR(height(*view, 0), before[0] - 60, 3);
    EXPECT_NEAR(height(*view, 1), before[1] + 60, 3);
    EXPECT_NEAR(height(*view, 2), before[2], 2);
    EXPECT_EQ(view->VisibleBars(), bar) << "The chart is not panned.";
    EXPECT_NEAR(height(*other, 0), height(*view, 0), 1);
    Drag(border(2), border(2) - QPoint(0, 2000));
    EXPECT_GT(height(*view, 1), 10) << "A pane does not vanish.";
    EXPECT_EQ(heights.All().size(), 1u);
    EXPECT_EQ(heights.All().begin()->first, 5);
    view->SetGroup(kSecond);
    const double second = height(*view, 0);
    view->SetGroup(kFirst);
    EXPECT_NE(height(*view, 0), second);
    QTest::mouseDClick(Plot(), Qt::LeftButton, {}, border(1));
    EXPECT_NEAR(height(*view, 0), before[0], 1);
    EXPECT_TRUE(heights.All().empty());
}

TEST_F(ChartViewTest, AnothersSaveTakesThePaneWhoseBorderIsBeingDragged) {
    const QPoint border(400, static_cast<int>(view->Mapping().panes[2].Bottom()) + 1);
    Press(border);
    g_store.showCounts[0] = 1;
    Reload();
    Move(border - QPoint(0, 60));
    Release(border - QPoint(0, 60));
    EXPECT_EQ(view->Mapping().panes.size(), 1u);
}

TEST_F(ChartViewTest, ADayIsFoundFromAMinuteOfIt) {
    BarSeries minutes = ZigZag(1200);
    for (std::size_t i = 0; i < minutes.size(); ++i) {
        minutes[i].time =
            kFirstDay + static_cast<double>(i / 4) + 0.25 * static_cast<double>(i % 4) + 0.125;
    }
    view->Show(Add(minutes));
    view->ShowPeriod(3, 1);
    const double before = ZoomInAndScroll(-600);
    view->ShowPeriod(0, 0);
    EXPECT_EQ(Middle(), std::floor(before));
}

TEST_F(ChartViewTest, OneBarAndLevelPricesAreDrawn) {
    view->Show(Add({{18000, 50, 50, 50, 50, 0}}));
    EXPECT_EQ(view->VisibleBars(), std::pair(0, 0));
    const PlotMapping::Pane pane = view->Mapping().panes[0];
    EXPECT_LT(pane.low, 50);
    EXPECT_GT(pane.high, 50);
    view->grab();
}

}  // namespace
}  // namespace ta::terminal
