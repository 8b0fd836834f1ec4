// Trend lines on the chart: their data strings, their geometry, and what the user's mouse and keys
// make of them, in the view, the settings repository and the store.

#include "settings/TaSettingHandle.h"
#include "terminal/chart/ChartView.h"
#include "terminal/lang/Language.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/lines/TrendLine.h"
#include "terminal/lines/TrendLineGeometry.h"
#include "terminal/lines/TrendLineStore.h"
#include "terminal/plot/PlotMapping.h"
#include "terminal/quotes/MarketData.h"
#include "terminal/quotes/TerminalQuotes.h"
#include "terminal/studies/TerminalChartModule.h"
#include "tests/support/MemoryConfigStore.h"
#include "tests/support/MemoryServices.h"
#include "tests/support/ScriptedPrompts.h"

#include <gtest/gtest.h>

#include <qcustomplot.h>
#include <QContextMenuEvent>
#include <QMenu>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <limits>

namespace ta::terminal {
namespace {

using Kind = TrendLineKind;

TrendLine MakeLine(Kind kind, std::vector<LineAnchor> anchors) {
    TrendLine line = NewTrendLine(kind);
    line.anchors = std::move(anchors);
    return line;
}

// ---- Data strings ----

TEST(TrendLineText, HasTheFieldsThatTheRepositoryReads) {
    TrendLine line = MakeLine(Kind::Parallel, {{18262.5, 3230.78}, {18290, -0.25}, {1, 1e-7}});
    line.colour = 0x00c0ff;
    line.width = 3;
    line.style = 2;
    line.locked = true;
    const CString data = EncodeTrendLine(line);
    EXPECT_EQ(data, "2006/00c0ff/3/2/1/18262.5,3230.78/18290,-0.25/1,1e-07");
    int kind = 0;
    CString name;
    bool flag = false;
    EXPECT_EQ(CTaSettingHandle::GetInstance().DecodeTrendLineData(data, kind, name, flag), 1);
    EXPECT_EQ(kind, 2006);
    EXPECT_TRUE(flag);
}

TEST(TrendLineText, GivesEveryNumberBack) {
    const double numbers[] = {0,
                              0.1,
                              1.0 / 3,
                              18262 + 13.5 / 24,
                              std::nextafter(18262.0, 18263.0),
                              -9e6,
                              kLargestLineTime,
                              5e-324};
    for (const TrendLineKindInfo& info : TrendLineKinds()) {
        for (const double number : numbers) {
            TrendLine line = NewTrendLine(info.kind);
            line.anchors.assign(static_cast<std::size_t>(info.anchorCount), {number, -number});
            const auto again = DecodeTrendLine(EncodeTrendLine(line));
            ASSERT_TRUE(again) << EncodeTrendLine(line);
            EXPECT_EQ(*again, line);
        }
    }
}

TEST(TrendLineText, RefusesWhatIsNotExactlyALine) {
    ASSERT_TRUE(DecodeTrendLine("2004/1565c0/1/0/0/1,2/3,4"));
    const char* const bad[] = {
        "",
        "/",
        "2004",
        "2004/////",
        "2004/1565c0/1/0/0",
        "2004/1565c0/1/0/0/1,2",
        "2004/1565c0/1/0/0/1,2/3,4/",
        "2004/1565c0/1/0/0/1,2/3,4/5,6",
        "2002/1565c0/1/0/0/1,2/3,4",
        "2003/1565c0/1/0/0/1,2/3,4",
        "2007/1565c0/1/0/0/1,2/3,4",
        "2004 /1565c0/1/0/0/1,2/3,4",
        "+2004/1565c0/1/0/0/1,2/3,4",
        "2004/1565c/1/0/0/1,2/3,4",
        "2004/1565c0f/1/0/0/1,2/3,4",
        "2004/1565cg/1/0/0/1,2/3,4",
        "2004/-565c0/1/0/0/1,2/3,4",
        "2004/1565c0/0/0/0/1,2/3,4",
        "2004/1565c0/6/0/0/1,2/3,4",
        "2004/1565c0/1/5/0/1,2/3,4",
        "2004/1565c0/1/-1/0/1,2/3,4",
        "2004/1565c0/1/0//1,2/3,4",
        "2004/1565c0/1/0/10/1,2/3,4",
        "2004/1565c0/1/0/2/1,2/3,4",
        "2004/1565c0/1/0/0/1,2/3",
        "2004/1565c0/1/0/0/1,2/3,",
        "2004/1565c0/1/0/0/1,2/3,4,5",
        "2004/1565c0/1/0/0/1,2/3,nan",
        "2004/1565c0/1/0/0/1,2/inf,4",
        "2004/1565c0/1/0/0/1,2/3, 4",
        "2004/1565c0/1/0/0/1,2/3,4x",
        "2004/1565c0/1/0/0/1,2/3,1e400",
        "2004/1565c0/1/0/0/1,2/2e7,4",
        "2004/1565c0/1/0/0/1,2/3,2e15",
        "2004/1565c0/1/0/0/1,2/3,0x4",
        "99999999999/1565c0/1/0/0/1,2",
        "2004/1565c0/99999999999/0/0/1,2/3,4",
    };
    for (const char* data : bad) {
        EXPECT_FALSE(DecodeTrendLine(data)) << data;
    }
    EXPECT_FALSE(DecodeTrendLine(CString("2004/1565c0/1/0/0/1,2/3,4\0", 26)));
    EXPECT_FALSE(DecodeTrendLine(CString(100000, '/')));
}

TEST(TrendLineText, ReadsNoMoreThanItWouldWrite) {
    const CString line = "2005/1565c0/2/1/1/16000.5,101.25/16010,102/-16020,1e3";
    for (std::size_t i = 0; i < line.size(); ++i) {
        for (int byte = 0; byte < 256; ++byte) {
            CString changed = line;
            changed[i] = static_cast<char>(byte);
            if (const auto read = DecodeTrendLine(changed)) {
                const auto again = DecodeTrendLine(EncodeTrendLine(*read));
                ASSERT_TRUE(again && *again == *read) << changed;
            }
        }
        DecodeTrendLine(line.substr(0, i));
        DecodeTrendLine(line.substr(i));
    }
}

// ---- Geometry ----

std::shared_ptr<const BarSeries> DailyBars(int count) {
    auto bars = std::make_shared<BarSeries>();
    for (int i = 0; i < count; ++i) {
        Bar bar;
        bar.time = 16000 + i;
        bar.open = bar.high = bar.low = bar.close = 100;
        bars->push_back(bar);
    }
    return bars;
}

/// A pane of 100 bars on 1000 pixels and of the prices 100 to 200 on 400 pixels: a bar is 10 pixels
/// wide, a point of price 4 high. Its left upper corner is (50, 20).
DrawingFrame Frame() {
    DrawingFrame frame;
    frame.mapping.left = 50;
    frame.mapping.width = 1000;
    frame.mapping.firstBar = 0;
    frame.mapping.lastBar = 100;
    frame.mapping.panes.push_back({20, 400, 100, 200});
    frame.mapping.bars = DailyBars(101);
    frame.pane = 0;
    return frame;
}

LineAnchor At(double bar, double price) {
    return {16000 + bar, price};
}

/// Whether both ends are where they should be, in either order.
testing::AssertionResult Runs(const QLineF& line, const QPointF& a, const QPointF& b) {
    const auto near = [](const QPointF& one, const QPointF& other) {
        return (one - other).manhattanLength() < 1e-6;
    };
    if ((near(line.p1(), a) && near(line.p2(), b)) || (near(line.p1(), b) && near(line.p2(), a))) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure()
           << line.x1() << ',' << line.y1() << " to " << line.x2() << ',' << line.y2();
}

TEST(TrendLineShape, AnchorsAreBarsAndRoundedPrices) {
    const DrawingFrame frame = Frame();
    EXPECT_EQ(frame.AnchorAt({50 + 103, 420 - 4 * 30.001}), At(10, 130));
    EXPECT_EQ(frame.AnchorAt({50 + 1057, 420}), At(106, 100)) << "Beyond the last bar.";
    EXPECT_EQ(frame.AnchorAt({50 - 54, 420}), At(-5, 100));
    EXPECT_EQ(frame.PointOf(At(10, 130)), QPointF(150, 300));
    EXPECT_EQ(frame.Moved(At(10, 130), 2.4, 1.234), At(12, 131.23));
    EXPECT_EQ(frame.Moved(At(10.5, 0.12345), 0.4, 0), At(10.5, 0.12345));
}

TEST(TrendLineShape, LinesRunToTheEdgesAndSegmentsBetweenTheirEnds) {
    const DrawingFrame frame = Frame();
    const auto lines = [&](Kind kind, std::vector<LineAnchor> anchors) {
        return MakePicture(MakeLine(kind, std::move(anchors)), frame).lines;
    };
    // Rises by half a point a bar, from 125 at the left edge to 175.
    const auto line = lines(Kind::Line, {At(10, 130), At(20, 135)});
    ASSERT_EQ(line.size(), 1u);
    EXPECT_TRUE(Runs(line[0], {50, 320}, {1050, 120}));
    const auto segment = lines(Kind::Segment, {At(10, 130), At(-10, 120)});
    ASSERT_EQ(segment.size(), 1u);
    EXPECT_TRUE(Runs(segment[0], {50, 320}, {150, 300})) << "Cut off at the left edge.";
    const auto upright = lines(Kind::Line, {At(10, 130), At(10, 120)});
    ASSERT_EQ(upright.size(), 1u);
    EXPECT_TRUE(Runs(upright[0], {150, 20}, {150, 420}));
    const auto level = lines(Kind::Horizontal, {At(3, 150)});
    ASSERT_EQ(level.size(), 1u);
    EXPECT_TRUE(Runs(level[0], {50, 220}, {1050, 220}));
}

TEST(TrendLineShape, OutOfViewIsNothing) {
    const DrawingFrame frame = Frame();
    const auto inView = [&](Kind kind, std::vector<LineAnchor> anchors) {
        return MakePicture(MakeLine(kind, std::move(anchors)), frame).IsInView();
    };
    EXPECT_FALSE(inView(Kind::Segment, {At(-10, 130), At(-20, 135)}));
    EXPECT_FALSE(inView(Kind::Segment, {At(-5, 190), At(5, 215)})) << "Past the corner.";
    EXPECT_FALSE(inView(Kind::Line, {At(10, 230), At(20, 230)}));
    EXPECT_FALSE(inView(Kind::Horizontal, {At(10, 99)}));
    EXPECT_FALSE(inView(Kind::GoldenCut, {At(130, 120), At(140, 160)}));
    EXPECT_FALSE(inView(Kind::Line, {At(10, 130), At(10, 130)})) << "No direction.";
    EXPECT_TRUE(inView(Kind::Line, {At(-1e6, 1e14), At(1e6 + 100, 300 - 1e14)}))
        << "Through the middle.";
    DrawingFrame noBars = Frame();
    noBars.mapping.bars = DailyBars(1);
    EXPECT_TRUE(MakePicture(MakeLine(Kind::Horizontal, {At(1, 150)}), noBars).lines.empty());
    DrawingFrame noPane = Frame();
    noPane.pane = -1;
    EXPECT_TRUE(MakePicture(MakeLine(Kind::Horizontal, {At(1, 150)}), noPane).handles.empty());
}

TEST(TrendLineShape, ParallelsRunThroughTheThirdPointAndRailsOnBothSides) {
    const DrawingFrame frame = Frame();
    const std::vector<LineAnchor> anchors{At(0, 130), At(100, 150), At(50, 150)};
    const auto parallel = MakePicture(MakeLine(Kind::Parallel, anchors), frame);
    ASSERT_EQ(parallel.lines.size(), 2u);
    EXPECT_TRUE(Runs(parallel.lines[0], {50, 300}, {1050, 220}));
    EXPECT_TRUE(Runs(parallel.lines[1], {50, 260}, {1050, 180}));
    EXPECT_TRUE(parallel.guides.empty());
    const auto rails = MakePicture(MakeLine(Kind::RailLine, anchors), frame);
    ASSERT_EQ(rails.lines.size(), 2u);
    ASSERT_EQ(rails.guides.size(), 1u);
    EXPECT_TRUE(Runs(rails.guides[0], {50, 300}, {1050, 220}));
    EXPECT_TRUE(Runs(rails.lines[0], {50, 260}, {1050, 180}));
    EXPECT_TRUE(Runs(rails.lines[1], {50, 340}, {1050, 260}));
}

TEST(TrendLineShape, AGoldenCutMeasuresFromTheEndOfTheMove) {
    const DrawingFrame frame = Frame();
    const auto picture = MakePicture(MakeLine(Kind::GoldenCut, {At(40, 100), At(10, 200)}), frame);
    ASSERT_EQ(picture.labels.size(), std::size(kGoldenLevels));
    const double prices[] = {200, 176.4, 161.8, 150, 138.2, 121.4, 100};
    for (std::size_t i = 0; i < std::size(prices); ++i) {
        EXPECT_EQ(picture.labels[i].level, kGoldenLevels[i]);
        EXPECT_NEAR(picture.labels[i].price, prices[i], 1e-9);
        const double y = 420 - 4 * (prices[i] - 100);
        EXPECT_TRUE(Runs(picture.lines[i], {150, y}, {1050, y}));
    }
    DrawingFrame high = frame;
    high.mapping.panes[0].low = 155;
    const auto part = MakePicture(MakeLine(Kind::GoldenCut, {At(40, 100), At(10, 200)}), high);
    EXPECT_EQ(part.labels.size(), 3u) << "Levels in view only.";
}

TEST(TrendLineShape, HitsAreWithinAFewPixels) {
    const DrawingFrame frame = Frame();
    const auto picture = MakePicture(MakeLine(Kind::Segment, {At(10, 150), At(20, 150)}), frame);
    const auto anchor = [&](double x, double y, bool handles) {
        const auto hit = HitTest(picture, {x, y}, handles);
        return hit ? hit->anchor : -2;
    };
    EXPECT_EQ(anchor(200, 223, true), -1);
    EXPECT_EQ(anchor(200, 227, true), -2);
    EXPECT_EQ(anchor(155, 220, true), 0);
    EXPECT_EQ(anchor(245, 224, true), 1);
    EXPECT_EQ(anchor(245, 224, false), -1);
    EXPECT_EQ(anchor(256, 220, false), -2) << "Past the end.";
}

// ---- The chart view ----

constexpr std::uint8_t kUser = UserMarket::kId;
constexpr const char* kGroup = "Group";

test::MemoryConfigStore g_store;
test::MemoryEntitlement g_entitlement;
test::FixedClock g_clock{1'699'945'200};  // 2023-11-14 07:00 UTC

/// Services that live as long as the process, as the settings repository does.
void HangIn() {
    static TerminalChartModule chartModule;
    Services services;
    services.configStore = &g_store;
    services.entitlement = &g_entitlement;
    services.chartModule = &chartModule;
    CSyncInfo::GetSettingCFG().SetServices(services);
}

BarSeries Wave(int count) {
    BarSeries bars = *DailyBars(count);
    for (int i = 0; i < count; ++i) {
        Bar& bar = bars[static_cast<std::size_t>(i)];
        bar.open = 100 + 10 * std::sin(i / 20.0);
        bar.close = 100 + 10 * std::sin((i + 1) / 20.0);
        bar.high = std::max(bar.open, bar.close) + 1;
        bar.low = std::min(bar.open, bar.close) - 1;
        bar.volume = 1000;
    }
    return bars;
}

class TrendLineDrawing : public testing::Test {
protected:
    TrendLineDrawing() : data(DefaultDataFolder(), folder.path()), quotes(data) {
        HangIn();
        BKQuoteInterface::SetBKInterface(&quotes);
        SetClock(&g_clock);
        g_store = {};
        g_entitlement = {};
        Settings().ReleaseTrendLine("-");  // of every class; a reload drops the charts' alone
        g_store.names = {{kGroup}};
        g_store.studyLists[{0u, "StudyTypeLogKey01"}] = {0};
        g_store.studyLists[{0u, "StudyTypeLogKey02"}] = {16};
        g_store.showCounts[0] = 2;
        Reload();
        QString error;
        const Symbol* added = data.User().Add("bars.csv", Wave(300), 0.01, &error);
        EXPECT_NE(added, nullptr) << error.toStdString();
        symbol = added ? added->id : CString();
        chart = {kUser, symbol, 0, 0};
        view = Show();
    }
    ~TrendLineDrawing() override {
        view.reset();
        SetClock(nullptr);
        BKQuoteInterface::SetBKInterface(nullptr);
    }

    static CTaSettingHandle& Settings() { return CTaSettingHandle::GetInstance(); }
    /// What another terminal's save does to this process.
    static void Reload() {
        g_store.reloadFlag = true;
        Settings().ReloadTASetting();
    }

    std::unique_ptr<ChartView> Show() {
        auto shown = std::make_unique<ChartView>(data);
        shown->resize(900, 600);
        shown->show();
        shown->SetSymbol(kUser, symbol);
        return shown;
    }
    DrawingBoard& Board() { return view->Drawings(); }
    QWidget* Plot() { return view->findChild<QCustomPlot*>(); }
    QPoint Point(double bar, double price) {
        const PlotMapping mapping = view->Mapping();
        return QPointF(mapping.XOf(bar), mapping.panes[0].YOf(price)).toPoint();
    }
    void Click(const QPoint& point) { QTest::mouseClick(Plot(), Qt::LeftButton, {}, point); }
    void Drag(const QPoint& from, const QPoint& to) {
        QTest::mousePress(Plot(), Qt::LeftButton, {}, from);
        QTest::mouseMove(Plot(), (from + to) / 2);
        QTest::mouseMove(Plot(), to);
        QTest::mouseRelease(Plot(), Qt::LeftButton, {}, to);
    }
    void Key(Qt::Key key) { QTest::keyClick(view.get(), key); }
    /// The actions of the context menu at a point, by their texts without mnemonics; the menu is
    /// closed after `chosen` was triggered.
    QStringList Menu(const QPoint& point, const QString& chosen = {}) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, point, Plot()->mapToGlobal(point));
        QApplication::sendEvent(Plot(), &event);
        QStringList texts;
        auto* menu = view->findChild<QMenu*>();
        if (menu == nullptr) {
            return texts;
        }
        for (QAction* action : menu->actions()) {
            texts << action->text().section("(&", 0, 0);
            if (!chosen.isEmpty() && texts.back() == chosen) {
                action->trigger();
            }
        }
        delete menu;
        return texts;
    }
    /// Draws a line through two points.
    void DrawLine(Kind kind, const LineAnchor& from, const LineAnchor& to) {
        Board().ChooseTool(kind);
        Click(Point(from.time - 16000, from.price));
        Click(Point(to.time - 16000, to.price));
    }
    /// Puts lines there as another terminal does.
    void Store(const std::vector<CString>& lines, const CString& typeKeyEnd = "0000/0/price") {
        const CString key = TrendLineSymbolKey(kUser, symbol);
        g_store.trendLines[kTechViewClass][key].emplace_back(key + '/' + typeKeyEnd, lines);
        Reload();
    }
    std::vector<CString> Stored(int period = 0, int count = 0) {
        std::vector<CString> inRepository;
        Settings().GetTrendLineData(inRepository, kTechViewClass, TrendLineSymbolKey(kUser, symbol),
                                    "price", period, count);
        // What the store has is what a new start would find.
        Reload();
        std::vector<CString> inStore;
        Settings().GetTrendLineData(inStore, kTechViewClass, TrendLineSymbolKey(kUser, symbol),
                                    "price", period, count);
        EXPECT_EQ(inRepository, inStore);
        return inStore;
    }
    TrendLine OnlyLine() {
        const std::vector<CString> stored = Stored();
        EXPECT_EQ(stored.size(), 1u);
        const auto line = stored.empty() ? std::nullopt : DecodeTrendLine(stored[0]);
        EXPECT_TRUE(line);
        return line.value_or(TrendLine());
    }
    /// Whether a line of the colour of `kind` is painted at the point or beside it.
    bool IsPainted(ChartView& where, Kind kind, const QPoint& point) {
        const QImage image = where.grab().toImage();
        const QColor wanted = QColor::fromRgb(InfoOf(kind).colour);
        for (int y = point.y() - 1; y <= point.y() + 1; ++y) {
            const QColor at = image.pixelColor(point.x(), y);
            if (std::abs(at.red() - wanted.red()) + std::abs(at.green() - wanted.green()) +
                    std::abs(at.blue() - wanted.blue()) <
                140) {
                return true;
            }
        }
        return false;
    }

