// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/displaylist.h"
#include "graphics/painting/painttarget.h"
#include "graphics/painting/raster/picturedevice.h"
#include "graphics/painting/raster/polygoncoverage.h"
#include "graphics/painting/raster/rasteriser.h"
#include "graphics/painting/raster/rectborder.h"
#include "graphics/painting/text/glyphmasks.h"

#include <QPainter>

#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

namespace mirn::zelchipview {

// Paints a part of an image. It holds what is the same for all primitives. Several jobs on parts of one image that do
// not overlap may draw pixels at the same time, each in a thread of its own; everything else is for the main thread.
class PaintJob final
{
public:
    // Memory that is used again by the next job.
    struct Space
    {
        ElementGrid::Search search;
        std::vector<ElementGrid::Found> found;
        PolygonCoverage polygon;
        RectBorder border;
    };

    // What all jobs of one paint have in common. Nothing is owned.
    struct Sources
    {
        DisplayList& list;
        TextShaper& shaper;
        GlyphMasks& masks;
        const PaintStates& states;
        const std::vector<char>& isShown; // of each layer of the list
    };

    PaintJob(const Sources& sources, const PaintTarget& target, Space& space);

    // Finds the primitives of the part. This must come before what follows.
    void find();

    // Paints all of them.
    void paint();

    // Draws the pixels of primitives in paint order, up to the first one that cannot be drawn without QPainter or
    // whose text has to be prepared. Returns its place; each call begins with it again. Returns End after the last one.
    static constexpr int End = std::numeric_limits<int>::max();
    [[nodiscard]] int drawPixels();
    void skip() { ++m_next; }

    // Whether a primitive is among those that the job draws, found or not.
    [[nodiscard]] bool isTouched(int place) const { return isTouched(ElementGrid::Found{place, false}); }

    // Paints one primitive, which need not be among those found.
    void paint(int place);

    // These make the texts ready for drawPixels(): whether there are so many that masks pay; shaping those found.
    [[nodiscard]] bool hasManyTexts() const;
    void setHasManyTexts() { m_hasManyTexts = true; }
    void shapeTexts();

private:
    [[nodiscard]] bool isTouched(const ElementGrid::Found& found) const;
    void paint(const Primitive& primitive, bool isInside);
    [[nodiscard]] bool rasterise(const Primitive& primitive, bool isInside);
    [[nodiscard]] bool rasteriseRect(const Primitive& rect, bool isInside);
    [[nodiscard]] bool rasteriseLine(const Primitive& line);
    [[nodiscard]] bool rasterisePolygon(const Primitive& polygon);
    [[nodiscard]] bool drawReadyText(const Primitive& text);
    void paintText(const Primitive& text);
    void paintShape(const Primitive& primitive);

    [[nodiscard]] bool isTooSmall(const Primitive& text, const QTransform& toImage) const;
    [[nodiscard]] bool mayMask(const Primitive& text, const QTransform& toImage) const;
    [[nodiscard]] ElementStates statesOf(int elementId) const;
    [[nodiscard]] bool isNear(double x, double y) const;
    [[nodiscard]] bool isWithinReach(const QRectF& rect) const;
    [[nodiscard]] bool isPoint(const QLineF& line) const;
    [[nodiscard]] bool isDotOutside(const QLineF& line) const;
    [[nodiscard]] std::optional<int> thinOpacity(double penWidth) const;
    QPainter& painter();

    DisplayList& m_list;
    TextShaper& m_shaper;
    GlyphMasks& m_masks;
    const PaintTarget m_target; // a copy, because a QTransform notes what it finds out about itself
    const PaintStates& m_states;
    const std::vector<char>& m_isShown;
    const bool m_haveStates; // some element has a state, visible or not
    const bool m_isRaster;
    const Rasteriser::Mapping m_mapping;
    const QRectF m_area; // what m_target.part shows of the scene, with the margin of pens
    Rasteriser m_rasteriser;
    const QRectF m_inside;
    const QRgb m_textColor;
    const bool m_mayMask; // texts may be drawn from masks
    bool m_hasManyTexts = false;
    Space& m_space;
    std::vector<ElementGrid::Found>& m_found; // in m_space
    std::size_t m_next = 0; // index in m_found
    PictureDevice m_device;
    QPainter m_painter;
};

} // namespace mirn::zelchipview
