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
    bool Open(const QString& path) { return OpenPriceFile(Window().Parts(), path); }
    void ExpectOwn(std::size_t symbols, int bars) {
        EXPECT_EQ(Session().Markets().User().Symbols().size(), symbols);
        EXPECT_EQ(Chart().Market() == terminal::kUserMarket, symbols > 0);
        EXPECT_EQ(Chart().BarCount(), bars);
    }
};

TEST_F(PriceFile, OpensFromTheMenuAndIsThereInTheNextRun) {
    m_prompts.ExpectFile(WriteFile("自選.csv", kGood));
    Choose(Command::OpenCsv);
    ExpectOwn(1, 3);
    EXPECT_TRUE(Status().contains("自選"));
    End();
    Start();
    ExpectOwn(1, 3);
}

TEST_F(PriceFile, BadRowsStopItOrAreSkipped) {
    const QString path = WriteFile("bad.csv", kBadRows);
    for (const int answer : {1, -1}) {
        m_prompts.ExpectChoice(answer);
        EXPECT_FALSE(Open(path));
        ExpectOwn(0, 300);
    }
    m_prompts.ExpectChoice(0);
    EXPECT_TRUE(Open(path));
    ExpectOwn(1, 2);
    const QString text = m_prompts.Last().text;
    EXPECT_TRUE(text.contains("第 3 列") && text.contains("第 5 列")) << text.toStdString();
}

TEST_F(PriceFile, WhatIsNoPriceFileIsTold) {
    const std::pair<QString, ui::PromptIcon> files[] = {
        {WriteFile("letter.csv", "Dear Sir,\nthanks\n"), ui::PromptIcon::Error},
        {WriteFile("empty.csv", ""), ui::PromptIcon::Error},
        {FilePath("nowhere.csv"), ui::PromptIcon::Error},
        // Headings, but no row to show.
        {WriteFile("none.csv", "Date,Open,High,Low,Close\nx,1,1,1,1\n"), ui::PromptIcon::Warning},
    };
    for (const auto& [path, icon] : files) {
        m_prompts.ExpectMessage();
        EXPECT_FALSE(Open(path));
        EXPECT_EQ(m_prompts.Last().icon, icon) << path.toStdString();
    }
    ExpectOwn(0, 300);
}

TEST_F(PriceFile, ListsTheFirstBadRowsAndCountsTheRest) {
    m_prompts.ExpectChoice(0);
    EXPECT_TRUE(Open(WriteFile("many.csv", kGood + QString("bad,1,1,1,1,1\n").repeated(100))));
    const QString text = m_prompts.Last().text;
    EXPECT_TRUE(text.contains("100") && text.contains("88")) << text.toStdString();
    EXPECT_LT(text.count('\n'), 20);
    ExpectOwn(1, 3);
}

}  // namespace
}  // namespace ta::test
