// Two terminals in processes of their own, each with a whole repository, on one store file.

#include "terminal/store/SqliteStore.h"
#include "terminal/studies/TerminalChartModule.h"
#include "tests/store/ChildProcess.h"
#include "tests/store/TerminalState.h"
#include "tests/support/TestAccess.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace ta::test {
namespace {

/// In memory where the machine has such a folder: 400 commits wait more than a thousand times for a
/// disk, and a disk in use may take ten milliseconds each time.
QString FolderTemplate() {
    const QString memory = "/dev/shm";
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + "/store-XXXXXX";
}

using terminal::OpenResult;
using terminal::SqliteStore;

class TwoProcesses : public testing::Test {
protected:
    ~TwoProcesses() override { CSyncInfo::GetSettingCFG().SetServices({}); }

    QString Path() const { return m_folder.filePath("settings.db"); }

    /// A third terminal starts: its repository.
    std::unique_ptr<CTaSettingHandle> Repository(SqliteStore& store) {
        Services services;
        services.configStore = &store;
        services.chartModule = &m_module;
        CSyncInfo::GetSettingCFG().SetServices(services);
        return TaSettingHandleTestAccess::Make();
    }
    /// The state that a terminal finds which starts now; empty for a mixture.
    CString Found() {
        // Its time stands still: a reload between two questions would look like a mixture.
        SqliteStore store([] { return std::chrono::nanoseconds(1); });
        EXPECT_EQ(store.Open(Path()).state, OpenResult::Opened);
        return StateOf(*Repository(store));
    }
    void Begin() {
        SqliteStore store;
        store.Open(Path());
        const auto repository = Repository(store);
        MakeState(*repository, "begin", 1);
        repository->SaveAllGroupSetting();
    }

    QTemporaryDir m_folder{FolderTemplate()};

private:
    terminal::TerminalChartModule m_module;
};

CString Ask(ChildProcess& terminal, const CString& command) {
    terminal.Tell(command.c_str());
    return terminal.Line().toStdString();
}

TEST_F(TwoProcesses, EachSavesTwoHundredTimesWhileTheOtherDoes) {
    constexpr int kTurns = 200;
    Begin();
    ChildProcess first(TERMINAL_PROCESS, {Path()});
    ChildProcess second(TERMINAL_PROCESS, {Path()});
    ASSERT_EQ(first.Line(), "open");
    ASSERT_EQ(second.Line(), "open");
    int firstSawOther = 0;
    int secondSawOther = 0;
    for (int turn = 1; turn <= kTurns; ++turn) {
        const QByteArray number = QByteArray::number(turn);
        if (turn % 2 == 0) {
            first.Tell("save A " + number);
            second.Tell("save B " + number);
        } else {
            second.Tell("save B " + number);
            first.Tell("save A " + number);
        }
        ASSERT_NE(Found(), "") << "a mixture of states at turn " << turn;
        const QByteArray foundByFirst = first.Line();
        const QByteArray foundBySecond = second.Line();
        ASSERT_FALSE(foundByFirst.isEmpty() || foundBySecond.isEmpty()) << "turn " << turn;
        firstSawOther += foundByFirst.startsWith('B') ? 1 : 0;
        secondSawOther += foundBySecond.startsWith('A') ? 1 : 0;
    }
    EXPECT_GT(firstSawOther, 0);
    EXPECT_GT(secondSawOther, 0);
    const CString stored = Found();
    EXPECT_TRUE(stored == "A 200" || stored == "B 200") << stored;
    EXPECT_EQ(Ask(first, "look"), stored);
    EXPECT_EQ(Ask(second, "look"), stored);
    EXPECT_EQ(Ask(first, "save A 777"), stored);
    EXPECT_EQ(Ask(second, "save B 888"), "A 777");
    EXPECT_EQ(Ask(first, "look"), "B 888");
    EXPECT_TRUE(first.EndsWell());
    EXPECT_TRUE(second.EndsWell());
    EXPECT_EQ(Found(), "B 888");
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList("settings.db"));
}

}  // namespace
}  // namespace ta::test
