#include "terminal/plot/PlotPane.h"

#include "terminal/plot/ChartAxes.h"

#include <qcustomplot.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace ta::terminal {
namespace {

constexpr double kLegendMargin = 4;
constexpr double kLegendShare = 0.4;  // of a pane's height with its legend, at most
constexpr int kLegendPadding = 2;     // above and below
constexpr double kLeastRoom = 8;      // between the values and the pane's edges, pixels

void StyleAxis(QCPAxis& axis, const PaneStyle& style) {
    axis.setBasePen(QPen(style.theme.axis, 0));
    axis.setTickPen(QPen(style.theme.axis, 0));
    axis.setSubTicks(false);
    axis.setTickLength(0, 4);
    axis.setTickLabelFont(style.font);
    axis.setTickLabelColor(style.theme.faintText);
    axis.grid()->setPen(QPen(style.theme.grid, 0));
    axis.grid()->setZeroLinePen(Qt::NoPen);
    axis.grid()->setVisible(false);
}

/// Whose scale is labelled; null: there are no studies.
const ChartStudy* MainOf(const ChartPane& studies) {
    const auto main = std::ranges::max_element(studies, {}, [](const ChartStudy& study) {
        return std::pair(!study.outputs.empty(), study.onPriceScale);
    });
    return main == studies.end() ? nullptr : &*main;
}

}  // namespace

PlotPane::PlotPane(QCustomPlot& plot, int row, const ChartPane& studies, const PaneStyle& style,
                   bool lowest)
    : m_plot(plot), m_row(row), m_style(style), m_rect(new QCPAxisRect(&plot, false)) {
    plot.plotLayout()->addElement(row, 0, m_rect);
    MakeAxes(lowest);
    MakeScales(studies);
    MakeMarks(studies);
    m_legend = std::make_unique<PaneLegend>(plot, QStringLiteral("overlay"));
    m_legend->SetFont(style.font);
    m_legend->setVisible(style.options.bShowTAInfo);
}

PlotPane::~PlotPane() {
    m_levels.reset();
    m_scales.clear();
    for (QCPItemText* mark : {m_highMark, m_lowMark}) {
        if (mark) {
            m_plot.removeItem(mark);
        }
    }
    m_plot.plotLayout()->remove(m_rect);
}

void PlotPane::MakeAxes(bool lowest) {
    m_rect->setBackground(QBrush(m_style.theme.background));
    m_rect->addAxes(QCPAxis::atBottom | QCPAxis::atTop | QCPAxis::atLeft | QCPAxis::atRight);
    for (QCPAxis* axis : m_rect->axes()) {
        StyleAxis(*axis, m_style);
    }
    m_timeAxis = m_rect->axis(QCPAxis::atBottom);
    m_timeAxis->setTicker(m_style.timeTicker);
    m_timeAxis->setTickLabels(lowest);
    m_timeAxis->setTickLength(0, lowest ? 4 : 0);
    m_timeAxis->grid()->setVisible(m_style.options.bChartGrid);
    m_rect->axis(QCPAxis::atTop)->setTicks(false);
    m_rect->axis(QCPAxis::atTop)->setTickLabels(false);
}

void PlotPane::MakeScales(const ChartPane& studies) {
    const ChartStudy* mainStudy = MainOf(studies);
    MakeMainScale(mainStudy);
    for (std::size_t s = 0; s < studies.size(); ++s) {
        const ChartStudy& study = studies[s];
        PlotScale& scale = &study == mainStudy ? m_scales.front() : ScaleFor(study);
        for (std::size_t o = 0; o < study.outputs.size(); ++o) {
            if (study.outputs[o].shape.visible) {
                scale.Add(
                    s, o,
                    PlotSeries::Make(study.outputs[o], *m_timeAxis, scale.Axis(), m_style.theme));
            }
        }
    }
}

void PlotPane::MakeMainScale(const ChartStudy* study) {
    const NumberKind numbers = study ? study->numbers : NumberKind::Plain;
    const bool prices = study && study->onPriceScale;
    const StudyType type = study && !prices ? study->type : 0;
    const auto side = m_style.options.uScalePos;
    QCPAxis& right = *m_rect->axis(QCPAxis::atRight);
    PlotScale& main =
        m_scales.emplace_back(right, numbers, prices, AxisIndex(m_row, numbers, type));
    main.Label(right, side != 1);
    main.Label(*m_rect->axis(QCPAxis::atLeft), side != 0);
    right.grid()->setVisible(m_style.options.bChartGrid);
}

PlotScale& PlotPane::ScaleFor(const ChartStudy& study) {
    if (study.outputs.empty()) {
        return m_scales.front();
    }
    const auto shared = std::ranges::find_if(
        m_scales, [&study](const PlotScale& scale) { return scale.Takes(study); });
    if (shared != m_scales.end()) {
        return *shared;
    }
    const bool left = m_style.options.uScalePos == 0;
    QCPAxis* axis = m_rect->addAxis(left ? QCPAxis::atLeft : QCPAxis::atRight);
    PlotScale& own = m_scales.emplace_back(*axis, study.numbers, false,
                                           AxisIndex(m_row, study.numbers, study.type));
    LabelOwnAxis(own, study);
    return own;
}

