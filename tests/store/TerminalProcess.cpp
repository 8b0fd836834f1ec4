// A whole terminal without windows, driven by the tests: the store, the repository on it, and a
// chart view that is told of changes. Reads commands, one a line:
//
//   save TAG TURN  saves a state, after a look at what is there
//   look           looks at what is there
//   begin TAG TURN saves a state into a store that has none
//
// Begins with the line "open", and answers each command with the name of the state that it found.
// Ends with 0 unless a save failed or a state was a mixture.

#include "settings/Messages.h"
#include "terminal/store/SqliteStore.h"
#include "terminal/studies/TerminalChartModule.h"
#include "tests/support/RecordingView.h"
#include "tests/support/TestAccess.h"

#include <fmt/format.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <set>
#include <sstream>

namespace ta::test {
namespace {

using terminal::OpenResult;
using terminal::SqliteStore;

// ---- States, named by a tag and a turn: all of a repository is of one, or it is a mixture ----

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

/// Makes the repository's state this one.
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

/// The name of the state; empty for a mixture.
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

// ---- The terminal ----

class Terminal {
public:
    explicit Terminal(const char* path) : m_store([this] { return m_now; }) {
        m_store.SetPackErrorHandler(
            [this](const terminal::PackError& error) { Fail(error.detail.toUtf8().constData()); });
        const OpenResult::State opened = m_store.Open(path).state;
        if (opened != OpenResult::Opened && opened != OpenResult::Created) {
            Fail("not opened");
        }
        Services services;
        services.configStore = &m_store;
        services.chartModule = &m_module;
        CSyncInfo::GetSettingCFG().SetServices(services);
        m_repository = TaSettingHandleTestAccess::Make();
        m_view.onMessage = [this](const SentMessage& sent) {
            if (sent.message == kTrendLineChangeMessage) {
                Look();
            }
        };
        m_repository->AddTechViewPtr(&m_view);
    }
    ~Terminal() {
        m_repository.reset();
        CSyncInfo::GetSettingCFG().SetServices({});
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    /// Time passes, as between two actions of the user, and the repository shows what there is.
    CString LookAgain() {
        m_now += SqliteStore::kLongestBlind;
        return Look();
    }
    CString Begin(const CString& tag, int turn) {
        MakeState(*m_repository, tag, turn);
        m_repository->SaveAllGroupSetting();
        return Look();
    }
    /// The state that was found before.
    CString Save(const CString& tag, int turn) {
        CString found = LookAgain();
        Begin(tag, turn);
        return found;
    }
    int failures = 0;

private:
    CString Look() {
        const CString state = StateOf(*m_repository);
        if (state.empty()) {
            Fail("a mixture of states");
        }
        return state;
    }
    void Fail(const char* why) {
        ++failures;
        std::fprintf(stderr, "%s\n", why);
    }

    std::chrono::nanoseconds m_now{1};
    terminal::TerminalChartModule m_module;
    SqliteStore m_store;
    std::unique_ptr<CTaSettingHandle> m_repository;
    RecordingView m_view;
};

}  // namespace
}  // namespace ta::test

int main(int argc, char** argv) {
    if (argc != 2) {
        return 2;
    }
    ta::test::Terminal terminal(argv[1]);
    std::cout << "open" << std::endl;
    for (std::string line; std::getline(std::cin, line);) {
        std::istringstream words(line);
        std::string command;
        std::string tag;
        int number = 0;
        words >> command >> tag >> number;
        std::cout << (command == "save"    ? terminal.Save(tag, number)
                      : command == "begin" ? terminal.Begin(tag, number)
                                           : terminal.LookAgain())
                  << std::endl;
    }
    return terminal.failures == 0 ? 0 : 1;
}
