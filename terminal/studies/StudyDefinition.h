#pragma once

#include "platform/Study.h"

#include <vector>

namespace ta::terminal {

using StudyOutputs = std::vector<std::vector<double>>;

/// Calculates a study: one vector per shape, each as long as `bars`. `params` are complete, within
/// their ranges and rules.
using StudyCalculation = StudyOutputs (*)(const BarSeries& bars, const std::vector<double>& params);

/// params[lower] must be below params[upper], or at most equal to it when `mayBeEqual`.
struct StudyRule {
    int lower = 0;
    int upper = 0;
    bool mayBeEqual = false;
    const char* messageKey = "";

    bool IsBroken(const std::vector<double>& params) const;
};

/// One row of the table of studies. Texts are in the code page.
struct StudyDefinition {
    StudyType type = kNoStudy;
    StudyCategory category = StudyCategory::Price;
    CString chineseName;
    CString englishName;
    CString abbreviation;
    bool overlay = false;
    std::vector<StudyParamInfo> params;
    std::vector<StudyShapeInfo> shapes;
    std::vector<StudyRule> rules;
    StudyCalculation calculate = nullptr;
};

/// `value` with the digits after the point that the parameter keeps.
double RoundedParam(const StudyParamInfo& param, double value);

/// What a study is calculated with: `given` rounded, and the default for each value that is
/// missing, not finite or out of range, then for both values of each rule that is broken. Surplus
/// values are left out.
std::vector<double> UsableParams(const StudyDefinition& study, const std::vector<double>& given);

/// Whether width, style and colour are within their ranges.
bool IsUsableShape(const StudyShape& shape);

}  // namespace ta::terminal
