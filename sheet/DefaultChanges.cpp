#include "sheet/DefaultChanges.h"

#include "groupfile/GroupSummary.h"
#include "platform/ui/LangText.h"
#include "platform/ui/PenSamples.h"
#include "sheet/ParamText.h"

#include <algorithm>

namespace ta::sheet {
namespace {

using ui::LangText;

QString Change(const QString& name, const QString& from, const QString& to) {
    return LangText("IDS_TADIALOGS-SHEET_CHANGE", name, from, to);
}

QString Visibility(bool visible) {
    return LangText(visible ? "IDS_TADIALOGS-SHEET_VISIBLE" : "IDS_TADIALOGS-SHEET_INVISIBLE");
}

QString ColourName(std::uint32_t colour) {
    return '#' + QString::number(colour, 16).rightJustified(6, '0').toUpper();
}

QString DefaultText(const StudyParamInfo& param) {
    return FormatNumber(param.defaultValue, param.decimals);
}

/// What differs between two shapes; empty when nothing.
QStringList Differences(const StudyShape& from, const StudyShape& to) {
    QStringList parts;
    if (from.visible != to.visible) {
        parts.append(Change(LangText("IDS_TADIALOGS-SHEET_VISIBILITY"), Visibility(from.visible),
                            Visibility(to.visible)));
    }
    if (from.colour != to.colour) {
        parts.append(Change(LangText("IDS_TADIALOGS-SHEET_COLOUR"), ColourName(from.colour),
                            ColourName(to.colour)));
    }
    if (from.width != to.width) {
        parts.append(Change(LangText("IDS_TADIALOGS-SHEET_WIDTH"), QString::number(from.width),
                            QString::number(to.width)));
    }
    if (from.style != to.style) {
        parts.append(Change(LangText("IDS_TADIALOGS-SHEET_STYLE"),
                            LangText(ui::PenStyleKey(from.style)),
                            LangText(ui::PenStyleKey(to.style))));
    }
    return parts;
}

}  // namespace

QStringList ChangesToDefaults(const StudyFacts& study, const StudyValues& values) {
    QStringList changes;
    for (std::size_t i = 0; i < study.params.size(); ++i) {
        const QString& text = values.params[static_cast<int>(i)];
        const QString preset = DefaultText(study.params[i]);
        if (text != preset) {
            changes.append(Change(study.ParamName(i), text.isEmpty() ? "?" : text, preset));
        }
    }
    for (std::size_t i = 0; i < study.shapes.size(); ++i) {
        const QStringList parts = Differences(values.shapes[i], study.shapes[i].defaultShape);
        if (!parts.isEmpty()) {
            changes.append(LangText("IDS_TADIALOGS-SHEET_SHAPE_CHANGE", study.ShapeName(i),
                                    groupfile::Listed(parts)));
        }
    }
    return changes;
}

bool IsDefault(const StudyFacts& study, const StudyValues& values) {
    return std::ranges::equal(study.params, values.params, {}, DefaultText) &&
           std::ranges::equal(study.shapes, values.shapes, {}, &StudyShapeInfo::defaultShape);
}

QString InSomeLines(const std::vector<DefaultChanges>& changes) {
    constexpr int kMostLines = 20;
    QStringList lines;
    QStringList more;
    for (const DefaultChanges& each : changes) {
        if (lines.size() >= kMostLines) {
            more.append(each.study.name);
            continue;
        }
        lines.append(each.study.name);
        for (const QString& change : each.lines) {
            lines.append("    " + change);
        }
    }
    if (!more.isEmpty()) {
        lines.append(LangText("IDS_TADIALOGS-SHEET_RESTORE_MORE", groupfile::Listed(more)));
    }
    return lines.join('\n');
}

}  // namespace ta::sheet
