#pragma once

#include "terminal/lines/TrendLine.h"

#include <QIcon>
#include <QPalette>
#include <QString>

#include <map>

namespace ta::terminal {

/// The pen that the user gave a line of each kind last, between runs too. One object, made before
/// any chart; without one the kinds keep the pens that they begin with.
///
/// Kept in a section of an INI file, one key for each kind that the user has given a pen; the pen
/// as in a data string:
///
///     [linePens]
///     2021=2a7fff/2/0
class LinePens {
public:
    /// Reads `iniFile`; what is missing or makes no sense is left at the kind's beginning.
    explicit LinePens(QString iniFile);
    ~LinePens();
    LinePens(const LinePens&) = delete;
    LinePens& operator=(const LinePens&) = delete;

    /// The object in use; null before it is made.
    static LinePens* Instance();

    LinePen Of(TrendLineKind kind) const;
    /// Writes it at once, keeping what else is in the file. A wide line is solid, whatever the
    /// style. When the file cannot be written, the pen lasts to the end of this run.
    void Remember(TrendLineKind kind, LinePen pen);

private:
    QString m_iniFile;
    std::map<TrendLineKind, LinePen> m_pens;
};

/// The pen of a new line of a kind.
LinePen PenOfNewLine(TrendLineKind kind);

/// A sample of the pen, in the colour that charts with the palette draw it in.
QIcon LinePenIcon(const LinePen& pen, const QPalette& palette);

}  // namespace ta::terminal
