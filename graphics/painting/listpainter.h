// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/paintrules.h"
#include "graphics/painting/displaylist.h"
#include "graphics/painting/glyphmasks.h"
#include "graphics/painting/rasteriser.h"

#include <QImage>
#include <QPainter>
#include <QTransform>

#include <functional>
#include <optional>

namespace mirn::zelchipview {

class ElementIdSet;

// Paints a display list into an image, with the result that the elements' items would give by painting themselves one
// by one. What is frequent goes straight into the pixels, everything unusual through QPainter.
class ListPainter final
{
public:
    struct States
    {
        const ElementIdSet* selected;
        const ElementIdSet* highlighted;
        const ElementIdSet* filtered; // null while the filter is off
    };

    struct Target
    {
        QImage* image; // of Format_RGB32
        QRect part; // what has to be right; around it anything may be painted
        QTransform sceneToImage;
        QPainter::RenderHints hints;
        QPen textPen;
        QFont viewFont; // what texts take from it: see TextShaper
    };

    explicit ListPainter(DisplayList& list); // not owned

    void paint(const Target& target, const QList<int>& layers, const States& states);

    // What it covers comes in pixels of the image.
    using TouchVisitor = std::function<void(const Primitive& primitive, const QRectF& bounds, const QRect& strip)>;

    // All but texts that touch strips of the image (in its pixels).
    void visitTouching(const QTransform& sceneToImage, const std::vector<QRect>& strips, const QList<int>& layers,
        const TouchVisitor& visitor);

private:
    class Job;

    DisplayList& m_list;
    TextShaper m_shaper;
    GlyphMasks m_masks;
};

} // namespace mirn::zelchipview
