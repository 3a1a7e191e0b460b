// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/document/element.h"
#include "platform/svg/geometry/transform.h"

namespace mirn::zelsvg {

class Diagnostics;

// The coordinate system in which an element is drawn, and the size for its percentages.
struct Viewport
{
    Matrix matrix; // from the element's own coordinates to those of the drawing
    ViewportSize size; // in the element's own coordinates
};

// Returns the size of the root element from its width, height and view box; 0 for what it does not specify.
[[nodiscard]] ViewportSize rootSize(const Element& root, Diagnostics& diagnostics);

// Moves the origin to the element's x and y.
void moveOrigin(const Element& element, double fontSize, Diagnostics& diagnostics, Viewport& viewport);

// Applies the element's view box, if it has one, in a viewport of the current size.
void enterViewBox(const Element& element, Diagnostics& diagnostics, Viewport& viewport);

// Makes `viewport` the one inside a nested svg or symbol element, and `frame` the area that the element occupies,
// without its view box. `width` and `height` override the element's own unless they are empty. Returns false if the
// area is empty.
[[nodiscard]] bool enterViewport(const Element& element, std::string_view width, std::string_view height,
    double fontSize, Diagnostics& diagnostics, Viewport& frame, Viewport& viewport);

} // namespace mirn::zelsvg
