// SPDX-License-Identifier: MIT

// Reads the input as a drawing, in the quick and in the thorough way, which must not differ.

#include "platform/svg/reading/drawingreader.h"
#include "platform/svg/reading/gunzipsource.h"
#include "platform/svg/records/recordobjects.h"
#include "tests/svg/memorysource.h"

#include <cstdlib>

namespace {

// With these limits a small input cannot be slow.
[[nodiscard]] mirn::zelsvg::Limits smallLimits()
{
    mirn::zelsvg::Limits limits;
    limits.records = 20'000;
    limits.points = 100'000;
    limits.instances = 20'000;
    limits.instanceBytes = 1'000'000;
    limits.selectorTests = 1'000'000;
    return limits;
}

void checkDrawing(const mirn::zelsvg::Drawing& drawing)
{
    const zel_Parameter& parameter = drawing.parameter;
    if (!(parameter.width > 0.0 && parameter.height > 0.0 && parameter.initialScale > 0.0 && parameter.scaleStep > 0.0))
        std::abort();
    mirn::zelsvg::RecordUnpacker unpacker(drawing.records);
    drawing.records.records().forEach([&](const mirn::zelsvg::PackedRecord& record) {
        const zel_SingleGraphItem& item = unpacker.unpacked(record);
        if (parameter.layerRanges.count(item.layer) == 0 || !item.name || !item.tooltip)
            std::abort();
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const mirn::zelsvg::Limits limits = smallLimits();
    MemorySource whole(bytes);
    mirn::zelsvg::Diagnostics diagnostics("input");
    mirn::zelsvg::Drawing drawing;
    mirn::zelsvg::GunzipSource unpacked(whole);
    readDrawing(unpacked, diagnostics, limits, drawing);
    checkDrawing(drawing);
    // Tags end with a block or go on in the next one.
    for (std::size_t blockSize : {size + 1, 1 + size % 61}) {
        MemorySource quick(bytes, blockSize);
        MemorySource thorough(bytes, blockSize);
        if (everythingRead(quick, limits, mirn::zelsvg::XmlReading::Quick)
            != everythingRead(thorough, limits, mirn::zelsvg::XmlReading::Thorough))
            std::abort();
    }
    return 0;
}
