#pragma once

#include "platform/Study.h"

namespace ta::terminal {

// Longer bars from shorter ones. A bar opens with the first bar in it and closes with the last,
// spans their highest and lowest prices and adds up their volumes. It carries the time of the last
// bar in it, as a week's bar carries its last trading day; the last bar may still be incomplete.

/// From bars of any part of a day: one bar a day, its time the day without a time of day.
BarSeries DailyBars(const BarSeries& bars);
/// From daily bars: weeks from Monday to Sunday.
BarSeries WeeklyBars(const BarSeries& daily);
/// From daily bars: calendar months.
BarSeries MonthlyBars(const BarSeries& daily);
/// Bars of `minutes` (at least 1) from 1-minute ones. They are counted from the start of
/// the session, the earliest time of day of any bar (whole minutes), and end with the day.
BarSeries MinuteBars(const BarSeries& bars, int minutes);
/// Bars of `seconds` (1 to 86400) from single trades, or bars of a few seconds with the time of
/// their end. They are counted from the start of the session, the whole minute of the earliest
/// trade of any day. A bar has what was traded after its begin and up to its end, the first one of
/// a day also what was traded at its begin, and carries the time of its end, as minute prices do;
/// the last one of a day at the latest the end of the minute of the last trade. Seconds without a
/// trade have no bar.
BarSeries SecondBars(const BarSeries& trades, int seconds);

/// Seconds since midnight of a bar's time, 0 to 86399.
int SecondsOfDay(double time);
/// The day number of a bar's time.
long DayOf(double time);

}  // namespace ta::terminal
