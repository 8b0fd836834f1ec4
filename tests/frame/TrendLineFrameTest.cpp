// Trend lines in the frame: the drawing toolbar and menu, the list of symbols, and what other
// windows, later runs and other terminals see.

#include "tests/frame/FrameFixture.h"

#include "platform/ui/TextBridge.h"
#include "terminal/frame/TrendLineListDialog.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/lines/TrendLineStore.h"
#include "terminal/plot/PlotMapping.h"

#include <qcustomplot.h>
#include <QContextMenuEvent>
#include <QStatusBar>

namespace ta::test {
namespace {

using terminal::Command;
using terminal::TrendLineKind;

constexpr std::uint8_t kUsMarket = 2;
const BarsKey kDaily{kUsMarket, "SPX", 0, 0};
const CString kSomeLine = "2004/2a7fff/1/0/0/17900,100/17950,110";

class TrendLineFrame : public FrameTest {
protected:
    terminal::DrawingBoard& Board() { return Chart().Drawings(); }
    bool IsChecked(Command command) { return Window().GetCommands().At(command).isChecked(); }
    bool IsEnabled(Command command) { return Window().GetCommands().At(command).isEnabled(); }
    /// Clicks at shares of the price pane's width and height.
    void Click(double x, double y) {
        const terminal::PlotMapping mapping = Chart().Mapping();
        const auto& pane = mapping.panes.front();
        QTest::mouseClick(
            Chart().findChild<QCustomPlot*>(), Qt::LeftButton, {},
            QPointF(mapping.left + x * mapping.width, pane.top + y * pane.height).toPoint());
    }
    QString Status() { return Window().statusBar()->currentMessage(); }
    /// Another terminal saves this list of groups, and these lines of SPX.
    void SaveInOther(const std::vector<CString>& groups, const std::vector<CString>& lines) {
        terminal::SqliteStore other;
        ASSERT_EQ(other.Open(StorePath()).state, terminal::OpenResult::Opened);
        other.SaveTAGroupNameList(groups);
        for (unsigned i = 0; i < groups.size(); ++i) {
            other.SaveTAGroupUniNum(i, ++m_newUniNum);
        }
        other.SaveTATrendLine(kTechViewClass, "02/SPX", {{"02/SPX/0000/0/price", lines}});
    }
    void DrawSegment(double y) {
        Choose(Command::DrawSegment);
        Click(0.3, y);
        Click(0.6, y);
    }
    int m_newUniNum = 70;  ///< of groups that another terminal saves, all of them new
    static QString Cell(const terminal::TrendLineListDialog& list, int row, int column) {
        return list.findChild<QTableWidget*>()->item(row, column)->text();
    }
    static int Rows(const terminal::TrendLineListDialog& list) {
        return list.findChild<QTableWidget*>()->rowCount();
    }
};

TEST_F(TrendLineFrame, TheToolbarFollowsTheDrawing) {
    EXPECT_TRUE(IsChecked(Command::DrawPointer));
    EXPECT_FALSE(IsEnabled(Command::DeleteAllLines));
    auto* bar = Window().findChild<terminal::DrawingBar*>();
    QAction& tool = Window().GetCommands().At(Command::DrawSegment);
    EXPECT_EQ(tool.text(), "線段");
    QTest::mouseClick(bar->widgetForAction(&tool), Qt::LeftButton);
    EXPECT_EQ(Board().Tool(), TrendLineKind::Segment);
    EXPECT_TRUE(IsChecked(Command::DrawSegment));
    EXPECT_FALSE(Window().statusBar()->currentMessage().isEmpty()) << "What to do.";
    QTest::keyClick(&Chart(), Qt::Key_Escape);
    EXPECT_TRUE(IsChecked(Command::DrawPointer));
    EXPECT_TRUE(Window().statusBar()->currentMessage().isEmpty());

    DrawSegment(0.5);
    EXPECT_TRUE(IsChecked(Command::DrawPointer));
    EXPECT_TRUE(IsEnabled(Command::DeleteLine));
    Click(0.45, 0.8);
    EXPECT_FALSE(IsEnabled(Command::DeleteLine));
    Choose(Command::SelectLine);
    Choose(Command::DeleteLine);
    EXPECT_EQ(Board().LineCount(), 0);
    EXPECT_FALSE(IsEnabled(Command::SelectLine));
    Choose(Command::English);
    EXPECT_EQ(tool.text(), "Line segment");
    Choose(Command::Chinese);
}

TEST_F(TrendLineFrame, TheHintGoesWithTheTool) {
    DrawSegment(0.5);
    EXPECT_EQ(Status(), "") << "It is drawn.";
    auto* bar = Window().findChild<terminal::DrawingBar*>();
    const auto press = [&](Command command) {
        QAction& tool = Window().GetCommands().At(command);
        QTest::mouseClick(bar->widgetForAction(&tool), Qt::LeftButton);
    };
    press(Command::DrawRailLine);
    const QString rails = Status();
    EXPECT_NE(rails, "");
    Click(0.2, 0.3);
    Click(0.5, 0.2);
    EXPECT_EQ(Status(), rails) << "One point is to come.";
    Click(0.4, 0.4);
    EXPECT_EQ(Board().LineCount(), 2);
    EXPECT_EQ(Status(), "");

    press(Command::DrawHorizontal);
    const QString horizontal = Status();
    press(Command::DrawGoldenCut);
    EXPECT_NE(Status(), horizontal) << "Another tool, another hint.";
    press(Command::DrawPointer);
    EXPECT_EQ(Status(), "");
    press(Command::DrawLine);
    Click(0.5, 0.5);
    QTest::keyClick(&Chart(), Qt::Key_Escape);
    EXPECT_EQ(Status(), "");
    press(Command::DrawLine);
    QContextMenuEvent rightClick(QContextMenuEvent::Mouse, {200, 200}, Window().pos());
    QApplication::sendEvent(Chart().findChild<QCustomPlot*>(), &rightClick);
    EXPECT_EQ(Status(), "");

    press(Command::DrawLine);
    Choose(Command::NewTab);
    EXPECT_EQ(Status(), "");
    press(Command::DrawLine);
    Chart().Show({Chart().Market(), Chart().SymbolId(), 1, 0});
    EXPECT_EQ(Status(), "");
    press(Command::DrawLine);
    Window().CloseTab(1);
    EXPECT_EQ(Status(), "");
}

TEST_F(TrendLineFrame, ToolsWorkOnTheChartInFront) {
    Choose(Command::DrawSegment);
    Click(0.3, 0.5);
    Choose(Command::NewTab);
    EXPECT_TRUE(IsChecked(Command::DrawPointer));
    EXPECT_FALSE(Window().ChartAt(0).Drawings().Tool()) << "Dropped with its tab.";
    DrawSegment(0.5);
    EXPECT_EQ(Window().ChartAt(0).Drawings().LineCount(), 1);
    Window().CloseTab(1);
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
    terminal::TrendLineListDialog list(Session().Markets(), &Window());
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
    QTest::mousePress(Chart().findChild<QCustomPlot*>(), Qt::LeftButton, {},
                      Chart().findChild<QCustomPlot*>()->rect().center());
    SaveInOther({"Newest"}, {});
    ASSERT_TRUE(Await([this] { return GroupsInBox() == QStringList("Newest"); }));
    QTest::mouseRelease(Chart().findChild<QCustomPlot*>(), Qt::LeftButton, {},
                        Chart().findChild<QCustomPlot*>()->rect().center());
    EXPECT_EQ(Board().LineCount(), 0);
    EXPECT_FALSE(IsEnabled(Command::DeleteAllLines));
    Chart().grab();
}

TEST_F(TrendLineFrame, AReloadWhileTheListIsOpenIsShownThere) {
    DrawSegment(0.5);
    terminal::AddTrendLine({16, "9901", 3, 5}, kSomeLine);
    QTimer::singleShot(0, [this] {
        auto* list =
            qobject_cast<terminal::TrendLineListDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(list, nullptr);
        auto* table = list->findChild<QTableWidget*>();
        QTest::keyClick(table, Qt::Key_End);
        QTest::keyClick(table, Qt::Key_Down);
        EXPECT_EQ(Rows(*list), 2);
        EXPECT_EQ(list->Chosen()->symbol, "9901");
        SaveInOther({"New"}, {});
        EXPECT_TRUE(Await([list] { return Rows(*list) == 1; }));
        EXPECT_EQ(list->Chosen()->symbol, "9901") << "The choice follows its symbol.";
        EXPECT_EQ(Chart().GroupName(), "New");
        EXPECT_EQ(Board().LineCount(), 0);

        // All goes, and something else comes, while the question is open.
        m_prompts.ExpectYesNo(false);
        m_prompts.Meanwhile([this, list] {
            terminal::SqliteStore other;
            ASSERT_EQ(other.Open(StorePath()).state, terminal::OpenResult::Opened);
            other.RemoveAllTrendLineData(kTechViewClass);
            other.PackFile();
            EXPECT_TRUE(Await([list] { return Rows(*list) == 0; }));
        });
        QTest::mouseClick(list->findChild<QPushButton*>("clearButton"), Qt::LeftButton);
        EXPECT_FALSE(list->Chosen());
        SaveInOther({"Newer"}, {kSomeLine});
        EXPECT_TRUE(Await([list] { return Rows(*list) == 1; }));
        EXPECT_EQ(Board().LineCount(), 1);
        list->grab();
        QTest::keyClick(list, Qt::Key_Return);
    });
    Choose(Command::ListLines);
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
    terminal::TrendLineListDialog list(Session().Markets(), &Window());
    ASSERT_EQ(Rows(list), 3);
    EXPECT_EQ(Cell(list, 0, 0), "SPX S&P 500 指數");
    EXPECT_EQ(Cell(list, 0, 2), "線段 1");
    EXPECT_EQ(Cell(list, 0, 3).size(), 10);
    EXPECT_EQ(Cell(list, 1, 0), "GONE") << "A symbol that is not known.";
    EXPECT_EQ(Cell(list, 2, 0), "9901 模擬電子");
    EXPECT_EQ(Cell(list, 2, 1), "3");
    EXPECT_EQ(Cell(list, 2, 2), "種類 2003 1、股票箱 1、無法辨識 1");

    QTimer::singleShot(0, [] {
        auto* shown =
            qobject_cast<terminal::TrendLineListDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(shown, nullptr);
        auto* table = shown->findChild<QTableWidget*>();
        QTest::keyClick(table, Qt::Key_End);
        QTest::keyClick(table, Qt::Key_Down);
        QTest::keyClick(table, Qt::Key_Down);
        QTest::keyClick(table, Qt::Key_Return);
    });
    Choose(Command::ListLines);
    EXPECT_EQ(Chart().SymbolId(), "9901");
    EXPECT_EQ(std::pair(Chart().Period(), Chart().Count()), std::pair(3, 5)) << "Where lines are.";
    QTimer::singleShot(0,
                       [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    Choose(Command::ListLines);
    EXPECT_EQ(Chart().SymbolId(), "9901");
}

TEST_F(TrendLineFrame, AClassIsClearedAfterAQuestion) {
    DrawSegment(0.5);
    terminal::AddTrendLine({16, "9901", 0, 0}, kSomeLine);
    Repository().AddTrendLineData("Other", "10/9901", "price", 0, kSomeLine, 0);
    Repository().SaveTrendLineData();
    terminal::TrendLineListDialog list(Session().Markets(), &Window());
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
