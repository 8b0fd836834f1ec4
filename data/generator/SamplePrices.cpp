#include "data/generator/SamplePrices.h"

#include "platform/DayNumber.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <vector>

namespace ta::data {
namespace {

constexpr int kDays = 1000;
constexpr int kOptionDays = 60;
constexpr int kMinuteDays = 20;
constexpr long kLastDay = 18369;  // 2020-04-17, a Friday, where the real index ends too
constexpr int kWalksPerDay = 16;
constexpr int kWalksPerMinute = 4;
constexpr int kTicksPerMinute = 15;  // on the last day, less one in kTicksPerGap
constexpr int kTicksPerGap = 4;

struct Session {
    int openMinute;  // minute of the day in which trading begins
    int minutes;
};

constexpr Session kShares{9 * 60, 270};
constexpr Session kFutures{8 * 60 + 45, 300};

struct Simulated {
    const char* path;        // of its files, without kind
    const char* seed;        // symbols of one seed move alike
    std::int64_t start;      // first price, in price steps
    std::int64_t stepUnits;  // a price step, in units of the last decimal
    int decimals;
    int days;
    int volatility;  // how far a day goes, in 1/10000 of the price
    std::int64_t volume;
    // The last kMinuteDays days are walked in minutes, of these the last day in ticks.
    const Session* session = nullptr;
    bool minuteFile = false;
    bool tickFile = false;
};

constexpr std::array kSimulated{
    Simulated{"16/9901", "9901", 440, 5, 1, kDays, 130, 32000, &kShares, true},
    Simulated{"16/9902", "9902", 620, 5, 2, kDays, 190, 9000, &kShares, false, true},
    Simulated{"16/9903", "9903", 2450, 1, 2, kDays, 80, 21000},
    Simulated{"16/9904", "9904", 880, 1, 1, kDays, 220, 4000},
    Simulated{"16/9905", "9905", 610, 5, 0, kDays, 170, 800},
    Simulated{"m/SXF1", "SXF", 12650, 1, 0, kDays, 90, 120000, &kFutures, true, true},
    Simulated{"m/SXF2", "SXF", 12610, 1, 0, kDays, 90, 9000, &kFutures},
    Simulated{"m/SXF3", "SXF", 12480, 1, 0, kDays, 90, 1700, &kFutures},
    Simulated{"m/SXO10500C", "SXO10500C", 2150, 1, 1, kOptionDays, 900, 3000},
    Simulated{"m/SXO10500P", "SXO10500P", 1880, 1, 1, kOptionDays, 900, 2600},
    Simulated{"m/SXO10800C", "SXO10800C", 2420, 1, 1, kOptionDays, 700, 900},
    Simulated{"m/SXOW5-10500C", "SXOW5-10500C", 820, 1, 1, 12, 1500, 5000},
    Simulated{"m/SXOW5-10500P", "SXOW5-10500P", 760, 1, 1, 12, 1500, 4400},
    Simulated{"m/SXOW1-10600C", "SXOW1-10600C", 930, 1, 1, 7, 1300, 1500},
    Simulated{"m/ETXO450C", "ETXO450C", 260, 5, 2, kOptionDays, 900, 400},
    Simulated{"m/ETXO450P", "ETXO450P", 240, 5, 2, kOptionDays, 900, 380},
    Simulated{"m/ETXO1W-450C", "ETXO1W-450C", 120, 5, 2, 12, 1500, 300},
    Simulated{"m/ETXO1W-450P", "ETXO1W-450P", 110, 5, 2, 12, 1500, 280},
    Simulated{"m/ETXO2W-450C", "ETXO2W-450C", 150, 5, 2, 7, 1300, 120},
    Simulated{"1/GLD-SPOT", "GLD-SPOT", 12400, 1, 1, kDays, 70, 15000},
    Simulated{"1/GLD-1KG", "GLD-SPOT", 12410, 1, 1, kDays, 70, 600},
    Simulated{"1/OIL-SPOT", "OIL-SPOT", 4700, 1, 2, kDays, 200, 48000},
    Simulated{"1/CRN-SPOT", "CRN-SPOT", 1540, 25, 2, kDays, 120, 26000},
    Simulated{"O/OSI1", "OSI1", 8200, 25, 2, kDays, 90, 150000},
    Simulated{"O/OBD1", "OBD1", 5280, 3125, 5, kDays, 40, 90000},
};

struct SampleBar {
    std::int64_t open = 0;
    std::int64_t high = 0;
    std::int64_t low = 0;
    std::int64_t close = 0;
    std::int64_t volume = 0;

