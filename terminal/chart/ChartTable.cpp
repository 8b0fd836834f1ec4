#include "terminal/chart/ChartTable.h"

#include "platform/ui/TextBridge.h"
#include "terminal/lang/Language.h"
#include "terminal/plot/ChartModel.h"

#include <functional>

namespace ta::terminal {
namespace {

// Display codes of what is no price, which escape the unit rule of the market: as few decimals as
// the value needs, and two. A price's code is its number of decimals, for markets without a rule.
constexpr int kFewDecimals = -1;
constexpr int kTwoDecimals = -9;

struct BarColumn {
    const char* key;
    double Bar::*value;
};

constexpr BarColumn kBarColumns[] = {
    {"IDS_TERMINAL-TABLE_OPEN", &Bar::open},
    {"IDS_TERMINAL-TABLE_HIGH", &Bar::high},
    {"IDS_TERMINAL-TABLE_LOW", &Bar::low},
    {"IDS_TERMINAL-TABLE_CLOSE", &Bar::close},
    {"IDC_TECHVIEW-STRING_TECHDATA_DEAL_VOL", &Bar::volume},
};

using OutputVisitor = std::function<void(const ChartStudy& study, std::size_t output)>;

void ForEachOutput(const ChartModel& model, const OutputVisitor& visit) {
    for (const ChartPane& pane : model.Panes()) {
        for (const ChartStudy& study : pane) {
            const std::size_t outputs = study.isPrices ? 0 : study.outputs.size();
            for (std::size_t output = 0; output < outputs; ++output) {
                visit(study, output);
            }
        }
    }
}

QString OutputName(const ChartStudy& study, const ChartOutput& output) {
    const QString name =
        study.parameters.isEmpty() ? study.name : study.name + '(' + study.parameters + ')';
    return study.outputs.size() == 1 ? name : name + ' ' + output.name;
}

techdata::Headers HeadersOf(const ChartModel& model) {
    const int priceDecimals = model.Title().priceDecimals;
    techdata::Headers headers{DateHeading()};
    for (const BarColumn& column : kBarColumns) {
        headers.push_back(NumberHeading(Tr(column.key), NumberKind::Price, priceDecimals));
    }
    ForEachOutput(model, [&](const ChartStudy& study, std::size_t output) {
        headers.push_back(
            NumberHeading(OutputName(study, study.outputs[output]), study.numbers, priceDecimals));
    });
    return headers;
}

techdata::Records RecordsOf(const ChartModel& model) {
    techdata::Records records;
    records.reserve(model.Bars().size());
    for (const Bar& bar : model.Bars()) {
        OneRecord& record = records.emplace_back();
        record.time = bar.time;
        for (const BarColumn& column : kBarColumns) {
            record.values.push_back(bar.*column.value);
        }
    }
    ForEachOutput(model, [&](const ChartStudy& study, std::size_t output) {
        for (std::size_t row = 0; row < records.size(); ++row) {
            records[row].values.push_back(study.ValueAt(output, static_cast<int>(row)));
        }
    });
    return records;
}

}  // namespace

ChartTable MakeChartTable(const ChartModel& model, const CString& group) {
    return {TableCaption(model), group, HeadersOf(model), RecordsOf(model)};
}

techdata::HeaderInfo DateHeading() {
    return {ui::FromQString(Tr("IDS_TERMINAL-TABLE_DATE")), 0, 0, kFewDecimals};
}

techdata::HeaderInfo NumberHeading(const QString& name, NumberKind numbers, int priceDecimals) {
    const int code = numbers == NumberKind::Price    ? priceDecimals
                     : numbers == NumberKind::Volume ? kFewDecimals
                                                     : kTwoDecimals;
    return {ui::FromQString(name), 0, 0, code};
}

CString TableCaption(const PlotModel& model) {
    return ui::FromQString(model.Title().symbol + ' ' + model.Title().period);
}

}  // namespace ta::terminal
