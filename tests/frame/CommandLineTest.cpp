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

TEST(CommandLine, NamesWhatItCannotUse) {
    const QTemporaryDir folder;
    const QString file = folder.filePath("file");
    ASSERT_TRUE(QFile(file).open(QIODevice::WriteOnly));
    const struct {
        QStringList arguments;
        QString named;  ///< what the message has to name
    } rows[] = {
        {{"--colour"}, "colour"},
        {{"prices.csv"}, "prices.csv"},
        {{"--lang", "fr"}, "fr"},
        {{"--data", folder.filePath("nowhere")}, folder.filePath("nowhere")},
        {{"--data", file}, file},
        {{"--config", folder.path()}, folder.path()},
        {{"--config", ""}, "--config"},
        {{"--tour", folder.path()}, "tour"},
    };
    for (const auto& row : rows) {
        const CommandLine line = Parse(row.arguments);
        EXPECT_EQ(line.result, CommandLine::Fail) << row.arguments.join(' ').toStdString();
        EXPECT_TRUE(line.text.contains(row.named)) << line.text.toStdString();
    }
}

/// Runs a program, which stands beside the test.
struct Ran {
    int exitCode = -1;
    QString output;
    QString errors;

    Ran(const QString& program, const QStringList& arguments, const QStringList& environment = {}) {
        QProcess process;
        process.setEnvironment(QProcess::systemEnvironment() + environment);
        process.start(QDir(QCoreApplication::applicationDirPath()).filePath(program), arguments);
        constexpr int kLongest = 330000;
        if (process.waitForFinished(kLongest) && process.exitStatus() == QProcess::NormalExit) {
            exitCode = process.exitCode();
        }
        output = QString::fromUtf8(process.readAllStandardOutput());
        errors = QString::fromUtf8(process.readAllStandardError());
    }
};

TEST(TerminalProgram, AnswersOnTheCommandLine) {
    const Ran wrong("terminal", {"--lang", "fr"});
    EXPECT_EQ(wrong.exitCode, kExitBadCommandLine);
    EXPECT_TRUE(wrong.errors.contains("fr"));
    EXPECT_TRUE(wrong.output.isEmpty());
    const Ran noDisplay("terminal", {}, {"QT_QPA_PLATFORM=", "DISPLAY=", "WAYLAND_DISPLAY="});
    EXPECT_EQ(noDisplay.exitCode, kExitBadCommandLine);
    EXPECT_FALSE(noDisplay.errors.isEmpty());
}

TEST(TourProgram, WritesItsPicturesAndFilesOrTellsTheStepThatFails) {
    const QTemporaryDir folder;
    const Ran tour("tour", {folder.filePath("pictures")});
    EXPECT_EQ(tour.exitCode, 0) << tour.errors.toStdString();
    const QStringList told = tour.output.split('\n', Qt::SkipEmptyParts);
    const QStringList pictures =
        QDir(folder.filePath("pictures")).entryList({"*.png"}, QDir::Files, QDir::Name);
    EXPECT_EQ(told.size(), pictures.size());
    EXPECT_GE(pictures.size(), 90);
    const Ran reader(TA_PYTHON, {TA_CSV_READER, folder.filePath("pictures")});
    EXPECT_EQ(reader.exitCode, 0) << reader.errors.toStdString();

    const Ran without("tour", {folder.filePath("none"), "--data", folder.path()});
    EXPECT_EQ(without.exitCode, 1) << "Data that lack the index.";
    EXPECT_FALSE(without.errors.isEmpty());
}

}  // namespace
}  // namespace ta::terminal
