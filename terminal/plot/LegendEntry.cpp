#include "terminal/plot/LegendEntry.h"

#include <QStringList>

namespace ta::terminal {

QString LegendEntry::Text() const {
    QStringList texts;
    for (const LegendSpan& span : spans) {
        texts << span.text;
    }
    return texts.join(' ');
}

}  // namespace ta::terminal
