// A start of the terminal as a process, from its execution to the end of its first painted chart,
// beside a bare process with the same plot widget. Both end there; see ExitAfterFirstChart.cpp.

#include "bench/SideBySide.h"
#include "terminal/quotes/MarketData.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

constexpr int kLongestStart = 60000;  // milliseconds

/// A program beside this one, its own files in a folder.
class Program {
public:
    Program(const char* name, const QStringList& arguments, const QString& folder) {
        m_process.setProgram(QDir(QCoreApplication::applicationDirPath()).filePath(name));
        m_process.setArguments(arguments);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        environment.insert("XDG_DATA_HOME", folder);
        m_process.setProcessEnvironment(environment);
    }

    /// From the start to the end.
    void Run() {
        m_process.start();
        m_allPainted = m_process.waitForFinished(kLongestStart) &&
                       m_process.exitStatus() == QProcess::NormalExit &&
                       m_process.exitCode() == 0 && m_allPainted;
    }
    bool AllPainted() const { return m_allPainted; }

private:
    QProcess m_process;
    bool m_allPainted = true;
};

/// How many bars the chart has that the terminal begins with.
std::size_t BarsAtStart(const QString& folder) {
    const ta::terminal::MarketData data(ta::terminal::DefaultDataFolder(), folder);
    const auto first = data.Search({}, 1);
    const auto bars =
        first.empty() ? nullptr : data.LoadBars({first[0]->market, first[0]->id, 0, 0}, nullptr);
    return bars ? bars->size() : 0;
}

void StartToFirstChart(benchmark::State& state) {
    const QTemporaryDir folder;
    const std::size_t bars = BarsAtStart(folder.filePath("own"));
    Program terminal("start_terminal", {"--config", folder.filePath("settings.db")}, folder.path());
    Program bare("start_bare", {QString::number(bars)}, folder.path());
    terminal.Run();  // the first one makes the settings
    bare.Run();
    ta::bench::RunSideBySide(
        state, [&] { terminal.Run(); }, [&] { bare.Run(); });
    if (bars == 0 || !terminal.AllPainted() || !bare.AllPainted()) {
        state.SkipWithError("a chart was not painted");
    }
}
BENCHMARK(StartToFirstChart)->Iterations(40)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
