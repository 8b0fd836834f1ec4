#include "platform/Clock.h"
#include "platform/DayNumber.h"
#include "platform/TaData.h"
#include "platform/Window.h"
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

TEST(DayNumber, CountsEveryDayFrom1970To2069) {
    constexpr std::array kDays{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    long expected = 0;
    for (int year = 1970; year <= 2069; ++year) {
        for (int month = 1; month <= 12; ++month) {
            const int leapDay = month == 2 && year % 4 == 0 ? 1 : 0;
            const int days = kDays[static_cast<std::size_t>(month - 1)] + leapDay;
            for (int day = 1; day <= days; ++day, ++expected) {
                const CalendarDate date{year, month, day};
                ASSERT_EQ(DayNumberFromDate(date), std::optional<long>(expected)) << date;
                ASSERT_EQ(DateFromDayNumber(expected), date);
                ASSERT_EQ(WeekdayFromDayNumber(expected), (expected + 3) % 7) << date;
            }
        }
    }
    EXPECT_EQ(expected, 36525);
    EXPECT_EQ(DateFromDayNumber(-354285), (CalendarDate{1000, 1, 1}));
    EXPECT_EQ(DateFromDayNumber(2932896), (CalendarDate{9999, 12, 31}));
    EXPECT_EQ(WeekdayFromDayNumber(-354285), 2) << "1000-01-01, reckoned back, a Wednesday.";
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
    EXPECT_EQ(after({2000, 4, 31}), (CalendarDate{2000, 5, 1}));
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
    EXPECT_EQ(TodayAt({2000, 2, 28}, 15, 59, 59), (CalendarDate{2000, 2, 28}));
    EXPECT_EQ(TodayAt({2000, 2, 28}, 16, 0, 0), (CalendarDate{2000, 2, 29}));

    SetZone("EST5EDT,M3.2.0,M11.1.0");  // behind UTC by five hours, in summer by four
    EXPECT_EQ(TodayAt({2024, 1, 15}, 4, 59, 59), (CalendarDate{2024, 1, 14}));
    EXPECT_EQ(TodayAt({2024, 7, 15}, 4, 0, 0), (CalendarDate{2024, 7, 15}));
    EXPECT_EQ(TodayAt({2024, 7, 15}, 3, 59, 59), (CalendarDate{2024, 7, 14}));
}

TEST_F(ClockTest, SurvivesATimeThatNoCalendarHas) {
    clock.now = std::numeric_limits<std::time_t>::max();
    EXPECT_EQ(LocalToday(), CalendarDate());
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
}

TEST(DataInterface, LooksIntoItsRepositoriesInOrderAndKeepsNoHistoryAlive) {
    auto ofFirst = std::make_shared<const BarSeries>(BarSeries{{1.0, 1, 2, 0, 1, 5}});
    const auto ofSecond = std::make_shared<const BarSeries>(BarSeries{{2.0, 1, 2, 0, 1, 5}});
    const BarsKey daily{16, "2330", 0, 0};
    const BarsKey minutes{16, "2330", 3, 5};
    CTADataRepository first(0);
    CTADataRepository second(0);
    CTADataInterface data;
    EXPECT_EQ(data.pGetBars(daily), nullptr);
    EXPECT_TRUE(data.bAddptDataRepository2Vec(&first));
    EXPECT_TRUE(data.bAddptDataRepository2Vec(&second));
    EXPECT_FALSE(data.bAddptDataRepository2Vec(&first));

    second.vSetBars(daily, ofSecond);
    second.vSetBars(minutes, ofSecond);
    first.vSetBars(daily, ofFirst);
    EXPECT_EQ(data.pGetBars(daily), ofFirst);
    EXPECT_EQ(data.pGetBars(minutes), ofSecond);
    EXPECT_EQ(data.pGetBars({16, "2330", 3, 10}), nullptr);
    ofFirst.reset();
    EXPECT_EQ(first.pGetBars(daily), nullptr);
    EXPECT_EQ(data.pGetBars(daily), ofSecond) << "The next that still has it answers.";
}

}  // namespace
}  // namespace ta::test
