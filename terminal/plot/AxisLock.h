#pragma once

#include <qcustomplot.h>
#include <QColor>

namespace ta::terminal {

/// A small padlock at the upper end of a value axis, where its labels stand: its range is set by
/// hand. The plot owns it through its layer until it is deleted.
class AxisLock : public QCPLayerable {
public:
    /// Of the picture, pixels.
    static constexpr int kHeight = 12;

    /// `axis` outlives it.
    AxisLock(QCPAxis& axis, const QColor& colour);

protected:
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
    void draw(QCPPainter* painter) override;

private:
    QCPAxis& m_axis;
    QColor m_colour;
};

}  // namespace ta::terminal
