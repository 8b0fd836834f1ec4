#include "tests/support/MemoryQuotes.h"

namespace ta::test {

bool MemoryQuotes::bGetQuoteServiceID(std::vector<std::uint8_t>& ids, Texts& names) const {
    if (!Enter("bGetQuoteServiceID")) {
        return false;
    }
    ids.clear();
    names.clear();
    for (const auto& [id, name] : markets) {
        ids.push_back(id);
        names.push_back(name);
    }
    return !ids.empty();
}

bool MemoryQuotes::bGetItemDataByItemNo(std::uint8_t market, const CString& code,
                                        const Items& items, std::vector<X1Format>& values,
                                        bool) const {
    if (!Enter("bGetItemDataByItemNo")) {
        return false;
    }
    values.clear();
    const auto data = Get(itemData, {market, code});
    for (const std::uint16_t item : items) {
        if (!data.contains(item)) {
            values.clear();
            return false;
        }
        values.push_back(data.at(item));
    }
    return !values.empty();
}

}  // namespace ta::test
