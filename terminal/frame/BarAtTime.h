#pragma once

#include "platform/Study.h"

namespace ta::terminal {

/// The bar of a chart that stands for a bar of another one. `time` and `ofPeriod` are that bar's,
/// `period` is that of `bars`; periods as BarsKey has them. Among days, weeks and months it is the
/// one that the time falls into, else the last one before. Among minutes and seconds, whose bars
/// carry their end, it is the bar in which the time is, and of a whole day the day's last one. -1
/// before the first and behind the last of the bars.
int BarAtTime(const BarSeries& bars, int period, double time, int ofPeriod);

}  // namespace ta::terminal
