#include "terminal/frame/DrawingIcons.h"

#include <QPainter>
#include <QPixmap>

#include <vector>

namespace ta::terminal {
namespace {

constexpr int kSide = 20;     // pixels, and the grid of the strokes
constexpr double kScale = 2;  // for screens with more pixels

struct Stroke {
    double x1 = 0;
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;
    bool dashed = false;
};

struct Drawing {
    std::vector<Stroke> strokes;
    std::vector<QPointF> handles;
};

Drawing DrawingOf(std::optional<TrendLineKind> tool) {
    if (!tool) {
        return {{{5, 3, 5, 16}, {5, 3, 14, 12}, {5, 16, 8.5, 12}, {8.5, 12, 14, 12}}, {}};
    }
    switch (*tool) {
        case TrendLineKind::Horizontal:
            return {{{1, 10, 19, 10}}, {{10, 10}}};
        case TrendLineKind::Line:
            return {{{1, 17, 19, 3}}, {{6, 13.1}, {14, 6.9}}};
        case TrendLineKind::Segment:
            return {{{4, 15, 16, 5}}, {{4, 15}, {16, 5}}};
        case TrendLineKind::Parallel:
            return {{{1, 13, 15, 2}, {5, 18, 19, 7}}, {{4, 10.6}, {12, 4.4}, {12, 12.5}}};
        case TrendLineKind::RailLine:
            return {{{1, 12, 13, 2}, {2, 17, 18, 4, true}, {7, 18, 19, 8}}, {{12, 13.8}}};
        case TrendLineKind::GoldenCut:
            return {{{2, 3, 19, 3},
                     {2, 8.5, 19, 8.5},
                     {2, 11.5, 19, 11.5},
                     {2, 17, 19, 17},
                     {3, 17, 12, 3, true}},
                    {}};
    }
    return {};
}

}  // namespace

QIcon DrawingIcon(std::optional<TrendLineKind> tool, const QPalette& palette) {
    QPixmap pixmap(QSize(kSide, kSide) * kScale);
    pixmap.setDevicePixelRatio(kScale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor ink = palette.color(QPalette::ButtonText);
    const Drawing drawing = DrawingOf(tool);
    for (const Stroke& stroke : drawing.strokes) {
        painter.setPen(QPen(ink, stroke.dashed ? 1 : 1.5,
                            stroke.dashed ? Qt::DashLine : Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(stroke.x1, stroke.y1), QPointF(stroke.x2, stroke.y2));
    }
    painter.setPen(QPen(ink, 1));
    painter.setBrush(palette.color(QPalette::Highlight));
    for (const QPointF& handle : drawing.handles) {
        painter.drawRect(QRectF(handle - QPointF(1.75, 1.75), QSizeF(3.5, 3.5)));
    }
    return pixmap;
}

}  // namespace ta::terminal
