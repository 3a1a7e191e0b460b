// SPDX-License-Identifier: MIT
#include "planning/linepicture.h"

#include <QColor>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace mirn::zelchipview {

namespace {

constexpr int TileSize = 512; // device pixels
constexpr std::size_t MostSpare = 12; // tiles
constexpr double FarthestPixel = 1 << 28; // what is further away is not drawn, so that no sum overflows
constexpr int ThinLineAlpha = 200;

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
    return pixel >= 0 ? pixel / TileSize : -((TileSize - 1 - pixel) / TileSize);
}

// The tiles that an area touches, as a rectangle of columns and rows.
QRect tilesOf(const QRect& area)
{
    return QRect(QPoint(tileOf(area.left()), tileOf(area.top())), QPoint(tileOf(area.right()), tileOf(area.bottom())));
}

QRect areaOf(const QRect& tiles)
{
    return QRect(tiles.topLeft() * TileSize, tiles.size() * TileSize);
}

// Draws the pixels of a line that lie in `part`. They do not depend on the part: each is computed from the ends alone.
class ThinLine
{
public:
    ThinLine(QImage& image, const QRect& part)
        : m_pixels(reinterpret_cast<QRgb*>(image.bits()))
        , m_stride(image.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb)))
        , m_part(part)
    { }

    void draw(QPoint from, QPoint to, QRgb color) const
    {
        if (std::abs(to.x() - from.x()) >= std::abs(to.y() - from.y()))
            step(from.x(), from.y(), to.x(), to.y(), m_part.left(), m_part.right(), m_part.top(), m_part.bottom(), 1,
                m_stride, color);
        else
            step(from.y(), from.x(), to.y(), to.x(), m_part.top(), m_part.bottom(), m_part.left(), m_part.right(),
                m_stride, 1, color);
    }

private:
    // `a` is the longer direction, `b` the other one.
    void step(int a0, int b0, int a1, int b1, int aMin, int aMax, int bMin, int bMax, qsizetype aStride,
        qsizetype bStride, QRgb color) const
    {
        if (a0 > a1) {
            std::swap(a0, a1);
            std::swap(b0, b1);
        }
        constexpr int Fraction = 30; // bits
        constexpr std::int64_t One = std::int64_t(1) << Fraction; // negative values must not be shifted to the left
        const std::int64_t slope = a1 == a0 ? 0 : (b1 - b0) * One / (a1 - a0);
        const int first = std::max(a0, aMin);
        const int last = std::min(a1, aMax);
        std::int64_t b = b0 * One + One / 2 + slope * (first - a0);
        for (int a = first; a <= last; ++a, b += slope) {
            const int row = static_cast<int>(b >> Fraction);
            if (row >= bMin && row <= bMax)
                m_pixels[a * aStride + row * bStride] = color;
        }
    }

    QRgb* const m_pixels;
    const qsizetype m_stride; // in pixels
    const QRect m_part;
};

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

void LinePicture::paint(QPainter& painter, const std::vector<PlanLine>& lines, const Target& target)
{
    QPoint scrolled;
    const Grid grid{target.toPixels.m11(), splitOff(target.toPixels.dx(), scrolled.rx()),
        splitOff(target.toPixels.dy(), scrolled.ry())};
    if (!(grid == m_grid))
        m_tiles.clear();
    m_grid = grid;
    forgetFarTiles(target.viewport.translated(-scrolled));
    const QRect part = target.part.translated(-scrolled);
    const QRect tiles = tilesOf(part);
    drawMissingTiles(lines, tiles);
    for (int row = tiles.top(); row <= tiles.bottom(); ++row) {
        for (int column = tiles.left(); column <= tiles.right(); ++column) {
            const QImage& tile = m_tiles[{column, row}];
            const QRect area = areaOf(QRect(column, row, 1, 1));
            const QRect shown = area & part;
            if (tile.isNull() || shown.isEmpty())
                continue;
            // This image shares the pixels; changing the device pixel ratio of a copy would copy them.
            QImage image(tile.constBits(), TileSize, TileSize, tile.bytesPerLine(), tile.format());
            image.setDevicePixelRatio(target.ratio);
            painter.drawImage(
                QPointF(shown.topLeft() + scrolled) / target.ratio, image, shown.translated(-area.topLeft()));
        }
    }
}

