#pragma once

#include "platform/Study.h"

#include <vector>

namespace ta::terminal {

/// What a group sets of one study: a value per parameter and a shape per shape of its definition.
struct StudySettings {
    StudyType type = kNoStudy;
    std::vector<double> params;
    std::vector<StudyShape> shapes;

    bool operator==(const StudySettings&) const = default;
};

}  // namespace ta::terminal
