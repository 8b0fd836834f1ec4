// Two terminals in processes of their own, each with a whole repository, on one store file.

#include "tests/store/ChildProcess.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace ta::test {
namespace {

/// In memory where the machine has such a folder: 400 commits wait more than a thousand times for a
/// disk, and a disk in use may take ten milliseconds each time.
QString FolderTemplate() {
    const QString memory = "/dev/shm";
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + "/store-XXXXXX";
}

struct Terminal : ChildProcess {
    explicit Terminal(const QString& path) : ChildProcess(TERMINAL_PROCESS, {path}) {
        EXPECT_EQ(Line(), "open");
    }
    QByteArray Ask(const QByteArray& command) {
        Tell(command);
        return Line();
    }
};

TEST(TwoProcesses, EachSavesTwoHundredTimesWhileTheOtherDoes) {
    constexpr int kTurns = 200;
    const QTemporaryDir folder(FolderTemplate());
    const QString path = folder.filePath("settings.db");
    // What a terminal finds that starts now. Each one ends badly that finds a mixture of states.
    const auto found = [&path] {
        Terminal third(path);
        const QByteArray state = third.Ask("look");
        EXPECT_TRUE(third.EndsWell()) << state.toStdString();
        return state;
    };
    EXPECT_EQ(Terminal(path).Ask("begin begin 1"), "begin 1");
    Terminal first(path);
    Terminal second(path);
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
        if (turn % 5 == 0) {
            ASSERT_NE(found(), "") << "turn " << turn;
        }
        const QByteArray foundByFirst = first.Line();
        const QByteArray foundBySecond = second.Line();
        ASSERT_FALSE(foundByFirst.isEmpty() || foundBySecond.isEmpty()) << "turn " << turn;
        firstSawOther += foundByFirst.startsWith('B') ? 1 : 0;
        secondSawOther += foundBySecond.startsWith('A') ? 1 : 0;
    }
    EXPECT_GT(firstSawOther, 0);
    EXPECT_GT(secondSawOther, 0);
    const QByteArray stored = found();
    EXPECT_TRUE(stored == "A 200" || stored == "B 200") << stored.toStdString();
    EXPECT_EQ(first.Ask("look"), stored);
    EXPECT_EQ(second.Ask("look"), stored);
    EXPECT_EQ(first.Ask("save A 777"), stored);
    EXPECT_EQ(second.Ask("save B 888"), "A 777");
    EXPECT_EQ(first.Ask("look"), "B 888");
    EXPECT_TRUE(first.EndsWell());
    EXPECT_TRUE(second.EndsWell());
    EXPECT_EQ(found(), "B 888");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList("settings.db"));
}

}  // namespace
}  // namespace ta::test
