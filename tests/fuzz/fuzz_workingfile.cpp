// SPDX-License-Identifier: MIT

// Reads the input as a working file whose hashes are right: the first bytes choose the numbers of the header, the rest
// is the body.

#include "platform/svg/workingimage.h"

#include <cstddef>
#include <cstring>

using zelsvg::ImageHeader;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    constexpr std::size_t CountSize = 9;
    if (size < CountSize)
        return 0;
    ImageHeader header{};
    std::memcpy(header.magic, ImageHeader::Magic, sizeof header.magic);
    header.version = ImageHeader::Version;
    header.recordSize = sizeof(zelsvg::ImageRecord);
    header.width = header.height = header.initialScale = 1.0;
    header.minimumScale = header.maximumScale = header.scaleStep = 1.0;
    std::uint64_t* counts[] = {&header.lines, &header.rects, &header.polygons, &header.texts, &header.layers,
        &header.spans, &header.points, &header.warnings};
    for (std::size_t i = 0; i < 8; ++i)
        *counts[i] = data[i] % 16;
    // The text section takes what the others leave, or something else.
    const std::size_t bodySize = size - CountSize;
    const std::uint64_t taken = header.records() * sizeof(zelsvg::ImageRecord)
        + header.layers * sizeof(zelsvg::ImageLayer) + header.spans * sizeof(zelsvg::ImageSpan)
        + header.points * sizeof(zel_Point) + header.warnings * sizeof(zelsvg::ImageText);
    header.textBytes = bodySize > taken ? bodySize - taken + data[8] % 2 : data[8];
    std::string image(sizeof header, '\0');
    image.append(reinterpret_cast<const char*>(data) + CountSize, bodySize);
    const std::string_view body = std::string_view(image).substr(sizeof header);
    zelsvg::seal(header, body);
    std::memcpy(image.data(), &header, sizeof header);

    ImageHeader read;
    zelsvg::Drawing drawing;
    std::size_t length = 0;
    if (readHeader(image, image.size(), read) && readBody(read, body, drawing)) {
        for (const zel_SingleGraphItem* item : drawing.records.items())
            length += std::strlen(item->name) + std::strlen(item->tooltip);
    }
    return length > image.size() * image.size() ? 1 : 0;
}
