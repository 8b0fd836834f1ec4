// What the user types on a chart, and charts of seconds.

#include "dialogs/MXSetHistDataBanner.h"
#include "dialogs/MXTechDataDlg.h"
#include "terminal/frame/DataViewer.h"
#include "terminal/frame/TypingBox.h"
#include "terminal/lines/DrawingBoard.h"
#include "terminal/lines/TrendLineStore.h"
#include "tests/frame/FrameFixture.h"

#include <QFile>
#include <QLabel>
#include <QTableView>
#include <QToolButton>

namespace ta::test {
namespace {

using terminal::Command;
using terminal::TypingBox;

/// The terminal of the other tests, and 9902 of market 16 with daily prices and a few ticks.
class TypingTest : public FrameTest {
protected:
    TypingTest() {
        QFile symbols(FilePath("data/symbols.csv"));
        EXPECT_TRUE(symbols.open(QIODevice::Append));
        symbols.write("16,9902,模擬航運,Simulated Shipping,,,1,daily+tick\n");
        const QString heading = "date,open,high,low,close,volume\n";
        WriteFile("data/prices/16/9902.daily.csv",
                  heading + "2019-01-01,9,9,9,9,1\n2019-01-02,1,3,1,3,7\n");
        QString ticks = heading;
        for (int i = 0; i < 60; ++i) {
            ticks += QString("2019-01-02 09:%1:%2,1,3,1,2,1\n")
                         .arg(i / 6, 2, 10, QChar('0'))
                         .arg(i % 6 * 10 + 3, 2, 10, QChar('0'));
        }
        WriteFile("data/prices/16/9902.tick.csv", ticks);
    }

