// The axes of a chart from the frame: commands with keys, the axis' menu, and what becomes of what
// was set.

#include "terminal/chart/ChartScene.h"
#include "terminal/plot/ChartAxesText.h"
#include "tests/frame/FrameFixture.h"
#include "tests/support/DialogDriver.h"

#include <qcustomplot.h>
#include <QApplication>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QRadioButton>

namespace ta::test {
namespace {

using terminal::Command;

class AxisFrameTest : public FrameTest {
protected:
    static void Enter(QWidget& dialog, const char* edit, const char* text) {
        auto* field = dialog.findChild<QLineEdit*>(edit);
        field->setFocus();
        QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(field, text);
    }
    static void Take(QWidget& dialog, const char* radio) {
        dialog.findChild<QRadioButton*>(radio)->setFocus();
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Space);
    }
    /// A range by hand and Enter.
    void SetRange(const char* maximum, const char* minimum) {
        DialogDriver user;
        user.Expect([&](QWidget& dialog) {
            Take(dialog, "userRadio");
            Enter(dialog, "maximumEdit", maximum);
            Enter(dialog, "minimumEdit", minimum);
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
        Choose(Command::AxisRange);
    }
    void SetPercent(Command command, const char* percent) {
        DialogDriver user;
        user.Expect([&](QWidget& dialog) {
            Take(dialog, "userRadio");
            Enter(dialog, "percentEdit", percent);
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
        Choose(command);
    }
    std::pair<double, double> Shown(std::size_t pane = 0) {
        const terminal::PlotMapping mapping = Chart().Mapping();
        return {mapping.panes[pane].low, mapping.panes[pane].high};
    }
    /// An entry of the menu of a pane's right axis.
    void ChooseInMenu(std::size_t pane, const char* key) {
        auto* plot = Chart().findChild<QCustomPlot*>();
        const terminal::PlotMapping mapping = Chart().Mapping();
        const QPoint at =
            QPointF(mapping.left + mapping.width + 10, mapping.panes[pane].top + 20).toPoint();
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, plot->mapToGlobal(at));
        QApplication::sendEvent(plot, &event);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (QAction* action : menu->actions()) {
            if (action->text() == terminal::Tr(key)) {
                action->trigger();
            }
        }
        menu->close();
    }
};

using Span = std::pair<double, double>;

TEST_F(AxisFrameTest, ARangeByCommandAndTheMenuOfTheAxis) {
    Tabs().OpenSymbol(2, "SPX");
    const Span automatic = Shown();
    EXPECT_EQ(Action(Command::AxisRange).shortcut(), QKeySequence("Ctrl+R"));
    SetRange("130", "90.25");
    EXPECT_EQ(Shown(), Span(90.25, 130)) << "wider than what is in view";
    EXPECT_FALSE(Status().isEmpty()) << "how to get back";
    EXPECT_EQ(Window().focusWidget(), &Chart());
    Tabs().OpenSymbol(16, "9901");
    EXPECT_NE(Shown(), Span(90.25, 130));
    Tabs().OpenSymbol(2, "SPX");
    EXPECT_EQ(Shown(), Span(90.25, 130));
    {
        DialogDriver user;
        user.Expect([](QWidget& dialog) {
            EXPECT_EQ(dialog.findChild<QLineEdit*>("maximumEdit")->text(), "130");
            EXPECT_EQ(dialog.findChild<QLineEdit*>("minimumEdit")->text(), "90.25");
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
        ChooseInMenu(0, "IDS_TERMINAL-FRAME_AXIS_RANGE");
    }
    EXPECT_EQ(Shown(), Span(90.25, 130)) << "an untouched OK";
    ChooseInMenu(0, "IDS_TERMINAL-FRAME_AXIS_AUTOMATIC");
    EXPECT_EQ(Shown(), automatic);

    // The pane of the cursor line is the one in hand.
    const terminal::PlotMapping mapping = Chart().Mapping();
    QTest::mouseMove(Chart().findChild<QCustomPlot*>(),
                     QPointF(mapping.left + 99, mapping.panes[1].top + 30).toPoint());
    SetRange("2000", "-1");
    EXPECT_EQ(Shown(1), Span(-1, 2000));
    Choose(Command::AxisAutomatic);
    EXPECT_EQ(Shown(1).first, 0) << "volumes stand on the ground again";
}

TEST_F(AxisFrameTest, WhatWasSetComesBackAndIsNotTheGroups) {
    Tabs().OpenSymbol(2, "SPX");
    SetRange("130", "90.25");
    SetPercent(Command::AxisWidth, "80");
    SetPercent(Command::EdgeSpace, "30");
    const auto state = [this] { return std::pair(Shown(), Chart().Mapping().width); };
    const auto before = state();
    const CommonProp group = Repository().GetDrawInfo(Chart().GroupName())->CommonProperty();
    EXPECT_EQ(group, CommonProp()) << "the store has nothing of it";
    Choose(Command::NewTab);
    EXPECT_EQ(state(), before) << "a copy";
    Choose(Command::AxisAutomatic);
    EXPECT_NE(state(), before);
    Tabs().setCurrentIndex(0);
    EXPECT_EQ(state(), before) << "each tab has its own";
    End();
    Start();
    Tabs().setCurrentIndex(0);
    EXPECT_EQ(state(), before);
    EXPECT_EQ(Chart().Axes().EdgePercent(), 30);
    Tabs().setCurrentIndex(1);
    EXPECT_FALSE(Chart().Axes().HasRanges());
    EXPECT_EQ(Chart().Axes().WidthPercent(), 80);
}

TEST_F(AxisFrameTest, AChartWithoutDataHasNoRange) {
    Chart().Show(BarsKey{2, "NOSUCH", 0, 0});
    Choose(Command::AxisRange);  // opens no dialog
    EXPECT_FALSE(Status().isEmpty());
    Choose(Command::AxisAutomatic);
    SetPercent(Command::AxisWidth, "0");
    SetPercent(Command::EdgeSpace, "100");
    Chart().grab();
    Tabs().OpenSymbol(2, "SPX");
    EXPECT_EQ(Chart().VisibleBars(), std::pair(299, 299));
}

TEST_F(AxisFrameTest, TextsThatMakeNoSenseAreAsForANewChart) {
    for (const char* text :
         {"", "[]", "{", R"({"width":101,"edge":-1})", R"({"width":"x"})",
          R"({"ranges":{"2/SPX/0/0":[[0,9,1],[0],[],7,["a","b","c"]]}})", R"({"ranges":[1,2]})"}) {
        terminal::ChartAxes axes;
        axes.ShowHistory("2/SPX/0/0");
        TakeAxesText(axes, text);
        EXPECT_EQ(AxesText(axes), "") << text;
        EXPECT_EQ(axes.DrawInfo().CommonProperty(), CommonProp()) << text;
    }
}

}  // namespace
}  // namespace ta::test
