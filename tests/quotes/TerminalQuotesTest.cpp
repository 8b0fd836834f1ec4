#include "platform/Text.h"
#include "terminal/lang/Language.h"
#include "terminal/quotes/TerminalNumberDisplay.h"
#include "terminal/quotes/TerminalQuotes.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <limits>
#include <tuple>

namespace ta::terminal {
namespace {

using Texts = BKQuoteInterface::Texts;

class Quotes : public testing::Test {
protected:
    // Which of daily, weekly, monthly, minute and second there is, as "DWMmS".
    std::string Kinds(std::uint8_t market, const CString& code) const {
        BKQuoteInterface::Items items{7};
        std::string kinds;
        kinds += m_quotes.bGetTADailyItemNoByService(items, market, code) ? "D" : "";
        kinds += m_quotes.bGetTAWeekItemNoByService(items, market, code) ? "W" : "";
        kinds += m_quotes.bGetTAMonthItemNoByService(items, market, code) ? "M" : "";
        kinds += m_quotes.bGetTA1ItemNoByService(items, market, code) ? "m" : "";
        kinds += m_quotes.bGetTickItemNoByService(items, market, code) ? "S" : "";
        EXPECT_EQ(items.empty(), !kinds.ends_with('S'));  // seconds are asked for last
        return kinds;
    }

