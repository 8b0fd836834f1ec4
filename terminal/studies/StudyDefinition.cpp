#include "terminal/studies/StudyDefinition.h"

#include "platform/Rounding.h"

#include <algorithm>

namespace ta::terminal {

bool StudyRule::IsBroken(const std::vector<double>& params) const {
    const double low = params[static_cast<std::size_t>(lower)];
    const double high = params[static_cast<std::size_t>(upper)];
    return mayBeEqual ? !(low <= high) : !(low < high);
}

double RoundedParam(const StudyParamInfo& param, double value) {
    return RoundedTo(value, param.decimals);
}

std::vector<double> UsableParams(const StudyDefinition& study, const std::vector<double>& given) {
    std::vector<double> usable;
    for (std::size_t i = 0; i < study.params.size(); ++i) {
        const StudyParamInfo& param = study.params[i];
        const double value = i < given.size() ? RoundedParam(param, given[i]) : param.defaultValue;
        const bool inRange = value >= param.minimum && value <= param.maximum;
        usable.push_back(inRange ? value : param.defaultValue);
    }
    const auto broken = [&usable](const StudyRule& rule) { return rule.IsBroken(usable); };
    // The defaults keep every rule, so each round turns at least one more value into its default.
    for (auto rule = std::ranges::find_if(study.rules, broken); rule != study.rules.end();
         rule = std::ranges::find_if(study.rules, broken)) {
        for (const int index : {rule->lower, rule->upper}) {
            const auto i = static_cast<std::size_t>(index);
            usable[i] = study.params[i].defaultValue;
        }
    }
    return usable;
}

bool IsUsableShape(const StudyShape& shape) {
    return shape.colour <= 0xFFFFFF && shape.width >= 1 && shape.width <= 5 && shape.style >= 0 &&
           shape.style <= 4;
}

}  // namespace ta::terminal
