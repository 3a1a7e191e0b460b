// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelgraphicrecords.h"
#include "platform/svg/style/length.h"

#include <string_view>

namespace mirn::zelsvg {

class Diagnostics;

// An affine transform: x' = a x + c y + e, y' = b x + d y + f.
struct Matrix
{
    double a = 1.0;
    double b = 0.0;
    double c = 0.0;
    double d = 1.0;
    double e = 0.0;
    double f = 0.0;

    [[nodiscard]] zel_Point map(double x, double y) const { return {a * x + c * y + e, b * x + d * y + f}; }

    // The scale factor for lengths without a direction, such as font sizes.
    [[nodiscard]] double meanScale() const;

    // The scale factor for the width of a line that has the direction (x, y) after the transform.
    [[nodiscard]] double scaleAcross(double x, double y) const;

    // Whether all lines are scaled in width alike, whatever their direction.
    [[nodiscard]] bool isEven() const;

    // Whether letters come out mirrored.
    [[nodiscard]] bool isMirror() const { return a * d - b * c < 0.0; }

    // The larger scale factor of the two axes.
    [[nodiscard]] double largestScale() const;

    // Whether a rect with sides along the axes is mapped to such a rect.
    [[nodiscard]] bool keepsAxes() const;

    // The direction of the x axis in whole degrees, clockwise on the screen, -180 < angle <= 180.
    [[nodiscard]] int rotation() const;
};

// Applies `inner` first, then `outer`.
[[nodiscard]] Matrix operator*(const Matrix& outer, const Matrix& inner);

[[nodiscard]] Matrix translation(double x, double y);

// Reads a transform list. One that is invalid or contains huge numbers is reported and yields the identity.
[[nodiscard]] Matrix parseTransform(std::string_view text, Diagnostics& diagnostics);

struct ViewBox
{
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;
};

// Returns false for anything but four numbers with a positive width and height. Warns about a text that is not four
// numbers.
bool parseViewBox(std::string_view text, Diagnostics& diagnostics, ViewBox& box);

// Returns the transform of `box` into a viewport of the given size at the origin, according to preserveAspectRatio
// (empty for its default).
[[nodiscard]] Matrix viewBoxTransform(const ViewBox& box, ViewportSize size, std::string_view preserveAspectRatio);

} // namespace mirn::zelsvg
