#pragma once

#include "terminal/frame/SymbolBox.h"

namespace ta::terminal {

class MarketData;

/// The symbols for what a user has typed, as the symbol box lists them.
std::vector<SymbolHit> FindHits(const MarketData& markets, const QString& text);

}  // namespace ta::terminal
