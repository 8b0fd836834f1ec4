#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace ta::test {

/// Is told what goes wrong in front of a dialog. A program that uses the driver sets it first; that
/// of the tests lets the test fail.
inline std::function<void(const std::string& what)> g_onDialogFault;

/// The user in front of modal dialogs that the code under test opens and waits for.
class DialogDriver {
public:
    using Action = std::function<void(QWidget& dialog)>;

    DialogDriver();
    ~DialogDriver();
    DialogDriver(const DialogDriver&) = delete;
    DialogDriver& operator=(const DialogDriver&) = delete;

    /// Runs `action`, which ends the dialog, in the next modal dialog that opens and gets active;
    /// the next call is for the one behind it. A dialog that nobody expected is a fault, and
    /// closed; so is one that the action leaves open, and an expected one that never came.
    void Expect(Action action) { m_actions.push_back(std::move(action)); }

private:
    void Poll();
    void Answer(QWidget& dialog);

    std::deque<Action> m_actions;
    std::vector<QPointer<QWidget>> m_seen;  ///< dialogs that were answered or are being answered
    QObject m_polling;
};

}  // namespace ta::test
