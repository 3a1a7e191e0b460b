// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <zlib.h>

// The content as gzip compresses it.
[[nodiscard]] inline QByteArray gzipped(const QByteArray& content)
{
    constexpr int GzipWindow = 15 + 16;
    constexpr int MemoryLevel = 8;
    z_stream stream = {};
    deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, GzipWindow, MemoryLevel, Z_DEFAULT_STRATEGY);
    QByteArray packed(static_cast<int>(deflateBound(&stream, static_cast<uLong>(content.size()))), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(content.constData()));
    stream.avail_in = static_cast<uInt>(content.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.truncate(static_cast<int>(stream.total_out));
    deflateEnd(&stream);
    return packed;
}
