// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/records/drawing.h"
#include "platform/svg/workingfile/drawingfile.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

namespace mirn::zelsvg {

// The layout of a working file: a header, then the sections with entries as they are in memory. All numbers are in
// native byte order; a file in the other order has a different version number and is thus invalid. Increment the
// version with every change here or in packedrecord.h, and with every change of what the parser makes of a drawing.
struct ImageHeader
{
    static constexpr char Magic[8] = {'Z', 'E', 'L', 'S', 'V', 'G', 'W', '\n'};
    static constexpr std::uint32_t Version = 4;

    char magic[8];
    std::uint32_t version;
    std::uint32_t recordSize; // size of a PackedRecord
    DrawingKey key;

    double width;
    double height;
    double initialScale;
    double minimumScale;
    double maximumScale;
    double scaleStep;

    // The numbers of entries of the sections, in their order.
    std::uint64_t records;
    std::uint64_t points;
    std::uint64_t looks;
    std::uint64_t spans;
    std::uint64_t layers;
    std::uint64_t warnings;
    std::uint64_t textBytes;

    std::uint64_t bodyHash; // hash of everything after the header
    std::uint64_t headerHash; // hash of everything before this member
};

struct ImageLayer
{
    double minimum;
    double maximum;
    std::int64_t number;
};

// Offset and length of a text in the text section; it may contain any bytes. The section begins and ends with a NUL.
struct ImageText
{
    std::uint32_t offset;
    std::uint32_t length;
};

// Passes the whole image of a drawing to `write`, piece by piece. Returns false if `write` does or if the drawing is
// too large for an image.
bool writeImage(const DrawingKey& key, const Drawing& drawing, const std::function<bool(std::string_view)>& write);

// Sets the hashes of a header that is complete otherwise, so that it belongs to `body`.
void seal(ImageHeader& header, std::string_view body);

// Reads the header at the beginning of an image of `fileSize` bytes. Returns false if it is not valid.
bool readHeader(std::string_view image, std::uint64_t fileSize, ImageHeader& header);

// Makes `drawing` a view of the image, which begins with this header. Returns false if the image is not valid;
// `drawing` must then be discarded. All numbers that refer to other parts of the image are checked.
bool showImage(const ImageHeader& header, std::shared_ptr<const char> image, Drawing& drawing);

} // namespace mirn::zelsvg
