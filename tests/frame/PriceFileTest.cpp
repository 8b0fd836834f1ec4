#include "terminal/frame/openers/Openers.h"
#include "terminal/quotes/UserMarket.h"
#include "tests/frame/FrameFixture.h"

namespace ta::test {
namespace {

using terminal::Command;
using terminal::UserMarket;

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
};

TEST_F(PriceFile, OpensFromTheMenuAndIsThereInTheNextRun) {
    m_prompts.ExpectFile(WriteFile("自選.csv", kGood));
    Choose(Command::OpenCsv);
    EXPECT_EQ(Chart().Market(), UserMarket::kId);
    EXPECT_EQ(Chart().BarCount(), 3);

    End();
    Start();
    EXPECT_EQ(OwnSymbols(), 1u);
    EXPECT_EQ(Chart().Market(), UserMarket::kId);
    EXPECT_EQ(Chart().BarCount(), 3);
}

TEST_F(PriceFile, BadRowsStopItOrAreSkipped) {
    const QString path = WriteFile("bad.csv", kBadRows);
    for (const int answer : {1, -1}) {
        m_prompts.ExpectChoice(answer);
        EXPECT_FALSE(OpenPriceFile(Window().Parts(), path));
    }
    EXPECT_EQ(Chart().SymbolId(), "SPX");
    EXPECT_EQ(OwnSymbols(), 0u);
    m_prompts.ExpectChoice(0);
    EXPECT_TRUE(OpenPriceFile(Window().Parts(), path));
    EXPECT_EQ(Chart().BarCount(), 2);
    const QString text = m_prompts.Last().text;
    EXPECT_TRUE(text.contains("第 3 列") && text.contains("第 5 列")) << text.toStdString();
}

TEST_F(PriceFile, WhatIsNoPriceFileIsTold) {
    for (const QString& path : {WriteFile("letter.csv", "Dear Sir,\nthanks\n"),
                                WriteFile("empty.csv", ""), FilePath("nowhere.csv")}) {
        m_prompts.ExpectMessage();
        EXPECT_FALSE(OpenPriceFile(Window().Parts(), path));
        EXPECT_EQ(m_prompts.Last().icon, ui::PromptIcon::Error);
    }
    m_prompts.ExpectMessage();  // headings, but no row to show
    EXPECT_FALSE(OpenPriceFile(Window().Parts(),
                               WriteFile("nothing.csv", "Date,Open,High,Low,Close\nx,1,1,1,1\n")));
    EXPECT_EQ(OwnSymbols(), 0u);
    EXPECT_EQ(Chart().SymbolId(), "SPX");
}

TEST_F(PriceFile, ListsTheFirstBadRowsAndCountsTheRest) {
    QString text = kGood;
    for (int i = 0; i < 100; ++i) {
        text += "bad,1,1,1,1,1\n";
    }
    m_prompts.ExpectChoice(0);
    EXPECT_TRUE(OpenPriceFile(Window().Parts(), WriteFile("many.csv", text)));
    EXPECT_TRUE(m_prompts.Last().text.contains("100"));
    EXPECT_TRUE(m_prompts.Last().text.contains("88"));
    EXPECT_LT(m_prompts.Last().text.count('\n'), 20);
    EXPECT_EQ(Chart().BarCount(), 3);
}

}  // namespace
}  // namespace ta::test
