// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <type_traits>

namespace mirn::zelsvg {

// The stored form of records: all have one size and no pointers, so that a million of them need little memory and the
// working file can hold them as they are in memory. What many records have in common is stored once, as a look. Texts
// are offsets in the drawing's text pool.

struct PackedPolygon
{
    std::uint64_t first; // index of its first corner among those of all polygons
    std::uint64_t count;
};

struct PackedText
{
    double x;
    double y;
    std::uint32_t text;
    std::uint32_t length;
    std::uint32_t firstSpan; // index among those of all texts
    std::uint32_t spans;
};

struct PackedRecord
{
    union {
        double values[4]; // the two ends of a line; the corner, width and height of a rect
        PackedPolygon polygon;
        PackedText run;
    };
    std::int32_t id;
    std::uint32_t name;
    std::uint32_t tooltip;
    std::uint32_t look;
};

struct PackedLook
{
    double strokeWidth;
    double fontSize;
    std::uint32_t fillColor;
    std::uint32_t strokeColor;
    std::int32_t layer;
    std::int32_t rotation;
    std::uint32_t family;
    std::uint16_t kind; // a zelgraphic_kind
    std::uint16_t flag;
};

struct PackedSpan
{
    double x;
    double y;
    std::uint32_t text;
    std::uint32_t length;
};

static_assert(sizeof(PackedRecord) == 48 && sizeof(PackedLook) == 40 && sizeof(PackedSpan) == 24);

} // namespace mirn::zelsvg
