#include "terminal/plot/PlotScale.h"

#include "terminal/studies/TerminalDrawInfo.h"

#include <algorithm>
#include <cmath>

namespace ta::terminal {
namespace {

constexpr double kSmallestLabels = 0.7;  // share of their size that can still be read

void AddValues(ValueSpan& span, const std::vector<double>& values) {
    for (const double value : values) {
        span.Add(value);
    }
}

/// A range of no height gets one.
ValueSpan WithHeight(ValueSpan span, bool stands) {
    if (span.low == span.high) {
        const double room = std::max(std::abs(span.low) * 0.01, 1e-6);
        span.low -= stands ? 0 : room;
        span.high += stands ? 1 : room;
    }
    return span;
}

QFont Smaller(QFont font, double share) {
    font.setPointSizeF(QFontInfo(font).pointSizeF() * share);
    return font;
}

/// From an axis to its labels.
int LabelDistance(const QCPAxis& axis) {
    return axis.tickLengthOut() + axis.tickLabelPadding();
}

}  // namespace

PlotScale::PlotScale(QCPAxis& axis, NumberKind numbers, bool prices, int index)
    : m_axis(axis), m_numbers(numbers), m_prices(prices), m_index(index) {}

bool PlotScale::Takes(const ChartStudy& study) const {
    const bool isOfDifferences = !m_prices && m_numbers == NumberKind::Price;
    return study.onPriceScale ? m_prices : isOfDifferences && study.numbers == NumberKind::Price;
}

void PlotScale::Add(std::size_t study, std::size_t output, std::unique_ptr<PlotSeries> series) {
    m_outputs.push_back({study, output, std::move(series)});
}

void PlotScale::Label(QCPAxis& axis, bool texts) {
    Labelled labelled{&axis, axis.tickLabelFont(), texts, {}, {}};
    labelled.ticker.reset(new ValueAxisTicker);
    axis.setTicker(labelled.ticker);
    axis.setTickLength(0, texts ? 4 : 0);
    if (texts) {
        labelled.lock = std::make_unique<AxisLock>(axis, axis.tickLabelColor());
    }
    m_labelled.push_back(std::move(labelled));
}

const PlotScale::Labelled* PlotScale::FindLabelled(QCPAxis::AxisType side) const {
    const auto found = std::ranges::find_if(m_labelled, [side](const Labelled& labelled) {
        return labelled.texts && labelled.axis->axisType() == side;
    });
    return found == m_labelled.end() ? nullptr : &*found;
}

const QCPAxis* PlotScale::LabelledAxis(QCPAxis::AxisType side) const {
    const Labelled* labelled = FindLabelled(side);
    return labelled ? labelled->axis : nullptr;
}

ValueSpan PlotScale::Fill(const PlotModel& model, const ChartPane& studies,
                          const PlotSlice& slice) {
    ValueSpan span;
    for (DrawnOutput& drawn : m_outputs) {
        const ChartStudy& study = studies[drawn.study];
        if (drawn.output < study.values->size()) {
            drawn.series->Fill(model.Bars(), (*study.values)[drawn.output], slice, span);
        }
    }
    return span;
}

ValueSpan PlotScale::WholeSpan(const PlotModel& model, const ChartPane& studies) const {
    ValueSpan span;
    for (const DrawnOutput& drawn : m_outputs) {
        const ChartStudy& study = studies[drawn.study];
        if (drawn.output < study.values->size()) {
            AddValues(span, (*study.values)[drawn.output]);
        }
        const StudyDrawKind kind = study.outputs[drawn.output].kind;
        if (kind == StudyDrawKind::VolumeBars || kind == StudyDrawKind::Histogram) {
            span.Add(0);
        } else if (kind == StudyDrawKind::Candlesticks) {
            for (const Bar& bar : model.Bars()) {
                span.Add(bar.low);
                span.Add(bar.high);
            }
        }
    }
    return span;
}

void PlotScale::Fit(ValueSpan span, const std::optional<YAxisRange>& byHand,
                    const ScaleRoom& room) {
    m_byHand = byHand.has_value();
    if (byHand) {
        span = WithHeight({byHand->minimum, byHand->maximum}, false);
        m_axis.setRange(span.low, span.high);
    } else {
        if (span.IsEmpty()) {
            span = {0, 1};
        }
        const bool stands = m_numbers == NumberKind::Volume && span.low >= 0;
        span = WithHeight(span, stands);
        const double below = stands ? 0 : room.below;
        const double unit = (span.high - span.low) / (room.height - room.above - below);
        m_axis.setRange(span.low - below * unit, span.high + room.above * unit);
    }
    for (const Labelled& labelled : m_labelled) {
        labelled.axis->setRange(m_axis.range());
    }
}

void PlotScale::ShowLabels(bool shown, int priceDecimals, double height) {
    for (const Labelled& labelled : m_labelled) {
        labelled.ticker->SetNumbers(m_numbers, priceDecimals);
        labelled.ticker->SetHeights(height, QFontMetricsF(labelled.font).height());
        labelled.ticker->SetRoomAbove(m_byHand ? AxisLock::kHeight : 0);
        labelled.axis->setTicks(shown);
        labelled.axis->setTickLabels(shown && labelled.texts);
        if (labelled.lock) {
            labelled.lock->setVisible(shown && m_byHand);
        }
    }
}

double PlotScale::LabelsWidth(QCPAxis::AxisType side) const {
    const Labelled* labelled = FindLabelled(side);
    if (!labelled || !labelled->axis->tickLabels()) {
        return 0;
    }
    return labelled->ticker->WidestLabel(m_axis.range(), labelled->font) +
           LabelDistance(*labelled->axis) + labelled->axis->padding() + 1;
}

void PlotScale::Narrow(QCPAxis::AxisType side, double width, int percent) {
    if (const Labelled* labelled = FindLabelled(side)) {
        const QFont font = Smaller(labelled->font, std::max(percent / 100.0, kSmallestLabels));
        labelled->axis->setTickLabelFont(font);
        labelled->ticker->SetLabelWidth(width * percent / 100 - LabelDistance(*labelled->axis),
                                        font);
    }
}

}  // namespace ta::terminal
