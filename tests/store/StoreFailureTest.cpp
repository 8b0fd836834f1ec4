#include "tests/store/StoreFixture.h"

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

/// A disk that refuses, when and how it is told.
struct Refusal {
    const char* name;
    int stored;  ///< the state in the file; 0 for no file
    void (*beforeOpen)(FaultVfs&);
    void (*afterOpen)(FaultVfs&);
    OpenResult::State opened;
    PackError::Reason reason;
    bool heals = true;  ///< else the store is never written
};

const Refusal kRefusals[] = {
    {"full at the first start", 0, [](FaultVfs& disk) { disk.FailFrom(1, FaultVfs::DiskFull); },
     nullptr, OpenResult::Failed, PackError::NotOpen},
    {"full later", 1, nullptr, [](FaultVfs& disk) { disk.FailFrom(1, FaultVfs::DiskFull); },
     OpenResult::Opened, PackError::DiskFull},
    {"read-only", 1, [](FaultVfs& disk) { disk.SetWriteProtected(true); }, nullptr,
     OpenResult::ReadOnly, PackError::CannotWrite},
    {"read-only later", 1, nullptr, [](FaultVfs& disk) { disk.SetWriteProtected(true); },
     OpenResult::Opened, PackError::CannotWrite},
    {"read-only at the first start", 0, [](FaultVfs& disk) { disk.SetWriteProtected(true); },
     nullptr, OpenResult::ReadOnly, PackError::CannotWrite},
    // What could not be read might be worth more than what is written over it.
    {"not readable", 1, [](FaultVfs& disk) { disk.FailFrom(1, FaultVfs::ReadError); },
     [](FaultVfs& disk) { disk.Heal(); }, OpenResult::Failed, PackError::NotOpen, false},
};

TEST_F(StoreFailureTest, WhatADiskRefusesIsReportedEachTimeAndStaysPendingUntilItHeals) {
    for (const Refusal& refusal : kRefusals) {
        SCOPED_TRACE(refusal.name);
        QFile::remove(Path());
        if (refusal.stored != 0) {
            Make(refusal.stored);
        }
        const QByteArray before = refusal.stored == 0 ? QByteArray() : Contents(Path());
        const auto tell = [&](void (*how)(FaultVfs&)) { how != nullptr ? how(faults) : void(); };
        tell(refusal.beforeOpen);
        TestStore store(Path());
        EXPECT_EQ(store.opened.state, refusal.opened);
        EXPECT_TRUE(refusal.opened != OpenResult::Failed || !store.opened.reason.isEmpty());
        tell(refusal.afterOpen);
        for (int generation = 2; generation < 5; ++generation) {
            SaveGeneration(store, generation);
            store.PackFile();
            EXPECT_EQ(store.TakeError().reason, refusal.reason);
            EXPECT_EQ(LoadGeneration(store), generation);
        }
        if (refusal.stored != 0) {
            EXPECT_EQ(Contents(Path()), before);
            EXPECT_EQ(Files(), QStringList("settings.db"));
        }
        faults.Heal();
        faults.SetWriteProtected(false);
        store.PackFile();
        EXPECT_EQ(store.errors.empty(), refusal.heals);
        EXPECT_EQ(Stored(), refusal.heals ? 4 : refusal.stored);
    }
}

TEST_F(StoreFailureTest, TheFlagOfAReadOnlyStoreIsItsOwnProcesss) {
    Make(1);
    faults.SetWriteProtected(true);
    TestStore store(Path());
    EXPECT_EQ(LoadGeneration(store), 1);
    EXPECT_FALSE(store.SetTASettingReloadType(true));
    EXPECT_TRUE(store.ReloadFlag());
    EXPECT_TRUE(store.SetTASettingReloadType(false));
    EXPECT_FALSE(store.ReloadFlag());
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
    TestStore store(Path());
    Make(2);
    EXPECT_TRUE(store.ReloadFlag());
    faults.FailFrom(1, FaultVfs::ReadError);
    EXPECT_FALSE(store.SetTASettingReloadType(false));
    EXPECT_EQ(LoadGeneration(store), 1);
    EXPECT_FALSE(store.ReloadFlag());
    faults.Heal();
    EXPECT_TRUE(store.ReloadFlag());
    EXPECT_TRUE(store.SetTASettingReloadType(false));
    EXPECT_EQ(LoadGeneration(store), 2);
}

TEST_F(StoreFailureTest, PackFileWaitsForAnotherProcessAndReportsWhenItTakesTooLong) {
    Make(1);
    TestStore store(Path());
    SaveGeneration(store, 2);
    SQLite::Database holder(Path().toStdString(), SQLite::OPEN_READWRITE);
    holder.exec("BEGIN EXCLUSIVE");
    store.PackFile();
    EXPECT_EQ(store.TakeError().reason, PackError::InUse);
    EXPECT_GT(faults.Sleeps(), 10);
    EXPECT_EQ(LoadGeneration(store), 2);

    // The question for the flag is asked all the time and does not wait.
    const int sleeps = faults.Sleeps();
    EXPECT_FALSE(store.ReloadFlag());
    EXPECT_EQ(faults.Sleeps(), sleeps);

    faults.SetSleep([&] {
        if (faults.Sleeps() > sleeps + 3) {
            holder.exec("COMMIT");
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
