#include "dialogs/WindowLayouts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace ta::layout {
namespace {

/// What is wrong with the windows of a layout; they have to tile the unit square.
void ExpectTiles(const Layout& layout, const Places& places) {
    const std::vector<Area> areas = Windows(layout, places);
    ASSERT_EQ(static_cast<int>(areas.size()), layout.WindowCount()) << layout.format;
    double covered = 0;
    for (std::size_t i = 0; i < areas.size(); ++i) {
        const Area& a = areas[i];
        EXPECT_TRUE(a.width > 0 && a.height > 0 && a.left >= 0 && a.top >= 0 &&
                    a.left + a.width <= 1 + 1e-9 && a.top + a.height <= 1 + 1e-9)
            << layout.format << ' ' << i;
        covered += a.width * a.height;
        for (std::size_t j = 0; j < i; ++j) {
            const Area& b = areas[j];
            const double wide =
                std::min(a.left + a.width, b.left + b.width) - std::max(a.left, b.left);
            const double high =
                std::min(a.top + a.height, b.top + b.height) - std::max(a.top, b.top);
            EXPECT_TRUE(wide < 1e-9 || high < 1e-9) << layout.format << ' ' << i << ' ' << j;
        }
    }
    EXPECT_NEAR(covered, 1, 1e-9) << layout.format;
}

TEST(WindowLayouts, FormatsRadiosAndWindowsBelongTogether) {
    constexpr struct {
        int format, radio, windows;
    } kTable[] = {{1, 0, 1},  {2, 1, 2},  {3, 2, 3},  {4, 3, 4},  {5, 5, 5},
                  {6, 7, 6},  {7, 9, 7},  {8, 10, 8}, {9, 11, 9}, {10, 12, 10},
                  {11, 4, 5}, {12, 6, 6}, {13, 8, 7}};
    ASSERT_EQ(Layouts().size(), std::size(kTable));
    for (const auto& row : kTable) {
        EXPECT_EQ(LayoutOf(row.format).format, row.format);
        EXPECT_EQ(LayoutOf(row.format).radioIndex, row.radio) << row.format;
        EXPECT_EQ(LayoutOf(row.format).WindowCount(), row.windows) << row.format;
    }
    for (const int unknown : {0, -1, 14, std::numeric_limits<int>::min()}) {
        EXPECT_EQ(LayoutOf(unknown).format, 1);
    }
}

TEST(WindowLayouts, WindowsTileTheSquareWhereverTheDividersAre) {
    for (const Layout& layout : Layouts()) {
        ExpectTiles(layout, {});
        Places places;
        for (const Divider& divider : Dividers(layout)) {
            EXPECT_TRUE(divider.least < divider.place && divider.place < divider.most);
            places.push_back(divider.place);
        }
        for (std::size_t i = 0; i < places.size(); ++i) {
            const Divider before = Dividers(layout, places)[i];
            places[i] = before.least + 0.1 * (before.most - before.least);
            ASSERT_TRUE(Fit(layout, places)) << layout.format << ' ' << i;
            EXPECT_EQ(Dividers(layout, places)[i].place, places[i]);
            ExpectTiles(layout, places);
        }
    }
}

TEST(WindowLayouts, ADividerMovesTheWindowsBesideItAlone) {
    const auto areas = Windows(LayoutOf(5), {0.5, 0.5, 0.1, 0.7});
    EXPECT_EQ(areas[0].width, 0.5) << "the band above";
    EXPECT_NEAR(areas[3].left, 0.1, 1e-12);
    EXPECT_NEAR(areas[3].width, 0.6, 1e-12);
    const auto columns = Windows(LayoutOf(11), {0.2, 0.6, 0.3, 0.5});
    EXPECT_NEAR(columns[0].width, 0.2, 1e-12);
    EXPECT_NEAR(columns[1].height, 0.3, 1e-12);
    EXPECT_NEAR(columns[3].left, 0.6, 1e-12);
}

TEST(WindowLayouts, PlacesThatMakeNoSenseAreNotTaken) {
    const Layout& six = LayoutOf(6);
    const Places good{0.5, 0.3, 0.6, 0.3, 0.6};
    ASSERT_TRUE(Fit(six, good));
    for (const double bad : {0.0, 1.0, 0.6, 0.7, -1.0, std::nan(""), HUGE_VAL}) {
        Places places = good;
        places[1] = bad;
        EXPECT_FALSE(Fit(six, places)) << bad;
        EXPECT_NEAR(Windows(six, places)[0].width, 1.0 / 3, 1e-12) << "as the table has it";
    }
    EXPECT_FALSE(Fit(six, {}));
    EXPECT_FALSE(Fit(six, {0.5, 0.3, 0.6, 0.3, 0.6, 0.9}));
    EXPECT_TRUE(Fit(LayoutOf(1), {}));
}

}  // namespace
}  // namespace ta::layout
