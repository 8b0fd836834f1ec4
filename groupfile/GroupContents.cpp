#include "groupfile/GroupContents.h"

#include "groupfile/GroupFile.h"
#include "settings/StudyLists.h"
#include "settings/TaSettingHandle.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace ta::groupfile {
namespace {

/// Reads lists of one group; `noMemory` may be null.
class ListReader {
public:
    ListReader(const ProfileReader& file, const CString& name, bool* noMemory)
        : m_file(file), m_name(name), m_noMemory(noMemory) {}

    std::vector<CString> Strings(const CString& key) const {
        std::vector<CString> parts;
        const CString value = GetPrivateProfileStringEx(m_name, key, {}, m_file, m_noMemory);
        if (SplitString(value, "$", parts) == 0) {
            if (m_noMemory != nullptr) {
                *m_noMemory = true;
            }
            parts.resize(1);
        }
        return parts;
    }

    std::vector<StudyType> Studies(const CString& key) const {
        std::vector<StudyType> studies;
        for (const CString& part : Strings(key)) {
            studies.push_back(static_cast<StudyType>(std::atoi(part.c_str())));
        }
        return studies;
    }

private:
    const ProfileReader& m_file;
    const CString& m_name;
    bool* m_noMemory;
};

bool HasValue(const ProfileReader& file, const CString& name, const CString& key) {
    char first[2];
    return file.GetString(name, key, {}, first, sizeof first) > 0;
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

GroupContents ContentsInFile(const ProfileReader& file, const CString& name, bool* noMemory) {
    const ListReader lists(file, name, noMemory);
    GroupContents contents;
    contents.showCount = file.GetInt(name, "StudyShowCount", 1);
    contents.wndShowKey = file.GetInt(name, "TechWndShowKey", -1);
    if (contents.wndShowKey == -1) {
        contents.wndShowKey = contents.showCount;
    }
    contents.hasParams = true;
    contents.params = lists.Strings("ParamSetting");
    contents.hasShapes = true;
    contents.shapes = lists.Strings("ShapeSetting");
    contents.hasStudyLists = true;
    for (int pane = 1; pane <= kPaneCount; ++pane) {
        const CString key = StudyTypeKey(static_cast<std::size_t>(pane));
        const bool shown = pane <= contents.showCount;
        contents.studyLists.push_back(
            shown || HasValue(file, name, key) ? lists.Studies(key) : std::vector<StudyType>());
    }
    contents.studyLists = settings::PackStudyLists(contents.studyLists);
    return contents;
}

}  // namespace ta::groupfile
