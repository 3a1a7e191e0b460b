// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace mirn::zelsvg {

// Limits for the cost of a drawing; one that exceeds a limit fails with a message. The defaults leave ample space for
// any device floorplan and restrict a hostile file to about half a gigabyte and one or two seconds.
struct Limits
{
    std::uint64_t fileSize = std::uint64_t(1) << 30; // bytes
    int nesting = 256; // open elements, including instances
    std::size_t records = 4'000'000;
    std::size_t points = 32'000'000; // corners of all polygons together
    std::size_t nodes = 8'000'000; // elements stored for `use`, style sheets and gradients
    std::size_t attributes = 32'000'000; // attributes of these elements
    std::size_t styleRules = 2'000'000; // selectors and declarations of style sheets
    std::size_t instances = 4'000'000; // elements drawn through `use`
    std::size_t instanceBytes = std::size_t(1) << 27; // size of the instances' attribute values and texts
    std::size_t selectorTests = 400'000'000; // steps when matching selectors with elements
};

// The largest magnitude of a number in the drawing or of a resulting coordinate.
constexpr double LargestNumber = 1e9;

} // namespace mirn::zelsvg
