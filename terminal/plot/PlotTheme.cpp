#include "terminal/plot/PlotTheme.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>

namespace ta::terminal {
namespace {

constexpr double kLeastContrast = 2.6;

QColor Mix(const QColor& from, const QColor& to, double share) {
    const auto mix = [share](double a, double b) {
        return static_cast<float>(a + (b - a) * share);
    };
    return QColor::fromRgbF(mix(from.redF(), to.redF()), mix(from.greenF(), to.greenF()),
                            mix(from.blueF(), to.blueF()));
}

double Linear(double channel) {
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

/// Relative luminance and contrast ratio as in the Web Content Accessibility Guidelines 2.1.
double Luminance(const QColor& colour) {
    return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) +
           0.0722 * Linear(colour.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
    const double a = Luminance(one) + 0.05;
    const double b = Luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

bool IsDark(const QColor& colour) {
    return Luminance(colour) < 0.18;
}

}  // namespace

Qt::PenStyle PenStyleOf(int style) {
    static constexpr std::array kStyles{Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine,
                                        Qt::DashDotDotLine};
    return kStyles[static_cast<std::size_t>(std::clamp(style, 0, 4))];
}

PlotTheme PlotTheme::FromPalette(const QPalette& palette, bool risingRed) {
    PlotTheme theme;
    theme.background = palette.color(QPalette::Base);
    theme.text = palette.color(QPalette::Text);
    const auto towardsText = [&](double share) { return Mix(theme.background, theme.text, share); };
    theme.faintText = towardsText(0.65);
    theme.axis = towardsText(0.35);
    theme.grid = towardsText(0.1);
    theme.cursor = towardsText(0.55);
    theme.tag = towardsText(0.75);
    theme.tagText = theme.background;

    const bool dark = IsDark(theme.background);
    const QColor red = dark ? QColor(0xff, 0x4d, 0x4f) : QColor(0xd9, 0x26, 0x2e);
    const QColor green = dark ? QColor(0x2f, 0xc7, 0x6b) : QColor(0x12, 0x8a, 0x44);
    std::tie(theme.rising, theme.falling) = risingRed ? std::tie(red, green) : std::tie(green, red);
    return theme;
}

QColor PlotTheme::Readable(std::uint32_t rgb) const {
    const QColor wanted = QColor::fromRgb(static_cast<QRgb>(rgb & 0xffffff));
    const QColor away = IsDark(background) ? Qt::white : Qt::black;
    QColor colour = wanted;
    for (double share = 0.1; share < 0.95 && Contrast(colour, background) < kLeastContrast;
         share += 0.1) {
        colour = Mix(wanted, away, share);
    }
    return colour;
}

const QColor& PlotTheme::OfChange(double change) const {
    return change > 0 ? rising : change < 0 ? falling : text;
}

}  // namespace ta::terminal
