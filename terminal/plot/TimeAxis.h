#pragma once

#include "platform/Study.h"

#include <qcustomplot.h>
#include <QString>

#include <memory>
#include <vector>

namespace ta::terminal {

/// The date of a Bar::time, with the time of day for bars of minutes ("2020/04/17 13:30") and
/// seconds.  `period` as BarsKey::period.
QString TimeText(double time, int period);

/// A label of the time axis, at the first bar of a day, month, hour or other unit.
struct TimeLabel {
    int bar = 0;
    QString text;

    bool operator==(const TimeLabel&) const = default;
};

/// Labels for the bars `first` to `last`, at least `spacing` bars apart, on the finest unit of time
/// that leaves them so.
std::vector<TimeLabel> MakeTimeLabels(const BarSeries& bars, int first, int last, double spacing);

/// The time axis of all panes: keys are bar indices.
class TimeAxisTicker : public QCPAxisTicker {
public:
    void SetBars(std::shared_ptr<const BarSeries> bars) { m_bars = std::move(bars); }
    /// The least distance of two labels, in bars.
    void SetSpacing(double bars) { m_spacing = bars; }

    void generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision,
                  QVector<double>& ticks, QVector<double>* subTicks,
                  QVector<QString>* tickLabels) override;

private:
    std::shared_ptr<const BarSeries> m_bars;
    double m_spacing = 20;
};

}  // namespace ta::terminal
