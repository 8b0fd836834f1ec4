#pragma once

#include "terminal/store/OpenResult.h"
#include "terminal/store/PendingWrites.h"
#include "terminal/store/SettingRows.h"
#include "terminal/store/StoreOpening.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace ta::terminal {

/// Where the user's settings are kept unless the command line names another file:
/// "tadialogs/settings.db" in the user's configuration folder.
QString DefaultStorePath();

/// The configuration store in one SQLite file.
///
/// Writes are pending in memory and overlaid on this process's loads. PackFile writes them in one
/// transaction: a process that is killed leaves the state before or after it. Loads answer from
/// the state that was committed when the reload flag was last lowered, so that a sequence of loads
/// never mixes two states.
///
/// One instance for each process and file, used on one thread. No exception leaves it; when the
/// disk fails, loads answer from memory.
class SqliteStore : public SettingRows {
public:
    using MonotonicClock = std::function<std::chrono::nanoseconds()>;

    /// The clock says when to look at the file again; empty for the machine's.
    explicit SqliteStore(MonotonicClock clock = {});
    /// Commits what is pending.
    ~SqliteStore() override;
    SqliteStore(const SqliteStore&) = delete;
    SqliteStore& operator=(const SqliteStore&) = delete;

    /// Opens the store, or begins one, making its folder too. Once, before anything else. `vfs`
    /// names the SQLite file layer; null for the machine's.
    OpenResult Open(const QString& path, const char* vfs = nullptr);

    /// Called once for each PackFile that fails, and when a damaged file was replaced. The target
    /// must live as long as the store, whose destructor commits too.
    void SetPackErrorHandler(std::function<void(const PackError&)> handler);

    /// The strings that the Load...DefaultSetting operations answer with; they are not stored.
    void SetDefaults(std::vector<CString> paramStrings, std::vector<CString> shapeStrings);

    /// Who knows the open windows that use the group of a number; they are given in the place of
    /// the stored views. Empty for the stored ones.
    void SetViewGroupSource(std::function<ViewGroups(int uniNum)> source);
    bool GetTAViewGroupSetting(int layout, ViewGroups& views) override;

    /// Drops the pending writes and raises the reload flag of this process.
    void DiscardPending();

    /// Never touches the file in the middle of a run of calls: it looks at it when kQuietGap has
    /// passed since the last question, or kLongestBlind since the last look. Another process's
    /// commit is thus seen by the first question after a pause, and an operation that asks many
    /// times is not interrupted by one halfway.
    bool GetTASettingReloadType(bool& reload) override;
    /// true: raised for every process on the store at once, without PackFile. false: lowered for
    /// this process, whose loads then answer from the newest committed state under its own pending
    /// writes; those of groups are dropped when another party has committed, since they name groups
    /// by position. Returns false when the file could not be read (loads then answer as before) or
    /// written (the flag of this process is raised all the same).
    bool SetTASettingReloadType(bool reload) override;

    bool LoadTAStudyParamDefaultSetting(std::vector<CString>& strings) override;
    bool LoadTAStudyShapeDefaultSetting(std::vector<CString>& strings) override;

    /// Durable when it returns. Does nothing when nothing is pending. Of two processes that commit
    /// at once, one waits; for each setting, the later one's value is stored.
    void PackFile() override;

    static constexpr std::chrono::milliseconds kQuietGap{2};
    static constexpr std::chrono::milliseconds kLongestBlind{250};

private:
    std::optional<std::string_view> FindRow(const SettingKey& key) const override;
    void PutRow(const SettingKey& key, std::string_view value) override;
    void RemoveRow(const SettingKey& key) override;
    void RemoveClassRows(const CString& chartClass) override;
    void ForEachRow(const std::function<void(const SettingRow&)>& visit) const override;

    int Pack();
    int Commit();
    /// Gives a file that took the place of a lost one what the lost one held.
    int RestoreFile();
    bool Refresh();
    int ReadNewest();
    void Reconnect();
    void ReplaceDamaged();
    void Adopt(StoreOpening opening);
    bool IsTimeToLook();
    void LookForCommit();
    PackError ErrorFor(int code);
    void Report(const PackError& error) const;
    const char* Vfs() const { return m_vfs ? m_vfs->c_str() : nullptr; }

    MonotonicClock m_clock;
    std::function<void(const PackError&)> m_onPackError;
    std::function<ViewGroups(int)> m_openViews;
    std::vector<CString> m_paramDefaults;
    std::vector<CString> m_shapeDefaults;

    std::optional<std::string> m_vfs;
    StoreOpening m_store;  ///< its rows are the committed state that loads answer from
    PendingWrites m_pending;
    bool m_fileIsNew = false;  ///< it took the place of a lost one and lacks its rows
    QString m_movedTo;  ///< where a file went that was replaced after Open; until it is reported

    bool m_reload = false;
    std::chrono::nanoseconds m_lastQuestion{};
    std::chrono::nanoseconds m_lastLook{};
    std::optional<int> m_seenVersion;
};

}  // namespace ta::terminal
