#pragma once

#include <algorithm>

namespace ta::terminal {

/// The bars that a plot draws: those in view, one more at each side, taken together in buckets of
/// `step` bars where there are more bars than pixels. Buckets begin at multiples of `step`, so that
/// a bar stays in its bucket while the view moves.
struct PlotSlice {
    int first = 0;
    int end = 0;  ///< one after the last bar
    int step = 1;
    double pixelsPerBucket = 1;

    static PlotSlice Of(double lower, double upper, int bars, double pixels);

    int BucketCount() const { return (end - first + step - 1) / step; }
    /// Width in pixels of the body of a candle or bar without its outline, even, so that it lies
    /// evenly about the middle.
    int BodyWidth() const { return 2 * static_cast<int>(pixelsPerBucket * 0.35); }

    /// Calls visit(key, from, to) for each bucket: its middle and its bars `from` to `to` - 1.
    template <class Visit>
    void ForEachBucket(Visit visit) const {
        for (int from = first; from < end; from += step) {
            visit(from + (step - 1) / 2.0, from, std::min(from + step, end));
        }
    }
};

}  // namespace ta::terminal
