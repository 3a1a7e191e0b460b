// SPDX-License-Identifier: MIT

// Reads the input as a working file whose hashes are right: the first bytes choose the numbers of the header, the rest
// is the body.

#include "platform/svg/records/recordobjects.h"
#include "platform/svg/workingfile/workingimage.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>

using mirn::zelsvg::ImageHeader;

namespace {

// Reads what every record refers to.
[[nodiscard]] std::size_t lengthOfTexts(const mirn::zelsvg::Drawing& drawing)
{
    std::size_t length = 0;
    const mirn::zelsvg::RecordObjects objects(drawing.records);
    for (const zel_SingleGraphItem* item : objects.items()) {
        length += std::strlen(item->name) + std::strlen(item->tooltip);
        if (const auto* text = dynamic_cast<const zel_Text*>(item))
            length += text->text.size() + text->fontFamily.size();
    }
    return length;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    constexpr std::size_t CountSize = 7;
    if (size < CountSize)
        return 0;
    ImageHeader header{};
    std::memcpy(header.magic, ImageHeader::Magic, sizeof header.magic);
    header.version = ImageHeader::Version;
    header.recordSize = sizeof(mirn::zelsvg::PackedRecord);
    header.width = header.height = header.initialScale = 1.0;
    header.minimumScale = header.maximumScale = header.scaleStep = 1.0;
    std::uint64_t* counts[]
        = {&header.records, &header.points, &header.looks, &header.spans, &header.layers, &header.warnings};
    for (std::size_t i = 0; i < 6; ++i)
        *counts[i] = data[i] % 16;
    // The text section takes what the others leave, or something else.
    const std::size_t bodySize = size - CountSize;
    const std::uint64_t taken = header.records * sizeof(mirn::zelsvg::PackedRecord) + header.points * sizeof(zel_Point)
        + header.looks * sizeof(mirn::zelsvg::PackedLook) + header.spans * sizeof(mirn::zelsvg::PackedSpan)
        + header.layers * sizeof(mirn::zelsvg::ImageLayer) + header.warnings * sizeof(mirn::zelsvg::ImageText);
    header.textBytes = bodySize > taken ? bodySize - taken + data[6] % 2 : data[6];
    const std::size_t imageSize = sizeof header + bodySize;
    const std::shared_ptr<char> image(new char[imageSize], std::default_delete<char[]>());
    std::memcpy(image.get() + sizeof header, data + CountSize, bodySize);
    seal(header, {image.get() + sizeof header, bodySize});
    std::memcpy(image.get(), &header, sizeof header);

    ImageHeader read;
    mirn::zelsvg::Drawing drawing;
    if (!readHeader({image.get(), imageSize}, imageSize, read) || !showImage(read, image, drawing))
        return 0;
    if (lengthOfTexts(drawing) > imageSize * imageSize)
        std::abort();
    return 0;
}
