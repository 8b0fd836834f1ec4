#include "tests/store/StoreFixture.h"

#include <csignal>

#if defined(Q_OS_UNIX)
#include <sys/resource.h>
#endif

namespace ta::test {

class StoreFailureTest : public StoreTest {
protected:
    /// Lets the n-th disk operation of a PackFile fail. Returns whether there were so many.
    bool FailAt(int operation, FaultVfs::Kind kind, int ballast) {
        QFile::remove(Path());
        QFile::remove(Path() + "-journal");
        Make(1);
        TestStore store(Path());
        for (int i = 0; i < ballast; ++i) {
            store.SaveTATrendLineSymbolUpdTime("Other", 1, std::to_string(i), "2024-01-01");
        }
        store.PackFile();
        SaveGeneration(store, 2);
        faults.FailFrom(operation, kind);
        store.PackFile();
        const bool failed = faults.HasFailed();
        EXPECT_EQ(store.errors.size(), failed ? 1u : 0u);
        EXPECT_EQ(LoadGeneration(store), 2);
        if (failed && kind == FaultVfs::DiskFull) {
            EXPECT_EQ(store.errors.back().reason, PackError::DiskFull);
            EXPECT_EQ(store.errors.back().path, Path());
        }
        faults.Heal();
        if (failed) {
            EXPECT_EQ(Stored(), 1);
        }
        store.errors.clear();
        store.PackFile();
        EXPECT_TRUE(store.errors.empty());
        EXPECT_EQ(Stored(), 2);
        return failed;
    }
};

// Lets the disk fail at the first, the second, the third ... operation of a PackFile, until it
// gets through without reaching the failure. Once with most of the rows changing, once with few.
TEST_F(StoreFailureTest, WhereverADiskFailsTheOldStateStaysAndTheNewOneIsPending) {
    for (const int ballast : {0, 600}) {
        for (const FaultVfs::Kind kind : {FaultVfs::DiskFull, FaultVfs::DeadDisk}) {
            int step = 1;
            for (bool failed = true; failed; ++step) {
                ASSERT_LT(step, 500);
                SCOPED_TRACE(testing::Message() << "kind " << kind << ", operation " << step);
                failed = FailAt(step, kind, ballast);
            }
            EXPECT_GT(step, 10);
        }
    }
}

// What a power cut leaves depends on these syncs and their order: the journal is on the disk before
// the store is touched, the store before the journal goes, and the journal's end before PackFile
// returns.
TEST_F(StoreFailureTest, APackFileIsOneTransactionSyncedInOrder) {
    Make(1);
    TestStore store(Path());
    faults.TakeNotes();
    for (const int generation : {2, 7}) {
        SaveGeneration(store, generation);
        EXPECT_EQ(faults.TakeNotes(), "");
        store.PackFile();
        EXPECT_EQ(faults.TakeNotes(), "jJjJwWD");
        store.PackFile();
        SaveGeneration(store, generation);
        store.PackFile();
        EXPECT_EQ(faults.TakeNotes(), "");
    }
}

TEST_F(StoreFailureTest, EveryFailingPackFileReportsOnceAndNothingIsLostMeanwhile) {
    Make(1);
    TestStore store(Path());
    faults.FailFrom(1, FaultVfs::DiskFull);
    for (int generation = 2; generation < 6; ++generation) {
        SaveGeneration(store, generation);
        store.PackFile();
        EXPECT_EQ(store.TakeError().reason, PackError::DiskFull);
        EXPECT_EQ(LoadGeneration(store), generation);
    }
    EXPECT_FALSE(store.ReloadFlag());
    faults.Heal();
    store.PackFile();
    EXPECT_TRUE(store.errors.empty());
    EXPECT_EQ(Stored(), 5);
}

TEST_F(StoreFailureTest, AFullDiskAtTheFirstStartCostsNothingOnceThereIsRoom) {
    faults.FailFrom(1, FaultVfs::DiskFull);
    TestStore store(Path());
    EXPECT_EQ(store.opened.state, OpenResult::Failed);
    SaveGeneration(store, 1);
    store.PackFile();
    EXPECT_EQ(store.TakeError().reason, PackError::NotOpen);
    EXPECT_EQ(LoadGeneration(store), 1);
    faults.Heal();
    store.PackFile();
    EXPECT_TRUE(store.errors.empty());
    EXPECT_EQ(Stored(), 1);
}

#if defined(Q_OS_UNIX)
// The real file layer: the system refuses to let the file grow, to root as well.
TEST_F(StoreFailureTest, TheSystemsOwnLimitOnAFileIsReported) {
    Make(1);
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    TestStore store(Path(), nullptr);
    SaveGeneration(store, 2);
    rlimit low = before;
    low.rlim_cur = 4096;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &low), 0);
    store.PackFile();
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    EXPECT_EQ(store.errors.size(), 1u);
    EXPECT_EQ(LoadGeneration(store), 2);
    EXPECT_EQ(Stored(), 1);
    store.PackFile();
    EXPECT_EQ(store.errors.size(), 1u);
    EXPECT_EQ(Stored(), 2);
}
#endif

