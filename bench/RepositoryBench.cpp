// The settings repository on its store, beside plain SQLite on the same rows.

#include "bench/BenchGroups.h"
#include "bench/RawRows.h"
#include "bench/SideBySide.h"
#include "platform/SyncInfo.h"
#include "settings/TaSettingHandle.h"
#include "terminal/store/SqliteStore.h"
#include "terminal/studies/TerminalChartModule.h"
#include "terminal/studies/TerminalDrawInfo.h"

#include <fmt/format.h>

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using ta::bench::RawDatabase;
using ta::bench::RawRow;
using ta::terminal::SqliteStore;
using ta::terminal::TerminalDrawInfo;

constexpr int kGroups = 50;
constexpr int kManyLines = 100'000;
constexpr int kLineSymbols = 1'000;
constexpr auto kTrendLineRows = static_cast<std::int64_t>(ta::terminal::SettingKind::TrendLines);

}  // namespace

/// Makes repositories of the bench's own, so that a start of the program can be measured again.
struct TaSettingHandleTestAccess {
    static std::unique_ptr<CTaSettingHandle> Make() {
        return std::unique_ptr<CTaSettingHandle>(new CTaSettingHandle);
    }
};

namespace {

/// A repository with groups on a store of the bench's own.
class Bench {
public:
    explicit Bench(int groups) {
        Start();
        FillGroups(groups);
    }
    ~Bench() { Stop(); }
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    SqliteStore& Store() { return *m_store; }
    CTaSettingHandle& Repository() { return *m_repository; }
    QString Path() const { return m_folder.filePath("settings.db"); }

    /// As at the start of the program: opens the file and loads.
    void Start() {
        m_store = std::make_unique<SqliteStore>();
        m_store->Open(Path());
        m_store->SetDefaults(m_defaultParams, m_defaultShapes);
        ta::Services services;
        services.configStore = m_store.get();
        services.chartModule = &m_module;
        CSyncInfo::GetSettingCFG().SetServices(services);
        m_repository = TaSettingHandleTestAccess::Make();
    }
    void Stop() {
        m_repository.reset();
        CSyncInfo::GetSettingCFG().SetServices({});
        m_store.reset();
    }

    /// Changes a setting of every kind in every group, so that no row stays as it was.
    void Change(int turn) {
        CTaSettingHandle& repository = Repository();
        std::vector<CString> names;
        repository.GetGroupNameList(names);
        for (const CString& name : names) {
            StudyLists lists(kPaneCount, std::vector<StudyType>(kSlotsPerPane, 4 + turn % 2));
            repository.SetStudyListByGroupName(name, lists);
            repository.SetStudyParamSettingByGroupName(name, m_params[turn % 2]);
            repository.SetStudyShapeSettingByGroupName(name, m_shapes[turn % 2]);
        }
    }

private:
    void FillGroups(int count) {
        m_store->SetTAGroupMaxCount(kGroups);
        for (int variant : {0, 1}) {
            m_params[variant] = m_defaultParams;
            m_shapes[variant] = m_defaultShapes;
            m_params[variant].push_back(fmt::format("900={}", variant));
            m_shapes[variant].push_back(fmt::format("900={}", variant));
        }
        for (const auto& group : ta::bench::MakeGroups(count, 0)) {
            Repository().AddGroupSetting(group.name);
            Repository().SetStudyListByGroupName(group.name, group.studies);
        }
        Change(0);
        Repository().SaveAllGroupSetting();
    }

