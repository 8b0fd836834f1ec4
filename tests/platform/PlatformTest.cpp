#include "platform/Clock.h"
#include "platform/DayNumber.h"
#include "platform/QuoteInterface.h"
#include "platform/SyncInfo.h"
#include "platform/TaData.h"
#include "platform/Window.h"
#include "tests/support/MemoryQuotes.h"
#include "tests/support/MemoryServices.h"
#include "tests/support/RecordingView.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <limits>
#include <optional>
#include <set>
#include <string>

namespace ta {

static std::ostream& operator<<(std::ostream& out, const CalendarDate& date) {
    return out << date.year << '-' << date.month << '-' << date.day;
}

}  // namespace ta

namespace ta::test {
namespace {

int DaysOfMonth(int year, int month) {
    constexpr std::array kDays{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    return kDays[static_cast<std::size_t>(month - 1)] + (month == 2 && leap ? 1 : 0);
}

/// Calls `visit(date)` for every day of the years, in order.
template <class Visit>
void ForEachDay(int firstYear, int lastYear, Visit visit) {
    for (int year = firstYear; year <= lastYear; ++year) {
        for (int month = 1; month <= 12; ++month) {
            for (int day = 1; day <= DaysOfMonth(year, month); ++day) {
                visit(CalendarDate{year, month, day});
            }
        }
    }
}

TEST(DayNumber, CountsEveryDayFrom1970To2069) {
    long expected = 0;
    ForEachDay(1970, 2069, [&expected](const CalendarDate& date) {
        ASSERT_EQ(DayNumberFromDate(date), std::optional<long>(expected)) << date;
        ASSERT_EQ(DateFromDayNumber(expected), date);
        ASSERT_EQ(WeekdayFromDayNumber(expected), (expected + 3) % 7) << date;
        ++expected;
    });
    EXPECT_EQ(expected, 36525);
    EXPECT_EQ(DayNumberFromDate({1970, 1, 1}), std::optional<long>(0));
    EXPECT_EQ(DayNumberFromDate({2000, 2, 29}), std::optional<long>(11016));
    EXPECT_EQ(DayNumberFromDate({2069, 12, 31}), std::optional<long>(36524));
}

TEST(DayNumber, KnowsTheDatesOfEveryFourDigitYear) {
    std::optional<long> dayNumber;
    ForEachDay(1000, 9999, [&dayNumber](const CalendarDate& date) {
        // 1000-01-01 lies 354285 days before 1970-01-01.
        dayNumber = dayNumber.has_value() ? *dayNumber + 1 : -354285;
        ASSERT_EQ(DateFromDayNumber(*dayNumber), date);
    });
    EXPECT_EQ(*dayNumber, 2932896) << "9999-12-31";
}

TEST(DayNumber, RefusesWhatIsNoDateInRange) {
    for (const CalendarDate& date :
         {CalendarDate{1969, 12, 31}, CalendarDate{2070, 1, 1}, CalendarDate{2000, 0, 1},
          CalendarDate{2000, 13, 1}, CalendarDate{2000, 1, 0}, CalendarDate{2000, 1, 32},
          CalendarDate{2000, -1, -1}, CalendarDate{0, 1, 1}, CalendarDate{-2000, 1, 1}}) {
        EXPECT_EQ(DayNumberFromDate(date), std::nullopt) << date;
    }
    const auto after = [](const CalendarDate& date) {
        return DateFromDayNumber(DayNumberFromDate(date).value());
    };
    EXPECT_EQ(after({2001, 2, 29}), (CalendarDate{2001, 3, 1}));
    EXPECT_EQ(after({2000, 2, 31}), (CalendarDate{2000, 3, 2}));
    EXPECT_EQ(after({2000, 4, 31}), (CalendarDate{2000, 5, 1}));
}

TEST(DayNumber, GivesWeekdaysOnBothSidesOf1970) {
    EXPECT_EQ(WeekdayFromDayNumber(0), 3) << "1970-01-01 was a Thursday.";
    EXPECT_EQ(WeekdayFromDayNumber(-1), 2);
    EXPECT_EQ(WeekdayFromDayNumber(-3), 0);
    EXPECT_EQ(WeekdayFromDayNumber(-4), 6);
    EXPECT_EQ(WeekdayFromDayNumber(11016), 1) << "2000-02-29 was a Tuesday.";
    EXPECT_EQ(WeekdayFromDayNumber(-354285), 2) << "1000-01-01, reckoned back, a Wednesday.";
}

/// A time zone and a clock of the test's own.
class ClockTest : public testing::Test {
protected:
    ClockTest() {
        SetClock(&clock);
        if (const char* zone = std::getenv("TZ")) {
            m_zoneBefore = zone;
        }
    }
    ~ClockTest() override {
        SetClock(nullptr);
        if (m_zoneBefore.has_value()) {
            setenv("TZ", m_zoneBefore->c_str(), 1);
        } else {
            unsetenv("TZ");
        }
        tzset();
    }
    void SetZone(const char* zone) {
        setenv("TZ", zone, 1);
        tzset();
    }
    CalendarDate TodayAt(const CalendarDate& date, int hour, int minute, int second) {
        clock.now = static_cast<std::time_t>(DayNumberFromDate(date).value()) * 86400 +
                    hour * 3600 + minute * 60 + second;
        return LocalToday();
    }

    FixedClock clock;

private:
    std::optional<std::string> m_zoneBefore;
};

TEST_F(ClockTest, TodayIsTheDateOfTheLocalZone) {
    SetZone("CST-8");  // eight hours before UTC, as in Taipei
    EXPECT_EQ(TodayAt({1970, 1, 1}, 0, 0, 0), (CalendarDate{1970, 1, 1}));
    EXPECT_EQ(TodayAt({2000, 2, 28}, 15, 59, 59), (CalendarDate{2000, 2, 28}));
    EXPECT_EQ(TodayAt({2000, 2, 28}, 16, 0, 0), (CalendarDate{2000, 2, 29}));
    EXPECT_EQ(TodayAt({2023, 12, 31}, 16, 0, 0), (CalendarDate{2024, 1, 1}));
    EXPECT_EQ(TodayAt({2069, 12, 31}, 15, 59, 59), (CalendarDate{2069, 12, 31}));

    SetZone("EST5EDT,M3.2.0,M11.1.0");  // behind UTC by five hours, in summer by four
    EXPECT_EQ(TodayAt({2024, 1, 15}, 4, 59, 59), (CalendarDate{2024, 1, 14}));
    EXPECT_EQ(TodayAt({2024, 7, 15}, 4, 0, 0), (CalendarDate{2024, 7, 15}));
    EXPECT_EQ(TodayAt({2024, 7, 15}, 3, 59, 59), (CalendarDate{2024, 7, 14}));
}

TEST_F(ClockTest, SurvivesATimeThatNoCalendarHas) {
    clock.now = std::numeric_limits<std::time_t>::max();
    EXPECT_EQ(LocalToday(), CalendarDate());
}

TEST_F(ClockTest, NullBringsTheMachinesClockBack) {
    clock.now = 1;
    EXPECT_EQ(&CurrentClock(), &clock);
    EXPECT_EQ(CurrentClock().Now(), 1);
    SetClock(nullptr);
    EXPECT_NEAR(static_cast<double>(CurrentClock().Now()), static_cast<double>(std::time(nullptr)),
                5.0);
}

TEST(WindowMessages, OneNameHasOneNumber) {
    const std::array<CString, 5> names{"TEST_A", "TEST_B", "test_a", "\xA4\x41", "\xA4\x61"};
    std::set<unsigned> numbers;
    for (const CString& name : names) {
        const unsigned number = window::RegisterWindowMessageA(name);
        EXPECT_GE(number, 0xC000U);
        EXPECT_LE(number, 0xFFFFU);
        EXPECT_EQ(window::RegisterWindowMessageA(name), number) << name;
        numbers.insert(number);
    }
    EXPECT_EQ(numbers.size(), names.size());
}

int UseUpAllNumbers() {
    const unsigned early = window::RegisterWindowMessageA("EARLY");
    std::set<unsigned> numbers{early};
    unsigned number = 1;
    for (int i = 0; number != 0 && i < 0x10000; ++i) {
        number = window::RegisterWindowMessageA("USE_UP_" + std::to_string(i));
        numbers.insert(number);
    }
    const bool ranOut = number == 0 && numbers.contains(0xFFFF);
    const bool keepsKnown = window::RegisterWindowMessageA("EARLY") == early;
    const bool distinct = numbers.size() <= 0x4001;
    return ranOut && keepsKnown && distinct ? 0 : 1;
}

TEST(WindowMessagesDeathTest, RunOutAfterTheLastNumber) {
    // In a process of its own, which may use the numbers up.
    EXPECT_EXIT(std::_Exit(UseUpAllNumbers()), testing::ExitedWithCode(0), "");
}

TEST(WindowMessages, AreAnsweredBeforeTheSenderGoesOn) {
    ViewLog log;
    RecordingView outer("outer", log);
    RecordingView inner("inner", log);
    inner.answer = -7;
    outer.answer = 9;
    std::intptr_t innerAnswer = 0;
    outer.onMessage = [&](const SentMessage& sent) {
        innerAnswer = window::SendMessageA(inner, sent.message + 1, sent.wParam, sent.lParam);
        log.emplace_back("after inner", SentMessage{});
    };
    const auto largest = std::numeric_limits<std::uintptr_t>::max();
    EXPECT_EQ(window::SendMessageA(outer, 0xC000, largest, -1), 9);
    EXPECT_EQ(innerAnswer, -7);
    const ViewLog expected{
        {"outer", {0xC000, largest, -1}}, {"inner", {0xC001, largest, -1}}, {"after inner", {}}};
    EXPECT_EQ(log, expected);

    CView plain;
    EXPECT_EQ(window::SendMessageA(plain, 0xC000, 1, 1), 0);
}

TEST(Windows, ExistFromCreationToDestruction) {
    CWnd frame;
    CWnd other;
    CWnd window;
    EXPECT_FALSE(window.IsWindow());
    window.CreateHiddenChild(&frame);
    window.CreateHiddenChild(&other);
    EXPECT_TRUE(window.IsWindow());
    EXPECT_EQ(window.GetParent(), &frame);
    window.DestroyWindow();
    EXPECT_FALSE(window.IsWindow());
    EXPECT_EQ(window.GetParent(), nullptr);
    window.CreateHiddenChild(nullptr);
    EXPECT_TRUE(window.IsWindow());
}

TEST(DataInterface, LooksIntoItsRepositoriesInOrder) {
    const auto ofFirst = std::make_shared<const BarSeries>(BarSeries{{1.0, 1, 2, 0, 1, 5}});
    const auto ofSecond = std::make_shared<const BarSeries>(BarSeries{{2.0, 1, 2, 0, 1, 5}});
    const BarsKey daily{16, "2330", 0, 0};
    const BarsKey minutes{16, "2330", 3, 5};
    CTADataRepository first(0);
    CTADataRepository second(0);
    CTADataInterface data;
    EXPECT_EQ(data.pGetBars(daily), nullptr);
    EXPECT_FALSE(data.bAddptDataRepository2Vec(nullptr));
    EXPECT_TRUE(data.bAddptDataRepository2Vec(&first));
    EXPECT_TRUE(data.bAddptDataRepository2Vec(&second));
    EXPECT_FALSE(data.bAddptDataRepository2Vec(&first));
    EXPECT_EQ(data.GetRepositories(), (std::vector<CTADataRepository*>{&first, &second}));

    second.vSetBars(daily, ofSecond);
    second.vSetBars(minutes, ofSecond);
    EXPECT_EQ(data.pGetBars(daily), ofSecond);
    first.vSetBars(daily, ofFirst);
    EXPECT_EQ(data.pGetBars(daily), ofFirst);
    EXPECT_EQ(data.pGetBars(minutes), ofSecond);
    EXPECT_EQ(data.pGetBars({16, "2330", 3, 10}), nullptr);
    EXPECT_EQ(data.pGetBars({17, "2330", 0, 0}), nullptr);
}

TEST(DataRepository, KeepsNoHistoryAliveThatNobodyShows) {
    CTADataRepository shown(0);
    CTADataRepository behind(0);
    CTADataInterface data;
    data.bAddptDataRepository2Vec(&shown);
    data.bAddptDataRepository2Vec(&behind);
    const BarsKey key{1, "A", 0, 0};
    const auto kept = std::make_shared<const BarSeries>();
    behind.vSetBars(key, kept);
    auto closing = std::make_shared<const BarSeries>(BarSeries(3));
    shown.vSetBars(key, closing);
    EXPECT_EQ(data.pGetBars(key)->size(), 3U);
    closing.reset();
    EXPECT_EQ(shown.pGetBars(key), nullptr);
    EXPECT_EQ(data.pGetBars(key), kept) << "The next repository that still has it answers.";
}

TEST(SyncInfo, HasNoServicesUntilTheTerminalHangsThemIn) {
    CSyncInfo& info = CSyncInfo::GetSettingCFG();
    EXPECT_EQ(&info, &CSyncInfo::GetSettingCFG());
    EXPECT_EQ(info.CApi_pGetUserCfgIO(), nullptr);
    EXPECT_EQ(info.GetServices().entitlement, nullptr);
    EXPECT_EQ(info.SYS_szGetMessageBoxTitle(), "");
    EXPECT_FALSE(info.SYS_bIsTidewrightVersion());

    MemoryEntitlement entitlement;
    Services services;
    services.entitlement = &entitlement;
    services.messageBoxTitle = "\xA5\x5C";
    services.fractionType = 3;
    services.tidewrightVersion = true;
    info.SetServices(services);
    EXPECT_EQ(info.GetServices().entitlement, &entitlement);
    EXPECT_EQ(info.SYS_szGetMessageBoxTitle(), "\xA5\x5C");
    EXPECT_EQ(info.SYS_GetSpecificFractionType(), 3);
    EXPECT_TRUE(info.SYS_bIsTidewrightVersion());
    info.SetServices({});
    EXPECT_EQ(info.GetServices().entitlement, nullptr);
}

TEST(QuoteInterface, KnowsNothingUntilABackEndIsSet) {
    const BKQuoteInterface& empty = BKQuoteInterface::GetBKInterface();
    EXPECT_EQ(empty.LangGetLangString("IDS_NO_SUCH_KEY"), "IDS_NO_SUCH_KEY");
    // Lists of an earlier question must not pass for an answer.
    std::vector<std::uint8_t> markets{1};
    BKQuoteInterface::Texts ids{"old"};
    BKQuoteInterface::Texts names{"old"};
    BKQuoteInterface::Items items{1};
    std::vector<X1Format> values(1);
    EXPECT_FALSE(empty.bGetQuoteServiceID(markets, names));
    EXPECT_TRUE(markets.empty() && names.empty());
    EXPECT_FALSE(empty.bGetTADailyItemNoByService(items, 16, ""));
    EXPECT_TRUE(items.empty());
    EXPECT_FALSE(empty.bGetSymbolItemID(ids, names, 16, ""));
    EXPECT_TRUE(ids.empty());
    EXPECT_FALSE(empty.bGetItemDataByItemNo(16, "2330", {kItemSymbolName}, values, true));
    EXPECT_TRUE(values.empty());
    double up = 1.5;
    double down = 2.5;
    EXPECT_FALSE(empty.GetJumpPrice(16, "2330", 100, up, down));
    EXPECT_EQ(up, 1.5);
    EXPECT_EQ(down, 2.5);

    MemoryQuotes quotes;
    quotes.language["IDS_KEY"] = "\xA5\x5C";
    BKQuoteInterface::SetBKInterface(&quotes);
    EXPECT_EQ(BKQuoteInterface::GetBKInterface().LangGetLangString("IDS_KEY"), "\xA5\x5C");
    BKQuoteInterface::SetBKInterface(nullptr);
    EXPECT_EQ(&BKQuoteInterface::GetBKInterface(), &empty);
}

}  // namespace
}  // namespace ta::test
