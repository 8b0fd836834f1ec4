#include "terminal/plot/PlotSlice.h"

#include <cmath>

namespace ta::terminal {

PlotSlice PlotSlice::Of(double lower, double upper, int bars, double pixels) {
    pixels = std::max(pixels, 1.0);
    PlotSlice slice;
    slice.step = std::max(1, static_cast<int>(std::ceil((upper - lower) / pixels)));
    const int before = static_cast<int>(std::max(std::floor(lower) - 1, 0.0));
    slice.first = before / slice.step * slice.step;
    slice.end = static_cast<int>(std::min<double>(bars, std::ceil(upper) + 1 + slice.step));
    slice.end = std::max(slice.end, slice.first);
    slice.pixelsPerBucket = pixels / (upper - lower) * slice.step;
    return slice;
}

}  // namespace ta::terminal
