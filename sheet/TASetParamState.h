#pragma once

#include "sheet/PaneLists.h"
#include "sheet/StudyFacts.h"
#include "sheet/TASetParam.h"

#include <optional>
#include <utility>

/// What the study page remembers of what it shows; the edits are the session's.
struct CTASetParam::State {
    struct Selection {
        CString group;
        ta::sheet::Place place;
    };

    CString group;                               ///< the group that the tree shows
    int number = -1;                             ///< its UniNum
    std::optional<Selection> initial;            ///< until the page was active
    std::optional<ta::sheet::StudyFacts> study;  ///< the study in the editor
    VolumeAmountType specialType{};
    std::pair<bool, bool> specialFlags;
};
