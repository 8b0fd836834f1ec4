#include "terminal/parameters/GroupParameters.h"

#include "platform/DrawInfo.h"
#include "settings/Repository.h"
#include "terminal/studies/StudyCatalogue.h"

#include <algorithm>

namespace ta::terminal {
namespace {

/// Null for an unknown group; valid until the repository is asked again.
TaDrawInfo* DrawInfoOf(const CString& group) {
    return dynamic_cast<TaDrawInfo*>(Repository().GetDrawInfo(group));
}

bool Set(TaDrawInfo& info, const StudySettings& settings) {
    const std::vector<double> before = info.vecGetStudyParams(settings.type);
    if (!info.bSetStudyParams(settings.type, settings.params)) {
        return false;
    }
    const bool isSet = info.bSetStudyShapes(settings.type, settings.shapes);
    if (!isSet) {
        info.bSetStudyParams(settings.type, before);
    }
    return isSet;
}

}  // namespace

std::vector<StudyType> StudiesOfGroup(const CString& group) {
    StudyLists lists;
    Repository().GetStudyListByGroupName(group, lists);
    std::vector<StudyType> studies;
    for (const auto& pane : lists) {
        for (const StudyType type : pane) {
            if (FindStudy(type) != nullptr && std::ranges::find(studies, type) == studies.end()) {
                studies.push_back(type);
            }
        }
    }
    return studies;
}

std::vector<StudySettings> ReadGroup(const CString& group, const std::vector<StudyType>& studies) {
    std::vector<StudySettings> settings;
    if (const TaDrawInfo* info = DrawInfoOf(group)) {
        for (const StudyType type : studies) {
            settings.push_back(
                {type, info->vecGetStudyParams(type), info->vecGetStudyShapes(type)});
        }
    }
    return settings;
}

std::vector<StudyType> WriteGroup(const CString& group, const std::vector<StudySettings>& studies) {
    TaDrawInfo* info = DrawInfoOf(group);
    std::vector<StudyType> refused;
    for (const StudySettings& settings : studies) {
        if (info == nullptr || !Set(*info, settings)) {
            refused.push_back(settings.type);
        }
    }
    return refused;
}

}  // namespace ta::terminal
