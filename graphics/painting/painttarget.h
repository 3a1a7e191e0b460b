// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/elementidset.h"
#include "graphics/elements/enlarged.h"
#include "graphics/elements/paintrules.h"

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QPen>
#include <QRect>
#include <QTransform>

namespace mirn::zelchipview {

// Pixels that pens and antialiasing reach beyond an element's geometry.
constexpr double PenMargin = 2.0;

// Pens narrower than this, in pixels, draw thin lines. QPainter's own limit is slightly higher.
constexpr double WidePenThreshold = 0.999;

// The elements that look different. Nothing is owned.
struct PaintStates
{
    const ElementIdSet* selected;
    const ElementIdSet* highlighted;
    const ElementIdSet* filtered; // null while the filter is off

    [[nodiscard]] ElementStates of(int elementId) const
    {
        ElementStates states;
        states.setFlag(ElementState::Selected, selected->contains(elementId));
        states.setFlag(ElementState::Highlighted, highlighted->contains(elementId));
        states.setFlag(ElementState::Filtered, filtered && filtered->contains(elementId));
        return states;
    }
};

// Where a display list is painted, and how.
struct PaintTarget
{
    QImage* image; // Format_RGB32
    QRect part; // must be painted right; around it anything may be painted
    QTransform sceneToImage;
    QPainter::RenderHints hints;
    QPen textPen;
    QFont viewFont; // TextShaper says what texts take from it
    double smallestText = 0; // pixels; texts in a smaller size are left out
};

// Returns the area of the scene that a part of the image shows, with the margin of pens.
[[nodiscard]] inline QRectF sceneArea(const QTransform& sceneToImage, const QRect& part)
{
    return sceneToImage.inverted().mapRect(enlarged(part, PenMargin));
}

} // namespace mirn::zelchipview
