// SPDX-License-Identifier: MIT
#include "platform/svg/reading/gunzipsource.h"

#include "platform/svg/base/limits.h"

#include <zlib.h>

#include <algorithm>
#include <new>

namespace mirn::zelsvg {

namespace {

constexpr std::size_t BlockSize = std::size_t(1) << 16;
constexpr std::size_t LargestPiece = std::size_t(1) << 30; // the most that zlib can count

// The first of gzip's two magic bytes. No XML file begins with it in any encoding.
constexpr char Magic = '\x1F';

constexpr int LargestWindow = 15;
constexpr int GzipFormat = 16; // added to the window's size to select the format

} // namespace

void GunzipSource::StreamDeleter::operator()(z_stream_s* stream) const
{
    ::inflateEnd(stream);
    delete stream;
}

GunzipSource::GunzipSource(DrawingSource& packed)
    : m_packed(packed)
{ }

GunzipSource::~GunzipSource() = default;

long GunzipSource::read(char* buffer, std::size_t size)
{
    switch (m_state) {
    case State::Begin:
        return start(buffer, size);
    case State::Plain:
        return m_packed.read(buffer, size);
    case State::Packed:
        return unpack(buffer, size);
    default:
        return m_state == State::Behind ? 0 : -1;
    }
}

std::string GunzipSource::readError() const
{
    return m_error.empty() ? m_packed.readError() : m_error;
}

bool GunzipSource::rewind()
{
    m_state = State::Begin;
    m_stream.reset();
    m_size = 0;
    m_error.clear();
    return m_packed.rewind();
}

long GunzipSource::start(char* buffer, std::size_t size)
{
    const long length = m_packed.read(buffer, size);
    m_state = State::Plain;
    if (length <= 0 || buffer[0] != Magic)
        return length;
    m_state = State::Packed;
    m_size = static_cast<std::uint64_t>(length);
    m_block.assign(buffer, buffer + length);
    m_block.resize(std::max(m_block.size(), BlockSize));
    auto stream = std::make_unique<z_stream_s>();
    *stream = {};
    if (::inflateInit2(stream.get(), LargestWindow + GzipFormat) != Z_OK)
        throw std::bad_alloc();
    m_stream.reset(stream.release());
    m_stream->next_in = reinterpret_cast<Bytef*>(m_block.data());
    m_stream->avail_in = static_cast<uInt>(length);
    return unpack(buffer, size);
}

long GunzipSource::unpack(char* buffer, std::size_t size)
{
    char* next = buffer;
    char* end = buffer + std::min(size, LargestPiece);
    while (next != end && m_state == State::Packed) {
        if (m_stream->avail_in > 0 || fill())
            inflateInto(next, end);
    }
    return next != buffer ? static_cast<long>(next - buffer) : m_state == State::Behind ? 0 : -1;
}

// Reads the next block of the compressed file. Returns false at its end and after an error.
bool GunzipSource::take()
{
    const long length = m_packed.read(m_block.data(), m_block.size());
    m_stream->next_in = reinterpret_cast<Bytef*>(m_block.data());
    m_stream->avail_in = static_cast<uInt>(std::max(length, 0L));
    m_size += m_stream->avail_in;
    if (length < 0)
        m_state = State::Damaged;
    else if (m_size > Limits().fileSize)
        fail("found more than 1 GiB, expected a smaller file");
    return length > 0 && m_state == State::Packed;
}

bool GunzipSource::fill()
{
    if (!take() && m_state == State::Packed)
        fail("found the end of the file, expected the rest of the compressed drawing: the file is truncated");
    return m_state == State::Packed;
}

void GunzipSource::inflateInto(char*& next, char* end)
{
    m_stream->next_out = reinterpret_cast<Bytef*>(next);
    m_stream->avail_out = static_cast<uInt>(end - next);
    const int status = ::inflate(m_stream.get(), Z_NO_FLUSH);
    next = end - m_stream->avail_out;
    if (status == Z_MEM_ERROR)
        throw std::bad_alloc();
    if (status == Z_STREAM_END)
        goBehind();
    else if (status != Z_OK && status != Z_BUF_ERROR)
        fail("found damaged data, expected what gzip compressed");
}

// A compressed member may be followed by nothing, by zeros or by another member.
void GunzipSource::goBehind()
{
    while (m_stream->avail_in == 0 || *m_stream->next_in == 0) {
        if (m_stream->avail_in > 0) {
            ++m_stream->next_in;
            --m_stream->avail_in;
        } else if (!take()) {
            m_state = m_state == State::Packed ? State::Behind : m_state;
            return;
        }
    }
    if (*m_stream->next_in == static_cast<Bytef>(Magic))
        ::inflateReset(m_stream.get());
    else
        fail("found something behind the compressed drawing, expected the end of the file");
}

void GunzipSource::fail(const char* message)
{
    m_state = State::Damaged;
    m_error = "at byte " + std::to_string(m_size - m_stream->avail_in) + " of the compressed file: " + message;
}

} // namespace mirn::zelsvg
