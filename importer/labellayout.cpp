// SPDX-License-Identifier: MIT
#include "importer/labellayout.h"

#include <algorithm>

namespace mirn::zelimporter {

namespace {

constexpr int MostLabels = 150'000;
constexpr int NoEnd = 1000; // the last step of what stays
constexpr double LegiblePixels = 7.5; // of the letters' size
constexpr double LargestPixels = 16; // the same where the whole drawing is shown
constexpr double HeightShare = 0.4; // of a site's shorter side that letters take
constexpr double LengthShare = 0.84; // of its longer side that a text takes
constexpr double HeaderShare = 0.72; // of the room above what is in the site
constexpr double SmallestHeaderShare = 0.06; // of the site's shorter side
constexpr double SmallestShare = 0.6; // of the size of its group that a label must reach
constexpr double UsefulShare = 0.18; // of the shorter side that the letters of a useful name reach
constexpr double SmallestSize = 0.4; // drawing units

// The width of a text in DejaVu Sans of size 1, or a little more.
double lengthOf(std::string_view text)
{
    double length = 0;
    for (const char c : text) {
        if (c == 'W' || c == 'M' || c == 'm')
            length += 0.98;
        else if (c >= 'A' && c <= 'Z')
            length += 0.7;
        else if (c >= 'a' && c <= 'z')
            length += 0.61;
        else if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) // of a letter of several bytes the first counts
            length += 0.64;
    }
    return length;
}

double sizeIn(const LabelLayout::Room& room, std::string_view text)
{
    return std::min(room.height * HeightShare, room.width * LengthShare / std::max(lengthOf(text), 0.1));
}

} // namespace

LabelLayout::LabelLayout(const ImportedSites& sites, const DrawingLayout& layout)
    : m_sites(sites)
    , m_layout(layout)
    , m_tops(sites.sites.size(), 0)
    , m_left(MostLabels)
{
    for (const ImportedSites::Site& site : sites.sites) {
        if (site.parent == ImportedSites::None)
            continue;
        float& top = m_tops[static_cast<std::size_t>(site.parent)];
        const auto own = static_cast<float>(layout.areaOf(site).y);
        top = top > 0 ? std::min(top, own) : own;
    }
}

std::string_view LabelLayout::textOf(int site, bool isKind) const
{
    return isKind ? m_sites.kinds.text(m_sites.sites[static_cast<std::size_t>(site)].kind) : m_sites.names.text(site);
}

// The site in the middle of the group speaks for the others, with the longest name of all.
LabelLayout::Style LabelLayout::styleOf(const std::vector<int>& group) const
{
    const int typical = group[group.size() / 2];
    std::string_view longest;
    for (const int site : group) {
        const std::string_view name = textOf(site, false);
        longest = lengthOf(name) > lengthOf(longest) ? name : longest;
    }
    const DrawingLayout::Area area = m_layout.areaOf(m_sites.sites[static_cast<std::size_t>(typical)]);
    const double shorter = std::min(area.width, area.height);
    const double largest = LargestPixels / DrawingLayout::magnification(m_layout.fitStep());
    Style style{0, false, false};
    for (const bool isKind : {false, true}) {
        const std::string_view text = isKind ? textOf(typical, true) : longest;
        const double level = sizeIn({area.width, area.height}, text);
        const double upright = sizeIn({area.height, area.width}, text);
        style.isUpright = upright > 1.5 * level;
        style.size = std::min(std::max(style.isUpright ? upright : level, 0.0), largest);
        style.isKind = isKind;
        if (style.size >= UsefulShare * shorter)
            break;
    }
    return style;
}

// Labels with the same steps share a layer. The numbers below are those of the sites.
int LabelLayout::layerFor(int first, int last)
{
    const auto [known, isNew]
        = m_numbers.try_emplace({first, last}, m_layout.lidLayer() + 1 + static_cast<int>(m_numbers.size()));
    if (isNew)
        m_layers.emplace(known->second, Range{first, last});
    return known->second;
}

// Makes the label a heading, with the name where it is not much smaller than the kind. Returns false, and changes
// nothing, if there is no room.
bool LabelLayout::placeAbove(Label& label, int site, const Room& room) const
{
    const auto sizeOf = [&room](std::string_view text) {
        return std::min(room.height * HeaderShare, room.width * LengthShare / std::max(lengthOf(text), 0.1));
    };
    const std::string_view name = textOf(site, false);
    const std::string_view kind = textOf(site, true);
    const std::string_view text = sizeOf(name) >= SmallestShare * sizeOf(kind) ? name : kind;
    const DrawingLayout::Area area = m_layout.areaOf(m_sites.sites[static_cast<std::size_t>(site)]);
    if (sizeOf(text) < SmallestHeaderShare * std::min(area.width, area.height))
        return false;
    label.text = text;
    label.size = sizeOf(text);
    label.isUpright = false;
    return true;
}

// A label of size 0 is none.
LabelLayout::Label LabelLayout::labelOn(int number, const Style& style)
{
    const ImportedSites::Site& site = m_sites.sites[static_cast<std::size_t>(number)];
    const DrawingLayout::Area area = m_layout.areaOf(site);
    Label label{textOf(number, style.isKind), area.x + area.width / 2, area.y + area.height / 2, 0, style.isUpright, 0};
    label.size = std::min(style.size,
        sizeIn(style.isUpright ? Room{area.height, area.width} : Room{area.width, area.height}, label.text));
    if (label.size < SmallestShare * style.size)
        label.size = 0;
    int last = NoEnd;
    const float top = m_tops[static_cast<std::size_t>(number)]; // of what is in the site
    if (top > 0 && placeAbove(label, number, {area.width, top - area.y})) {
        label.size = std::min(label.size, style.size);
        label.y = (area.y + top) / 2;
    } else if (top > 0) {
        last = m_layout.level(std::min(site.level + 1, m_sites.levels - 1)).firstStep - 1;
    }
    const int first = DrawingLayout::stepFor(label.size, LegiblePixels);
    if (label.size < SmallestSize || first > last)
        label.size = 0;
    else
        label.layer = layerFor(first, last);
    return label;
}

std::vector<LabelLayout::Label> LabelLayout::labelsOf(const std::vector<int>& group)
{
    std::vector<Label> labels;
    if (static_cast<int>(group.size()) > m_left)
        return labels;
    const Style style = styleOf(group);
    for (const int site : group) {
        const Label label = labelOn(site, style);
        if (label.size > 0)
            labels.push_back(label);
    }
    m_left -= static_cast<int>(labels.size());
    return labels;
}

} // namespace mirn::zelimporter
