// From nothing to the first painted chart, beside a bare window with the same plot widget.

#include "bench/SideBySide.h"
#include "terminal/chart/ChartView.h"
#include "terminal/frame/MainWindow.h"
#include "terminal/frame/Session.h"

#include <qcustomplot.h>

#include <QApplication>
#include <QMainWindow>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

constexpr QSize kSize(1280, 800);

/// Shows the window and waits until it is painted; its picture.
QImage Paint(QMainWindow& window) {
    window.resize(kSize);
    window.show();
    QApplication::processEvents();
    return window.grab().toImage();
}

/// The terminal on the sample data: services, store, window, chart of the index in four panes.
/// Gives the number of panes that were painted.
int StartTerminal(const ta::terminal::Options& options) {
    ta::terminal::Session session(options);
    ta::terminal::MainWindow window(session);
    Paint(window);
    return window.Parts().tabs.Current().PaneCount();
}

void StartBareWindow() {
    QMainWindow window;
    window.setCentralWidget(new QCustomPlot);
    Paint(window);
}

void StartToFirstChart(benchmark::State& state) {
    const QTemporaryDir folder;
    ta::terminal::Options options;
    options.configFile = folder.filePath("settings.db");
    options.userFolder = folder.filePath("own");
    int panes = 0;
    ta::bench::RunSideBySide(
        state, [&] { panes = StartTerminal(options); }, StartBareWindow);
    if (panes != 4) {
        state.SkipWithError("the chart was not painted");
    }
}
BENCHMARK(StartToFirstChart)->Iterations(30)->Unit(benchmark::kMicrosecond);

}  // namespace
