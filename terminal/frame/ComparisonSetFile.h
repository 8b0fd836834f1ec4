#pragma once

#include "platform/ComparisonSets.h"
#include "terminal/frame/JsonListFile.h"

#include <QString>

namespace ta::terminal {

/// The user's comparisons and lately compared symbols in a JSON file. No file is no comparison;
/// entries that are none are passed over and stay. A file that cannot be read or holds no list is
/// left alone: there are no names, and nothing can be kept.
class ComparisonSetFile : public ComparisonSets {
public:
    explicit ComparisonSetFile(QString path) : m_file(std::move(path)) {}

    std::vector<CString> Names() const override;
    bool Load(const CString& name, ComparisonSet& set) const override;
    bool Save(const CString& name, const ComparisonSet& set) override;
    bool Remove(const CString& name) override;
    std::vector<ComparedSymbol> RecentSymbols() const override;
    void SetRecentSymbols(const std::vector<ComparedSymbol>& symbols) override;

private:
    JsonListFile m_file;
};

}  // namespace ta::terminal
