#include "tests/support/MemoryConfigStore.h"

#include <algorithm>

namespace ta::test {

bool MemoryConfigStore::SaveTATrendLine(const CString& chartClass, const CString& symbolKey,
                                        const TrendLinesByType& lines) {
    auto& symbols = trendLines[chartClass];
    if (std::ranges::all_of(lines, [](const auto& type) { return type.second.empty(); })) {
        symbols.erase(symbolKey);
    } else {
        symbols[symbolKey] = lines;
    }
    if (symbols.empty()) {
        trendLines.erase(chartClass);
    }
    return true;
}

}  // namespace ta::test
