#include "sheet/PaneLists.h"

#include <algorithm>

namespace ta::sheet {
namespace {

std::vector<StudyType>& Pane(StudyLists& lists, int pane) {
    return lists[static_cast<std::size_t>(pane)];
}

StudyType Take(std::vector<StudyType>& studies, int study) {
    const auto taken = studies.begin() + study;
    const StudyType type = *taken;
    studies.erase(taken);
    studies.push_back(kNoStudy);
    return type;
}

void Insert(std::vector<StudyType>& studies, int study, StudyType type) {
    studies.insert(studies.begin() + study, type);
    studies.pop_back();
}

}  // namespace

int StudyCount(const StudyLists& lists, int pane) {
    const std::vector<StudyType>& studies = lists[static_cast<std::size_t>(pane)];
    return static_cast<int>(std::ranges::find(studies, kNoStudy) - studies.begin());
}

bool IsPaneFull(const StudyLists& lists, int pane) {
    return StudyCount(lists, pane) == kSlotsPerPane;
}

StudyType StudyAt(const StudyLists& lists, int pane, int study) {
    const bool isThere =
        pane >= 0 && pane < kPaneCount && study >= 0 && study < StudyCount(lists, pane);
    return isThere ? lists[static_cast<std::size_t>(pane)][static_cast<std::size_t>(study)]
                   : kNoStudy;
}

void AppendStudy(StudyLists& lists, int pane, StudyType type) {
    Insert(Pane(lists, pane), StudyCount(lists, pane), type);
}

void RemoveStudy(StudyLists& lists, int pane, int study) {
    Take(Pane(lists, pane), study);
}

int MoveStudy(StudyLists& lists, int pane, int study, int toPane, int toStudy) {
    const StudyType type = Take(Pane(lists, pane), study);
    int place = toStudy;
    if (pane == toPane && toStudy > study) {
        --place;  // the ones behind it have moved up
    }
    place = std::clamp(place, 0, StudyCount(lists, toPane));
    Insert(Pane(lists, toPane), place, type);
    return place;
}

Place MoveBy(StudyLists& lists, Place place, int by) {
    if (place.study < 0) {
        std::swap(Pane(lists, place.pane), Pane(lists, place.pane + by));
        return {place.pane + by, -1};
    }
    const int before = by < 0 ? place.study - 1 : place.study + 2;
    return {place.pane, MoveStudy(lists, place.pane, place.study, place.pane, before)};
}

bool EmptiesFirstPane(const StudyLists& before, const StudyLists& after,
                      const std::function<bool(StudyType)>& counts) {
    return std::ranges::any_of(before.front(), counts) &&
           std::ranges::none_of(after.front(), counts);
}

Place PlaceAfter(const StudyLists& before, const StudyLists& after, Place place) {
    const StudyType type = StudyAt(before, place.pane, place.study);
    if (type == kNoStudy || StudyAt(after, place.pane, place.study) == type) {
        return place;
    }
    std::vector<int> panes{place.pane};
    for (int pane = 0; pane < kPaneCount; ++pane) {
        panes.push_back(pane);
    }
    for (const int pane : panes) {
        const std::vector<StudyType>& studies = after[static_cast<std::size_t>(pane)];
        if (const auto found = std::ranges::find(studies, type); found != studies.end()) {
            return {pane, static_cast<int>(found - studies.begin())};
        }
    }
    return {place.pane, std::min(place.study, StudyCount(after, place.pane) - 1)};
}

}  // namespace ta::sheet
