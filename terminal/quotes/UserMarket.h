#pragma once

#include "platform/Study.h"
#include "terminal/quotes/Catalogue.h"

#include <QString>
#include <QStringList>

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

class QLockFile;

namespace ta::terminal {

/// Where the user's own files are kept: in the user's data location.
QString DefaultUserFolder();

/// The market of the user's own files. Each imported file is one symbol; its bars are copied into
/// `folder`, with an index beside them, so that they are there in the next run. Two programs may
/// share a folder: each change starts from the index as it is on disk.
///
/// Nothing on disk is thrown away because it cannot be read: such files are told by Problems() and
/// skipped, and a damaged index is kept under another name when a new one is written.
class UserMarket {
public:
    static constexpr std::uint8_t kId = 'U';

    explicit UserMarket(const QString& folder);

    static Market Description();

    /// What could not be read at the last Reload, a line each.
    const QStringList& Problems() const { return m_problems; }
    /// The symbols in the order of their import. Each stays valid until it is removed.
    std::vector<const Symbol*> Symbols() const;
    const Symbol* Find(const CString& id) const;

    /// Reads the index again.
    void Reload();

    /// Keeps a copy of `bars` (not empty) as a new symbol, named after the file, and gives it; or
    /// null, with the reason in `error`, and nothing is changed. Bars with a time of day count as
    /// minute prices, bars that are all of different months as monthly ones, others as daily.
    const Symbol* Add(const QString& fileName, const BarSeries& bars, double priceStep,
                      QString* error);
    /// Removes a symbol and its bars. false, with the reason in `error`, when that failed.
    bool Remove(const CString& id, QString* error);
    /// The bars as they were imported; null with the reason in `error`.
    std::shared_ptr<const BarSeries> Load(const Symbol& symbol, QString* error) const;

private:
    QString IndexPath() const;
    QString BarsPath(const CString& id) const;
    CString UniqueId(const QString& fileName) const;
    void AddProblem(std::size_t line, const QString& fault);
    bool TakeIndexLine(const std::vector<std::string_view>& fields);
    void ReadIndex();
    bool PutDamagedIndexAside(QString* error);
    bool WriteIndex(QString* error);
    bool Lock(QLockFile* lock, QString* error);

    QString m_folder;
    QStringList m_problems;
    std::vector<std::unique_ptr<Symbol>> m_symbols;
    /// Symbols whose bars cannot be read now: not shown, but kept in the index.
    std::vector<Symbol> m_unreadable;
    bool m_indexDamaged = false;
};

}  // namespace ta::terminal
