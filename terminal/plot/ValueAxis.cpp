#include "terminal/plot/ValueAxis.h"

#include "platform/Rounding.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ta::terminal {
namespace {

constexpr double kLabelDistance = 2.3;  // from label to label, in label heights

QString WithoutTrailingZeros(QString text) {
    const auto unit = text.indexOf(QRegularExpression(QStringLiteral("[^-0-9.]")));
    const QString suffix = unit < 0 ? QString() : text.mid(unit);
    text.chop(suffix.size());
    if (text.contains('.')) {
        while (text.endsWith('0')) {
            text.chop(1);
        }
        if (text.endsWith('.')) {
            text.chop(1);
        }
    }
    return text + suffix;
}

}  // namespace

void ValueAxisTicker::SetNumbers(NumberKind kind, int priceDecimals) {
    m_kind = kind;
    m_priceDecimals = priceDecimals;
}

void ValueAxisTicker::SetHeights(double axis, double label) {
    m_edge = axis > 0 ? label / 2 / axis : 0;
    m_height = std::max(axis, 1.0);
    setTickCount(std::clamp(static_cast<int>(axis / (label * kLabelDistance)), 1, 10));
}

void ValueAxisTicker::generate(const QCPRange& range, const QLocale& locale, QChar formatChar,
                               int precision, QVector<double>& ticks, QVector<double>* subTicks,
                               QVector<QString>* tickLabels) {
    QCPAxisTicker::generate(range, locale, formatChar, precision, ticks, subTicks, tickLabels);
    const double room = range.size() * m_edge;
    const double roomAbove = room + range.size() * m_roomAbove / m_height;
    const QFontMetricsF metrics(m_font);
    for (qsizetype i = 0; tickLabels && i < ticks.size(); ++i) {
        QString& label = (*tickLabels)[i];
        if (ticks[i] < range.lower + room || ticks[i] > range.upper - roomAbove ||
            (std::isfinite(m_widest) && metrics.horizontalAdvance(label) > m_widest)) {
            label.clear();
        }
    }
}

void ValueAxisTicker::SetLabelWidth(double pixels, const QFont& font) {
    m_widest = pixels;
    m_font = font;
}

double ValueAxisTicker::WidestLabel(const QCPRange& range, const QFont& font) {
    const double limit = std::exchange(m_widest, std::numeric_limits<double>::infinity());
    QVector<double> ticks;
    QVector<QString> labels;
    generate(range, QLocale::c(), 'f', 0, ticks, nullptr, &labels);
    m_widest = limit;
    const QFontMetricsF metrics(font);
    double widest = 0;
    for (const QString& label : labels) {
        widest = std::max(widest, metrics.horizontalAdvance(label));
    }
    return widest;
}

double ValueAxisTicker::getTickStep(const QCPRange& range) {
    double step = QCPAxisTicker::getTickStep(range);
    if (m_kind == NumberKind::Price) {
        step = std::max(step, std::pow(10.0, -m_priceDecimals));
    } else if (m_kind == NumberKind::Volume) {
        step = std::max(step, 1.0);
    }
    m_stepDecimals = DecimalsOfStep(step);
    return step;
}

QString ValueAxisTicker::getTickLabel(double tick, const QLocale&, QChar, int) {
    if (m_kind == NumberKind::Price) {
        return NumberText(tick, m_kind, m_priceDecimals);
    }
    const QString text = WithoutTrailingZeros(ShortNumberText(tick, m_stepDecimals));
    return m_kind == NumberKind::Percent ? text + '%' : text;
}

}  // namespace ta::terminal
