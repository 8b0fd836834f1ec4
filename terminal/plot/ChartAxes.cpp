#include "terminal/plot/ChartAxes.h"

#include <algorithm>
#include <utility>

namespace ta::terminal {

int AxisIndex(int pane, NumberKind numbers, StudyType study) {
    constexpr int kKinds = 16;
    constexpr int kStudies = 4096;
    return (pane * kKinds + static_cast<int>(numbers)) * kStudies + (study & (kStudies - 1));
}

std::map<CString, YAxisRanges> ChartAxes::AllRanges() const {
    auto all = m_others;
    all.erase(m_history);
    if (HasRanges()) {
        all[m_history] = m_drawInfo.GetYaxisRanges();
    }
    return all;
}

void ChartAxes::SetAllRanges(std::map<CString, YAxisRanges> ranges) {
    m_others = std::move(ranges);
    const auto shown = m_others.find(m_history);
    m_drawInfo.SetYaxisRanges(shown == m_others.end() ? YAxisRanges() : shown->second);
}

void ChartAxes::ShowHistory(const CString& key) {
    if (key != m_history) {
        auto all = AllRanges();
        m_history = key;
        SetAllRanges(std::move(all));
    }
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