    QTemporaryDir folder;
    Language language;
    test::ScriptedPrompts prompts;
    MarketData data;
    TerminalQuotes quotes;
    CString symbol;
    BarsKey chart;
    std::unique_ptr<ChartView> view;
};

void ExpectNear(const std::vector<LineAnchor>& anchors, const std::vector<LineAnchor>& wanted) {
    ASSERT_EQ(anchors.size(), wanted.size());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        EXPECT_EQ(anchors[i].time, wanted[i].time);
        EXPECT_NEAR(anchors[i].price, wanted[i].price, 0.1);
        EXPECT_NEAR(anchors[i].price * 100, std::round(anchors[i].price * 100), 1e-6);
    }
}

TEST_F(TrendLineDrawing, EveryKindIsDrawnByClicks) {
    for (const TrendLineKindInfo& info : TrendLineKinds()) {
        const int packs = g_store.packCount;
        Board().ChooseTool(info.kind);
        EXPECT_EQ(Board().Tool(), info.kind);
        const std::vector<LineAnchor> all{At(220, 95), At(260, 104), At(240, 106)};
        const std::vector<LineAnchor> wanted(all.begin(), all.begin() + info.anchorCount);
        for (const LineAnchor& anchor : wanted) {
            EXPECT_EQ(g_store.packCount, packs);
            Click(Point(anchor.time - 16000, anchor.price));
        }
        EXPECT_FALSE(Board().Tool()) << "The tool is done.";
        EXPECT_EQ(Board().Selected(), 0);
        EXPECT_EQ(g_store.packCount, packs + 1);
        const TrendLine line = OnlyLine();
        EXPECT_EQ(line.kind, info.kind);
        ExpectNear(line.anchors, wanted);
        EXPECT_EQ(Settings().GetTrendLineSymbolUpdTime(kTechViewClass, kUser, symbol),
                  "2023-11-14");
        Key(Qt::Key_Delete);
        EXPECT_TRUE(Stored().empty());
        EXPECT_TRUE(g_store.trendLines.empty());
    }
}

