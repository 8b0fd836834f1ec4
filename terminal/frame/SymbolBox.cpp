#include "terminal/frame/SymbolBox.h"

#include "platform/ui/TextBridge.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace ta::terminal {
namespace {

constexpr int kIdRole = Qt::UserRole;

}  // namespace

SymbolBox::SymbolBox(SymbolSearch search, QWidget* parent)
    : QLineEdit(parent), m_search(std::move(search)) {
    m_completer.setModel(&m_list);
    m_completer.setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    m_completer.setCompletionRole(kIdRole);
    m_completer.setMaxVisibleItems(12);
    setCompleter(&m_completer);
    connect(this, &QLineEdit::textEdited, this, &SymbolBox::Find);
    connect(&m_completer, qOverload<const QModelIndex&>(&QCompleter::activated), this,
            &SymbolBox::TakeLine);
}

void SymbolBox::Show(const QString& text) {
    m_shown = text;
    if (!hasFocus()) {
        setText(text);
        setCursorPosition(0);
    }
}

void SymbolBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    // After the click that gave the focus, which would put the caret and drop the selection.
    if (event->reason() != Qt::PopupFocusReason) {
        QTimer::singleShot(0, this, [this] {
            if (text() == m_shown) {
                selectAll();
            }
        });
    }
}

void SymbolBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason) {
        setText(m_shown);
        setCursorPosition(0);
    }
}

void SymbolBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && !m_completer.popup()->isVisible()) {
        setText(m_shown);
        emit left();
        return;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        OnReturn();
        event->accept();  // or the completer would take a line as well
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void SymbolBox::Find(const QString& text) {
    m_hits = text.trimmed().isEmpty() ? std::vector<SymbolHit>() : m_search(text.trimmed());
    m_list.clear();
    for (const SymbolHit& hit : m_hits) {
        auto* line = new QStandardItem(hit.text);
        line->setData(ui::ToQString(hit.id), kIdRole);
        m_list.appendRow(line);
    }
    constexpr int kMargin = 16;
    QAbstractItemView& list = *m_completer.popup();
    const int lineWidth = list.sizeHintForColumn(0) + kMargin;
    const int width = lineWidth + list.verticalScrollBar()->sizeHint().width();
    list.setMinimumWidth(std::max(width, this->width()));
}

void SymbolBox::OnReturn() {
    const QAbstractItemView* list = m_completer.popup();
    if (list->isVisible() && list->currentIndex().isValid()) {
        TakeLine(list->currentIndex());
        return;
    }
    const QString wanted = text().trimmed();
    if (wanted.isEmpty() || wanted == m_shown) {
        emit left();
        return;
    }
    const std::vector<SymbolHit> hits = m_search(wanted);
    if (hits.empty()) {
        emit notFound(wanted);
        selectAll();
        return;
    }
    Take(hits.front());
}

void SymbolBox::TakeLine(const QModelIndex& line) {
    const auto row = static_cast<std::size_t>(line.row());
    if (line.isValid() && row < m_hits.size()) {
        Take(SymbolHit(m_hits[row]));
    }
}

void SymbolBox::Take(const SymbolHit& hit) {
    m_completer.popup()->hide();
    emit chosen(hit.market, hit.id);
}

}  // namespace ta::terminal