TEST_F(StoreFailureTest, AReadOnlyStoreIsReadAndWrittenAsSoonAsItCanBe) {
    Make(1);
    const QByteArray before = Contents(Path());
    faults.SetWriteProtected(true);
    TestStore store(Path());
    EXPECT_EQ(store.opened.state, OpenResult::ReadOnly);
    EXPECT_EQ(LoadGeneration(store), 1);
    SaveGeneration(store, 2);
    EXPECT_FALSE(store.SetTASettingReloadType(true));
    EXPECT_TRUE(store.SetTASettingReloadType(false));
    for (int i = 0; i < 2; ++i) {
        store.PackFile();
        EXPECT_EQ(store.TakeError().reason, PackError::CannotWrite);
        EXPECT_EQ(LoadGeneration(store), 2);
    }
    EXPECT_EQ(Contents(Path()), before);
    EXPECT_EQ(Files(), QStringList("settings.db"));
    faults.SetWriteProtected(false);
    store.PackFile();
    EXPECT_TRUE(store.errors.empty());
    EXPECT_EQ(Stored(), 2);
}

TEST_F(StoreFailureTest, WhatBecomesReadOnlyOrWasNeverMadeIsReportedAndWrittenLater) {
    for (const int stored : {0, 1}) {
        if (stored != 0) {
            QFile::remove(Path());
            Make(stored);
        }
        faults.SetWriteProtected(stored == 0);
        TestStore store(Path());
        EXPECT_EQ(store.opened.state, stored == 0 ? OpenResult::ReadOnly : OpenResult::Opened);
        SaveGeneration(store, 2);
        faults.SetWriteProtected(true);
        store.PackFile();
        EXPECT_EQ(store.TakeError().reason, PackError::CannotWrite);
        faults.SetWriteProtected(false);
        if (stored != 0) {
            EXPECT_EQ(Stored(), stored);
        }
        store.PackFile();
        EXPECT_TRUE(store.errors.empty());
        EXPECT_EQ(Stored(), 2);
    }
}

TEST_F(StoreFailureTest, AStoreThatCouldNotBeReadIsNeverWritten) {
    Make(1);
    const QByteArray before = Contents(Path());
    faults.FailFrom(1, FaultVfs::ReadError);
    TestStore store(Path());
    faults.Heal();
    EXPECT_EQ(store.opened.state, OpenResult::Failed);
    EXPECT_FALSE(store.opened.reason.isEmpty());
    SaveGeneration(store, 2);
    for (int i = 0; i < 2; ++i) {
        store.PackFile();
        EXPECT_EQ(store.TakeError().reason, PackError::NotOpen);
        EXPECT_EQ(LoadGeneration(store), 2);
    }
    EXPECT_EQ(Contents(Path()), before);
    EXPECT_EQ(Files(), QStringList("settings.db"));
}

TEST_F(StoreFailureTest, NoFileNameOrAFolderAsTheFileFailsAndMissingFoldersAreMade) {
    ASSERT_TRUE(QDir(folder.path()).mkdir("settings.db"));
    for (const QString& path : {Path(), QString()}) {
        TestStore store(path);
        EXPECT_EQ(store.opened.state, OpenResult::Failed);
        store.SaveTAGroupUniNum(0, 1);
        store.PackFile();
        EXPECT_EQ(store.TakeError().reason, PackError::NotOpen);
    }
    EXPECT_TRUE(QFileInfo(Path()).isDir());
    EXPECT_EQ(TestStore(Path("a/b/settings.db")).opened.state, OpenResult::Created);
}

