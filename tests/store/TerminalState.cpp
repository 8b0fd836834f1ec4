#include "tests/store/TerminalState.h"

#include <fmt/format.h>

#include <cstdlib>
#include <set>

namespace ta::test {
namespace {

const CString kSymbolKey = "02/SPX";

CString NameOf(const CString& tag, int turn) {
    return fmt::format("{} {}", tag, turn);
}

/// One to three groups; the first is named as the state.
std::vector<CString> Groups(const CString& state, int turn) {
    std::vector<CString> groups{state};
    for (int i = 1; i <= turn % 3; ++i) {
        groups.push_back(fmt::format("{}/{}", state, i));
    }
    return groups;
}

std::vector<CString> Params(const CString& state) {
    return {"900=" + state};
}

std::vector<CString> Lines(const CString& state) {
    return {"2004/" + state};
}

bool ShowsGroup(CTaSettingHandle& repository, const CString& group, const CString& state,
                int turn) {
    StudyLists lists;
    std::vector<CString> params;
    return repository.GetStudyListByGroupName(group, lists) == 1 && lists[0][0] == turn &&
           repository.GetStudyParamSettingByGroupName(group, params) == 1 &&
           params == Params(state);
}

}  // namespace

void MakeState(CTaSettingHandle& repository, const CString& tag, int turn) {
    const CString state = NameOf(tag, turn);
    std::vector<CString> old;
    repository.GetGroupNameList(old);
    for (std::size_t i = 1; i < old.size(); ++i) {
        repository.DeleteGroupSetting(old[i]);
    }
    repository.ModifyGroupName(old.front(), state);
    for (const CString& group : Groups(state, turn)) {
        repository.AddGroupSetting(group);  // all but the first
        repository.SetStudyListByGroupName(group, {{turn}});
        repository.SetStudyParamSettingByGroupName(group, Params(state));
    }
    repository.SetTrendLineData(kTechViewClass, kSymbolKey, "price", 0, Lines(state), 0);
}

CString StateOf(CTaSettingHandle& repository) {
    std::vector<CString> groups;
    repository.GetGroupNameList(groups);
    const CString state = groups.empty() ? CString() : groups.front();
    const std::size_t blank = state.rfind(' ');
    const int turn = blank == CString::npos ? 0 : std::atoi(state.c_str() + blank);
    std::vector<CString> lines;
    repository.GetTrendLineData(lines, kTechViewClass, kSymbolKey, "price", 0, 0);
    if (groups != Groups(state, turn) || lines != Lines(state)) {
        return {};
    }
    std::set<int> uniNums;
    for (const CString& group : groups) {
        if (!ShowsGroup(repository, group, state, turn)) {
            return {};
        }
        uniNums.insert(repository.GetUniNumByGroupName(group));
    }
    return uniNums.size() == groups.size() ? state : CString();
}

}  // namespace ta::test
