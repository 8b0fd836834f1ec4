// Trend lines in the frame: the drawing toolbar and menu, the list of symbols, and what other
// windows, later runs and other terminals see.

#include "tests/frame/FrameFixture.h"

#include "platform/ui/TextBridge.h"
#include "terminal/frame/ChartGrid.h"
#include "terminal/frame/openers/TrendLineListDialog.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/lines/TrendLineStore.h"
#include "terminal/plot/PlotMapping.h"
#include "tests/support/DialogDriver.h"

#include <qcustomplot.h>
#include <QContextMenuEvent>
#include <QTableView>

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
    static QTableView& Table(const TrendLineListDialog& list) {
        return *list.findChild<QTableView*>();
    }
    static QString Cell(const TrendLineListDialog& list, int row, int column) {
        return Table(list).model()->index(row, column).data().toString();
    }
    static QStringList Row(const TrendLineListDialog& list, int row) {
        QStringList cells;
        for (int column = 0; column < Table(list).model()->columnCount(); ++column) {
            cells << Cell(list, row, column);
        }
        return cells;
    }
    static int Rows(const TrendLineListDialog& list) { return Table(list).model()->rowCount(); }
    static CString ChosenSymbol(const TrendLineListDialog& list) {
        const auto chosen = list.Chosen();
        return chosen ? chosen->chart.symbol : CString();
    }
    static void Add(const BarsKey& chart, const CString& line) {
        terminal::EditTrendLines(chart, {{{}, line}});
    }
    /// Keys of commands reach an active window only.
    static void Activate(QWidget& window) {
        window.activateWindow();
        EXPECT_TRUE(Await([&] { return window.isActiveWindow(); }));
    }
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
    TrendLineListDialog list(Window().Parts());
    list.show();
    EXPECT_EQ(Rows(list), 1);
    TrendLinesByType lines;
    ASSERT_TRUE(other.LoadTATrendLine(kTechViewClass, "02/SPX", lines));
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].first, "02/SPX/0000/0/price");
    lines[0].second.push_back(kSomeLine);
    other.SaveTATrendLine(kTechViewClass, "02/SPX", lines);
    other.PackFile();
    ASSERT_TRUE(Await([this] { return Board().LineCount() == 2; }));
    EXPECT_EQ(Rows(list), 2) << "The list is told too.";
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
    Add({16, "9901", 3, 5}, kSomeLine);
    InList([this](TrendLineListDialog& list) {
        Press(Table(list), {Qt::Key_End, Qt::Key_Down});
        EXPECT_EQ(Rows(list), 2);
        EXPECT_EQ(ChosenSymbol(list), "9901");
        InOther([](terminal::SqliteStore& other) {
            other.SaveTATrendLine(kTechViewClass, "02/AMZN",
                                  {{"02/AMZN/0000/0/price", {kSomeLine}}});
        });
        EXPECT_TRUE(Await([&] { return Rows(list) == 3; }));
        EXPECT_EQ(Cell(list, 2, 0), "9901 模擬電子");
        EXPECT_EQ(ChosenSymbol(list), "9901") << "The choice follows its line.";
        SaveInOther({"New"}, {});
        EXPECT_TRUE(Await([&] { return Rows(list) == 2; }));
        EXPECT_EQ(ChosenSymbol(list), "9901");
        EXPECT_EQ(Chart().GroupName(), "New");
        EXPECT_EQ(Board().LineCount(), 0);

        // All goes, and something else comes, while the question is open.
        m_prompts.ExpectYesNo(true);
        m_prompts.Meanwhile([&] {
            InOther(
                [](terminal::SqliteStore& other) { other.RemoveAllTrendLineData(kTechViewClass); });
            EXPECT_TRUE(Await([&] { return Rows(list) == 0; }));
            SaveInOther({"Newer"}, {kSomeLine});
            EXPECT_TRUE(Await([&] { return Rows(list) == 1; }));
        });
        Press(Table(list), {Qt::Key_Delete});
        EXPECT_EQ(ChosenSymbol(list), "SPX") << "What was not asked about stays.";
        EXPECT_EQ(Status(), "這條畫線已在別處修改或刪除，維持現狀。");
        EXPECT_EQ(Board().LineCount(), 1);
        list.grab();
        Press(list, {Qt::Key_Return});
    });
    EXPECT_EQ(Chart().SymbolId(), "SPX");
    EXPECT_EQ(Chart().GroupName(), "Newer");
    EXPECT_EQ(Board().Selected(), 0);
}

