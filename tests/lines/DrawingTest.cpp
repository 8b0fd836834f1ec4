// What the user's mouse and keys make of trend lines, in the view, the settings repository and the
// store.

#include "platform/ui/PenSamples.h"
#include "settings/Messages.h"
#include "settings/TrendLineKeys.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/lines/LinePens.h"
#include "terminal/lines/TrendLine.h"
#include "terminal/lines/TrendLineGeometry.h"
#include "terminal/lines/TrendLineStore.h"
#include "tests/chart/ChartFixture.h"
#include "tests/support/DialogDriver.h"

#include <fmt/format.h>

#include <QContextMenuEvent>
#include <QMenu>
#include <QSettings>

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
        const QColor wanted = QColor::fromRgb(InfoOf(kind).pen.colour);
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
    EXPECT_EQ(Menu(Point(260, 105)), QStringList({"復原「繪製線段」", "刪除此圖全部畫線"}));
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

TEST_F(TrendLineDrawing, DeletingTellsWhatOthersHaveTakenMeanwhile) {
    const CString mine = "2021/1565c0/1/0/0/16200,95/16240,95";
    const CString theirs = "2004/1565c0/1/0/0/16200,98/16240,98";
    const CString another = "2004/1565c0/1/0/0/16200,99/16240,99";
    Store({mine, mine, theirs, another, "odd"});
    QSignalSpy notices(&Board(), &DrawingBoard::notice);
    const auto leave = [&](const Lines& lines) {
        g_store.trendLines[kTechViewClass][SymbolKey()][0].second = lines;
        g_store.reloadFlag = true;
    };
    Board().Select(another);
    leave({mine, mine, theirs, "odd"});
    Key(Qt::Key_Delete);
    ASSERT_EQ(notices.size(), 1);
    EXPECT_EQ(notices.takeLast()[0], "這條畫線已在別處修改或刪除，維持現狀。");
    prompts.ExpectYesNo(true);
    prompts.Meanwhile([&] { leave({mine, mine, "odd"}); });
    Board().DeleteAll();
    ASSERT_EQ(notices.size(), 1) << "Equal lines are one.";
    EXPECT_EQ(notices.takeLast()[0],
              "「刪除 2 條畫線」：其中 1 條畫線已在別處修改或刪除，維持現狀。");
    EXPECT_EQ(Board().UndoName(), "刪除線段") << "What was removed.";
    EXPECT_EQ(Board().DeleteLines(chart, {"odd"}), 0);
    EXPECT_EQ(Board().UndoName(), "刪除無法辨識");
}

// ---- Pens ----

TEST_F(TrendLineDrawing, PensAreChosenForALineAndTakenByTheNextOfItsKind) {
    const QString ini = folder.filePath("window.ini");
    const auto write = [&](const QByteArray& bytes) {
        QFile file(ini);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    };
    write("[frame]\ncurrentTab=4\n[linePens]\n2004=ff0000/3/2\n2002=ff0000/0/9\n2009=x\n");
    {
        LinePens pens(ini);
        EXPECT_EQ(pens.Of(Kind::Line), (LinePen{0xff0000, 3, 0})) << "A wide line is solid.";
        EXPECT_EQ(pens.Of(Kind::Horizontal), InfoOf(Kind::Horizontal).pen);
        DrawLine(Kind::Segment, At(200, 95), At(240, 95));
        test::DialogDriver driver;
        const auto choose = [&](const std::vector<const char*>& samples, Qt::Key end) {
            driver.Expect([samples, end](QWidget& dialog) {
                for (const char* sample : samples) {
                    QTest::mouseClick(dialog.findChild<ui::PenSample*>(sample), Qt::LeftButton);
                }
                QTest::keyClick(&dialog, end);
            });
        };
        choose({"width1Sample", "style2Sample"}, Qt::Key_Return);
        Menu(Point(220, 95), "樣式與粗細");
        EXPECT_EQ(OnlyLine().pen, (LinePen{0x2a7fff, 1, 2}));
        choose({"width4Sample"}, Qt::Key_Escape);
        Board().ChangePen();
        prompts.ExpectColour(QColor(0x00, 0x80, 0x01));
        Menu(Point(220, 95), "顏色");
        EXPECT_EQ(prompts.Last().preset, "#2a7fff");
        prompts.ExpectCancel(test::ScriptedPrompts::Kind::Colour);
        Board().ChangeColour();
        EXPECT_EQ(OnlyLine().pen, (LinePen{0x008001, 1, 2}));
        DrawLine(Kind::Segment, At(200, 100), At(240, 100));
        EXPECT_EQ(Board().SelectedLine()->pen, (LinePen{0x008001, 1, 2}));
        DrawLine(Kind::Parallel, At(200, 98), At(240, 98));
        Click(Point(240, 102));
        EXPECT_EQ(Board().SelectedLine()->pen, InfoOf(Kind::Parallel).pen);
        EXPECT_EQ(Board().LineCount(), 3);
    }
    EXPECT_EQ(PenOfNewLine(Kind::Segment), InfoOf(Kind::Segment).pen);
    const LinePens next(ini);
    EXPECT_EQ(PenOfNewLine(Kind::Segment), (LinePen{0x008001, 1, 2}));
    EXPECT_EQ(QSettings(ini, QSettings::IniFormat).value("frame/currentTab"), 4);
}

