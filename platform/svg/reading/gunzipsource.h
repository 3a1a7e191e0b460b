// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/base/bytesource.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct z_stream_s;

namespace mirn::zelsvg {

// Decompresses a gzip-compressed drawing (.svgz) while it is read, and passes any other drawing on unchanged. It needs
// a fixed amount of memory, whatever the decompressed size; limiting that is up to the reader.
class GunzipSource final : public DrawingSource
{
public:
    // `packed` is not owned and must be at its beginning.
    explicit GunzipSource(DrawingSource& packed);
    ~GunzipSource() override;
    GunzipSource(const GunzipSource&) = delete;
    GunzipSource& operator=(const GunzipSource&) = delete;

    // Data before a damaged part is returned first.
    long read(char* buffer, std::size_t size) override;
    [[nodiscard]] std::string readError() const override;
    bool rewind() override;
    bool reportProgress(double share) override { return m_packed.reportProgress(share); }

private:
    enum class State { Begin, Plain, Packed, Behind, Damaged };

    long start(char* buffer, std::size_t size);
    long unpack(char* buffer, std::size_t size);
    bool take();
    bool fill();
    void inflateInto(char*& next, char* end);
    void goBehind();
    void fail(const char* message);

    struct StreamDeleter
    {
        void operator()(z_stream_s* stream) const;
    };

    DrawingSource& m_packed;
    State m_state = State::Begin;
    std::unique_ptr<z_stream_s, StreamDeleter> m_stream; // null unless the drawing is compressed
    std::vector<char> m_block; // part of the compressed file
    std::uint64_t m_size = 0; // bytes read from the compressed file
    std::string m_error;
};

} // namespace mirn::zelsvg
