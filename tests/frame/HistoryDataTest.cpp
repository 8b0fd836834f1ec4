// How much history a chart loads: asked for in the dialog, told when it is less, remembered.

#include "dialogs/MXSetHistDataBanner.h"
#include "tests/frame/FrameFixture.h"
#include "tests/support/DialogDriver.h"

#include <QLineEdit>
#include <QRadioButton>
#include <QRegularExpression>
#include <QToolButton>

namespace ta::test {
namespace {

using terminal::Command;

class HistoryDataTest : public FrameTest {
protected:
    /// The dialog's radios of period and mode, a field of it, and Enter.
    void Ask(const char* period, const char* mode, const char* field, const QString& value) {
        DialogDriver user;
        user.Expect([&](QWidget& dialog) {
            dialog.findChild<QRadioButton*>(period)->setFocus();
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Space);
            dialog.findChild<QRadioButton*>(mode)->setFocus();
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Space);
            auto* edit = dialog.findChild<QWidget*>(field);
            edit->setFocus();
            QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(edit, value);
            QTest::keyClick(edit, Qt::Key_Enter);
        });
        Choose(Command::HistoryData);
    }
};

TEST_F(HistoryDataTest, LoadsWhatWasAskedAndRemembersIt) {
    Tabs().OpenSymbol(2, "SPX");
    ASSERT_EQ(Chart().BarCount(), 300);
    Ask("dailyRadio", "readRadio", "countEdit", "60");
    EXPECT_EQ(Chart().BarCount(), 60);
    EXPECT_EQ(Status(), "");
    Ask("weeklyRadio", "readRadio", "countEdit", "1440");
    EXPECT_EQ(Chart().Period(), 1);
    EXPECT_TRUE(Status().startsWith("要求最近 1440 筆，取得 ")) << Status().toStdString();
    EXPECT_EQ(Action(Command::HistoryData).shortcut(), QKeySequence("Ctrl+D"));
    // Another chart of the group shares the history and keeps its own depth.
    Choose(Command::NewTab);
    Tabs().SelectPeriod(0);
    EXPECT_EQ(Chart().BarCount(), 60) << "a copy takes the depths along";
    EXPECT_EQ(Status(), "") << "what the weeks told is over";
    Ask("dailyRadio", "readRadio", "countEdit", "4000");
    EXPECT_EQ(Chart().BarCount(), 300);
    End();
    Start();
    EXPECT_EQ(Chart().BarCount(), 300);
    const auto told = [this] { return Status().section(QRegularExpression("[0-9,]+"), 0, 0); };
    EXPECT_TRUE(Status().contains("4000")) << "of the tab in front";
    Tabs().setCurrentIndex(0);
    EXPECT_EQ(Chart().Period(), 1);
    EXPECT_TRUE(Status().contains("1440"));
    const QString chinese = told();
    Choose(Command::English);
    EXPECT_TRUE(Status().contains("1440"));
    EXPECT_NE(told(), chinese);
    Choose(Command::Chinese);
    Tabs().SelectPeriod(0);
    EXPECT_EQ(Chart().BarCount(), 60);
}

TEST_F(HistoryDataTest, MinutesThatTheBoxDoesNotOffer) {
    Tabs().OpenSymbol(16, "9901");
    Ask("minutesRadio", "readRadio", "minutesCombo", "7");
    EXPECT_EQ(Chart().Count(), 7);
    EXPECT_TRUE(Tabs().tabText(0).endsWith("7分線")) << Tabs().tabText(0).toStdString();
    Tabs().OpenSymbol(16, "9901");
    EXPECT_EQ(Chart().Count(), 7) << "kept for the next symbol that has minutes";
}

TEST_F(HistoryDataTest, ThePeriodBarSwitchesInPlace) {
    Tabs().OpenSymbol(16, "9901");
    auto& banner = *Window().findChild<MXSetHistDataBanner*>();
    const auto click = [&banner](const char* name) {
        auto* button = banner.findChild<QToolButton*>(name);
        ASSERT_TRUE(button->isVisible() && button->isEnabled()) << name;
        QTest::mouseClick(button, Qt::LeftButton);
    };
    EXPECT_FALSE(banner.findChild<QToolButton*>("secondsButton")->isEnabled());
    Ask("dailyRadio", "readRadio", "countEdit", "60");
    click("minutesButton");
    EXPECT_EQ(std::pair(Chart().Period(), Chart().Count()), std::pair(3, 5));
    click("weeklyButton");
    EXPECT_EQ(Chart().Period(), 1);
    click("dailyButton");
    EXPECT_EQ(Chart().BarCount(), 60) << "the depth of that period";
    Tabs().OpenSymbol(2, "AMZN");
    EXPECT_EQ(banner.GetDataType(), 2);
    EXPECT_FALSE(banner.findChild<QToolButton*>("dailyButton")->isEnabled());
    banner.SetFavourites({7});
    Choose(Command::ShowPeriodBar);
    EXPECT_FALSE(banner.isVisible());
    End();
    Start();
    auto& again = *Window().findChild<MXSetHistDataBanner*>();
    EXPECT_FALSE(again.isVisible());
    EXPECT_EQ(again.GetFavourites(), std::vector<int>{7});
}

TEST_F(HistoryDataTest, EscapeChangesNothing) {
    Tabs().OpenSymbol(2, "SPX");
    DialogDriver user;
    user.Expect([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    Choose(Command::HistoryData);
    EXPECT_EQ(Chart().BarCount(), 300);
    EXPECT_TRUE(Chart().Depths().empty());
    EXPECT_EQ(Window().focusWidget(), &Chart());
}

}  // namespace
}  // namespace ta::test
