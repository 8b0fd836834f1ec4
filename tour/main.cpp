#include "tour/Guide.h"
#include "tour/Steps.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QStyleFactory>
#include <QTextStream>

namespace {

using namespace ta;

constexpr int kLongestTour = 300000;  // milliseconds
constexpr QSize kPictureSize(1280, 800);

/// A display of the usual size in memory; the one that comes without asking is 800 x 800.
void UseDisplay() {
    constexpr const char* kScreens = R"({"synchronousWindowSystemEvents": false,
        "windowFrameMargins": true, "screens": [{"name": "desk", "x": 0, "y": 0, "width": 1920,
        "height": 1080, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";
    const QString path = tour::OwnFolder().filePath("display.json");
    QFile file(path);
    tour::Expect(file.open(QIODevice::WriteOnly) && file.write(kScreens) > 0,
                 "the display cannot be described");
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + path.toUtf8());
}

/// Leaves out what the offscreen display writes of itself.
void HandleMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (!text.startsWith("This plugin does not support")) {
        QTextStream(stderr) << qFormatLogMessage(type, context, text) << Qt::endl;
    }
}

/// The same look on every machine.
void SetLook() {
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QApplication::setPalette(QApplication::style()->standardPalette());
    QApplication::setFont(QFont("Noto Sans CJK TC", 10));
}

struct Arguments {
    QString pictures;
    QString data;
};

Arguments ReadArguments() {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Walks through the terminal and writes a picture of each of its states to FOLDER.");
    parser.addHelpOption();
    parser.addPositionalArgument("FOLDER", "where the pictures go; made when it is not there");
    parser.addOption({"data", "other market data than the sample data", "FOLDER"});
    parser.process(*QCoreApplication::instance());
    if (parser.positionalArguments().size() != 1) {
        parser.showHelp(EXIT_FAILURE);
    }
    return {parser.positionalArguments().front(), parser.value("data")};
}

/// The user's own settings and files stay untouched.
terminal::Options OwnPlaces(const QString& data) {
    terminal::Options options;
    options.configFile = tour::OwnFolder().filePath("settings.db");
    options.userFolder = tour::OwnFolder().filePath("own");
    options.dataFolder = data;
    options.language = terminal::Language::TraditionalChinese;
    return options;
}

void RunTour(tour::Guide& guide) {
    for (const auto& steps :
         {tour::ChartSteps(), tour::CursorSteps(), tour::AxisSteps(), tour::PeriodSteps(),
          tour::CompareSteps(), tour::LayoutSteps(), tour::ViewerSteps(), tour::GroupFileSteps(),
          tour::ParameterSteps(), tour::SheetSteps(), tour::DrawingSteps()}) {
        for (const tour::Step& step : steps) {
            guide.Begin(step.name);
            step.run(guide);
        }
    }
    guide.Begin("end");
}

}  // namespace

int main(int argc, char** argv) {
    UseDisplay();
    const QApplication application(argc, argv);
    const Arguments arguments = ReadArguments();
    tour::Expect(tour::OwnFolder().isValid() && QDir().mkpath(arguments.pictures),
                 "the folders cannot be made");
    qInstallMessageHandler(HandleMessage);
    test::g_onDialogFault = [](const std::string& what) {
        tour::Fail(QString::fromStdString(what));
    };
    SetLook();
    QTimer watchdog;
    QObject::connect(&watchdog, &QTimer::timeout, [] { tour::Fail("it does not end"); });
    watchdog.start(kLongestTour);

    terminal::Session session(OwnPlaces(arguments.data));
    terminal::MainWindow window(session);
    window.resize(kPictureSize);
    window.show();
    tour::Guide guide(window, arguments.pictures);
    RunTour(guide);
    return EXIT_SUCCESS;
}
