// SPDX-License-Identifier: MIT
#include "importer/kindcolours.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace mirn::zelimporter {

namespace {

struct Colour
{
    double red; // 0 to 255, as the others
    double green;
    double blue;
};

constexpr Colour colourOf(unsigned rgb)
{
    return {static_cast<double>(rgb >> 16), static_cast<double>(rgb >> 8 & 0xFF), static_cast<double>(rgb & 0xFF)};
}

// Tints and shades of Paul Tol's "light" scheme of qualitative colours (Colour Schemes, SRON/EPS/TN/09-002), which is
// made for areas with dark texts on them. These twelve were chosen so that the smallest distance of any two in CIELAB
// is 11 for normal eyes and for those that lack one kind of cones.
constexpr std::array<unsigned, 12> Palette{0xe3e2e1, 0x96bce1, 0xf0a288, 0xf0e2a1, 0x708ca7, 0xc9d661, 0xb0e2fa,
    0xbb8c94, 0xf2c8b6, 0x8c8c2d, 0xb27966, 0xaab54c};

constexpr Colour Paper = colourOf(0xf7f6f2);
constexpr Colour Ink = colourOf(0x3c3a34);
constexpr double HolderTint = 0.2; // how much of its colour a kind that holds others keeps
constexpr double BorderShade = 0.35;
constexpr double OccupiedShade = 0.42;
constexpr std::array<double, 4> RoundShades{0, 0.16, -0.45, 0.28}; // towards the ink, or below 0 towards the paper

Colour mixed(const Colour& from, const Colour& to, double share)
{
    const auto mix = [share](double a, double b) { return a + (b - a) * share; };
    return {mix(from.red, to.red), mix(from.green, to.green), mix(from.blue, to.blue)};
}

std::string textOf(const Colour& colour)
{
    constexpr char Digits[] = "0123456789abcdef";
    std::string text = "#";
    for (const double part : {colour.red, colour.green, colour.blue}) {
        const auto value = static_cast<unsigned>(std::lround(part));
        text += Digits[value >> 4];
        text += Digits[value & 0xF];
    }
    return text;
}

Colour paletteColour(std::size_t number)
{
    const Colour colour = colourOf(Palette[number % Palette.size()]);
    const double shade = RoundShades[number / Palette.size() % RoundShades.size()];
    return shade < 0 ? mixed(colour, Paper, -shade) : mixed(colour, Ink, shade);
}

} // namespace

KindColours::KindColours(const ImportedSites& sites)
{
    const auto count = static_cast<std::size_t>(sites.kinds.size());
    std::vector<int> sitesOf(count);
    std::vector<bool> isHolder(count);
    for (const ImportedSites::Site& site : sites.sites) {
        ++sitesOf[static_cast<std::size_t>(site.kind)];
        if (site.parent != ImportedSites::None)
            isHolder[static_cast<std::size_t>(sites.sites[static_cast<std::size_t>(site.parent)].kind)] = true;
    }
    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::stable_sort(
        order.begin(), order.end(), [&sitesOf](std::size_t a, std::size_t b) { return sitesOf[a] > sitesOf[b]; });
    m_looks.resize(count);
    std::size_t leaf = 0;
    std::size_t holder = 0;
    for (const std::size_t kind : order) {
        const Colour own = paletteColour(isHolder[kind] ? holder++ : leaf++);
        const Colour fill = isHolder[kind] ? mixed(Paper, own, HolderTint) : own;
        m_looks[kind] = {textOf(fill), textOf(mixed(isHolder[kind] ? mixed(Paper, own, 0.6) : own, Ink, BorderShade)),
            textOf(mixed(own, Ink, OccupiedShade))};
    }
}

} // namespace mirn::zelimporter
