#include "terminal/plot/ChartLegend.h"

#include "terminal/lang/Language.h"
#include "terminal/plot/PlotModel.h"
#include "terminal/plot/PlotTheme.h"
#include "terminal/plot/TimeAxis.h"

#include <QStringList>

#include <span>

namespace ta::terminal {
namespace {

struct PriceField {
    const char* key;
    double Bar::*price;
};

constexpr PriceField kPriceFields[] = {{"IDS_TERMINAL-CHART_OPEN", &Bar::open},
                                       {"IDS_TERMINAL-CHART_HIGH", &Bar::high},
                                       {"IDS_TERMINAL-CHART_LOW", &Bar::low},
                                       {"IDS_TERMINAL-CHART_CLOSE", &Bar::close}};

const Bar* BarAt(const PlotModel& model, int bar) {
    return bar >= 0 && bar < model.BarCount() ? &model.Bars()[static_cast<std::size_t>(bar)]
                                              : nullptr;
}

/// The close of the bar before; of the first bar its open.
double CloseBefore(const PlotModel& model, int bar) {
    const auto index = static_cast<std::size_t>(bar);
    return bar > 0 ? model.Bars()[index - 1].close : model.Bars()[index].open;
}

QString Labelled(const QString& label, const QString& text) {
    return label.isEmpty() ? text : label + ' ' + text;
}

QString PriceText(const PlotModel& model, const char* key, double price) {
    return Labelled(Tr(key), NumberText(price, NumberKind::Price, model.Title().priceDecimals));
}

/// Those that the bars have.
std::span<const PriceField> FieldsOf(const PlotModel& model) {
    const std::span<const PriceField> all(kPriceFields);
    return model.Facts().closesOnly ? all.last(1) : all;
}

/// "+12.30 (+1.52%)".
QString ChangeText(const PlotModel& model, double change, double before) {
    const QString sign = change > 0 ? QStringLiteral("+") : QString();
    QString text = sign + NumberText(change, NumberKind::Price, model.Title().priceDecimals);
    if (before > 0) {
        text += QStringLiteral(" (%1%2%)").arg(sign).arg(change / before * 100, 0, 'f', 2);
    }
    return text;
}

std::vector<LegendSpan> PriceSpans(const PlotModel& model, int bar, const QString& widest,
                                   const PlotTheme& theme) {
    std::vector<LegendSpan> spans;
    const Bar* shown = BarAt(model, bar);
    if (!shown) {
        return spans;
    }
    const double before = CloseBefore(model, bar);
    for (const PriceField& field : FieldsOf(model)) {
        const double price = shown->*field.price;
        spans.push_back({PriceText(model, field.key, price), theme.OfChange(price - before),
                         Labelled(Tr(field.key), widest)});
    }
    const double change = shown->close - before;
    spans.push_back({ChangeText(model, change, before), theme.OfChange(change),
                     QStringLiteral("+%1 (+00.00%)").arg(widest)});
    return spans;
}

QColor ColourOf(const PlotModel& model, const ChartOutput& output, double value, int bar,
                const PlotTheme& theme) {
    if (output.kind == StudyDrawKind::Histogram) {
        return theme.OfChange(value);
    }
    const Bar* shown = BarAt(model, bar);
    if (output.kind == StudyDrawKind::VolumeBars && shown) {
        return shown->close >= shown->open ? theme.rising : theme.falling;
    }
    return theme.Readable(output.shape.colour);
}

std::vector<LegendSpan> LineSpans(const PlotModel& model, const ChartStudy& study, int bar,
                                  const PlotTheme& theme) {
    std::vector<LegendSpan> spans;
    for (std::size_t i = 0; i < study.outputs.size(); ++i) {
        const ChartOutput& output = study.outputs[i];
        if (output.shape.visible) {
            const double value = study.ValueAt(i, bar);
            const QString text = NumberText(value, study.numbers, model.Title().priceDecimals);
            spans.push_back({Labelled(output.legend, text),
                             ColourOf(model, output, value, bar, theme),
                             Labelled(output.legend, output.widest)});
        }
    }
    return spans;
}

std::vector<LegendSpan> StudySpans(const PlotModel& model, const ChartStudy& study, int bar,
                                   const PlotTheme& theme) {
    std::vector<LegendSpan> spans;
    if (!study.legend.isEmpty()) {
        spans.push_back({study.legend, theme.text});
    }
    const auto values = study.isPrices ? PriceSpans(model, bar, study.outputs.front().widest, theme)
                                       : LineSpans(model, study, bar, theme);
    spans.insert(spans.end(), values.begin(), values.end());
    if (spans.empty()) {
        spans.push_back({study.name, theme.text});
    }
    return spans;
}

LegendEntry TitleEntry(const PlotModel& model, int bar, const PlotTheme& theme) {
    LegendEntry title;
    title.spans.push_back({model.Title().symbol, theme.text});
    if (!model.Title().period.isEmpty()) {
        title.spans.push_back({model.Title().period, theme.faintText});
    }
    if (const Bar* shown = BarAt(model, bar)) {
        title.spans.push_back({TimeText(shown->time, model.Title().periodCode), theme.faintText});
    }
    return title;
}

}  // namespace

std::vector<LegendEntry> MakeLegend(const PlotModel& model, int pane, int bar,
                                    const PlotTheme& theme) {
    std::vector<LegendEntry> entries;
    if (pane == 0 && !model.Title().symbol.isEmpty()) {
        entries.push_back(TitleEntry(model, bar, theme));
    }
    int number = 0;
    for (const ChartStudy& study : model.Panes()[static_cast<std::size_t>(pane)]) {
        entries.push_back({++number, StudySpans(model, study, bar, theme)});
    }
    return entries;
}

QString MakeBarText(const PlotModel& model, int bar) {
    const Bar* shown = BarAt(model, bar);
    if (!shown) {
        return {};
    }
    QStringList texts{TimeText(shown->time, model.Title().periodCode)};
    for (const PriceField& field : FieldsOf(model)) {
        texts << PriceText(model, field.key, shown->*field.price);
    }
    if (model.Facts().hasVolume) {
        texts << Labelled(Tr("IDS_TERMINAL-CHART_VOLUME"),
                          NumberText(shown->volume, NumberKind::Volume, 0));
    }
    const double before = CloseBefore(model, bar);
    texts << ChangeText(model, shown->close - before, before);
    return texts.join(QStringLiteral("  "));
}

}  // namespace ta::terminal
