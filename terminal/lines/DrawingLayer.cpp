#include "terminal/lines/DrawingLayer.h"

#include "platform/ui/PenSamples.h"
#include "terminal/plot/PlotNumbers.h"

#include <cmath>

namespace ta::terminal {
namespace {

constexpr double kHandleSize = 7;
constexpr int kHalo = 6;  // pixels wider than the line
constexpr int kHaloAlpha = 60;
constexpr double kLabelGap = 4;
constexpr int kGuideStyle = 1;  // dashes

QCPLayer& LayerOf(QCustomPlot& plot) {
    const QString name = QStringLiteral("drawings");
    plot.addLayer(name, plot.layer(QStringLiteral("overlay")), QCustomPlot::limBelow);
    plot.layer(name)->setMode(QCPLayer::lmBuffered);
    return *plot.layer(name);
}

bool IsLevel(const QLineF& line) {
    return line.dx() == 0 || line.dy() == 0;
}

/// Level and upright lines are sharp; the others are smooth.
void Draw(QPainter& painter, const std::vector<QLineF>& lines, const QPen& pen) {
    painter.setPen(pen);
    for (const QLineF& line : lines) {
        painter.setRenderHint(QPainter::Antialiasing, !IsLevel(line));
        painter.drawLine(IsLevel(line) ? QLineF(line.toLine()) : line);
    }
}

}  // namespace

DrawingLayer::DrawingLayer(QCustomPlot& plot, std::function<DrawingFrame()> frame)
    : QCPLayerable(&plot), m_frame(std::move(frame)) {
    setLayer(&LayerOf(plot));
}

void DrawingLayer::SetStyle(const PlotTheme& theme, const QFont& font) {
    m_theme = theme;
    m_font = font;
}

void DrawingLayer::applyDefaultAntialiasingHint(QCPPainter* painter) const {
    painter->setAntialiasing(true);
}

void DrawingLayer::draw(QCPPainter* painter) {
    const DrawingFrame frame = m_frame();
    if (!frame.IsDrawable()) {
        return;
    }
    painter->save();
    painter->setClipRect(frame.Area());
    painter->setFont(m_font);
    for (const bool selected : {false, true}) {
        for (const DrawnLine& drawn : m_lines) {
            if (drawn.selected == selected) {
                DrawLine(*painter, drawn.line, frame, selected);
            }
        }
    }
    if (m_preview) {
        DrawLine(*painter, *m_preview, frame, true);
    }
    painter->restore();
}

void DrawingLayer::DrawLine(QPainter& painter, const TrendLine& line, const DrawingFrame& frame,
                            bool selected) const {
    const TrendLinePicture picture = MakePicture(line, frame);
    const QColor colour = m_theme.Readable(line.pen.colour);
    if (selected) {
        QColor halo = colour;
        halo.setAlpha(kHaloAlpha);
        Draw(painter, picture.lines, QPen(halo, line.pen.width + kHalo));
    }
    Draw(painter, picture.guides, ui::MakePen(colour, kGuideStyle, 1));
    Draw(painter, picture.lines, ui::MakePen(colour, line.pen.style, line.pen.width));
    for (const TrendLinePicture::Label& label : picture.labels) {
        DrawLabel(painter, label, frame, colour);
    }
    if (selected) {
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.setPen(QPen(colour, 1));
        painter.setBrush(line.locked ? colour : m_theme.background);
        for (const QPointF& handle : picture.handles) {
            const QPointF corner(std::round(handle.x() - kHandleSize / 2),
                                 std::round(handle.y() - kHandleSize / 2));
            painter.drawRect(QRectF(corner, QSizeF(kHandleSize, kHandleSize)));
        }
    }
}

/// A level's before its line, where there is room, to keep the latest bars free; else over an end.
void DrawingLayer::DrawLabel(QPainter& painter, const TrendLinePicture::Label& label,
                             const DrawingFrame& frame, const QColor& colour) const {
    const bool isLevel = label.level >= 0;
    QString text = NumberText(label.price, NumberKind::Price, frame.priceDecimals);
    if (isLevel) {
        text = QStringLiteral("%1%  %2").arg(label.level * 100, 0, 'f', 1).arg(text);
    }
    const QFontMetricsF metrics(m_font);
    QRectF box(0, 0, metrics.horizontalAdvance(text), metrics.height());
    box.moveCenter(label.line.p1());
    box.moveRight(label.line.x1() - kLabelGap);
    if (!isLevel || box.left() < frame.Area().left()) {
        box.moveBottom(label.line.y1() - 1);
        box.moveLeft(isLevel ? label.line.x1() + kLabelGap
                             : label.line.x2() - box.width() - kLabelGap);
    }
    QColor behind = m_theme.background;
    behind.setAlpha(170);
    painter.fillRect(box, behind);
    painter.setPen(colour);
    painter.drawText(box, Qt::AlignCenter, text);
}

}  // namespace ta::terminal
