#include "settings/StudyLists.h"

#include <algorithm>
#include <initializer_list>

namespace ta::settings {
namespace {

void PutStudies(StudyLists& lists, std::size_t pane, std::initializer_list<StudyType> studies) {
    std::ranges::copy(studies, lists[pane].begin());
}

StudyLists MakeDefaultStudyLists() {
    StudyLists lists;
    InitStudyType(lists);
    PutStudies(lists, 0, {0, 4});
    PutStudies(lists, 1, {16});
    PutStudies(lists, 2, {23});
    PutStudies(lists, 3, {22});
    return lists;
}

}  // namespace

void InitStudyType(StudyLists& lists) {
    lists.assign(kPaneCount, std::vector<StudyType>(kSlotsPerPane, kNoStudy));
}

const StudyLists& DefaultStudyLists() {
    static const StudyLists lists = MakeDefaultStudyLists();
    return lists;
}

bool IsDefaultStudy(StudyType type) {
    return type != kNoStudy &&
           std::ranges::any_of(DefaultStudyLists(), [type](const std::vector<StudyType>& pane) {
               return std::ranges::find(pane, type) != pane.end();
           });
}

void FillPane(std::vector<StudyType>& pane, const std::vector<StudyType>& studies,
              const std::function<bool(StudyType)>& accept) {
    auto slot = pane.begin();
    for (const StudyType type : studies) {
        if (slot == pane.end()) {
            break;
        }
        if (accept(type)) {
            *slot++ = type;
        }
    }
}

std::vector<StudyType> PackPane(const std::vector<StudyType>& studies,
                                const std::function<bool(StudyType)>& accept) {
    std::vector<StudyType> pane(kSlotsPerPane, kNoStudy);
    FillPane(pane, studies, accept);
    return pane;
}

StudyLists PackStudyLists(const StudyLists& lists) {
    StudyLists packed;
    InitStudyType(packed);
    const std::size_t panes = std::min(lists.size(), packed.size());
    for (std::size_t pane = 0; pane < panes; ++pane) {
        FillPane(packed[pane], lists[pane], [](StudyType type) { return type >= 0; });
    }
    return packed;
}

}  // namespace ta::settings
