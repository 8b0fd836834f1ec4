#pragma once

#include <QColor>
#include <QPalette>

#include <cstdint>

namespace ta::terminal {

/// The pen of a stored line style, 0 to 4 as StudyShape::style; beyond that the nearest.
Qt::PenStyle PenStyleOf(int style);

/// The chart's colours, made from a palette: light or dark as its base is.
struct PlotTheme {
    QColor background;
    QColor text;
    QColor faintText;
    QColor axis;
    QColor grid;
    QColor cursor;
    QColor tag;  ///< behind the values at the cursor line's ends
    QColor tagText;
    QColor rising;
    QColor falling;

    /// `risingRed`: red for rising and green for falling; false: the reverse.
    static PlotTheme FromPalette(const QPalette& palette, bool risingRed);

    /// A study's 0xRRGGBB, made lighter or darker as far as it needs to stand out from the
    /// background.
    QColor Readable(std::uint32_t rgb) const;
    /// rising, falling, or text for 0 and NaN.
    const QColor& OfChange(double change) const;
};

}  // namespace ta::terminal
