// A pan step of a chart view beside one of a bare plot widget with as many candles, bars and lines;
// another range of a value axis, and a step of the cursor line, beside painting the whole chart.

#include "bench/RandomBars.h"
#include "bench/SideBySide.h"
#include "platform/SyncInfo.h"
#include "terminal/chart/ChartScene.h"
#include "terminal/chart/ChartView.h"
#include "terminal/lang/Language.h"
#include "terminal/quotes/MarketData.h"
#include "terminal/store/SqliteStore.h"
#include "terminal/studies/TerminalChartModule.h"

#include <qcustomplot.h>

#include <QApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <vector>

namespace {

using ta::bench::RandomWalk;
using ta::terminal::ChartView;
using ta::terminal::MarketData;

constexpr QSize kSize(1200, 800);
constexpr int kPanStep = 3;

/// An empty settings store and the chart module. The settings repository uses them to its end.
void HangInServices() {
    static const QTemporaryDir folder;
    static ta::terminal::SqliteStore store;
    static ta::terminal::TerminalChartModule chartModule;
    store.Open(folder.filePath("settings.db"));
    ta::Services services;
    services.configStore = &store;
    services.chartModule = &chartModule;
    CSyncInfo::GetSettingCFG().SetServices(services);
}

/// A chart view with the default group's four panes on bars of its own.
class OurChart {
public:
    explicit OurChart(int bars) {
        QString error;
        const auto* symbol = m_data.User().Add("bench.csv", RandomWalk(bars), 0.01, &error);
        m_view.resize(kSize);
        m_view.show();
        if (symbol) {
            m_view.Show({symbol->market, symbol->id, 0, 0});
        }
    }

    ChartView& View() { return m_view; }
    bool IsReady(int bars) const { return m_view.PaneCount() == 4 && m_view.BarCount() == bars; }

private:
    QTemporaryDir m_folder;
    MarketData m_data{ta::terminal::DefaultDataFolder(), m_folder.path()};
    ChartView m_view{m_data};
};

/// The same amount to draw on a plot widget alone: candles with four lines, volume bars with two,
/// two lines, and bars with two lines. Value ranges stay, nothing is written.
class BarePlot {
public:
    explicit BarePlot(const BarSeries& bars) {
        m_plot.resize(kSize);
        m_plot.plotLayout()->clear();
        for (int pane = 0; pane < 4; ++pane) {
            auto* rect = new QCPAxisRect(&m_plot);
            m_plot.plotLayout()->addElement(pane, 0, rect);
            m_plot.plotLayout()->setRowStretchFactor(pane, pane == 0 ? 2.2 : 1);
            rect->axis(QCPAxis::atBottom)->setTickLabels(pane == 3);
            m_rects.push_back(rect);
        }
        AddCandles(bars);
        AddBars(1, bars, &Bar::volume);
        AddBars(3, bars, &Bar::close);
        const int lines[] = {4, 2, 2, 2};
        for (int pane = 0; pane < 4; ++pane) {
            for (int line = 0; line < lines[pane]; ++line) {
                AddLine(pane, bars, 5 * (line + 1), pane == 1 ? &Bar::volume : &Bar::close);
            }
        }
        m_plot.show();
    }

    void Show(double lower, double upper) {
        for (QCPAxisRect* rect : m_rects) {
            rect->axis(QCPAxis::atBottom)->setRange(lower, upper);
        }
        m_plot.replot();
    }
    void FitValuesInView() {
        for (QCPAxisRect* rect : m_rects) {
            bool enlarge = false;
            for (QCPAbstractPlottable* plottable : rect->plottables()) {
                plottable->rescaleValueAxis(enlarge, true);
                enlarge = true;
            }
        }
    }

private:
    QCPAxis* Key(int pane) {
        return m_rects[static_cast<std::size_t>(pane)]->axis(QCPAxis::atBottom);
    }
    QCPAxis* Value(int pane) {
        return m_rects[static_cast<std::size_t>(pane)]->axis(QCPAxis::atLeft);
    }

    void AddCandles(const BarSeries& bars) {
        auto* candles = new QCPFinancial(Key(0), Value(0));
        candles->setChartStyle(QCPFinancial::csCandlestick);
        candles->setAntialiased(false);
        candles->setTwoColored(true);
        for (std::size_t i = 0; i < bars.size(); ++i) {
            const Bar& bar = bars[i];
            candles->addData(static_cast<double>(i), bar.open, bar.high, bar.low, bar.close);
        }
    }
    void AddBars(int pane, const BarSeries& bars, double Bar::*field) {
        auto* plotted = new QCPBars(Key(pane), Value(pane));
        plotted->setAntialiased(false);
        plotted->setPen(QPen(Qt::darkGreen, 0));
        plotted->setBrush(Qt::darkGreen);
        for (std::size_t i = 0; i < bars.size(); ++i) {
            plotted->addData(static_cast<double>(i), bars[i].*field);
        }
    }
    void AddLine(int pane, const BarSeries& bars, int period, double Bar::*field) {
        auto* graph = new QCPGraph(Key(pane), Value(pane));
        double average = bars.front().*field;
        for (std::size_t i = 0; i < bars.size(); ++i) {
            average += (bars[i].*field - average) / period;
            graph->addData(static_cast<double>(i), average);
        }
    }

