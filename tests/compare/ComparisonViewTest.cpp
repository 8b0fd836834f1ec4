// The comparison chart: what it draws and says, its mouse and keys.

#include "terminal/compare/ComparisonView.h"

#include "terminal/compare/ComparisonModel.h"
#include "terminal/plot/PaneLegend.h"
#include "terminal/plot/PlotTheme.h"
#include "tests/chart/ChartFixture.h"

#include <QLabel>

namespace ta::terminal {
namespace {

class ComparisonViewTest : public ChartFixture {
protected:
    ComparisonViewTest() { language.Select(Language::English); }

    /// Bars of these closes in the user's market.
    ComparedSymbol AddCloses(const std::vector<double>& closes) {
        const auto key = Add(MakeBars(static_cast<int>(closes.size()), [&](int i) {
            const double close = closes[static_cast<std::size_t>(i)];
            return std::pair(close, close);
        }));
        return {key.market, key.symbol};
    }
    ComparedSymbol AddDays(int count) {
        const auto key = Add(MakeBars(count, [](int i) { return std::pair(10.0 + i, 10.0 + i); }));
        return {key.market, key.symbol};
    }
    void Compare(const std::vector<ComparedSymbol>& symbols, double baseDate = 0) {
        compared = std::make_unique<ComparisonView>(data);
        compared->resize(900, 640);
        compared->show();
        compared->Compare({symbols, {.recordCount = 5000}, baseDate});
    }
    QString Legend() { return compared->LegendTexts().join('|'); }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(compared.get(), key, modifiers);
    }

