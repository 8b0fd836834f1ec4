#include "terminal/chart/PaneHeights.h"

namespace ta::terminal {

PaneHeights::Shares PaneHeights::Of(int group) const {
    const auto found = m_shares.find(group);
    return found == m_shares.end() ? Shares() : found->second;
}

void PaneHeights::Set(int group, const Shares& shares) {
    if (shares.empty()) {
        m_shares.erase(group);
    } else {
        m_shares[group] = shares;
    }
    emit changed(group);
}

}  // namespace ta::terminal
