#include "terminal/plot/PlotSeries.h"

#include "platform/ui/PenSamples.h"
#include "terminal/plot/PlotTheme.h"

#include <qcustomplot.h>

#include <cmath>

namespace ta::terminal {
namespace {

/// A plottable on a plot, removed with its owner.
template <class Plottable>
class Owned {
public:
    Owned(QCPAxis& keyAxis, QCPAxis& valueAxis) : m_plottable(new Plottable(&keyAxis, &valueAxis)) {
        m_plottable->setSelectable(QCP::stNone);
    }
    ~Owned() { m_plottable->parentPlot()->removePlottable(m_plottable); }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;

    Plottable* operator->() const { return m_plottable; }
    Plottable& operator*() const { return *m_plottable; }

private:
    Plottable* m_plottable;
};

/// The bars of a bucket as one.
Bar Joined(const BarSeries& bars, int from, int to) {
    Bar joined = bars[static_cast<std::size_t>(from)];
    for (int i = from + 1; i < to; ++i) {
        const Bar& bar = bars[static_cast<std::size_t>(i)];
        joined.high = std::max(joined.high, bar.high);
        joined.low = std::min(joined.low, bar.low);
        joined.close = bar.close;
    }
    return joined;
}

class CandleSeries : public PlotSeries {
public:
    CandleSeries(QCPAxis& keyAxis, QCPAxis& valueAxis, const PlotTheme& theme)
        : m_candles(keyAxis, valueAxis) {
        m_candles->setChartStyle(QCPFinancial::csCandlestick);
        m_candles->setAntialiased(false);
        m_candles->setTwoColored(true);
        m_candles->setPenPositive(QPen(theme.rising, 0));
        m_candles->setBrushPositive(theme.rising);
        m_candles->setPenNegative(QPen(theme.falling, 0));
        m_candles->setBrushNegative(theme.falling);
        m_candles->setWidthType(QCPFinancial::wtAbsolute);
    }

    void Fill(const BarSeries& bars, const std::vector<double>&, const PlotSlice& slice,
              ValueSpan& span) override {
        QVector<QCPFinancialData> data;
        data.reserve(slice.BucketCount());
        slice.ForEachBucket([&](double key, int from, int to) {
            const Bar bar = Joined(bars, from, to);
            data.append(QCPFinancialData(key, bar.open, bar.high, bar.low, bar.close));
            span.Add(bar.low);
            span.Add(bar.high);
        });
        m_candles->data()->set(data, true);
        m_candles->setWidth(slice.BodyWidth());
    }

private:
    Owned<QCPFinancial> m_candles;
};

/// Bars from zero in two colours.
class BarsSeries : public PlotSeries {
public:
    enum ColourBy { Sign, Candle };

    BarsSeries(QCPAxis& keyAxis, QCPAxis& valueAxis, const PlotTheme& theme, ColourBy colourBy)
        : m_rising(keyAxis, valueAxis), m_falling(keyAxis, valueAxis), m_colourBy(colourBy) {
        SetUp(*m_rising, theme.rising);
        SetUp(*m_falling, theme.falling);
    }

    void Fill(const BarSeries& bars, const std::vector<double>& values, const PlotSlice& slice,
              ValueSpan& span) override {
        QVector<QCPBarsData> rising;
        QVector<QCPBarsData> falling;
        slice.ForEachBucket([&](double key, int from, int to) {
            const double value = Largest(values, from, to);
            if (std::isnan(value)) {
                return;
            }
            (Rises(bars, value, from, to) ? rising : falling).append(QCPBarsData(key, value));
            span.Add(value);
            span.Add(0);
        });
        m_rising->data()->set(rising, true);
        m_falling->data()->set(falling, true);
        m_rising->setWidth(slice.BodyWidth());
        m_falling->setWidth(slice.BodyWidth());
    }

private:
    static void SetUp(QCPBars& bars, const QColor& colour) {
        bars.setAntialiased(false);
        bars.setPen(QPen(colour, 0));
        bars.setBrush(colour);
        bars.setWidthType(QCPBars::wtAbsolute);
    }

    static double Largest(const std::vector<double>& values, int from, int to) {
        double largest = values[static_cast<std::size_t>(from)];
        for (int i = from + 1; i < to; ++i) {
            const double value = values[static_cast<std::size_t>(i)];
            if (std::isnan(largest) || std::abs(value) > std::abs(largest)) {
                largest = value;
            }
        }
        return largest;
    }

