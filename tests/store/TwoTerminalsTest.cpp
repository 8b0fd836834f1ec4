// Two repositories, each on a store of its own over one file, as two running terminals have them.

#include "settings/Messages.h"
#include "terminal/chart/TerminalChartModule.h"
#include "terminal/store/SqliteStore.h"
#include "tests/support/TestAccess.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace ta::test {
namespace {

using terminal::SqliteStore;

/// One terminal: its store, its repository, and a chart view. In front of every call the services
/// in the library must be this terminal's: Front() sees to it.
class RunningTerminal {
public:
    RunningTerminal(const QString& path, std::chrono::nanoseconds& now)
        : m_store([&now] { return now; }) {
        m_store.Open(path);
        m_store.SetPackErrorHandler([this](const auto&) { ++packErrors; });
        HangIn();
        m_repository = TaSettingHandleTestAccess::Make();
        m_repository->AddTechViewPtr(&view);
    }
    ~RunningTerminal() {
        HangIn();
        m_repository.reset();
        CSyncInfo::GetSettingCFG().SetServices({});
    }
    RunningTerminal(const RunningTerminal&) = delete;
    RunningTerminal& operator=(const RunningTerminal&) = delete;

    CTaSettingHandle& Front() {
        HangIn();
        return *m_repository;
    }

    std::vector<CString> Names() {
        std::vector<CString> names;
        Front().GetGroupNameList(names);
        return names;
    }

    RecordingView view;
    int packErrors = 0;

private:
    void HangIn() {
        Services services;
        services.configStore = &m_store;
        services.chartModule = &m_module;
        CSyncInfo::GetSettingCFG().SetServices(services);
    }

    terminal::TerminalChartModule m_module;
    SqliteStore m_store;
    std::unique_ptr<CTaSettingHandle> m_repository;
};

class TwoTerminals : public testing::Test {
protected:
    /// Time passes, so that the stores look at the file again.
    void Later() { m_now += SqliteStore::kLongestBlind; }

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath("settings.db");
    std::chrono::nanoseconds m_now{1};
    RunningTerminal m_first{m_path, m_now};
    RunningTerminal m_second{m_path, m_now};
};

TEST_F(TwoTerminals, EachSeesWhatTheOtherSaves) {
    for (int turn = 1; turn <= 200; ++turn) {
        for (RunningTerminal* saver : {&m_first, &m_second}) {
            RunningTerminal& other = saver == &m_first ? m_second : m_first;
            Later();
            CTaSettingHandle& repository = saver->Front();
            const CString group = repository.GetSystemDefaultGroup();
            const CString name = (saver == &m_first ? "first " : "second ") + std::to_string(turn);
            ASSERT_EQ(repository.ModifyGroupName(group, name), 1);
            repository.SetStudyListByGroupName(name, {{turn}});
            repository.SetTrendLineData(kTechViewClass, "02/SPX", "price", 0, 0,
                                        {"2004/" + std::to_string(turn)});
            repository.SaveAllGroupSetting();

            other.view.messages.clear();
            Later();
            ASSERT_EQ(other.Names(), std::vector<CString>{name}) << "turn " << turn;
            ASSERT_EQ(other.view.messages.size(), 2u) << "one group, and the lines";
            EXPECT_EQ(other.view.messages[0].message, kGroupChangeMessage);
            StudyLists lists;
            other.Front().GetStudyListByGroupName(name, lists);
            EXPECT_EQ(lists[0][0], turn);
            std::vector<CString> lines;
            other.Front().GetTrendLineData(kTechViewClass, "02/SPX", "price", 0, 0, lines);
            EXPECT_EQ(lines, std::vector<CString>{"2004/" + std::to_string(turn)});
        }
    }
    EXPECT_EQ(m_first.packErrors + m_second.packErrors, 0);
}

TEST_F(TwoTerminals, TheLastSaverOfTwoThatDidNotLookWins) {
    const CString group = m_first.Names().front();
    for (int turn = 0; turn < 200; ++turn) {
        // Neither looks at the file before both have saved.
        m_first.Front().AddGroupSetting("A" + std::to_string(turn));
        m_first.Front().SaveAllGroupSetting();
        m_second.Front().SetStudyListByGroupName(group, {{turn}});
        m_second.Front().SaveAllGroupSetting();
        const std::vector<CString> last = m_second.Names();
        Later();
        ASSERT_EQ(m_first.Names(), last) << "turn " << turn;
        StudyLists lists;
        m_first.Front().GetStudyListByGroupName(group, lists);
        ASSERT_EQ(lists[0][0], turn);
        m_second.Names();  // takes up its own and the other's commits
    }
    EXPECT_EQ(m_first.packErrors + m_second.packErrors, 0);
}

}  // namespace
}  // namespace ta::test
