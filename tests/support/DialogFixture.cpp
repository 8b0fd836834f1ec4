#include "tests/support/DialogFixture.h"

#include "platform/SyncInfo.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QMouseEvent>
#include <QPointer>
#include <QTest>

#include <algorithm>
#include <functional>

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

void DialogFixture::PressAlt(QWidget& dialog, int key) {
    const QPointer<QWidget> alive(&dialog);
    Press(dialog, key, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return alive == nullptr || std::ranges::none_of(dialog.findChildren<QAbstractButton*>(),
                                                        std::mem_fn(&QAbstractButton::isDown));
    }));
}

void DialogFixture::Type(QWidget& field, const char* text) {
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&field, text);
}

void DialogFixture::MoveMouse(QWidget& view, QPoint to, Qt::MouseButtons buttons) {
    QMouseEvent move(QEvent::MouseMove, to, view.mapToGlobal(to), Qt::NoButton, buttons, {});
    QApplication::sendEvent(&view, &move);
}

void DialogFixture::DragMouse(QWidget& view, QPoint from, QPoint to,
                              const std::function<void()>& atEnd) {
    QTest::mousePress(&view, Qt::LeftButton, {}, from);
    MoveMouse(view, (from + to) / 2);
    MoveMouse(view, to);
    if (atEnd) {
        atEnd();
    }
    QTest::mouseRelease(&view, Qt::LeftButton, {}, to);
}

QStringList DialogFixture::Texts(const QListWidget& list) {
    QStringList texts;
    for (int row = 0; row < list.count(); ++row) {
        texts.append(list.item(row)->text());
    }
    return texts;
}

QString DialogFixture::ToldBy(const std::function<void()>& action, ui::PromptIcon icon) {
    const QString text = Told(action);
    EXPECT_EQ(prompts.Last().icon, icon);
    EXPECT_EQ(prompts.Last().title, "Terminal");
    return text;
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
