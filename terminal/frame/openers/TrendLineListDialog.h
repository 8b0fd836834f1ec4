#pragma once

#include "platform/Window.h"
#include "terminal/lines/TrendLineStore.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>

#include <optional>
#include <vector>

namespace ta::terminal {

class MarketData;

/// The symbols that have trend lines, with their number, kinds and date of last change; in step
/// with the settings repository while it is open. Accepted with a symbol chosen: its chart is
/// wanted.
class TrendLineListDialog : public QDialog, public CView {
    Q_OBJECT

public:
    /// `markets` knows the names; it stays the caller's.
    explicit TrendLineListDialog(const MarketData& markets, QWidget* parent = nullptr);
    ~TrendLineListDialog() override;

    /// Of the current row; nothing when the list is empty.
    std::optional<TrendLineSymbol> Chosen() const;

    std::intptr_t WindowProc(unsigned message, std::uintptr_t wParam,
                             std::intptr_t lParam) override;

private:
    void MakeTable();
    void Fill();
    void ShowRow(int row, const TrendLineSymbol& symbol);
    QString SymbolText(const TrendLineSymbol& symbol) const;
    void ClearClass();

    const MarketData& m_markets;
    std::vector<TrendLineSymbol> m_symbols;
    QTableWidget* m_table;
    QLabel* m_total;
    QPushButton* m_open;
    QPushButton* m_clear;
};

}  // namespace ta::terminal
