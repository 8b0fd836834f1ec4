#include "terminal/compare/ComparisonTable.h"

#include "terminal/compare/ComparisonModel.h"

#include <cmath>

namespace ta::terminal {
namespace {

techdata::Headers HeadersOf(const ComparisonModel& model) {
    techdata::Headers headers{DateHeading()};
    for (std::size_t line = 0; line < model.Sources().size(); ++line) {
        const NumberKind numbers = model.Panes()[0][line].numbers;
        const QString unit = numbers == NumberKind::Percent ? QStringLiteral(" (%)") : QString();
        headers.push_back(NumberHeading(model.Sources()[line].name + unit, numbers,
                                        model.Sources()[line].priceDecimals));
    }
    return headers;
}

techdata::Records RecordsOf(const ComparisonModel& model) {
    techdata::Records records;
    records.reserve(model.Bars().size());
    for (int bar = 0; bar < model.BarCount(); ++bar) {
        OneRecord& record = records.emplace_back();
        record.time = model.Bars()[static_cast<std::size_t>(bar)].time;
        for (const ComparisonLine& line : model.Result().lines) {
            const bool isThere = line.HasBarAt(bar);
            record.values.push_back(isThere ? line.values[static_cast<std::size_t>(bar)] : NAN);
        }
    }
    return records;
}

}  // namespace

ChartTable ComparisonTable(const ComparisonModel& model) {
    return {TableCaption(model), {}, HeadersOf(model), RecordsOf(model)};
}

}  // namespace ta::terminal
