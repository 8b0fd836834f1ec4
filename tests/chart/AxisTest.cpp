// The value axes of a chart: ranges set by hand, their width, the space at the edge, and the level
// lines of the price pane.

#include "settings/Messages.h"
#include "terminal/chart/ChartScene.h"
#include "terminal/lines/DrawingBoard.h"
#include "tests/chart/ChartFixture.h"

#include <QContextMenuEvent>

namespace ta::terminal {
namespace {

const CString kGroup = "Group";

class AxisTest : public ChartFixture {
protected:
    AxisTest() {
        StoreGroup(kGroup, 5, {{0, 4, 23}, {16}, {22}}, 3);
        Reload();
        rising = Add(Rising(600, 100));
        view = MakeView(rising);
    }

    static BarSeries Rising(int count, double from) {
        return MakeBars(count, [from](int i) { return std::pair(from + i, from + i + 1.0); });
    }
    static CommonProp& GroupOptions() { return Repository().GetDrawInfo(kGroup)->CommonProperty(); }
    static void TellGroupChange() { Repository().SendMsg2AllTechView(kGroupChangeMessage, 0); }

    CommonProp& AxisOptions() { return view->Axes().DrawInfo().CommonProperty(); }
    void SetRange(const AxisPlace& place, double low, double high) {
        const int axis = view->AxisAt(place)->index;
        TerminalDrawInfo& info = view->Axes().DrawInfo();
        info.vSetYaxisRangeAutomatically(axis, false);
        info.vSetYaxisMaxVal(axis, high);
        info.vSetYaxisMinVal(axis, low);
        view->TakeRange(place);
    }
    void SetWidth(int percent) {
        AxisOptions().bYaxisWidthDefault = percent == 100;
        AxisOptions().vSetYaxisWidth(percent);
        view->TakeAxes();
    }
    void SetEdge(int percent) {
        AxisOptions().bEdgeSpaceDefault = false;
        AxisOptions().SetDrawChartMovePixel(0, percent);
        view->TakeAxes();
    }
    std::pair<double, double> Shown(std::size_t pane) {
        const PlotMapping mapping = view->Mapping();
        return {mapping.panes[pane].low, mapping.panes[pane].high};
    }
    /// A place on the labels of a pane, `right` or left of it.
    QPoint OnLabels(std::size_t pane, bool right = true) {
        const PlotMapping mapping = view->Mapping();
        const double y = mapping.panes[pane].top + mapping.panes[pane].height / 2;
        return QPointF(right ? mapping.left + mapping.width + 12 : mapping.left - 12, y).toPoint();
    }
    int WidthOfLabels() {
        const PlotMapping mapping = view->Mapping();
        return static_cast<int>(view->width() - mapping.left - mapping.width);
    }
    /// How many of the pixels right of the panes are not as the background.
    int InkOfLabels() {
        const QImage picture = view->grab().toImage();
        int ink = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = picture.width() - WidthOfLabels() + 6; x < picture.width(); ++x) {
                ink += picture.pixel(x, y) != picture.pixel(1, 1) ? 1 : 0;
            }
        }
        return ink;
    }

    BarsKey rising;
};

using Span = std::pair<double, double>;

// ---- Ranges set by hand ----

TEST_F(AxisTest, ARangeSetByHandStaysUntilADoubleClick) {
    const Span automatic = Shown(0);
    const QImage before = view->grab().toImage();
    SetRange({0, 0}, 500, 700);
    EXPECT_EQ(Shown(0), Span(500, 700));
    const Span volume = Shown(1);
    view->ScrollBars(-200);
    view->ZoomOut();
    EXPECT_EQ(Shown(0), Span(500, 700));
    EXPECT_NE(Shown(1), volume) << "the other axes stay automatic";
    view->ShowLatest();
    SetRange({1, 0}, 0, 5000);

    QSignalSpy sheet(view.get(), &ChartView::legendDoubleClicked);
    QTest::mouseDClick(Plot(), Qt::RightButton, {}, OnLabels(0));
    QTest::mouseRelease(Plot(), Qt::RightButton, {}, OnLabels(0));
    EXPECT_EQ(Shown(0), Span(500, 700));
    QTest::mouseDClick(Plot(), Qt::LeftButton, {}, OnLabels(0));
    EXPECT_EQ(Shown(0), automatic);
    EXPECT_EQ(Shown(1), Span(0, 5000));
    EXPECT_EQ(sheet.size(), 0);
    view->MakeAxesAutomatic();
    EXPECT_TRUE(view->grab().toImage() == before);
    SetRange({0, 0}, automatic.first, automatic.second);
    EXPECT_EQ(Shown(0), automatic);
    EXPECT_TRUE(view->grab().toImage() != before) << "the same range, with a lock";
    SetRange({0, 0}, 600, 600);
    EXPECT_LT(Shown(0).first, Shown(0).second) << "a level one gets some height";
}

