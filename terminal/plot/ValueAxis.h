#pragma once

#include "terminal/plot/PlotNumbers.h"

#include <qcustomplot.h>
#include <QFont>

#include <limits>

namespace ta::terminal {

/// The value axis of a pane.
class ValueAxisTicker : public QCPAxisTicker {
public:
    void SetNumbers(NumberKind kind, int priceDecimals);
    /// The axis' height and the height of a label, pixels: how many labels there are, and which
    /// are left out because they would stand over the edge.
    void SetHeights(double axis, double label);
    /// Leaves out labels within this many pixels of the axis' upper end.
    void SetRoomAbove(double pixels) { m_roomAbove = pixels; }
    /// Leaves out labels that are wider than this, in pixels, in a font; without end at first.
    void SetLabelWidth(double pixels, const QFont& font);
    /// The widest label of a range.
    double WidestLabel(const QCPRange& range, const QFont& font);

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
    double m_edge = 0;       // share of the range at each end without labels
    double m_height = 1;     // of the axis, pixels
    double m_roomAbove = 0;  // pixels
    double m_widest = std::numeric_limits<double>::infinity();
    QFont m_font;
};

}  // namespace ta::terminal
