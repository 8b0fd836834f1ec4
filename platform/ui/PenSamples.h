#pragma once

#include "platform/Export.h"

#include <QIcon>
#include <QWidget>

#include <array>

namespace ta::ui {

/// The pens of the five line styles, by the styles' numbers: solid, dashes, dots, dash-dot,
/// dash-dot-dot. The charts draw with the same ones.
inline constexpr std::array kPenStyles{Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine,
                                       Qt::DashDotDotLine};
inline constexpr int kMaxPenWidth = 5;  ///< in pixels, from 1

/// The pen of a style; solid for a number outside of 0 to 4.
TADIALOGS_EXPORT Qt::PenStyle PenStyleOf(int style);

/// An icon of a line of the style and width, for the entries of a combo box and for buttons. Sharp
/// at any scale and size, in the colour that texts have when it is drawn.
TADIALOGS_EXPORT QIcon PenIcon(int style, int width);

/// A sample line beside a radio button, in the colour of the window's texts, grey while it is
/// disabled. In a form it is promoted from QWidget; the dialog says which pen it shows.
class TADIALOGS_EXPORT PenSample : public QWidget {
    Q_OBJECT

public:
    explicit PenSample(QWidget* parent = nullptr);

    /// 0 to 4 and 1 to kMaxPenWidth; a solid line of one pixel at first.
    void SetPen(int style, int width);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int m_style = 0;
    int m_width = 1;
};

}  // namespace ta::ui
