#pragma once

#include "platform/ComparisonSets.h"

#include <QJsonArray>
#include <QJsonObject>

#include <vector>

namespace ta::terminal {

// Comparisons in JSON. What is missing or makes no sense is left out or at its default.

QJsonArray ToJson(const std::vector<ComparedSymbol>& symbols);
std::vector<ComparedSymbol> SymbolsFromJson(const QJsonArray& json);

QJsonObject ToJson(const ComparisonSet& set);
ComparisonSet SetFromJson(const QJsonObject& json);

}  // namespace ta::terminal
