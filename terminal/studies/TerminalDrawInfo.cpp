#include "terminal/studies/TerminalDrawInfo.h"

#include "terminal/studies/StudyCatalogue.h"
#include "terminal/studies/StudyTable.h"

#include <algorithm>

namespace ta::terminal {
namespace {

using Values = std::vector<std::string_view>;

std::vector<double> ParseParams(const StudyDefinition& study, const Values& values) {
    std::vector<double> numbers;
    for (std::size_t i = 0; i < std::min(values.size(), study.params.size()); ++i) {
        numbers.push_back(RoundedParam(study.params[i], ParseNumber(values[i])));
    }
    return numbers;
}

/// The values of a string, as text, with the bad ones among those that the study knows replaced.
std::vector<CString> RepairedParams(const StudyDefinition& study, const Values& values) {
    std::vector<CString> repaired(values.begin(), values.end());
    const std::vector<double> given = ParseParams(study, values);
    const std::vector<double> usable = UsableParams(study, given);
    for (std::size_t i = 0; i < given.size(); ++i) {
        if (given[i] != usable[i]) {
            repaired[i] = FormatNumber(usable[i]);
        }
    }
    return repaired;
}

std::vector<CString> RepairedShapes(const StudyDefinition& study, const Values& values) {
    std::vector<CString> repaired(values.begin(), values.end());
    for (std::size_t i = 0; i < std::min(values.size(), study.shapes.size()); ++i) {
        if (!ParseShape(values[i])) {
            repaired[i] = FormatShape(study.shapes[i].defaultShape, values[i]);
        }
    }
    return repaired;
}

using Repair = std::vector<CString> (*)(const StudyDefinition& study, const Values& values);

std::vector<CString> Repaired(std::vector<CString> strings, Repair repair) {
    for (CString& text : strings) {
        if (const StudyDefinition* study = FindStudyDefinition(StudyOfString(text))) {
            text = WithValues(text, repair(*study, SplitValues(text)));
        }
    }
    return strings;
}

std::vector<CString> FormatParams(const std::vector<double>& values) {
    std::vector<CString> texts(values.size());
    std::ranges::transform(values, texts.begin(), FormatNumber);
    return texts;
}

std::vector<double> DefaultParams(const StudyDefinition& study) {
    return UsableParams(study, {});
}

std::vector<StudyShape> DefaultShapes(const StudyDefinition& study) {
    std::vector<StudyShape> shapes(study.shapes.size());
    std::ranges::transform(study.shapes, shapes.begin(), &StudyShapeInfo::defaultShape);
    return shapes;
}

}  // namespace

void TerminalDrawInfo::vVecCstring2MapParam(const std::vector<CString>& strings, int mode) {
    m_params.Replace(mode == kDrawInfoReplace ? Repaired(strings, RepairedParams) : strings);
}

void TerminalDrawInfo::vVecCstring2MapShapeParam(const std::vector<CString>& strings, int mode) {
    m_shapes.Replace(mode == kDrawInfoReplace ? Repaired(strings, RepairedShapes) : strings);
}

void TerminalDrawInfo::vMapParam2VecCstring(std::vector<CString>& strings) const {
    strings = m_params.All();
}

void TerminalDrawInfo::vMapShapeParam2VecCstring(std::vector<CString>& strings) const {
    strings = m_shapes.All();
}

bool TerminalDrawInfo::bDeleteAllParam() {
    m_params.Replace({});
    return true;
}

bool TerminalDrawInfo::bDeleteAllShapeParam() {
    m_shapes.Replace({});
    return true;
}

void TerminalDrawInfo::vGetStudyInfoVec(std::vector<StudyInfo*>& out, int category) const {
    out.clear();
    std::ranges::copy_if(AllStudies(), std::back_inserter(out), [category](const StudyInfo* info) {
        return static_cast<int>(info->GetCategory()) == category;
    });
}

bool TerminalDrawInfo::bGetYaxisRangeAutomatically(int axis) const {
    return GetYaxisRange(axis).automatic;
}

void TerminalDrawInfo::vSetYaxisRangeAutomatically(int axis, bool automatic) {
    m_yAxes[axis].automatic = automatic;
}

void TerminalDrawInfo::vSetYaxisMaxVal(int axis, double value) {
    m_yAxes[axis].maximum = value;
}

void TerminalDrawInfo::vSetYaxisMinVal(int axis, double value) {
    m_yAxes[axis].minimum = value;
}

YAxisRange TerminalDrawInfo::GetYaxisRange(int axis) const {
    const auto found = m_yAxes.find(axis);
    return found == m_yAxes.end() ? YAxisRange() : found->second;
}

std::vector<double> TerminalDrawInfo::vecGetStudyParams(StudyType type) const {
    const StudyDefinition* study = FindStudyDefinition(type);
    if (!study) {
        return {};
    }
    return UsableParams(*study, ParseParams(*study, m_params.Values(type).value_or(Values())));
}

std::vector<StudyShape> TerminalDrawInfo::vecGetStudyShapes(StudyType type) const {
    const StudyDefinition* study = FindStudyDefinition(type);
    if (!study) {
        return {};
    }
    std::vector<StudyShape> shapes = DefaultShapes(*study);
    const Values values = m_shapes.Values(type).value_or(Values());
    for (std::size_t i = 0; i < std::min(values.size(), shapes.size()); ++i) {
        shapes[i] = ParseShape(values[i]).value_or(shapes[i]);
    }
    return shapes;
}

bool TerminalDrawInfo::bSetStudyParams(StudyType type, const std::vector<double>& values) {
    const StudyDefinition* study = FindStudyDefinition(type);
    if (!study || values.size() != study->params.size()) {
        return false;
    }
    std::vector<double> rounded(values.size());
    std::ranges::transform(study->params, values, rounded.begin(), RoundedParam);
    if (UsableParams(*study, rounded) != rounded) {
        return false;
    }
    if (!rounded.empty()) {
        m_params.Write(type, FormatParams(rounded));
    }
    return true;
}

bool TerminalDrawInfo::bSetStudyShapes(StudyType type, const std::vector<StudyShape>& shapes) {
    const StudyDefinition* study = FindStudyDefinition(type);
    if (!study || shapes.size() != study->shapes.size() ||
        !std::ranges::all_of(shapes, IsUsableShape)) {
        return false;
    }
    const Values before = m_shapes.Values(type).value_or(Values());
    std::vector<CString> texts;
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        texts.push_back(FormatShape(shapes[i], i < before.size() ? before[i] : std::string_view()));
    }
    m_shapes.Write(type, texts);
    return true;
}

std::vector<CString> TerminalDrawInfo::DefaultParamStrings() {
    StudyStrings strings;
    for (const StudyDefinition& study : StudyTable()) {
        if (!study.params.empty()) {
            strings.Write(study.type, FormatParams(DefaultParams(study)));
        }
    }
    return strings.All();
}

std::vector<CString> TerminalDrawInfo::DefaultShapeStrings() {
    TerminalDrawInfo info;
    for (const StudyDefinition& study : StudyTable()) {
        info.bSetStudyShapes(study.type, DefaultShapes(study));
    }
    return info.m_shapes.All();
}

}  // namespace ta::terminal
