#pragma once

#include "platform/Export.h"
#include "platform/ui/DialogBase.h"
#include "platform/ui/RadioTable.h"

#include <QRect>

#include <array>
#include <memory>

class QRadioButton;

namespace Ui {
class MXSELTAWND;
}

namespace ta::ui {
class LayoutPicture;
}

/// Asks how many chart windows there are and how they are arranged, with a radio button and a
/// picture for each of the thirteen layouts (dialogs/WindowLayouts.h). Modal; the caller reads
/// GetCurrentFormatNumber after DoModal gave kIdOk, and keeps his own value after kIdCancel.
/// A double click on a radio button is OK, too. Nothing is stored.
class TADIALOGS_EXPORT MXSELTAWND : public ta::ui::DialogBase {
    Q_OBJECT

public:
    /// `format`: the layout now, 1 to 13. Another number checks no radio button, and is given back
    /// unless the user chooses.
    explicit MXSELTAWND(int format, QWidget* parent = nullptr);
    ~MXSELTAWND() override;

    /// The layout that is chosen.
    int GetCurrentFormatNumber() const { return m_nFormat; }
    /// The place of the current layout's radio button on the screen, from 0; the format - 1 for a
    /// format outside of 1 to 13.
    int iGetRioFrmtByFormat() const;

    /// The frame around a picture, in pixels of the dialog: the picture and 2 pixels on every side.
    /// `index` is the picture's format - 1, 0 to 12; an empty rectangle for another number.
    QRect getFormatRect(const int& index) const;
    /// Frames a picture in colour and takes the frames of the others away. `index` as above; none
    /// is framed for another number.
    void showSelFormatRect(const int& index);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    bool OnInitDialog() override;
    void paintEvent(QPaintEvent* event) override;

private:
    static constexpr int kCount = 13;

    void ChooseRadio(int radioIndex);

    int m_nFormat;
    int m_nRadio = -1;  ///< place of the checked radio button on the screen; -1: none
    int m_framed = -1;  ///< index of the framed picture
    std::unique_ptr<Ui::MXSELTAWND> m_ui;
    std::array<QRadioButton*, kCount> m_radios = {};             ///< by format - 1
    std::array<ta::ui::LayoutPicture*, kCount> m_pictures = {};  ///< by format - 1
    ta::ui::RadioTable m_layouts;                                ///< its values are radio indexes
};
