// SPDX-License-Identifier: MIT
#include "host/console/consolecolors.h"

#include <QPalette>

#include <algorithm>
#include <cmath>

namespace mirn::zelchip {

namespace {

constexpr double LegibleContrast = 4.5;
constexpr double Step = 0.05;
constexpr double MutedShare = 0.45; // fraction of the background in the muted colour, if that is legible
const QRgb Red = qRgb(0xc4, 0x1e, 0x1e);

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QColor blend(const QColor& one, const QColor& other, double share)
{
    const auto mix = [share](int from, int to) { return qRound(from + (to - from) * share); };
    return QColor(mix(one.red(), other.red()), mix(one.green(), other.green()), mix(one.blue(), other.blue()));
}

// Returns the colour nearest to `wanted`, on the way to black or white, that is legible on the background.
QColor legible(const QColor& wanted, const QColor& background)
{
    const bool isDark = contrast(background, Qt::white) > contrast(background, Qt::black);
    const QColor goal = isDark ? Qt::white : Qt::black;
    QColor color = wanted;
    for (double share = Step; contrast(color, background) < LegibleContrast && share < 1 + Step; share += Step)
        color = blend(wanted, goal, std::min(share, 1.0));
    return color;
}

} // namespace

double contrast(const QColor& one, const QColor& other)
{
    const double first = luminance(one) + 0.05;
    const double second = luminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

ConsoleColors::ConsoleColors(const QPalette& palette)
{
    const QColor base = palette.color(QPalette::Base);
    text = palette.color(QPalette::Text);
    muted = legible(blend(text, base, MutedShare), base);
    accent = legible(palette.color(QPalette::Link), base);
    error = legible(QColor(Red), base);
}

} // namespace mirn::zelchip
