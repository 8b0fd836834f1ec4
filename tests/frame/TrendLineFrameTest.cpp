// Trend lines in the frame: the drawing toolbar and menu, the list of symbols, and what other
// windows, later runs and other terminals see.

#include "tests/frame/FrameFixture.h"

#include "platform/ui/TextBridge.h"
#include "terminal/frame/openers/TrendLineListDialog.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/lines/TrendLineStore.h"
#include "terminal/plot/PlotMapping.h"
#include "tests/support/DialogDriver.h"

#include <qcustomplot.h>
#include <QContextMenuEvent>

namespace ta::test {
namespace {

using terminal::Command;
using terminal::TrendLineKind;
using terminal::TrendLineListDialog;

constexpr std::uint8_t kUsMarket = 2;
const BarsKey kDaily{kUsMarket, "SPX", 0, 0};
const CString kSomeLine = "2004/2a7fff/1/0/0/17900,100/17950,110";

class TrendLineFrame : public FrameTest {
protected:
    terminal::DrawingBoard& Board() { return Chart().Drawings(); }
    QCustomPlot* Plot() { return Chart().findChild<QCustomPlot*>(); }
    bool IsChecked(Command command) { return Action(command).isChecked(); }
    bool IsEnabled(Command command) { return Action(command).isEnabled(); }
    void PressTool(Command command) {
        auto* bar = Window().findChild<terminal::DrawingBar*>();
        QTest::mouseClick(bar->widgetForAction(&Action(command)), Qt::LeftButton);
    }
    /// Clicks at shares of the price pane's width and height.
    void Click(double x, double y) {
        const terminal::PlotMapping mapping = Chart().Mapping();
        const auto& pane = mapping.panes.front();
        QTest::mouseClick(
            Plot(), Qt::LeftButton, {},
            QPointF(mapping.left + x * mapping.width, pane.top + y * pane.height).toPoint());
    }
    void DrawSegment(double y) {
        Choose(Command::DrawSegment);
        Click(0.3, y);
        Click(0.6, y);
    }
    /// What another terminal saves.
    void InOther(const std::function<void(terminal::SqliteStore&)>& save) {
        terminal::SqliteStore other;
        ASSERT_EQ(other.Open(StorePath()).state, terminal::OpenResult::Opened);
        save(other);
        other.PackFile();
    }
    /// Another terminal saves this list of groups, all of them new, and these lines of SPX.
    void SaveInOther(const std::vector<CString>& groups, const std::vector<CString>& lines) {
        InOther([&](terminal::SqliteStore& other) {
            other.SaveTAGroupNameList(groups);
            for (unsigned i = 0; i < groups.size(); ++i) {
                other.SaveTAGroupUniNum(i, ++m_newUniNum);
            }
            other.SaveTATrendLine(kTechViewClass, "02/SPX", {{"02/SPX/0000/0/price", lines}});
        });
    }
    /// Opens the list by its command; `action` closes it.
    void InList(const std::function<void(TrendLineListDialog&)>& action) {
        m_driver.Expect(
            [action](QWidget& dialog) { action(dynamic_cast<TrendLineListDialog&>(dialog)); });
        Choose(Command::ListLines);
    }
    static QTableWidget& Table(const TrendLineListDialog& list) {
        return *list.findChild<QTableWidget*>();
    }
    static QString Cell(const TrendLineListDialog& list, int row, int column) {
        return Table(list).item(row, column)->text();
    }
    static int Rows(const TrendLineListDialog& list) { return Table(list).rowCount(); }
    static void Press(QWidget& widget, std::initializer_list<Qt::Key> keys) {
        for (const Qt::Key key : keys) {
            QTest::keyClick(&widget, key);
        }
    }

