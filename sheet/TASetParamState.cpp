#include "sheet/TASetParamState.h"

#include "groupfile/GroupSummary.h"
#include "platform/ui/DialogBase.h"

using namespace ta::sheet;

std::vector<StudyFacts> CTASetParam::State::StudiesOffDefaults() {
    std::vector<StudyFacts> studies;
    if (!Draft().IsEditable()) {
        return studies;
    }
    for (const StudyType type : StudiesIn(Draft().Studies())) {
        const auto study = FactsOf(type);
        if (study && !Draft().ChangesToDefaults(*study).isEmpty()) {
            studies.push_back(*study);
        }
    }
    return studies;
}

QString CTASetParam::State::ChangesOf(const std::vector<StudyFacts>& studies) {
    constexpr int kMostLines = 20;
    QStringList lines;
    QStringList more;
    for (const StudyFacts& study : studies) {
        if (lines.size() >= kMostLines) {
            more.append(study.name);
            continue;
        }
        lines.append(study.name);
        for (const QString& change : Draft().ChangesToDefaults(study)) {
            lines.append("    " + change);
        }
    }
    if (!more.isEmpty()) {
        lines.append(
            ta::ui::LangText("IDS_TADIALOGS-SHEET_RESTORE_MORE", ta::groupfile::Listed(more)));
    }
    return lines.join('\n');
}

std::vector<CTaParamSettingView::ParamRow> CTASetParam::State::ParamRows() {
    const QStringList texts = Draft().ParamTexts(*shown);
    std::vector<CTaParamSettingView::ParamRow> rows;
    for (std::size_t i = 0; i < shown->params.size(); ++i) {
        rows.push_back({shown->ParamName(i), shown->params[i], texts[static_cast<int>(i)]});
    }
    return rows;
}

std::vector<CTaParamSettingView::ShapeRow> CTASetParam::State::ShapeRows() {
    const std::vector<StudyShape> shapes = Draft().Shapes(*shown);
    std::vector<CTaParamSettingView::ShapeRow> rows;
    for (std::size_t i = 0; i < shown->shapes.size(); ++i) {
        const StudyShapeInfo& info = shown->shapes[i];
        rows.push_back({shown->ShapeName(i), info.kind, shapes[i], info.defaultShape});
    }
    return rows;
}
