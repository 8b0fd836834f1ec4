// Technical data without a window: numbers and times as text, the unit rule, and the rows of a list
// whose owner changes his records under it.

#include "dialogs/TechDataTable.h"
#include "dialogs/TechDataTexts.h"
#include "platform/NumberText.h"
#include "tests/dialogs/TechDataFixture.h"

#include <cstdio>
#include <limits>
#include <random>

namespace ta::test {
namespace {

using namespace ta::techdata;

constexpr double kInf = std::numeric_limits<double>::infinity();

CString Printed(const char* format, int decimals, double value) {
    char text[512];
    std::snprintf(text, sizeof text, format, decimals, value);
    return text;
}

TEST(NumberText, FixedDecimalsAreThoseOfPrintf) {
    std::mt19937_64 random(7);
    std::vector<double> values = {
        0,    -0.0, -0.004, 0.5,   1.5,    2.5,    -0.5,  1.005, 1.115,       0.285,
        9e14, 1e15, 123e18, 1e300, -1e300, 5e-324, 0.125, 0.375, 4679999.995, 999999.9999999999};
    for (int i = 0; i < 3000; ++i) {
        const double hundredths = static_cast<double>(random() % 2'000'000'000) / 200;
        values.push_back(std::ldexp(hundredths, static_cast<int>(random() % 40) - 20));
        values.push_back(-hundredths);
    }
    for (const double value : values) {
        for (int decimals = 0; decimals <= kMostDecimals; ++decimals) {
            CString text = "=";
            AppendFixed(text, value, decimals);
            ASSERT_EQ(text, "=" + Printed("%.*f", decimals, value)) << decimals;
        }
        CString shortest;
        AppendShortest(shortest, value);
        ASSERT_EQ(std::strtod(shortest.c_str(), nullptr), value);
    }
    for (const auto& [value, expected] : {std::pair(kInf, "inf inf"),
                                          {-kInf, "-inf -inf"},
                                          {std::nan(""), "nan nan"},
                                          {-std::nan(""), "nan nan"}}) {
        CString text;
        AppendFixed(text, value, 2);
        text += ' ';
        AppendShortest(text, value);
        EXPECT_EQ(text, expected);
    }
    CString clamped;
    AppendFixed(clamped, 1.25, -3);
    AppendFixed(clamped, 1.25, 99);
    EXPECT_EQ(clamped, "11.250000000");
}

TEST(TechDataTexts, TimesOfDay) {
    const std::pair<double, const char*> cases[] = {
        {0, "00:00"},
        {(13 * 3600 + 300) / 86400.0, "13:05"},
        {(13 * 3600 + 307) / 86400.0, "13:05:07"},
        {(13 * 3600 + 307.994) / 86400.0, "13:05:07"},
        {(13 * 3600 + 307.996) / 86400.0, "13:05:08"},
        {86399.99 / 86400, "23:59:59"},
        {86399.996 / 86400, "00:00"},
        {1.0, "00:00"},
        {2.25, "30:00"},
        {-0.5, "-12:00"},
        {std::nan(""), "00:00"},
    };
    for (const auto& [fraction, expected] : cases) {
        EXPECT_STREQ(timeToString(fraction), expected) << fraction;
    }
    const char* const shared = timeToString(0.5);
    timeToString(0.25);
    EXPECT_STREQ(shared, "06:00");
}

TEST(TechDataTexts, Dates) {
    const TechDataServices services;
    struct Case {
        double time;
        const char* daily;
        const char* timed;
    };
    const Case cases[] = {
        {19787.75, "2024/03/05", "2024/03/05 18:00"},
        {-0.25, "1969/12/31", "1969/12/31 18:00"},
        {-0.0, "1970/01/01", "1970/01/01 00:00"},
        {2932896.5, "9999/12/31", "9999/12/31 12:00"},
        {2932897, "", ""},
        {-719162, "0001/01/01", "0001/01/01 00:00"},
        {-719163, "", ""},
        {std::nan(""), "", ""},
    };
    for (const Case& c : cases) {
        CString daily;
        CString timed;
        CellTexts(0, "", kDailyData).AppendDate(daily, c.time);
        CellTexts(0, "", 0).AppendDate(timed, c.time);
        EXPECT_EQ(daily, c.daily) << c.time;
        EXPECT_EQ(timed, c.timed) << c.time;
    }
}

TEST(TechDataUnit, DecimalsOfPriceSteps) {
    for (const auto& [step, decimals] :
         {std::pair(0.01, 2), {0.5, 1}, {1, 0}, {0.000001, 6}, {0.0000001, 0}, {0, 0}}) {
        EXPECT_EQ(DecimalsOfPriceStep(step), decimals) << step;
    }
    EXPECT_EQ(DecimalsOfPriceStep(kInf), 0);
}

TEST(TechDataUnit, CodesFromMarketSymbolValueAndCode) {
    TechDataServices services;
    services.quotes.sameService = {{40, 16}, {41, 'm'}, {42, 'O'}};
    services.quotes.priceSteps = {{{16, "2330"}, {0.5, 0.05}}, {{40, "S"}, {1, 1}}};
    services.quotes.itemData = {{{'m', "F"}, {{kItemPriceStepCode, {"", 23}}}},
                                {{41, "F"}, {{kItemPriceStepCode, {"", 24}}}},
                                {{42, "F"}, {{kItemPriceStepCode, {"", 27}}}},
                                {{1, "G"}, {{kItemPriceStepCode, {"", 0}}}},
                                {{1, "H"}, {{kItemPriceStepCode, {"", 300}}}}};
    struct Case {
        unsigned char market;
        const char* symbol;
        double value;
        int code;
        int expected;
    };
    const Case cases[] = {
        // The step that goes up counts.
        {16, "2330", 600, 0, 31},
        {16, "2330", -600, 0, 41},
        {16, "2330", std::nan(""), 0, 41},
        {16, "2330", -0.0, 0, 31},
        {40, "S", 3, 5, 10},
        {40, "S", -3, 5, 20},
        // An unknown symbol keeps the presets.
        {2, "?", 3, 0, 12},
        {'m', "F", 3, 0, 31},
        {'m', "F", -3, 0, 41},
        {41, "F", 3, 0, 31},
        {42, "F", 3, 0, 13},
        {1, "G", 3, 0, 0},
        {1, "H", 3, 0, 0},
        {'m', "?", 3, 7, 1},
        // No family.
        {77, "F", 3, 0, 0},
        {77, "F", 3, 29, 29},
        {77, "F", 3, 30, 1},
        {77, "F", 3, -2, 1},
        // Whatever the market.
        {16, "2330", 600, -1, -1},
        {'m', "?", 600, -9, -9},
        {77, "WT200", -1, 3, 12},
        {'m', "WT200", 1, 3, 12},
        {77, "WT200", 1, -1, -1},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(UnitRule(c.market, c.symbol).vSetBaseUnit(c.value, c.code), c.expected)
            << int{c.market} << ' ' << c.symbol << ' ' << c.value << ' ' << c.code;
    }
}

TEST(TechDataTexts, ValuesByHeadingFractionAndUnit) {
    TechDataServices services;
    MemoryNumberDisplay asked;
    services.services.numberDisplay = &asked;
    const auto text = [&](int style, double value, const HeaderInfo& header) {
        services.services.fractionType = style;
        services.HangIn();
        CString out;
        CellTexts(77, "", kDailyData).AppendValue(out, value, header);
        return out;
    };
    for (const char* whole : {"volume", "amount", "interest"}) {
        EXPECT_EQ(text(0, 1234.5, {whole, 0, 5, 2}), "1234");
    }
    EXPECT_EQ(text(0, 1e20, {"volume", 0, 0, 2}), "100000000000000000000");
    EXPECT_EQ(text(0, -0.4, {"volume", 0, 0, 2}), "-0");
    EXPECT_EQ(text(0, kInf, {"volume", 0, 0, 2}), "inf");
    const HeaderInfo price{"price", 0, 5, 2};
    EXPECT_EQ(text(0, 1.5, price), "CApi_DisplayDenominator(1.5, 5)");
    EXPECT_EQ(text(1, 1.5, price), "CApi_DisplayFraction2Dot(1.5, 5)");
    EXPECT_EQ(text(2, 1.5, price), "CApi_DisplayFraction2SpecialDecimail(1.5, 5)");
    EXPECT_EQ(text(3, 1.5, price), "CApi_DisplayFraction2MixType(1.5, 5)");
    EXPECT_EQ(text(4, 1.5, price), "CApi_DisplayDenominator(1.5, 5)");
    // "N/A" is no fraction, and neither is an empty text.
    FailingNumberDisplay failing(asked);
    services.services.numberDisplay = &failing;
    failing.FailOnCall("CApi_DisplayDenominator", CallPlan::kEveryCall);
    EXPECT_EQ(text(1, 1.5, {"price", 0, 5, 33}), "CApi_DisplayDouble(1.5, 1)");
    services.services.numberDisplay = nullptr;
    EXPECT_EQ(text(1, 0.1, price), "0.1");
}

TEST(TechDataTexts, CellsOfRecordsThatDoNotFit) {
    const TechDataServices services;
    const Headers headers = MakeHeaders({"date", "a", "b"});
    const CellTexts cells(77, "", kDailyData);
    const auto row = [&](const OneRecord* record) {
        CString out;
        for (std::size_t column = 0; column < 5; ++column) {
            cells.AppendCell(out, record, headers, column);
            out += '|';
        }
        return out;
    };
    const OneRecord fits{19787, {1, -2}};
    const OneRecord tooFew{19787, {1}};
    const OneRecord tooMany{19787, {1, 2, 3}};
    EXPECT_EQ(row(&fits), "2024/03/05|1.00|-2.00|||");
    EXPECT_EQ(row(&tooFew), "2024/03/05|||||");
    EXPECT_EQ(row(&tooMany), "2024/03/05|||||");
    EXPECT_EQ(row(nullptr), "|||||");
}

TEST(TechDataTexts, TheWidestOfAColumn) {
    WidestTexts widest;
    for (const char* text : {"9.5", "-1.50", "N/A", "10.50", "20.50", "x"}) {
        widest.Note(1, text);
    }
    EXPECT_EQ(widest.At(1), "10.50");
    EXPECT_EQ(widest.At(0), "");
    EXPECT_EQ(widest.At(9), "");
    widest.Clear();
    EXPECT_EQ(widest.At(1), "");
}

/// A list over records of one value, driven as the window drives it.
class TechDataRows : public testing::Test {
protected:
    void Fill(std::size_t most = 300) {
        const std::size_t missing = std::min(table.Missing(), most);
        table.Grow(missing == 0 ? table.EndFill() : missing);
    }
    void Insert(const OneRecord& record) {
        table.Grow(table.Insert(record) == table.RowCount() ? 1 : 0);
    }
    /// The values of the rows; "-" for a row without a record.
    CString Shown() const {
        CString text;
        for (std::size_t row = 0; row < table.RowCount(); ++row) {
            const OneRecord* record = table.Record(row);
            text += record == nullptr ? "-" : fmt::format("{}", record->values.at(0));
        }
        return text;
    }

    Headers headers = MakeHeaders({"date", "v"});
    Records records = MakeRecords(4, 1);
    TechDataTable table{headers, records};
};

TEST_F(TechDataRows, ComeInBatchesAndFollowTheOwnersVector) {
    Fill(3);
    EXPECT_EQ(Shown(), "012");
    EXPECT_EQ(table.Record(3), nullptr);  // not in the list yet
    records = MakeRecords(2, 1);
    EXPECT_EQ(Shown(), "01-");
    EXPECT_EQ(table.Missing(), 0U);
    Fill();
    EXPECT_FALSE(table.IsFilling());
    Records others = MakeRecords(6, 1);
    const unsigned before = table.Generation();
    table.SetRecords(others);
    EXPECT_NE(table.Generation(), before);
    EXPECT_EQ(Shown(), "012");
    EXPECT_EQ(table.Missing(), 3U);
    table.Restart();
    EXPECT_TRUE(table.IsFilling());
    EXPECT_EQ(Shown(), "");
    Fill();
    EXPECT_EQ(Shown(), "012345");
}

TEST_F(TechDataRows, AnInsertedRowIsShownOnceWhetherTheOwnerHasItOrNot) {
    const OneRecord newBar{20000, {9}};
    for (const bool filling : {false, true}) {
        for (const int appended : {-1, 0, 1}) {  // before the call, never, after it
            SCOPED_TRACE(fmt::format("filling {} appended {}", filling, appended));
            records = MakeRecords(4, 1);
            table.Restart();
            Fill();
            if (!filling) {
                Fill();
            }
            if (appended == -1) {
                records.push_back(newBar);
            }
            Insert(newBar);
            EXPECT_EQ(Shown(), filling ? "0123" : "01239");
            if (appended == 1) {
                records.push_back(newBar);
            }
            Fill();
            if (filling) {
                Fill();
            }
            EXPECT_EQ(Shown(), "01239");
            Insert({20001, {8}});
            EXPECT_EQ(Shown(), "012398");
        }
    }
}

TEST_F(TechDataRows, SeveralInsertedOnes) {
    Fill();
    Fill();
    const OneRecord bars[] = {{20000, {7}}, {20001, {8}}, {20001, {std::nan("")}}};
    records.insert(records.end(), std::begin(bars), std::end(bars));
    for (const OneRecord& bar : bars) {
        Insert(bar);
    }
    EXPECT_EQ(Shown(), "012378nan");
    EXPECT_EQ(table.Record(6), &records[6]);  // the owner's, no copy
}

TEST_F(TechDataRows, OfAnOwnerWhoDropsRecordsForTheNewOnes) {
    struct Case {
        std::size_t first, count, bars;  ///< what he drops, and how many bars come
        const char* shown;
    };
    for (const Case& c : {Case{0, 1, 1, "1237"},
                          {3, 1, 1, "0127"},
                          {0, 1, 2, "12378"},
                          {0, 2, 1, "237-"},
                          {0, 4, 2, "78--"},
                          {0, 0, 1, "01237"}}) {
        records = MakeRecords(4, 1);
        table.Restart();
        Fill();
        Fill();
        records.erase(records.begin() + static_cast<std::ptrdiff_t>(c.first),
                      records.begin() + static_cast<std::ptrdiff_t>(c.first + c.count));
        const unsigned before = table.Generation();
        const OneRecord bars[] = {{20000, {7}}, {20001, {8}}};
        records.insert(records.end(), bars, bars + c.bars);
        for (std::size_t bar = 0; bar < c.bars; ++bar) {
            Insert(bars[bar]);
        }
        EXPECT_EQ(Shown(), c.shown) << c.first << c.count;
        EXPECT_EQ(table.Generation() != before, c.count > 0) << c.shown;
    }
    // The same bar once more is a row of its own, also after it was replaced.
    Insert(records.back());
    EXPECT_EQ(Shown(), "012377");
    table.Restart();
    Fill();
    Fill();
    EXPECT_TRUE(table.Replace(4, {20002, {9}}));
    Insert(records.back());
    EXPECT_EQ(Shown(), "012399");
}

TEST_F(TechDataRows, ErasingStopsTheFillAndOldRecordsStayAway) {
    Fill(2);
    table.Erase();
    EXPECT_FALSE(table.IsFilling());
    EXPECT_EQ(Shown(), "");
    Insert({20000, {9}});  // the owner has kept his records
    records.clear();       // and clears them now
    records.push_back({20000, {9}});
    Insert({20001, {8}});
    EXPECT_EQ(Shown(), "98");
}

TEST_F(TechDataRows, ReplacingOneRow) {
    Fill();
    Fill();
    const OneRecord good{30000, {5}};
    EXPECT_TRUE(table.Replace(3, good));
    EXPECT_EQ(Shown(), "0125");
    EXPECT_EQ(records[3].time, 30000);
    EXPECT_FALSE(table.Replace(4, good));
    EXPECT_FALSE(table.Replace(0, {1, {}}));
    EXPECT_FALSE(table.Replace(0, {1, {1, 2}}));
    EXPECT_EQ(Shown(), "0125");
    // A row of the viewer's own, which the owner has appended since.
    Insert({30001, {6}});
    records.push_back({30001, {6}});
    EXPECT_TRUE(table.Replace(4, {30001, {7}}));
    EXPECT_EQ(Shown(), "01257");
}

TEST_F(TechDataRows, OfADayOrTheLastOneBeforeIt) {
    records = {{10, {0}}, {11.25, {1}}, {11.5, {2}}, {14.75, {3}}};
    const auto rowsOfDays = [this] {
        CString rows;
        for (const long day : {9, 10, 11, 12, 13, 14, 15}) {
            const auto row = table.RowOfDay(day);
            rows += row ? std::to_string(*row) : "-";
        }
        return rows;
    };
    EXPECT_EQ(rowsOfDays(), "-01223-") << "also of those that are still to come";
    Fill();
    Fill();
    EXPECT_EQ(rowsOfDays(), "-01223-");
    Insert({15, {4}});
    EXPECT_EQ(rowsOfDays(), "-012234");
    records.resize(2);
    table.Restart();
    Fill();
    EXPECT_EQ(rowsOfDays(), "-01----");
    table.Erase();
    EXPECT_EQ(rowsOfDays(), "-------");
}

}  // namespace
}  // namespace ta::test
