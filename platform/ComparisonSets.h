#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <cstdint>
#include <vector>

namespace ta {

/// One of the symbols that are compared.
struct ComparedSymbol {
    std::uint8_t market = 0;
    CString code;  ///< the symbol's id in that market

    bool operator==(const ComparedSymbol&) const = default;
};

#pragma pack(push, 1)
/// The history that is loaded for compared symbols.
struct ComparedHistory {
    std::int32_t dataType = 0;  ///< 0 daily, 1 weekly, 2 monthly, 3 minutes
    std::int32_t minutes = 5;   ///< of a bar, for data type 3
    std::int32_t readMode = 0;  ///< 0 the last records; any other number: from the start date on
    std::int32_t recordCount = 1440;
    std::int32_t startDate = 1;  ///< days since 1970-01-01
    std::uint8_t flag = 0;       ///< the caller's; carried along

    bool operator==(const ComparedHistory&) const = default;
};
#pragma pack(pop)

/// A choice of symbols to compare, as it is kept under a name.
struct ComparisonSet {
    std::vector<ComparedSymbol> symbols;
    ComparedHistory history;
    double baseDate = 0;  ///< days since 1970-01-01; 0: no base date

    bool operator==(const ComparisonSet&) const = default;
};

/// Where comparisons are kept between runs. The terminal implements it and hangs it into CSyncInfo;
/// without one the compare dialog keeps none. Names are told apart byte by byte.
class TADIALOGS_EXPORT ComparisonSets {
public:
    virtual ~ComparisonSets() = default;

    /// The names, in the order in which they are shown.
    virtual std::vector<CString> Names() const = 0;
    /// False, and `set` as it was, when there is none of the name.
    virtual bool Load(const CString& name, ComparisonSet& set) const = 0;
    /// Keeps `set` in the place of one of the same name. False when it could not be kept; what was
    /// there before then stays.
    virtual bool Save(const CString& name, const ComparisonSet& set) = 0;
    /// False when there was none of the name or it could not be removed.
    virtual bool Remove(const CString& name) = 0;

    /// The symbols that were added to comparisons lately, the newest first. One that keeps none
    /// leaves both as they are; the dialog then remembers those of this run.
    virtual std::vector<ComparedSymbol> RecentSymbols() const { return {}; }
    virtual void SetRecentSymbols(const std::vector<ComparedSymbol>& /*symbols*/) {}
};

}  // namespace ta
