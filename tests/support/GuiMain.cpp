#include "tests/support/DialogDriver.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>

// The QApplication lives for the whole run; tests show their windows on the offscreen display.
int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    testing::InitGoogleTest(&argc, argv);
    ta::test::g_onDialogFault = [](const std::string& what) { ADD_FAILURE() << what; };
    QApplication application(argc, argv);
    QApplication::setFont(QFont("Noto Sans CJK TC", 10));
    return RUN_ALL_TESTS();
}