TEST_F(TrendLineDrawing, ADragDrawsALineAndThePlotStaysWhereItIs) {
    const PlotMapping before = view->Mapping();
    Board().ChooseTool(Kind::Segment);
    Drag(Point(200, 95), Point(270, 104));
    ExpectNear(OnlyLine().anchors, {At(200, 95), At(270, 104)});
    EXPECT_EQ(view->Mapping().firstBar, before.firstBar);
    Drag(Point(270, 95), Point(275, 95));
    EXPECT_NE(view->Mapping().firstBar, before.firstBar) << "Beside a line the chart is panned.";
    EXPECT_EQ(Stored().size(), 1u);
}

TEST_F(TrendLineDrawing, TheKeyboardDrawsAtTheCursorLine) {
    Board().ChooseTool(Kind::Line);
    Key(Qt::Key_Return);
    view->SetCursorBar(250);
    Key(Qt::Key_Return);
    Key(Qt::Key_Return);
    EXPECT_TRUE(Board().Tool()) << "Two anchors on one place are no line.";
    for (int i = 0; i < 3; ++i) {
        Key(Qt::Key_Left);
    }
    Key(Qt::Key_Space);
    const BarSeries bars = Wave(300);
    ExpectNear(OnlyLine().anchors, {At(250, bars[250].close), At(247, bars[247].close)});
}

