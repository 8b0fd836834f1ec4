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
/// Bars of `minutes` (at least 1) from 1-minute or finer ones. They are counted from the start of
/// the session, the earliest time of day of any bar (whole minutes), and end with the day.
BarSeries MinuteBars(const BarSeries& bars, int minutes);

/// Seconds since midnight of a bar's time, 0 to 86399.
int SecondsOfDay(double time);
/// The day number of a bar's time.
long DayOf(double time);

}  // namespace ta::terminal
