// SPDX-License-Identifier: MIT
#pragma once

#include "planning/linetile.h"
#include "planning/planlines.h"

#include <QHash>
#include <QImage>
#include <QPair>
#include <QPen>
#include <QPoint>
#include <QRect>
#include <QTransform>

#include <cstdint>
#include <memory>
#include <vector>

class QPainter;

namespace mirn::zelchipview {

// A picture of very many lines, one device pixel thin and without antialiasing. It is kept in tiles that move along
// when the view is scrolled, so that a scroll draws only those tiles that come into sight and were not drawn ahead;
// another scale draws all of them. A later line covers an earlier one, and broken ones cover all.
class LinePicture final
{
public:
    // The lines are drawn anew at the next paint().
    void invalidate();

    // What is painted on, in device pixels.
    struct Target
    {
        QTransform toPixels; // from the scene; scales evenly
        QRect viewport;
        QRect part; // of the viewport: what is to be painted
        double ratio = 1; // device pixels for one of the painter
    };

    // `lines` must be the same until invalidate().
    void paint(QPainter& painter, const std::vector<PlanLine>& lines, const Target& target);

    // Draws a row or a column of the tiles around the viewport that was painted last, for a scroll to come: a few
    // milliseconds' work. Returns false if there was none left to draw.
    bool drawAhead();
    [[nodiscard]] bool isDrawnAhead() const { return m_drawnAround == m_inSight; }

private:
    using Place = QPair<int, int>; // column and row of a tile
    using Tile = std::shared_ptr<LineTile>; // null where there is no line

    // Where the picture's own pixels are: those of the device without the whole pixels of the scroll.
    struct Grid
    {
        double scale = 0;
        double xFraction = 0;
        double yFraction = 0;

        [[nodiscard]] bool operator==(const Grid& other) const
        {
            return scale == other.scale && xFraction == other.xFraction && yFraction == other.yFraction;
        }
    };

    // A line in the picture's own pixels.
    struct PixelLine
    {
        QPoint from;
        QPoint to;
        std::uint8_t color;
    };

    void moveTo(const Grid& grid, const std::vector<PlanLine>& lines);
    void addPixelsOf(const PlanLine& line);
    void forgetTilesOutside(const QRect& tiles);
    bool drawMissingTiles(const QRect& tiles);
    void draw(const PixelLine& line, const QRect& tiles, std::vector<Tile>& drawn);
    void paintTile(QPainter& painter, const LineTile& tile, const QRect& part, const QPointF& position, double ratio);
    [[nodiscard]] Tile newTile();

    Grid m_grid;
    QRect m_inSight; // tiles
    QRect m_drawnAround; // the tiles around which all are drawn
    QRect m_bounds; // of all lines, in pixels
    std::vector<PixelLine> m_lines; // in the order in which they are drawn
    QHash<Place, Tile> m_tiles;
    std::vector<Tile> m_spare; // to be drawn on again
    std::vector<QRgb> m_band; // a part of a tile in colours
};

// The colour of a line, for everybody who draws one.
[[nodiscard]] QColor colorOf(const PlanLine& line);

// The pen that draws one of very many lines somewhere else than in the picture.
[[nodiscard]] QPen thinPen(const PlanLine& line);

} // namespace mirn::zelchipview
