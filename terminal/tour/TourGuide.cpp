#include "terminal/tour/TourGuide.h"

#include "terminal/chart/ChartView.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>
#include <QTextStream>

#include <algorithm>

namespace ta::terminal {
namespace {

constexpr int kWatchMilliseconds = 10;

/// The display has no window manager; dialogs get a plain frame with their title.
void PaintFrame(QPainter& painter, const QWidget& dialog, const QPoint& position) {
    constexpr int kTitleHeight = 28;
    const QRect outside(position - QPoint(1, kTitleHeight), dialog.size() + QSize(1, kTitleHeight));
    painter.setPen(Qt::gray);
    painter.fillRect(outside, dialog.palette().color(QPalette::Button));
    painter.drawRect(outside);
    painter.setPen(dialog.palette().color(QPalette::ButtonText));
    painter.drawText(QRect(outside.topLeft(), QSize(outside.width(), kTitleHeight)),
                     Qt::AlignCenter, dialog.windowTitle());
}

bool IsDialog(const QWidget& widget) {
    return widget.windowType() == Qt::Dialog || widget.windowType() == Qt::Sheet;
}

int WindowsBelow(const QWidget& window) {
    const QWidget* parent = window.parentWidget();
    return parent == nullptr ? 0 : 1 + WindowsBelow(*parent->window());
}

/// The other windows, each after the one over which it stands.
QWidgetList ShownOver(const QWidget& window) {
    QWidgetList shown = QApplication::topLevelWidgets();
    shown.removeIf([&](const QWidget* each) { return each == &window || !each->isVisible(); });
    std::ranges::stable_sort(shown, {}, [](const QWidget* each) { return WindowsBelow(*each); });
    return shown;
}

std::string TextOf(const QWidget& dialog) {
    const auto* box = qobject_cast<const QMessageBox*>(&dialog);
    return (box == nullptr ? dialog.windowTitle() : box->text()).toStdString();
}

/// Pixels of a clear red and of a clear green.
std::pair<int, int> CountCandleColours(const QImage& image) {
    int red = 0;
    int green = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            if (colour.saturation() < 120) {
                continue;
            }
            red += colour.hue() < 15 || colour.hue() > 345 ? 1 : 0;
            green += colour.hue() > 90 && colour.hue() < 170 ? 1 : 0;
        }
    }
    return {red, green};
}

/// An event of the left button.
void SendMouse(QWidget& widget, QEvent::Type type, const QPoint& position) {
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const Qt::MouseButtons held =
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, position, widget.mapToGlobal(position), button, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

}  // namespace

TourGuide::TourGuide(MainWindow& window, const QString& folder)
    : m_window(window), m_folder(folder) {
    QObject::connect(&m_watch, &QTimer::timeout, [this] { AnswerDialog(); });
    m_watch.start(kWatchMilliseconds);
}

void TourGuide::Expect(bool condition, const char* what) {
    if (!condition) {
        throw TourFailure(what);
    }
}

void TourGuide::ExpectChart(int panes) const {
    Settle();
    Expect(Chart().BarCount() > 0, "the chart has no bars");
    Expect(Chart().PaneCount() == panes, "the chart has another number of panes");
    constexpr int kEnough = 200;
    const auto [red, green] = CountCandleColours(Chart().grab().toImage());
    Expect(red > kEnough && green > kEnough, "no candles in the rising and falling colours");
}

void TourGuide::Settle() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void TourGuide::Picture(const char* name) {
    Settle();
    const QString file = QString("%1-%2.png").arg(++m_number, 2, 10, QChar('0')).arg(name);
    const QString path = QDir(m_folder).filePath(file);
    if (!Display().save(path)) {
        throw TourFailure("the picture cannot be written: " + path.toStdString());
    }
    QTextStream(stdout) << path << Qt::endl;
}

QPixmap TourGuide::Display() const {
    QPixmap display = m_window.grab();
    QPainter painter(&display);
    for (const QWidget* widget : ShownOver(m_window)) {
        QPoint position = widget->pos() - m_window.pos();
        if (IsDialog(*widget)) {
            // In the middle of the window, where a window manager would put it.
            position = m_window.rect().center() - widget->rect().center();
            PaintFrame(painter, *widget, position);
        }
        painter.drawPixmap(position, const_cast<QWidget*>(widget)->grab());
    }
    return display;
}

void TourGuide::Press(QWidget& widget, int key, Qt::KeyboardModifiers modifiers) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, modifiers);
        QApplication::sendEvent(&widget, &event);
    }
    Settle();
}

void TourGuide::Type(QWidget& widget, const QString& text) {
    for (const QChar character : text) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, character);
        QApplication::sendEvent(&widget, &press);
    }
    Settle();
}

void TourGuide::Click(QWidget& widget, const QPoint& position) {
    SendMouse(widget, QEvent::MouseButtonPress, position);
    SendMouse(widget, QEvent::MouseButtonRelease, position);
    Settle();
}

void TourGuide::Drag(QWidget& widget, const QPoint& from, const QPoint& to) {
    constexpr int kSteps = 4;
    SendMouse(widget, QEvent::MouseButtonPress, from);
    for (int step = 1; step <= kSteps; ++step) {
        SendMouse(widget, QEvent::MouseMove, from + (to - from) * step / kSteps);
    }
    SendMouse(widget, QEvent::MouseButtonRelease, to);
    Settle();
}

void TourGuide::Open(const QString& symbolId) {
    SymbolBox& box = m_window.ToolBar().Symbol();
    Choose(Command::FindSymbol);
    box.selectAll();
    Type(box, symbolId);
    Press(box, Qt::Key_Return);
    Expect(QString::fromStdString(Chart().SymbolId()) == symbolId,
           "the symbol box does not find the symbol");
}

void TourGuide::Choose(QComboBox& box, const QString& text) {
    const int index = box.findText(text);
    Expect(index >= 0, "a combo box lacks an entry");
    box.setFocus();
    box.showPopup();
    box.view()->setCurrentIndex(box.model()->index(index, box.modelColumn()));
    Press(*box.view(), Qt::Key_Return);
    Expect(box.currentIndex() == index, "a combo box does not take an entry");
}

void TourGuide::Choose(Command command) {
    QAction& action = m_window.GetCommands().At(command);
    Expect(action.isEnabled(), "a command is not to be had");
    action.trigger();
    Settle();
}

void TourGuide::Choose(Command command, const Answers& answers) {
    WithDialogs([this, command] { Choose(command); }, answers);
}

void TourGuide::WithDialogs(const std::function<void()>& action, const Answers& answers) {
    m_answers = answers;
    action();
    if (!m_dialogFault.empty()) {
        throw TourFailure(m_dialogFault);
    }
    Expect(m_answers.empty(), "a dialog did not come");
}

void TourGuide::AnswerDialog() {
    // Anew: a timer does not fire while its slot runs, and an answer may open the next dialog.
    m_watch.start(kWatchMilliseconds);
    QWidget* dialog = QApplication::activeModalWidget();
    if (dialog == nullptr || m_answered.contains(dialog) || !dialog->isVisible()) {
        return;
    }
    m_answered.removeAll(QPointer<QWidget>());
    m_answered.append(dialog);
    try {
        if (m_answers.empty()) {
            throw TourFailure("an unexpected dialog: " + TextOf(*dialog));
        }
        const auto answer = m_answers.front();
        m_answers.pop_front();
        answer(*dialog);
    } catch (const TourFailure& failure) {
        m_dialogFault = failure.what();
        dialog->close();
    }
}

}  // namespace ta::terminal
