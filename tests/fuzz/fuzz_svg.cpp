// SPDX-License-Identifier: MIT

// Reads the input as a drawing. Run it with tests/fuzz/corpus/svg as its corpus.

#include "platform/svg/drawingreader.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

class MemorySource final : public zelsvg::DrawingSource
{
public:
    explicit MemorySource(std::string_view bytes)
        : m_bytes(bytes)
        , m_rest(bytes)
    { }

    long read(char* buffer, std::size_t size) override
    {
        const std::size_t length = std::min(size, m_rest.size());
        std::memcpy(buffer, m_rest.data(), length);
        m_rest.remove_prefix(length);
        return static_cast<long>(length);
    }

    bool rewind() override
    {
        m_rest = m_bytes;
        return true;
    }

private:
    std::string_view m_bytes;
    std::string_view m_rest;
};

// So that a small input cannot be slow.
[[nodiscard]] zelsvg::Limits smallLimits()
{
    zelsvg::Limits limits;
    limits.records = 20'000;
    limits.points = 100'000;
    limits.instances = 20'000;
    limits.instanceBytes = 1'000'000;
    limits.selectorTests = 1'000'000;
    return limits;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    MemorySource source(std::string_view(reinterpret_cast<const char*>(data), size));
    zelsvg::Diagnostics diagnostics("input");
    zelsvg::Drawing drawing;
    readDrawing(source, diagnostics, smallLimits(), drawing);
    const zel_Parameter& parameter = drawing.parameter;
    if (!(parameter.width > 0.0 && parameter.height > 0.0 && parameter.initialScale > 0.0 && parameter.scaleStep > 0.0))
        std::abort();
    for (const zel_SingleGraphItem* item : drawing.records.items()) {
        if (parameter.layerRanges.count(item->layer) == 0 || !item->name || !item->tooltip)
            std::abort();
    }
    return 0;
}
