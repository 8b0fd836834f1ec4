// Ten charts of one tab beside one chart of the same size, and the layout dialog beside an empty
// one and beside one of the toolkit's own controls.

#include "bench/RandomBars.h"
#include "bench/SideBySide.h"
#include "dialogs/MXSELTAWND.h"
#include "platform/ui/TextBridge.h"
#include "settings/Messages.h"
#include "terminal/chart/ChartView.h"
#include "terminal/frame/ChartGrid.h"
#include "terminal/frame/ChartTabs.h"
#include "terminal/frame/Session.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

using ta::terminal::ChartTabs;
using ta::terminal::ChartView;

constexpr QSize kSize(1200, 800);
constexpr int kBars = 5000;
constexpr int kTen = 10;  // windows, and the format that has them

/// A terminal without a window whose user has a file of daily bars.
class Terminal {
public:
    Terminal() : m_session(Options(m_folder)) {
        QString error;
        const auto* symbol =
            m_session.Markets().User().Add("bench.csv", ta::bench::RandomWalk(kBars), 0.01, &error);
        m_chart.market = symbol->market;
        m_chart.symbol = ta::ui::ToQString(symbol->id);
        m_chart.group = 0;
    }

    /// Charts in a tab, painted.
    std::unique_ptr<ChartTabs> Open(int format) {
        auto tabs = std::make_unique<ChartTabs>(m_session.Markets());
        tabs->resize(kSize);
        ta::terminal::TabState tab{{m_chart}};
        tab.grid.format = format;
        tabs->Add(tab);
        tabs->show();
        QApplication::processEvents();
        tabs->grab();
        return tabs;
    }

private:
    static ta::terminal::Options Options(const QTemporaryDir& folder) {
        ta::terminal::Options options;
        options.configFile = folder.filePath("settings.db");
        options.userFolder = folder.filePath("own");
        return options;
    }

    QTemporaryDir m_folder;
    ta::terminal::Session m_session;
    ta::terminal::ChartState m_chart;
};

/// All charts in view, each of which has its bars.
std::vector<ChartView*> ChartsOf(benchmark::State& state, const ChartTabs& tabs, int count) {
    std::vector<ChartView*> charts;
    for (ta::terminal::ChartPage* page : tabs.CurrentGrid().InView()) {
        charts.push_back(qobject_cast<ChartView*>(page));
        if (charts.back()->BarCount() != kBars || charts.back()->PaneCount() != 4) {
            state.SkipWithError("A chart did not load.");
        }
    }
    if (static_cast<int>(charts.size()) != count) {
        state.SkipWithError("There are not as many charts.");
    }
    return charts;
}

void OpenTenCharts(benchmark::State& state) {
    Terminal terminal;
    std::unique_ptr<ChartTabs> ten;
    std::unique_ptr<ChartTabs> one;
    ta::bench::RunSideBySide(
        state, [&] { ten.reset(), one.reset(); }, [&] { ten = terminal.Open(kTen); },
        [&] { one = terminal.Open(1); });
    ChartsOf(state, *ten, kTen);
}
BENCHMARK(OpenTenCharts)->Iterations(20)->Unit(benchmark::kMillisecond);

/// Does the same to every chart of ten, and to one.
template <class Action>
void TenBesideOne(benchmark::State& state, const Action& action) {
    Terminal terminal;
    const auto ten = terminal.Open(kTen);
    const auto one = terminal.Open(1);
    const auto charts = ChartsOf(state, *ten, kTen);
    const auto peer = ChartsOf(state, *one, 1);
    ta::bench::RunSideBySide(
        state,
        [&] {
            for (ChartView* chart : charts) {
                action(*chart);
            }
            ten->grab();
        },
        [&] {
            action(*peer.front());
            one->grab();
        });
}

void PanTenCharts(benchmark::State& state) {
    TenBesideOne(state, [step = 3](ChartView& chart) {
        const int first = chart.VisibleBars().first;
        chart.ScrollBars(first % 2 == 0 ? -step : step);
    });
}
BENCHMARK(PanTenCharts)->Iterations(100)->Unit(benchmark::kMicrosecond);

void ReloadTenCharts(benchmark::State& state) {
    TenBesideOne(state, [](ChartView& chart) { chart.WindowProc(ta::kGroupChangeMessage, 0, 0); });
}
BENCHMARK(ReloadTenCharts)->Iterations(40)->Unit(benchmark::kMicrosecond);

/// The cursor line of one chart with nine that follow, beside one chart's.
void MoveTenCursors(benchmark::State& state) {
    Terminal terminal;
    const auto ten = terminal.Open(kTen);
    const auto one = terminal.Open(1);
    const auto charts = ChartsOf(state, *ten, kTen);
    const auto peer = ChartsOf(state, *one, 1);
    ten->CurrentGrid().SetLinks({.cursor = true});
    const int bar = charts.front()->VisibleBars().second - 5;
    int step = 0;
    ta::bench::RunSideBySide(
        state, [&] { step = 1 - step; },
        [&] {
            charts.front()->SetCursorBar(bar + step);
            ten->grab();
        },
        [&] {
            peer.front()->SetCursorBar(bar + step);
            one->grab();
        });
}
BENCHMARK(MoveTenCursors)->Iterations(100)->Unit(benchmark::kMicrosecond);

void Paint(QDialog& dialog) {
    dialog.show();
    QApplication::processEvents();
    dialog.grab();
}

/// A dialog with OK and Cancel of the toolkit's alone, and perhaps with as many radio buttons and
/// pictures.
void OpenPlainDialog(const QSize& size, int choices) {
    QDialog dialog;
    auto* layout = new QVBoxLayout(&dialog);
    auto* grid = new QGridLayout;
    QPixmap picture(96, 64);
    picture.fill(Qt::white);
    for (int i = 0; i < choices; ++i) {
        auto* label = new QLabel;
        label->setPixmap(picture);
        grid->addWidget(label, i / 5 * 2, i % 5);
        grid->addWidget(new QRadioButton("Four charts"), i / 5 * 2 + 1, i % 5);
    }
    layout->addLayout(grid);
    layout->addStretch();
    layout->addWidget(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel));
    dialog.resize(size);
    Paint(dialog);
}

/// Argument: how many choices the plain dialog has.
void OpenLayoutDialog(benchmark::State& state) {
    const Terminal terminal;
    const int choices = static_cast<int>(state.range(0));
    QSize size;
    ta::bench::RunSideBySide(
        state,
        [&] {
            MXSELTAWND dialog(4);
            Paint(dialog);
            size = dialog.size();
        },
        [&] { OpenPlainDialog(size, choices); });
}
BENCHMARK(OpenLayoutDialog)->Arg(0)->Arg(13)->Iterations(60)->Unit(benchmark::kMicrosecond);

}  // namespace
