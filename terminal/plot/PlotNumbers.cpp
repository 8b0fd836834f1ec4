#include "terminal/plot/PlotNumbers.h"

#include "terminal/lang/Language.h"
#include "terminal/plot/ValueSpan.h"

#include <QStringList>

#include <cmath>

namespace ta::terminal {
namespace {

struct Unit {
    double factor = 1;
    QString name;
};

/// The largest unit that the number reaches. The language key lists them in ascending order, as
/// "10000 name;100000000 name". Below ten of the smallest a number is short enough as it is.
Unit UnitOf(double magnitude) {
    Unit best;
    double threshold = 10;
    for (const QString& entry : Tr("IDS_TERMINAL-CHART_LARGE_UNITS").split(';')) {
        const double factor = entry.section(' ', 0, 0).toDouble();
        if (factor <= 1 || magnitude < factor * threshold) {
            break;
        }
        best = {factor, entry.section(' ', 1)};
        threshold = 1;
    }
    return best;
}

/// In digits: the name of a unit is up to two of them wide.
qsizetype WidthOf(const QString& text) {
    return text.size() + (text.back().isLetter() ? 1 : 0);
}

}  // namespace

QString ShortNumberText(double value, int decimals) {
    const Unit unit = UnitOf(std::abs(value));
    if (unit.factor == 1) {
        return QString::number(value, 'f', decimals);
    }
    return QString::number(value / unit.factor, 'f', 2) + unit.name;
}

QString NumberText(double value, NumberKind kind, int priceDecimals) {
    if (!std::isfinite(value)) {
        return QStringLiteral("–");
    }
    switch (kind) {
        case NumberKind::Price:
            return QString::number(value, 'f', priceDecimals);
        case NumberKind::Volume:
            return ShortNumberText(value, 0);
        case NumberKind::Percent:
            return ShortNumberText(value, 2) + '%';
        case NumberKind::Plain:
            break;
    }
    return ShortNumberText(value, 2);
}

QString WidestNumberText(const ValueSpan& span, NumberKind kind, int priceDecimals) {
    QString widest = NumberText(std::nan(""), kind, priceDecimals);
    const auto take = [&](double value) {
        const QString text = NumberText(value, kind, priceDecimals);
        if (value >= span.low && value <= span.high && WidthOf(text) > WidthOf(widest)) {
            widest = text;
        }
    };
    take(span.low);
    take(span.high);
    // The last numbers before another digit, and before a larger unit.
    for (double power = 10; power < 1e16; power *= 10) {
        take(power * (1 - 1e-6));
        take(-power * (1 - 1e-6));
    }
    return widest;
}

}  // namespace ta::terminal
