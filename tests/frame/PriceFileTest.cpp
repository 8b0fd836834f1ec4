#include "terminal/quotes/UserMarket.h"
#include "tests/frame/FrameFixture.h"

#include <QDropEvent>
#include <QMimeData>
#include <QProgressDialog>
#include <QStatusBar>

namespace ta::test {
namespace {

using terminal::Command;
using terminal::UserMarket;
using Kind = ScriptedPrompts::Kind;

const char* const kGood =
    "Date,Open,High,Low,Close,Volume\n"
    "2020-01-02,10,12,9,11,100\n"
    "2020-01-03,11,13,10,12,200\n"
    "2020-01-06,12,12,10,10,300\n";

const char* const kBadRows =
    "Date,Open,High,Low,Close\n"
    "2020-01-02,10,12,9,11\n"
    "2020-01-03,ten,13,10,12\n"
    "2020-01-06,12,12,10,10\n"
    "2020-01-07,12,9,10,10\n";

class PriceFile : public FrameTest {
protected:
    std::size_t OwnSymbols() { return Session().Markets().User().Symbols().size(); }
    QString Notice() { return Window().statusBar()->currentMessage(); }
};

TEST_F(PriceFile, OpensFromTheMenuAndIsThereInTheNextRun) {
    m_prompts.ExpectFile(WriteFile("自選.csv", kGood));
    Choose(Command::OpenCsv);
    EXPECT_EQ(Chart().Market(), UserMarket::kId);
    EXPECT_EQ(Chart().BarCount(), 3);
    EXPECT_TRUE(Notice().contains("自選")) << Notice().toStdString();
    EXPECT_TRUE(m_prompts.Last().text.contains("*.csv"));

    End();
    Start();
    EXPECT_EQ(OwnSymbols(), 1u);
    EXPECT_EQ(Chart().Market(), UserMarket::kId);
    EXPECT_EQ(Chart().BarCount(), 3);
}

TEST_F(PriceFile, CancelledPickerOpensNothing) {
    m_prompts.ExpectCancel(Kind::OpenFile);
    Choose(Command::OpenCsv);
    EXPECT_EQ(Chart().SymbolId(), "SPX");
}

TEST_F(PriceFile, BadRowsAreListedAndCanBeSkipped) {
    m_prompts.ExpectChoice(0);
    EXPECT_TRUE(Window().OpenCsv(WriteFile("bad.csv", kBadRows)));
    EXPECT_EQ(Chart().BarCount(), 2);
    const auto shown = m_prompts.Last();
    EXPECT_EQ(shown.choices.size(), 2);
    EXPECT_TRUE(shown.text.contains("bad.csv"));
    EXPECT_TRUE(shown.text.contains("第 3 列")) << shown.text.toStdString();
    EXPECT_TRUE(shown.text.contains("第 5 列"));
}

TEST_F(PriceFile, BadRowsCanStopIt) {
    for (const int answer : {1, -1}) {
        m_prompts.ExpectChoice(answer);
        EXPECT_FALSE(Window().OpenCsv(WriteFile("bad.csv", kBadRows)));
    }
    EXPECT_EQ(Chart().SymbolId(), "SPX");
    EXPECT_EQ(OwnSymbols(), 0u);
}

TEST_F(PriceFile, ListsTheFirstBadRowsAndCountsTheRest) {
    QString text = kGood;
    for (int i = 0; i < 100; ++i) {
        text += "bad,1,1,1,1,1\n";
    }
    m_prompts.ExpectChoice(0);
    EXPECT_TRUE(Window().OpenCsv(WriteFile("many.csv", text)));
    EXPECT_TRUE(m_prompts.Last().text.contains("100"));
    EXPECT_TRUE(m_prompts.Last().text.contains("88"));
    EXPECT_LT(m_prompts.Last().text.count('\n'), 20);
    EXPECT_EQ(Chart().BarCount(), 3);
}

TEST_F(PriceFile, WhatIsNoPriceFileIsTold) {
    for (const QString& path : {WriteFile("letter.csv", "Dear Sir,\nthanks\n"),
                                WriteFile("empty.csv", ""), FilePath("nowhere.csv")}) {
        m_prompts.ExpectMessage();
        EXPECT_FALSE(Window().OpenCsv(path));
        EXPECT_EQ(m_prompts.Last().icon, ui::PromptIcon::Error);
        EXPECT_TRUE(m_prompts.Last().text.contains(QFileInfo(path).fileName()));
    }
    m_prompts.ExpectMessage();  // headings, but no row to show
    EXPECT_FALSE(
        Window().OpenCsv(WriteFile("nothing.csv", "Date,Open,High,Low,Close\nx,1,1,1,1\n")));
    EXPECT_EQ(OwnSymbols(), 0u);
    EXPECT_EQ(Chart().SymbolId(), "SPX");
}

TEST_F(PriceFile, LongReadingCanBeCancelled) {
    QString text = "Date,Open,High,Low,Close\n";
    for (int i = 0; i < 400000; ++i) {
        text += "2020-01-02 09:00,10,12,9,11\n";
    }
    const QString path = WriteFile("long.csv", text);
    // As soon as the dialog is there, the user presses its button.
    QTimer watch;
    bool cancelled = false;
    QObject::connect(&watch, &QTimer::timeout, &Window(), [this, &cancelled] {
        auto* dialog = Window().findChild<QProgressDialog*>();
        if (dialog != nullptr && !cancelled) {
            cancelled = true;
            emit dialog->canceled();
        }
    });
    watch.start(1);
    EXPECT_FALSE(Window().OpenCsv(path));
    EXPECT_TRUE(cancelled);
    EXPECT_EQ(OwnSymbols(), 0u);
    EXPECT_EQ(Chart().SymbolId(), "SPX");
}

TEST_F(PriceFile, OpensWhenDroppedOnTheWindow) {
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(WriteFile("dropped.csv", kGood))});
    QDragEnterEvent enter(QPoint(400, 400), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Window(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(400, 400), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Window(), &drop);
    ASSERT_TRUE(Await([this] { return Chart().Market() == UserMarket::kId; }));
    EXPECT_EQ(Chart().BarCount(), 3);

    QMimeData text;
    text.setText("2020-01-02,10,12,9,11");
    QDragEnterEvent other(QPoint(400, 400), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    other.ignore();
    QApplication::sendEvent(&Window(), &other);
    EXPECT_FALSE(other.isAccepted());
}

}  // namespace
}  // namespace ta::test
