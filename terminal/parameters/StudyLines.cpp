#include "terminal/parameters/StudyLines.h"

#include "platform/Text.h"

#include <algorithm>
#include <iterator>

namespace ta::terminal {
namespace {

using namespace parameterfile;
using Fault = std::optional<ParameterFault>;

/// Finds the place of the line's item among those of the study, of which `read` are there.
template <class Items, class Read>
Fault FindItem(const ParameterCells& cells, const Items& items, const Read& read,
               std::size_t& index) {
    const std::string_view name = WithoutGuard(cells[kName]);
    const auto found = std::ranges::find_if(
        items, [name](const auto& item) { return text::ToUtf8(item.englishName) == name; });
    const QStringList names{Shown(cells[kStudy]), Shown(name)};
    if (found == items.end()) {
        return ParameterFault{"IDS_TERMINAL-PARAMETERS_UNKNOWN_ITEM", names};
    }
    index = static_cast<std::size_t>(found - items.begin());
    return read[index] ? Fault(ParameterFault{"IDS_TERMINAL-PARAMETERS_TWICE", names}) : Fault();
}

/// The name of the first item that was not read; nothing when all were.
template <class Items, class Read>
std::optional<QString> MissingName(const Items& items, const Read& read) {
    const auto missing =
        std::ranges::find_if_not(read, [](const auto& value) { return value.has_value(); });
    return missing == read.end()
               ? std::nullopt
               : std::optional(Shown(text::ToUtf8(
                     items[static_cast<std::size_t>(missing - read.begin())].englishName)));
}

}  // namespace

StudyLines::StudyLines(const StudyDefinition& study, std::size_t line)
    : m_study(&study),
      m_firstLine(line),
      m_params(study.params.size()),
      m_paramLines(study.params.size()),
      m_shapes(study.shapes.size()) {}

Fault StudyLines::Take(const ParameterCells& cells, std::size_t line) {
    if (cells[kKind] == kParameter) {
        return TakeParameter(cells, line);
    }
    return cells[kKind] == kShape
               ? TakeShape(cells)
               : ParameterFault{"IDS_TERMINAL-PARAMETERS_KIND", {Shown(cells[kKind])}};
}

Fault StudyLines::TakeParameter(const ParameterCells& cells, std::size_t line) {
    std::size_t index = 0;
    double value = 0;
    Fault fault = FindItem(cells, m_study->params, m_params, index);
    fault = fault ? fault : ReadValue(cells, m_study->params[index], value);
    if (!fault) {
        m_params[index] = value;
        m_paramLines[index] = line;
    }
    return fault;
}

Fault StudyLines::TakeShape(const ParameterCells& cells) {
    std::size_t index = 0;
    StudyShape shape;
    Fault fault = FindItem(cells, m_study->shapes, m_shapes, index);
    fault = fault ? fault : ReadLooks(cells, shape);
    if (!fault) {
        m_shapes[index] = shape;
    }
    return fault;
}

Fault StudyLines::Check() const {
    auto missing = MissingName(m_study->params, m_params);
    missing = missing ? missing : MissingName(m_study->shapes, m_shapes);
    if (missing) {
        return ParameterFault{"IDS_TERMINAL-PARAMETERS_MISSING",
                              {Shown(text::ToUtf8(m_study->englishName)), *missing},
                              m_firstLine};
    }
    const std::vector<double> values = Values();
    for (const StudyRule& rule : m_study->rules) {
        if (rule.IsBroken(values)) {
            return ParameterFault{
                rule.messageKey, {}, m_paramLines[static_cast<std::size_t>(rule.lower)]};
        }
    }
    return std::nullopt;
}

std::vector<double> StudyLines::Values() const {
    std::vector<double> values;
    std::ranges::transform(m_params, std::back_inserter(values),
                           [](const auto& value) { return *value; });
    return values;
}

StudySettings StudyLines::Settings() const {
    StudySettings settings{m_study->type, Values(), {}};
    std::ranges::transform(m_shapes, std::back_inserter(settings.shapes),
                           [](const auto& shape) { return *shape; });
    return settings;
}

}  // namespace ta::terminal
