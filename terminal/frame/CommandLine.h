#pragma once

#include "terminal/lang/Language.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace ta::terminal {

/// What the command line asks for; an empty text: not given.
struct Options {
    QString configFile;                    ///< --config: the configuration store
    QString dataFolder;                    ///< --data: a folder with a catalogue
    std::optional<Language::Id> language;  ///< --lang
    QString userFolder;                    ///< of the user's own price files; no option
};

/// The outcome of reading a command line.
struct CommandLine {
    enum Result {
        Run,    ///< start with `options`
        Print,  ///< print `text` to the standard output and end with success (--help, --version)
        Fail,   ///< print `text` to the standard error and end with exit code 2
    };

    Result result = Run;
    Options options;
    QString text;
};

/// Reads the arguments, of which the first is the program's name. The texts are in the language
/// that --lang names, which becomes `language`'s. Needs a QCoreApplication.
CommandLine ParseCommandLine(const QStringList& arguments, Language& language);

/// false when the windows of a toolkit program have nowhere to go.
bool HasDisplay();

/// The exit code of a command line that cannot be read.
constexpr int kExitBadCommandLine = 2;

}  // namespace ta::terminal
