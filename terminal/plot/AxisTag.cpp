#include "terminal/plot/AxisTag.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace ta::terminal {

void DrawAxisTag(QPainter& painter, const QFont& font, const AxisTag& tag, const QPointF& middle,
                 Qt::Alignment side, const QRectF& area) {
    const QFontMetricsF metrics(font);
    QRectF box(0, 0, metrics.horizontalAdvance(tag.text) + 8, metrics.height() + 2);
    box.moveCenter(middle);
    if (side == Qt::AlignTop) {
        box.moveTop(middle.y());
    } else if (side == Qt::AlignLeft) {
        box.moveLeft(middle.x());
    } else {
        box.moveRight(middle.x());
    }
    box.moveLeft(std::clamp(box.left(), area.left(), std::max(area.right() - box.width(), 0.0)));
    painter.fillRect(box, tag.fill);
    painter.setFont(font);
    painter.setPen(tag.textColour);
    painter.drawText(box, Qt::AlignCenter, tag.text);
}

}  // namespace ta::terminal
