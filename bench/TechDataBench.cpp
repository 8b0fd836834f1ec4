// The technical data viewer at 10,000, 100,000 and 1,000,000 rows of a date and six values: one
// tick of the fill, the memory over the records, files, the clipboard, opening. Beside each the
// peer that does the same with the toolkit's or the C library's means.

#include "bench/SideBySide.h"
#include "dialogs/MXTechDataDlg.h"
#include "dialogs/TechDataWriter.h"
#include "platform/DayNumber.h"
#include "platform/SyncInfo.h"
#include "platform/ui/FileAccess.h"
#include "platform/ui/Timers.h"
#include "terminal/quotes/TerminalNumberDisplay.h"
#include "tests/support/MemoryQuotes.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QMimeData>
#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <malloc.h>
#include <unistd.h>

namespace {

using namespace ta::techdata;

constexpr int kValues = 6;
constexpr unsigned char kMarket = 'm';
constexpr const char* kSymbol = "SXF";

/// The fill is driven by calls of ShowData, not by the clock.
class NoTimers final : public ta::ui::Timers {
public:
    void Start(QObject&, int, int, std::function<void()>) override {}
    void Stop(QObject&, int) override {}
};

/// What the library is given; lives to the end of the process.
struct World {
    ta::test::MemoryQuotes quotes;
    ta::terminal::TerminalNumberDisplay display;
    NoTimers timers;

