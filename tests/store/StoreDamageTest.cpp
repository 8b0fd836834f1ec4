#include "tests/store/StoreFixture.h"
#include "tests/support/MemoryServices.h"

#include <random>

namespace ta::test {

namespace {

const QString kAside = "settings.db.damaged-2025-03-03";

}  // namespace

class StoreDamageTest : public StoreTest {
protected:
    StoreDamageTest() { SetClock(&clock); }
    ~StoreDamageTest() override { SetClock(nullptr); }

    /// Opens the file with these bytes as a store: they must be moved aside untouched, and a store
    /// that works begin in their place.
    void ExpectMovedAside(const QByteArray& bytes, const QString& name = kAside) {
        Fill(Path(), bytes);
        TestStore store(Path());
        ASSERT_EQ(store.opened.state, OpenResult::MovedAside);
        EXPECT_EQ(store.opened.movedTo, Path(name));
        EXPECT_EQ(Contents(Path(name)), bytes);
        EXPECT_EQ(LoadGeneration(store), 0);
        SaveGeneration(store, 7);
        store.PackFile();
        EXPECT_TRUE(store.errors.empty());
        EXPECT_EQ(Stored(), 7);
    }
    void RemoveAll() {
        for (const QString& file : Files()) {
            QFile::remove(Path(file));
        }
    }
    QByteArray MakeBytes() {
        Make(1);
        return Contents(Path());
    }