    std::unique_ptr<ComparisonView> compared;
};

TEST_F(ComparisonViewTest, TheLegendNamesValueAndBaseOfEachSymbol) {
    const ComparedSymbol old = AddCloses({10, 20, 30});
    const ComparedSymbol young = {
        kUser, Add({{kFirstDay + 1, 5, 5, 5, 5, 1}, {kFirstDay + 2, 4, 4, 4, 4, 1}}).symbol};
    Compare({old, young, {kUser, "gone"}, {99, "x"}});
    EXPECT_EQ(Legend().toStdString(),
              "Change since the base D 2013/10/24\n"
              "bars +200.00% base 2013/10/22 10.00\n"
              "bars -20.00% * first bar 2013/10/23 5.00\n"
              "gone ??? no data\nx ??? no data");
    compared->SetMode(ComparisonMode::Indexed);
    EXPECT_TRUE(Legend().contains("Indexed, base = 100") && Legend().contains("bars 300.00 "));
    compared->SetMode(ComparisonMode::Prices);
    EXPECT_TRUE(Legend().contains("bars 30.00 ")) << Legend().toStdString();
    compared->SetMode(ComparisonMode::Percent);
    compared->SetBaseDate(kFirstDay + 1);
    EXPECT_TRUE(Legend().contains("bars +50.00% base 2013/10/23 20.00"));
    compared->SetBaseDate(NAN);
    EXPECT_EQ(compared->Set().baseDate, 0);
    language.Select(Language::TraditionalChinese);
    EXPECT_TRUE(Legend().contains("基準 2013/10/22 10.00") && Legend().contains("gone ??? 無資料"));
    EXPECT_TRUE(compared->CursorText().startsWith("2013/10/24")) << "the latest bar";
}

TEST_F(ComparisonViewTest, ABaseOfZeroIsNotedAndHasItsOwnScale) {
    Compare({AddCloses({100, 150}), AddCloses({0, 0.5})});
    EXPECT_TRUE(Legend().contains("+0.50 base 2013/10/22 0.00 price difference"))
        << Legend().toStdString();
    EXPECT_EQ(compared->Model().LockValues({1, 0, 0}, true), std::vector<double>{50});
    const PlotMapping::Pane pane = compared->Mapping().panes[0];
    EXPECT_TRUE(pane.low > -20 && pane.high < 80) << "of the percents alone";
    const auto scale = [this](int line) {
        compared->Mapping();
        return compared->findChild<QCustomPlot*>()->graph(line)->valueAxis();
    };
    EXPECT_TRUE(scale(1)->visible() && scale(1)->tickLabels()) << "an axis of its own";
    Compare({AddCloses({100, 150}), AddCloses({0, 0.5}), AddCloses({-5, 5})});
    EXPECT_NE(scale(1), scale(0));
    EXPECT_EQ(scale(1), scale(2)) << "equal differences stand at the same height";
    // Without percents they have the labelled scale.
    Compare({{kUser, "gone"}, AddCloses({0, 0.5}), AddCloses({-5, 5})});
    EXPECT_TRUE(scale(0)->visible() && scale(0)->tickLabels());
    EXPECT_EQ(scale(0), scale(1));
    Compare({AddCloses({-1, -3})});
    EXPECT_LT(compared->Mapping().panes[0].high, 5);
    Press(Qt::Key_Left);
    EXPECT_EQ(compared->CursorBar(), 1);
}

TEST_F(ComparisonViewTest, TheBaseIsNeverWhatHappensToBeInView) {
    Compare({AddDays(600), AddDays(500)});
    EXPECT_EQ(compared->VisibleBars(), std::pair(0, 599)) << "all of them at first";
    const QString before = compared->Model().Legend(0, 599, {})[1].Text();
    compared->ShowLatest();
    const auto shown = compared->VisibleBars();
    EXPECT_GT(shown.first, 400);
    EXPECT_EQ(compared->Model().Legend(0, 599, {})[1].Text(), before);
    compared->SetMode(ComparisonMode::Indexed);
    EXPECT_EQ(compared->VisibleBars(), shown);
    // The base at the cursor line, or at the first bar in view.
    compared->TakeBaseFromCursor();
    EXPECT_EQ(compared->Set().baseDate, kFirstDay + shown.first);
    Press(Qt::Key_Left);
    Press(Qt::Key_Left);
    EXPECT_EQ(compared->CursorBar(), shown.second - 1);
    QSignalSpy told(compared.get(), &ChartPage::cursorMoved);
    compared->TakeBaseFromCursor();
    EXPECT_TRUE(told.last()[0].toString().contains(" 100.00")) << "the values are others now";
    EXPECT_EQ(compared->Set().baseDate, kFirstDay + shown.second - 1);
    language.Select(Language::TraditionalChinese);
    EXPECT_EQ(compared->CursorBar(), shown.second - 1);
    EXPECT_EQ(compared->VisibleBars(), shown);
}

TEST_F(ComparisonViewTest, CursorZoomAndPanAsElsewhere) {
    Compare({AddDays(600), AddDays(600)});
    QSignalSpy moved(compared.get(), &ChartPage::cursorMoved);
    Press(Qt::Key_Plus);
    const auto [first, last] = compared->VisibleBars();
    EXPECT_LT(last - first, 500);
    Press(Qt::Key_Home);
    EXPECT_EQ(compared->VisibleBars().first, 0);
    Press(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_GT(compared->VisibleBars().first, 0);
    auto* plot = compared->findChild<QCustomPlot*>();
    const PlotMapping mapping = compared->Mapping();
    const int middle = mapping.NearestBarAt(450);
    QTest::mouseMove(plot, QPoint(450, 300));
    EXPECT_EQ(compared->CursorBar(), middle);
    EXPECT_TRUE(moved.last()[0].toString().contains('%'));
    // On its way to the menu the mouse leaves the chart.
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(plot, &leave);
    language.Select(Language::TraditionalChinese);
    EXPECT_EQ(compared->CursorBar(), -1);
    compared->TakeBaseFromCursor();
    EXPECT_EQ(compared->Set().baseDate, kFirstDay + middle);
    Press(Qt::Key_Escape);
    compared->TakeBaseFromCursor();
    EXPECT_EQ(compared->Set().baseDate, kFirstDay + compared->VisibleBars().first);
    QTest::mousePress(plot, Qt::LeftButton, {}, QPoint(450, 300));
    QTest::mouseMove(plot, QPoint(500, 300));
    QTest::mouseMove(plot, QPoint(550, 300));
    QTest::mouseRelease(plot, Qt::LeftButton, {}, QPoint(550, 300));
    EXPECT_LT(compared->VisibleBars().first, static_cast<int>(mapping.firstBar));
    Press(Qt::Key_Escape);
    EXPECT_EQ(compared->CursorBar(), -1);
}

TEST_F(ComparisonViewTest, LoadsAsMuchAsIsAskedForInEachPeriod) {
    Compare({AddDays(600)});
    compared->Show({0, {}, kDaily, 0}, {0, 60, 1});
    EXPECT_EQ(compared->BarCount(), 60);
    EXPECT_TRUE(Legend().contains("base 2015/04/15 550.00")) << Legend().toStdString();
    compared->ShowPeriod(kMonthly, 0);
    EXPECT_EQ(compared->Shown(), (BarsKey{0, {}, kMonthly, 0}));
    EXPECT_EQ(compared->BarCount(), 21);
    EXPECT_EQ(compared->Depth(), HistoryDepth()) << "its own is all of it";
    compared->Show({0, {}, kMonthly, 0}, {0, 5, 1});
    ComparisonView other(data);
    other.SetDepths(compared->Depths());
    other.Compare(compared->Set());
    for (ComparisonView* const one : {compared.get(), &other}) {
        EXPECT_EQ(one->BarCount(), 5);
        one->ShowPeriod(kDaily, 0);
        EXPECT_EQ(one->BarCount(), 60);
    }
    QSignalSpy failed(compared.get(), &ChartPage::loadFailed);
    compared->ShowPeriod(kMinutes, 7);
    EXPECT_EQ(compared->Shown(), (BarsKey{0, {}, kMinutes, 7}));
    EXPECT_EQ(failed.count(), 1);
    EXPECT_EQ(compared->BarCount(), 0);
    EXPECT_EQ(compared->findChild<QLabel*>()->text(), "None of the compared symbols has data");
    QSignalSpy shown(compared.get(), &ChartPage::symbolChanged);
    compared->ShowPeriod(kSeconds, 5);
    EXPECT_EQ(compared->Shown(), (BarsKey{0, {}, kMinutes, 7})) << "there are none of seconds";
    EXPECT_EQ(shown.count(), 1) << "for a bar that shows seconds now";
}

TEST_F(ComparisonViewTest, TellsOfWhichSymbolsThereIsLessThanAskedForAndWhy) {
    Compare({AddDays(600), AddDays(300)});
    QSignalSpy fewer(compared.get(), &ChartPage::historyShort);
    QSignalSpy failed(compared.get(), &ChartPage::loadFailed);
    const auto told = [](QSignalSpy& spy) {
        return spy.isEmpty() ? "nothing" : spy.takeLast()[0].toString().toStdString();
    };
    const std::string few =
        "bars (Asked for the last 400 bars, got 300: the data begin on 2013/10/22)";
    compared->Show({0, {}, kDaily, 0}, {0, 400, 1});
    EXPECT_EQ(told(fewer), few);
    compared->Show({0, {}, kDaily, 0}, {0, 60, 1});
    EXPECT_EQ(told(fewer), "") << "it is over";
    compared->Reload();
    EXPECT_EQ(told(fewer), "nothing");
    compared->Show({0, {}, kDaily, 0}, {1, 1, static_cast<long>(kFirstDay) + 400});
    EXPECT_EQ(told(failed),
              "Symbols without data: bars (Asked for bars since 2014/11/26, got none: the data "
              "end on 2014/08/17)");
    compared->Compare({{AddDays(300), {kUser, "gone"}}, {.recordCount = 400}});
    EXPECT_EQ(told(failed), "Symbols without data: gone ??? (There is no symbol gone.)  " + few);
    EXPECT_EQ(told(fewer), "nothing");
    compared->ShowPeriod(kWeekly, 0);
    compared->ShowPeriod(kDaily, 0);
    EXPECT_EQ(compared->Depth(), (HistoryDepth{0, 400, 1}));
}

TEST_F(ComparisonViewTest, ALegendEntryStaysInOneRow) {
    QCustomPlot plot;
    PaneLegend legend(plot, "overlay");
    const QFontMetricsF metrics(plot.font());
    legend.SetFont(plot.font());
    legend.SetEntries({{1, {{"name", {}}, {"value", {}}}}, {2, {{"name", {}}, {"value", {}}}}});
    const double entry = metrics.horizontalAdvance("name value");
    legend.Arrange({}, 1.7 * entry, 200);
    EXPECT_EQ(legend.StudyAt({1.3 * entry, 2}), -1) << "it has room for its name alone";
    EXPECT_EQ(legend.StudyAt({2, metrics.height() + 4}), 2);
    legend.Arrange({}, 0.8 * entry, 200);
    EXPECT_EQ(legend.StudyAt({2, 2}), 1) << "wider than a row, it begins where it is";
    EXPECT_EQ(legend.StudyAt({2, metrics.height() + 4}), 1);
}

TEST_F(ComparisonViewTest, TakesNoMoreThanItsMost) {
    Compare(std::vector<ComparedSymbol>(12, AddDays(3)));
    EXPECT_EQ(compared->Model().Sources().size(), 10U);
    EXPECT_EQ(compared->findChild<QCustomPlot*>()->graphCount(), 10);
    Compare({});
    EXPECT_EQ(compared->BarCount(), 0);
    Press(Qt::Key_Right);
    compared->TakeBaseFromCursor();
    EXPECT_EQ(compared->CursorBar(), -1);
}

}  // namespace
}  // namespace ta::terminal
