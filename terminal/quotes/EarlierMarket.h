#pragma once

#include "terminal/quotes/UserMarketFile.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace ta::terminal {

// How earlier versions kept the user's own files: a folder with "index.csv", a line a symbol (id,
// name, kind of prices, price step), and beside it a file of bars for each. Only read here.

/// The index of the folder.
QString EarlierIndex(const QString& folder);

/// What the folder holds, in the order of its index; nothing when the index cannot be read. What
/// cannot be read is left out and told in `problems`, a line each.
std::optional<std::vector<UserSymbol>> ReadEarlierMarket(const QString& folder,
                                                         QStringList* problems);

}  // namespace ta::terminal