/// How long the pieces and gaps of a black line are, from its first pixel on, but the last.
std::vector<int> Pattern(const QImage& image, int y, int from, int to) {
    std::vector<int> runs;
    bool inked = false;
    for (int x = from; x < to; ++x) {
        if ((image.pixelColor(x, y) == Qt::black) != inked) {
            inked = !inked;
            runs.push_back(0);
        }
        if (!runs.empty()) {
            ++runs.back();
        }
    }
    if (!runs.empty()) {
        runs.pop_back();
    }
    return runs;
}

TEST_F(TrendLineDrawing, SamplesLookAsTheLinesOfTheChart) {
    for (int style = 0; style < 5; ++style) {
        for (const int width : {1, 3}) {
            g_store.trendLines.clear();
            Store({fmt::format("2021/000000/{}/{}/0/16200,92/16290,92", width, style)});
            const QPoint begin = Point(200, 92);
            const QImage drawn = view->grab().toImage();
            ui::PenSample sample;
            sample.resize(Point(290, 92).x() - begin.x(), 11);
            QPalette black;
            black.setColor(QPalette::WindowText, Qt::black);
            sample.setPalette(black);
            sample.SetPen(style, width);
            const int length = sample.width();
            const std::vector<int> ofSample = Pattern(sample.grab().toImage(), 5, 0, length);
            std::vector<int> ofChart;
            for (int y = begin.y() - 1; y <= begin.y() + 1 && ofChart.empty(); ++y) {
                ofChart = Pattern(drawn, y, begin.x(), begin.x() + length - 5);
            }
            EXPECT_EQ(ofSample.size() > 40, style > 0) << style;
            ofChart.resize(std::min(ofChart.size(), ofSample.size()));
            EXPECT_LE(ofSample.size(), ofChart.size() + 4);
            EXPECT_TRUE(std::equal(ofChart.begin(), ofChart.end(), ofSample.begin()))
                << style << ' ' << width;
        }
    }
}

// ---- Undo ----