// Those next to the viewport stay, for the way back. The memory of the others is used again, because fresh memory costs
// more time than the lines.
void LinePicture::forgetFarTiles(const QRect& viewport)
{
    const QRect near = tilesOf(viewport).adjusted(-1, -1, 1, 1);
    for (auto tile = m_tiles.begin(); tile != m_tiles.end();) {
        if (near.contains(tile.key().first, tile.key().second)) {
            ++tile;
            continue;
        }
        if (!tile->isNull() && m_spare.size() < MostSpare)
            m_spare.push_back(std::move(*tile));
        tile = m_tiles.erase(tile);
    }
}

QImage LinePicture::newTile()
{
    QImage tile(
        m_spare.empty() ? QImage(TileSize, TileSize, QImage::Format_ARGB32_Premultiplied) : std::move(m_spare.back()));
    if (!m_spare.empty())
        m_spare.pop_back();
    tile.fill(Qt::transparent);
    return tile;
}

// Draws all of them in one go, because each drawing goes through all lines.
void LinePicture::drawMissingTiles(const std::vector<PlanLine>& lines, const QRect& tiles)
{
    QRect missing;
    for (int row = tiles.top(); row <= tiles.bottom(); ++row) {
        for (int column = tiles.left(); column <= tiles.right(); ++column) {
            if (!m_tiles.contains({column, row}))
                missing |= QRect(column, row, 1, 1);
        }
    }
    if (missing.isEmpty())
        return;
    std::vector<QImage> images(static_cast<std::size_t>(missing.width()) * static_cast<std::size_t>(missing.height()));
    for (const bool isBroken : {false, true}) {
        for (const PlanLine& line : lines) {
            if (line.isBroken == isBroken && !line.isStub)
                draw(line, missing, images);
        }
    }
    auto image = images.begin();
    for (int row = missing.top(); row <= missing.bottom(); ++row) {
        for (int column = missing.left(); column <= missing.right(); ++column)
            m_tiles.insert({column, row}, std::move(*image++));
    }
}

// `images` are those of the tiles, row by row; one is made when the first line comes.
void LinePicture::draw(const PlanLine& line, const QRect& tiles, std::vector<QImage>& images)
{
    const double x1 = line.from.x() * m_grid.scale + m_grid.xFraction;
    const double x2 = line.to.x() * m_grid.scale + m_grid.xFraction;
    const double y1 = line.from.y() * m_grid.scale + m_grid.yFraction;
    const double y2 = line.to.y() * m_grid.scale + m_grid.yFraction;
    const QRect area = areaOf(tiles);
    if (std::max(x1, x2) < area.left() || std::min(x1, x2) >= area.right() + 1 || std::max(y1, y2) < area.top()
        || std::min(y1, y2) >= area.bottom() + 1
        || std::max({std::abs(x1), std::abs(x2), std::abs(y1), std::abs(y2)}) >= FarthestPixel)
        return;
    const QPoint from(static_cast<int>(std::floor(x1)), static_cast<int>(std::floor(y1)));
    const QPoint to(static_cast<int>(std::floor(x2)), static_cast<int>(std::floor(y2)));
    if (from == to)
        return;
    const QRgb pixel = qPremultiply(thinPen(line).color().rgba());
    const QPoint topLeft(std::min(from.x(), to.x()), std::min(from.y(), to.y()));
    const QPoint bottomRight(std::max(from.x(), to.x()), std::max(from.y(), to.y()));
    const QRect touched = tilesOf(QRect(topLeft, bottomRight)) & tiles;
    for (int row = touched.top(); row <= touched.bottom(); ++row) {
        for (int column = touched.left(); column <= touched.right(); ++column) {
            QImage& image
                = images[static_cast<std::size_t>((row - tiles.top()) * tiles.width() + column - tiles.left())];
            if (image.isNull())
                image = newTile();
            const QPoint origin(column * TileSize, row * TileSize);
            ThinLine(image, image.rect()).draw(from - origin, to - origin, pixel);
        }
    }
}

} // namespace mirn::zelchipview
