#include "terminal/parameters/ParameterChanges.h"

#include "platform/ui/PenSamples.h"
#include "platform/ui/TextBridge.h"
#include "terminal/lang/NameIn.h"
#include "terminal/studies/StudyCatalogue.h"
#include "terminal/studies/StudyStrings.h"

#include <algorithm>

namespace ta::terminal {
namespace {

using ui::ToQString;

QString ColourText(const StudyShape& shape) {
    return QString("#%1").arg(shape.colour, 6, 16, QChar('0')).toUpper();
}

QString WidthText(const StudyShape& shape) {
    return QString::number(shape.width);
}

QString StyleText(const StudyShape& shape) {
    return Tr(ui::PenStyleKey(shape.style));
}

QString VisibilityText(const StudyShape& shape) {
    return Tr(shape.visible ? "IDS_TADIALOGS-SHEET_VISIBLE" : "IDS_TADIALOGS-SHEET_INVISIBLE");
}

/// What there is of a shape to differ.
constexpr struct {
    const char* nameKey;
    QString (*text)(const StudyShape& shape);
} kLooks[] = {
    {"IDS_TADIALOGS-SHEET_COLOUR", ColourText},
    {"IDS_TADIALOGS-SHEET_WIDTH", WidthText},
    {"IDS_TADIALOGS-SHEET_STYLE", StyleText},
    {"IDS_TADIALOGS-SHEET_VISIBILITY", VisibilityText},
};

void AddShapeChanges(std::vector<ParameterChange>& changes, const QString& name,
                     const StudyShape& now, const StudyShape& then) {
    for (const auto& look : kLooks) {
        ParameterChange change{name + ' ' + Tr(look.nameKey), look.text(now), look.text(then)};
        if (change.now == change.then) {
            continue;
        }
        if (look.text == ColourText) {
            change.nowColour = now.colour;
            change.thenColour = then.colour;
        }
        changes.push_back(change);
    }
}

std::vector<ParameterChange> ChangesOf(const StudyDefinition& study, const StudySettings& now,
                                       const StudySettings& then) {
    std::vector<ParameterChange> changes;
    for (std::size_t i = 0; i < study.params.size(); ++i) {
        if (now.params[i] != then.params[i]) {
            changes.push_back({ToQString(NameIn(study.params[i])),
                               ToQString(FormatNumber(now.params[i])),
                               ToQString(FormatNumber(then.params[i]))});
        }
    }
    for (std::size_t i = 0; i < study.shapes.size(); ++i) {
        AddShapeChanges(changes, ToQString(NameIn(study.shapes[i])), now.shapes[i], then.shapes[i]);
    }
    return changes;
}

}  // namespace

std::vector<StudyChanges> Differences(const std::vector<StudySettings>& file,
                                      const std::vector<StudySettings>& now) {
    std::vector<StudyChanges> differences;
    for (std::size_t i = 0; i < std::min(file.size(), now.size()); ++i) {
        if (file[i] != now[i]) {
            const StudyDefinition& study = *FindStudyDefinition(file[i].type);
            differences.push_back({file[i], ChangesOf(study, now[i], file[i])});
        }
    }
    return differences;
}

QString StudyName(StudyType type) {
    const StudyInfo* study = FindStudy(type);
    return study == nullptr ? QString() : ToQString(study->cszGetDisplayName());
}

}  // namespace ta::terminal
