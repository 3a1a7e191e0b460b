// SPDX-License-Identifier: MIT
#include "graphics/painting/dirtyparts.h"

#include <cstddef>
#include <utility>

namespace mirn::zelchipview {

namespace {

// Above this share of the picture, repainting all of it is no more work than repainting the parts.
constexpr double MostDirty = 0.7;

// Up to this many times the pixels of some parts, the rectangle around them is painted instead.
constexpr double MostWaste = 2;

constexpr int TileSize = 64; // pixels
constexpr std::size_t FewParts = 8; // are painted one by one

double pixelsOf(const QRect& part)
{
    return double(part.width()) * part.height();
}

// The parts whose middles are in the same square of the picture.
struct Tile
{
    QRect around;
    double pixels = 0;

    [[nodiscard]] bool isCrowded() const { return pixelsOf(around) <= MostWaste * pixels; }
};

} // namespace

void DirtyParts::clear()
{
    m_parts.clear();
    m_pixels = 0;
}

void DirtyParts::add(const QRect& part)
{
    if (part.isEmpty())
        return;
    m_parts.push_back(part);
    m_pixels += pixelsOf(part);
}

// The large rectangles are added last, so that they are painted first.
void DirtyParts::add(const std::vector<QRect>& parts, QSize picture)
{
    if (parts.size() <= FewParts) {
        for (const QRect& part : parts)
            add(part);
        return;
    }
    const int columns = picture.width() / TileSize + 1;
    std::vector<Tile> tiles(static_cast<std::size_t>(columns * (picture.height() / TileSize + 1)));
    const auto tileOf = [&](const QRect& part) -> Tile& {
        const QPoint middle = part.center(); // QPoint's own division would round up as well
        return tiles[static_cast<std::size_t>(middle.y() / TileSize * columns + middle.x() / TileSize)];
    };
    for (const QRect& part : parts) {
        Tile& tile = tileOf(part);
        tile.around |= part;
        tile.pixels += pixelsOf(part);
    }
    for (const QRect& part : parts) {
        if (!tileOf(part).isCrowded())
            add(part);
    }
    for (const Tile& tile : tiles) {
        if (tile.isCrowded())
            add(tile.around);
    }
}

void DirtyParts::setPieces(std::vector<QRect> pieces)
{
    clear();
    m_parts = std::move(pieces);
}

QRect DirtyParts::takeLast()
{
    const QRect part = m_parts.back();
    m_parts.pop_back();
    if (m_parts.empty())
        m_pixels = 0;
    return part;
}

void DirtyParts::move(QPoint way)
{
    for (QRect& part : m_parts)
        part.translate(way);
}

bool DirtyParts::areMostOf(QSize picture) const
{
    return m_pixels > MostDirty * picture.width() * picture.height();
}

} // namespace mirn::zelchipview
