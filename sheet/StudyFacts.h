#pragma once

#include "platform/Study.h"
#include "platform/Types.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

class TaDrawInfo;

/// What the chart module tells of its studies, copied: its own objects die when the settings are
/// loaded again.
namespace ta::sheet {

struct StudyFacts {
    explicit StudyFacts(const StudyInfo& info);

    StudyType type;
    bool english;  ///< the names are to be shown in English
    QString name;
    QString otherName;  ///< in the other one of the two languages
    QString abbreviation;
    std::vector<StudyParamInfo> params;
    std::vector<StudyShapeInfo> shapes;

    QString ParamName(std::size_t index) const;
    QString ShapeName(std::size_t index) const;
};

/// Nothing for a study that the chart module does not know.
std::optional<StudyFacts> FactsOf(StudyType type);

/// The defaults of a new group: the chart module's, with the store's default strings over them.
class StudyDefaults {
public:
    StudyDefaults();
    ~StudyDefaults();

    /// Puts them in the place of the chart module's own.
    void Apply(StudyFacts& study) const;

private:
    std::unique_ptr<TaDrawInfo> m_drawInfo;
};

/// The studies of a category that the user may use, in the chart module's order.
std::vector<StudyFacts> UsableStudies(StudyCategory category);

/// The rules between parameters that the values break; parameters are valid indices.
std::vector<StudyParamFault> BrokenRules(StudyType type, const std::vector<double>& values);

}  // namespace ta::sheet