TEST_F(TrendLineDrawing, EveryEditIsUndoneAndDoneAgain) {
    Store({"2007/a/b/c/1/x", "2004/mess", "2021/1565c0/1/0/0/16100,95/16140,95"});
    std::vector<Lines> states{Stored()};
    QStringList names;
    const auto did = [&](const char* name) {
        EXPECT_EQ(Board().UndoName(), name);
        names << name;
        states.push_back(Stored());
        EXPECT_NE(states[states.size() - 2], states.back()) << name;
    };
    DrawLine(Kind::Segment, At(200, 95), At(240, 95));
    did("繪製線段");
    Drag(Point(220, 95), Point(220, 105));
    did("移動線段");
    test::DialogDriver driver;
    driver.Expect([](QWidget& dialog) {
        QTest::mouseClick(dialog.findChild<ui::PenSample*>("width5Sample"), Qt::LeftButton);
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    Board().ChangePen();
    did("變更線段的樣式與粗細");
    prompts.ExpectColour(Qt::red);
    Board().ChangeColour();
    did("變更線段的顏色");
    Board().LockSelected(true);
    Board().LockSelected(true);
    did("鎖定線段");
    Board().ToggleLock();
    did("解除鎖定線段");
    DrawLine(Kind::Line, At(200, 98), At(240, 98));
    did("繪製趨勢線");
    Key(Qt::Key_Delete);
    did("刪除趨勢線");
    prompts.ExpectYesNo(true);
    Board().DeleteAll();
    did("刪除 2 條畫線");

    for (std::size_t i = states.size() - 1; i > 0; --i) {
        EXPECT_EQ(Board().UndoName(), names[static_cast<int>(i) - 1]);
        Board().Undo();
        EXPECT_EQ(Stored(), states[i - 1]) << names[static_cast<int>(i) - 1].toStdString();
        EXPECT_EQ(Board().RedoName(), names[static_cast<int>(i) - 1]);
    }
    Board().Undo();
    EXPECT_EQ(Board().UndoName(), "");
    language.Select(Language::English);
    EXPECT_EQ(Board().RedoName(), "Draw Line segment");
    for (std::size_t i = 1; i < states.size(); ++i) {
        Board().Redo();
        EXPECT_EQ(Stored(), states[i]) << names[static_cast<int>(i) - 1].toStdString();
    }
    Board().Undo();
    Board().Undo();
    EXPECT_EQ(Board().SelectedLine()->kind, Kind::Line) << "What came back is selected.";
    Board().ToggleLock();
    EXPECT_EQ(Board().RedoName(), "") << "Another edit was made instead.";
}

TEST_F(TrendLineDrawing, AnUndoLeavesWhatOthersHaveChanged) {
    QSignalSpy notices(&Board(), &DrawingBoard::notice);
    const auto told = [&] {
        return notices.isEmpty() ? QString() : notices.takeLast()[0].toString();
    };
    DrawLine(Kind::Segment, At(200, 95), At(240, 95));
    Drag(Point(220, 95), Point(220, 105));
    // Another terminal has moved it, and this one does not know yet.
    const CString theirs = "2021/1565c0/1/0/0/16200,92/16240,92";
    g_store.trendLines[kTechViewClass][SymbolKey()][0].second = {theirs};
    g_store.reloadFlag = true;
    for (const char* step : {"移動線段", "繪製線段"}) {
        EXPECT_EQ(Board().UndoName(), step);
        Board().Undo();
        EXPECT_EQ(told(), QString("「%1」：畫線已在別處修改或刪除，維持現狀。").arg(step));
        EXPECT_EQ(Stored(), Lines{theirs});
    }
    EXPECT_EQ(Board().UndoName() + Board().RedoName(), "") << "It does not come back.";

    DrawLine(Kind::Line, At(200, 98), At(240, 98));
    const CString mine = Stored()[1];
    prompts.ExpectYesNo(true);
    Board().DeleteAll();
    Board().Undo();
    EXPECT_EQ(told(), "已復原「刪除 2 條畫線」。");
    EXPECT_EQ(Stored(), (Lines{theirs, mine}));
    const CString changed = "2021/1565c0/1/0/1/16200,92/16240,92";
    EditTrendLines(chart, {{theirs, changed}});
    Board().Redo();
    EXPECT_EQ(told(), "「刪除 2 條畫線」：其中 1 條畫線已在別處修改或刪除，維持現狀。");
    EXPECT_EQ(Stored(), Lines{changed});

    g_entitlement.maxLinesPerSymbol = 1;
    Board().SelectNext();
    prompts.ExpectMessage();
    Board().Undo();
    EXPECT_EQ(Board().Selected(), 0) << "Nothing was done.";
    EXPECT_TRUE(prompts.Last().text.contains("這個商品"));
    EXPECT_EQ(Stored(), Lines{changed});
    g_entitlement.maxLinesPerSymbol = -1;
    Board().Undo();
    EXPECT_EQ(Stored(), (Lines{changed, mine})) << "It can be done when there is room again.";
}

TEST_F(TrendLineDrawing, EachChartHasStepsOfItsOwn) {
    const auto other = MakeView(chart);
    DrawLine(Kind::Segment, At(200, 95), At(240, 95));
    EXPECT_EQ(other->Drawings().UndoName(), "");
    view->Show({kUser, chart.symbol, 1, 0});
    EXPECT_EQ(Board().UndoName(), "");
    Board().ChooseTool(Kind::Horizontal);
    Click({400, 200});
    EXPECT_EQ(Board().UndoName(), "繪製水平線");
    view->Show(chart);
    EXPECT_EQ(Board().UndoName(), "繪製線段");
    Board().ChooseTool(Kind::Line);
    Click(Point(200, 98));
    Board().Undo();
    EXPECT_FALSE(Board().Tool()) << "The drawing under way goes first.";
    EXPECT_EQ(Stored().size(), 1u);
    Board().Undo();
    EXPECT_TRUE(Stored().empty());
    EXPECT_EQ(Stored(1, 0).size(), 1u);
    // The menu key offers it where no line is left.
    QContextMenuEvent key(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(view.get(), &key);
    auto* menu = view->findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->actions().size(), 1);
    menu->actions()[0]->trigger();
    delete menu;
    EXPECT_EQ(Stored().size(), 1u);
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
    EXPECT_EQ(Board().UndoName(), "繪製線段");
    Board().Undo();
    EXPECT_EQ(Board().UndoName(), "") << "What was there already was no step.";
    Store({one, other, one});
    EXPECT_EQ(Board().LineCount(), 3);
    const TrendLineResult moved = EditTrendLines(chart, {{other, one}});
    EXPECT_EQ(Stored(), (Lines{one, one})) << "Moved onto its neighbour.";
    EXPECT_EQ(EditTrendLines(chart, {{other, one}}).missing, 1);
    EditTrendLines(chart, moved.back);
    EXPECT_EQ(Stored(), (Lines{one, other, one})) << "The neighbour stays.";
    EditTrendLines(chart, Removing({other}));
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
    const QString gone = "這條畫線已在別處修改或刪除，維持現狀。";
    QSignalSpy notices(&Board(), &DrawingBoard::notice);
    Press(Point(220, 95));
    Move(Point(225, 98));
    g_store.trendLines.clear();
    Reload();
    Move(Point(230, 99));
    Release(Point(230, 99));
    ASSERT_EQ(notices.size(), 1);
    EXPECT_EQ(notices.takeLast()[0], gone);
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

    // Others come with the edit itself: what was edited is selected all the same.
    const auto comes = [&](const char* line) {
        g_store.trendLines[kTechViewClass][key][0].second.push_back(line);
        g_store.reloadFlag = true;
    };
    comes("2002/1565c0/1/0/0/16100,102");
    Drag(Point(220, 105), Point(220, 107));
    EXPECT_EQ(Board().Selected(), 0);
    Board().ChooseTool(Kind::Line);
    Click(Point(200, 92));
    comes("2002/1565c0/1/0/0/16100,101");
    Click(Point(240, 92));
    ASSERT_NE(Board().SelectedLine(), nullptr);
    EXPECT_EQ(Board().SelectedLine()->kind, Kind::Line);

    // Gone without this terminal knowing when the move ends.
    Press(Point(220, 107));
    Move(Point(220, 95));
    g_store.trendLines.clear();
    g_store.reloadFlag = true;
    Release(Point(220, 95));
    ASSERT_EQ(notices.size(), 1);
    EXPECT_EQ(notices.takeLast()[0], gone);
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

TEST_F(TrendLineDrawing, LinesAreListedByChart) {
    EXPECT_TRUE(ListTrendLines().empty());
    DrawLine(Kind::Segment, At(200, 95), At(240, 95));
    const Lines drawn = Stored();
    Store({"2004/////", "", "2007/////", "rubbish", "2007/////"}, "0003/5/other");
    g_store.trendLines["Other"]["0a/2330"] = {{"0a/2330/0001/0/price", {"2003/////"}}};
    g_store.trendLines[kTechViewClass]["nokey"] = {{"x", {"2003/////"}}};
    g_store.trendLines[kTechViewClass]["0a/2330"] = {{"0a/2330/0001/0/price", {"2003/////"}},
                                                     {"0a/2330/99/-1/price", {"2004/////"}},
                                                     {"/", {"x"}}};
    Reload();
    const BarsKey minutes{kUser, chart.symbol, 3, 5};
    const std::vector<ListedTrendLine> lines = ListTrendLines();
    EXPECT_EQ(lines, (std::vector<ListedTrendLine>{{{10, "2330", 1, 0}, "price", "2003/////", ""},
                                                   {chart, "price", drawn[0], "2023-11-14"},
                                                   {minutes, "other", "2004/////", "2023-11-14"},
                                                   {minutes, "other", "2007/////", "2023-11-14"},
                                                   {minutes, "other", "rubbish", "2023-11-14"}}));
    EXPECT_EQ(EditTrendLines(minutes, Removing({"2007/////"})).missing, 1) << "on the prices";
    EditTrendLines(minutes, Removing({"2007/////", "rubbish"}), "other");
    EXPECT_EQ(ListTrendLines().size(), 3u);
    EXPECT_EQ(TrendLineKindName(2007), "股票箱");
    EXPECT_EQ(TrendLineKindName(2003), "種類 2003");
}

}  // namespace
}  // namespace ta::terminal
