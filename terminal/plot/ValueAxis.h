#pragma once

#include "terminal/plot/PlotNumbers.h"

#include <qcustomplot.h>

namespace ta::terminal {

/// The value axis of a pane.
class ValueAxisTicker : public QCPAxisTicker {
public:
    void SetNumbers(NumberKind kind, int priceDecimals);
    /// The axis' height and the height of a label, pixels: how many labels there are, and which
    /// are left out because they would stand over the edge.
    void SetHeights(double axis, double label);

    void generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision,
                  QVector<double>& ticks, QVector<double>* subTicks,
                  QVector<QString>* tickLabels) override;

protected:
    double getTickStep(const QCPRange& range) override;
    int getSubTickCount(double) override { return 0; }
    QString getTickLabel(double tick, const QLocale& locale, QChar formatChar,
                         int precision) override;

private:
    NumberKind m_kind = NumberKind::Plain;
    int m_priceDecimals = 2;
    int m_stepDecimals = 0;
    double m_edge = 0;  // share of the range at each end without labels
};

}  // namespace ta::terminal