    Language m_language;
    QTemporaryDir m_userFolder;
    MarketData m_data{TADIALOGS_TEST_DATA_DIR, m_userFolder.path()};
    TerminalQuotes m_quotes{m_data};
    Texts m_ids{"old"};
    Texts m_names{"old"};
};

TEST_F(Quotes, HistoryByMarketCommodityAndSymbol) {
    EXPECT_EQ(Kinds(2, ""), "DWM");
    EXPECT_EQ(Kinds(2, "IBM"), "M");
    EXPECT_EQ(Kinds(16, "9901"), "DWMm");
    EXPECT_EQ(Kinds('m', "SXF1"), "DWMmS");
    EXPECT_EQ(Kinds('m', "SXF2"), "DWM");
    EXPECT_EQ(Kinds('m', "SXF"), "DWMmS");
    EXPECT_EQ(Kinds('U', ""), "");
    EXPECT_EQ(Kinds(16, "NONE"), "");
    BKQuoteInterface::Items items;
    EXPECT_TRUE(m_quotes.bGetTADailyItemNoByService(items, 2, ""));
    EXPECT_EQ(items.size(), 5U);
}

TEST_F(Quotes, ContractMonths) {
    Texts months;
    EXPECT_TRUE(m_quotes.bGetContractMonthByCommodity(months, 'm', "ETXO"));
    EXPECT_EQ(months, (Texts{"202005", "2020051W", "2020052W"}));
    CString id = "old";
    EXPECT_EQ(m_quotes.GetWeeklyContractIDByContractMonth(id, 'm', "ETXO", "202005"), 0);
    EXPECT_EQ(id, "");
    EXPECT_NE(m_quotes.GetWeeklyContractIDByContractMonth(id, 'm', "ETXO", "2020051W"), 0);
    EXPECT_EQ(id, "ETXO1W");

    CString symbol;
    EXPECT_TRUE(m_quotes.bGetSymbolIDByContractMonthSymbID(symbol, "SXF202006"));
    EXPECT_EQ(symbol, "SXF2");
    EXPECT_TRUE(m_quotes.bGetSymbolIDByContractMonthSymbID(symbol, "9901"));
    EXPECT_EQ(symbol, "9901");
    EXPECT_FALSE(m_quotes.bGetSymbolIDByContractMonthSymbID(symbol, "SXF209912"));
}

// What a tree of symbols shows must name each symbol once: a commodity's own, and the weekly ones
// of its months.
TEST_F(Quotes, ATreeOfTheFuturesMarketHasEachSymbolOnce) {
    Texts commodities;
    Texts leaves;
    ASSERT_TRUE(m_quotes.bGetAllCommodityID(commodities, m_names, 'm'));
    for (const CString& commodity : commodities) {
        m_quotes.bGetSymbolItemID(m_ids, m_names, 'm', commodity);
        leaves.insert(leaves.end(), m_ids.begin(), m_ids.end());
        Texts months;
        m_quotes.bGetContractMonthByCommodity(months, 'm', commodity);
        for (const CString& month : months) {
            CString weekly;
            if (m_quotes.GetWeeklyContractIDByContractMonth(weekly, 'm', commodity, month) != 0) {
                m_quotes.bGetSymbolID(m_ids, m_names, 'm', month);
                leaves.insert(leaves.end(), m_ids.begin(), m_ids.end());
            }
        }
    }
    Texts all;
    for (const Symbol* symbol : m_data.SymbolsOf('m')) {
        all.push_back(symbol->id);
    }
    std::ranges::sort(leaves);
    std::ranges::sort(all);
    EXPECT_EQ(leaves, all);
}

TEST_F(Quotes, ItemsAndSteps) {
    std::vector<X1Format> values;
    const BKQuoteInterface::Items items{kItemSymbolNameRealMonth, kItemSymbolText, kItemSymbolName,
                                        kItemPriceStepCode, 9};
    ASSERT_TRUE(m_quotes.bGetItemDataByItemNo('m', "SXF1", items, values, true));
    ASSERT_EQ(values.size(), 5U);
    EXPECT_EQ(values[0].text, text::FromUtf8("模擬指數期 近月（模擬逐筆） 202005"));
    EXPECT_EQ(values[1].text, "SXF1");
    EXPECT_EQ(values[3].text, "21");
    EXPECT_EQ(values[4].text, "");
    ASSERT_TRUE(m_quotes.bGetSymbolOtherNames(m_names, 16, {"9901", "NONE"}));
    EXPECT_EQ(m_names, (Texts{text::FromUtf8("模擬電子") + "\nSimulated Electronics", ""}));
    ASSERT_TRUE(m_quotes.bGetItemDataByItemNo(16, "9902", items, values, true));
    EXPECT_EQ(values[0].text, values[2].text);
    EXPECT_EQ(values[3].number, 25);  // 0.05: two decimals
    EXPECT_FALSE(m_quotes.bGetItemDataByItemNo(16, "NONE", items, values, true));
    EXPECT_TRUE(values.empty());

    double up = 0.01;
    double down = 0.01;
    EXPECT_FALSE(m_quotes.GetJumpPrice(16, "NONE", 10, up, down));
    EXPECT_EQ(up, 0.01);
    EXPECT_TRUE(m_quotes.GetJumpPrice('O', "OBD1", 160, up, down));
    EXPECT_EQ(up, 0.03125);
    EXPECT_EQ(down, 0.03125);

    for (const auto& [step, decimals] : std::vector<std::pair<double, int>>{
             {1, 0}, {5, 0}, {0.5, 1}, {0.1, 1}, {0.05, 2}, {0.25, 2}, {0.03125, 5}, {1e-6, 6}}) {
        EXPECT_EQ(DecimalsOfStep(step), decimals) << step;
    }
}

struct DoubleCase {
    double value;
    int code;
    const char* text;
};

TEST(NumberDisplay, DecimalsByCode) {
    const TerminalNumberDisplay display;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    for (const DoubleCase& c : std::vector<DoubleCase>{{1234.5678, 10, "1235"},
                                                       {1234.5678, 12, "1234.57"},
                                                       {5, 9, "5.000000000"},
                                                       {0.1 + 0.2, -1, "0.3"},
                                                       {12.5, 77, "12.5"},
                                                       {-0.001, 22, "0.00"},
                                                       {-0.0, -1, "0"},
                                                       {1e15, 10, "1000000000000000"},
                                                       {0.1 + 0.2, -9, "0.30"},
                                                       {nan, 12, ""},
                                                       {-infinity, -1, "N/A"}}) {
        EXPECT_EQ(display.CApi_DisplayDouble(c.value, c.code), c.text) << c.value << ' ' << c.code;
    }
}

struct FractionCase {
    double value;
    int code;
    const char* denominator;
    const char* dot;
    const char* special;
    const char* mixed;
};

TEST(NumberDisplay, FractionsByCode) {
    const TerminalNumberDisplay display;
    for (const FractionCase& c : std::vector<FractionCase>{
             {112.5, 1, "112 1/2", "112.1", "112'1", "112 1/2"},
             {112.5, 5, "112 16/32", "112.16", "112'16", "112 1/2"},
             {112.515625, 6, "112 33/64", "112.33", "112'165", "112 33/64"},
             {112.99609375, 8, "112 255/256", "112.255", "112'318", "112 255/256"},
             {-0.25, 5, "-8/32", "-0.08", "-0'08", "-1/4"},
             {0.999, 5, "1", "1.00", "1'00", "1"},
             {-0.001, 5, "0", "0.00", "0'00", "0"},
             {112.5, 0, "N/A", "N/A", "N/A", "N/A"},
             {std::numeric_limits<double>::quiet_NaN(), 5, "N/A", "N/A", "N/A", "N/A"},
             {1e300, 5, "N/A", "N/A", "N/A", "N/A"}}) {
        const auto code = static_cast<unsigned char>(c.code);
        EXPECT_EQ(display.CApi_DisplayDenominator(c.value, code), c.denominator) << c.value;
        EXPECT_EQ(display.CApi_DisplayFraction2Dot(c.value, code), c.dot) << c.value;
        EXPECT_EQ(display.CApi_DisplayFraction2SpecialDecimail(c.value, code), c.special);
        EXPECT_EQ(display.CApi_DisplayFraction2MixType(c.value, code), c.mixed) << c.value;
    }
}

}  // namespace
}  // namespace ta::terminal
