#pragma once

#include "terminal/parameters/StudySettings.h"

#include <string>
#include <vector>

namespace ta::terminal {

/// The bytes of a file of study parameters (see ParameterFormat.h). A study that is not in the
/// catalogue is left out; each other one has as many parameters and shapes as its definition.
std::string WriteParameters(const std::vector<StudySettings>& studies);

}  // namespace ta::terminal
