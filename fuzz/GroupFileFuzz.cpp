// Any bytes as a group file: read, merged and imported as the dialog does, and what was imported is
// exported and imported again.

#include "groupfile/GroupContents.h"
#include "groupfile/GroupFile.h"
#include "groupfile/GroupMerge.h"
#include "tests/support/TestAccess.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <map>
#include <string_view>

namespace {

using namespace ta;
using namespace ta::groupfile;

/// A repository with two groups, on a store in memory.
struct Terminal {
    Terminal() {
        memory.names = std::vector<CString>{"A", "B"};
        Services services;
        services.configStore = &memory;
        services.chartModule = &chartModule;
        CSyncInfo::GetSettingCFG().SetServices(services);
        repository = TaSettingHandleTestAccess::Make();
    }
    ~Terminal() {
        repository.reset();
        CSyncInfo::GetSettingCFG().SetServices({});
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    std::vector<CString> Names() const {
        std::vector<CString> names;
        repository->GetGroupNameList(names);
        return names;
    }

    test::MemoryConfigStore memory;
    test::MemoryChartModule chartModule;
    std::unique_ptr<CTaSettingHandle> repository;
};

void Require(bool condition, const char* what) {
    if (!condition) {
        std::cerr << what << '\n';
        std::abort();
    }
}

void Import(Terminal& terminal, const ProfileReader& file) {
    GroupMerge merge;
    const std::vector<CString> existing = terminal.Names();
    const int most = terminal.repository->GetMaxTAGroupCount();
    std::vector<CString> fromFile;
    GetGroupNameListFromFile(file, fromFile);
    Require(fromFile.size() <= kMaxNamesInFile, "more names than are read");
    merge.InsertAllGroup(existing, fromFile, most, true, existing.size());
    std::vector<CString> names = merge.GetMergeList();
    Require(names.size() <= static_cast<std::size_t>(most), "more groups than the maximum");
    for (const CString& name : names) {
        if (merge.IsLoadSettingFromFile(name)) {
            ImportGroupSetting(*terminal.repository, name, file);
            Require(!Differences(ContentsInRepository(*terminal.repository, name),
                                 ContentsInFile(file, name))
                         .Any(),
                    "a group is not as the file has it");
        }
    }
    terminal.repository->SetGroupNameList(names);
    terminal.repository->SaveAllGroupSetting();
}

/// What the export says it carries comes back the same.
void ExportAndImportAgain(Terminal& terminal) {
    const std::vector<CString> names = terminal.Names();
    const ProfileReader file(ExportGroups(*terminal.repository, names));
    Require(CheckImportFile(file), "an exported file is of another version");
    const std::vector<CString> changed = GroupsNotCarried(*terminal.repository, names, file);
    std::map<CString, GroupContents> carried;
    for (const CString& name : names) {
        if (std::ranges::find(changed, name) == changed.end()) {
            carried[name] = ContentsInRepository(*terminal.repository, name);
        }
    }
    Terminal other;
    for (const auto& [name, contents] : carried) {
        ImportGroupSetting(*other.repository, name, file);
        Require(!Differences(ContentsInRepository(*other.repository, name), contents).Any(),
                "a group came back changed");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ProfileReader file({reinterpret_cast<const char*>(data), size});
    CheckImportFile(file);
    Terminal terminal;
    Import(terminal, file);
    ExportAndImportAgain(terminal);
    return 0;
}