TEST_F(TrendLineDrawing, APreviewFollowsTheMouseUntilEscape) {
    Board().ChooseTool(Kind::Line);
    Click(Point(200, 92));
    QTest::mouseMove(Plot(), Point(240, 92));
    const QPoint between = Point(220, 92);
    EXPECT_TRUE(IsPainted(*view, Kind::Line, between));
    QTest::mouseMove(Plot(), Point(240, 108));
    EXPECT_FALSE(IsPainted(*view, Kind::Line, between));
    EXPECT_TRUE(IsPainted(*view, Kind::Line, Point(230, 104)));
    Key(Qt::Key_Escape);
    EXPECT_FALSE(Board().Tool());
    EXPECT_FALSE(IsPainted(*view, Kind::Line, Point(230, 104)));
    Click(Point(260, 100));
    EXPECT_TRUE(Stored().empty());

    Board().ChooseTool(Kind::Line);
    Click(Point(200, 92));
    EXPECT_TRUE(Menu(Point(210, 92)).isEmpty()) << "A right click cancels.";
    EXPECT_FALSE(Board().Tool());
    Board().ChooseTool(Kind::Segment);
    Click({300, view->height() - 60});
    EXPECT_TRUE(Board().Tool()) << "A click outside the prices sets no point.";
    view->SetPeriod(1, 0);
    EXPECT_FALSE(Board().Tool()) << "The bars are others.";
}

