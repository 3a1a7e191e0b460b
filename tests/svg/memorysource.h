// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/reading/drawingreader.h"
#include "platform/svg/workingfile/workingimage.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

// A drawing that comes from memory, in blocks of at most so many bytes.
class MemorySource final : public mirn::zelsvg::DrawingSource
{
public:
    explicit MemorySource(std::string_view bytes, std::size_t blockSize = ~std::size_t(0))
        : m_bytes(bytes)
        , m_rest(bytes)
        , m_blockSize(blockSize)
    { }

    long read(char* buffer, std::size_t size) override
    {
        const std::size_t length = std::min({size, m_rest.size(), m_blockSize});
        std::memcpy(buffer, m_rest.data(), length);
        m_rest.remove_prefix(length);
        return static_cast<long>(length);
    }

    bool rewind() override
    {
        m_rest = m_bytes;
        return true;
    }

    bool reportProgress(double) override { return true; }

private:
    std::string_view m_bytes;
    std::string_view m_rest;
    std::size_t m_blockSize;
};

// The result of reading a drawing in this way, as bytes to compare.
[[nodiscard]] inline std::string everythingRead(
    MemorySource& source, const mirn::zelsvg::Limits& limits, mirn::zelsvg::XmlReading reading)
{
    mirn::zelsvg::Diagnostics diagnostics("input");
    mirn::zelsvg::Drawing drawing;
    readDrawing(source, diagnostics, limits, drawing, reading);
    std::string everything = diagnostics.error() + '\n';
    writeImage({}, drawing, [&everything](std::string_view bytes) {
        everything.append(bytes);
        return true;
    });
    return everything;
}
