#include "dialogs/WindowLayouts.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace ta::layout {
namespace {

constexpr bool kRows = true;
constexpr bool kColumns = false;

// Of the two arrangements of five, six and seven the one that stands first has large windows.
constexpr Layout kLayouts[] = {
    {1, 0, kRows, {1}},
    {2, 1, kRows, {2}},
    {3, 2, kColumns, {1, 2}},
    {4, 3, kRows, {2, 2}},
    {5, 5, kRows, {2, 3}},
    {6, 7, kRows, {3, 3}},
    {7, 9, kRows, {3, 4}},
    {8, 10, kRows, {4, 4}},
    {9, 11, kRows, {3, 3, 3}},
    {10, 12, kRows, {5, 5}},
    {11, 4, kColumns, {1, 2, 2}, {2, 1, 1}},
    {12, 6, kRows, {2, 4}, {3, 2}},
    {13, 8, kColumns, {1, 3, 3}, {2, 1, 1}},
};

/// The edges of parts that lie in a row, from 0 to 1.
using Edges = std::vector<double>;

Edges EdgesOf(std::span<const int> shares) {
    const double whole = std::accumulate(shares.begin(), shares.end(), 0);
    Edges edges{0};
    for (int upTo = 0; const int share : shares) {
        edges.push_back((upTo += share) / whole);
    }
    return edges;
}

struct Grid {
    Edges bands;
    std::vector<Edges> windows;  ///< of each band

    /// Calls `visit` with every list of edges, in the order of Places.
    template <class Visit>
    void ForEach(const Visit& visit) {
        visit(bands);
        std::ranges::for_each(windows, visit);
    }
};

Grid GridOf(const Layout& layout) {
    const auto bands = static_cast<std::size_t>(
        std::ranges::count_if(layout.windows, [](int windows) { return windows > 0; }));
    Grid grid{EdgesOf(std::span(layout.shares).first(bands)), {}};
    for (std::size_t band = 0; band < bands; ++band) {
        const std::vector<int> equal(static_cast<std::size_t>(layout.windows[band]), 1);
        grid.windows.push_back(EdgesOf(equal));
    }
    return grid;
}

std::size_t DividerCount(Grid grid) {
    std::size_t count = 0;
    grid.ForEach([&count](const Edges& edges) { count += edges.size() - 2; });
    return count;
}

bool Ascend(const Edges& edges) {
    return std::ranges::adjacent_find(
               edges, [](double left, double right) { return !(left < right); }) == edges.end();
}

/// The grid with its inner edges at the places, as many of which there must be.
Grid Moved(Grid grid, const Places& places) {
    auto next = places.begin();
    grid.ForEach([&next](Edges& edges) {
        const auto inner = static_cast<std::ptrdiff_t>(edges.size()) - 2;
        std::copy_n(next, inner, edges.begin() + 1);
        next += inner;
    });
    return grid;
}

Grid GridOf(const Layout& layout, const Places& places) {
    return Fit(layout, places) ? Moved(GridOf(layout), places) : GridOf(layout);
}

}  // namespace

std::span<const Layout> Layouts() {
    return kLayouts;
}

const Layout& LayoutOf(int format) {
    return kLayouts[IsFormat(format) ? format - kFirstFormat : 0];
}

bool Fit(const Layout& layout, const Places& places) {
    const Grid grid = GridOf(layout);
    if (places.size() != DividerCount(grid)) {
        return false;
    }
    bool fits = true;
    Moved(grid, places).ForEach([&fits](const Edges& edges) { fits = fits && Ascend(edges); });
    return fits;
}

std::vector<Area> Windows(const Layout& layout, const Places& places) {
    const Grid grid = GridOf(layout, places);
    std::vector<Area> areas;
    for (std::size_t band = 0; band < grid.windows.size(); ++band) {
        const Edges& edges = grid.windows[band];
        for (std::size_t i = 0; i + 1 < edges.size(); ++i) {
            const double across = grid.bands[band];
            const double acrossSize = grid.bands[band + 1] - across;
            const double along = edges[i];
            const double alongSize = edges[i + 1] - along;
            areas.push_back(layout.isRows ? Area{along, across, alongSize, acrossSize}
                                          : Area{across, along, acrossSize, alongSize});
        }
    }
    return areas;
}

std::vector<Divider> Dividers(const Layout& layout, const Places& places) {
    const Grid grid = GridOf(layout, places);
    std::vector<Divider> dividers;
    const auto add = [&dividers](const Edges& edges, bool isUpright, double from, double to) {
        for (std::size_t i = 1; i + 1 < edges.size(); ++i) {
            dividers.push_back({isUpright, edges[i], from, to, edges[i - 1], edges[i + 1]});
        }
    };
    add(grid.bands, !layout.isRows, 0, 1);
    for (std::size_t band = 0; band < grid.windows.size(); ++band) {
        add(grid.windows[band], layout.isRows, grid.bands[band], grid.bands[band + 1]);
    }
    return dividers;
}

}  // namespace ta::layout
