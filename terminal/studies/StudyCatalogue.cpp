#include "terminal/studies/StudyCatalogue.h"

#include "terminal/lang/NameIn.h"
#include "terminal/studies/StudyTable.h"

#include <map>
#include <memory>

namespace ta::terminal {
namespace {

class TableStudy : public Study {
public:
    explicit TableStudy(const StudyDefinition& definition) : m_definition(definition) {}

    StudyType GetStudyType() const override { return m_definition.type; }

    StudyOutputs vecCalculate(const BarSeries& bars,
                              const std::vector<double>& params) const override {
        return m_definition.calculate(bars, UsableParams(m_definition, params));
    }

private:
    const StudyDefinition& m_definition;
};

class TableStudyInfo : public StudyInfo {
public:
    explicit TableStudyInfo(const StudyDefinition& definition)
        : m_definition(definition), m_study(definition) {}

    StudyType GetStudyType() const override { return m_definition.type; }
    StudyCategory GetCategory() const override { return m_definition.category; }
    CString cszGetDisplayName() const override { return NameIn(m_definition); }
    CString cszGetChineseName() const override { return m_definition.chineseName; }
    CString cszGetEnglishName() const override { return m_definition.englishName; }
    CString cszGetAbbreviation() const override { return m_definition.abbreviation; }
    const std::vector<StudyParamInfo>& GetParams() const override { return m_definition.params; }
    const std::vector<StudyShapeInfo>& GetShapes() const override { return m_definition.shapes; }
    bool bIsOverlay() const override { return m_definition.overlay; }

    std::vector<StudyParamFault> vecCheckParams(const std::vector<double>& params) const override {
        std::vector<StudyParamFault> faults;
        if (params.size() != m_definition.params.size()) {
            return faults;
        }
        for (const StudyRule& rule : m_definition.rules) {
            if (rule.IsBroken(params)) {
                faults.push_back({rule.lower, rule.messageKey});
            }
        }
        return faults;
    }

    const Study& GetStudy() const override { return m_study; }

private:
    const StudyDefinition& m_definition;
    TableStudy m_study;
};

struct Catalogue {
    Catalogue() {
        for (const StudyDefinition& definition : StudyTable()) {
            owned.push_back(std::make_unique<TableStudyInfo>(definition));
            inOrder.push_back(owned.back().get());
            byType[definition.type] = {owned.back().get(), &definition};
        }
    }

    struct Entry {
        StudyInfo* info = nullptr;
        const StudyDefinition* definition = nullptr;
    };
    std::vector<std::unique_ptr<StudyInfo>> owned;
    std::vector<StudyInfo*> inOrder;
    std::map<StudyType, Entry> byType;
};

const Catalogue& TheCatalogue() {
    static const Catalogue catalogue;
    return catalogue;
}

Catalogue::Entry FindEntry(StudyType type) {
    const auto& byType = TheCatalogue().byType;
    const auto found = byType.find(type);
    return found == byType.end() ? Catalogue::Entry() : found->second;
}

}  // namespace

const std::vector<StudyInfo*>& AllStudies() {
    return TheCatalogue().inOrder;
}

StudyInfo* FindStudy(StudyType type) {
    return FindEntry(type).info;
}

const StudyDefinition* FindStudyDefinition(StudyType type) {
    return FindEntry(type).definition;
}

}  // namespace ta::terminal
