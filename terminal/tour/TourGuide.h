#pragma once

#include "terminal/frame/MainWindow.h"

#include <QPointer>
#include <QString>
#include <QTimer>
#include <QWidget>

#include <deque>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace ta::terminal {

/// Thrown when something is not there that a step of the tour expects.
class TourFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What a step of the tour works with: the window, the keyboard and mouse of its user, and the
/// camera.
class TourGuide {
public:
    /// `window` stays the caller's. Pictures go to `folder`, which must be there.
    TourGuide(MainWindow& window, const QString& folder);

    using Answers = std::deque<std::function<void(QWidget& dialog)>>;

    /// What went wrong with a dialog: one came that nobody expected, or an answer failed. Empty
    /// when nothing did.
    const std::string& DialogFault() const { return m_dialogFault; }

    MainWindow& Window() const { return m_window; }
    ChartView& Chart() const { return m_window.CurrentChart(); }

    /// Writes what is on the display, the window with the menus and dialogs over it, to a PNG with
    /// the next number and this name, and prints its path.
    void Picture(const char* name);

    /// Throws TourFailure with `what` when `condition` does not hold.
    static void Expect(bool condition, const char* what);
    /// The current chart shows bars in `panes` panes, and candles in two colours can be seen.
    void ExpectChart(int panes) const;

    // What a user does.

    static void Press(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    static void Type(QWidget& widget, const QString& text);
    static void Click(QWidget& widget, const QPoint& position);
    /// With the left button, in a few steps.
    static void Drag(QWidget& widget, const QPoint& from, const QPoint& to);
    /// Types a symbol's id into the symbol box and Enter.
    void Open(const QString& symbolId);
    /// Chooses a line of a combo box with the keyboard.
    static void Choose(QComboBox& box, const QString& text);
    void Choose(Command command);
    /// Chooses a command that opens dialogs, and does `answers` to them, one after the other.
    void Choose(Command command, const Answers& answers);
    /// The same for anything that opens dialogs.
    void WithDialogs(const std::function<void()>& action, const Answers& answers);
    /// Lets everything that is waiting happen.
    static void Settle();

private:
    QPixmap Display() const;
    void AnswerDialog();

    MainWindow& m_window;
    QString m_folder;
    int m_number = 0;
    QTimer m_watch;  ///< looks for dialogs
    Answers m_answers;
    QList<QPointer<QWidget>> m_answered;  ///< one dialog may stand over another
    std::string m_dialogFault;
};

struct TourStep {
    const char* name;  ///< of its picture
    void (*run)(TourGuide&);
};

/// The steps in their order; each begins where the one before it has ended.
const std::vector<TourStep>& TourSteps();

}  // namespace ta::terminal
