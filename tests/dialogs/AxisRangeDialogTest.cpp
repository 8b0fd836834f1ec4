// The dialogs of a value axis' range, and of the axis' width and the edge space.

#include "dialogs/SetXaxisRangeDlg.h"
#include "dialogs/SetYaxisRangeDlg.h"
#include "tests/support/DialogFixture.h"

#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

namespace ta::test {
namespace {

/// Writes down what is set: "3 auto", "3 user", "3 max 120", "3 min 0".
class AxisDrawInfo : public MemoryDrawInfo {
public:
    AxisDrawInfo() : MemoryDrawInfo({}) { common.iCurrentAxis = 3; }

    bool automatic = false;
    QStringList calls;

    bool bGetYaxisRangeAutomatically(int axis) const override { return axis != 3 || automatic; }
    void vSetYaxisRangeAutomatically(int axis, bool on) override {
        calls += QString("%1 %2").arg(axis).arg(on ? "auto" : "user");
    }
    void vSetYaxisMaxVal(int axis, double value) override {
        calls += QString("%1 max %2").arg(axis).arg(value, 0, 'g', 17);
    }
    void vSetYaxisMinVal(int axis, double value) override {
        calls += QString("%1 min %2").arg(axis).arg(value, 0, 'g', 17);
    }
};

class AxisDialogTest : public DialogFixture {
protected:
    static QLineEdit& Edit(const QWidget& dialog, const char* name) {
        return Find<QLineEdit>(dialog, name);
    }
    static QLineEdit& Maximum(const QWidget& dialog) { return Edit(dialog, "maximumEdit"); }
    static QLineEdit& Minimum(const QWidget& dialog) { return Edit(dialog, "minimumEdit"); }
    static bool IsChecked(const QWidget& dialog, const char* radio) {
        return Find<QRadioButton>(dialog, radio).isChecked();
    }
    /// Types a range and Enter; what is told, and that `refused` is again as the dialog showed it.
    QString TypeRange(QWidget& dialog, const char* maximum, const char* minimum, QLineEdit& refused,
                      const char* shown) {
        Type(Maximum(dialog), maximum);
        Type(Minimum(dialog), minimum);
        const QString told = ToldBy([&] { Press(dialog, Qt::Key_Return); });
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_TRUE(refused.hasFocus());
        EXPECT_EQ(refused.text(), shown);
        EXPECT_EQ(refused.selectedText(), shown);
        return told;
    }