    World() {
        quotes.language["IDC_TECHVIEW-STRING_TECHDATA_DEAL_VOL"] = "Volume";
        quotes.itemData[{kMarket, kSymbol}][ta::kItemPriceStepCode] = {"25", 25};
        BKQuoteInterface::SetBKInterface(&quotes);
        ta::Services services;
        services.numberDisplay = &display;
        CSyncInfo::GetSettingCFG().SetServices(services);
        ta::ui::SetTimers(&timers);
    }
};

Headers MakeHeaders() {
    Headers headers{{"Date", 0, 0, 0}};
    for (const char* name : {"Open", "High", "Low", "Close", "Volume", "MA20"}) {
        headers.push_back({name, 0, 0, 12});
    }
    return headers;
}

Records MakeRecords(std::size_t count) {
    Records records;
    records.reserve(count);
    for (std::size_t row = 0; row < count; ++row) {
        const double price = 10000 + static_cast<double>(row * 7919 % 100'000) / 100;
        records.push_back({static_cast<double>(row % 20'000),
                           {price, price + 1.25, price - 1.5, price + 0.75,
                            static_cast<double>(row * 31 % 1'000'000), price / 3}});
    }
    return records;
}

/// The list when it is full, without its window.
struct Full {
    Headers headers = MakeHeaders();
    Records records;
    TechDataTable table{headers, records};
    CellTexts cells{kMarket, kSymbol, kDailyData};

    explicit Full(std::size_t rows) : records(MakeRecords(rows)) { table.Grow(table.Missing()); }

    TableWriter Writer(const TextForm& form) const {
        return {table, cells, form, "Title", AllColumns(headers), {{0, records.size()}}};
    }
};

/// One line as a plain program prints it; its length.
int PrintLine(char* line, std::size_t size, const OneRecord& record, char separator) {
    const ta::CalendarDate date = ta::DateFromDayNumber(static_cast<long>(record.time));
    const std::vector<double>& v = record.values;
    return std::snprintf(
        line, size, "%04d/%02d/%02d%c%.2lf%c%.2lf%c%.2lf%c%.2lf%c%.0lf%c%.2lf%c\r\n", date.year,
        date.month, date.day, separator, v[0], separator, v[1], separator, v[2], separator, v[3],
        separator, v[4], separator, v[5], separator);
}

std::string HeadLines(char separator) {
    std::string head = "Title\r\n";
    for (const HeaderInfo& header : MakeHeaders()) {
        head += header.name + separator;
    }
    return head + "\r\n";
}

/// Beside the file and renamed, when it is on the disk: as safe as ours.
bool PrintFile(const std::string& path, const Records& records) {
    const std::string temporary = path + ".new";
    std::FILE* const file = std::fopen(temporary.c_str(), "wb");
    const std::string head = HeadLines(',');
    std::fwrite(head.data(), 1, head.size(), file);
    char line[256];
    for (const OneRecord& record : records) {
        std::fwrite(line, 1, static_cast<std::size_t>(PrintLine(line, sizeof line, record, ',')),
                    file);
    }
    const bool good = std::fflush(file) == 0 && fsync(fileno(file)) == 0;
    return std::fclose(file) == 0 && good && std::rename(temporary.c_str(), path.c_str()) == 0;
}

// The whole table as a CSV file, on the disk.
void SaveCsv(benchmark::State& state) {
    const Full full(static_cast<std::size_t>(state.range(0)));
    const QTemporaryDir folder;
    const QString ours = folder.filePath("ours.csv");
    const QString peer = folder.filePath("peer.csv");
    bool good = true;
    ta::bench::RunSideBySide(
        state,
        [&] {
            TableWriter writer = full.Writer(CsvForm());
            const auto next = [&writer](std::string& piece) {
                writer.Next(piece);
                return true;
            };
            good = ta::ui::WriteWholeFile(ours, ta::ui::PieceSource(next)).isEmpty() && good;
        },
        [&] { good = PrintFile(peer.toStdString(), full.records) && good; });
    std::string oursBytes;
    std::string peerBytes;
    ta::ui::ReadWholeFile(ours, oursBytes, std::size_t{1} << 30U);
    ta::ui::ReadWholeFile(peer, peerBytes, std::size_t{1} << 30U);
    if (!good || oursBytes.empty() || oursBytes != peerBytes) {
        state.SkipWithError("the files are not the same");
    }
}
BENCHMARK(SaveCsv)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Iterations(5)->Unit(
    benchmark::kMillisecond);

// The text of the clipboard in the code page's bytes, beside a loop of snprintf.
void ClipboardText(benchmark::State& state) {
    const Full full(static_cast<std::size_t>(state.range(0)));
    std::string ours;
    std::string peer;
    ta::bench::RunSideBySide(
        state,
        [&] {
            ours.clear();
            TableWriter writer = full.Writer(ClipboardForm());
            for (std::string piece; writer.Next(piece);) {
                ours += piece;
            }
        },
        [&] {
            peer = HeadLines('\t');
            char line[256];
            for (const OneRecord& record : full.records) {
                peer.append(line,
                            static_cast<std::size_t>(PrintLine(line, sizeof line, record, '\t')));
            }
        });
    if (ours != peer) {
        state.SkipWithError("the texts are not the same");
    }
}
BENCHMARK(ClipboardText)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);

/// The window on its records.
struct Viewer {
    Headers headers = MakeHeaders();
    Records records;
    MXTechDataDlg window{"Title", "",      kDailyData, headers, records, 0,      0,
                         0,       kMarket, kSymbol,    0,       0,       nullptr};

    explicit Viewer(std::size_t rows) : records(MakeRecords(rows)) { window.Create(); }

    QTableView& List() const {
        return *qobject_cast<QTableView*>(window.GetDlgItem(MXTechDataDlg::kIdList));
    }
    bool IsFull() const { return window.GetDlgItem(MXTechDataDlg::kIdCopy)->isEnabled(); }
    void Fill() {
        while (!IsFull()) {
            window.ShowData();
        }
    }
};

double MillisecondsOf(const std::function<void()>& work) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// Every tick of the fill with the window on the screen. tick_us: the median of the last tenth of
// the ticks; events_us: what the toolkit does behind it (painting included); times_ticks: the time
// until all rows are there, in periods of 100 ms each.
void Fill(benchmark::State& state) {
    constexpr double kPeriod = 100;
    std::vector<double> ticks;
    std::vector<double> events;
    for ([[maybe_unused]] auto iteration : state) {
        Viewer viewer(static_cast<std::size_t>(state.range(0)));
        viewer.window.show();
        QApplication::processEvents();
        while (!viewer.IsFull()) {
            ticks.push_back(MillisecondsOf([&] { viewer.window.ShowData(); }));
            events.push_back(MillisecondsOf([] { QApplication::processEvents(); }));
        }
    }
    double total = 0;
    for (std::size_t i = 0; i < ticks.size(); ++i) {
        total += ticks[i] + events[i];
    }
    const auto medianOf = [](std::vector<double>::iterator first,
                             std::vector<double>::iterator last) {
        const auto middle = first + (last - first) / 2;
        std::nth_element(first, middle, last);
        return 1000 * *middle;
    };
    const auto tenth = static_cast<std::ptrdiff_t>(ticks.size() / 10);
    state.counters["longest_us"] = 1000 * *std::max_element(ticks.begin(), ticks.end());
    state.counters["first_us"] = medianOf(ticks.begin(), ticks.begin() + tenth + 1);
    state.counters["tick_us"] = medianOf(ticks.end() - tenth - 1, ticks.end());
    state.counters["events_us"] = medianOf(events.end() - tenth - 1, events.end());
    state.counters["times_ticks"] = 1 + total / (kPeriod * static_cast<double>(ticks.size()));
}
BENCHMARK(Fill)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Iterations(1)->Unit(
    benchmark::kMillisecond);

double Megabytes() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd) / (1 << 20U);
}