    void Add(const SampleBar& next) {
        if (volume == 0) {
            *this = next;
            return;
        }
        high = std::max(high, next.high);
        low = std::min(low, next.low);
        close = next.close;
        volume += next.volume;
    }
};

// SplitMix64 (public domain), seeded with the FNV-1a hash of a text.
class Random {
public:
    explicit Random(std::string_view seed) {
        for (const char c : seed) {
            m_state = (m_state ^ static_cast<unsigned char>(c)) * 0x100000001B3ULL;
        }
    }

    std::uint64_t Next() {
        m_state += 0x9E3779B97F4A7C15ULL;
        std::uint64_t z = m_state;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return z ^ (z >> 31);
    }

    /// -limit to limit, in proportion to it.
    std::int64_t Between(std::int64_t limit) {
        constexpr std::int64_t kParts = 1 << 20;
        const auto part = static_cast<std::int64_t>(Next() % (2 * kParts + 1)) - kParts;
        return limit * part / kParts;
    }

private:
    std::uint64_t m_state = 0xCBF29CE484222325ULL;
};

// A walk in 1/1000 of a price step.
class Walk {
public:
    explicit Walk(const Simulated& symbol)
        : m_symbol(symbol), m_random(symbol.seed), m_price(symbol.start * 1000) {}

    /// A bar of `walks` moves; `parts` of such bars make a day.
    SampleBar NextBar(int walks, int parts) {
        SampleBar bar;
        bar.open = bar.high = bar.low = bar.close = InSteps();
        for (int i = 0; i < walks; ++i) {
            Move(static_cast<std::int64_t>(walks) * parts);
            bar.close = InSteps();
            bar.high = std::max(bar.high, bar.close);
            bar.low = std::min(bar.low, bar.close);
        }
        const std::int64_t usual = std::max<std::int64_t>(m_symbol.volume / parts, 1);
        bar.volume = std::max<std::int64_t>(usual + m_random.Between(usual * 6 / 10), 1);
        return bar;
    }

    /// One trade, of `parts` a day less the gaps.
    SampleBar NextTick(int parts) {
        SampleBar tick = NextBar(1, parts);
        tick.open = tick.high = tick.low = tick.close;
        tick.volume = tick.volume * kTicksPerGap / (kTicksPerGap - 1);
        return tick;
    }

    /// 0 to count - 1.
    int Pick(int count) {
        return static_cast<int>(m_random.Next() % static_cast<std::uint64_t>(count));
    }

    /// The gap between two days.
    void Overnight() { Move(9); }

private:
    // One of `moves` moves of a day: the spread of a sum grows with the root of their count.
    void Move(std::int64_t moves) {
        std::int64_t root = 1;
        while ((root + 1) * (root + 1) <= moves) {
            ++root;
        }
        const std::int64_t limit =
            std::max<std::int64_t>(m_price * m_symbol.volatility * 7 / (40000 * root), 1);
        m_price = std::max<std::int64_t>(m_price + m_random.Between(limit), 1000);
    }

    std::int64_t InSteps() const { return (m_price + 500) / 1000; }

    const Simulated& m_symbol;
    Random m_random;
    std::int64_t m_price;
};

std::string DateText(long day) {
    const CalendarDate date = DateFromDayNumber(day);
    return fmt::format("{:04}-{:02}-{:02}", date.year, date.month, date.day);
}

// The last `count` weekdays, oldest first.
std::vector<long> TradingDays(int count) {
    std::vector<long> days;
    for (long day = kLastDay; static_cast<int>(days.size()) < count; --day) {
        if (WeekdayFromDayNumber(day) < 5) {
            days.push_back(day);
        }
    }
    std::ranges::reverse(days);
    return days;
}

class FileText {
public:
    explicit FileText(const Simulated& symbol) : m_symbol(symbol) {}

