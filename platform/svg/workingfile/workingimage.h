// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/records/drawing.h"
#include "platform/svg/workingfile/drawingfile.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

namespace zelsvg {

// The layout of a working file: a header, then the sections, with entries as they lie in memory. All numbers are in the
// machine's own byte order; the format number tells one order from the other, so a foreign file is just not valid.
// Raise the version with every change here or in packedrecord.h, and with every change of what the parser makes of a
// drawing.
struct ImageHeader
{
    static constexpr char Magic[8] = {'Z', 'E', 'L', 'S', 'V', 'G', 'W', '\n'};
    static constexpr std::uint32_t Version = 3;

    char magic[8];
    std::uint32_t version;
    std::uint32_t recordSize; // of a PackedRecord
    DrawingKey key;

    double width;
    double height;
    double initialScale;
    double minimumScale;
    double maximumScale;
    double scaleStep;

    // How many entries the sections have, in their order.
    std::uint64_t records;
    std::uint64_t points;
    std::uint64_t looks;
    std::uint64_t spans;
    std::uint64_t layers;
    std::uint64_t warnings;
    std::uint64_t textBytes;

    std::uint64_t bodyHash; // of everything behind the header
    std::uint64_t headerHash; // of everything before this
};

struct ImageLayer
{
    double minimum;
    double maximum;
    std::int64_t number;
};

// A text of any bytes: where it begins in the text section and its length. The section begins and ends with a NUL.
struct ImageText
{
    std::uint32_t offset;
    std::uint32_t length;
};

// Hands the whole image of a drawing to `write`, piece by piece. False when `write` is, or when there is no image of
// it.
bool writeImage(const DrawingKey& key, const Drawing& drawing, const std::function<bool(std::string_view)>& write);

// Puts into `header`, otherwise complete, the hashes that make it one with `body`.
void seal(ImageHeader& header, std::string_view body);

// The header at the begin of an image of `fileSize` bytes. False when it cannot be one.
bool readHeader(std::string_view image, std::uint64_t fileSize, ImageHeader& header);

// Makes `drawing` show the image, `size` bytes, that begins with this header. False when the two do not go together;
// `drawing` is then of no use. Every number that leads to another place in the image is checked.
bool showImage(const ImageHeader& header, std::shared_ptr<const char> image, Drawing& drawing);

} // namespace zelsvg
