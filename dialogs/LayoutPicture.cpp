#include "dialogs/LayoutPicture.h"

#include "dialogs/WindowLayouts.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace ta::ui {
namespace {

/// A part of the picture in whole pixels. Neighbours share no pixel and leave none free.
QRect PixelsOf(const layout::Area& area, const QSize& size) {
    const auto at = [](double place, int whole) {
        return static_cast<int>(std::lround(place * whole));
    };
    return {QPoint(at(area.left, size.width()), at(area.top, size.height())),
            QPoint(at(area.left + area.width, size.width()) - 1,
                   at(area.top + area.height, size.height()) - 1)};
}

}  // namespace

LayoutPicture::LayoutPicture(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void LayoutPicture::SetFormat(int format) {
    m_format = format;
    update();
}

QSize LayoutPicture::sizeHint() const {
    const int em = fontMetrics().height();
    return {em * 6, em * 4};
}

void LayoutPicture::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) {
        emit clicked();
    }
}

void LayoutPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const double scale = painter.device()->devicePixelRatioF();
    painter.scale(1 / scale, 1 / scale);  // the screen's own pixels
    const int line = std::max(1, static_cast<int>(std::lround(scale)));
    const QSize size = (QSizeF(this->size()) * scale).toSize();
    for (const layout::Area& area : layout::Windows(layout::LayoutOf(m_format))) {
        const QRect window = PixelsOf(area, size).adjusted(line, line, -line, -line);
        painter.fillRect(window, palette().color(QPalette::WindowText));
        painter.fillRect(window.adjusted(line, line, -line, -line),
                         palette().color(QPalette::Base));
    }
}

}  // namespace ta::ui
