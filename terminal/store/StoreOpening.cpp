#include "terminal/store/StoreOpening.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>

#include <optional>

#include <sqlite3.h>

namespace ta::terminal {

namespace {

constexpr int kLockWait = 5000;  // milliseconds

/// SQLite follows links, and keeps its journal beside the file that a link leads to.
QString RealPath(const QString& path) {
    const QString real = QFileInfo(path).canonicalFilePath();
    return real.isEmpty() ? path : real;
}

void SetFailed(StoreOpening& opening, int code) {
    opening.result.state = OpenResult::Failed;
    opening.result.reason = QString::fromUtf8(sqlite3_errstr(code));
    opening.file.Close();
}

/// Begins the store in the empty file that is open.
void Begin(StoreOpening& opening) {
    opening.complete = true;
    if (opening.file.IsWriteProtected()) {
        opening.result.state = OpenResult::ReadOnly;
        opening.file.Close();
        return;
    }
    int code = opening.file.Create();
    if (code == SQLITE_OK) {
        code = opening.file.Read(opening.rows);
    }
    // Another process may have been first.
    opening.result.state = opening.rows.Rows().empty() ? OpenResult::Created : OpenResult::Opened;
    if (code != SQLITE_OK) {
        SetFailed(opening, code);
    }
}

/// Nothing when the file is damaged or foreign.
std::optional<StoreOpening> TryToOpen(const QString& path, const char* vfs) {
    StoreOpening opening;
    opening.result.path = path;
    FileContent content = FileContent::Empty;
    int code = opening.file.Open(path, vfs, content);
    if (code == SQLITE_OK && content == FileContent::Empty) {
        Begin(opening);
        return opening;
    }
    if (code == SQLITE_OK && content == FileContent::Newer) {
        opening.result.state = OpenResult::NewerVersion;
        opening.file.Read(opening.rows);  // as far as it is laid out as we know it
        return opening;
    }
    if (code == SQLITE_OK && content == FileContent::Ours) {
        code = opening.file.Read(opening.rows);
    }
    if (IsDamage(code) || content == FileContent::Foreign) {
        return std::nullopt;
    }
    if (code != SQLITE_OK) {
        SetFailed(opening, code);
        opening.complete = !QFileInfo::exists(path);
        if (opening.complete && (code & 0xff) == SQLITE_CANTOPEN) {
            opening.result.state = OpenResult::ReadOnly;
        }
        return opening;
    }
    opening.complete = true;
    opening.result.state =
        opening.file.IsWriteProtected() ? OpenResult::ReadOnly : OpenResult::Opened;
    return opening;
}

/// For the process that holds the lock.
StoreOpening Replace(const QString& path, const char* vfs) {
    const QString movedTo = MoveAside(RealPath(path), "damaged");
    if (movedTo.isEmpty()) {
        StoreOpening opening;
        opening.result.path = path;
        SetFailed(opening, SQLITE_CORRUPT);
        return opening;
    }
    std::optional<StoreOpening> opening = TryToOpen(path, vfs);
    if (!opening) {  // something damaged came in its place meanwhile
        opening.emplace();
        SetFailed(*opening, SQLITE_CORRUPT);
    }
    if (opening->result.state == OpenResult::Created) {
        opening->result.state = OpenResult::MovedAside;
    }
    opening->result.path = path;
    opening->result.movedTo = movedTo;
    return std::move(*opening);
}

}  // namespace

StoreOpening OpenStore(const QString& path, const char* vfs) {
    QDir().mkpath(QFileInfo(path).path());
    if (std::optional<StoreOpening> opening = TryToOpen(path, vfs)) {
        return std::move(*opening);
    }
    // Of several processes that find the file damaged, one replaces it.
    QLockFile lock(RealPath(path) + ".lock");
    lock.tryLock(kLockWait);
    if (std::optional<StoreOpening> opening = TryToOpen(path, vfs)) {
        return std::move(*opening);
    }
    return Replace(path, vfs);
}

StoreOpening ReplaceDamagedStore(const QString& path, const char* vfs, StoreFile& damaged) {
    QLockFile lock(RealPath(path) + ".lock");
    lock.tryLock(kLockWait);
    const bool replaced = damaged.WasReplaced();
    damaged.Close();
    if (!replaced) {
        return Replace(path, vfs);
    }
    lock.unlock();
    return OpenStore(path, vfs);
}

}  // namespace ta::terminal