TEST_F(TrendLineDrawing, ALineIsSelectedAndMovedByTheMouse) {
    DrawLine(Kind::Segment, At(200, 95), At(240, 95));
    Click(Point(260, 105));
    EXPECT_EQ(Board().Selected(), -1) << "A click beside the line.";
    Click(Point(220, 95));
    EXPECT_EQ(Board().Selected(), 0);
    const TrendLine before = OnlyLine();

    g_clock.now += 86400;
    Drag(Point(220, 95), Point(230, 105));
    const TrendLine moved = OnlyLine();
    ExpectNear(moved.anchors, {At(210, 105), At(250, 105)});
    EXPECT_EQ(Board().Selected(), 0);
    EXPECT_EQ(Settings().GetTrendLineSymbolUpdTime(kTechViewClass, kUser, symbol), "2023-11-15");
    g_clock.now -= 86400;

    Drag(Point(250, 105), Point(260, 95));
    ExpectNear(OnlyLine().anchors, {At(210, 105), At(260, 95)});
    EXPECT_NEAR(OnlyLine().anchors[0].price, moved.anchors[0].price, 0) << "Stays as it was.";

    Drag(Point(260, 95), Point(210, 105));
    EXPECT_NE(OnlyLine().anchors[0], OnlyLine().anchors[1]) << "Ends do not fall together.";
    const TrendLine last = OnlyLine();
    QTest::mousePress(Plot(), Qt::LeftButton, {}, Point(210, 105));
    QTest::mouseMove(Plot(), Point(215, 95));
    Key(Qt::Key_Escape);
    QTest::mouseRelease(Plot(), Qt::LeftButton, {}, Point(215, 95));
    EXPECT_EQ(OnlyLine(), last) << "Escape takes the move back.";
    Key(Qt::Key_Escape);
    EXPECT_EQ(Board().Selected(), -1);
}

