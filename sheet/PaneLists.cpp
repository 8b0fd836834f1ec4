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

void SwapPanes(StudyLists& lists, int pane, int other) {
    std::swap(Pane(lists, pane), Pane(lists, other));
}

}  // namespace ta::sheet
