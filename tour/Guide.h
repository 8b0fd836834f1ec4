#pragma once

#include "terminal/frame/MainWindow.h"
#include "terminal/frame/Session.h"
#include "tests/support/DialogDriver.h"

#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <functional>
#include <optional>

namespace ta::terminal {

class ChartView;

}  // namespace ta::terminal

namespace ta::tour {

using terminal::ChartTabs;
using terminal::ChartView;
using terminal::Command;
using terminal::MenuId;

/// The settings and files of the tour's terminal. Gone at the end, also when that is Fail().
const QTemporaryDir& OwnFolder();

/// Tells the step and what is wrong with it on the standard error, and ends the program: a dialog
/// that nobody answers would wait for ever.
[[noreturn]] void Fail(const QString& what);
inline void Expect(bool condition, const QString& what) {
    if (!condition) {
        Fail(what);
    }
}

/// What the steps work with: the window, its user, and the camera.
class Guide {
public:
    using Answers = std::vector<test::DialogDriver::Action>;

    /// `window` stays the caller's. Pictures go to `folder`, which must be there.
    Guide(terminal::MainWindow& window, const QString& folder)
        : m_window(window), m_folder(folder) {}

    /// From here on a fault is one of this step. Dialogs that the one before expected have come.
    void Begin(const char* step);

    terminal::MainWindow& Window() const { return m_window; }
    const terminal::Frame& Parts() const { return m_window.Parts(); }
    ChartTabs& Tabs() const { return Parts().tabs; }
    ChartView& Chart() const { return *Tabs().CurrentChart(); }

    /// Writes what is on the display, the window with the menus and dialogs over it, to a PNG with
    /// the next number and this name, and prints its path.
    void Picture(const QString& name);
    /// The same with a picture of its own.
    void Save(const QPixmap& picture, const QString& name);
    /// The path of a file beside the pictures.
    QString FileBeside(const QString& name) const;
    /// Where a dialog stands on the pictures: in the middle of the window, where a window manager
    /// would put it.
    QPoint Middle(const QWidget& dialog) const;
    /// With the menu open.
    void MenuPicture(MenuId menu, const QString& name);
    /// With a dark palette.
    void DarkPicture(const QString& name);
    /// The current chart shows bars in `panes` panes, and candles in two colours can be seen.
    void ExpectChart(int panes) const;

    /// Types a symbol's id into the symbol box and Enter.
    void Open(const QString& symbolId);
    void ChoosePeriod(const char* textKey);
    void ChooseGroup(const QString& name);
    /// The first one of the list.
    void ChooseDefaultGroup();
    /// Chooses a command, and does `answers` to the dialogs that it opens, one after the other.
    void Choose(Command command, const Answers& answers = {});
    /// The same for anything that opens dialogs.
    void WithDialogs(const std::function<void()>& action, const Answers& answers);

private:
    QPixmap Display() const;

    terminal::MainWindow& m_window;
    QString m_folder;
    int m_number = 0;
    std::optional<test::DialogDriver> m_driver;
};

/// Runs `show` with the terminal in Chinese, then in English; it is given "zh" and "en". Ends in
/// Chinese.
void InBothLanguages(Guide& guide, const std::function<void(const QString& language)>& show);

/// Lets everything that is waiting happen.
void Settle();

// What a user does, beside QTest's events.

void Type(QWidget& widget, const QString& text);
/// Enter and Escape.
void Confirm(QWidget& dialog);
void Dismiss(QWidget& dialog);
/// Answers a question with its No button.
void Deny(QWidget& question);

/// A control that can be seen; with any name when that is empty.
template <class Control = QWidget>
Control& Find(QWidget& dialog, const QString& name) {
    const QList<Control*> controls = dialog.findChildren<Control*>(name);
    const auto shown = std::ranges::find_if(controls, &QWidget::isVisible);
    Expect(shown != controls.end(), "there is no " + name);
    return **shown;
}
void Push(QWidget& dialog, const QString& button);

/// Chooses a file in the file dialog that opens.
Guide::Answers::value_type ChooseFile(const QString& path);

}  // namespace ta::tour
