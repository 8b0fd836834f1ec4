#include "platform/ui/LongWork.h"

#include "platform/ui/LangText.h"

#include <QCoreApplication>
#include <QProgressBar>
#include <QProgressDialog>

namespace ta::ui {
namespace {

constexpr int kSteps = 1000;
constexpr qint64 kLookMilliseconds = 50;

qint64 g_progressDelay = 500;

}  // namespace

void SetProgressDelay(int milliseconds) {
    g_progressDelay = milliseconds;
}

LongWork::LongWork(QWidget& window, const QString& text)
    : m_window(&window), m_text(text), m_nextLook(g_progressDelay) {
    m_elapsed.start();
}

LongWork::~LongWork() {
    delete m_progress.data();
}

bool LongWork::GoOn(std::size_t done, std::size_t inAll) {
    if (m_elapsed.elapsed() < m_nextLook) {
        return true;
    }
    if (m_progress == nullptr) {
        ShowProgress();
    }
    // The bar itself: the dialog's way would handle events, and may not outlive them.
    const double share = inAll == 0 ? 1 : static_cast<double>(done) / static_cast<double>(inAll);
    m_bar->setValue(static_cast<int>(share * kSteps));
    QCoreApplication::processEvents();
    m_nextLook = m_elapsed.elapsed() + kLookMilliseconds;
    return m_window != nullptr && !m_cancelled;
}

void LongWork::ShowProgress() {
    m_progress =
        new QProgressDialog(m_text, LangText("IDS_TADIALOGS-PROGRESS_CANCEL"), 0, kSteps, m_window);
    m_bar = new QProgressBar;
    m_bar->setRange(0, kSteps);
    m_progress->setBar(m_bar);
    m_progress->setWindowModality(Qt::WindowModal);
    m_progress->setWindowTitle(m_window->windowTitle());
    QObject::connect(m_progress, &QProgressDialog::canceled, [this] { m_cancelled = true; });
    m_progress->show();
}

}  // namespace ta::ui
