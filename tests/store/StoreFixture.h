#pragma once

#include "terminal/store/SqliteStore.h"
#include "tests/store/FaultVfs.h"
#include "tests/store/Generation.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <SQLiteCpp/Database.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ta::test {

using terminal::OpenResult;
using terminal::PackError;
using terminal::SqliteStore;

/// A store with the errors that it reported, and a time of its own.
struct TestStore : SqliteStore {
    explicit TestStore(const QString& path, const char* vfs = FaultVfs::Name())
        : SqliteStore([this] { return now; }) {
        SetPackErrorHandler([this](const PackError& error) { errors.push_back(error); });
        opened = Open(path, vfs);
    }
    /// The destructor commits, and may report, while the errors are gone.
    ~TestStore() override { SetPackErrorHandler({}); }

    /// The flag after a pause, as between two actions of the user.
    bool ReloadFlag() {
        now += kQuietGap;
        return ReloadFlagAtOnce();
    }
    bool ReloadFlagAtOnce() {
        bool reload = false;
        EXPECT_TRUE(GetTASettingReloadType(reload));
        return reload;
    }
    std::optional<int> MaxCount() {
        int count = 0;
        return GetTAGroupMaxCount(count) ? std::optional(count) : std::nullopt;
    }
    /// The one error since the last call.
    PackError TakeError() {
        EXPECT_EQ(errors.size(), 1u);
        const PackError error = errors.empty() ? PackError{} : errors.back();
        errors.clear();
        return error;
    }

    std::chrono::nanoseconds now{std::chrono::hours(1)};
    OpenResult opened;
    std::vector<PackError> errors;
};

class StoreTest : public testing::Test {
protected:
    QString Path(const QString& name = "settings.db") const { return folder.filePath(name); }
    QStringList Files() const { return QDir(folder.path()).entryList(QDir::Files, QDir::Name); }

    /// Makes a store that holds this state.
    void Make(int generation) {
        TestStore store(Path());
        SaveGeneration(store, generation);
        store.PackFile();
        ASSERT_TRUE(store.errors.empty());
    }
    /// The state that a process finds which opens the store now.
    std::optional<int> Stored() const {
        TestStore store(Path());
        EXPECT_EQ(store.opened.state, OpenResult::Opened);
        return LoadGeneration(store);
    }

    static QByteArray Contents(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll();
    }
    static void Fill(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    /// Runs statements on the file, past the store.
    static void RunSql(const QString& path, const std::string& sql) {
        SQLite::Database(path.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE)
            .exec(sql);
    }

    FaultVfs faults;
    QTemporaryDir folder;
};

}  // namespace ta::test
