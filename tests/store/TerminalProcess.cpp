// A whole terminal without windows, driven by the tests: the store, the repository on it, and a
// chart view that is told of changes. Reads commands, one a line:
//
//   save TAG TURN  saves a state, after a look at what is there
//   look           looks at what is there
//
// Begins with the line "open", and answers each command with the name of the state that it found.
// Ends with 0 unless a save failed or a state was a mixture.

#include "settings/Messages.h"
#include "terminal/store/SqliteStore.h"
#include "terminal/studies/TerminalChartModule.h"
#include "tests/store/TerminalState.h"
#include "tests/support/RecordingView.h"
#include "tests/support/TestAccess.h"

#include <cstdio>
#include <iostream>
#include <sstream>

namespace ta::test {
namespace {

using terminal::OpenResult;
using terminal::SqliteStore;

class Terminal {
public:
    explicit Terminal(const char* path) : m_store([this] { return m_now; }) {
        m_store.SetPackErrorHandler(
            [this](const terminal::PackError& error) { Fail(error.detail.toUtf8().constData()); });
        if (m_store.Open(path).state != OpenResult::Opened) {
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
    /// The state that was found before.
    CString Save(const CString& tag, int turn) {
        CString found = LookAgain();
        MakeState(*m_repository, tag, turn);
        m_repository->SaveAllGroupSetting();
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
        std::cout << (command == "save" ? terminal.Save(tag, number) : terminal.LookAgain())
                  << std::endl;
    }
    return terminal.failures == 0 ? 0 : 1;
}
