#include "terminal/plot/PlotModel.h"

#include <algorithm>
#include <limits>

namespace ta::terminal {

bool ChartStudy::HasCandlesticks() const {
    return std::ranges::find(outputs, StudyDrawKind::Candlesticks, &ChartOutput::kind) !=
           outputs.end();
}

double ChartStudy::ValueAt(std::size_t output, int bar) const {
    const auto index = static_cast<std::size_t>(bar);
    if (!values || output >= values->size() || bar < 0 || index >= (*values)[output].size()) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    return (*values)[output][index];
}

}  // namespace ta::terminal
