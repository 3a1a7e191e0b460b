// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/drawing.h"
#include "platform/svg/drawingfile.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace zelsvg {

// The layout of a working file: a header, then the sections in the order of their sizes in it. All numbers are in the
// machine's own byte order; the format number tells one order from the other, so a foreign file is just not valid.
// Raise the version with every change here and with every change of what the parser makes of a drawing.
struct ImageHeader
{
    static constexpr char Magic[8] = {'Z', 'E', 'L', 'S', 'V', 'G', 'W', '\n'};
    static constexpr std::uint32_t Version = 1;

    char magic[8];
    std::uint32_t version;
    std::uint32_t recordSize; // of an ImageRecord
    DrawingKey key;

    double width;
    double height;
    double initialScale;
    double minimumScale;
    double maximumScale;
    double scaleStep;

    std::uint64_t lines; // how many records of each kind
    std::uint64_t rects;
    std::uint64_t polygons;
    std::uint64_t texts;
    std::uint64_t layers; // how many entries in each further section
    std::uint64_t spans;
    std::uint64_t points;
    std::uint64_t warnings;
    std::uint64_t textBytes;

    std::uint64_t bodyHash; // of everything behind the header
    std::uint64_t headerHash; // of everything before this

    [[nodiscard]] std::uint64_t records() const { return lines + rects + polygons + texts; }
};

struct ImageLayer
{
    double minimum;
    double maximum;
    std::int64_t number;
};

// A text: where it begins in the text section and its length. The section begins with a NUL.
struct ImageText
{
    std::uint32_t offset;
    std::uint32_t length;
};

struct ImageSpan
{
    double x;
    double y;
    ImageText text;
};

// A record of any kind. `values` are its coordinates (a text's font size behind them); a polygon's points and a text's
// spans are the next ones of their section that no record before it has taken, `count` of them.
struct ImageRecord
{
    double values[4];
    double strokeWidth;
    ImageText text;
    ImageText family;
    std::uint32_t name; // offsets in the text section
    std::uint32_t tooltip;
    std::int32_t id;
    std::int32_t layer;
    std::uint32_t fillColor;
    std::uint32_t strokeColor;
    std::int32_t rotation;
    std::uint32_t count;
    std::uint32_t kindAndFlag; // the flag is bit 8
    std::uint32_t unused; // 0
};

// The whole image of a drawing.
[[nodiscard]] std::string makeImage(const DrawingKey& key, const Drawing& drawing);

// Puts into `header`, otherwise complete, the hashes that make it one with `body`.
void seal(ImageHeader& header, std::string_view body);

// The header at the begin of an image of `fileSize` bytes. False when it cannot be one.
bool readHeader(std::string_view image, std::uint64_t fileSize, ImageHeader& header);

// Takes the drawing from what stands behind the header. False when the two do not go together; `drawing` is then of no
// use.
bool readBody(const ImageHeader& header, std::string_view body, Drawing& drawing);

} // namespace zelsvg
