#pragma once

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QRectF>
#include <QString>

class QPainter;

namespace ta::terminal {

/// A value or a time as it stands on an axis: a filled box with a text.
struct AxisTag {
    QString text;
    QColor fill;
    QColor textColour;
};

/// Draws a tag whose edge on `side` (top, left or right) has its middle at `middle`; moved sideways
/// as far as it needs to stay in `area`.
void DrawAxisTag(QPainter& painter, const QFont& font, const AxisTag& tag, const QPointF& middle,
                 Qt::Alignment side, const QRectF& area);

}  // namespace ta::terminal
