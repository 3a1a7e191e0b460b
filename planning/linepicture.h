// SPDX-License-Identifier: MIT
#pragma once

#include "planning/planlines.h"

#include <QImage>
#include <QPoint>
#include <QTransform>

#include <vector>

namespace mirn::zelchipview {

// A picture of very many lines, one device pixel thin and without antialiasing. It is larger than the viewport by a
// margin, so that a scroll of less than the margin paints nothing; a longer one moves the pixels and paints what is
// uncovered, and another scale paints everything. A later line covers an earlier one, and broken ones cover all.
class LinePicture final
{
public:
    // The lines are drawn anew at the next update().
    void invalidate() { m_isValid = false; }

    // Brings the picture up to date for a viewport of this size in device pixels. `toPixels` maps scene coordinates to
    // them; it scales evenly. `lines` must be the same until invalidate().
    void update(const std::vector<PlanLine>& lines, const QTransform& toPixels, QSize size);

    // The picture (Format_ARGB32_Premultiplied), and where the viewport's origin is in it.
    [[nodiscard]] const QImage& image() const { return m_image; }
    [[nodiscard]] QPoint origin() const { return m_origin; }

private:
    [[nodiscard]] bool scroll(const std::vector<PlanLine>& lines, const QTransform& toPixels);
    void move(QPoint way);
    void draw(const std::vector<PlanLine>& lines, const QRect& part);

    QImage m_image;
    QTransform m_toImage; // from the scene to the picture's pixels
    QPoint m_origin;
    QSize m_size; // of the viewport
    bool m_isValid = false;
};

// The colour of a line, for everybody who draws one.
[[nodiscard]] QColor colorOf(const PlanLine& line);

} // namespace mirn::zelchipview