TEST_F(StoreFailureTest, LoadsKeepTheirStateWhileTheDiskCannotBeRead) {
    Make(1);
    FakeTime time;
    TestStore store(Path(), FaultVfs::Name(), time.Clock());
    Make(2);
    time.Pass(SqliteStore::kQuietGap);
    EXPECT_TRUE(store.ReloadFlag());
    faults.FailFrom(1, FaultVfs::ReadError);
    EXPECT_FALSE(store.SetTASettingReloadType(false));
    EXPECT_EQ(LoadGeneration(store), 1);
    time.Pass(SqliteStore::kQuietGap);
    EXPECT_FALSE(store.ReloadFlag());
    faults.Heal();
    time.Pass(SqliteStore::kQuietGap);
    EXPECT_TRUE(store.ReloadFlag());
    EXPECT_TRUE(store.SetTASettingReloadType(false));
    EXPECT_EQ(LoadGeneration(store), 2);
}

namespace {

/// Another program that holds the store's lock.
class Holder {
public:
    explicit Holder(const QString& path) {
        EXPECT_EQ(sqlite3_open(path.toUtf8().constData(), &m_handle), SQLITE_OK);
        EXPECT_EQ(Run("BEGIN EXCLUSIVE"), SQLITE_OK);
    }
    ~Holder() { sqlite3_close(m_handle); }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;

    int Run(const char* sql) { return sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr); }

private:
    sqlite3* m_handle = nullptr;
};

}  // namespace

TEST_F(StoreFailureTest, PackFileWaitsForAnotherProcessAndReportsWhenItTakesTooLong) {
    Make(1);
    FakeTime time;
    TestStore store(Path(), FaultVfs::Name(), time.Clock());
    SaveGeneration(store, 2);
    Holder holder(Path());
    store.PackFile();
    EXPECT_EQ(store.TakeError().reason, PackError::InUse);
    EXPECT_GT(faults.Sleeps(), 10);
    EXPECT_EQ(LoadGeneration(store), 2);

    // The question for the flag is asked all the time and does not wait.
    const int sleeps = faults.Sleeps();
    time.Pass(SqliteStore::kQuietGap);
    EXPECT_FALSE(store.ReloadFlag());
    EXPECT_EQ(faults.Sleeps(), sleeps);

    faults.SetSleep([&] {
        if (faults.Sleeps() > sleeps + 3) {
            holder.Run("COMMIT");
        }
    });
    store.PackFile();
    EXPECT_TRUE(store.errors.empty());
    EXPECT_EQ(Stored(), 2);
}

TEST_F(StoreFailureTest, ANewerStoreIsReadAndNeverWritten) {
    for (const bool otherLayout : {false, true}) {
        QFile::remove(Path());
        Make(1);
        RunSql(Path(), "PRAGMA user_version = 2");
        if (otherLayout) {
            RunSql(Path(), "ALTER TABLE settings RENAME TO things");
        }
        const QByteArray before = Contents(Path());
        {
            TestStore store(Path());
            EXPECT_EQ(store.opened.state, OpenResult::NewerVersion);
            EXPECT_EQ(LoadGeneration(store), otherLayout ? 0 : 1);
            SaveGeneration(store, 2);
            store.PackFile();
            EXPECT_EQ(store.TakeError().reason, PackError::NewerVersion);
            EXPECT_FALSE(store.SetTASettingReloadType(true));
            store.SetTASettingReloadType(false);
            EXPECT_EQ(LoadGeneration(store), 2);
        }
        EXPECT_EQ(Contents(Path()), before);
        EXPECT_EQ(Files(), QStringList("settings.db"));
    }
}

TEST_F(StoreFailureTest, AStoreThatANewerVersionTakesOverMeanwhileIsNotWritten) {
    Make(1);
    TestStore store(Path());
    SaveGeneration(store, 2);
    RunSql(Path(), "PRAGMA user_version = 2");
    const QByteArray before = Contents(Path());
    store.PackFile();
    EXPECT_EQ(store.TakeError().reason, PackError::NewerVersion);
    EXPECT_EQ(LoadGeneration(store), 2);
    EXPECT_EQ(Contents(Path()), before);
}

}  // namespace ta::test
