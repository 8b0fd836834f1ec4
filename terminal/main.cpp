#include "terminal/frame/MainWindow.h"

#include <QApplication>
#include <QTextStream>

#include <cstdio>

namespace {

using namespace ta::terminal;

CommandLine ReadCommandLine(int argc, char** argv) {
    const QCoreApplication console(argc, argv);
    Language language;
    CommandLine line = ParseCommandLine(QCoreApplication::arguments(), language);
    if (line.result == CommandLine::Run && !HasDisplay()) {
        line.result = CommandLine::Fail;
        line.text = Tr("IDS_TERMINAL-FRAME_CLI_NO_DISPLAY") + '\n';
    }
    return line;
}

}  // namespace

int main(int argc, char** argv) {
    const CommandLine line = ReadCommandLine(argc, argv);
    if (line.result != CommandLine::Run) {
        const bool failed = line.result == CommandLine::Fail;
        QTextStream(failed ? stderr : stdout) << line.text;
        return failed ? kExitBadCommandLine : 0;
    }
    const QApplication application(argc, argv);
    Session session(line.options);
    MainWindow window(session);
    window.show();
    return QApplication::exec();
}
