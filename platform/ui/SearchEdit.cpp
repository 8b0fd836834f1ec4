#include "platform/ui/SearchEdit.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include <algorithm>

namespace ta::ui {

QString FoldForSearch(const QString& text) {
    return text.normalized(QString::NormalizationForm_KC).toCaseFolded().simplified();
}

SearchEdit::SearchEdit(QWidget* parent) : QLineEdit(parent) {
    setClearButtonEnabled(true);
}

void SearchEdit::SetTree(QTreeWidget& tree) {
    m_tree = &tree;
    installEventFilter(this);
    tree.installEventFilter(this);
}

bool SearchEdit::eventFilter(QObject* object, QEvent* event) {
    constexpr int kMovers[] = {Qt::Key_Up, Qt::Key_PageUp, Qt::Key_Down, Qt::Key_PageDown};
    if (event->type() != QEvent::KeyPress || m_moving) {
        return QLineEdit::eventFilter(object, event);
    }
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (std::ranges::find(kMovers, key) == std::end(kMovers)) {
        return QLineEdit::eventFilter(object, event);
    }
    m_moving = true;
    QCoreApplication::sendEvent(m_tree, event);
    m_moving = false;
    PassHeading(key == Qt::Key_Down || key == Qt::Key_PageDown);
    return true;
}

void SearchEdit::PassHeading(bool down) {
    const auto isRow = [](const QTreeWidgetItem* item) {
        return item == nullptr || item->flags().testFlag(Qt::ItemIsSelectable);
    };
    QTreeWidgetItem* const start = m_tree->currentItem();
    QTreeWidgetItem* item = start;
    while (!isRow(item)) {
        item = down ? m_tree->itemBelow(item) : m_tree->itemAbove(item);
    }
    // Above the first heading there is nothing: back to the row below it.
    for (QTreeWidgetItem* below = start; item == nullptr && below != nullptr;) {
        below = m_tree->itemBelow(below);
        item = below != nullptr && isRow(below) ? below : nullptr;
    }
    if (item != nullptr && item != start) {
        m_tree->setCurrentItem(item);
    }
}

}  // namespace ta::ui