TEST_F(TrendLineFrame, TheListNamesSymbolPeriodAndKindAndOpensThem) {
    Add(kDaily, "2004/2a7fff/1/0/1/17900,100/17950,110.25");
    for (const char* line : {"2002/2a7fff/1/0/0/18300,104.5", "2007/a/b/c/0/x", "unreadable"}) {
        Add({16, "9901", 3, 5}, line);
    }
    Add({9, "GONE", 0, 0}, kSomeLine);
    Repository().AddTrendLineData("Other", "10/9901", "price", 0, kSomeLine, 0);
    Repository().SaveTrendLineData();
    {
        TrendLineListDialog list(Window().Parts());
        ASSERT_EQ(Rows(list), 5) << "Lines of other windows are not the user's charts'.";
        const QString today = QDate::currentDate().toString("yyyy/MM/dd");
        EXPECT_EQ(Row(list, 0),
                  QStringList({"SPX S&P 500 指數", "日線", "趨勢線",
                               "2019/01/04  100.00  →  2019/02/23  110.25", "已鎖定", today}));
        EXPECT_EQ(Cell(list, 1, 0), "GONE") << "A symbol that is not known.";
        EXPECT_EQ(Row(list, 2),
                  QStringList({"9901 模擬電子", "5 分線", "水平線", "104.5", "", today}));
        EXPECT_EQ(Cell(list, 3, 2) + Cell(list, 4, 2), "股票箱無法辨識");
        for (int column = 0; column < Table(list).model()->columnCount(); ++column) {
            EXPECT_FALSE(Table(list)
                             .model()
                             ->headerData(column, Qt::Horizontal)
                             .toString()
                             .contains("類別"));
        }
    }
    InList([](TrendLineListDialog& shown) {
        Press(Table(shown), {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return});
    });
    EXPECT_EQ(Chart().SymbolId(), "9901");
    EXPECT_EQ(std::pair(Chart().Period(), Chart().Count()), std::pair(3, 5)) << "Where it is.";
    EXPECT_EQ(Board().Selected(), 0);
    InList([](TrendLineListDialog& shown) { Press(shown, {Qt::Key_Escape}); });
    EXPECT_EQ(Chart().SymbolId(), "9901");
    InList([](TrendLineListDialog& shown) { Press(shown, {Qt::Key_Return}); });
    EXPECT_EQ(Chart().SymbolId(), "SPX");
    EXPECT_LE(Chart().VisibleBars().first, 17900 - 17897) << "The line is in view.";

    // The chart is in another window of another tab.
    const terminal::ChartView* spx = &Chart();
    Tabs().SetFormat(4);
    Tabs().CurrentGrid().FocusNext(1);
    Tabs().OpenSymbol(16, "9901");
    Choose(Command::NewTab);
    InList([](TrendLineListDialog& shown) { Press(shown, {Qt::Key_Return}); });
    EXPECT_EQ(&Chart(), spx) << "Nothing else is replaced.";
    EXPECT_EQ(Tabs().ChartAt(1)->SymbolId(), "9901");
    InList([](TrendLineListDialog& shown) { Press(Table(shown), {Qt::Key_Down, Qt::Key_Return}); });
    EXPECT_EQ(&Chart(), spx);
    EXPECT_EQ(Chart().SymbolId(), "SPX") << "There is no such chart.";
    EXPECT_TRUE(Status().contains("GONE"));
}