    QCustomPlot m_plot;
    std::vector<QCPAxisRect*> m_rects;
};

void PanStep(benchmark::State& state, int bars, bool all) {
    OurChart ours(bars);
    if (!ours.IsReady(bars)) {
        state.SkipWithError("The chart did not load.");
        return;
    }
    BarePlot bare(RandomWalk(bars));
    if (all) {
        ours.View().ShowAll();
        ours.View().ZoomIn();
    }
    const auto [first, last] = ours.View().VisibleBars();
    bare.Show(first, last);
    bare.FitValuesInView();
    int ourStep = -kPanStep;
    double lower = first;
    ta::bench::RunSideBySide(
        state,
        [&] {
            ours.View().ScrollBars(ourStep);
            ourStep = -ourStep;
        },
        [&, width = last - first] {
            lower = lower == first ? first - kPanStep : first;
            bare.Show(lower, lower + width);
        });
    state.counters["bars_in_view"] = last - first + 1;
}

void PanStepLatestBars(benchmark::State& state) {
    PanStep(state, 5000, false);
}
BENCHMARK(PanStepLatestBars)->Iterations(200)->Unit(benchmark::kMicrosecond);

void PanStepMostOfTheBars(benchmark::State& state) {
    PanStep(state, 5000, true);
}
BENCHMARK(PanStepMostOfTheBars)->Iterations(100)->Unit(benchmark::kMicrosecond);

void PanStepMillionBars(benchmark::State& state) {
    PanStep(state, 1'000'000, false);
}
BENCHMARK(PanStepMillionBars)->Iterations(100)->Unit(benchmark::kMicrosecond);

void PanStepMillionBarsInView(benchmark::State& state) {
    PanStep(state, 1'000'000, true);
}
BENCHMARK(PanStepMillionBarsInView)->Iterations(5)->Unit(benchmark::kMicrosecond);

/// Another range of the price axis, which paints its pane, beside painting the whole plot: with the
/// latest bars or with most of them in view.
void RangeChange(benchmark::State& state, bool all) {
    void CursorStep(benchmark::State & state) {
        constexpr int kBars = 5000;
        OurChart ours(kBars);
        if (!ours.IsReady(kBars)) {
            state.SkipWithError("The chart did not load.");
            return;
        }
        ChartView& view = ours.View();
        if (all) {
            view.ShowAll();
            view.ZoomIn();
        }
        const ta::terminal::AxisPlace prices{0, 0};
        const auto axis = view.AxisAt(prices);
        auto& drawInfo = view.Axes().DrawInfo();
        drawInfo.vSetYaxisRangeAutomatically(axis->index, false);
        drawInfo.vSetYaxisMinVal(axis->index, axis->low);
        auto* plot = view.findChild<QCustomPlot*>();
        double share = 0;
        ta::bench::RunSideBySide(
            state,
            [&] {
                share = 0.1 - share;
                drawInfo.vSetYaxisMaxVal(axis->index,
                                         axis->high - share * (axis->high - axis->low));
                view.TakeRange(prices);
            },
            [&] { plot->replot(QCustomPlot::rpRefreshHint); });
    }

    void RangeChangeLatestBars(benchmark::State & state) {
        RangeChange(state, false);
    }
    BENCHMARK(RangeChangeLatestBars)->Iterations(200)->Unit(benchmark::kMicrosecond);

    void RangeChangeMostOfTheBars(benchmark::State & state) {
        RangeChange(state, true);
    }
    BENCHMARK(RangeChangeMostOfTheBars)->Iterations(100)->Unit(benchmark::kMicrosecond);
    auto* plot = ours.View().findChild<QCustomPlot*>();
    const int middle = (ours.View().VisibleBars().first + ours.View().VisibleBars().second) / 2;
    int step = 0;
    ta::bench::RunSideBySide(
        state, [&] { ours.View().SetCursorBar(middle + (++step % 20)); }, [&] { plot->replot(); });
}
BENCHMARK(CursorStep)->Iterations(300)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    ta::terminal::Language language;
    HangInServices();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
