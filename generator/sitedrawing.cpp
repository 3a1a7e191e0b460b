// SPDX-License-Identifier: MIT
#include "generator/sitedrawing.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace mirn::zeldevicegenerator {

namespace {

constexpr int Pitch = 10; // scene units from site to site
constexpr int SiteWidth = 8;
constexpr int SiteHeight = 6;
constexpr std::size_t BytesOfSite = 150; // at most
constexpr std::array<const char*, 6> Fills = {"#c0d0de", "#e3b7bb", "#ecc0aa", "#d9deda", "#b3d2cd", "#c9bce0"};

std::string attribute(const char* name, const std::string& value)
{
    return std::string(" ") + name + "=\"" + value + '"';
}

std::string attribute(const char* name, int value)
{
    return attribute(name, std::to_string(value));
}

std::string styleSheet()
{
    std::string text = "<style>\n";
    for (std::size_t kind = 0; kind < Fills.size(); ++kind)
        text += ".site" + std::to_string(kind) + " {fill: " + Fills[kind] + "}\n";
    return text + "</style>\n";
}

std::string site(int number, int columns)
{
    const int column = number % columns;
    const int row = number / columns;
    const int kind = (column / 16 + row / 4) % static_cast<int>(Fills.size()); // kinds lie in blocks
    return "<rect" + attribute("id", "X" + std::to_string(column) + 'Y' + std::to_string(row))
        + attribute("tovanel:id", number + 1) + attribute("class", "site" + std::to_string(kind))
        + attribute("x", column * Pitch) + attribute("y", row * Pitch) + attribute("width", SiteWidth)
        + attribute("height", SiteHeight) + " stroke=\"#7b828a\" stroke-width=\"0.5\"/>\n";
}

} // namespace

std::string siteDrawing(int sites)
{
    const int columns = sites > 0 ? static_cast<int>(std::ceil(std::sqrt(sites))) : 1;
    std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:tovanel=\"urn:tovanel:chip-drawing\""
        + attribute("width", columns * Pitch) + attribute("height", columns * Pitch) + ">\n" + styleSheet();
    text.reserve(static_cast<std::size_t>(sites) * BytesOfSite);
    for (int number = 0; number < sites; ++number)
        text += site(number, columns);
    return text + "</svg>\n";
}

} // namespace mirn::zeldevicegenerator
