#include "groupfile/GroupContents.h"

#include "groupfile/GroupFile.h"
#include "settings/StudyLists.h"
#include "settings/TaSettingHandle.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace ta::groupfile {
namespace {

std::vector<CString> SplitValue(const ProfileReader& file, const CString& name,
                                const CString& key) {
    std::vector<CString> parts;
    SplitString(GetPrivateProfileStringEx(name, key, {}, file), "$", parts);
    return parts;
}

std::vector<StudyType> StudiesOfPane(const ProfileReader& file, const CString& name, int pane) {
    std::vector<StudyType> studies;
    for (const CString& part :
         SplitValue(file, name, StudyTypeKey(static_cast<std::size_t>(pane)))) {
        studies.push_back(static_cast<StudyType>(std::atoi(part.c_str())));
    }
    return studies;
}

bool HasValue(const ProfileReader& file, const CString& name, int pane) {
    return !file.GetString(name, StudyTypeKey(static_cast<std::size_t>(pane))).empty();
}

bool SameStrings(const std::vector<CString>& a, const std::vector<CString>& b) {
    const auto saysNothing = [](const std::vector<CString>& strings) {
        return strings.empty() || (strings.size() == 1 && strings.front().empty());
    };
    return a == b || (saysNothing(a) && saysNothing(b));
}

}  // namespace

GroupDifferences Differences(const GroupContents& a, const GroupContents& b) {
    GroupDifferences differences;
    differences.showCount = a.showCount != b.showCount;
    differences.wndShowKey = a.wndShowKey != b.wndShowKey;
    differences.params = !SameStrings(a.params, b.params);
    differences.shapes = !SameStrings(a.shapes, b.shapes);
    for (std::size_t pane = 0; pane < kPaneCount; ++pane) {
        if (StudiesIn(a, pane) != StudiesIn(b, pane)) {
            differences.panes.push_back(static_cast<int>(pane) + 1);
        }
    }
    return differences;
}

std::vector<StudyType> StudiesIn(const GroupContents& contents, std::size_t pane) {
    std::vector<StudyType> studies;
    if (pane < contents.studyLists.size()) {
        std::ranges::copy_if(contents.studyLists[pane], std::back_inserter(studies),
                             [](StudyType type) { return type != kNoStudy; });
    }
    return studies;
}

GroupContents ContentsInRepository(CTaSettingHandle& repository, const CString& name) {
    GroupContents contents;
    contents.hasStudyLists = repository.GetStudyListByGroupName(name, contents.studyLists) == 1;
    contents.hasParams = repository.GetStudyParamSettingByGroupName(name, contents.params) == 1;
    contents.hasShapes = repository.GetStudyShapeSettingByGroupName(name, contents.shapes) == 1;
    contents.showCount = repository.GetStudyCountByGroupName(name);
    contents.wndShowKey = repository.GetTechWndKeyByGroupName(name);
    return contents;
}

GroupContents ContentsInFile(const ProfileReader& file, const CString& name) {
    GroupContents contents;
    contents.showCount = file.GetInt(name, "StudyShowCount", 1);
    contents.wndShowKey = file.GetInt(name, "TechWndShowKey", -1);
    if (contents.wndShowKey == -1) {
        contents.wndShowKey = contents.showCount;
    }
    contents.hasParams = true;
    contents.params = SplitValue(file, name, "ParamSetting");
    contents.hasShapes = true;
    contents.shapes = SplitValue(file, name, "ShapeSetting");
    contents.hasStudyLists = true;
    for (int pane = 1; pane <= kPaneCount; ++pane) {
        const bool shown = pane <= contents.showCount;
        contents.studyLists.push_back(shown || HasValue(file, name, pane)
                                          ? StudiesOfPane(file, name, pane)
                                          : std::vector<StudyType>());
    }
    contents.studyLists = settings::PackStudyLists(contents.studyLists);
    return contents;
}

}  // namespace ta::groupfile
