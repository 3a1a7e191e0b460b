// SPDX-License-Identifier: MIT
#include "importer/kindcolours.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <unordered_map>
#include <utility>

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
constexpr std::array<unsigned, 12> Palette{0xe3e2e1, 0x96bce1, 0xf0e2a1, 0xf0a288, 0xc9d661, 0x708ca7, 0xf2c8b6,
    0xb0e2fa, 0xbb8c94, 0x8c8c2d, 0xb27966, 0xaab54c};

constexpr Colour Paper = colourOf(0xf7f6f2);
constexpr Colour Ink = colourOf(0x3c3a34);
constexpr Colour HolderGround = colourOf(0xf0eee7);
constexpr Colour InnerGround = colourOf(0xfbfaf7); // of what lies in a holder and holds others itself
constexpr double HolderTint = 0.28; // how much of its colour a kind that holds others keeps
constexpr double HolderBorderTint = 0.6;
constexpr double BorderShade = 0.35;
constexpr Colour Black = colourOf(0);
constexpr double OccupiedShade = 0.26; // towards black, which keeps the hue
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

// The kinds in the order of the numbers of their sites.
std::vector<std::size_t> byFrequency(const ImportedSites& sites)
{
    std::vector<int> sitesOf(static_cast<std::size_t>(sites.kinds.size()));
    for (const ImportedSites::Site& site : sites.sites)
        ++sitesOf[static_cast<std::size_t>(site.kind)];
    std::vector<std::size_t> order(sitesOf.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::stable_sort(
        order.begin(), order.end(), [&sitesOf](std::size_t a, std::size_t b) { return sitesOf[a] > sitesOf[b]; });
    return order;
}

} // namespace

// For each kind, the one that covers most of it at the deepest level; itself for a kind that holds nothing.
KindColours::Kinds KindColours::contents(const ImportedSites& sites)
{
    std::vector<bool> isHolder(sites.sites.size());
    for (const ImportedSites::Site& site : sites.sites) {
        if (site.parent != ImportedSites::None)
            isHolder[static_cast<std::size_t>(site.parent)] = true;
    }
    std::vector<std::unordered_map<int, double>> areas(static_cast<std::size_t>(sites.kinds.size()));
    for (std::size_t i = 0; i < sites.sites.size(); ++i) {
        const ImportedSites::Site& leaf = sites.sites[i];
        for (int parent = isHolder[i] ? ImportedSites::None : leaf.parent; parent != ImportedSites::None;) {
            const ImportedSites::Site& holder = sites.sites[static_cast<std::size_t>(parent)];
            areas[static_cast<std::size_t>(holder.kind)][leaf.kind] += leaf.width * leaf.height;
            parent = holder.parent;
        }
    }
    Kinds result(areas.size());
    for (std::size_t kind = 0; kind < areas.size(); ++kind) {
        const auto most = std::max_element(areas[kind].begin(), areas[kind].end(),
            [](const auto& a, const auto& b) { return std::pair(a.second, b.first) < std::pair(b.second, a.first); });
        result[kind] = most == areas[kind].end() ? kind : static_cast<std::size_t>(most->first);
    }
    return result;
}

KindColours::Look KindColours::lookOf(std::size_t number, Role role)
{
    const Colour own = paletteColour(number);
    const Colour ground = role == Role::Holder ? HolderGround : InnerGround;
    const Colour border = role == Role::Leaf ? own : mixed(ground, own, HolderBorderTint);
    return {textOf(role == Role::Leaf ? own : mixed(ground, own, HolderTint)), textOf(mixed(border, Ink, BorderShade)),
        textOf(mixed(own, Black, OccupiedShade)), textOf(own)};
}

KindColours::KindColours(const ImportedSites& sites)
    : m_looks(static_cast<std::size_t>(sites.kinds.size()))
{
    const std::vector<std::size_t> order = byFrequency(sites);
    const Kinds content = contents(sites);
    std::vector<bool> isInner(m_looks.size());
    for (const ImportedSites::Site& site : sites.sites) {
        if (site.parent != ImportedSites::None)
            isInner[static_cast<std::size_t>(site.kind)] = true;
    }
    std::vector<std::size_t> colours(m_looks.size());
    std::size_t next = 0;
    for (const std::size_t kind : order) {
        if (content[kind] == kind)
            colours[kind] = next++;
    }
    std::vector<bool> isTaken(m_looks.size() + next); // by colour, among the holders
    std::size_t free = 0;
    for (const std::size_t kind : order) {
        const bool isHolder = content[kind] != kind;
        if (isHolder && !isInner[kind]) {
            colours[kind] = colours[content[kind]];
            while (isTaken[colours[kind]])
                colours[kind] = free++;
            isTaken[colours[kind]] = true;
        } else if (isHolder) {
            colours[kind] = colours[content[kind]];
        }
        m_looks[kind] = lookOf(colours[kind],
            !isHolder           ? Role::Leaf
                : isInner[kind] ? Role::InnerHolder
                                : Role::Holder);
    }
}

} // namespace mirn::zelimporter
