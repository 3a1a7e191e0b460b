// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace zelsvg {

// What a drawing may cost. A drawing beyond a limit fails with a message; the defaults leave room for anything a device
// floorplan needs and keep a hostile file to about half a gigabyte and a second or two.
struct Limits
{
    std::uint64_t fileSize = std::uint64_t(1) << 30; // bytes
    int nesting = 256; // open elements, instances included
    std::size_t records = 4'000'000;
    std::size_t points = 32'000'000; // of all polygons together
    std::size_t nodes = 8'000'000; // elements kept for `use`, style sheets and gradients
    std::size_t attributes = 32'000'000; // of these
    std::size_t styleRules = 2'000'000; // selectors and declarations of style sheets
    std::size_t instances = 4'000'000; // elements drawn through `use`
    std::size_t instanceBytes = std::size_t(1) << 27; // of their attribute values and texts
    std::size_t selectorTests = 400'000'000; // steps taken to match selectors with elements
};

// The largest magnitude that a number or a resulting coordinate may have.
constexpr double LargestNumber = 1e9;

} // namespace zelsvg
