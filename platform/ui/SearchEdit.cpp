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

void SearchEdit::SetTree(QTreeView& tree) {
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
    const auto isRow = [](const QModelIndex& index) {
        return !index.isValid() || index.flags().testFlag(Qt::ItemIsSelectable);
    };
    const QModelIndex start = m_tree->currentIndex();
    QModelIndex index = start;
    while (!isRow(index)) {
        index = down ? m_tree->indexBelow(index) : m_tree->indexAbove(index);
    }
    // Above the first heading there is nothing: back to the row below it.
    for (QModelIndex below = start; !index.isValid() && below.isValid();) {
        below = m_tree->indexBelow(below);
        index = below.isValid() && isRow(below) ? below : QModelIndex();
    }
    if (index.isValid() && index != start) {
        m_tree->setCurrentIndex(index);
    }
}

}  // namespace ta::ui
