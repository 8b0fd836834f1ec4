#pragma once

#include "terminal/parameters/StudySettings.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace ta::terminal {

/// A value of a study that a file has otherwise than a group, in the language in use.
struct ParameterChange {
    QString name;  ///< of the parameter, or of the shape and what of it
    QString now;
    QString then;  ///< in the file
    /// Of a colour.
    std::optional<std::uint32_t> nowColour = {};
    std::optional<std::uint32_t> thenColour = {};

    bool operator==(const ParameterChange&) const = default;
};

struct StudyChanges {
    StudySettings settings;  ///< those of the file
    std::vector<ParameterChange> changes;

    bool operator==(const StudyChanges&) const = default;
};

/// The studies of which a file has anything otherwise than a group, in the file's order. `now` is
/// what the group sets of the same studies, in the same order.
std::vector<StudyChanges> Differences(const std::vector<StudySettings>& file,
                                      const std::vector<StudySettings>& now);

/// The name of a study in the language in use.
QString StudyName(StudyType type);

}  // namespace ta::terminal