void PlotPane::LabelOwnAxis(PlotScale& scale, const ChartStudy& study) {
    QCPAxis& axis = scale.Axis();
    StyleAxis(axis, m_style);
    axis.setVisible(ShowsPrices());
    if (!ShowsPrices()) {
        return;
    }
    const QColor colour = m_style.theme.Readable(study.outputs.front().shape.colour);
    axis.setBasePen(QPen(colour, 0));
    axis.setTickPen(QPen(colour, 0));
    axis.setTickLabelColor(colour);
    scale.Label(axis, true);
}

void PlotPane::MakeMarks(const ChartPane& studies) {
    if (std::ranges::find_if(studies, &ChartStudy::HasCandlesticks) == studies.end()) {
        return;
    }
    m_levels = std::make_unique<LevelLines>(m_scales.front().Axis(), m_style.theme, m_style.font);
    if (!m_style.options.bHighLow) {
        return;
    }
    for (QCPItemText** mark : {&m_highMark, &m_lowMark}) {
        *mark = new QCPItemText(&m_plot);
        (*mark)->setClipAxisRect(m_rect);
        (*mark)->position->setAxes(m_timeAxis, &m_scales.front().Axis());
        (*mark)->setFont(m_style.font);
        (*mark)->setColor(m_style.theme.text);
        (*mark)->setPadding(QMargins(2, 0, 2, 0));
        (*mark)->setSelectable(false);
    }
}

void PlotPane::Fill(const PlotModel& model, const ChartPane& studies, const PlotSlice& slice,
                    double lower, double upper) {
    m_timeAxis->setRange(lower, upper);
    const bool labelled = slice.end > slice.first;
    for (PlotScale& scale : m_scales) {
        scale.Fit(scale.Fill(model, studies, slice), m_style.axes->RangeOf(scale.Index()),
                  RoomOf(scale));
        scale.ShowLabels(labelled && !scale.IsEmpty(), model.Title().priceDecimals,
                         m_rect->height());
    }
    const int first = std::max(0, static_cast<int>(std::ceil(lower)));
    const int end = std::min(model.BarCount(), static_cast<int>(std::floor(upper)) + 1);
    PlaceMarks(model, first, end);
    if (m_levels) {
        m_levels->SetLevels(MakePriceLevels(m_style.options, model, first, end));
    }
}

ScaleRoom PlotPane::RoomOf(const PlotScale& scale) const {
    const double height = std::max(m_rect->height(), 1);
    const double mark = scale.IsOfPrices() && m_highMark ? QFontMetricsF(m_style.font).height() : 0;
    return {height, std::min(mark + kLeastRoom, height * 0.6),
            std::min(mark + std::max(kLeastRoom, height * 0.04), height * 0.2)};
}

void PlotPane::PlaceMarks(const PlotModel& model, int first, int end) {
    if (!m_highMark) {
        return;
    }
    m_highMark->setVisible(first < end);
    m_lowMark->setVisible(first < end);
    if (first >= end) {
        return;
    }
    const auto begin = model.Bars().begin();
    const auto high = std::max_element(begin + first, begin + end,
                                       [](const Bar& a, const Bar& b) { return a.high < b.high; });
    const auto low = std::min_element(begin + first, begin + end,
                                      [](const Bar& a, const Bar& b) { return a.low < b.low; });
    const auto text = [&](double price) {
        return NumberText(price, NumberKind::Price, model.Title().priceDecimals);
    };
    m_highMark->setText(text(high->high));
    m_lowMark->setText(text(low->low));
    PlaceMark(*m_highMark, static_cast<int>(high - begin), high->high, Qt::AlignBottom);
    PlaceMark(*m_lowMark, static_cast<int>(low - begin), low->low, Qt::AlignTop);
}

/// Above or below the bar, or beside its middle where the text would stand over the pane's side.
void PlotPane::PlaceMark(QCPItemText& mark, int bar, double price, Qt::Alignment vertical) {
    const double half = QFontMetricsF(m_style.font).horizontalAdvance(mark.text()) / 2 + 4;
    const double x = m_timeAxis->coordToPixel(bar);
    Qt::Alignment side = Qt::AlignHCenter;
    if (x - half < m_rect->left()) {
        side = Qt::AlignLeft;
    } else if (x + half > m_rect->right()) {
        side = Qt::AlignRight;
    }
    mark.setPositionAlignment(side | vertical);
    mark.position->setCoords(bar, price);
}

bool PlotPane::FitLegend() {
    ArrangeLegend(m_rect->outerRect().height() * kLegendShare);
    const double height = m_legend->Height();
    m_legendHeight = height > 0 ? static_cast<int>(std::ceil(height)) + 2 * kLegendPadding : 0;
    QMargins margins = m_rect->margins();
    if (margins.top() == m_legendHeight) {
        return false;
    }
    margins.setTop(m_legendHeight);
    m_rect->setMargins(margins);
    return true;
}

void PlotPane::ArrangeLegend() {
    ArrangeLegend(m_legendHeight);
}

void PlotPane::ArrangeLegend(double height) {
    const QRect outer = m_rect->outerRect();
    m_legend->Arrange(QPointF(m_rect->left() + kLegendMargin, outer.top() + kLegendPadding),
                      m_rect->width() - 2 * kLegendMargin, height);
}

QRectF PlotPane::Area() const {
    QRectF area(m_rect->rect());
    area.setTop(m_rect->outerRect().top());
    return area;
}

PlotMapping::Pane PlotPane::Geometry() const {
    const QCPRange range = m_scales.front().Axis().range();
    return {static_cast<double>(m_rect->top()), static_cast<double>(m_rect->height()), range.lower,
            range.upper};
}

}  // namespace ta::terminal
