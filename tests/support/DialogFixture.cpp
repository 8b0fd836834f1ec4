#include "tests/support/DialogFixture.h"

#include "platform/SyncInfo.h"

#include <QApplication>
#include <QFile>
#include <QTest>

namespace ta::test {
namespace {

/// What the process-wide repository uses until the end of the process.
struct Doubles {
    MemoryConfigStore memory;
    MemoryChartModule chartModule;
    MemoryEntitlement entitlement;
    MemoryQuotes quotes;
};

Doubles& Shared() {
    static Doubles& doubles = *new Doubles;
    return doubles;
}

}  // namespace

DialogFixture::DialogFixture()
    : memory(Shared().memory), quotes(Shared().quotes), entitlement(Shared().entitlement) {
    memory = MemoryConfigStore();
    quotes = MemoryQuotes();
    entitlement = MemoryEntitlement();
    Services services;
    services.configStore = &memory;
    services.chartModule = &Shared().chartModule;
    services.entitlement = &entitlement;
    services.messageBoxTitle = "Terminal";
    CSyncInfo::GetSettingCFG().SetServices(services);
    BKQuoteInterface::SetBKInterface(&quotes);
    SetClock(&clock);
}

DialogFixture::~DialogFixture() {
    SetClock(nullptr);
    BKQuoteInterface::SetBKInterface(nullptr);
}

CTaSettingHandle& DialogFixture::Load() {
    memory.reloadFlag = true;
    Repository().ReloadTASetting();
    return Repository();
}

void DialogFixture::Write(const QString& path, const std::string& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes.data(), static_cast<qint64>(bytes.size())),
              static_cast<qint64>(bytes.size()));
}

std::string DialogFixture::Read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "no file";
}

void DialogFixture::Show(QWidget& dialog) {
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
}

void DialogFixture::Click(QWidget& control) {
    QTest::mouseClick(&control, Qt::LeftButton, {}, {12, control.height() / 2});
}

void DialogFixture::Press(QWidget& dialog, int key, Qt::KeyboardModifiers modifiers) {
    QWidget* const focus = QApplication::focusWidget();
    QTest::keyClick(focus != nullptr ? focus : &dialog, static_cast<Qt::Key>(key), modifiers);
}

void DialogFixture::Type(QWidget& field, const char* text) {
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&field, text);
}

void DialogFixture::Translate(QWidget& dialog,
                              std::initializer_list<std::pair<const CString, CString>> texts) {
    for (const auto& [key, text] : texts) {
        quotes.language[key] = text;
    }
    QEvent change(QEvent::LanguageChange);
    QApplication::sendEvent(&dialog, &change);
}

}  // namespace ta::test
