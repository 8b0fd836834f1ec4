// The settings store beside plain SQLite: the same rows, the same durability, the same disk.

#include "bench/BenchGroups.h"
#include "bench/RawRows.h"
#include "bench/SideBySide.h"
#include "terminal/store/SqliteStore.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <vector>

namespace {

using ta::bench::BenchGroup;
using ta::bench::RawDatabase;
using ta::bench::RawRow;
using ta::terminal::SqliteStore;

constexpr int kGroups = 50;

/// A store with 50 groups at `path`.
void MakeStore(const QString& path, int variant) {
    SqliteStore store;
    store.Open(path);
    SaveGroups(store, ta::bench::MakeGroups(kGroups, variant));
}

// 50 full groups, every value another one each time: pending in the store and packed, beside one
// transaction of the same rows with one prepared statement.
void SaveFiftyGroups(benchmark::State& state) {
    const QTemporaryDir folder;
    const QString oursPath = folder.filePath("ours.db");
    const QString peerPath = folder.filePath("peer.db");
    std::vector<BenchGroup> groups[2];
    std::vector<RawRow> rows[2];
    for (int variant : {0, 1}) {
        groups[variant] = ta::bench::MakeGroups(kGroups, variant);
        MakeStore(peerPath, variant);
        rows[variant] = ta::bench::ReadRows(peerPath);
    }
    SqliteStore store;
    bool good = true;
    store.SetPackErrorHandler([&](const auto&) { good = false; });
    store.Open(oursPath);
    RawDatabase database(peerPath);
    database.Run("PRAGMA synchronous = EXTRA");
    std::size_t turn = 0;
    ta::bench::RunSideBySide(
        state,
        [&] {
            SaveGroups(store, groups[turn % 2]);
            store.PackFile();
        },
        [&] { good = database.Write(rows[turn++ % 2]) && good; });
    if (!good || rows[0].size() != ta::bench::RowCount(kGroups) + 1) {
        state.SkipWithError("not every row was written");
    }
}
BENCHMARK(SaveFiftyGroups)->Iterations(60)->Unit(benchmark::kMicrosecond);

// Opening the store and every load of 50 groups, beside opening the file and one SELECT that looks
// at every row.
void LoadFiftyGroups(benchmark::State& state) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("settings.db");
    MakeStore(path, 0);
    int found = 0;
    int seen = 0;
    ta::bench::RunSideBySide(
        state,
        [&] {
            SqliteStore store;
            store.Open(path);
            found = ta::bench::LoadGroups(store);
        },
        [&] { seen = RawDatabase(path).Select(ta::bench::LookAtRow); });
    if (found != ta::bench::RowCount(kGroups) || seen != found + 1) {
        state.SkipWithError("not every row was found");
    }
}
BENCHMARK(LoadFiftyGroups)->Unit(benchmark::kMicrosecond);

// The question that every public query of the repository asks.
void AskReloadFlag(benchmark::State& state) {
    const QTemporaryDir folder;
    SqliteStore store;
    store.Open(folder.filePath("settings.db"));
    for ([[maybe_unused]] auto iteration : state) {
        bool reload = false;
        store.GetTASettingReloadType(reload);
        benchmark::DoNotOptimize(reload);
    }
}
BENCHMARK(AskReloadFlag);

}  // namespace

BENCHMARK_MAIN();
