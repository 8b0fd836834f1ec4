#pragma once

#include "terminal/plot/AxisLock.h"
#include "terminal/plot/PlotModel.h"
#include "terminal/plot/PlotSeries.h"
#include "terminal/plot/ValueAxis.h"

#include <QFont>

#include <memory>
#include <optional>
#include <vector>

class QCPAxis;

namespace ta::terminal {

struct YAxisRange;

/// The room that a scale keeps free above and below its values, pixels.
struct ScaleRoom {
    double height = 1;  ///< of the pane
    double above = 0;
    double below = 0;  ///< not below values that stand on the ground
};

/// A scale of a pane: the series drawn on it, their range, and the axes that are labelled with it.
class PlotScale {
public:
    /// `axis` is the plot's, and has the range.
    PlotScale(QCPAxis& axis, NumberKind numbers, bool prices, int index);

    QCPAxis& Axis() const { return m_axis; }
    NumberKind Numbers() const { return m_numbers; }
    bool IsOfPrices() const { return m_prices; }
    /// As AxisIndex() gives it.
    int Index() const { return m_index; }
    bool IsEmpty() const { return m_outputs.empty(); }

    /// Whether a study has the same values: prices, or differences of them.
    bool Takes(const ChartStudy& study) const;
    void Add(std::size_t study, std::size_t output, std::unique_ptr<PlotSeries> series);
    /// Gives the scale's ticks to an axis of the pane, with labels in its font and colour or, for
    /// the grid's sake, without.
    void Label(QCPAxis& axis, bool texts);
    /// The one with labels on a side; null: there is none.
    const QCPAxis* LabelledAxis(QCPAxis::AxisType side) const;

    /// Fills the series with a slice of the pane's studies.
    ValueSpan Fill(const PlotModel& model, const ChartPane& studies, const PlotSlice& slice);
    /// The values of all bars.
    ValueSpan WholeSpan(const PlotModel& model, const ChartPane& studies) const;
    /// Takes the range that was set by hand, or one that shows `span`.
    void Fit(ValueSpan span, const std::optional<YAxisRange>& byHand, const ScaleRoom& room);
    bool IsByHand() const { return m_byHand; }

    /// Writes the labels of the range, or none.
    void ShowLabels(bool shown, int priceDecimals, double height);
    /// What the labels on a side ask for, with their ticks, pixels; 0 when there are none.
    double LabelsWidth(QCPAxis::AxisType side) const;
    /// Gives the labels on a side `percent` of `width`, what they ask for: makes them smaller as
    /// far as they can be read, and leaves out those that do not fit.
    void Narrow(QCPAxis::AxisType side, double width, int percent);

private:
    struct DrawnOutput {
        std::size_t study = 0;  ///< index in the pane
        std::size_t output = 0;
        std::unique_ptr<PlotSeries> series;
    };
    struct Labelled {
        QCPAxis* axis;
        QFont font;  ///< of full size
        bool texts;
        QSharedPointer<ValueAxisTicker> ticker;
        std::unique_ptr<AxisLock> lock;
    };

    const Labelled* FindLabelled(QCPAxis::AxisType side) const;

    QCPAxis& m_axis;
    NumberKind m_numbers;
    bool m_prices;
    int m_index;
    bool m_byHand = false;
    std::vector<DrawnOutput> m_outputs;
    std::vector<Labelled> m_labelled;
};

}  // namespace ta::terminal