    FixedClock clock{1741003200};  // 2025-03-03 12:00 UTC
};

TEST_F(StoreDamageTest, AStoreCutShortAnywhereIsMovedAside) {
    const QByteArray whole = MakeBytes();
    ASSERT_GT(whole.size(), 20000);
    std::vector<qsizetype> lengths{2, 15, 16, 99, 100, 101, 511, 512, 4095, 4096, 4097};
    for (qsizetype length = 5000; length < whole.size(); length += 3333) {
        lengths.push_back(length);
    }
    lengths.insert(lengths.end(), {whole.size() - 4096, whole.size() - 512, whole.size() - 1});
    for (const qsizetype length : lengths) {
        SCOPED_TRACE(length);
        RemoveAll();
        ExpectMovedAside(whole.left(length));
    }
}

// SQLite takes a file of one byte for an empty one too.
TEST_F(StoreDamageTest, AnEmptyFileIsANewStore) {
    for (const int size : {0, 1}) {
        Fill(Path(), QByteArray(size, 'g'));
        TestStore store(Path());
        EXPECT_EQ(store.opened.state, OpenResult::Created);
        EXPECT_EQ(Files(), QStringList("settings.db"));
    }
}

TEST_F(StoreDamageTest, RandomBytesAndFilesOfOthersAreMovedAside) {
    std::mt19937 random(1);
    std::vector<QByteArray> files{"hello\n", QByteArray(10000, '\0'), "[General]\nkey=value\n"};
    for (const int size : {2, 100, 5000, 100000}) {
        QByteArray bytes(size, '\0');
        std::ranges::generate(bytes, [&] { return static_cast<char>(random() | 1); });
        files.push_back(bytes);
    }
    // Stores of other programs: a table, an application id, a version.
    for (const char* sql : {"CREATE TABLE t(a); INSERT INTO t VALUES(1)",
                            "PRAGMA application_id = 5; CREATE TABLE t(a)",
                            "PRAGMA user_version = 5; CREATE TABLE t(a)"}) {
        RemoveAll();
        RunSql(Path(), sql);
        files.push_back(Contents(Path()));
    }
    for (const QByteArray& bytes : files) {
        SCOPED_TRACE(bytes.size());
        RemoveAll();
        ExpectMovedAside(bytes);
    }
}

// Garbage in a random place of a store that is otherwise ours. Not everything can be noticed; but
// nothing may crash, and what is saved afterwards must be there.
TEST_F(StoreDamageTest, GarbageInsideAStoreNeverStopsTheTerminal) {
    const QByteArray whole = MakeBytes();
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    int movedAside = 0;
    for (int round = 0; round < 400; ++round) {
        QByteArray bytes = whole;
        const int pages = static_cast<int>(bytes.size() / 4096);
        const int length = round % 2 == 0 ? 4096 : 1 + static_cast<int>(random() % 8);
        qsizetype at = 4096 * static_cast<qsizetype>(random() % static_cast<unsigned>(pages));
        if (length < 4096) {  // mostly in the heads of pages, where it hurts
            at += static_cast<qsizetype>(random() % (round % 4 == 1 ? 120 : 4000));
        }
        for (int i = 0; i < length && at + i < bytes.size(); ++i) {
            bytes[at + i] = static_cast<char>(random());
        }
        RemoveAll();
        Fill(Path(), bytes);
        TestStore store(Path());
        ASSERT_TRUE(store.opened.state == OpenResult::Opened ||
                    store.opened.state == OpenResult::MovedAside ||
                    store.opened.state == OpenResult::NewerVersion)
            << round << ' ' << store.opened.state << ' ' << store.opened.reason.toStdString();
        if (store.opened.state == OpenResult::MovedAside) {
            ++movedAside;
            EXPECT_EQ(Contents(store.opened.movedTo), bytes);
        }
        SaveGeneration(store, 2 + round);
        store.PackFile();
        EXPECT_EQ(LoadGeneration(store), 2 + round);
        if (store.errors.empty() || store.errors[0].reason == PackError::Replaced) {
            EXPECT_EQ(Stored(), 2 + round) << round;
        }
    }
    EXPECT_GT(movedAside, 100);
}

TEST_F(StoreDamageTest, MovingAsideOverwritesNothingAndTakesTheJournalAlong) {
    const QByteArray garbage(5000, 'g');
    Fill(Path(kAside), "first");
    Fill(Path(kAside + "-2-journal"), "second");
    Fill(Path() + "-journal", QByteArray(600, '\0'));
    ExpectMovedAside(garbage, kAside + "-3");
    EXPECT_EQ(Contents(Path(kAside)), "first");
    EXPECT_EQ(Contents(Path(kAside + "-2-journal")), "second");
    EXPECT_EQ(Contents(Path(kAside + "-3-journal")), QByteArray(600, '\0'));
    EXPECT_FALSE(QFileInfo::exists(Path() + "-journal"));
}

TEST_F(StoreDamageTest, ALinkToTheStoreStaysALink) {
    ASSERT_TRUE(QDir(folder.path()).mkdir("real"));
    Fill(Path("real/store.db"), QByteArray(5000, 'g'));
    ASSERT_TRUE(QFile::link(Path("real/store.db"), Path()));
    TestStore store(Path());
    EXPECT_EQ(store.opened.state, OpenResult::MovedAside);
    EXPECT_TRUE(QFileInfo(Path()).isSymLink());
    EXPECT_EQ(Contents(store.opened.movedTo), QByteArray(5000, 'g'));
    SaveGeneration(store, 1);
    store.PackFile();
    EXPECT_EQ(Stored(), 1);
}

// The file is ruined while the program runs: memory still has everything.
TEST_F(StoreDamageTest, AFileRuinedMeanwhileIsReplacedByWhatIsInMemory) {
    for (const bool byReload : {false, true}) {
        SCOPED_TRACE(byReload);
        RemoveAll();
        Make(1);
        TestStore store(Path());
        const QByteArray garbage(Contents(Path()).size(), 'g');
        Fill(Path(), garbage);
        store.SetTAGroupMaxCount(20);
        if (byReload) {
            store.SetTASettingReloadType(false);
        } else {
            store.PackFile();
        }
        const PackError error = store.TakeError();
        EXPECT_EQ(error.reason, PackError::Replaced);
        EXPECT_EQ(error.movedTo, Path(kAside));
        EXPECT_EQ(Contents(Path(kAside)), garbage);
        EXPECT_EQ(LoadGeneration(store), 1);
        EXPECT_EQ(Stored(), 1);
        store.DiscardPending();
        store.SetTASettingReloadType(false);
        EXPECT_EQ(store.MaxCount().has_value(), !byReload) << "a reload commits nothing";
        store.SetTAGroupMaxCount(30);
        store.PackFile();
        EXPECT_TRUE(store.errors.empty());
        EXPECT_FALSE(store.ReloadFlag());
    }
}

TEST_F(StoreDamageTest, AFileRemovedMeanwhileIsMadeAgain) {
    Make(1);
    TestStore store(Path());
    QFile::remove(Path());
    store.SetTAGroupMaxCount(20);
    store.PackFile();
    EXPECT_TRUE(store.errors.empty());
    EXPECT_EQ(Stored(), 1);
    store.DiscardPending();
    EXPECT_EQ(LoadGeneration(store), 1);
}

// The disk fails when the lost file has been begun anew and does not hold again what the lost one
// held; another process finds it so and commits. Its state stays.
TEST_F(StoreDamageTest, ACommitBetweenALossAndTheRestoreIsNotOverwritten) {
    int between = 0;
    for (int failure = 1; failure < 60; ++failure) {
        SCOPED_TRACE(failure);
        RemoveAll();
        Make(1);
        TestStore store(Path());
        QFile::remove(Path());
        store.SetTAGroupMaxCount(20);
        faults.FailFrom(failure, FaultVfs::DeadDisk);
        store.PackFile();
        faults.Heal();
        {
            TestStore other(Path());
            if (other.opened.state != OpenResult::Opened || LoadGeneration(other) != 0) {
                continue;
            }
            ++between;
            EXPECT_EQ(store.TakeError().path, Path());
            SaveGeneration(other, 2);
            other.PackFile();
        }
        store.PackFile();
        EXPECT_TRUE(store.errors.empty());
        EXPECT_TRUE(store.ReloadFlag());
        EXPECT_TRUE(store.SetTASettingReloadType(false));
        EXPECT_EQ(LoadGeneration(store), 2);
        EXPECT_EQ(Stored(), 2);
        EXPECT_EQ(store.MaxCount(), 20);
    }
    EXPECT_GT(between, 5);
}

TEST_F(StoreDamageTest, AFileReplacedMeanwhileIsTakenUpAndNotOverwritten) {
    for (const bool byPacking : {false, true}) {
        RemoveAll();
        Make(1);
        TestStore store(Path());
        ASSERT_TRUE(QFile::rename(Path(), Path("old.db")));
        if (!byPacking) {
            EXPECT_FALSE(store.ReloadFlag());  // nothing there: memory is the best there is
        }
        Make(2);
        if (byPacking) {
            store.SetTAGroupMaxCount(20);
            store.PackFile();
            EXPECT_TRUE(store.errors.empty());
            EXPECT_EQ(Stored(), 2);
        }
        EXPECT_TRUE(store.ReloadFlag());
        EXPECT_TRUE(store.SetTASettingReloadType(false));
        EXPECT_EQ(LoadGeneration(store), 2);
        EXPECT_EQ(store.MaxCount(), byPacking ? std::optional(20) : std::nullopt);
    }
}

}  // namespace ta::test
