#pragma once

#include "platform/Study.h"
#include "terminal/quotes/Catalogue.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace ta::terminal {

/// Where the user's own files are kept: in the user's data location.
QString DefaultUserFolder();

class UserMarketFile;

/// The market of the user's own files. Each imported file is one symbol; it and its bars are copied
/// into the SQLite file "market.db" of `folder`, so that they are there in the next run. Two
/// programs may share a folder: each change starts from the file as it is then, and is in it whole
/// or not at all.
///
/// Nothing on disk is thrown away because it cannot be read: a damaged file is told by Problems(),
/// and kept under another name when the next change needs a new one, which gets what could still
/// be read. What an earlier version kept in the folder is taken over once.
class UserMarket {
public:
    explicit UserMarket(const QString& folder);

    static Market Description();

    /// What could not be read or taken over, a line each.
    const QStringList& Problems() const { return m_problems; }
    /// The symbols in the order of their import. Each stays valid until it is removed.
    std::vector<const Symbol*> Symbols() const;
    const Symbol* Find(const CString& id) const;

    /// Reads the symbols again; those known before stay when they cannot be read.
    void Reload();

    /// Keeps a copy of `bars` (not empty) as a new symbol, named after the file, and gives it; or
    /// null, with the reason in `error`, and nothing is changed. Bars with a time of day count as
    /// minute prices, as single trades when there are seconds in it; bars that are all of different
    /// months as monthly prices, others as daily ones.
    const Symbol* Add(const QString& fileName, const BarSeries& bars, double priceStep,
                      QString* error);
    /// Removes a symbol and its bars. false, with the reason in `error`, when that failed.
    bool Remove(const CString& id, QString* error);
    /// The bars as they were imported; null with the reason in `error`.
    std::shared_ptr<const BarSeries> Load(const Symbol& symbol, QString* error) const;

private:
    using Change = std::function<void(UserMarketFile&)>;

    QString Path() const;
    void TakeOverEarlier();
    void Take(const std::vector<Symbol>& symbols);
    /// Makes the change in one transaction, and goes on with the symbols there are then. Returns
    /// why it could not be made; empty when it was.
    QString Write(const Change& change);
    int TryToWrite(const Change& change, QString* reason);
    /// Moves the damaged file aside and begins a new one with what can still be read.
    void ReplaceDamaged();

    QString m_folder;
    QStringList m_problems;
    std::vector<std::unique_ptr<Symbol>> m_symbols;
};

}  // namespace ta::terminal