    DialogDriver m_driver;
    int m_newUniNum = 70;
};

TEST_F(TrendLineFrame, TheToolbarFollowsTheDrawing) {
    EXPECT_TRUE(IsChecked(Command::DrawPointer));
    EXPECT_FALSE(IsEnabled(Command::DeleteAllLines));
    PressTool(Command::DrawSegment);
    EXPECT_EQ(Board().Tool(), TrendLineKind::Segment);
    EXPECT_TRUE(IsChecked(Command::DrawSegment));
    QTest::keyClick(&Chart(), Qt::Key_Escape);
    EXPECT_TRUE(IsChecked(Command::DrawPointer));

    DrawSegment(0.5);
    EXPECT_TRUE(IsChecked(Command::DrawPointer));
    EXPECT_TRUE(IsEnabled(Command::DeleteLine));
    Click(0.45, 0.8);
    EXPECT_FALSE(IsEnabled(Command::DeleteLine));
    Choose(Command::SelectLine);
    Choose(Command::DeleteLine);
    EXPECT_EQ(Board().LineCount(), 0);
    EXPECT_FALSE(IsEnabled(Command::SelectLine));
}

TEST_F(TrendLineFrame, TheHintGoesWithTheTool) {
    DrawSegment(0.5);
    EXPECT_EQ(Status(), "") << "It is drawn.";
    PressTool(Command::DrawRailLine);
    const QString rails = Status();
    EXPECT_NE(rails, "");
    Click(0.2, 0.3);
    Click(0.5, 0.2);
    EXPECT_EQ(Status(), rails) << "One point is to come.";
    Click(0.4, 0.4);
    EXPECT_EQ(Board().LineCount(), 2);
    EXPECT_EQ(Status(), "");
    PressTool(Command::DrawHorizontal);
    const QString horizontal = Status();
    PressTool(Command::DrawGoldenCut);
    EXPECT_NE(Status(), horizontal) << "Another tool, another hint.";

    const std::pair<const char*, std::function<void()>> ends[] = {
        {"pointer", [this] { PressTool(Command::DrawPointer); }},
        {"Escape",
         [this] {
             Click(0.5, 0.5);
             QTest::keyClick(&Chart(), Qt::Key_Escape);
         }},
        {"right click",
         [this] {
             QContextMenuEvent click(QContextMenuEvent::Mouse, {200, 200}, Window().pos());
             QApplication::sendEvent(Plot(), &click);
         }},
        {"new tab", [this] { Choose(Command::NewTab); }},
        {"period", [this] { Tabs().SelectPeriod(1); }},
        {"closed tab", [this] { Tabs().Close(1); }},
    };
    for (const auto& [name, end] : ends) {
        PressTool(Command::DrawLine);
        EXPECT_NE(Status(), "") << name;
        end();
        EXPECT_EQ(Status(), "") << name;
    }
}

TEST_F(TrendLineFrame, ToolsWorkOnTheChartInFront) {
    Choose(Command::DrawSegment);
    Click(0.3, 0.5);
    Choose(Command::NewTab);
    EXPECT_TRUE(IsChecked(Command::DrawPointer));
    EXPECT_FALSE(Tabs().ChartAt(0)->Drawings().Tool()) << "Dropped with its tab.";
    DrawSegment(0.5);
    EXPECT_EQ(Tabs().ChartAt(0)->Drawings().LineCount(), 1);
    Tabs().Close(1);
    EXPECT_TRUE(IsEnabled(Command::DeleteAllLines));
    m_prompts.ExpectYesNo(true);
    Choose(Command::DeleteAllLines);
    EXPECT_EQ(Board().LineCount(), 0);
}

TEST_F(TrendLineFrame, LinesAreThereInTheNextRun) {
    DrawSegment(0.5);
    DrawSegment(0.6);
    const auto drawn = Board().Lines();
    ASSERT_EQ(drawn.size(), 2u);
    const CString date = Repository().GetTrendLineSymbolUpdTime(kTechViewClass, kUsMarket, "SPX");
    EXPECT_EQ(date.size(), 10u);
    End();
    Start();
    EXPECT_EQ(Board().Lines(), drawn);
    EXPECT_EQ(Repository().GetTrendLineSymbolUpdTime(kTechViewClass, kUsMarket, "SPX"), date);
}

TEST_F(TrendLineFrame, TheLinesOfAnotherTerminalAppearAndStay) {
    DrawSegment(0.5);
    terminal::SqliteStore other;
    ASSERT_EQ(other.Open(StorePath()).state, terminal::OpenResult::Opened);
    TrendLineListDialog list(Session().Markets(), &Window());
    list.show();
    EXPECT_EQ(Cell(list, 0, 1), "1");
    TrendLinesByType lines;
    ASSERT_TRUE(other.LoadTATrendLine(kTechViewClass, "02/SPX", lines));
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].first, "02/SPX/0000/0/price");
    lines[0].second.push_back(kSomeLine);
    other.SaveTATrendLine(kTechViewClass, "02/SPX", lines);
    other.PackFile();
    ASSERT_TRUE(Await([this] { return Board().LineCount() == 2; }));
    EXPECT_EQ(Cell(list, 0, 1), "2") << "The list is told too.";
    DrawSegment(0.6);
    bool reload = false;
    ASSERT_TRUE(Await([&] { return other.GetTASettingReloadType(reload) && reload; }));
    other.SetTASettingReloadType(false);
    other.LoadTATrendLine(kTechViewClass, "02/SPX", lines);
    ASSERT_EQ(lines[0].second.size(), 3u);
    EXPECT_EQ(lines[0].second[1], kSomeLine);
}