// Memory over the records when all rows are in, beside a QTableWidget of a tenth of the rows.
void Memory(benchmark::State& state) {
    const auto rows = static_cast<std::size_t>(state.range(0));
    for ([[maybe_unused]] auto iteration : state) {
        Viewer viewer(rows);
        viewer.window.show();
        QApplication::processEvents();
        const double before = Megabytes();
        viewer.Fill();
        QApplication::processEvents();
        state.counters["ours_MB"] = Megabytes() - before;

        const double beforePeer = Megabytes();
        QTableWidget table(static_cast<int>(rows / 10), kValues + 1);
        for (int row = 0; row < table.rowCount(); ++row) {
            for (int column = 0; column < table.columnCount(); ++column) {
                table.setItem(row, column, new QTableWidgetItem("10000.00"));
            }
        }
        state.counters["peer_MB"] = Megabytes() - beforePeer;
    }
}
BENCHMARK(Memory)->Arg(10'000)->Arg(1'000'000)->Iterations(1)->Unit(benchmark::kMillisecond);

// Everything selected and copied, the text on the clipboard.
void SelectAllAndCopy(benchmark::State& state) {
    Viewer viewer(static_cast<std::size_t>(state.range(0)));
    viewer.Fill();
    for ([[maybe_unused]] auto iteration : state) {
        viewer.List().selectAll();
        viewer.window.OnCopyRows(false);
    }
    const QString text = QApplication::clipboard()->text();
    if (text.count('\n') != state.range(0)) {
        state.SkipWithError("not every row was copied");
    }
}
BENCHMARK(SelectAllAndCopy)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond);

// From nothing to the first paint, beside a dialog with an empty table.
void Open(benchmark::State& state) {
    Headers headers = MakeHeaders();
    Records records = MakeRecords(static_cast<std::size_t>(state.range(0)));
    ta::bench::RunSideBySide(
        state,
        [&] {
            MXTechDataDlg window("Title", "", kDailyData, headers, records, 0, 0, 0, kMarket,
                                 kSymbol, 0, 0, nullptr);
            window.show();
            QApplication::processEvents();
        },
        [&] {
            QDialog window;
            QVBoxLayout layout(&window);
            QTableWidget table(0, kValues + 1);
            layout.addWidget(&table);
            window.resize(760, 480);
            window.show();
            QApplication::processEvents();
        });
}
BENCHMARK(Open)->Arg(10'000)->Arg(1'000'000)->Iterations(20)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    [[maybe_unused]] static const World& world = *new World;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
