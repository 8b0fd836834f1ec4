#include "terminal/chart/ChartScene.h"
#include "terminal/plot/ChartAxes.h"
#include "terminal/plot/PaneRepaint.h"

#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

// The value axes of a chart.

namespace ta::terminal {
namespace {

double LabelsWidth(const PlotPane& pane, QCPAxis::AxisType side) {
    double width = 0;
    for (const PlotScale& scale : pane.Scales()) {
        width += scale.LabelsWidth(side);
    }
    return width;
}

/// Gives a pane's axes on a side `percent` of `asked`, which all its panes have room for. The
/// margin, pixels.
int Narrow(PlotPane& pane, QCPAxis::AxisType side, double asked, int percent) {
    const double own = LabelsWidth(pane, side);
    for (PlotScale& scale : pane.Scales()) {
        const double share = own > 0 ? scale.LabelsWidth(side) / own : 0;
        scale.Narrow(side, asked * share, percent);
    }
    return static_cast<int>(std::lround(asked * percent / 100));
}

}  // namespace

/// Below their full width the margins are not the plot's affair, but a share of what the labels
/// have asked for so far.
void ChartScene::NarrowAxes() {
    const int percent = m_axes.WidthPercent();
    if (percent == 100) {
        return;
    }
    for (const auto& pane : m_panes) {
        m_askedLeft = std::max(m_askedLeft, LabelsWidth(*pane, QCPAxis::atLeft));
        m_askedRight = std::max(m_askedRight, LabelsWidth(*pane, QCPAxis::atRight));
    }
    for (const auto& pane : m_panes) {
        QCPAxisRect& rect = pane->Rect();
        QMargins margins = rect.margins();
        if (m_askedLeft > 0) {
            margins.setLeft(Narrow(*pane, QCPAxis::atLeft, m_askedLeft, percent));
            rect.setAutoMargins(rect.autoMargins() & ~QCP::MarginSides(QCP::msLeft));
        }
        if (m_askedRight > 0) {
            margins.setRight(Narrow(*pane, QCPAxis::atRight, m_askedRight, percent));
            rect.setAutoMargins(rect.autoMargins() & ~QCP::MarginSides(QCP::msRight));
        }
        rect.setMargins(margins);
    }
}

bool ChartScene::HasRoomForLabels(const PlotPane& pane) const {
    constexpr double kSlack = 3;  // of the free pixels that the plot leaves beside labels
    const bool narrow = m_axes.WidthPercent() != 100;
    const QMargins margins = pane.Rect().margins();
    const double left = narrow ? m_askedLeft : margins.left() + kSlack;
    const double right = narrow ? m_askedRight : margins.right() + kSlack;
    return LabelsWidth(pane, QCPAxis::atLeft) <= left &&
           LabelsWidth(pane, QCPAxis::atRight) <= right;
}

void ChartScene::RangeChanged(int pane) {
    const auto index = static_cast<std::size_t>(pane);
    if (!m_isOld && index < m_panes.size()) {
        QCPAxisRect& rect = m_panes[index]->Rect();
        FillPane(index, Slice());
        rect.update(QCPLayoutElement::upPreparation);
        if (HasRoomForLabels(*m_panes[index]) && RepaintPane(m_plot, rect)) {
            ArrangeOverlay();
            for (int i = 0; i < m_plot.layerCount(); ++i) {
                if (m_plot.layer(i)->mode() == QCPLayer::lmBuffered) {
                    m_plot.layer(i)->replot();
                }
            }
            return;
        }
    }
    m_isOld = true;
    Update(QCustomPlot::rpRefreshHint);
}

AxisPlace ChartScene::AxisAt(const QPointF& position) {
    const PlotMapping mapping = Mapping();
    const int pane = mapping.PaneAt(position.y());
    const double right = position.x() - (mapping.left + mapping.width);
    const double distance = std::max(right, mapping.left - position.x());
    if (pane < 0 || distance <= 0) {
        return {};
    }
    AxisPlace place;
    int nearest = -1;
    const auto& scales = m_panes[static_cast<std::size_t>(pane)]->Scales();
    for (std::size_t i = 0; i < scales.size(); ++i) {
        const QCPAxis* axis =
            scales[i].LabelledAxis(right > 0 ? QCPAxis::atRight : QCPAxis::atLeft);
        if (axis && axis->offset() <= distance && axis->offset() > nearest) {
            nearest = axis->offset();
            place = {pane, static_cast<int>(i)};
        }
    }
    return place;
}

std::optional<AxisState> ChartScene::StateOf(const AxisPlace& place) {
    Update();
    const auto pane = static_cast<std::size_t>(place.pane);
    const auto index = static_cast<std::size_t>(place.scale);
    if (!place.IsThere() || pane >= m_panes.size() || index >= m_panes[pane]->Scales().size()) {
        return std::nullopt;
    }
    const PlotScale& scale = m_panes[pane]->Scales()[index];
    const ValueSpan values = scale.WholeSpan(m_model, m_model.Panes()[pane]);
    if (values.IsEmpty()) {
        return std::nullopt;
    }
    const QCPRange shown = scale.Axis().range();
    return AxisState{scale.Index(), scale.Numbers(), scale.IsByHand(),
                     shown.lower,   shown.upper,     values};
}

}  // namespace ta::terminal
