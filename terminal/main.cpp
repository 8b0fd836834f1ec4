#include "terminal/frame/MainWindow.h"
#include "terminal/frame/Session.h"
#include "terminal/tour/Tour.h"

#include <QApplication>
#include <QTextStream>

#include <cstdio>

namespace {

using namespace ta::terminal;

CommandLine ReadCommandLine(int argc, char** argv) {
    const QCoreApplication console(argc, argv);
    Language language;
    CommandLine line = ParseCommandLine(QCoreApplication::arguments(), language);
    if (line.result == CommandLine::Run && line.options.tourFolder.isEmpty() && !HasDisplay()) {
        line.result = CommandLine::Fail;
        line.text = Tr("IDS_TERMINAL-FRAME_CLI_NO_DISPLAY") + '\n';
    }
    return line;
}

int RunTerminal(const Options& options) {
    Session session(options);
    MainWindow window(session);
    window.show();
    return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    const CommandLine line = ReadCommandLine(argc, argv);
    if (line.result != CommandLine::Run) {
        const bool failed = line.result == CommandLine::Fail;
        QTextStream(failed ? stderr : stdout) << line.text;
        return failed ? kExitBadCommandLine : 0;
    }
    const bool tour = !line.options.tourFolder.isEmpty();
    if (tour) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    return tour ? RunTour(line.options) : RunTerminal(line.options);
}
