#pragma once

#include "sheet/PaneLists.h"
#include "sheet/StudyFacts.h"

#include <optional>
#include <utility>

namespace ta::sheet {

/// What the study page remembers of what it shows; the edits are the session's.
struct StudyPageState {
    struct Selection {
        CString group;
        Place place;
    };

    CString group;                     ///< the group that the tree shows
    int number = -1;                   ///< its UniNum
    std::optional<Selection> initial;  ///< until the page was active
    std::optional<StudyFacts> study;   ///< the study in the editor
    VolumeAmountType specialType{};
    std::pair<bool, bool> specialFlags;
};

}  // namespace ta::sheet
