#pragma once

#include "platform/Export.h"

#include <array>
#include <span>
#include <vector>

/// The arrangements of chart windows that a user chooses from: one table for the pictures of the
/// layout dialog and for the windows themselves.
namespace ta::layout {

inline constexpr int kFirstFormat = 1;
inline constexpr int kLastFormat = 13;
inline constexpr int kMostWindows = 10;

/// One arrangement: bands beside or above each other, each cut into its windows.
struct Layout {
    static constexpr int kMostBands = 3;

    int format = 0;      ///< the number that callers know it by
    int radioIndex = 0;  ///< its place among the thirteen on the screen, from 0
    bool isRows = true;  ///< bands lie one above the other; false: they stand side by side
    std::array<int, kMostBands> windows = {};        ///< of each band; 0: there is no such band
    std::array<int, kMostBands> shares = {1, 1, 1};  ///< how much room the bands have, relatively

    constexpr int WindowCount() const { return windows[0] + windows[1] + windows[2]; }
};

/// Part of the unit square.
struct Area {
    double left = 0;
    double top = 0;
    double width = 1;
    double height = 1;
};

/// Where the lines between windows lie, each from 0 to 1: the lines between the bands first, then
/// those within each band, as Dividers() has them. Empty: where the table has them.
using Places = std::vector<double>;

/// A line between windows.
struct Divider {
    bool isUpright = false;  ///< between windows that stand side by side
    double place = 0;        ///< from the left when it is upright, else from the top
    double from = 0;         ///< its ends, along the line
    double to = 1;
    double least = 0;  ///< its neighbours, between which it can be moved
    double most = 1;
};

/// All arrangements by their format, 1 to 13.
TADIALOGS_EXPORT std::span<const Layout> Layouts();
/// The arrangement of a format; of format 1 for a number outside of 1 to 13.
TADIALOGS_EXPORT const Layout& LayoutOf(int format);
constexpr bool IsFormat(int format) {
    return format >= kFirstFormat && format <= kLastFormat;
}

/// Whether they are the places of all of the layout's dividers, in their order and apart.
TADIALOGS_EXPORT bool Fit(const Layout& layout, const Places& places);
/// The windows, band for band. Together they are the unit square. Places that do not fit are taken
/// as empty.
TADIALOGS_EXPORT std::vector<Area> Windows(const Layout& layout, const Places& places = {});
/// The lines between them, in the order of Places.
TADIALOGS_EXPORT std::vector<Divider> Dividers(const Layout& layout, const Places& places = {});

}  // namespace ta::layout
