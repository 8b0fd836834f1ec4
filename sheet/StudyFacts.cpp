#include "sheet/StudyFacts.h"

#include "platform/ui/DialogBase.h"
#include "platform/ui/TextBridge.h"
#include "settings/TaSettingHandle.h"

#include <algorithm>

namespace ta::sheet {
namespace {

using ui::ToQString;

CTaSettingHandle& Repository() {
    return CTaSettingHandle::GetInstance();
}

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

QString StudyLabel(StudyType type) {
    const CString name = Repository().StudyTypeToStudyName(type);
    return name.empty()
               ? ui::LangText("IDS_TADIALOGS-GROUPFILE_UNKNOWN_STUDY", QString::number(type))
               : ToQString(name);
}

}  // namespace ta::sheet
