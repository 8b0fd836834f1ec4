#pragma once

#include "terminal/parameters/ParameterCells.h"
#include "terminal/parameters/StudySettings.h"
#include "terminal/studies/StudyDefinition.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace ta::terminal {

/// The settings of a study as far as its lines in a file have been read.
class StudyLines {
public:
    /// `line` is the first one.
    StudyLines(const StudyDefinition& study, std::size_t line);

    const StudyDefinition& Study() const { return *m_study; }

    /// Takes a parameter or a shape; a fault, without its line, when it cannot.
    std::optional<ParameterFault> Take(const ParameterCells& cells, std::size_t line);
    /// What is missing, or the rule that is broken, when there are no more lines.
    std::optional<ParameterFault> Check() const;
    /// After Check has found no fault.
    StudySettings Settings() const;

private:
    std::optional<ParameterFault> TakeParameter(const ParameterCells& cells, std::size_t line);
    std::optional<ParameterFault> TakeShape(const ParameterCells& cells);
    std::vector<double> Values() const;

    const StudyDefinition* m_study;
    std::size_t m_firstLine;
    std::vector<std::optional<double>> m_params;
    std::vector<std::size_t> m_paramLines;
    std::vector<std::optional<StudyShape>> m_shapes;
};

}  // namespace ta::terminal