TEST_F(TrendLineFrame, AReloadWhileALineIsHalfDrawnChangesTheRestAndNotTheDrawing) {
    DrawSegment(0.5);
    Choose(Command::DrawParallel);
    Click(0.3, 0.4);
    Click(0.6, 0.3);
    // The chart's group and its draw info go, other lines come.
    SaveInOther({"New", "Newer"}, {kSomeLine, "2002/2a7fff/1/0/0/17950,110"});
    ASSERT_TRUE(Await([this] { return GroupsInBox() == QStringList({"New", "Newer"}); }));
    EXPECT_EQ(Chart().GroupName(), "New");
    EXPECT_TRUE(Status().contains("New")) << "The notice of the group.";
    EXPECT_EQ(Board().LineCount(), 2);
    EXPECT_EQ(Board().Tool(), TrendLineKind::Parallel);
    EXPECT_TRUE(IsChecked(Command::DrawParallel));
    Chart().grab();
    Click(0.4, 0.2);
    EXPECT_EQ(Board().LineCount(), 3);
    EXPECT_EQ(Board().Lines().back().kind, TrendLineKind::Parallel);
    EXPECT_EQ(Board().Selected(), 2);

    // A line that is under the mouse goes.
    QTest::mousePress(Plot(), Qt::LeftButton);
    SaveInOther({"Newest"}, {});
    ASSERT_TRUE(Await([this] { return GroupsInBox() == QStringList("Newest"); }));
    QTest::mouseRelease(Plot(), Qt::LeftButton);
    EXPECT_EQ(Board().LineCount(), 0);
    EXPECT_FALSE(IsEnabled(Command::DeleteAllLines));
    Chart().grab();
}

TEST_F(TrendLineFrame, AReloadWhileTheListIsOpenIsShownThere) {
    DrawSegment(0.5);
    terminal::AddTrendLine({16, "9901", 3, 5}, kSomeLine);
    InList([this](TrendLineListDialog& list) {
        Press(Table(list), {Qt::Key_End, Qt::Key_Down});
        EXPECT_EQ(Rows(list), 2);
        EXPECT_EQ(list.Chosen()->symbol, "9901");
        InOther([](terminal::SqliteStore& other) {
            other.SaveTATrendLine(kTechViewClass, "02/AMZN",
                                  {{"02/AMZN/0000/0/price", {kSomeLine}}});
        });
        EXPECT_TRUE(Await([&] { return Rows(list) == 3; }));
        EXPECT_EQ(Cell(list, 2, 0), "9901 模擬電子");
        EXPECT_EQ(list.Chosen()->symbol, "9901") << "The choice follows its symbol.";
        SaveInOther({"New"}, {});
        EXPECT_TRUE(Await([&] { return Rows(list) == 2; }));
        EXPECT_EQ(list.Chosen()->symbol, "9901");
        EXPECT_EQ(Chart().GroupName(), "New");
        EXPECT_EQ(Board().LineCount(), 0);

        // All goes, and something else comes, while the question is open.
        m_prompts.ExpectYesNo(false);
        m_prompts.Meanwhile([&] {
            InOther(
                [](terminal::SqliteStore& other) { other.RemoveAllTrendLineData(kTechViewClass); });
            EXPECT_TRUE(Await([&] { return Rows(list) == 0; }));
        });
        QTest::mouseClick(list.findChild<QPushButton*>("clearButton"), Qt::LeftButton);
        EXPECT_FALSE(list.Chosen());
        SaveInOther({"Newer"}, {kSomeLine});
        EXPECT_TRUE(Await([&] { return Rows(list) == 1; }));
        EXPECT_EQ(Board().LineCount(), 1);
        list.grab();
        Press(list, {Qt::Key_Return});
    });
    EXPECT_EQ(Chart().SymbolId(), "SPX");
    EXPECT_EQ(Chart().GroupName(), "Newer");
    EXPECT_EQ(Board().LineCount(), 1);
}