    AxisDrawInfo info;
};

// ---- The range ----

TEST_F(AxisDialogTest, BeginsAsTheDrawInfoOrAnUnknownBoundSays) {
    const struct {
        double maximum, minimum;
        bool automatic, shownAutomatic;
    } cases[] = {{100, 0, false, false},          {100, 0, true, true},
                 {999999999.99, 0, false, true},  {100, -999999999.99, false, true},
                 {-999999999.99, 0, false, true}, {100, 999999999.99, false, true}};
    for (const auto& each : cases) {
        info.automatic = each.automatic;
        CSetYaxisRangeDlg dialog(&info, each.maximum, each.minimum, 2);
        Show(dialog);
        EXPECT_EQ(IsChecked(dialog, "automaticRadio"), each.shownAutomatic) << each.maximum;
        EXPECT_EQ(Maximum(dialog).isEnabled(), !each.shownAutomatic);
        EXPECT_EQ(Minimum(dialog).isEnabled(), !each.shownAutomatic);
    }
    CSetYaxisRangeDlg dialog(&info, 999999999.99, -0.5, 2);
    Show(dialog);
    EXPECT_EQ(Maximum(dialog).text(), "999999999.99");
    EXPECT_EQ(Minimum(dialog).text(), "-0.5");
    EXPECT_EQ(dialog.windowTitle(), "IDC_DLGSETAAXISRANGE-STRING_CAPTION");
    Click(Find<QWidget>(dialog, "userRadio"));
    EXPECT_TRUE(Maximum(dialog).isEnabled() && Minimum(dialog).isEnabled());
    dialog.OnAutoButtonClicked();
    EXPECT_FALSE(Maximum(dialog).isEnabled() || Minimum(dialog).isEnabled());
    dialog.OnSetRangeButtonClicked();
    EXPECT_TRUE(IsChecked(dialog, "userRadio") && Maximum(dialog).isEnabled());
}

TEST_F(AxisDialogTest, OkWritesForTheCurrentAxisAndCancelNothing) {
    CSetYaxisRangeDlg cancelled(&info, 100, 0, 2);
    Show(cancelled);
    Type(Maximum(cancelled), "90");
    Press(cancelled, Qt::Key_Escape);
    EXPECT_EQ(info.calls, QStringList());

    CSetYaxisRangeDlg automatic(&info, 100, 0, 2);
    Show(automatic);
    Click(Find<QWidget>(automatic, "automaticRadio"));
    Type(Maximum(automatic), "nothing of this counts");
    Click(automatic, ui::kIdOk);
    EXPECT_EQ(info.calls, QStringList("3 auto"));

    info.calls.clear();
    CSetYaxisRangeDlg user(&info, 100, 0, 2);
    Show(user);
    EXPECT_TRUE(Maximum(user).hasFocus());
    Type(Maximum(user), "99.25");
    Type(Minimum(user), "abc");
    Press(user, Qt::Key_Return);
    EXPECT_EQ(user.result(), QDialog::Accepted);
    EXPECT_EQ(info.calls, QStringList({"3 user", "3 max 99.25", "3 min 0"}));

    CSetYaxisRangeDlg without(nullptr, 100, 0, 2);
    Show(without);
    EXPECT_TRUE(IsChecked(without, "automaticRadio"));
    Press(without, Qt::Key_Return);
    EXPECT_EQ(without.result(), QDialog::Accepted);
}

TEST_F(AxisDialogTest, RefusesAndTakesTheTypingBack) {
    quotes.language["IDC_DLGSETAAXISRANGE-STRING_SET_RANGE_ERROR"] = "between %.10g and %.10g";
    const QString digits = "IDC_DLGSETAAXISRANGE-STRING_DIGNUM_ERROR";
    const QString range = "between 0 and 100.5";
    CSetYaxisRangeDlg dialog(&info, 100.5, 0, 2);
    Show(dialog);
    EXPECT_EQ(TypeRange(dialog, "120", "10", Maximum(dialog), "100.5"), range);
    EXPECT_EQ(Minimum(dialog).text(), "10") << "the other edit keeps what was typed";
    EXPECT_EQ(TypeRange(dialog, "50", "50", Maximum(dialog), "100.5"), range);
    EXPECT_EQ(TypeRange(dialog, "50", "60", Maximum(dialog), "100.5"), range);
    CSetYaxisRangeDlg again(&info, 100.5, 0, 2);
    Show(again);
    EXPECT_EQ(TypeRange(again, "50", "-1", Minimum(again), "0"), range);
    EXPECT_EQ(TypeRange(again, "1.234", "0", Maximum(again), "100.5"), digits);
    EXPECT_EQ(TypeRange(again, "50", "1.234", Minimum(again), "0"), digits);
    // A translator's conversions that do not fit are no format.
    quotes.language["IDC_DLGSETAAXISRANGE-STRING_SET_RANGE_ERROR"] = "%s %d %n";
    EXPECT_EQ(TypeRange(again, "120", "1", Maximum(again), "100.5"), "%s %d %n");
    CSetYaxisRangeDlg negative(&info, 1, -1, 2);
    Show(negative);
    EXPECT_EQ(TypeRange(negative, "1", "-0.25", Minimum(negative), "-1"), digits) << "counts three";
    EXPECT_EQ(info.calls, QStringList());
    Type(Maximum(negative), "0.25");
    Press(negative, Qt::Key_Return);
    EXPECT_EQ(info.calls.value(1), "3 max 0.25");
}

TEST_F(AxisDialogTest, AnUntouchedOkIsNeverRefused) {
    const struct {
        double maximum, minimum;
        double max, min;
    } cases[] = {{0.1234564, -0.1234564, 0.123456, -0.123456},
                 {4321.98765, -0.25, 4321.98765, -0.25},
                 {1e15 + 0.25, 1e-9, 1e15 + 0.25, 0},
                 {50, 50, 50, 50},
                 {std::nan(""), -5, 0, -5}};
    for (const auto& each : cases) {
        info.calls.clear();
        CSetYaxisRangeDlg dialog(&info, each.maximum, each.minimum, 0);
        Show(dialog);
        Press(dialog, Qt::Key_Return);
        EXPECT_EQ(info.calls.value(1).section(' ', 2).toDouble(), each.max);
        EXPECT_EQ(info.calls.value(2).section(' ', 2).toDouble(), each.min);
    }
    CSetYaxisRangeDlg shown(&info, 100, 0, 0);
    shown.ShowRange(120.5, 10);
    Show(shown);
    EXPECT_EQ(Maximum(shown).text(), "120.5");
    Press(shown, Qt::Key_Return);
    EXPECT_EQ(shown.result(), QDialog::Accepted) << "bounds are as wide as what is shown";
    CSetYaxisRangeDlg wider(&info, 100, 0, 0);
    wider.ShowRange(60, 40);
    Show(wider);
    Type(Maximum(wider), "100");
    Type(Minimum(wider), "0");
    Press(wider, Qt::Key_Return);
    EXPECT_EQ(info.calls.mid(info.calls.size() - 2), QStringList({"3 max 100", "3 min 0"}));
}

// ---- The axis' width and the edge space ----

TEST_F(AxisDialogTest, TheSpaceDialogShowsItsMode) {
    info.common.vSetYaxisWidth(80);
    info.common.SetDrawChartMovePixel(7, 30);
    for (const int mode : {1, 2, 0}) {
        for (const bool byDefault : {true, false}) {
            info.common.bYaxisWidthDefault = mode != 1 || byDefault;
            info.common.bEdgeSpaceDefault = mode == 1 || byDefault;
            CSetXaxisRangeDlg dialog(&info, 9, mode);
            Show(dialog);
            EXPECT_EQ(IsChecked(dialog, "defaultRadio"), byDefault) << mode;
            EXPECT_EQ(Edit(dialog, "percentEdit").isEnabled(), !byDefault) << mode;
            EXPECT_EQ(Edit(dialog, "percentEdit").text(), mode == 1 ? "80" : "30");
            EXPECT_EQ(
                Find<QRadioButton>(dialog, "defaultRadio").text(),
                mode == 1 ? "IDS_DIALOG-YAXIS_DEFAULT100%" : "IDS_DIALOG-YAXIS_SPACE_DEFAULT0%");
            EXPECT_EQ(Find<QLabel>(dialog, "noticeLabel").text(),
                      mode == 1 ? "IDS_DIALOG-YAXIS_NOTICE" : "");
        }
    }
    CSetXaxisRangeDlg without(nullptr, 9, 1);
    Show(without);
    EXPECT_TRUE(IsChecked(without, "defaultRadio"));
    EXPECT_EQ(Edit(without, "percentEdit").text(), "0");
    Click(Find<QWidget>(without, "userRadio"));
    Type(Edit(without, "percentEdit"), "500");
    Press(without, Qt::Key_Return);
    EXPECT_EQ(without.result(), QDialog::Accepted) << "there is nothing to write into";
}

TEST_F(AxisDialogTest, TheSpaceDialogWritesItsModeAlone) {
    const auto typed = [&](int mode, const char* text) {
        CSetXaxisRangeDlg dialog(&info, 9, mode);
        Show(dialog);
        Click(Find<QWidget>(dialog, "userRadio"));
        Type(Edit(dialog, "percentEdit"), text);
        Press(dialog, Qt::Key_Return);
        return dialog.result() == QDialog::Accepted;
    };
    const auto refused = [&](int mode, const char* text) {
        const QString told = ToldBy([&] { EXPECT_FALSE(typed(mode, text)); }, ui::PromptIcon::None);
        EXPECT_EQ(told, "IDS_DIALOG-YAXIS_MESSAGE10 ~ 100IDS_DIALOG-YAXIS_MESSAGE2");
    };
    const CommonProp before = info.common;
    refused(1, "101");
    refused(1, "-1");
    refused(2, "99999999999");
    EXPECT_EQ(info.common, before);

    EXPECT_TRUE(typed(1, "100"));
    EXPECT_FALSE(info.common.bYaxisWidthDefault);
    EXPECT_TRUE(typed(1, "55"));
    EXPECT_EQ(info.common.iGetYaxisWidth(), 55);
    EXPECT_TRUE(info.common.bEdgeSpaceDefault);
    EXPECT_TRUE(typed(2, "40"));
    EXPECT_EQ(info.common.iGetEdgeSpace(), 40);
    EXPECT_EQ(info.common.iGetMoveHalfBarWidth(), 4) << "9 halved as an integer";
    EXPECT_FALSE(info.common.bEdgeSpaceDefault);
    EXPECT_TRUE(typed(2, "abc"));
    EXPECT_EQ(info.common.iGetEdgeSpace(), 0);

    EXPECT_TRUE(typed(2, "40"));
    for (const int mode : {1, 2}) {
        CSetXaxisRangeDlg dialog(&info, 9, mode);
        Show(dialog);
        Click(Find<QWidget>(dialog, "defaultRadio"));
        Press(dialog, Qt::Key_Return);
    }
    EXPECT_TRUE(info.common.bYaxisWidthDefault && info.common.bEdgeSpaceDefault);
    EXPECT_EQ(info.common.iGetYaxisWidth(), 100);
    EXPECT_EQ(info.common.iGetEdgeSpace(), 40) << "kept for the next time";
}

}  // namespace
}  // namespace ta::test