TEST_F(TrendLineDrawing, ALineStaysAtItsBarsWhenTheWindowIsResized) {
    DrawLine(Kind::Segment, At(200, 95), At(280, 105));
    const TrendLine before = OnlyLine();
    EXPECT_TRUE(IsPainted(*view, Kind::Segment, Point(240, 100)));
    view->resize(500, 420);
    EXPECT_TRUE(IsPainted(*view, Kind::Segment, Point(240, 100)));
    view->ScrollBars(-20);
    EXPECT_TRUE(IsPainted(*view, Kind::Segment, Point(230, 98.75)));
    EXPECT_EQ(OnlyLine(), before);
}

TEST_F(TrendLineDrawing, EachPeriodHasItsOwnLines) {
    DrawLine(Kind::Segment, At(200, 95), At(280, 105));
    const QPoint middle = Point(240, 100);
    view->SetPeriod(1, 0);
    EXPECT_EQ(Board().LineCount(), 0);
    Board().ChooseTool(Kind::Horizontal);
    Click({400, 200});
    EXPECT_EQ(Stored(1, 0).size(), 1u);
    EXPECT_EQ(Stored(0, 0).size(), 1u);
    view->SetPeriod(0, 0);
    EXPECT_EQ(Board().LineCount(), 1);
    EXPECT_EQ(Point(240, 100), middle);
    EXPECT_TRUE(IsPainted(*view, Kind::Segment, middle));
    view->SetSymbol(kUser, {});
    EXPECT_EQ(Board().LineCount(), 0);
    Board().ChooseTool(Kind::Line);
    EXPECT_FALSE(Board().Tool()) << "Nothing to draw on.";
}

TEST_F(TrendLineDrawing, AnotherViewOfTheSymbolShowsTheLineAtOnce) {
    const auto other = Show();
    const QPoint middle = Point(240, 100);
    EXPECT_FALSE(IsPainted(*other, Kind::Segment, middle));
    DrawLine(Kind::Segment, At(200, 95), At(280, 105));
    EXPECT_EQ(other->Drawings().LineCount(), 1);
    EXPECT_EQ(other->Drawings().Selected(), -1);
    EXPECT_TRUE(IsPainted(*other, Kind::Segment, middle));
    Drag(middle, Point(240, 108));
    EXPECT_FALSE(IsPainted(*other, Kind::Segment, middle));
    EXPECT_TRUE(IsPainted(*other, Kind::Segment, Point(240, 108)));
    Key(Qt::Key_Delete);
    EXPECT_EQ(other->Drawings().LineCount(), 0);
}

// ---- Deleting ----

TEST_F(TrendLineDrawing, TheContextMenuLocksAndDeletes) {
    EXPECT_TRUE(Menu(Point(240, 100)).isEmpty()) << "Nothing there.";
    DrawLine(Kind::Segment, At(200, 95), At(240, 95));
    Click(Point(260, 105));
    EXPECT_EQ(Menu(Point(260, 105)).size(), 1) << "Delete all.";
    const QStringList texts = Menu(Point(220, 95), "鎖定");
    EXPECT_EQ(texts.value(0), "線段");
    EXPECT_TRUE(OnlyLine().locked);

    QSignalSpy notices(&Board(), &DrawingBoard::notice);
    Key(Qt::Key_Delete);
    EXPECT_EQ(notices.size(), 1);
    Drag(Point(220, 95), Point(221, 105));
    ExpectNear(OnlyLine().anchors, {At(200, 95), At(240, 95)});
    Menu(Point(220, 95), "鎖定");
    EXPECT_FALSE(OnlyLine().locked);
    Menu(Point(220, 95), "刪除畫線");
    EXPECT_TRUE(Stored().empty());
}

