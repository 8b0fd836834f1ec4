#include "terminal/plot/CursorLine.h"

#include "terminal/plot/AxisTag.h"
#include "terminal/plot/PlotModel.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ta::terminal {
namespace {

constexpr double kSmallCross = 12;
constexpr double kReach = 8;  // of the intelligent lock, pixels

}  // namespace

double LockCursor(const PlotModel& model, const PlotMapping& mapping, bool prices,
                  const PlotCursor& cursor) {
    const PlotMapping::Pane& pane = mapping.panes[static_cast<std::size_t>(cursor.pane)];
    const bool near = CursorLockOf(model.Options()) == CursorLock::Intelligent;
    double best = cursor.y;
    double distance = near ? kReach : std::numeric_limits<double>::infinity();
    for (const double value : model.LockValues(cursor, prices)) {
        const double y = pane.YOf(value);
        if (std::isfinite(y) && std::abs(y - cursor.y) <= distance) {
            distance = std::abs(y - cursor.y);
            best = y;
        }
    }
    return best;
}

CursorLine::CursorLine(QCustomPlot& plot, const QString& layer) : QCPLayerable(&plot, layer) {}

void CursorLine::SetStyle(const PlotTheme& theme, const QFont& font) {
    m_theme = theme;
    m_font = font;
}

void CursorLine::applyDefaultAntialiasingHint(QCPPainter* painter) const {
    painter->setAntialiasing(false);
}

void CursorLine::draw(QCPPainter* painter) {
    const PlotMapping& mapping = m_picture.mapping;
    if (!m_picture.there || mapping.panes.empty()) {
        return;
    }
    const double x = mapping.XOf(m_picture.cursor.bar);
    if (x < mapping.left || x > mapping.left + mapping.width) {
        return;
    }
    if (m_picture.small && m_picture.cursor.pane >= 0) {
        DrawSmallCross(*painter, x);
    } else {
        DrawLines(*painter, x);
    }
    DrawTag(*painter, m_picture.time, {x, mapping.panes.back().Bottom() + 1}, Qt::AlignTop);
    DrawValueTags(*painter);
}

void CursorLine::DrawSmallCross(QPainter& painter, double x) const {
    const double y = m_picture.cursor.y;
    painter.setPen(QPen(m_theme.text, 0));
    painter.drawLine(QPointF(x, y - kSmallCross), QPointF(x, y + kSmallCross));
    painter.drawLine(QPointF(x - kSmallCross, y), QPointF(x + kSmallCross, y));
}

/// The upright line leaves the legends between the panes free.
void CursorLine::DrawLines(QPainter& painter, double x) const {
    const PlotMapping& mapping = m_picture.mapping;
    painter.setPen(QPen(m_theme.cursor, 0, Qt::DashLine));
    for (const PlotMapping::Pane& pane : mapping.panes) {
        painter.drawLine(QPointF(x, pane.top), QPointF(x, pane.Bottom()));
    }
    const PlotCursor& cursor = m_picture.cursor;
    if (!m_picture.cross || cursor.pane < 0) {
        return;
    }
    const auto& pane = mapping.panes[static_cast<std::size_t>(cursor.pane)];
    if (cursor.y >= pane.top && cursor.y <= pane.Bottom()) {
        painter.drawLine(QPointF(mapping.left, cursor.y),
                         QPointF(mapping.left + mapping.width, cursor.y));
    }
}

/// A value out of view is told at the pane's edge.
void CursorLine::DrawValueTags(QPainter& painter) const {
    const PlotCursor& cursor = m_picture.cursor;
    if (!m_picture.cross || cursor.pane < 0) {
        return;
    }
    const PlotMapping& mapping = m_picture.mapping;
    const auto& pane = mapping.panes[static_cast<std::size_t>(cursor.pane)];
    const double y = std::clamp(cursor.y, pane.top, pane.Bottom());
    if (m_picture.tagRight) {
        DrawTag(painter, m_picture.value, {mapping.left + mapping.width + 1, y}, Qt::AlignLeft);
    }
    if (m_picture.tagLeft) {
        DrawTag(painter, m_picture.value, {mapping.left - 1, y}, Qt::AlignRight);
    }
}

void CursorLine::DrawTag(QPainter& painter, const QString& text, const QPointF& middle,
                         Qt::Alignment side) const {
    DrawAxisTag(painter, m_font, {text, m_theme.tag, m_theme.tagText}, middle, side,
                parentPlot()->viewport());
}

}  // namespace ta::terminal
