// SPDX-License-Identifier: MIT
#pragma once

#include "planning/planlines.h"

#include <QHash>
#include <QImage>
#include <QPair>
#include <QPen>
#include <QTransform>

#include <vector>

class QPainter;

namespace mirn::zelchipview {

// A picture of very many lines, one device pixel thin and without antialiasing. It is kept in tiles that move along
// when the view is scrolled, so that a scroll draws only those tiles that come into sight; another scale draws all of
// them. A later line covers an earlier one, and broken ones cover all.
class LinePicture final
{
public:
    // The lines are drawn anew at the next paint().
    void invalidate() { m_tiles.clear(); }

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

private:
    using Place = QPair<int, int>; // column and row of a tile

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

    void forgetFarTiles(const QRect& viewport);
    void drawMissingTiles(const std::vector<PlanLine>& lines, const QRect& tiles);
    void draw(const PlanLine& line, const QRect& tiles, std::vector<QImage>& images);
    [[nodiscard]] QImage newTile();

    Grid m_grid;
    QHash<Place, QImage> m_tiles; // null where there is no line
    std::vector<QImage> m_spare; // to be drawn on again
};

// The colour of a line, for everybody who draws one.
[[nodiscard]] QColor colorOf(const PlanLine& line);

// The pen that draws one of very many lines somewhere else than in the picture.
[[nodiscard]] QPen thinPen(const PlanLine& line);

} // namespace mirn::zelchipview
