#include "terminal/frame/CommandLine.h"

#include <QCommandLineParser>
#include <QFileInfo>

namespace ta::terminal {
namespace {

constexpr const char* kVersion = TERMINAL_VERSION;

std::optional<Language::Id> LanguageOf(const QString& name) {
    if (name == "zh_TW") {
        return Language::TraditionalChinese;
    }
    if (name == "en") {
        return Language::English;
    }
    return {};
}

CommandLine Failed(const QString& reason) {
    CommandLine line;
    line.result = CommandLine::Fail;
    line.text = "terminal: " + reason + '\n' + Tr("IDS_TERMINAL-FRAME_CLI_SEE_HELP") + '\n';
    return line;
}

CommandLine Printed(const QString& text) {
    CommandLine line;
    line.result = CommandLine::Print;
    line.text = text;
    return line;
}

/// The reason why the option values cannot be used; empty when they can.
QString FaultOf(const Options& options, const QString& languageName) {
    if (!languageName.isNull() && !options.language) {
        return Tr("IDS_TERMINAL-FRAME_CLI_BAD_LANG").arg(languageName);
    }
    if (!options.dataFolder.isNull() && !QFileInfo(options.dataFolder).isDir()) {
        return Tr("IDS_TERMINAL-FRAME_CLI_NO_DATA_FOLDER").arg(options.dataFolder);
    }
    if (!options.configFile.isNull() &&
        (options.configFile.isEmpty() || QFileInfo(options.configFile).isDir())) {
        return Tr("IDS_TERMINAL-FRAME_CLI_CONFIG_IS_FOLDER").arg(options.configFile);
    }
    return {};
}

/// The value of --lang, whatever else is on the command line; null without the option.
QString LanguageName(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.addOption({"lang", {}, "language"});
    parser.parse(arguments);
    return parser.isSet("lang") ? parser.value("lang") : QString();
}

QString ValueOf(const QCommandLineParser& parser, const QCommandLineOption& option) {
    if (!parser.isSet(option)) {
        return {};
    }
    const QString value = parser.value(option);
    return value.isNull() ? QString("") : value;
}

}  // namespace

CommandLine ParseCommandLine(const QStringList& arguments, Language& language) {
    const QString languageName = LanguageName(arguments);
    language.Select(LanguageOf(languageName).value_or(language.Current()));

    const QString file = Tr("IDS_TERMINAL-FRAME_CLI_FILE");
    const QString folder = Tr("IDS_TERMINAL-FRAME_CLI_FOLDER");
    const QCommandLineOption config("config", Tr("IDS_TERMINAL-FRAME_CLI_CONFIG"), file);
    const QCommandLineOption data("data", Tr("IDS_TERMINAL-FRAME_CLI_DATA"), folder);
    const QCommandLineOption lang("lang", Tr("IDS_TERMINAL-FRAME_CLI_LANG"), "zh_TW|en");
    const QCommandLineOption help({"h", "help"}, Tr("IDS_TERMINAL-FRAME_CLI_HELP"));
    const QCommandLineOption version({"v", "version"}, Tr("IDS_TERMINAL-FRAME_CLI_VERSION"));

    QCommandLineParser parser;
    parser.setApplicationDescription(Tr("IDS_TERMINAL-FRAME_CLI_ABOUT"));
    parser.addOptions({config, data, lang, help, version});
    if (!parser.parse(arguments)) {
        return Failed(parser.errorText());
    }
    if (parser.isSet(help)) {
        return Printed(parser.helpText());
    }
    if (parser.isSet(version)) {
        return Printed(QString("terminal %1\n").arg(kVersion));
    }
    if (!parser.positionalArguments().isEmpty()) {
        return Failed(
            Tr("IDS_TERMINAL-FRAME_CLI_SURPLUS").arg(parser.positionalArguments().front()));
    }
    CommandLine line;
    line.options.configFile = ValueOf(parser, config);
    line.options.dataFolder = ValueOf(parser, data);
    line.options.language = LanguageOf(languageName);
    const QString fault = FaultOf(line.options, languageName);
    return fault.isEmpty() ? line : Failed(fault);
}

bool HasDisplay() {
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        if (!qEnvironmentVariableIsEmpty(variable)) {
            return true;
        }
    }
    return false;
#else
    return true;
#endif
}

}  // namespace ta::terminal
