// SPDX-License-Identifier: MIT
#include "planning/linepicture.h"

#include <QColor>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace mirn::zelchipview {

namespace {

constexpr std::size_t MostSpare = 48; // tiles
constexpr int TilesAhead = 2; // on each side of the viewport
constexpr double FarthestPixel = 1 << 28; // what is further away is not drawn, so that no sum overflows
constexpr int ThinLineAlpha = 200;
constexpr int BandPixels = 1 << 15; // that many are looked up and blended while they are in the processor's cache

// Splits a distance into whole pixels and a fraction, which is the same after every scroll: many coordinates lie right
// between two pixels, and would fall to the one side or the other.
double splitOff(double distance, int& wholePixels)
{
    constexpr double Parts = 1024; // of a pixel
    const double parts = std::round(distance * Parts);
    const double whole = std::floor(parts / Parts);
    wholePixels = static_cast<int>(whole);
    return parts / Parts - whole;
}

int tileOf(int pixel)
{
    return pixel >= 0 ? pixel / LineTile::Size : -((LineTile::Size - 1 - pixel) / LineTile::Size);
}

// The tiles that an area touches, as a rectangle of columns and rows.
QRect tilesOf(const QRect& area)
{
    return QRect(QPoint(tileOf(area.left()), tileOf(area.top())), QPoint(tileOf(area.right()), tileOf(area.bottom())));
}

// The pixels between the ends of a line, with both of them.
QRect boundsOf(QPoint from, QPoint to)
{
    return QRect(QPoint(std::min(from.x(), to.x()), std::min(from.y(), to.y())),
        QPoint(std::max(from.x(), to.x()), std::max(from.y(), to.y())));
}

QRect areaOf(const QRect& tiles)
{
    return QRect(tiles.topLeft() * LineTile::Size, tiles.size() * LineTile::Size);
}

// The number of a line's colour in a tile.
std::uint8_t colorNumberOf(const PlanLine& line)
{
    return static_cast<std::uint8_t>(line.isBroken ? LineTile::Colors - 1 : 1 + static_cast<int>(line.kind));
}

const std::array<QRgb, LineTile::Colors>& tileColors()
{
    static const std::array<QRgb, LineTile::Colors> colors = [] {
        std::array<QRgb, LineTile::Colors> made{};
        for (const auto kind : {PlanLine::Kind::Feeds, PlanLine::Kind::Together, PlanLine::Kind::OneGroup}) {
            for (const bool isBroken : {false, true}) {
                PlanLine line;
                line.kind = kind;
                line.isBroken = isBroken;
                made[colorNumberOf(line)] = qPremultiply(thinPen(line).color().rgba());
            }
        }
        return made;
    }();
    return colors;
}

} // namespace

QColor colorOf(const PlanLine& line)
{
    if (line.isBroken)
        return QColor(0xff, 0x4a, 0x2e); // that of conflicting sites
    switch (line.kind) {
    case PlanLine::Kind::Feeds:
        return QColor(0x8a, 0x4a, 0x00);
    case PlanLine::Kind::Together:
        return QColor(0x56, 0x3a, 0xa8);
    case PlanLine::Kind::OneGroup:
        break;
    }
    return QColor(0x0a, 0x5f, 0x66);
}

QPen thinPen(const PlanLine& line)
{
    QColor color = colorOf(line);
    color.setAlpha(ThinLineAlpha);
    return QPen(color, 1);
}

void LinePicture::invalidate()
{
    forgetTilesOutside(QRect());
    m_grid = Grid();
}

void LinePicture::paint(QPainter& painter, const std::vector<PlanLine>& lines, const Target& target)
{
    QPoint scrolled;
    const Grid grid{target.toPixels.m11(), splitOff(target.toPixels.dx(), scrolled.rx()),
        splitOff(target.toPixels.dy(), scrolled.ry())};
    if (!(grid == m_grid))
        moveTo(grid, lines);
    // What is a viewport's size away or less stays, for the way back.
    const QRect viewport = target.viewport.translated(-scrolled);
    m_inSight = tilesOf(viewport);
    forgetTilesOutside(
        tilesOf(viewport.adjusted(-viewport.width(), -viewport.height(), viewport.width(), viewport.height()))
        | m_inSight.adjusted(-TilesAhead, -TilesAhead, TilesAhead, TilesAhead));
    const QRect part = target.part.translated(-scrolled);
    const QRect tiles = tilesOf(part);
    drawMissingTiles(tiles);
    for (int row = tiles.top(); row <= tiles.bottom(); ++row) {
        for (int column = tiles.left(); column <= tiles.right(); ++column) {
            const Tile& tile = m_tiles[{column, row}];
            const QRect area = areaOf(QRect(column, row, 1, 1));
            const QRect shown = area & part;
            if (tile && !shown.isEmpty())
                paintTile(painter, *tile, shown.translated(-area.topLeft()), QPointF(shown.topLeft() + scrolled),
                    target.ratio);
        }
    }
}