    QTemporaryDir m_folder;
    ta::terminal::TerminalChartModule m_module;
    const std::vector<CString> m_defaultParams = TerminalDrawInfo::DefaultParamStrings();
    const std::vector<CString> m_defaultShapes = TerminalDrawInfo::DefaultShapeStrings();
    std::unique_ptr<SqliteStore> m_store;
    std::unique_ptr<CTaSettingHandle> m_repository;
    std::vector<CString> m_params[2];
    std::vector<CString> m_shapes[2];
};

/// Copies the bench's store file, for a peer that writes to it.
QString CopyFor(Bench& bench, const QTemporaryDir& folder) {
    const QString path = folder.filePath("peer.db");
    QFile::copy(bench.Path(), path);
    return path;
}

// SaveAllGroupSetting of 50 full groups, beside one transaction of as many rows with the same
// values. The peer writes all rows; the store may leave those out that did not change.
void SaveAllGroups(benchmark::State& state) {
    Bench bench(kGroups);
    const QTemporaryDir folder;
    std::vector<RawRow> rows[2];
    for (int turn : {1, 0}) {
        bench.Change(turn);
        bench.Repository().SaveAllGroupSetting();
        rows[turn] = ta::bench::ReadRows(bench.Path());
    }
    RawDatabase database(CopyFor(bench, folder));
    database.Run("PRAGMA synchronous = EXTRA");
    bool good = true;
    int turn = 0;
    ta::bench::RunSideBySide(
        state, [&] { bench.Change(++turn); }, [&] { bench.Repository().SaveAllGroupSetting(); },
        [&] { good = database.Write(rows[turn % 2]) && good; });
    state.counters["rows"] = static_cast<double>(rows[0].size());
    if (!good || ta::bench::ReadRows(bench.Path()).size() != rows[0].size()) {
        state.SkipWithError("not every row was written");
    }
}
BENCHMARK(SaveAllGroups)->Iterations(60)->Unit(benchmark::kMicrosecond);

// Opening the store and loading the repository from it, beside opening the file and one SELECT that
// looks at every row.
void LoadAllGroups(benchmark::State& state) {
    Bench bench(kGroups);
    int seen = 0;
    ta::bench::RunSideBySide(
        state, [&] { bench.Stop(); }, [&] { bench.Start(); },
        [&] { seen = RawDatabase(bench.Path()).Select(ta::bench::LookAtRow); });
    std::vector<CString> names;
    if (bench.Repository().GetGroupNameList(names) < kGroups || seen < kGroups * 26) {
        state.SkipWithError("not every group was loaded");
    }
}
BENCHMARK(LoadAllGroups)->Unit(benchmark::kMicrosecond);

CString LineOf(int i) {
    return fmt::format("2021/ff0000/1/0/0/{},{};{},{}", 10000 + i, 100.5 + i, 10100 + i, 99.5 + i);
}

std::vector<CString> MakeLines(int count) {
    std::vector<CString> lines;
    for (int i = 0; i < count; ++i) {
        lines.push_back(LineOf(i));
    }
    return lines;
}

// Adding 100,000 lines under one type key beside adding 10,000: in time that grows with the number
// the ratio is 10. Neither counts the making of the strings, nor the release of the lines.
void AddLines(benchmark::State& state) {
    Bench bench(1);
    CTaSettingHandle& repository = bench.Repository();
    const std::vector<CString> many = MakeLines(kManyLines);
    const std::vector<CString> few = MakeLines(kManyLines / 10);
    const auto add = [&](const CString& symbolKey, const std::vector<CString>& lines) {
        for (const CString& line : lines) {
            repository.AddTrendLineData(kTechViewClass, symbolKey, "price", 0, line, 0);
        }
    };
    ta::bench::RunSideBySide(
        state, [&] { repository.ReleaseTrendLine(kTechViewClass); }, [&] { add("02/MANY", many); },
        [&] { add("02/FEW", few); });
    if (repository.GetTrendLineCount(kTechViewClass) != many.size() + few.size()) {
        state.SkipWithError("not every line was added");
    }
}
BENCHMARK(AddLines)->Iterations(31)->Unit(benchmark::kMillisecond);

void AddManyLines(CTaSettingHandle& repository, int shift) {
    for (int i = 0; i < kManyLines; ++i) {
        repository.AddTrendLineData(kTechViewClass, fmt::format("02/S{:04}", i % kLineSymbols),
                                    "price", 0, LineOf(i + shift), 0);
    }
}

// 100,000 lines over 1,000 symbols: saving and loading beside plain SQLite on the same rows.
void SaveManyLines(benchmark::State& state) {
    Bench bench(1);
    const QTemporaryDir folder;
    std::vector<RawRow> rows[2];
    int turn = 0;
    const auto change = [&] {
        ++turn;
        bench.Repository().ReleaseTrendLine(kTechViewClass);
        AddManyLines(bench.Repository(), turn % 2);
    };
    for (int i = 0; i < 2; ++i) {
        change();
        bench.Repository().SaveAllGroupSetting();
        rows[turn % 2] = ta::bench::ReadRows(bench.Path());
    }
    RawDatabase database(CopyFor(bench, folder));
    database.Run("PRAGMA synchronous = EXTRA");
    bool good = true;
    ta::bench::RunSideBySide(
        state, change, [&] { bench.Repository().SaveAllGroupSetting(); },
        [&] { good = database.Write(rows[turn % 2]) && good; });
    if (!good || bench.Repository().GetTrendLineCount(kTechViewClass) != kManyLines) {
        state.SkipWithError("not every line was written");
    }
}
BENCHMARK(SaveManyLines)->Iterations(10)->Unit(benchmark::kMillisecond);

void LoadManyLines(benchmark::State& state) {
    Bench bench(1);
    AddManyLines(bench.Repository(), 0);
    bench.Repository().SaveAllGroupSetting();
    int seen = 0;
    ta::bench::RunSideBySide(
        state, [&] { bench.Stop(); }, [&] { bench.Start(); },
        [&] { seen = RawDatabase(bench.Path()).Select(ta::bench::LookAtRow); });
    if (bench.Repository().GetTrendLineCount(kTechViewClass) != kManyLines || seen < kLineSymbols) {
        state.SkipWithError("not every line was loaded");
    }
}
BENCHMARK(LoadManyLines)->Iterations(31)->Unit(benchmark::kMillisecond);

// The same beside a peer that does not only look at the rows, but has each line as a string of its
// own in the end, as the repository has.
void LoadManyLinesAsStrings(benchmark::State& state) {
    Bench bench(1);
    AddManyLines(bench.Repository(), 0);
    bench.Repository().SaveAllGroupSetting();
    std::vector<std::vector<std::string>> lines;
    const auto prepare = [&] {
        bench.Stop();
        lines.clear();
    };
    const auto takeLines = [&](sqlite3_stmt* row) {
        if (sqlite3_column_int64(row, 0) == kTrendLineRows) {
            ta::bench::TakeLines(row, lines);
        }
    };
    ta::bench::RunSideBySide(
        state, prepare, [&] { bench.Start(); },
        [&] { RawDatabase(bench.Path()).Select(takeLines); });
    if (lines.size() != kLineSymbols || lines.front().size() != 1 + kManyLines / kLineSymbols) {
        state.SkipWithError("the peer has other lines");
    }
}
BENCHMARK(LoadManyLinesAsStrings)->Iterations(31)->Unit(benchmark::kMillisecond);

void CountManyLines(benchmark::State& state) {
    Bench bench(1);
    AddManyLines(bench.Repository(), 0);
    for ([[maybe_unused]] auto iteration : state) {
        benchmark::DoNotOptimize(bench.Repository().GetTrendLineCount(kTechViewClass));
    }
}
BENCHMARK(CountManyLines)->Unit(benchmark::kMicrosecond);

/// A view that asks for what it would draw.
class AskingView : public CView {
public:
    explicit AskingView(CTaSettingHandle& repository) : m_repository(repository) {
        m_repository.AddTechViewPtr(this);
    }
    ~AskingView() override { m_repository.RemoveTechViewPtr(this); }

    std::intptr_t WindowProc(unsigned, std::uintptr_t wParam, std::intptr_t) override {
        StudyLists lists;
        return m_repository.GetStudyListByGroupName(
            m_repository.GetGroupNameByIndex(static_cast<unsigned>(wParam)), lists);
    }

private:
    CTaSettingHandle& m_repository;
};

// A reload of 50 groups and 10,000 lines with ten registered views, which ask back at each message.
void ReloadWithViews(benchmark::State& state) {
    Bench bench(kGroups);
    for (int i = 0; i < 10'000; ++i) {
        bench.Repository().AddTrendLineData(kTechViewClass, fmt::format("02/S{:03}", i % 100),
                                            "price", 0, LineOf(i), 0);
    }
    bench.Repository().SaveAllGroupSetting();
    std::vector<std::unique_ptr<AskingView>> views;
    for (int i = 0; i < 10; ++i) {
        views.push_back(std::make_unique<AskingView>(bench.Repository()));
    }
    for ([[maybe_unused]] auto iteration : state) {
        bench.Store().DiscardPending();
        bench.Repository().ReloadTASetting();
    }
}
BENCHMARK(ReloadWithViews)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
