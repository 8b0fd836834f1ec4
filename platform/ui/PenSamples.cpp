#include "platform/ui/PenSamples.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>

namespace ta::ui {
namespace {

void DrawSample(QPainter& painter, const QRectF& area, const QColor& colour, int style, int width) {
    painter.setPen(QPen(colour, width, PenStyleOf(style), Qt::FlatCap));
    // On whole pixels: an odd width goes through their middle.
    const qreal y = std::floor(area.center().y()) + (width % 2 == 0 ? 0.0 : 0.5);
    painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
}

/// Draws anew for every size and scale, in the palette in use.
class PenIconEngine : public QIconEngine {
public:
    PenIconEngine(int style, int width) : m_style(style), m_width(width) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const QPalette palette = QApplication::palette();
        const QColor colour =
            palette.color(mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active,
                          mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::Text);
        DrawSample(*painter, rect, colour, m_style, m_width);
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

    QIconEngine* clone() const override { return new PenIconEngine(*this); }

private:
    int m_style;
    int m_width;
};

}  // namespace

Qt::PenStyle PenStyleOf(int style) {
    const bool isKnown = style >= 0 && style < static_cast<int>(kPenStyles.size());
    return kPenStyles[isKnown ? static_cast<std::size_t>(style) : 0];
}

QIcon PenIcon(int style, int width) {
    return QIcon(new PenIconEngine(style, width));
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

void PenSample::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    DrawSample(painter, rect(), palette().color(QPalette::WindowText), m_style, m_width);
}

}  // namespace ta::ui