TEST_F(TrendLineDrawing, DeletingAllAsksAndLeavesWhatIsNotOnTheChart) {
    const CString foreign = "2007/x/y/z/0/whatever";
    Store({foreign});
    Store({"2002/1565c0/1/0/0/16100,100"}, "0001/0/price");
    Board().DeleteAll();  // nothing on the chart, no question
    DrawLine(Kind::Segment, At(200, 95), At(240, 95));
    DrawLine(Kind::Line, At(200, 105), At(240, 105));
    prompts.ExpectYesNo(false);
    Board().DeleteAll();
    EXPECT_TRUE(prompts.Last().text.contains('2'));
    EXPECT_EQ(Stored().size(), 3u);
    prompts.ExpectYesNo(true);
    prompts.Meanwhile([] { Settings().SendTLineUpdate2AllTechView(); });
    Board().DeleteAll();
    EXPECT_EQ(Stored(), std::vector<CString>{foreign});
    EXPECT_EQ(Stored(1, 0).size(), 1u);
}

// ---- Limits ----

TEST_F(TrendLineDrawing, LimitsStopAddingWithAMessage) {
    g_entitlement.maxLinesPerSymbol = 1;
    DrawLine(Kind::Segment, At(200, 95), At(240, 95));
    prompts.ExpectMessage();
    Board().ChooseTool(Kind::Line);
    EXPECT_TRUE(prompts.Last().text.contains("這個商品")) << prompts.Last().text.toStdString();
    EXPECT_FALSE(Board().Tool());
    Drag(Point(220, 95), Point(220, 100));
    ExpectNear(OnlyLine().anchors, {At(200, 100), At(240, 100)});

    g_entitlement.maxLinesPerSymbol = -1;
    g_entitlement.maxLinesInAll = 2;
    Board().ChooseTool(Kind::Line);
    Click(Point(200, 105));
    // Another terminal takes the last place.
    g_store.trendLines[kTechViewClass]["0a/2330"] = {{"0a/2330/0000/0/price", {"2004/////"}}};
    Reload();
    prompts.ExpectMessage();
    Click(Point(230, 105));
    EXPECT_TRUE(prompts.Last().text.contains("總數"));
    EXPECT_FALSE(Board().Tool());
    EXPECT_EQ(Stored().size(), 1u);
    EXPECT_EQ(Board().Selected(), -1);
    g_entitlement.maxLinesInAll = 0;
    prompts.ExpectMessage();
    Board().ChooseTool(Kind::Horizontal);
}

// ---- What others have stored ----

TEST_F(TrendLineDrawing, UnknownKindsAndUnreadableStringsSurviveTheirNeighbours) {
    const CString drawn = "2021/1565c0/1/0/0/16200,95/16240,95";
    const CString kept[] = {"2007/a/b/c/1/x", "2022/////", "2004/garbage", "\xA5\x5C/\xFF",
                            "2021/1565c0/1/0/0/16200,95"};
    QSignalSpy notices(&Board(), &DrawingBoard::notice);
    Store({kept[0], kept[1], drawn, kept[2], kept[3], kept[4]});
    ASSERT_EQ(notices.size(), 1);
    EXPECT_TRUE(notices[0][0].toString().contains('3')) << "Unknown kinds are not unreadable.";
    Reload();
    const auto second = Show();
    EXPECT_EQ(notices.size(), 1) << "Once.";
    EXPECT_EQ(Board().LineCount(), 1);

    Drag(Point(220, 95), Point(220, 105));
    DrawLine(Kind::Line, At(200, 98), At(240, 98));
    std::vector<CString> stored = Stored();
    ASSERT_EQ(stored.size(), 7u);
    EXPECT_EQ(DecodeTrendLine(stored[2])->anchors.size(), 2u) << "In its place.";
    EXPECT_NE(stored[2], drawn);
    Key(Qt::Key_Delete);
    Click(Point(220, 105));
    Key(Qt::Key_Delete);
    EXPECT_EQ(Stored(), std::vector<CString>(std::begin(kept), std::end(kept)));
}

TEST_F(TrendLineDrawing, DuplicatesBecomeOne) {
    DrawLine(Kind::Segment, At(200, 95), At(240, 95));
    Click(Point(270, 105));
    DrawLine(Kind::Segment, At(200, 95), At(240, 95));
    EXPECT_EQ(Stored().size(), 1u);
    EXPECT_EQ(Board().Selected(), 0);

    const CString one = "2021/1565c0/1/0/0/16200,95/16240,95";
    const CString other = "2021/1565c0/1/0/0/16200,98/16240,98";
    ASSERT_EQ(RemoveTrendLines(chart, Stored()), 1);
    Store({one, other, one});
    EXPECT_EQ(Board().LineCount(), 3);
    EXPECT_TRUE(ReplaceTrendLine(chart, other, one)) << "Moved onto its neighbour.";
    EXPECT_EQ(Stored(), (std::vector<CString>{one, one}));
    EXPECT_FALSE(ReplaceTrendLine(chart, other, one)) << "It is not there any more.";
    Click(Point(220, 95));
    Key(Qt::Key_Delete);
    EXPECT_TRUE(Stored().empty()) << "Equal lines are one to the user.";
}

