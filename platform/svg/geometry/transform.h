// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelgraphicrecords.h"
#include "platform/svg/style/length.h"

#include <string_view>

namespace zelsvg {

class Diagnostics;

// An affine map: x' = a x + c y + e, y' = b x + d y + f.
struct Matrix
{
    double a = 1.0;
    double b = 0.0;
    double c = 0.0;
    double d = 1.0;
    double e = 0.0;
    double f = 0.0;

    [[nodiscard]] zel_Point map(double x, double y) const { return {a * x + c * y + e, b * x + d * y + f}; }

    // Lengths without a direction (stroke widths, font sizes) grow by this.
    [[nodiscard]] double meanScale() const;

    // How much a line that lies along (x, y) in the image grows in width.
    [[nodiscard]] double scaleAcross(double x, double y) const;

    // True when lines grow in width alike, whatever their direction.
    [[nodiscard]] bool isEven() const;

    // True when letters come out as in a mirror.
    [[nodiscard]] bool isMirror() const { return a * d - b * c < 0.0; }

    // The longest image of a vector of length 1.
    [[nodiscard]] double largestScale() const;

    // True when a rect with sides along the axes is mapped to such a rect.
    [[nodiscard]] bool keepsAxes() const;

    // The direction of the x axis in whole degrees, clockwise on the screen, -180 < angle <= 180.
    [[nodiscard]] int rotation() const;
};

// First `inner`, then `outer`.
[[nodiscard]] Matrix operator*(const Matrix& outer, const Matrix& inner);

[[nodiscard]] Matrix translation(double x, double y);

// Reads a transform list. One that cannot be read, or that has absurd numbers, is reported and taken as the identity.
[[nodiscard]] Matrix parseTransform(std::string_view text, Diagnostics& diagnostics);

struct ViewBox
{
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;
};

// False, with a warning where there is text, for anything but four numbers with positive width and height.
bool parseViewBox(std::string_view text, Diagnostics& diagnostics, ViewBox& box);

// Maps `box` into a viewport of the given size at the origin, as preserveAspectRatio says (empty: its default).
[[nodiscard]] Matrix viewBoxTransform(const ViewBox& box, ViewportSize size, std::string_view preserveAspectRatio);

} // namespace zelsvg
