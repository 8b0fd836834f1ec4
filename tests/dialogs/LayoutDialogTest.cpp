// The dialog of the window layouts.

#include "dialogs/MXSELTAWND.h"
#include "dialogs/WindowLayouts.h"
#include "tests/support/DialogFixture.h"

#include <QRadioButton>
#include <QTest>

namespace ta::test {
namespace {

constexpr QColor kFramed(64, 255, 255);

class LayoutDialogTest : public DialogFixture {
protected:
    static int RadioId(int format) { return 16066 + format; }
    static int PictureId(int format) { return 16087 + format; }
    /// The format whose radio is checked; 0: none.
    static int Checked(const MXSELTAWND& dialog) {
        int checked = 0;
        for (int format = 1; format <= 13; ++format) {
            if (Item<QRadioButton>(dialog, RadioId(format)).isChecked()) {
                EXPECT_EQ(checked, 0);
                checked = format;
            }
        }
        return checked;
    }
    /// The format whose picture is framed, seen on the screen; 0: none.
    static int Framed(MXSELTAWND& dialog) {
        const QImage screen = dialog.grab().toImage();
        int framed = 0;
        for (int format = 1; format <= 13; ++format) {
            const QRect frame = dialog.getFormatRect(format - 1);
            const QColor colour = screen.pixelColor(frame.topLeft());
            for (const QPoint& corner : {frame.topLeft() + QPoint(1, 1), frame.topRight(),
                                         frame.bottomLeft(), frame.bottomRight()}) {
                EXPECT_EQ(screen.pixelColor(corner), colour) << format;
            }
            framed = colour == kFramed ? format : framed;
            EXPECT_TRUE(colour == kFramed || colour == dialog.palette().color(QPalette::Window));
            EXPECT_NE(screen.pixelColor(frame.topLeft() - QPoint(1, 1)), kFramed);
        }
        return framed;
    }
};

TEST_F(LayoutDialogTest, OpensOnTheFormatAndGivesItBack) {
    for (int format = 1; format <= 13; ++format) {
        MXSELTAWND dialog(format);
        Show(dialog);
        EXPECT_EQ(Checked(dialog), format);
        EXPECT_EQ(Framed(dialog), format);
        EXPECT_EQ(dialog.focusWidget(), dialog.GetDlgItem(RadioId(format)));
        EXPECT_EQ(dialog.iGetRioFrmtByFormat(), layout::LayoutOf(format).radioIndex);
        Press(dialog, Qt::Key_Return);
        EXPECT_EQ(dialog.result(), QDialog::Accepted);
        EXPECT_EQ(dialog.GetCurrentFormatNumber(), format);
    }
    for (const int unknown : {0, 14, -5, 1000}) {
        MXSELTAWND dialog(unknown);
        Show(dialog);
        EXPECT_EQ(Checked(dialog), 0);
        EXPECT_EQ(Framed(dialog), 0);
        EXPECT_EQ(dialog.iGetRioFrmtByFormat(), unknown - 1);
        Click(dialog, ui::kIdOk);
        EXPECT_EQ(dialog.GetCurrentFormatNumber(), unknown);
    }
}

TEST_F(LayoutDialogTest, RadiosPicturesAndKeysChoose) {
    MXSELTAWND dialog(0);
    Show(dialog);
    for (int format = 13; format >= 1; --format) {
        Click(dialog, RadioId(format));
        EXPECT_EQ(dialog.GetCurrentFormatNumber(), format);
        EXPECT_EQ(Framed(dialog), format);
    }
    for (int format = 13; format >= 1; --format) {
        Click(dialog, PictureId(format));
        EXPECT_EQ(dialog.GetCurrentFormatNumber(), format);
        EXPECT_EQ(Checked(dialog), format);
        EXPECT_EQ(Framed(dialog), format);
    }
    Press(dialog, Qt::Key_Right);
    EXPECT_EQ(dialog.GetCurrentFormatNumber(), 2);
    Press(dialog, Qt::Key_Down);
    EXPECT_EQ(Framed(dialog), dialog.GetCurrentFormatNumber());
    EXPECT_NE(dialog.GetCurrentFormatNumber(), 2);
    EXPECT_TRUE(dialog.isVisible());
    Press(dialog, Qt::Key_Escape);
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
}

TEST_F(LayoutDialogTest, ADoubleClickOnARadioIsOk) {
    for (const int format : {12, 4}) {
        MXSELTAWND dialog(4);
        Show(dialog);
        auto& radio = Item<QRadioButton>(dialog, RadioId(format));
        Click(radio);
        QTest::mouseDClick(&radio, Qt::RightButton);
        EXPECT_TRUE(dialog.isVisible());
        QTest::mouseDClick(&radio, Qt::LeftButton);
        EXPECT_EQ(dialog.result(), QDialog::Accepted);
        EXPECT_EQ(dialog.GetCurrentFormatNumber(), format);
    }
    MXSELTAWND dialog(4);
    Show(dialog);
    QTest::mouseDClick(&Item<QWidget>(dialog, PictureId(12)), Qt::LeftButton);
    EXPECT_TRUE(dialog.isVisible()) << "on a picture it is two clicks";
}

TEST_F(LayoutDialogTest, ThePicturesShowTheWindowsOfTheTable) {
    MXSELTAWND dialog(1);
    Show(dialog);
    for (const layout::Layout& layout : layout::Layouts()) {
        auto& picture = Item<QWidget>(dialog, PictureId(layout.format));
        const QImage image = picture.grab().toImage();
        const auto pixel = [&image](double x, double y) {
            return image.pixelColor(
                std::min(static_cast<int>(x * image.width()), image.width() - 1),
                std::min(static_cast<int>(y * image.height()), image.height() - 1));
        };
        const QColor paper = picture.palette().color(QPalette::Base);
        const QColor ground = picture.palette().color(QPalette::Window);
        for (const layout::Area& area : layout::Windows(layout)) {
            EXPECT_EQ(pixel(area.left + area.width / 2, area.top + area.height / 2), paper);
            EXPECT_EQ(pixel(area.left + area.width / 2, area.top), ground) << layout.format;
            EXPECT_EQ(pixel(area.left, area.top + area.height / 2), ground) << layout.format;
        }
    }
}

TEST_F(LayoutDialogTest, ItsTexts) {
    MXSELTAWND dialog(1);
    Show(dialog);
    const QString prefix = "IDS_DIALOG-DELTAWND_";
    const char* const names[] = {"SHOWONE",      "SHOWTWO", "SHOWTHREE",    "SHOWFOUR",
                                 "SHOWFIVE",     "SHOWSIX", "SHOWSEVEN",    "SHOWEIGHT",
                                 "SHOWNINE",     "SHOWTEN", "SHOWFIVE_ADV", "SHOWSIX_ADV",
                                 "SHOWSEVEN_ADV"};
    for (int format = 1; format <= 13; ++format) {
        EXPECT_EQ(Item<QRadioButton>(dialog, RadioId(format)).text(), prefix + names[format - 1]);
    }
    EXPECT_EQ(dialog.windowTitle(), prefix + "TITLE");
    EXPECT_EQ(Item<QAbstractButton>(dialog, ui::kIdOk).text(), prefix + "OK");
    EXPECT_EQ(Item<QAbstractButton>(dialog, ui::kIdCancel).text(), prefix + "CANCEL");
}

}  // namespace
}  // namespace ta::test
