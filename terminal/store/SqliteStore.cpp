#include "terminal/store/SqliteStore.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <utility>

#include <sqlite3.h>

namespace ta::terminal {

namespace {

std::chrono::nanoseconds MachineTime() {
    return std::chrono::steady_clock::now().time_since_epoch();
}

bool CopyUnlessEmpty(const std::vector<CString>& from, std::vector<CString>& to) {
    if (from.empty()) {
        return false;
    }
    to = from;
    return true;
}

PackError::Reason ReasonFor(int code) {
    switch (code & 0xff) {
        case SQLITE_OK:  // and yet to be reported: the file was replaced
            return PackError::Replaced;
        case SQLITE_SCHEMA:
            return PackError::NewerVersion;
        case SQLITE_FULL:
            return PackError::DiskFull;
        case SQLITE_READONLY:
        case SQLITE_CANTOPEN:
        case SQLITE_PERM:
        case SQLITE_AUTH:
            return PackError::CannotWrite;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return PackError::InUse;
        default:
            return PackError::Other;
    }
}

}  // namespace

QString DefaultStorePath() {
    return QDir(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation))
        .filePath("tadialogs/settings.db");
}

SqliteStore::SqliteStore(MonotonicClock clock)
    : m_clock(clock ? std::move(clock) : MonotonicClock(MachineTime)) {}

SqliteStore::~SqliteStore() {
    SqliteStore::PackFile();
}

OpenResult SqliteStore::Open(const QString& path, const char* vfs) {
    Guarded([&] {
        if (vfs != nullptr) {
            m_vfs = vfs;
        }
        m_store.result.path = path;
        if (path.isEmpty()) {
            m_store.result.reason = "no file name";
            return false;
        }
        m_store = OpenStore(QFileInfo(path).absoluteFilePath(), vfs);
        return true;
    });
    return m_store.result;
}

void SqliteStore::SetPackErrorHandler(std::function<void(const PackError&)> handler) {
    m_onPackError = std::move(handler);
}

void SqliteStore::SetDefaults(std::vector<CString> paramStrings,
                              std::vector<CString> shapeStrings) {
    m_paramDefaults = std::move(paramStrings);
    m_shapeDefaults = std::move(shapeStrings);
}

bool SqliteStore::LoadTAStudyParamDefaultSetting(std::vector<CString>& strings) {
    return Guarded([&] { return CopyUnlessEmpty(m_paramDefaults, strings); });
}

bool SqliteStore::LoadTAStudyShapeDefaultSetting(std::vector<CString>& strings) {
    return Guarded([&] { return CopyUnlessEmpty(m_shapeDefaults, strings); });
}

void SqliteStore::SetViewGroupSource(std::function<ViewGroups(int)> source) {
    m_openViews = std::move(source);
}

bool SqliteStore::GetTAViewGroupSetting(int layout, ViewGroups& views) {
    if (!m_openViews) {
        return SettingRows::GetTAViewGroupSetting(layout, views);
    }
    return Guarded([&] {
        views = m_openViews(layout);
        return true;
    });
}

void SqliteStore::DiscardPending() {
    m_pending.Clear();
    m_reload = true;
}

// ---- The reload flag ----

bool SqliteStore::GetTASettingReloadType(bool& reload) {
    return Guarded([&] {
        if (!m_reload && m_store.file.IsOpen() && IsTimeToLook()) {
            LookForCommit();
        }
        reload = m_reload;
        return true;
    });
}

bool SqliteStore::IsTimeToLook() {
    const std::chrono::nanoseconds now = m_clock();
    const bool quiet = now - m_lastQuestion >= kQuietGap;
    m_lastQuestion = now;
    if (!quiet && now - m_lastLook < kLongestBlind) {
        return false;
    }
    m_lastLook = now;
    return true;
}

void SqliteStore::LookForCommit() {
    if (m_store.file.WasReplaced() && QFileInfo::exists(m_store.result.path)) {
        m_reload = true;
        return;
    }
    int version = 0;
    if (m_store.file.DataVersion(version) != SQLITE_OK || m_seenVersion == version) {
        return;
    }
    // The version also changes when a failed commit of our own is rolled back; the counter is what
    // tells another process's commit.
    std::uint32_t counter = 0;
    if (m_store.file.ReadCounter(counter) == SQLITE_OK) {
        m_seenVersion = version;
        m_reload = counter != m_store.rows.Counter();
    }
}

bool SqliteStore::SetTASettingReloadType(bool reload) {
    m_reload = reload;
    return Guarded([&] {
        if (reload) {
            return m_store.result.state != OpenResult::NewerVersion && m_store.file.IsOpen() &&
                   m_store.file.Touch() == SQLITE_OK;
        }
        if (!m_store.file.IsOpen()) {
            return true;
        }
        const std::uint32_t counter = m_store.rows.Counter();
        const bool refreshed = Refresh();
        if (counter != m_store.rows.Counter()) {
            // Written by position in the list of groups as it was: over another party's list they
            // would fall on other groups.
            m_pending.ClearGroups();
        }
        return refreshed;
    });
}

