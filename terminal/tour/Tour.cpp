#include "terminal/tour/Tour.h"

#include "terminal/frame/MainWindow.h"
#include "terminal/frame/Session.h"
#include "terminal/tour/TourGuide.h"

#include <QApplication>
#include <QDir>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTextStream>

#include <cstdlib>

namespace ta::terminal {
namespace {

constexpr int kLongestTour = 120000;  // milliseconds

void TellFault(const char* step, const char* fault) {
    QTextStream(stderr) << "tour: step \"" << step << "\": " << fault << Qt::endl;
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

/// The user's own settings and files stay untouched.
Options OwnPlaces(const Options& options, const QTemporaryDir& folder) {
    Options own = options;
    own.configFile = folder.filePath("settings.db");
    own.userFolder = folder.filePath("own");
    own.language = options.language.value_or(Language::TraditionalChinese);
    return own;
}

bool RunSteps(TourGuide& guide, const char*& current) {
    for (const TourStep& step : TourSteps()) {
        current = step.name;
        try {
            step.run(guide);
            TourGuide::Expect(guide.DialogFault().empty(), "an unexpected dialog");
        } catch (const TourFailure& failure) {
            const std::string& dialogFault = guide.DialogFault();
            TellFault(step.name, dialogFault.empty() ? failure.what() : dialogFault.c_str());
            return false;
        }
    }
    return true;
}

}  // namespace

int RunTour(const Options& options) {
    const QTemporaryDir folder;
    if (!folder.isValid() || !QDir().mkpath(options.tourFolder)) {
        TellFault("start", "the folders cannot be made");
        return EXIT_FAILURE;
    }
    qInstallMessageHandler(HandleMessage);
    SetLook();
    const char* current = "start";
    // A dialog that nobody answers would wait for ever.
    QTimer watchdog;
    QObject::connect(&watchdog, &QTimer::timeout, [&current] {
        TellFault(current, "it does not end");
        std::_Exit(EXIT_FAILURE);
    });
    watchdog.start(kLongestTour);

    Session session(OwnPlaces(options, folder));
    MainWindow window(session);
    window.resize(kTourWidth, kTourHeight);
    window.show();
    TourGuide guide(window, options.tourFolder);
    return RunSteps(guide, current) ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace ta::terminal
