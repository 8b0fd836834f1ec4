#pragma once

#include "platform/Export.h"
#include "platform/Study.h"
#include "platform/Types.h"

#include <compare>
#include <map>
#include <memory>
#include <vector>

/// Which history: a symbol in one data period. Equal when all four fields are; ordered by them.
struct BarsKey {
    unsigned char market = 0;  ///< service number
    CString symbol;            ///< without the market
    int period = 0;            ///< 0 daily, 1 weekly, 2 monthly, 3 minute, 4 second
    int count = 0;             ///< minutes or seconds of a bar; 0 for the other periods

    auto operator<=>(const BarsKey&) const = default;
};

/// The history that the chart windows of a group have loaded, so that windows on the same symbol
/// share it. It does not keep history alive: a window that shows it does.
class TADIALOGS_EXPORT CTADataRepository {
public:
    /// `kind` 0: chart history, the only kind there is.
    explicit CTADataRepository(int kind) : m_kind(kind) {}

    int iGetKind() const { return m_kind; }
    /// Offers the history to the other windows of the group, in the place of what was under the
    /// key. The bars must not change any more.
    void vSetBars(const BarsKey& key, const std::shared_ptr<const BarSeries>& bars) {
        m_bars[key] = bars;
    }
    /// Null when no window shows this history.
    std::shared_ptr<const BarSeries> pGetBars(const BarsKey& key) const {
        const auto found = m_bars.find(key);
        return found == m_bars.end() ? nullptr : found->second.lock();
    }

private:
    int m_kind;
    std::map<BarsKey, std::weak_ptr<const BarSeries>> m_bars;
};

/// One look-up over data repositories, which stay their owner's and must outlive it. A copy looks
/// into the same ones.
class TADIALOGS_EXPORT CTADataInterface {
public:
    /// false, and nothing is added, for null or a repository that is there already.
    bool bAddptDataRepository2Vec(CTADataRepository* repository);
    /// The history from the first repository that has it, or null.
    std::shared_ptr<const BarSeries> pGetBars(const BarsKey& key) const;
    /// In the order in which they were added, none null, none twice.
    const std::vector<CTADataRepository*>& GetRepositories() const { return m_repositories; }

private:
    std::vector<CTADataRepository*> m_repositories;
};
