#pragma once

#include "platform/Export.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <cstddef>

class QProgressBar;
class QProgressDialog;

namespace ta::ui {

/// Work that may take long, done in steps. From half a second on it shows how far it is, in front
/// of a window that takes no input meanwhile, and the user can cancel it. Until then nothing
/// happens but the work; from then on every step may let the program do other things, the end of
/// the window among them.
class TADIALOGS_EXPORT LongWork {
public:
    /// `text` says what is being done.
    LongWork(QWidget& window, const QString& text);
    ~LongWork();
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;

    /// Called before each step, with how much of the work is done. false when the user has
    /// cancelled, or the window is gone: nothing may be touched then that it owned.
    bool GoOn(std::size_t done, std::size_t inAll);
    bool IsWindowGone() const { return m_window == nullptr; }

private:
    void ShowProgress();

    QPointer<QWidget> m_window;
    QPointer<QProgressDialog> m_progress;
    QProgressBar* m_bar = nullptr;  ///< of the dialog
    QString m_text;
    QElapsedTimer m_elapsed;
    qint64 m_nextLook;
    bool m_cancelled = false;
};

/// After how many milliseconds the progress shows: 500, unless a test says another.
TADIALOGS_EXPORT void SetProgressDelay(int milliseconds);

}  // namespace ta::ui
