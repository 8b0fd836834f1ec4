#include "tests/store/ChildProcess.h"
#include "tests/store/StoreFixture.h"

#include <random>

namespace ta::test {

namespace {

/// A process of its own that writes states.
class Writer : public ChildProcess {
public:
    Writer(const QString& path, const QStringList& arguments)
        : ChildProcess(STORE_WRITER, QStringList(path) + arguments) {}
};

void BurnTime(std::chrono::nanoseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    while (std::chrono::steady_clock::now() < end) {
    }
}

}  // namespace

using StoreProcessTest = StoreTest;

// One store through the whole test: each round lets a process write states and kills it at a
// random moment. The store must hold the last state whose PackFile returned, or the one after it.
TEST_F(StoreProcessTest, AKilledProcessLeavesTheStateBeforeOrAfter) {
    constexpr int kRounds = 220;
    const unsigned seed = std::random_device{}();
    std::mt19937 random(seed);
    std::chrono::nanoseconds packTime{};
    int last = 0;
    int interrupted = 0;
    for (int round = 0; round < kRounds; ++round) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round);
        Writer writer(Path(), {"loop"});
        ASSERT_EQ(writer.Line(), "open");
        if (round % 50 == 0) {
            ASSERT_EQ(writer.Line().toInt(), ++last);
            const auto start = std::chrono::steady_clock::now();
            ASSERT_EQ(writer.Line().toInt(), ++last);
            packTime = std::chrono::steady_clock::now() - start;
        }
        BurnTime(packTime * (random() % 2000) / 1000);
        writer.Kill();
        for (QByteArray line = writer.Line(); !line.isEmpty(); line = writer.Line()) {
            ASSERT_EQ(line.toInt(), ++last);
        }
        interrupted += QFileInfo::exists(Path() + "-journal") ? 1 : 0;

        const std::optional<int> stored = Stored();
        ASSERT_TRUE(stored.has_value()) << "a mixture of states";
        ASSERT_TRUE(*stored == last || *stored == last + 1) << *stored << " after " << last;
        last = *stored;
    }
    EXPECT_GT(interrupted, 0);
    Make(last + 1);  // a journal that was never begun stays until the next write
    EXPECT_EQ(Files(), QStringList("settings.db"));
}

TEST_F(StoreProcessTest, TwoProcessesThatPackAtOnceNeverMixTheirStates) {
    Make(1);
    Writer odd(Path(), {"race", "3", "15"});
    Writer even(Path(), {"race", "4", "15"});
    EXPECT_TRUE(odd.EndsWell());
    EXPECT_TRUE(even.EndsWell());
    const std::optional<int> stored = Stored();
    EXPECT_TRUE(stored == 31 || stored == 32) << stored.value_or(-1);
}

TEST_F(StoreProcessTest, TwoProcessesThatBeginOneStoreShareIt) {
    Fill(Path(), QByteArray(5000, 'g'));
    Writer first(Path(), {"once", "1"});
    Writer second(Path(), {"once", "2"});
    first.EndsWell();
    second.EndsWell();
    const std::optional<int> stored = Stored();
    EXPECT_TRUE(stored == 0 || stored == 1 || stored == 2);
    // The writer that came first, or both at once, found the garbage; it is there once.
    EXPECT_EQ(Files().size(), 2) << Files().join(' ').toStdString();
}

TEST_F(StoreProcessTest, AnothersCommitRaisesTheFlagAndIsSeenOnceItIsLowered) {
    Make(1);
    TestStore store(Path(), nullptr);
    EXPECT_FALSE(store.ReloadFlag());
    store.SetTAGroupMaxCount(33);  // pending
    store.SaveTAGroupUniNum(0, 77);

    ASSERT_TRUE(Writer(Path(), {"once", "2"}).EndsWell());
    EXPECT_TRUE(store.ReloadFlag());
    std::vector<CString> names;
    EXPECT_TRUE(store.LoadTAGroupNameList(names));
    EXPECT_EQ(names.front(), "1");  // as long as the flag is up, all loads are of one state

    EXPECT_TRUE(store.SetTASettingReloadType(false));
    EXPECT_FALSE(store.ReloadFlag());
    EXPECT_TRUE(store.LoadTAGroupNameList(names));
    EXPECT_EQ(names.front(), "2");
    int number = 0;
    EXPECT_TRUE(store.LoadTAGroupUniNum(0, number));
    EXPECT_EQ(number, 2);  // what was written of the other party's groups would not fit them
    EXPECT_EQ(store.MaxCount(), 33);

    store.DiscardPending();
    store.SetTASettingReloadType(false);
    EXPECT_EQ(LoadGeneration(store), 2);
    EXPECT_FALSE(store.ReloadFlag());
}

TEST_F(StoreProcessTest, OnesOwnCommitRaisesNoFlagAndHidesNoneOfAnothers) {
    Make(1);
    TestStore store(Path(), nullptr);
    for (int generation = 2; generation < 5; ++generation) {
        SaveGeneration(store, generation);
        store.PackFile();
        EXPECT_FALSE(store.ReloadFlag());
    }
    ASSERT_TRUE(Writer(Path(), {"once", "5"}).EndsWell());
    store.SetTAGroupMaxCount(11);
    store.PackFile();
    EXPECT_TRUE(store.ReloadFlagAtOnce());
    EXPECT_TRUE(store.SetTASettingReloadType(false));
    EXPECT_EQ(LoadGeneration(store), 5);
    EXPECT_EQ(store.MaxCount(), 11);
    // Values equal to those of the state before the other's commit are written all the same.
    SaveGeneration(store, 5);
    ASSERT_TRUE(Writer(Path(), {"once", "6"}).EndsWell());
    store.PackFile();
    EXPECT_EQ(Stored(), 5);
}

TEST_F(StoreProcessTest, RaisingTheFlagReachesEveryProcessAtOnce) {
    Make(1);
    TestStore store(Path(), nullptr);
    TestStore second(Path(), nullptr);
    EXPECT_FALSE(store.ReloadFlag());
    EXPECT_FALSE(second.ReloadFlag());
    ASSERT_TRUE(Writer(Path(), {"raise"}).EndsWell());
    EXPECT_TRUE(store.ReloadFlag());
    EXPECT_TRUE(second.ReloadFlag());
    EXPECT_TRUE(store.SetTASettingReloadType(false));
    EXPECT_FALSE(store.ReloadFlag());
    EXPECT_TRUE(second.ReloadFlag());  // each process has its own

    EXPECT_TRUE(store.SetTASettingReloadType(true));
    EXPECT_TRUE(store.ReloadFlagAtOnce());
    EXPECT_EQ(Stored(), 1);
}

TEST_F(StoreProcessTest, TheFileIsLookedAtAfterAPauseAndNotWithinARunOfCalls) {
    using std::chrono::microseconds;
    Make(1);
    TestStore store(Path());
    EXPECT_FALSE(store.ReloadFlagAtOnce());
    Make(2);
    // An operation that asks every 50 microseconds is left alone, though not for ever.
    microseconds asked{0};
    for (; !store.ReloadFlagAtOnce(); asked += microseconds(50)) {
        ASSERT_LT(asked, microseconds(SqliteStore::kLongestBlind) * 2);
        store.now += microseconds(50);
    }
    EXPECT_GE(asked, microseconds(SqliteStore::kLongestBlind));

    store.SetTASettingReloadType(false);
    EXPECT_FALSE(store.ReloadFlagAtOnce());
    Make(3);
    EXPECT_FALSE(store.ReloadFlagAtOnce());
    EXPECT_TRUE(store.ReloadFlag());
}

}  // namespace ta::test
