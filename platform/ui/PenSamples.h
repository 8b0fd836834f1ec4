#pragma once

#include "platform/Export.h"

#include <QColor>
#include <QIcon>
#include <QPen>
#include <QWidget>

#include <array>

namespace ta::ui {

/// The pens of the five line styles, by the styles' numbers: solid, dashes, dots, dash-dot,
/// dash-dot-dot.
inline constexpr std::array kPenStyles{Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine,
                                       Qt::DashDotDotLine};
inline constexpr int kMaxPenWidth = 5;  ///< in pixels, from 1

/// The pen of a style; solid for a number outside of 0 to 4.
TADIALOGS_EXPORT Qt::PenStyle PenStyleOf(int style);

/// What charts draw lines with, and every sample here. `width` in pixels.
TADIALOGS_EXPORT QPen MakePen(const QColor& colour, int style, int width);

/// The language key of a style's name; of the solid line's for a number outside of 0 to 4.
TADIALOGS_EXPORT const char* PenStyleKey(int style);

/// An icon of a line of the style and width, for the entries of lists and menus and for buttons.
/// Sharp at any scale and size. Without a colour, disabled and in a selected row it has that of
/// texts when it is drawn.
TADIALOGS_EXPORT QIcon PenIcon(int style, int width, const QColor& colour = {});

/// The same of a box filled with a colour, framed in that of texts.
TADIALOGS_EXPORT QIcon ColourIcon(const QColor& colour);

/// A sample line beside a radio button, in the colour of the window's texts, grey while it is
/// disabled. In a form it is promoted from QWidget; the dialog says which pen it shows.
class TADIALOGS_EXPORT PenSample : public QWidget {
    Q_OBJECT

public:
    explicit PenSample(QWidget* parent = nullptr);

    /// 0 to 4 and 1 to kMaxPenWidth; a solid line of one pixel at first.
    void SetPen(int style, int width);

    QSize sizeHint() const override;

signals:
    /// A click with the left button; the dialog presses the radio button that it stands beside.
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    int m_style = 0;
    int m_width = 1;
};

}  // namespace ta::ui
