#pragma once

#include "platform/Types.h"
#include "terminal/quotes/CsvImport.h"

#include <QString>

class QWidget;

namespace ta::terminal {

class UserMarket;
struct Symbol;

/// Opens price files into the user's own market, with progress and a way to cancel.
class CsvOpener {
public:
    /// Both stay the caller's; `parent` is the window under the dialogs.
    CsvOpener(UserMarket& market, QWidget* parent) : m_market(market), m_parent(parent) {}

    /// Reads the file, asks whether to skip bad rows, and keeps the bars in the user's market. The
    /// symbol that was made; null when there is none: the user cancelled or was told why.
    const Symbol* Open(const QString& path);

private:
    CsvImportResult Read(const QString& path) const;
    bool AskSkip(const QString& name, const CsvImportResult& result) const;
    void TellFailure(const QString& name, const QString& reason) const;

    UserMarket& m_market;
    QWidget* m_parent;
};

}  // namespace ta::terminal
