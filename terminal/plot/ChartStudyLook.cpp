#include "terminal/plot/ChartStudyLook.h"

#include "platform/ui/TextBridge.h"
#include "terminal/studies/StudyLook.h"

#include <algorithm>

namespace ta::terminal {
namespace {

constexpr std::uint32_t kCloseColour = 0x0098A8;  // which no study has
constexpr int kCloseWidth = 2;

QString LegendName(const ChartStudy& study, const StudyInfo& info, const StudyLook& look) {
    switch (look.name) {
        case StudyLook::Name::None:
            return {};
        case StudyLook::Name::Display:
            return study.name;
        case StudyLook::Name::Abbreviation:
            break;
    }
    const QString name = ui::ToQString(info.cszGetAbbreviation());
    return study.parameters.isEmpty() ? name : QStringLiteral("%1(%2)").arg(name, study.parameters);
}

QString LineName(std::string_view pattern, const std::vector<double>& params) {
    QString name = QString::fromLatin1(pattern.data(), static_cast<qsizetype>(pattern.size()));
    for (std::size_t i = 0; i < params.size(); ++i) {
        name.replace(QStringLiteral("{%1}").arg(i), QString::number(params[i], 'g', 10));
    }
    return name;
}

}  // namespace

void TakeLook(ChartStudy& study, const StudyInfo& info, const std::vector<double>& params) {
    const StudyLook& look = LookOf(study.type);
    study.legend = LegendName(study, info, look);
    for (std::size_t i = 0; i < study.outputs.size(); ++i) {
        ChartOutput& output = study.outputs[i];
        output.legend = i < look.lines.size()      ? LineName(look.lines[i], params)
                        : study.outputs.size() > 1 ? output.name
                                                   : QString();
    }
    const auto shown = std::ranges::find_if(
        study.outputs, [](const ChartOutput& output) { return output.shape.visible; });
    if (shown != study.outputs.end()) {
        shown->levels = look.levels;
    }
}

void FitToBars(ChartStudy& study, const BarFacts& facts) {
    study.isPrices = study.HasCandlesticks();
    if (study.isPrices && facts.closesOnly) {
        study.legend.clear();
        study.outputs.front().kind = StudyDrawKind::Line;
        study.outputs.front().shape.colour = kCloseColour;
        study.outputs.front().shape.width = kCloseWidth;
    }
}

void MeasureTexts(ChartStudy& study, const std::vector<ValueSpan>& spans, const BarFacts& facts,
                  int priceDecimals) {
    for (std::size_t i = 0; i < study.outputs.size() && i < spans.size(); ++i) {
        study.outputs[i].widest = WidestNumberText(study.isPrices ? facts.prices : spans[i],
                                                   study.numbers, priceDecimals);
    }
}

}  // namespace ta::terminal
