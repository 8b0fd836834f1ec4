#pragma once

#include "platform/ComparisonSets.h"

#include <map>
#include <new>
#include <vector>

namespace ta::test {

/// Kept comparisons in plain fields.
class MemorySets : public ComparisonSets {
public:
    std::map<CString, ComparisonSet> sets;
    std::vector<ComparedSymbol> recent;
    bool broken = false;    ///< nothing can be kept, read or removed
    bool throwing = false;  ///< nor can symbols be remembered, for want of memory

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
    void SetRecentSymbols(const std::vector<ComparedSymbol>& symbols) override {
        if (throwing) {
            throw std::bad_alloc();
        }
        recent = symbols;
    }
};

}  // namespace ta::test
