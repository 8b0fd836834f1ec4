#include "platform/ui/PenSamples.h"

#include <QApplication>
#include <QIconEngine>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

namespace ta::ui {
namespace {

void DrawSample(QPainter& painter, const QRectF& area, const QColor& colour, int style, int width) {
    QPen pen = MakePen(colour, style, width);
    pen.setCapStyle(Qt::FlatCap);  // ends at the area's edges
    painter.setPen(pen);
    // On whole pixels: an odd width goes through their middle.
    const qreal y = std::floor(area.center().y()) + (width % 2 == 0 ? 0.0 : 0.5);
    painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
}

QColor TextColour(QIcon::Mode mode) {
    return QApplication::palette().color(
        mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active,
        mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::Text);
}

/// Draws anew for every size and scale, in the palette in use.
class SampleIconEngine : public QIconEngine {
public:
    using Drawing = std::function<void(QPainter&, const QRect&, QIcon::Mode)>;

    explicit SampleIconEngine(Drawing draw) : m_draw(std::move(draw)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        m_draw(*painter, rect, mode);
    }

    /// `size` is in pixels of the screen, `scale` of which make one of the window.
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state,
                         qreal scale) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.scale(scale, scale);
        paint(&painter, QRect({}, (QSizeF(size) / scale).toSize()), mode, state);
        return pixmap;
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return scaledPixmap(size, mode, state, 1);
    }

    QIconEngine* clone() const override { return new SampleIconEngine(*this); }

private:
    Drawing m_draw;
};

}  // namespace

Qt::PenStyle PenStyleOf(int style) {
    const bool isKnown = style >= 0 && style < static_cast<int>(kPenStyles.size());
    return kPenStyles[isKnown ? static_cast<std::size_t>(style) : 0];
}

const char* PenStyleKey(int style) {
    constexpr std::array<const char*, kPenStyles.size()> kKeys{
        "IDS_TADIALOGS-SHEET_STYLE_SOLID", "IDS_TADIALOGS-SHEET_STYLE_DASH",
        "IDS_TADIALOGS-SHEET_STYLE_DOT", "IDS_TADIALOGS-SHEET_STYLE_DASH_DOT",
        "IDS_TADIALOGS-SHEET_STYLE_DASH_DOT_DOT"};
    const auto* const found = std::ranges::find(kPenStyles, PenStyleOf(style));
    return kKeys[static_cast<std::size_t>(found - kPenStyles.begin())];
}

QPen MakePen(const QColor& colour, int style, int width) {
    const Qt::PenStyle pattern = PenStyleOf(style);
    // Other caps would make dashes longer than their gaps leave room for.
    return {colour, static_cast<qreal>(width), pattern,
            pattern == Qt::SolidLine ? Qt::SquareCap : Qt::FlatCap};
}

QIcon PenIcon(int style, int width, const QColor& colour) {
    return QIcon(new SampleIconEngine([=](QPainter& painter, const QRect& area, QIcon::Mode mode) {
        // On the background of a selected row any colour may be lost.
        const bool isOwn = colour.isValid() && mode != QIcon::Selected && mode != QIcon::Disabled;
        DrawSample(painter, area, isOwn ? colour : TextColour(mode), style, width);
    }));
}

QIcon ColourIcon(const QColor& colour) {
    return QIcon(
        new SampleIconEngine([colour](QPainter& painter, const QRect& area, QIcon::Mode mode) {
            painter.setPen(TextColour(mode));
            painter.setBrush(colour);
            painter.drawRect(area.adjusted(0, 0, -1, -1));
        }));
}

PenSample::PenSample(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void PenSample::SetPen(int style, int width) {
    m_style = style;
    m_width = width;
    update();
}

QSize PenSample::sizeHint() const {
    const int em = fontMetrics().height();
    return {em * 5, em};
}

void PenSample::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) {
        emit clicked();
    }
}

void PenSample::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    DrawSample(painter, rect(), palette().color(QPalette::WindowText), m_style, m_width);
}

}  // namespace ta::ui