// `position` is that of the part in device pixels.
void LinePicture::paintTile(
    QPainter& painter, const LineTile& tile, const QRect& part, const QPointF& position, double ratio)
{
    const int height = std::max(BandPixels / part.width(), 1);
    m_band.resize(static_cast<std::size_t>(part.width()) * static_cast<std::size_t>(std::min(height, part.height())));
    for (int top = part.top(); top <= part.bottom(); top += height) {
        const QRect band(part.left(), top, part.width(), std::min(height, part.bottom() + 1 - top));
        if (!tile.read(band, tileColors(), m_band.data()))
            continue;
        QImage image(reinterpret_cast<const uchar*>(m_band.data()), band.width(), band.height(),
            QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        painter.drawImage((position + QPointF(0, top - part.top())) / ratio, image);
    }
}

// Draws nothing yet, but finds out once for all tiles which pixels the lines begin and end at.
void LinePicture::moveTo(const Grid& grid, const std::vector<PlanLine>& lines)
{
    forgetTilesOutside(QRect());
    m_grid = grid;
    m_lines.clear();
    m_bounds = QRect();
    m_drawnAround = QRect();
    for (const bool isBroken : {false, true}) {
        for (const PlanLine& line : lines) {
            if (line.isBroken == isBroken && !line.isStub)
                addPixelsOf(line);
        }
    }
}

void LinePicture::addPixelsOf(const PlanLine& line)
{
    const double x1 = line.from.x() * m_grid.scale + m_grid.xFraction;
    const double x2 = line.to.x() * m_grid.scale + m_grid.xFraction;
    const double y1 = line.from.y() * m_grid.scale + m_grid.yFraction;
    const double y2 = line.to.y() * m_grid.scale + m_grid.yFraction;
    if (!(std::max({std::abs(x1), std::abs(x2), std::abs(y1), std::abs(y2)}) < FarthestPixel))
        return;
    const QPoint from(static_cast<int>(std::floor(x1)), static_cast<int>(std::floor(y1)));
    const QPoint to(static_cast<int>(std::floor(x2)), static_cast<int>(std::floor(y2)));
    if (from == to)
        return;
    m_lines.push_back({from, to, colorNumberOf(line)});
    m_bounds |= boundsOf(from, to);
}

// The memory of the tiles is used again, because fresh memory costs more time than the lines.
void LinePicture::forgetTilesOutside(const QRect& tiles)
{
    for (auto tile = m_tiles.begin(); tile != m_tiles.end();) {
        if (tiles.contains(tile.key().first, tile.key().second)) {
            ++tile;
            continue;
        }
        if (*tile && m_spare.size() < MostSpare)
            m_spare.push_back(std::move(*tile));
        tile = m_tiles.erase(tile);
    }
}

LinePicture::Tile LinePicture::newTile()
{
    if (m_spare.empty())
        return std::make_shared<LineTile>();
    Tile tile = std::move(m_spare.back());
    m_spare.pop_back();
    tile->clear();
    return tile;
}

// Those nearest to the viewport come first, and where no line is there is nothing to draw.
bool LinePicture::drawAhead()
{
    const QRect sensible = tilesOf(m_bounds);
    QRect around = m_inSight;
    for (int n = 0; n < TilesAhead; ++n) {
        around.adjust(-1, -1, 1, 1);
        const QRect sides[]
            = {{around.topLeft(), QSize(1, around.height())}, {around.topRight(), QSize(1, around.height())},
                {around.topLeft(), QSize(around.width(), 1)}, {around.bottomLeft(), QSize(around.width(), 1)}};
        for (const QRect& side : sides) {
            if (drawMissingTiles(side & sensible))
                return true;
        }
    }
    m_drawnAround = m_inSight;
    return false;
}

// Draws all of them in one go, because each drawing goes through all lines. Returns whether there were any.
bool LinePicture::drawMissingTiles(const QRect& tiles)
{
    QRect missing;
    for (int row = tiles.top(); row <= tiles.bottom(); ++row) {
        for (int column = tiles.left(); column <= tiles.right(); ++column) {
            if (!m_tiles.contains({column, row}))
                missing |= QRect(column, row, 1, 1);
        }
    }
    if (missing.isEmpty())
        return false;
    std::vector<Tile> drawn(static_cast<std::size_t>(missing.width()) * static_cast<std::size_t>(missing.height()));
    const QRect area = areaOf(missing);
    for (const PixelLine& line : m_lines) {
        const QRect bounds = boundsOf(line.from, line.to);
        if (bounds.right() >= area.left() && bounds.left() <= area.right() && bounds.bottom() >= area.top()
            && bounds.top() <= area.bottom())
            draw(line, missing, drawn);
    }
    auto tile = drawn.begin();
    for (int row = missing.top(); row <= missing.bottom(); ++row) {
        for (int column = missing.left(); column <= missing.right(); ++column)
            m_tiles.insert({column, row}, std::move(*tile++));
    }
    return true;
}

// `drawn` are the tiles, row by row; one is made when the first line comes.
void LinePicture::draw(const PixelLine& line, const QRect& tiles, std::vector<Tile>& drawn)
{
    const QRect touched = tilesOf(boundsOf(line.from, line.to)) & tiles;
    for (int row = touched.top(); row <= touched.bottom(); ++row) {
        for (int column = touched.left(); column <= touched.right(); ++column) {
            Tile& tile = drawn[static_cast<std::size_t>((row - tiles.top()) * tiles.width() + column - tiles.left())];
            if (!tile)
                tile = newTile();
            const QPoint origin(column * LineTile::Size, row * LineTile::Size);
            tile->draw(line.from - origin, line.to - origin, line.color);
        }
    }
}

} // namespace mirn::zelchipview