TEST_F(TrendLineFrame, TheListDeletesWhatIsSelectedAndSaysWhatCanBeUndone) {
    DrawSegment(0.5);
    DrawSegment(0.6);
    Choose(Command::LockLine);
    Add({2, "SPX", 1, 0}, kSomeLine);
    Add({16, "9901", 0, 0}, "2007/a/b/c/0/x");
    Add({16, "9901", 0, 0}, kSomeLine);
    TrendLineListDialog list(Window().Parts());
    list.show();
    Activate(list);
    ASSERT_EQ(Rows(list), 5);
    auto* button = list.findChild<QPushButton*>("deleteButton");
    m_prompts.ExpectYesNo(false);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(m_prompts.Last().text,
              "確定要刪除選取的 1 條畫線嗎？\n刪除後，可在顯示這些畫線的圖表中復原。");
    EXPECT_EQ(m_prompts.Last().presetAnswer, ui::Answer::No);
    EXPECT_EQ(Rows(list), 5);

    Table(list).setFocus();
    Table(list).selectAll();
    m_prompts.ExpectYesNo(true);
    Press(Table(list), {Qt::Key_Delete});
    EXPECT_EQ(m_prompts.Last().text,
              "確定要刪除選取的 5 條畫線嗎？\n其中 1 條已鎖定。\n"
              "其中 2 條可在開啟的圖表中復原；其餘沒有開啟的圖表，刪除後無法復原。");
    EXPECT_EQ(Rows(list), 0);
    EXPECT_FALSE(button->isEnabled());
    EXPECT_FALSE(list.Chosen());
    Press(Table(list), {Qt::Key_Delete});
    EXPECT_EQ(Board().LineCount(), 0);
    Choose(Command::UndoLine);
    EXPECT_EQ(Board().LineCount(), 2);
    EXPECT_TRUE(Board().Lines()[1].locked);
    EXPECT_EQ(Rows(list), 2);

    Add({16, "9901", 0, 0}, kSomeLine);
    Press(Table(list), {Qt::Key_End, Qt::Key_Down, Qt::Key_Down});
    m_prompts.ExpectYesNo(true);
    Press(Table(list), {Qt::Key_Delete});
    EXPECT_TRUE(m_prompts.Last().text.endsWith("沒有開啟的圖表顯示這些畫線，刪除後無法復原。"));
    EXPECT_EQ(Rows(list), 2);
    EXPECT_EQ(ChosenSymbol(list), "SPX") << "The row before it.";

    // Only parked charts show the lines.
    Tabs().SetFormat(4);
    Tabs().OpenSymbol(2, "AMZN");
    Tabs().SetFormat(1);
    m_prompts.ExpectYesNo(true);
    Press(Table(list), {Qt::Key_Delete});
    EXPECT_TRUE(m_prompts.Last().text.endsWith("刪除後，可在顯示這些畫線的圖表中復原。"));
    EXPECT_EQ(Rows(list), 1);
    Tabs().SetFormat(4);
    Tabs().CurrentGrid().FocusNext(3);
    EXPECT_EQ(Chart().SymbolId(), "SPX");
    Choose(Command::UndoLine);
    EXPECT_EQ(Rows(list), 2);
}

TEST_F(TrendLineFrame, TheMenuNamesWhatIsUndoneAndChangesTheSelectedLine) {
    const auto text = [this](Command command) { return Action(command).text(); };
    EXPECT_FALSE(IsEnabled(Command::UndoLine) || IsEnabled(Command::LinePen));
    DrawSegment(0.5);
    EXPECT_EQ(text(Command::UndoLine), "復原「繪製線段」(&U)");
    m_driver.Expect([](QWidget& dialog) {
        QTest::mouseClick(dialog.findChild<QWidget*>("width4Sample"), Qt::LeftButton);
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    QTest::keyClick(&Chart(), Qt::Key_P, Qt::ControlModifier);
    Activate(Window());
    m_prompts.ExpectColour(Qt::red);
    QTest::keyClick(&Chart(), Qt::Key_H, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClick(&Chart(), Qt::Key_K, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(IsChecked(Command::LockLine));
    QTest::keyClick(&Chart(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(IsChecked(Command::LockLine));
    EXPECT_EQ(Status(), "已復原「鎖定線段」。");
    EXPECT_EQ(Board().SelectedLine()->pen, (terminal::LinePen{0xff0000, 4, 0}));
    Choose(Command::English);
    EXPECT_EQ(text(Command::UndoLine), "&Undo: Colour of Line segment");
    EXPECT_EQ(text(Command::RedoLine), "&Redo: Lock Line segment");
    QTest::keyClick(&Chart(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(Board().SelectedLine()->locked);
    Choose(Command::NewTab);
    EXPECT_EQ(text(Command::UndoLine), "&Undo") << "The new chart has no steps.";
    EXPECT_FALSE(IsEnabled(Command::UndoLine));
    EXPECT_TRUE(Action(Command::LinePen).icon().isNull());
    Choose(Command::Chinese);
    End();
    Start();
    DrawSegment(0.3);
    EXPECT_EQ(Board().SelectedLine()->pen, (terminal::LinePen{0xff0000, 4, 0}))
        << "The next run takes the last pen, and colour.";
}

}  // namespace
}  // namespace ta::test
