#include "terminal/plot/CursorLine.h"

#include "terminal/plot/PlotModel.h"

#include <cmath>

namespace ta::terminal {
namespace {

constexpr double kSmallCross = 12;

}  // namespace

double LockCursor(const PlotModel& model, const PlotMapping& mapping, bool prices,
                  const PlotCursor& cursor) {
    const PlotMapping::Pane& pane = mapping.panes[static_cast<std::size_t>(cursor.pane)];
    double best = cursor.y;
    double distance = -1;
    for (const double value : model.LockValues(cursor, prices)) {
        const double y = pane.YOf(value);
        if (std::isfinite(y) && (distance < 0 || std::abs(y - cursor.y) < distance)) {
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
    const double right = mapping.left + mapping.width;
    if (x < mapping.left || x > right) {
        return;
    }
    const double y = m_picture.cursor.y;
    const bool level = m_picture.cursor.pane >= 0;
    painter->setPen(QPen(m_theme.cursor, 0, Qt::DashLine));
    if (m_picture.small && level) {
        painter->setPen(QPen(m_theme.text, 0));
        painter->drawLine(QPointF(x, y - kSmallCross), QPointF(x, y + kSmallCross));
        painter->drawLine(QPointF(x - kSmallCross, y), QPointF(x + kSmallCross, y));
    } else {
        painter->drawLine(QPointF(x, mapping.panes.front().top),
                          QPointF(x, mapping.panes.back().Bottom()));
        if (m_picture.cross && level) {
            painter->drawLine(QPointF(mapping.left, y), QPointF(right, y));
        }
    }
    DrawTag(*painter, m_picture.time, {x, mapping.panes.back().Bottom() + 1}, Qt::AlignTop);
    if (!level || !m_picture.cross) {
        return;
    }
    if (m_picture.tagRight) {
        DrawTag(*painter, m_picture.value, {right + 1, y}, Qt::AlignLeft);
    }
    if (m_picture.tagLeft) {
        DrawTag(*painter, m_picture.value, {mapping.left - 1, y}, Qt::AlignRight);
    }
}

/// `middle` is the middle of the tag's edge on `side`.
void CursorLine::DrawTag(QPainter& painter, const QString& text, QPointF middle,
                         Qt::Alignment side) const {
    const QFontMetricsF metrics(m_font);
    QRectF box(0, 0, metrics.horizontalAdvance(text) + 8, metrics.height() + 2);
    box.moveCenter(middle);
    if (side == Qt::AlignTop) {
        box.moveTop(middle.y());
    } else if (side == Qt::AlignLeft) {
        box.moveLeft(middle.x());
    } else {
        box.moveRight(middle.x());
    }
    const QRectF widget = parentPlot()->viewport();
    box.moveLeft(
        std::clamp(box.left(), widget.left(), std::max(widget.right() - box.width(), 0.0)));
    painter.fillRect(box, m_theme.tag);
    painter.setFont(m_font);
    painter.setPen(m_theme.tagText);
    painter.drawText(box, Qt::AlignCenter, text);
}

}  // namespace ta::terminal
