// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/document/element.h"
#include "platform/svg/geometry/transform.h"

namespace zelsvg {

class Diagnostics;

// Where an element is drawn, and what its percentages refer to.
struct Viewport
{
    Matrix matrix; // from the element's own coordinates to those of the drawing
    ViewportSize size; // in the element's own coordinates
};

// The size that the root element gives, from its width, height and view box. What it does not give is 0.
[[nodiscard]] ViewportSize rootSize(const Element& root, Diagnostics& diagnostics);

// Moves the origin to the element's x and y.
void moveOrigin(const Element& element, double fontSize, Diagnostics& diagnostics, Viewport& viewport);

// Takes over the element's view box, if it has one, for a viewport of the present size.
void enterViewBox(const Element& element, Diagnostics& diagnostics, Viewport& viewport);

// Makes `viewport` that of a nested svg or symbol element and `frame` what it lies in, without its view box. `width`
// and `height` go before the element's own where they are not empty. False when there is no room to draw in.
[[nodiscard]] bool enterViewport(const Element& element, std::string_view width, std::string_view height,
    double fontSize, Diagnostics& diagnostics, Viewport& frame, Viewport& viewport);

} // namespace zelsvg