    bool Rises(const BarSeries& bars, double value, int from, int to) const {
        if (m_colourBy == Sign) {
            return value >= 0;
        }
        return bars[static_cast<std::size_t>(to - 1)].close >=
               bars[static_cast<std::size_t>(from)].open;
    }

    Owned<QCPBars> m_rising;
    Owned<QCPBars> m_falling;
    ColourBy m_colourBy;
};

/// A line, or dots.
class GraphSeries : public PlotSeries {
public:
    GraphSeries(QCPAxis& keyAxis, QCPAxis& valueAxis, const PlotTheme& theme,
                const ChartOutput& output)
        : m_graph(keyAxis, valueAxis) {
        const StudyShape& shape = output.shape;
        const int width = std::clamp(shape.width, 1, ui::kMaxPenWidth);
        const QColor colour = theme.Readable(shape.colour);
        m_graph->setPen(ui::MakePen(colour, shape.style, width));
        if (output.kind == StudyDrawKind::Dots) {
            m_graph->setLineStyle(QCPGraph::lsNone);
            m_graph->setScatterStyle(
                QCPScatterStyle(QCPScatterStyle::ssDisc, QPen(colour), colour, 2 + width));
        }
    }

    void Fill(const BarSeries&, const std::vector<double>& values, const PlotSlice& slice,
              ValueSpan& span) override {
        QVector<QCPGraphData> data;
        data.reserve(slice.BucketCount() * 2);
        slice.ForEachBucket([&](double key, int from, int to) {
            ValueSpan bucket;
            for (int i = from; i < to; ++i) {
                bucket.Add(values[static_cast<std::size_t>(i)]);
            }
            if (bucket.IsEmpty()) {
                data.append(QCPGraphData(key, qQNaN()));
                return;
            }
            data.append(QCPGraphData(key, bucket.low));
            if (bucket.high != bucket.low) {
                data.append(QCPGraphData(key, bucket.high));
            }
            span.Add(bucket.low);
            span.Add(bucket.high);
        });
        m_graph->data()->set(data, true);
    }

private:
    Owned<QCPGraph> m_graph;
};

std::unique_ptr<PlotSeries> MakeSeries(const ChartOutput& output, QCPAxis& keyAxis,
                                       QCPAxis& valueAxis, const PlotTheme& theme) {
    switch (output.kind) {
        case StudyDrawKind::Candlesticks:
            return std::make_unique<CandleSeries>(keyAxis, valueAxis, theme);
        case StudyDrawKind::VolumeBars:
            return std::make_unique<BarsSeries>(keyAxis, valueAxis, theme, BarsSeries::Candle);
        case StudyDrawKind::Histogram:
            return std::make_unique<BarsSeries>(keyAxis, valueAxis, theme, BarsSeries::Sign);
        case StudyDrawKind::Line:
        case StudyDrawKind::Dots:
            break;
    }
    return std::make_unique<GraphSeries>(keyAxis, valueAxis, theme, output);
}

/// A series over the levels that it is read by, which are always in view.
class SeriesWithLevels : public PlotSeries {
public:
    SeriesWithLevels(QCPAxis& keyAxis, QCPAxis& valueAxis, const PlotTheme& theme,
                     const ChartOutput& output)
        : m_lines(keyAxis, valueAxis),
          m_levels(output.levels),
          m_series(MakeSeries(output, keyAxis, valueAxis, theme)) {
        m_lines->setPen(QPen(theme.axis, 0, Qt::DashLine));
        m_lines->setAntialiased(false);
    }

    void Fill(const BarSeries& bars, const std::vector<double>& values, const PlotSlice& slice,
              ValueSpan& span) override {
        QVector<QCPCurveData> data;
        for (const double level : m_levels) {
            const double at = static_cast<double>(data.size());
            data << QCPCurveData(at, slice.first, level)
                 << QCPCurveData(at + 1, slice.end + slice.step, level)
                 << QCPCurveData(at + 2, slice.first, qQNaN());
            span.Add(level);
        }
        m_lines->data()->set(data, true);
        m_series->Fill(bars, values, slice, span);
    }

private:
    Owned<QCPCurve> m_lines;
    std::vector<double> m_levels;
    std::unique_ptr<PlotSeries> m_series;
};

}  // namespace

std::unique_ptr<PlotSeries> PlotSeries::Make(const ChartOutput& output, QCPAxis& keyAxis,
                                             QCPAxis& valueAxis, const PlotTheme& theme) {
    if (!output.levels.empty()) {
        return std::make_unique<SeriesWithLevels>(keyAxis, valueAxis, theme, output);
    }
    return MakeSeries(output, keyAxis, valueAxis, theme);
}

}  // namespace ta::terminal
