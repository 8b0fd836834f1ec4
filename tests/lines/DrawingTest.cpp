// What the user's mouse and keys make of trend lines, in the view, the settings repository and the
// store.

#include "settings/Messages.h"
#include "settings/TrendLineKeys.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/lines/TrendLine.h"
#include "terminal/lines/TrendLineGeometry.h"
#include "terminal/lines/TrendLineStore.h"
#include "tests/chart/ChartFixture.h"

#include <QContextMenuEvent>
#include <QMenu>

namespace ta::terminal {
namespace {

using Kind = TrendLineKind;
using Lines = std::vector<CString>;

LineAnchor At(double bar, double price) {
    return {kFirstDay + bar, price};
}

BarSeries Wave(int count) {
    const auto price = [](int i) { return 100 + 10 * std::sin(i / 20.0); };
    return MakeBars(count, [&](int i) { return std::pair(price(i), price(i + 1)); });
}

class TrendLineDrawing : public ChartFixture {
protected:
    TrendLineDrawing() {
        StoreGroup("Group", 5, {{0}, {16}}, 2);
        Reload();
        chart = Add(Wave(300));
        view = MakeView(chart);
    }

    DrawingBoard& Board() { return view->Drawings(); }
    CString SymbolKey() const { return settings::PackSymbolKey(kUser, chart.symbol); }
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
        Click(Point(from.time - kFirstDay, from.price));
        Click(Point(to.time - kFirstDay, to.price));
    }
    /// Puts lines there as another terminal does.
    void Store(const Lines& lines, const CString& typeKeyEnd = "0000/0/price") {
        g_store.trendLines[kTechViewClass][SymbolKey()].emplace_back(SymbolKey() + '/' + typeKeyEnd,
                                                                     lines);
        Reload();
    }
    /// What the repository has, and a new start would find in the store.
    Lines Stored(int period = 0, int count = 0) {
        const BarsKey key{kUser, chart.symbol, period, count};
        const Lines inRepository = StoredTrendLines(key);
        Reload();
        EXPECT_EQ(inRepository, StoredTrendLines(key));
        return inRepository;
    }
    TrendLine OnlyLine() {
        const Lines stored = Stored();
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

    BarsKey chart;
};

void ExpectNear(const std::vector<LineAnchor>& anchors, const std::vector<LineAnchor>& wanted,
                double most = 0.1) {
    ASSERT_EQ(anchors.size(), wanted.size());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        EXPECT_EQ(anchors[i].time, wanted[i].time);
        EXPECT_NEAR(anchors[i].price, wanted[i].price, most);
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
            Click(Point(anchor.time - kFirstDay, anchor.price));
        }
        EXPECT_FALSE(Board().Tool()) << "The tool is done.";
        EXPECT_EQ(Board().Selected(), 0);
        EXPECT_EQ(g_store.packCount, packs + 1);
        const TrendLine line = OnlyLine();
        EXPECT_EQ(line.kind, info.kind);
        ExpectNear(line.anchors, wanted);
        EXPECT_EQ(Repository().GetTrendLineSymbolUpdTime(kTechViewClass, kUser, chart.symbol),
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

TEST_F(TrendLineDrawing, PointsAreSetWhereTheCursorLineLocks) {
    const BarSeries bars = Wave(300);
    const auto choose = [&](std::uint32_t lock, std::uint32_t move) {
        CommonProp& options = Repository().GetDrawInfo("Group")->CommonProperty();
        options.uCursorLineLockMode = lock;
        options.uCursorMoveStyle = move;
        Repository().SendMsg2AllTechView(kGroupChangeMessage, 0);
    };
    choose(2, 1);
    Board().ChooseTool(Kind::Line);
    Move(Point(200, 95));
    EXPECT_EQ(view->CursorBar(), 200) << "With a tool in hand the cursor tells what a click does.";
    Click(Point(200, 95));
    view->SetCursorBar(250);
    Key(Qt::Key_Return);
    ASSERT_EQ(Board().LineCount(), 1);
    ExpectNear(Board().Lines()[0].anchors, {At(200, bars[200].high), At(250, bars[250].high)},
               0.006);
    Move(Point(220, 95));
    EXPECT_EQ(view->CursorBar(), 250) << "The tool is done.";

    const LineAnchor from = OnlyLine().anchors[1];  // loads the options again
    choose(3, 0);
    Drag(Point(250, from.price), Point(260, 101));
    ExpectNear(OnlyLine().anchors, {At(200, bars[200].high), At(260, bars[260].low)}, 0.006);
    choose(0, 0);
    const QPoint near = Point(270, bars[270].close) + QPoint(0, 1);
    Board().ChooseTool(Kind::Horizontal);
    Click(near);
    EXPECT_NEAR(Board().Lines()[1].anchors[0].price, bars[270].close, 0.006);
}

TEST_F(TrendLineDrawing, APreviewFollowsTheMouseUntilEscape) {
    Board().ChooseTool(Kind::Line);
    Click(Point(200, 92));
    Move(Point(240, 92));
    const QPoint between = Point(220, 92);
    EXPECT_TRUE(IsPainted(*view, Kind::Line, between));
    Move(Point(240, 108));
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
    view->Show({kUser, chart.symbol, 1, 0});
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
    EXPECT_EQ(Repository().GetTrendLineSymbolUpdTime(kTechViewClass, kUser, chart.symbol),
              "2023-11-15");
    g_clock.now -= 86400;

    Drag(Point(250, 105), Point(260, 95));
    ExpectNear(OnlyLine().anchors, {At(210, 105), At(260, 95)});
    EXPECT_NEAR(OnlyLine().anchors[0].price, moved.anchors[0].price, 0) << "Stays as it was.";

    Drag(Point(260, 95), Point(210, 105));
    EXPECT_NE(OnlyLine().anchors[0], OnlyLine().anchors[1]) << "Ends do not fall together.";
    const TrendLine last = OnlyLine();
    Press(Point(210, 105));
    Move(Point(215, 95));
    Key(Qt::Key_Escape);
    Release(Point(215, 95));
    EXPECT_EQ(OnlyLine(), last) << "Escape takes the move back.";
    Key(Qt::Key_Escape);
    EXPECT_EQ(Board().Selected(), -1);
}

TEST_F(TrendLineDrawing, ALineStaysAtItsBarsWhenTheWindowIsResized) {
    DrawLine(Kind::Segment, At(200, 95), At(280, 105));
    const TrendLine before = OnlyLine();
    EXPECT_TRUE(IsPainted(*view, Kind::Segment, Point(240, 100)));
    view->resize(500, 420);
    Board().SelectNext();  // paints lines before the chart is drawn in its new size
    EXPECT_TRUE(IsPainted(*view, Kind::Segment, Point(240, 100)));
    view->ScrollBars(-20);
    EXPECT_TRUE(IsPainted(*view, Kind::Segment, Point(230, 98.75)));
    EXPECT_EQ(OnlyLine(), before);
}

TEST_F(TrendLineDrawing, EachPeriodHasItsOwnLines) {
    DrawLine(Kind::Segment, At(200, 95), At(280, 105));
    const QPoint middle = Point(240, 100);
    view->Show({kUser, chart.symbol, 1, 0});
    EXPECT_EQ(Board().LineCount(), 0);
    Board().ChooseTool(Kind::Horizontal);
    Click({400, 200});
    EXPECT_EQ(Stored(1, 0).size(), 1u);
    EXPECT_EQ(Stored(0, 0).size(), 1u);
    view->Show(chart);
    EXPECT_EQ(Board().LineCount(), 1);
    EXPECT_EQ(Point(240, 100), middle);
    EXPECT_TRUE(IsPainted(*view, Kind::Segment, middle));
    view->Show({});
    EXPECT_EQ(Board().LineCount(), 0);
    Board().ChooseTool(Kind::Line);
    EXPECT_FALSE(Board().Tool()) << "Nothing to draw on.";
}

TEST_F(TrendLineDrawing, AnotherViewOfTheSymbolShowsTheLineAtOnce) {
    const auto other = MakeView(chart);
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
    prompts.Meanwhile([] { Repository().SendTLineUpdate2AllTechView(); });
    Board().DeleteAll();
    EXPECT_EQ(Stored(), Lines{foreign});
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
    const auto second = MakeView(chart);
    EXPECT_EQ(notices.size(), 1) << "Once.";
    EXPECT_EQ(Board().LineCount(), 1);

    Drag(Point(220, 95), Point(220, 105));
    DrawLine(Kind::Line, At(200, 98), At(240, 98));
    Lines stored = Stored();
    ASSERT_EQ(stored.size(), 7u);
    EXPECT_EQ(DecodeTrendLine(stored[2])->anchors.size(), 2u) << "In its place.";
    EXPECT_NE(stored[2], drawn);
    Key(Qt::Key_Delete);
    Click(Point(220, 105));
    Key(Qt::Key_Delete);
    EXPECT_EQ(Stored(), Lines(std::begin(kept), std::end(kept)));
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
    EXPECT_EQ(Stored(), (Lines{one, one}));
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
    Press(Point(220, 95));
    Move(Point(225, 98));
    g_store.trendLines.clear();
    Reload();
    Move(Point(230, 99));
    Release(Point(230, 99));
    EXPECT_TRUE(Stored().empty());
    EXPECT_EQ(Board().Selected(), -1);

    // Other lines come while one is moved.
    DrawLine(Kind::Segment, At(200, 95), At(240, 95));
    Press(Point(220, 95));
    Move(Point(220, 100));
    const CString key = SymbolKey();
    g_store.trendLines[kTechViewClass][key][0].second.push_back("2002/1565c0/1/0/0/16100,103");
    Reload();
    Move(Point(220, 105));
    Release(Point(220, 105));
    ASSERT_EQ(Stored().size(), 2u);
    ExpectNear(DecodeTrendLine(Stored()[0])->anchors, {At(200, 105), At(240, 105)});

    // Gone without this terminal knowing when the move ends.
    QSignalSpy notices(&Board(), &DrawingBoard::notice);
    Press(Point(220, 105));
    Move(Point(220, 95));
    g_store.trendLines.clear();
    g_store.reloadFlag = true;
    Release(Point(220, 95));
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
    view = MakeView(chart);
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
    EXPECT_EQ(symbols[0].symbol, chart.symbol);
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
