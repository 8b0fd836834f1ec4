#pragma once

#include "terminal/parameters/ParameterFault.h"
#include "terminal/parameters/StudySettings.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace ta::terminal {

/// The largest file of study parameters, in bytes: hundreds of times that of every study.
inline constexpr std::size_t kMaxParameterFile = std::size_t{4} << 20U;

struct ParameterFile {
    std::vector<StudySettings> studies;   ///< in the file's order; none when there is a fault
    std::optional<ParameterFault> fault;  ///< the first one, with its line
};

/// Reads what WriteParameters wrote, also after a spreadsheet has saved it: with or without the
/// mark, separated by commas, semicolons or tabs, in quotes or not, with empty cells at the ends of
/// lines and empty lines between. The lines of a study may stand in any order. What is damaged, not
/// whole, unknown to the catalogue, out of range or against a study's rule is a fault: a file is
/// good as a whole or not at all.
ParameterFile ReadParameters(std::string_view bytes);

}  // namespace ta::terminal
