// SPDX-License-Identifier: MIT
#include "host/pictures/deflater.h"

#include <zlib.h>

#include <new>
#include <utility>

namespace mirn::zelchip {

namespace {

constexpr int DeflatedBlock = 65536; // bytes that leave at once

} // namespace

struct Deflater::State
{
    z_stream stream{};
    QByteArray block = QByteArray(DeflatedBlock, Qt::Uninitialized);
};

// The only failure that there is here is too little memory, which ends like any other lack of it.
Deflater::Deflater(Sink sink)
    : m_sink(std::move(sink))
    , m_state(new State)
{
    if (deflateInit(&m_state->stream, Z_DEFAULT_COMPRESSION) != Z_OK)
        throw std::bad_alloc();
}

Deflater::~Deflater()
{
    deflateEnd(&m_state->stream);
}

void Deflater::add(const QByteArray& bytes)
{
    run(bytes, Z_NO_FLUSH);
}

void Deflater::finish()
{
    run({}, Z_FINISH);
}

void Deflater::run(const QByteArray& bytes, int flush)
{
    z_stream& stream = m_state->stream;
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.constData()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    do {
        stream.next_out = reinterpret_cast<Bytef*>(m_state->block.data());
        stream.avail_out = DeflatedBlock;
        deflate(&stream, flush);
        m_sink(QByteArray::fromRawData(m_state->block.constData(), DeflatedBlock - static_cast<int>(stream.avail_out)));
    } while (stream.avail_out == 0);
}

} // namespace mirn::zelchip