    TypingBox& Box() { return *Chart().findChild<TypingBox*>(); }
    /// What the box says, "typed: meaning"; empty without a box.
    QString Shown() {
        return Box().isVisible() ? Box().findChild<QLabel*>("typedLabel")->text() + ": " +
                                       Box().findChild<QLabel*>("meaningLabel")->text()
                                 : QString();
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&Chart(), key, modifiers);
    }
    /// Types on the chart; "\n", "\b" and "\x1b" are Enter, Backspace and Escape.
    void Type(const char* keys) {
        for (const char* key = keys; *key != '\0'; ++key) {
            switch (*key) {
                case '\n':
                    Press(Qt::Key_Return);
                    break;
                case '\b':
                    Press(Qt::Key_Backspace);
                    break;
                case '\x1b':
                    Press(Qt::Key_Escape);
                    break;
                default:
                    QTest::keyClick(&Chart(), *key);
            }
        }
    }
    QString ShownPeriod() {
        return QString("%1 %2/%3")
            .arg(QString::fromStdString(Chart().SymbolId()))
            .arg(Chart().Period())
            .arg(Chart().Count());
    }
    void ClickBanner(const char* button) {
        QTest::mouseClick(Banner().findChild<QToolButton*>(button), Qt::LeftButton);
    }
    MXSetHistDataBanner& Banner() { return *Window().findChild<MXSetHistDataBanner*>(); }
};

struct TypedCase {
    const char* keys;
    const char* box;     ///< after the keys
    const char* chart;   ///< symbol, period and count then
    const char* status;  ///< what the status bar begins with
};

TEST_F(TypingTest, KeysAndWhatTheyDo) {
    const TypedCase cases[] = {
        {"7", "7: ↵ 7 分線", "9901 0/0", ""},
        {"7\n", "", "9901 3/7", ""},
        {"015\n", "", "9901 3/15", ""},
        {"999\n", "", "9901 3/999", ""},
        {"0\n", "0: 分鐘數須介於 1 到 999 之間", "9901 0/0", "分鐘數須"},
        {"12\x1b", "", "9901 0/0", ""},
        {"12\b", "1: ↵ 1 分線", "9901 0/0", ""},
        {"12\b\b", "", "9901 0/0", ""},
        {"990", "990: ↵ 990 分線", "9901 0/0", ""},
        {"9902", "9902: ↵ 9902 模擬航運  (模擬證券)", "9901 0/0", ""},
        {"9902\n", "", "9902 0/0", ""},
        {"am\n", "", "AMZN 2/0", ""},
        {"apple\n", "APPLE: 找不到商品「APPLE」。請輸入代碼或名稱的一部分。", "9901 0/0", "找不到"},
        {"apple\n\x1b"
         "5\n",
         "", "9901 3/5", "找不到"},
        {"s&", "", "9901 0/0", ""},
        {"s-p", "S-P: 找不到商品「S-P」。請輸入代碼或名稱的一部分。", "9901 0/0", ""},
        {"-_.+= ", "", "9901 0/0", ""},
        {"5+", "", "9901 0/0", ""},
    };
    for (const TypedCase& c : cases) {
        Tabs().OpenSymbol(16, "9901");
        Tabs().SelectPeriod(0);
        Window().Parts().Notice({});
        Type(c.keys);
        EXPECT_EQ(Shown(), c.box) << c.keys;
        EXPECT_EQ(ShownPeriod(), c.chart) << c.keys;
        EXPECT_EQ(Status().left(QString(c.status).size()), c.status) << c.keys;
        EXPECT_EQ(Status().isEmpty(), *c.status == '\0') << c.keys << Status().toStdString();
        EXPECT_EQ(Window().focusWidget(), &Chart());
        Type("\x1b");
    }
}

TEST_F(TypingTest, OtherKeysStayTheCharts) {
    Tabs().OpenSymbol(2, "SPX");
    const auto width = [this] {
        return Chart().VisibleBars().second - Chart().VisibleBars().first;
    };
    const int before = width();
    Type("1+");
    EXPECT_LT(width(), before) << "it zooms, and ends the typing";
    Type("-");
    EXPECT_EQ(width(), before);
    terminal::EditTrendLines(Chart().Shown(), {{{}, "2004/2a7fff/1/0/0/17900,100/17950,110"}});
    Choose(Command::SelectLine);
    Type("12");
    Press(Qt::Key_Shift);
    Press(Qt::Key_Delete);
    EXPECT_TRUE(Shown().startsWith("1: ")) << Shown().toStdString();
    Press(Qt::Key_Delete);
    EXPECT_EQ(Shown(), "");
    EXPECT_EQ(Chart().Drawings().LineCount(), 1) << "the character went, and no line";
    Type("1");
    Press(Qt::Key_Left);
    EXPECT_EQ(Shown(), "");
    EXPECT_GE(Chart().CursorBar(), 0);
    Press(Qt::Key_5, Qt::AltModifier);
    EXPECT_EQ(Shown(), "");
    Type("1\n");
    EXPECT_EQ(ShownPeriod(), "SPX 0/0");
    EXPECT_EQ(Status(), "這個商品沒有分線資料");
}

TEST_F(TypingTest, EndsWithTheFocusAndWithAnotherChart) {
    Tabs().OpenSymbol(16, "9901");
    Type("5");
    ToolBar().Symbol().setFocus();
    EXPECT_EQ(Shown(), "");
    Chart().setFocus();
    Type("5");
    ClickBanner("weeklyButton");
    EXPECT_EQ(Shown(), "");
    Type("5");
    const QRect box = Box().geometry();
    Window().resize(Window().width() + 100, Window().height() + 50);
    EXPECT_TRUE(Chart().rect().contains(Box().geometry()));
    EXPECT_NE(Box().geometry(), box) << "it keeps to its corner";
}

TEST_F(TypingTest, MinutesKeepTheMiddleAndTheDepth) {
    Tabs().OpenSymbol(16, "9901");
    Chart().Show({16, "9901", 3, 1}, {0, 200, 1});
    Chart().ZoomIn();
    Chart().ScrollBars(-69);
    const auto middle = [this] {
        const auto [first, last] = Chart().VisibleBars();
        return Chart().VisibleBars().first + (last - first) / 2;
    };
    const int before = middle();
    Type("2\n");
    EXPECT_EQ(Chart().BarCount(), 120) << "of 240 minutes";
    Type("1\n");
    EXPECT_EQ(Chart().BarCount(), 200);
    EXPECT_NEAR(middle(), before, 2);
}

TEST_F(TypingTest, SecondsBySymbolAndContract) {
    const auto seconds = [this] { return Banner().findChild<QToolButton*>("secondsButton"); };
    Tabs().OpenSymbol(16, "9901");
    EXPECT_FALSE(seconds()->isEnabled());
    Tabs().OpenSymbol(16, "9902");
    ClickBanner("secondsButton");
    EXPECT_EQ(ShownPeriod(), "9902 4/5");
    EXPECT_EQ(Chart().BarCount(), 60);
    EXPECT_TRUE(Chart().CursorText().startsWith("2019/01/02 09:09:55"))
        << Chart().CursorText().toStdString();
    EXPECT_EQ(Tabs().tabText(0), "9902 模擬航運 5秒線");
    EXPECT_EQ(ToolBar().Period().placeholderText(), "5秒線");
    Type("2\n");
    EXPECT_EQ(Chart().BarCount(), 5) << "minutes are made from ticks";
    ClickBanner("secondsButton");
    Choose(Command::ViewData);
    const auto* table = terminal::DataViewer::Of(Chart()).Window()->findChild<QTableView*>();
    ASSERT_TRUE(Await([table] { return table->model()->rowCount() == 60; }));
    EXPECT_EQ(table->model()->index(0, 0).data().toString(), "2019/01/02 09:00:05");
    End();
    Start();
    EXPECT_EQ(ShownPeriod(), "9902 4/5");
    EXPECT_EQ(Banner().GetDataType(), 4);
    Tabs().OpenSymbol(16, "9901");
    EXPECT_EQ(ShownPeriod(), "9901 0/0") << "it has none";

    Tabs().OpenSymbol(16, "9902");
    ClickBanner("secondsButton");
    End();
    QFile state(FilePath("settings-window.ini"));
    ASSERT_TRUE(state.open(QIODevice::Append));
    state.write("[entitlement]\nsecondData=false\n");
    state.close();
    Start();
    EXPECT_EQ(ShownPeriod(), "9902 4/5");
    EXPECT_EQ(Chart().BarCount(), 0);
    EXPECT_EQ(Status(), "您的使用權限不含秒資料");
    EXPECT_FALSE(seconds()->isEnabled());
    Tabs().OpenSymbol(16, "9902");
    EXPECT_EQ(ShownPeriod(), "9902 0/0");
}

}  // namespace
}  // namespace ta::test