TEST_F(TrendLineDrawing, AReloadInTheMiddleIsHarmless) {
    Board().ChooseTool(Kind::Parallel);
    Click(Point(200, 95));
    Reload();
    Click(Point(240, 95));
    Reload();
    Click(Point(220, 105));
    EXPECT_EQ(OnlyLine().kind, Kind::Parallel);

    // The line that is being moved goes away.
    QTest::mousePress(Plot(), Qt::LeftButton, {}, Point(220, 95));
    QTest::mouseMove(Plot(), Point(225, 98));
    g_store.trendLines.clear();
    Reload();
    QTest::mouseMove(Plot(), Point(230, 99));
    QTest::mouseRelease(Plot(), Qt::LeftButton, {}, Point(230, 99));
    EXPECT_TRUE(Stored().empty());
    EXPECT_EQ(Board().Selected(), -1);

    // Other lines come while one is moved.
    DrawLine(Kind::Segment, At(200, 95), At(240, 95));
    QTest::mousePress(Plot(), Qt::LeftButton, {}, Point(220, 95));
    QTest::mouseMove(Plot(), Point(220, 100));
    const CString key = TrendLineSymbolKey(kUser, symbol);
    g_store.trendLines[kTechViewClass][key][0].second.push_back("2002/1565c0/1/0/0/16100,103");
    Reload();
    QTest::mouseMove(Plot(), Point(220, 105));
    QTest::mouseRelease(Plot(), Qt::LeftButton, {}, Point(220, 105));
    ASSERT_EQ(Stored().size(), 2u);
    ExpectNear(DecodeTrendLine(Stored()[0])->anchors, {At(200, 105), At(240, 105)});

    // Gone without this terminal knowing when the move ends.
    QSignalSpy notices(&Board(), &DrawingBoard::notice);
    QTest::mousePress(Plot(), Qt::LeftButton, {}, Point(220, 105));
    QTest::mouseMove(Plot(), Point(220, 95));
    g_store.trendLines.clear();
    g_store.reloadFlag = true;
    QTest::mouseRelease(Plot(), Qt::LeftButton, {}, Point(220, 95));
    EXPECT_TRUE(Stored().empty());
}

TEST_F(TrendLineDrawing, TheSelectionGoesRoundByCommand) {
    Board().SelectNext();
    EXPECT_EQ(Board().Selected(), -1);
    DrawLine(Kind::Segment, At(200, 95), At(240, 95));
    DrawLine(Kind::Segment, At(200, 98), At(240, 98));
    EXPECT_EQ(Board().Selected(), 1);
    Board().SelectNext();
    EXPECT_EQ(Board().Selected(), 0);
    Board().SelectNext();
    EXPECT_EQ(Board().Selected(), 1);
}

TEST_F(TrendLineDrawing, DrawsOnTheChartWithoutPrices) {
    g_store.studyLists[{0u, "StudyTypeLogKey01"}] = {16};
    Reload();
    view = Show();
    Store({"2021/1565c0/1/0/0/16200,95/16240,95"});
    EXPECT_EQ(Board().LineCount(), 1);
    Board().ChooseTool(Kind::Line);
    EXPECT_FALSE(Board().Tool());
    Click({300, 100});
    EXPECT_EQ(Board().Selected(), -1);
}

// ---- All symbols ----

TEST_F(TrendLineDrawing, SymbolsAreListedWithKindsAndDates) {
    EXPECT_TRUE(ListTrendLineSymbols().empty());
    DrawLine(Kind::Segment, At(200, 95), At(240, 95));
    Store({"2004/////", "2004/1/1/1/0/", "2007/////", "rubbish"}, "0003/5/other");
    g_store.trendLines["Other"]["0a/2330"] = {{"0a/2330/0001/0/price", {"2003/////"}}};
    g_store.trendLines["Other"]["nokey"] = {{"x", {"2003/////"}}};
    Reload();
    const std::vector<TrendLineSymbol> symbols = ListTrendLineSymbols();
    ASSERT_EQ(symbols.size(), 2u);
    EXPECT_EQ(symbols[0].chartClass, kTechViewClass);
    EXPECT_EQ(symbols[0].symbol, symbol);
    EXPECT_EQ(symbols[0].market, kUser);
    EXPECT_EQ(symbols[0].count, 5);
    EXPECT_EQ(symbols[0].kinds, (std::map<int, int>{{2004, 2}, {2007, 1}, {2021, 1}}));
    EXPECT_EQ(symbols[0].unreadable, 1);
    EXPECT_EQ(symbols[0].date, "2023-11-14");
    EXPECT_EQ(symbols[0].periods, (std::vector<std::pair<int, int>>{{0, 0}}));
    EXPECT_EQ(symbols[1].symbol, "2330");
    EXPECT_EQ(symbols[1].date, "");
    EXPECT_EQ(TrendLineKindName(2007), "股票箱");
    EXPECT_EQ(TrendLineKindName(2003), "種類 2003");
}

TEST_F(TrendLineDrawing, ClearingAClassLeavesTheClassesWhoseNamesHoldIt) {
    DrawLine(Kind::Segment, At(200, 95), At(240, 95));
    g_store.trendLines["MXTechView2"]["0a/2330"] = {{"0a/2330/0001/0/price", {"2004/////"}}};
    Reload();
    ClearTrendLineClass(kTechViewClass);
    EXPECT_EQ(Board().LineCount(), 0);
    EXPECT_TRUE(Stored().empty());
    ASSERT_EQ(ListTrendLineSymbols().size(), 1u);
    EXPECT_EQ(ListTrendLineSymbols()[0].chartClass, "MXTechView2");
    DrawLine(Kind::Segment, At(200, 95), At(240, 95));
    EXPECT_EQ(ListTrendLineSymbols().size(), 2u);
}

}  // namespace
}  // namespace ta::terminal