TEST_F(AxisTest, ARangePaintsItsPaneAsTheWholeChartWould) {
    view->SetCursorBar(560);
    view->Drawings().ChooseTool(TrendLineKind::Line);
    Click(Point(500, 590));
    Click(Point(580, 690));
    GroupOptions().bCDP = true;
    TellGroupChange();
    QSignalSpy replotted(view->findChild<QCustomPlot*>(), &QCustomPlot::afterReplot);
    for (const AxisPlace& place : {AxisPlace{0, 0}, AxisPlace{0, 1}, AxisPlace{1, 0}}) {
        const auto [low, high] = std::pair(view->AxisAt(place)->low, view->AxisAt(place)->high);
        SetRange(place, low + (high - low) / 8, high + (high - low) / 8);
        EXPECT_EQ(replotted.size(), 0) << "the other panes are not drawn";
        const QImage alone = view->grab().toImage();
        view->TakeAxes();
        EXPECT_EQ(replotted.size(), 1);
        replotted.clear();
        EXPECT_TRUE(view->grab().toImage() == alone) << place.pane << ' ' << place.scale;
    }
    SetRange({0, 0}, 10000, 2000000);
    EXPECT_EQ(replotted.size(), 1) << "longer labels ask for room, which all panes give";
}

TEST_F(AxisTest, RangesBelongToTheSymbolAndThePeriod) {
    const BarsKey other = Add(Rising(300, 20));
    const auto second = MakeView(rising);
    SetRange({0, 0}, 500, 700);
    EXPECT_NE(second->Mapping().panes[0].low, 500) << "another chart of the same group and symbol";
    view->Show(other);
    EXPECT_LT(Shown(0).second, 500);
    SetRange({0, 0}, 10, 20);
    view->Show({kUser, rising.symbol, 1, 0});
    EXPECT_NE(Shown(0), Span(500, 700)) << "another period";
    view->Show(rising);
    EXPECT_EQ(Shown(0), Span(500, 700));
    view->MakeAxesAutomatic();
    view->Show(other);
    EXPECT_EQ(Shown(0), Span(10, 20));
    view->Show(rising);
    EXPECT_NE(Shown(0), Span(500, 700)) << "automatic again for good";
}

TEST_F(AxisTest, AReloadAndAnotherDepthLeaveThem) {
    SetRange({0, 0}, 500, 700);
    SetRange({1, 0}, 0, 5000);
    Reload();
    EXPECT_EQ(Shown(0), Span(500, 700));
    view->Show(rising, {0, 60, 1});
    EXPECT_EQ(Shown(0), Span(500, 700));
    EXPECT_TRUE(
        Repository().GetDrawInfo(kGroup)->bGetYaxisRangeAutomatically(view->AxisAt({0, 0})->index))
        << "nothing of it is the group's";
    // Another study in the pane's place has a range of its own, which is not this one.
    Repository().SetStudyListByGroupName(kGroup, {{0}, {23}, {16}});
    TellGroupChange();
    EXPECT_NE(Shown(1), Span(0, 5000));
    EXPECT_NE(Shown(2), Span(0, 5000));
    Repository().SetStudyListByGroupName(kGroup, {{0}, {16}});
    Repository().SetStudyCountByGroupName(kGroup, 2);
    TellGroupChange();
    EXPECT_EQ(Shown(1), Span(0, 5000));
    EXPECT_FALSE(view->AxisAt({2, 0})) << "there is no such pane any more";
}

