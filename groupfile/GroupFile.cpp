#include "groupfile/GroupFile.h"

#include "groupfile/GroupContents.h"
#include "platform/DrawInfo.h"
#include "settings/TaSettingHandle.h"

#include <fmt/printf.h>

#include <algorithm>
#include <iterator>
#include <new>
#include <set>

namespace ta::groupfile {
namespace {

/// The texts with the separator between them.
CString Join(const std::vector<CString>& texts, char separator) {
    CString joined;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (i > 0) {
            joined += separator;
        }
        joined += texts[i];
    }
    return joined;
}

CString JoinStudies(const std::vector<StudyType>& pane) {
    std::vector<CString> studies;
    std::ranges::transform(pane, std::back_inserter(studies),
                           [](StudyType type) { return std::to_string(type); });
    return Join(studies, '$');
}

/// The others, which the writer refuses, would take the whole list with them.
std::vector<CString> NamesOfOneLine(const std::vector<CString>& names) {
    constexpr std::string_view kLineEnds("\r\n\0", 3);
    std::vector<CString> fitting;
    std::ranges::copy_if(names, std::back_inserter(fitting), [=](const CString& name) {
        return name.find_first_of(kLineEnds) == CString::npos;
    });
    return fitting;
}

void Set(bool* flag) {
    if (flag != nullptr) {
        *flag = true;
    }
}

void WriteGroup(ProfileWriter& file, const CString& name, const GroupContents& contents) {
    if (contents.hasStudyLists) {
        for (std::size_t pane = 0; pane < contents.studyLists.size(); ++pane) {
            file.SetString(name, StudyTypeKey(pane + 1), JoinStudies(StudiesIn(contents, pane)));
        }
    }
    if (contents.hasParams) {
        file.SetString(name, "ParamSetting", Join(contents.params, '$'));
    }
    if (contents.hasShapes) {
        file.SetString(name, "ShapeSetting", Join(contents.shapes, '$'));
    }
    file.SetInt(name, "StudyShowCount", contents.showCount);
    file.SetInt(name, "TechWndShowKey", contents.wndShowKey);
}

}  // namespace

bool CheckImportFile(const ProfileReader& file) {
    return file.GetString(kCommonSection, "FileVersion") == kFileVersion;
}

std::size_t GetGroupNameListFromFile(const ProfileReader& file, std::vector<CString>& out,
                                     bool* noMemory) {
    out.clear();
    const CString list = GetPrivateProfileStringEx(kCommonSection, "GroupList", {}, file, noMemory);
    if (list.empty()) {
        return 0;
    }
    const std::size_t count = SplitString(list, ",", out, kMaxNamesInFile);
    if (count == 0) {
        Set(noMemory);
    }
    return count;
}

std::size_t SplitString(std::string_view text, std::string_view separator,
                        std::vector<CString>& out, std::size_t most) {
    out.clear();
    std::size_t count = 0;
    std::size_t start = 0;
    try {
        while (start != std::string_view::npos) {
            const std::size_t end = text.find(separator, start);
            if (count++ < most) {
                out.emplace_back(text.substr(start, end - start));
            }
            start = end == std::string_view::npos ? end : end + separator.size();
        }
    } catch (const std::bad_alloc&) {
        out.clear();
        return 0;
    }
    return count;
}

CString GetPrivateProfileStringEx(const CString& section, const CString& key,
                                  const CString& defaultValue, const ProfileReader& file,
                                  bool* noMemory) {
    constexpr std::size_t kStep = 260;
    try {
        CString buffer(kStep, '\0');
        for (;;) {
            const std::size_t copied =
                file.GetString(section, key, defaultValue, buffer.data(), buffer.size());
            if (copied != buffer.size() - 1) {
                buffer.resize(copied);
                return buffer;
            }
            // Twice as long each time: a value of many megabytes must not take minutes.
            buffer.resize(2 * buffer.size());
        }
    } catch (const std::bad_alloc&) {
        Set(noMemory);
        return {};
    }
}

CString StudyTypeKey(std::size_t pane) {
    return fmt::sprintf("StudyType%02d", pane);
}

std::string ExportGroups(CTaSettingHandle& repository, const std::vector<CString>& names) {
    ProfileWriter file;
    file.SetString(kCommonSection, "FileVersion", kFileVersion);
    file.SetString(kCommonSection, "GroupList", Join(NamesOfOneLine(names), ','));
    for (const CString& name : names) {
        WriteGroup(file, name, ContentsInRepository(repository, name));
    }
    return file.Bytes();
}

std::vector<CString> GroupsNotCarried(CTaSettingHandle& repository,
                                      const std::vector<CString>& names,
                                      const ProfileReader& file) {
    std::vector<CString> carried;
    GetGroupNameListFromFile(file, carried);
    const std::set<CString> listed(carried.begin(), carried.end());
    std::vector<CString> changed;
    for (const CString& name : names) {
        if (!listed.contains(name) ||
            Differences(ContentsInFile(file, name), ContentsInRepository(repository, name)).Any()) {
            changed.push_back(name);
        }
    }
    return changed;
}

void ImportGroupSetting(CTaSettingHandle& repository, const CString& name,
                        const ProfileReader& file, bool* noMemory) {
    const GroupContents contents = ContentsInFile(file, name, noMemory);
    repository.ReloadTASetting();
    const CTaSettingHandle::ReloadHold hold(repository);
    if (repository.FindGroup(name) != 1) {
        repository.AddGroupSetting(name);
    }
    repository.SetStudyCountByGroupName(name, contents.showCount);
    repository.SetTechWndKeyByGroupName(name, contents.wndShowKey);
    repository.SetStudyParamSettingByGroupName(name, contents.params, kDrawInfoReplace);
    repository.SetStudyShapeSettingByGroupName(name, contents.shapes, kDrawInfoReplace);
    repository.SetStudyListByGroupName(name, contents.studyLists);
}

}  // namespace ta::groupfile
