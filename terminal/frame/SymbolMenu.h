#pragma once

#include "platform/Types.h"

#include <QMenu>

#include <cstdint>
#include <vector>

namespace ta::terminal {

class MarketData;
struct Symbol;

/// The menu of all symbols, by market and commodity; made anew whenever it opens.
class SymbolMenu : public QObject {
    Q_OBJECT

public:
    /// Works on `menu`, which lives as long as this, as does `markets`.
    SymbolMenu(QMenu& menu, const MarketData& markets, QObject* parent = nullptr);

signals:
    void chosen(std::uint8_t market, const CString& id);

private:
    void Fill();
    void AddSymbols(QMenu& menu, const std::vector<const Symbol*>& symbols);

    QMenu& m_menu;
    const MarketData& m_markets;
};

}  // namespace ta::terminal
