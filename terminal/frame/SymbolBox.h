#pragma once

#include "platform/Types.h"

#include <QCompleter>
#include <QLineEdit>
#include <QStandardItemModel>

#include <cstdint>
#include <functional>
#include <vector>

namespace ta::terminal {

/// A symbol that fits what the user typed.
struct SymbolHit {
    std::uint8_t market = 0;
    CString id;
    QString text;  ///< id, name and market, as listed
};

/// Symbols that fit a text, the best ones first.
using SymbolSearch = std::function<std::vector<SymbolHit>(const QString& text)>;

/// The box in which the user types to find a symbol: a list of what fits opens while typing, Enter
/// takes the line chosen in it or else the best one, Escape goes back to the symbol shown.
class SymbolBox : public QLineEdit {
    Q_OBJECT

public:
    explicit SymbolBox(SymbolSearch search, QWidget* parent = nullptr);

    /// Sets the symbol shown when the user is not typing.
    void Show(const QString& text);

signals:
    void chosen(std::uint8_t market, const CString& id);
    /// Enter on a text that fits no symbol.
    void notFound(const QString& text);
    /// Escape while no list is open.
    void left();

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Find(const QString& text);
    void TakeLine(const QModelIndex& line);
    void Take(const SymbolHit& hit);
    void OnReturn();

    SymbolSearch m_search;
    QString m_shown;
    std::vector<SymbolHit> m_hits;  ///< the lines of the list
    QStandardItemModel m_list;
    QCompleter m_completer;
};

}  // namespace ta::terminal
