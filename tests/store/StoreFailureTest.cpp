#include "terminal/lang/Language.h"
#include "tests/store/StoreFixture.h"

#include <csignal>

#include <sqlite3.h>

#if defined(Q_OS_UNIX)
#include <sys/resource.h>
#include <unistd.h>
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

TEST_F(StoreFailureTest, PermissionsTakenFromTheFileAreSeen) {
    Make(1);
    QFile::setPermissions(Path(), QFile::ReadOwner);
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner);
    if (access(folder.path().toUtf8().constData(), W_OK) == 0) {
        QFile::setPermissions(folder.path(),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        GTEST_SKIP() << "this user may write everywhere";
    }
    TestStore store(Path(), nullptr);
    EXPECT_EQ(store.opened.state, OpenResult::ReadOnly);
    EXPECT_EQ(LoadGeneration(store), 1);
    SaveGeneration(store, 2);
    store.PackFile();
    EXPECT_EQ(store.TakeError().reason, PackError::CannotWrite);
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QFile::setPermissions(Path(), QFile::ReadOwner | QFile::WriteOwner);
    store.PackFile();
    EXPECT_TRUE(store.errors.empty());
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

TEST_F(StoreFailureTest, AStoreThatBecomesReadOnlyWhileOpenIsReported) {
    Make(1);
    TestStore store(Path());
    SaveGeneration(store, 2);
    faults.SetWriteProtected(true);
    store.PackFile();
    EXPECT_EQ(store.TakeError().reason, PackError::CannotWrite);
    faults.SetWriteProtected(false);
    EXPECT_EQ(Stored(), 1);
    store.PackFile();
    EXPECT_TRUE(store.errors.empty());
    EXPECT_EQ(Stored(), 2);
}

TEST_F(StoreFailureTest, AFolderThatTakesNoFilesIsReadOnlyUntilItDoes) {
    faults.SetWriteProtected(true);
    TestStore store(Path());
    EXPECT_EQ(store.opened.state, OpenResult::ReadOnly);
    SaveGeneration(store, 1);
    store.PackFile();
    EXPECT_EQ(store.TakeError().reason, PackError::CannotWrite);
    faults.SetWriteProtected(false);
    store.PackFile();
    EXPECT_TRUE(store.errors.empty());
    EXPECT_EQ(Stored(), 1);
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

TEST_F(StoreFailureTest, NoFileNameOrAFolderAsTheFileFails) {
    ASSERT_TRUE(QDir(folder.path()).mkdir("settings.db"));
    for (const QString& path : {Path(), QString()}) {
        TestStore store(path);
        EXPECT_EQ(store.opened.state, OpenResult::Failed);
        store.SaveTAGroupUniNum(0, 1);
        store.PackFile();
        EXPECT_EQ(store.TakeError().reason, PackError::NotOpen);
    }
    EXPECT_TRUE(QFileInfo(Path()).isDir());
}

TEST_F(StoreFailureTest, MissingFoldersAreMade) {
    TestStore store(Path("a/b/settings.db"));
    EXPECT_EQ(store.opened.state, OpenResult::Created);
    EXPECT_TRUE(QFileInfo::exists(Path("a/b/settings.db")));
}

TEST_F(StoreFailureTest, LoadsKeepTheirStateWhileTheDiskCannotBeRead) {
    Make(1);
    FakeTime time;
    TestStore store(Path(), FaultVfs::Name(), time.Clock());
    {
        TestStore other(Path());
        SaveGeneration(other, 2);
    }
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

namespace {

void MakeNewer(const QString& path, const char* alsoRun = "") {
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &handle), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(handle, "PRAGMA user_version = 2", nullptr, nullptr, nullptr),
              SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(handle, alsoRun, nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(handle);
}

}  // namespace

TEST_F(StoreFailureTest, ANewerStoreIsReadAndNeverWritten) {
    for (const bool otherLayout : {false, true}) {
        QFile::remove(Path());
        Make(1);
        MakeNewer(Path(), otherLayout ? "ALTER TABLE settings RENAME TO things" : "");
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
    MakeNewer(Path());
    const QByteArray before = Contents(Path());
    store.PackFile();
    EXPECT_EQ(store.TakeError().reason, PackError::NewerVersion);
    EXPECT_EQ(LoadGeneration(store), 2);
    EXPECT_EQ(Contents(Path()), before);
}

TEST_F(StoreFailureTest, EveryResultHasItsTextInBothLanguages) {
    terminal::Language language;
    OpenResult opened{OpenResult::Opened, "/p/settings.db", "/p/moved", "because"};
    PackError error{PackError::Other, "/p/settings.db", "/p/moved", "because"};
    QStringList texts;
    for (const auto id : {terminal::Language::TraditionalChinese, terminal::Language::English}) {
        language.Select(id);
        for (const auto state : {OpenResult::Opened, OpenResult::Created}) {
            opened.state = state;
            EXPECT_TRUE(OpenMessage(opened).isEmpty());
        }
        for (const auto state : {OpenResult::MovedAside, OpenResult::NewerVersion,
                                 OpenResult::ReadOnly, OpenResult::Failed}) {
            opened.state = state;
            texts << OpenMessage(opened);
            EXPECT_EQ(texts.back().contains("/p/moved"),
                      state == OpenResult::MovedAside || state == OpenResult::Failed);
        }
        for (int reason = PackError::DiskFull; reason <= PackError::Other; ++reason) {
            error.reason = static_cast<PackError::Reason>(reason);
            texts << PackErrorMessage(error);
        }
    }
    for (const QString& text : texts) {
        EXPECT_TRUE(text.contains("/p/settings.db")) << text.toStdString();
        EXPECT_FALSE(text.contains("IDS_")) << text.toStdString();
        EXPECT_FALSE(text.contains('%')) << text.toStdString();
    }
    EXPECT_EQ(texts.removeDuplicates(), 0);
}

}  // namespace ta::test
