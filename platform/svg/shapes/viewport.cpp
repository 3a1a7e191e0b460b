// SPDX-License-Identifier: MIT
#include "platform/svg/shapes/viewport.h"

#include "platform/svg/base/diagnostics.h"
#include "platform/svg/base/limits.h"

#include <algorithm>

namespace mirn::zelsvg {

namespace {

// Returns a length of the root element; percentages and values that are not positive count as missing.
[[nodiscard]] double rootLength(const Element& root, AttributeName name, Diagnostics& diagnostics)
{
    double value = 0.0;
    if (root.has(name))
        parseLength(root.value(name), LengthContext(), LengthAxis::Horizontal, diagnostics, value);
    return std::max(value, 0.0);
}

} // namespace

ViewportSize rootSize(const Element& root, Diagnostics& diagnostics)
{
    ViewBox box;
    const bool hasBox = parseViewBox(root.value(AttributeName::ViewBox), diagnostics, box);
    double width = rootLength(root, AttributeName::Width, diagnostics);
    double height = rootLength(root, AttributeName::Height, diagnostics);
    if (hasBox && width == 0.0)
        width = height > 0.0 ? height * box.width / box.height : box.width;
    if (hasBox && height == 0.0)
        height = width * box.height / box.width;
    return {std::min(width, LargestNumber), std::min(height, LargestNumber)};
}

void moveOrigin(const Element& element, double fontSize, Diagnostics& diagnostics, Viewport& viewport)
{
    const LengthContext lengths{fontSize, viewport.size};
    double x = 0.0;
    double y = 0.0;
    parseLength(element.value(AttributeName::X), lengths, LengthAxis::Horizontal, diagnostics, x);
    parseLength(element.value(AttributeName::Y), lengths, LengthAxis::Vertical, diagnostics, y);
    viewport.matrix = viewport.matrix * translation(x, y);
}

void enterViewBox(const Element& element, Diagnostics& diagnostics, Viewport& viewport)
{
    ViewBox box;
    if (!parseViewBox(element.value(AttributeName::ViewBox), diagnostics, box))
        return;
    const std::string_view aspectRatio = element.value(AttributeName::PreserveAspectRatio);
    viewport.matrix = viewport.matrix * viewBoxTransform(box, viewport.size, aspectRatio);
    viewport.size = {box.width, box.height};
}

bool enterViewport(const Element& element, std::string_view width, std::string_view height, double fontSize,
    Diagnostics& diagnostics, Viewport& frame, Viewport& viewport)
{
    const LengthContext lengths{fontSize, viewport.size};
    const auto length = [&](std::string_view text, LengthAxis axis, double otherwise) {
        double value = otherwise;
        parseSize(text, lengths, axis, diagnostics, value);
        return std::min(value, LargestNumber);
    };
    const std::string_view widthText = width.empty() ? element.value(AttributeName::Width) : width;
    const std::string_view heightText = height.empty() ? element.value(AttributeName::Height) : height;
    const ViewportSize size{length(widthText, LengthAxis::Horizontal, viewport.size.width),
        length(heightText, LengthAxis::Vertical, viewport.size.height)};
    moveOrigin(element, fontSize, diagnostics, viewport);
    viewport.size = size;
    frame = viewport;
    if (size.width <= 0.0 || size.height <= 0.0)
        return false;
    enterViewBox(element, diagnostics, viewport);
    return true;
}

} // namespace mirn::zelsvg
