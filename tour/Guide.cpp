#include "tour/Guide.h"

#include "platform/ui/TextBridge.h"
#include "terminal/chart/ChartView.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPainter>
#include <QTextStream>

#include <cstdlib>

namespace ta::tour {
namespace {

const char* g_step = "start";

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

/// Chooses a line of a combo box with the keyboard.
void ChooseLine(QComboBox& box, const QString& text) {
    const int index = box.findText(text);
    Expect(index >= 0, "there is no entry " + text);
    box.setFocus();
    box.showPopup();
    box.view()->setCurrentIndex(box.model()->index(index, box.modelColumn()));
    QTest::keyClick(box.view(), Qt::Key_Return);
    Settle();
    Expect(box.currentIndex() == index, "the combo box does not take " + text);
}

QTemporaryDir& Folder() {
    static QTemporaryDir folder;
    return folder;
}

}  // namespace

const QTemporaryDir& OwnFolder() {
    return Folder();
}

void Fail(const QString& what) {
    QTextStream(stderr) << "tour: step \"" << g_step << "\": " << what << Qt::endl;
    Folder().remove();
    std::_Exit(EXIT_FAILURE);
}

void Guide::Begin(const char* step) {
    m_driver.reset();
    g_step = step;
    m_driver.emplace();
}

void Guide::ExpectChart(int panes) const {
    Settle();
    Expect(Chart().BarCount() > 0, "the chart has no bars");
    Expect(Chart().PaneCount() == panes, "the chart has another number of panes");
    constexpr int kEnough = 200;
    const auto [red, green] = CountCandleColours(Chart().grab().toImage());
    Expect(red > kEnough && green > kEnough, "no candles in the rising and falling colours");
}

void Guide::Picture(const QString& name) {
    Settle();
    Save(Display(), name);
}

void Guide::Save(const QPixmap& picture, const QString& name) {
    const QString file = QString("%1-%2.png").arg(++m_number, 3, 10, QChar('0')).arg(name);
    const QString path = QDir(m_folder).filePath(file);
    Expect(picture.save(path), "the picture cannot be written: " + path);
    QTextStream(stdout) << path << Qt::endl;
}

QString Guide::FileBeside(const QString& name) const {
    return QDir(m_folder).absoluteFilePath(name);
}

QPoint Guide::Middle(const QWidget& dialog) const {
    return m_window.pos() + m_window.rect().center() - dialog.rect().center();
}

void Guide::MenuPicture(MenuId menu, const QString& name) {
    QMenu& opened = Parts().commands.At(menu);
    m_window.menuBar()->setActiveAction(opened.menuAction());
    Settle();
    Expect(opened.isVisible(), "the menu does not open");
    Picture(name);
    opened.hide();
    Settle();
}

void Guide::DarkPicture(const QString& name) {
    QPalette dark(QColor(53, 53, 53));
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    for (const auto role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText}) {
        dark.setColor(QPalette::Disabled, role, QColor(127, 127, 127));
    }
    const QPalette light = QApplication::palette();
    QApplication::setPalette(dark);
    Picture(name);
    QApplication::setPalette(light);
}

QPixmap Guide::Display() const {
    QPixmap display = m_window.grab();
    QPainter painter(&display);
    for (const QWidget* widget : ShownOver(m_window)) {
        QPoint position = widget->pos() - m_window.pos();
        if (IsDialog(*widget)) {
            position = Middle(*widget) - m_window.pos();
            PaintFrame(painter, *widget, position);
        }
        painter.drawPixmap(position, const_cast<QWidget*>(widget)->grab());
    }
    return display;
}

void Guide::Open(const QString& symbolId) {
    terminal::SymbolBox& box = Parts().toolBar.Symbol();
    Choose(Command::FindSymbol);
    box.selectAll();
    Type(box, symbolId);
    Confirm(box);
    Expect(ui::ToQString(Chart().SymbolId()) == symbolId, "the symbol box does not find it");
}

void Guide::ChoosePeriod(const char* textKey) {
    ChooseLine(Parts().toolBar.Period(), terminal::Tr(textKey));
}

void Guide::ChooseGroup(const QString& name) {
    ChooseLine(Parts().toolBar.Group(), name);
}

void Guide::ChooseDefaultGroup() {
    ChooseGroup(Parts().toolBar.Group().itemText(0));
}

void Guide::Choose(Command command, const Answers& answers) {
    QAction& action = Parts().commands.At(command);
    Expect(action.isEnabled(), "the command cannot be chosen: " + action.text());
    WithDialogs([&action] { action.trigger(); }, answers);
}

void Guide::WithDialogs(const std::function<void()>& action, const Answers& answers) {
    for (const auto& answer : answers) {
        m_driver->Expect(answer);
    }
    action();
    Settle();
}

void InBothLanguages(Guide& guide, const std::function<void(const QString& language)>& show) {
    guide.Choose(Command::Chinese);
    show("zh");
    guide.Choose(Command::English);
    show("en");
    guide.Choose(Command::Chinese);
}

void Settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void Type(QWidget& widget, const QString& text) {
    for (const QChar character : text) {
        QTest::sendKeyEvent(QTest::Click, &widget, Qt::Key_unknown, QString(character), {});
    }
    Settle();
}

void Confirm(QWidget& dialog) {
    QTest::keyClick(&dialog, Qt::Key_Return);
    Settle();
}

void Dismiss(QWidget& dialog) {
    QTest::keyClick(&dialog, Qt::Key_Escape);
    Settle();
}

void Deny(QWidget& question) {
    auto* box = qobject_cast<QMessageBox*>(&question);
    Expect(box != nullptr, "there is no question");
    QTest::mouseClick(box->button(QMessageBox::No), Qt::LeftButton);
}

Guide::Answers::value_type ChooseFile(const QString& path) {
    return [path](QWidget& dialog) {
        auto& name = Find<QLineEdit>(dialog, "fileNameEdit");
        name.selectAll();
        Type(name, path);
        Confirm(name);
    };
}

void Push(QWidget& dialog, const QString& button) {
    QWidget& control = Find(dialog, button);
    Expect(control.isEnabled(), button + " cannot be pressed");
    QTest::mouseClick(&control, Qt::LeftButton);
    Settle();
}

}  // namespace ta::tour
