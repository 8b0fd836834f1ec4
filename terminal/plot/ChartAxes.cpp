#include "terminal/plot/ChartAxes.h"

#include <algorithm>
#include <utility>

namespace ta::terminal {

int AxisIndex(int pane, NumberKind numbers, StudyType study) {
    constexpr int kKinds = 16;
    constexpr int kStudies = 4096;
    return (pane * kKinds + static_cast<int>(numbers)) * kStudies + (study & (kStudies - 1));
}

void ChartAxes::ShowHistory(const CString& key) {
    if (key == m_history) {
        return;
    }
    if (HasRanges()) {
        m_others[m_history] = m_drawInfo.GetYaxisRanges();
    } else {
        m_others.erase(m_history);
    }
    m_history = key;
    const auto known = m_others.find(key);
    m_drawInfo.SetYaxisRanges(known == m_others.end() ? YAxisRanges() : known->second);
}

std::optional<YAxisRange> ChartAxes::RangeOf(int axis) const {
    const YAxisRange range = m_drawInfo.GetYaxisRange(axis);
    return range.automatic ? std::nullopt : std::optional(range);
}

bool ChartAxes::HasRanges() const {
    return std::ranges::any_of(m_drawInfo.GetYaxisRanges(),
                               [](const auto& range) { return !range.second.automatic; });
}

int ChartAxes::WidthPercent() const {
    return Common().bYaxisWidthDefault ? 100 : std::clamp(Common().iGetYaxisWidth(), 0, 100);
}

int ChartAxes::EdgePercent() const {
    return Common().bEdgeSpaceDefault ? 0 : std::clamp(Common().iGetEdgeSpace(), 0, 100);
}

}  // namespace ta::terminal
