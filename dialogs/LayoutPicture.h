#pragma once

#include <QWidget>

namespace ta::ui {

/// A small picture of an arrangement of chart windows, from the table of them: sharp at any scale,
/// in the colours of the palette. In a form it is promoted from QWidget.
class LayoutPicture : public QWidget {
    Q_OBJECT

public:
    explicit LayoutPicture(QWidget* parent = nullptr);

    /// 1 to 13; that of format 1 at first.
    void SetFormat(int format);

    QSize sizeHint() const override;

signals:
    /// A click with the left button.
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    int m_format = 1;
};

}  // namespace ta::ui