bool SqliteStore::Refresh() {
    if (m_store.file.WasReplaced()) {
        Reconnect();
    }
    int code = ReadNewest();
    if (IsDamage(code) && m_store.result.state != OpenResult::NewerVersion) {
        ReplaceDamaged();
        code = ReadNewest();
    }
    if (!m_movedTo.isEmpty()) {
        Report(ErrorFor(code));
    }
    if (code != SQLITE_OK) {
        m_seenVersion.reset();  // look again
    }
    return code == SQLITE_OK;
}

int SqliteStore::ReadNewest() {
    const int code = RestoreFile();
    return code == SQLITE_OK ? m_store.file.Read(m_store.rows) : code;
}

// ---- Committing ----

void SqliteStore::PackFile() {
    Guarded([&] {
        if (m_pending.Empty() && !m_fileIsNew) {
            return true;
        }
        const int code = Pack();
        if (code != SQLITE_OK || !m_movedTo.isEmpty()) {
            Report(ErrorFor(code));
        }
        return code == SQLITE_OK;
    });
}

int SqliteStore::Pack() {
    const bool canWrite = m_store.file.IsOpen() && m_store.result.state != OpenResult::ReadOnly;
    if (m_store.complete && (!canWrite || m_store.file.WasReplaced())) {
        Reconnect();
    }
    int code = Commit();
    if (IsDamage(code)) {
        ReplaceDamaged();
        code = Commit();
    }
    return code;
}

int SqliteStore::Commit() {
    const OpenResult::State state = m_store.result.state;
    if (state == OpenResult::ReadOnly || state == OpenResult::NewerVersion) {
        return SQLITE_READONLY;
    }
    StoreFile::Commit commit;
    int code = RestoreFile();
    if (code == SQLITE_OK) {
        code = m_store.file.Write(m_pending, m_store.rows, commit);
    }
    if (code != SQLITE_OK) {
        return code;
    }
    if (commit.changed) {
        m_store.rows = std::move(commit.rows);
        m_reload = m_reload || !commit.knownWasCurrent;
    }
    m_pending.Clear();
    return SQLITE_OK;
}

int SqliteStore::RestoreFile() {
    if (!m_store.file.IsOpen()) {
        return SQLITE_CANTOPEN;
    }
    const int code = m_fileIsNew ? m_store.file.Restore(m_store.rows) : SQLITE_OK;
    m_fileIsNew = m_fileIsNew && code != SQLITE_OK;
    return code;
}

void SqliteStore::Reconnect() {
    Adopt(OpenStore(m_store.result.path, Vfs()));
}

void SqliteStore::ReplaceDamaged() {
    Adopt(ReplaceDamagedStore(m_store.result.path, Vfs(), m_store.file));
}

void SqliteStore::Adopt(StoreOpening opening) {
    const OpenResult::State state = opening.result.state;
    m_fileIsNew = state == OpenResult::Created || state == OpenResult::MovedAside;
    m_movedTo = opening.result.movedTo;
    m_seenVersion.reset();
    // What was read once stays in memory whatever has become of the file.
    const std::uint32_t counter = opening.rows.Counter();
    opening.rows = std::move(m_store.rows);
    if (m_fileIsNew) {
        opening.rows.SetCounter(counter);
    }
    opening.complete = true;
    m_store = std::move(opening);
}

PackError SqliteStore::ErrorFor(int code) {
    PackError error{ReasonFor(code), m_store.result.path, std::exchange(m_movedTo, {}),
                    sqlite3_errstr(code)};
    if (m_store.result.state == OpenResult::NewerVersion) {
        error.reason = PackError::NewerVersion;
    } else if (m_store.result.state == OpenResult::Failed) {
        error.reason = PackError::NotOpen;
        error.detail = m_store.result.reason;
    }
    return error;
}

void SqliteStore::Report(const PackError& error) const {
    if (m_onPackError) {
        m_onPackError(error);
    }
}

// ---- Rows ----

std::optional<std::string_view> SqliteStore::FindRow(const SettingKey& key) const {
    return m_pending.Find(key, m_store.rows);
}

void SqliteStore::PutRow(const SettingKey& key, std::string_view value) {
    m_pending.Put(key, value);
}

void SqliteStore::RemoveRow(const SettingKey& key) {
    m_pending.Remove(key);
}

void SqliteStore::RemoveClassRows(const CString& chartClass) {
    m_pending.RemoveClass(chartClass);
}

void SqliteStore::ForEachRow(const std::function<void(const SettingRow&)>& visit) const {
    m_pending.ForEachOver(m_store.rows, visit);
}

}  // namespace ta::terminal