    void Add(const std::string& time, const SampleBar& bar) {
        text += time;
        for (const std::int64_t steps : {bar.open, bar.high, bar.low, bar.close}) {
            text += ',' + PriceText(steps);
        }
        text += fmt::format(",{}\n", bar.volume);
    }

    std::string text = "date,open,high,low,close,volume\n";

private:
    std::string PriceText(std::int64_t steps) const {
        std::int64_t scale = 1;
        for (int i = 0; i < m_symbol.decimals; ++i) {
            scale *= 10;
        }
        const std::int64_t units = steps * m_symbol.stepUnits;
        return m_symbol.decimals == 0
                   ? std::to_string(units)
                   : fmt::format("{}.{:0{}}", units / scale, units % scale, m_symbol.decimals);
    }

    const Simulated& m_symbol;
};

std::string MinuteText(const std::string& date, int minute) {
    return fmt::format("{} {:02}:{:02}", date, minute / 60, minute % 60);
}

// The ticks of a minute of the session, and its bar from them. The session's first one stands at
// its begin, its last one at its end; the first one of a minute is always there.
SampleBar TickMinute(Walk* walk, const Session& session, const std::string& date, int minute,
                     FileText* file) {
    constexpr int kApart = 60 / kTicksPerMinute;
    SampleBar whole;
    for (int i = 0; i < kTicksPerMinute; ++i) {
        const SampleBar tick = walk->NextTick(session.minutes * kTicksPerMinute);
        const bool opens = minute == 0 && i == 0;
        const bool closes = minute + 1 == session.minutes && i + 1 == kTicksPerMinute;
        const int picked = i * kApart + 1 + walk->Pick(kApart);
        const bool isGap = walk->Pick(kTicksPerGap) == 0;
        if (isGap && i > 0 && !closes) {
            continue;
        }
        const int offset = opens ? 0 : closes ? 60 : picked;
        const int time = session.openMinute + minute + offset / 60;
        file->Add(fmt::format("{}:{:02}", MinuteText(date, time), offset % 60), tick);
        whole.Add(tick);
    }
    return whole;
}

struct Files {
    explicit Files(const Simulated& symbol) : daily(symbol), minute(symbol), tick(symbol) {}

    FileText daily;
    FileText minute;
    FileText tick;
};

// A day of minute bars, each at the minute in which it ends, and the day's bar from them.
SampleBar MinuteDay(Walk* walk, const Session& session, const std::string& date, bool inTicks,
                    Files* files) {
    SampleBar day;
    for (int i = 0; i < session.minutes; ++i) {
        const SampleBar bar = inTicks ? TickMinute(walk, session, date, i, &files->tick)
                                      : walk->NextBar(kWalksPerMinute, session.minutes);
        files->minute.Add(MinuteText(date, session.openMinute + i + 1), bar);
        day.Add(bar);
    }
    return day;
}

void GenerateSymbol(const Simulated& symbol, const PriceFileSink& sink) {
    Walk walk(symbol);
    Files files(symbol);
    const std::vector<long> days = TradingDays(symbol.days);
    for (std::size_t i = 0; i < days.size(); ++i) {
        const std::string date = DateText(days[i]);
        const bool inMinutes = symbol.session != nullptr && i + kMinuteDays >= days.size();
        const bool inTicks = inMinutes && i + 1 == days.size();
        files.daily.Add(date, inMinutes ? MinuteDay(&walk, *symbol.session, date, inTicks, &files)
                                        : walk.NextBar(kWalksPerDay, 1));
        walk.Overnight();
    }
    const std::string path = std::string("prices/") + symbol.path;
    sink(path + ".daily.csv", files.daily.text);
    if (symbol.minuteFile) {
        sink(path + ".minute.csv", files.minute.text);
    }
    if (symbol.tickFile) {
        sink(path + ".tick.csv", files.tick.text);
    }
}

}  // namespace

void GenerateSamplePrices(const PriceFileSink& sink) {
    for (const Simulated& symbol : kSimulated) {
        GenerateSymbol(symbol, sink);
    }
}

}  // namespace ta::data
