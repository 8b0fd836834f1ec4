#include "terminal/plot/AxisLock.h"

namespace ta::terminal {
namespace {

constexpr int kWidth = 8;
constexpr int kBodyTop = 5;
constexpr int kFromAxis = 5;

}  // namespace

AxisLock::AxisLock(QCPAxis& axis, const QColor& colour)
    : QCPLayerable(axis.parentPlot(), QStringLiteral("axes")), m_axis(axis), m_colour(colour) {
    setParentLayerable(&axis);
    setVisible(false);
}

void AxisLock::applyDefaultAntialiasingHint(QCPPainter* painter) const {
    painter->setAntialiasing(true);
}

void AxisLock::draw(QCPPainter* painter) {
    const QRectF rect = m_axis.axisRect()->rect();
    const bool left = m_axis.axisType() == QCPAxis::atLeft;
    const double distance = m_axis.offset() + kFromAxis;
    painter->translate(left ? rect.left() - distance - kWidth : rect.right() + distance,
                       rect.top() + 1);
    painter->setPen(QPen(m_colour, 1.4));
    painter->setBrush(Qt::NoBrush);
    painter->drawArc(QRectF(1.5, 0.7, kWidth - 3, 9), 0, 180 * 16);
    painter->setPen(Qt::NoPen);
    painter->setBrush(m_colour);
    painter->drawRect(QRectF(0, kBodyTop, kWidth, AxisLock::kHeight - kBodyTop));
}

}  // namespace ta::terminal