TEST_F(AxisTest, AStudyOnThePricesHasAnAxisOfItsOwn) {
    const auto own = view->AxisAt({0, 1});
    ASSERT_TRUE(own);
    EXPECT_LT(own->values.high, 200) << "and not the prices";
    EXPECT_GT(view->Mapping().left, 25) << "labelled on the side that the prices leave free";
    QSignalSpy menu(view.get(), &ChartView::axisMenuRequested);
    const auto rightClick = [&](const QPoint& at) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, Plot()->mapToGlobal(at));
        QApplication::sendEvent(Plot(), &event);
        if (menu.isEmpty()) {
            return std::pair(-1, -1);
        }
        const auto arguments = menu.takeLast();
        return std::pair(arguments[0].toInt(), arguments[1].toInt());
    };
    EXPECT_EQ(rightClick(OnLabels(0)), std::pair(0, 0));
    EXPECT_EQ(rightClick(OnLabels(0, false)), std::pair(0, 1));
    EXPECT_EQ(rightClick(OnLabels(1, false)), std::pair(-1, -1)) << "no labels there";
    EXPECT_EQ(rightClick(OnLabels(2)), std::pair(2, 0));
    EXPECT_EQ(rightClick(Point(550, 600)), std::pair(-1, -1));
    SetRange({0, 1}, -10, 300);
    EXPECT_EQ(view->AxisAt({0, 1})->high, 300);
    EXPECT_FALSE(view->AxisAt({0, 0})->byHand);
    QTest::mouseDClick(Plot(), Qt::LeftButton, {}, OnLabels(0, false));
    EXPECT_FALSE(view->AxisAt({0, 1})->byHand);
    for (const std::uint32_t side : {1U, 2U}) {
        GroupOptions().uScalePos = side;
        TellGroupChange();
        EXPECT_EQ(rightClick(OnLabels(0, false)), std::pair(0, 0));
        const QPoint outside(view->width() - 10, OnLabels(0).y());
        EXPECT_EQ(rightClick(outside), std::pair(0, 1)) << "outside of the prices";
        EXPECT_EQ(rightClick(OnLabels(0)), side == 1 ? std::pair(0, 1) : std::pair(0, 0));
    }
}

// ---- The axis' width and the edge ----

TEST_F(AxisTest, TheWidthIsAShareOfTheDefault) {
    const int full = WidthOfLabels();
    const int ink = InkOfLabels();
    for (const int percent : {90, 70, 50, 0}) {
        SetWidth(percent);
        EXPECT_NEAR(WidthOfLabels(), full * percent / 100.0, 2.5) << percent;
    }
    for (const int percent : {95, 80, 70}) {
        SetWidth(percent);
        EXPECT_GT(InkOfLabels(), ink / 3) << "smaller numbers, but all of them";
    }
    SetWidth(20);
    EXPECT_LT(InkOfLabels(), ink / 10) << "none, as they do not fit";
    SetWidth(50);
    view->ShowAll();
    TellGroupChange();
    EXPECT_NEAR(WidthOfLabels(), full * 0.5, 2.5);
    SetWidth(100);
    view->ShowLatest();
    EXPECT_EQ(WidthOfLabels(), full);
    EXPECT_EQ(InkOfLabels(), ink);
}

TEST_F(AxisTest, TheEdgeIsFreeForProjections) {
    const auto free = [&] {
        const PlotMapping mapping = view->Mapping();
        return (mapping.lastBar - 599.5) / (mapping.lastBar - mapping.firstBar);
    };
    EXPECT_NEAR(free(), 0.02, 1e-9);
    SetEdge(30);
    EXPECT_NEAR(free(), 0.3, 1e-9) << "to be seen at once";
    view->ScrollBars(-300);
    SetEdge(40);
    EXPECT_LT(free(), 0) << "a view of older bars stays";
    Drag({600, 200}, {-100000, 200});
    EXPECT_NEAR(free(), 0.4, 1e-9);
    view->ShowAll();
    EXPECT_EQ(view->VisibleBars().first, 0);
    EXPECT_NEAR(free(), 0.4, 1e-9);
    SetEdge(100);
    view->ShowLatest();
    EXPECT_EQ(view->VisibleBars(), std::pair(599, 599)) << "one bar is left";
    view->grab();
    view->Show({});
    view->Show(rising);
    EXPECT_EQ(view->VisibleBars(), std::pair(599, 599)) << "of whatever is shown";
}

// ---- Level lines ----

TEST_F(AxisTest, LevelLinesAreDrawnOnThePricesAlone) {
    for (bool CommonProp::*option : {&CommonProp::bLowIdx, &CommonProp::bCDP}) {
        const auto picture = [&](bool on) {
            GroupOptions().*option = on;
            TellGroupChange();
            return view->grab().toImage();
        };
        const QImage without = picture(false);
        const QImage with = picture(true);
        const PlotMapping::Pane prices = view->Mapping().panes[0];
        const auto bottom = static_cast<int>(prices.Bottom());
        const QRect below(0, bottom, with.width(), with.height() - bottom);
        EXPECT_TRUE(with != without);
        EXPECT_TRUE(with.copy(below) == without.copy(below));
        EXPECT_TRUE(picture(false) == without);
    }
}

}  // namespace
}  // namespace ta::terminal
