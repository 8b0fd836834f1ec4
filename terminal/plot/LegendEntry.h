#pragma once

#include <QColor>
#include <QString>

#include <vector>

namespace ta::terminal {

/// A piece of a legend in one colour.
struct LegendSpan {
    QString text;
    QColor colour;
    QString widest = {};  ///< the widest text that may stand in its place; empty: `text` itself
};

/// What a legend says of one study: its name and values.
struct LegendEntry {
    int study = 0;  ///< counted from 1 in the pane; 0: the symbol
    std::vector<LegendSpan> spans;

    QString Text() const;
};

}  // namespace ta::terminal
