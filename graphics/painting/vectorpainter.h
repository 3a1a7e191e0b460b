// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/listpainter.h"
#include "graphics/painting/text/textshaper.h"

#include <functional>

namespace mirn::zelchipview {

// Draws a part of a display list with any QPainter, as the paint rules have it: for vectors, which a file or a printer
// wants. It keeps nothing of what it has drawn.
class VectorPainter final
{
public:
    struct Target
    {
        QPainter* painter; // its transform becomes the scene's
        QTransform sceneToPicture; // scales evenly
        QRectF area; // in scene units: what lies outside is left out
        double pixel; // the width of a hairline, in scene units
        QPen textPen;
        QFont viewFont;
    };

    explicit VectorPainter(DisplayList& list); // not owned

    // Called now and then with the share of the elements that are done, from 0 to 1. If it returns false the painting
    // stops at once, and the list may be gone.
    using GoesOn = std::function<bool(double share)>;

    // Returns false if it was stopped.
    [[nodiscard]] bool paint(
        const Target& target, const QList<int>& layers, const ListPainter::States& states, const GoesOn& goesOn);

private:
    void draw(const Primitive& primitive, const Target& target, ElementStates states);

    DisplayList& m_list;
    TextShaper m_shaper;
};

} // namespace mirn::zelchipview
