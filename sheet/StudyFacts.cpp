#include "sheet/StudyFacts.h"

#include "platform/ConfigStore.h"
#include "platform/DrawInfo.h"
#include "platform/SyncInfo.h"
#include "platform/ui/LangText.h"
#include "platform/ui/TextBridge.h"
#include "settings/Repository.h"

#include <algorithm>

namespace ta::sheet {
namespace {

using ui::ToQString;

/// Null when there is none. Valid until the repository is asked again.
const StudyInfo* FindInfo(StudyType type) {
    for (const StudyCategory category : kStudyCategories) {
        std::vector<StudyInfo*> studies;
        Repository().vGetStudyInfoVec(studies, static_cast<int>(category));
        const auto found = std::ranges::find_if(
            studies, [type](const StudyInfo* info) { return info->GetStudyType() == type; });
        if (found != studies.end()) {
            return *found;
        }
    }
    return nullptr;
}

}  // namespace

StudyFacts::StudyFacts(const StudyInfo& info)
    : type(info.GetStudyType()),
      english(info.cszGetDisplayName() != info.cszGetChineseName()),
      name(ToQString(info.cszGetDisplayName())),
      otherName(ToQString(english ? info.cszGetChineseName() : info.cszGetEnglishName())),
      abbreviation(ToQString(info.cszGetAbbreviation())),
      params(info.GetParams()),
      shapes(info.GetShapes()) {}

QString StudyFacts::ParamName(std::size_t index) const {
    return ToQString(english ? params[index].englishName : params[index].chineseName);
}

QString StudyFacts::ShapeName(std::size_t index) const {
    return ToQString(english ? shapes[index].englishName : shapes[index].chineseName);
}

std::optional<StudyFacts> FactsOf(StudyType type) {
    const StudyInfo* info = FindInfo(type);
    return info == nullptr ? std::nullopt : std::optional<StudyFacts>(*info);
}

StudyDefaults::StudyDefaults() {
    const Services& services = CSyncInfo::GetSettingCFG().GetServices();
    if (services.chartModule == nullptr || services.configStore == nullptr) {
        return;
    }
    m_drawInfo = services.chartModule->MakeTaDrawInfo(Repository());
    if (m_drawInfo == nullptr) {
        return;
    }
    std::vector<CString> strings;
    services.configStore->LoadTAStudyParamDefaultSetting(strings);
    m_drawInfo->vVecCstring2MapParam(strings, kDrawInfoReplace);
    strings.clear();
    services.configStore->LoadTAStudyShapeDefaultSetting(strings);
    m_drawInfo->vVecCstring2MapShapeParam(strings, kDrawInfoReplace);
}

StudyDefaults::~StudyDefaults() = default;

void StudyDefaults::Apply(StudyFacts& study) const {
    if (m_drawInfo == nullptr) {
        return;
    }
    const std::vector<double> params = m_drawInfo->vecGetStudyParams(study.type);
    for (std::size_t i = 0; i < std::min(params.size(), study.params.size()); ++i) {
        study.params[i].defaultValue = params[i];
    }
    const std::vector<StudyShape> shapes = m_drawInfo->vecGetStudyShapes(study.type);
    for (std::size_t i = 0; i < std::min(shapes.size(), study.shapes.size()); ++i) {
        study.shapes[i].defaultShape = shapes[i];
    }
}

std::vector<StudyFacts> UsableStudies(StudyCategory category) {
    std::vector<StudyInfo*> studies;
    Repository().vGetStudyInfoVec(studies, static_cast<int>(category));
    std::vector<StudyFacts> usable;
    for (const StudyInfo* info : studies) {
        if (Repository().IsStudyCanUse(info->GetStudyType()) == 1) {
            usable.emplace_back(*info);
        }
    }
    return usable;
}

std::vector<StudyParamFault> BrokenRules(StudyType type, const std::vector<double>& values) {
    const StudyInfo* info = FindInfo(type);
    std::vector<StudyParamFault> faults;
    if (info != nullptr) {
        faults = info->vecCheckParams(values);
    }
    for (StudyParamFault& fault : faults) {
        fault.parameter = std::clamp(fault.parameter, 0, static_cast<int>(values.size()) - 1);
    }
    return faults;
}

}  // namespace ta::sheet