TEST_F(TrendLineFrame, TheListNamesSymbolsKindsAndOpensThem) {
    DrawSegment(0.5);
    terminal::AddTrendLine({16, "9901", 3, 5}, "2007/a/b/c/0/x");
    terminal::AddTrendLine({16, "9901", 3, 5}, "2003/a/b/c/0/x");
    terminal::AddTrendLine({16, "9901", 3, 5}, "unreadable");
    terminal::AddTrendLine({9, "GONE", 0, 0}, kSomeLine);
    TrendLineListDialog list(Session().Markets(), &Window());
    ASSERT_EQ(Rows(list), 3);
    EXPECT_EQ(Cell(list, 0, 0), "SPX S&P 500 指數");
    EXPECT_EQ(Cell(list, 0, 2), "線段 1");
    EXPECT_EQ(Cell(list, 0, 3).size(), 10);
    EXPECT_EQ(Cell(list, 1, 0), "GONE") << "A symbol that is not known.";
    EXPECT_EQ(Cell(list, 2, 0), "9901 模擬電子");
    EXPECT_EQ(Cell(list, 2, 1), "3");
    EXPECT_EQ(Cell(list, 2, 2), "種類 2003 1、股票箱 1、無法辨識 1");

    InList([](TrendLineListDialog& shown) {
        Press(Table(shown), {Qt::Key_End, Qt::Key_Down, Qt::Key_Down, Qt::Key_Return});
    });
    EXPECT_EQ(Chart().SymbolId(), "9901");
    EXPECT_EQ(std::pair(Chart().Period(), Chart().Count()), std::pair(3, 5)) << "Where lines are.";
    InList([](TrendLineListDialog& shown) { Press(shown, {Qt::Key_Escape}); });
    EXPECT_EQ(Chart().SymbolId(), "9901");
}

TEST_F(TrendLineFrame, AClassIsClearedAfterAQuestion) {
    DrawSegment(0.5);
    terminal::AddTrendLine({16, "9901", 0, 0}, kSomeLine);
    Repository().AddTrendLineData("Other", "10/9901", "price", 0, kSomeLine, 0);
    Repository().SaveTrendLineData();
    TrendLineListDialog list(Session().Markets(), &Window());
    list.show();
    ASSERT_EQ(Rows(list), 3);
    auto* clear = list.findChild<QPushButton*>("clearButton");
    m_prompts.ExpectYesNo(false);
    QTest::mouseClick(clear, Qt::LeftButton);
    const QString question = m_prompts.Last().text;
    EXPECT_TRUE(question.contains("MXTechView") && question.contains('2'))
        << question.toStdString();
    EXPECT_EQ(Rows(list), 3);
    m_prompts.ExpectYesNo(true);
    QTest::mouseClick(clear, Qt::LeftButton);
    ASSERT_EQ(Rows(list), 1);
    EXPECT_EQ(Cell(list, 0, 4), "Other");
    EXPECT_EQ(Board().LineCount(), 0);
    m_prompts.ExpectYesNo(true);
    QTest::mouseClick(clear, Qt::LeftButton);
    EXPECT_EQ(Rows(list), 0);
    EXPECT_FALSE(clear->isEnabled());
    EXPECT_FALSE(list.Chosen());
    EXPECT_TRUE(terminal::ListTrendLineSymbols().empty());
}

}  // namespace
}  // namespace ta::test
