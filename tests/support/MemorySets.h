#pragma once

#include "platform/ComparisonSets.h"

#include <map>

namespace ta::test {

/// Kept comparisons in memory; `broken`: nothing can be read, kept or removed.
class MemorySets : public ComparisonSets {
public:
    std::map<CString, ComparisonSet> sets;
    std::vector<ComparedSymbol> recent;
    bool broken = false;

    std::vector<CString> Names() const override {
        std::vector<CString> names;
        for (const auto& [name, set] : sets) {
            names.push_back(name);
        }
        return names;
    }
    bool Load(const CString& name, ComparisonSet& set) const override {
        if (!broken) {
            set = sets.at(name);
        }
        return !broken;
    }
    bool Save(const CString& name, const ComparisonSet& set) override {
        if (!broken) {
            sets[name] = set;
        }
        return !broken;
    }
    bool Remove(const CString& name) override { return !broken && sets.erase(name) != 0; }
    std::vector<ComparedSymbol> RecentSymbols() const override { return recent; }
    void SetRecentSymbols(const std::vector<ComparedSymbol>& symbols) override { recent = symbols; }
};

}  // namespace ta::test
