#include "terminal/frame/CommandLine.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace ta::terminal {
namespace {

CommandLine Parse(const QStringList& options) {
    Language language;
    return ParseCommandLine(QStringList("terminal") + options, language);
}

TEST(CommandLine, TakesItsOptions) {
    const QTemporaryDir folder;
    const CommandLine none = Parse({});
    EXPECT_EQ(none.result, CommandLine::Run);
    EXPECT_TRUE(none.options.configFile.isEmpty() && none.options.tourFolder.isEmpty());
    EXPECT_FALSE(none.options.language.has_value());

    const CommandLine all = Parse({"--config", folder.filePath("a.db"), "--data", folder.path(),
                                   "--tour=" + folder.filePath("new"), "--lang", "en"});
    EXPECT_EQ(all.result, CommandLine::Run);
    EXPECT_EQ(all.options.configFile, folder.filePath("a.db"));
    EXPECT_EQ(all.options.dataFolder, folder.path());
    EXPECT_EQ(all.options.tourFolder, folder.filePath("new"));
    EXPECT_EQ(all.options.language, Language::English);
}

TEST(CommandLine, NamesWhatItCannotUse) {
    const QTemporaryDir folder;
    const QString file = folder.filePath("file");
    ASSERT_TRUE(QFile(file).open(QIODevice::WriteOnly));
    const struct {
        QStringList arguments;
        QString named;  ///< what the message has to name
    } rows[] = {
        {{"--colour"}, "colour"},
        {{"--config"}, "config"},
        {{"prices.csv"}, "prices.csv"},
        {{"--lang", "fr"}, "fr"},
        {{"--lang", ""}, "zh_TW"},
        {{"--data", folder.filePath("nowhere")}, folder.filePath("nowhere")},
        {{"--data", file}, file},
        {{"--config", folder.path()}, folder.path()},
        {{"--config", ""}, "--config"},
        {{"--tour", file}, file},
    };
    for (const auto& row : rows) {
        const CommandLine line = Parse(row.arguments);
        EXPECT_EQ(line.result, CommandLine::Fail) << row.arguments.join(' ').toStdString();
        EXPECT_TRUE(line.text.contains(row.named)) << line.text.toStdString();
        EXPECT_TRUE(line.text.contains("--help")) << line.text.toStdString();
    }
}

TEST(CommandLine, HelpNamesEveryOptionInTheLanguageAskedFor) {
    const CommandLine chinese = Parse({"--help"});
    EXPECT_EQ(chinese.result, CommandLine::Print);
    for (const char* option : {"--config", "--data", "--tour", "--lang", "--help", "--version"}) {
        EXPECT_TRUE(chinese.text.contains(option)) << option;
    }
    EXPECT_TRUE(chinese.text.contains("設定檔"));
    // Wherever the option stands.
    EXPECT_TRUE(Parse({"--help", "--lang", "en"}).text.contains("configuration"));
}

/// Runs the terminal, which stands beside the test.
struct Ran {
    int exitCode = -1;
    QString output;
    QString errors;

    explicit Ran(const QStringList& arguments, const QStringList& environment = {}) {
        QProcess process;
        process.setEnvironment(QProcess::systemEnvironment() + environment);
        process.start(QDir(QCoreApplication::applicationDirPath()).filePath("terminal"), arguments);
        constexpr int kLongest = 180000;
        if (process.waitForFinished(kLongest) && process.exitStatus() == QProcess::NormalExit) {
            exitCode = process.exitCode();
        }
        output = QString::fromUtf8(process.readAllStandardOutput());
        errors = QString::fromUtf8(process.readAllStandardError());
    }
};

TEST(TerminalProgram, AnswersOnTheCommandLine) {
    const Ran version({"--version"});
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_TRUE(version.output.startsWith("terminal 0."));
    const Ran wrong({"--lang", "fr"});
    EXPECT_EQ(wrong.exitCode, kExitBadCommandLine);
    EXPECT_TRUE(wrong.errors.contains("fr"));
    EXPECT_TRUE(wrong.output.isEmpty());
    const Ran noDisplay({}, {"QT_QPA_PLATFORM=", "DISPLAY=", "WAYLAND_DISPLAY="});
    EXPECT_EQ(noDisplay.exitCode, kExitBadCommandLine);
    EXPECT_TRUE(noDisplay.errors.contains("--tour"));
}

TEST(TerminalProgram, TourWritesItsPictures) {
    const QTemporaryDir folder;
    const Ran tour({"--tour", folder.filePath("pictures")}, {"QT_QPA_PLATFORM="});
    EXPECT_EQ(tour.exitCode, 0) << tour.errors.toStdString();
    const QStringList told = tour.output.split('\n', Qt::SkipEmptyParts);
    const QStringList pictures =
        QDir(folder.filePath("pictures")).entryList({"*.png"}, QDir::Files, QDir::Name);
    EXPECT_EQ(told.size(), pictures.size());
    EXPECT_GE(pictures.size(), 15);
    EXPECT_EQ(pictures.value(0), "01-main-window.png");
}

TEST(TerminalProgram, TourFailsOnDataThatLackTheIndex) {
    const QTemporaryDir folder;
    const Ran tour({"--tour", folder.filePath("pictures"), "--data", folder.path()});
    EXPECT_EQ(tour.exitCode, 1);
    EXPECT_TRUE(tour.errors.contains("main-window")) << tour.errors.toStdString();
}

}  // namespace
}  // namespace ta::terminal
