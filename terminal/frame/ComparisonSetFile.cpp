#include "terminal/frame/ComparisonSetFile.h"

#include "platform/ui/TextBridge.h"
#include "terminal/frame/ComparisonJson.h"

#include <algorithm>
#include <optional>

namespace ta::terminal {
namespace {

/// Of a comparison; empty for an entry that is none.
CString NameOf(const QJsonValue& entry) {
    return entry["symbols"].isArray() ? ui::FromQString(entry["name"].toString()) : CString();
}

bool IsRecent(const QJsonValue& entry) {
    return entry["recent"].isArray();
}

/// Where the first such entry stands; at the end when there is none.
template <class Wanted>
qsizetype PlaceOf(const QJsonArray& entries, Wanted wanted) {
    return std::find_if(entries.begin(), entries.end(),
                        [wanted](const QJsonValue& entry) { return wanted(entry); }) -
           entries.begin();
}

qsizetype PlaceOfSet(const QJsonArray& entries, const CString& name) {
    return PlaceOf(entries, [&name](const QJsonValue& entry) {
        return !name.empty() && NameOf(entry) == name;
    });
}

void Put(QJsonArray& entries, qsizetype place, const QJsonObject& entry) {
    if (place == entries.size()) {
        entries.append(entry);
    } else {
        entries.replace(place, entry);
    }
}

/// Reads the list, and where the set of the name stands in it; nothing when there is none.
std::optional<qsizetype> Find(const JsonListFile& file, const CString& name, QJsonArray& entries) {
    if (!file.Read(entries)) {
        return std::nullopt;
    }
    const qsizetype place = PlaceOfSet(entries, name);
    return place == entries.size() ? std::nullopt : std::optional(place);
}

}  // namespace

std::vector<CString> ComparisonSetFile::Names() const {
    QJsonArray entries;
    std::vector<CString> names;
    if (m_file.Read(entries)) {
        for (qsizetype i = 0; i < entries.size(); ++i) {
            names.push_back(NameOf(entries.at(i)));
        }
    }
    std::erase(names, CString());
    return names;
}

bool ComparisonSetFile::Load(const CString& name, ComparisonSet& set) const {
    QJsonArray entries;
    const auto place = Find(m_file, name, entries);
    if (place) {
        set = SetFromJson(entries.at(*place).toObject());
    }
    return place.has_value();
}

bool ComparisonSetFile::Save(const CString& name, const ComparisonSet& set) {
    QJsonArray entries;
    if (name.empty() || !m_file.Read(entries)) {
        return false;
    }
    QJsonObject entry = ToJson(set);
    entry["name"] = ui::ToQString(name);
    Put(entries, PlaceOfSet(entries, name), entry);
    return m_file.Write(entries);
}

bool ComparisonSetFile::Remove(const CString& name) {
    QJsonArray entries;
    const auto place = Find(m_file, name, entries);
    if (place) {
        entries.removeAt(*place);
    }
    return place && m_file.Write(entries);
}

std::vector<ComparedSymbol> ComparisonSetFile::RecentSymbols() const {
    QJsonArray entries;
    if (!m_file.Read(entries)) {
        return {};
    }
    const qsizetype place = PlaceOf(entries, IsRecent);
    return place == entries.size() ? std::vector<ComparedSymbol>()
                                   : SymbolsFromJson(entries.at(place)["recent"].toArray());
}

void ComparisonSetFile::SetRecentSymbols(const std::vector<ComparedSymbol>& symbols) {
    QJsonArray entries;
    if (m_file.Read(entries)) {
        Put(entries, PlaceOf(entries, IsRecent), {{"recent", ToJson(symbols)}});
        m_file.Write(entries);
    }
}

}  // namespace ta::terminal
