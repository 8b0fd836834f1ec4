// The least program that shows a chart: a bare window with a plot widget, as many candles as the
// sample data's index has, and the latest of them in view. The argument is their number.

#include <qcustomplot.h>
#include <QApplication>
#include <QMainWindow>

#include <cmath>
#include <cstdlib>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const int bars = argc > 1 ? std::atoi(argv[1]) : 0;
    QMainWindow window;
    window.resize(1280, 800);
    auto* plot = new QCustomPlot;
    window.setCentralWidget(plot);
    auto* candles = new QCPFinancial(plot->xAxis, plot->yAxis);
    candles->setChartStyle(QCPFinancial::csCandlestick);
    for (int i = 0; i < bars; ++i) {
        const double open = 100 + 10 * std::sin(i * 0.1);
        candles->addData(i, open, open + 3, open - 2, open + 1);
    }
    plot->xAxis->setRange(bars - 130, bars);
    candles->rescaleValueAxis(false, true);
    window.show();
    return QApplication::exec();
}
