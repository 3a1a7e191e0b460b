// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/contenthash.h"
#include "platform/svg/drawingreader.h"

#include <cstdint>
#include <string>

namespace zelsvg {

// By what a working file recognises the drawing that it was made from.
struct DrawingKey
{
    std::uint64_t size = 0;
    std::int64_t seconds = 0; // of the last change
    std::int64_t nanoseconds = 0;
    std::uint64_t hash = 0; // of the content
};

// A drawing file that is open for reading. Its content is hashed while it is read.
class DrawingFile final : public DrawingSource
{
public:
    DrawingFile() = default;
    ~DrawingFile() override;
    DrawingFile(const DrawingFile&) = delete;
    DrawingFile& operator=(const DrawingFile&) = delete;

    // False, with `reason`, for anything but a readable regular file.
    bool open(const std::string& path, std::string& reason);

    long read(char* buffer, std::size_t size) override;
    bool rewind() override;

    // Size and time as of open(); the hash of what has been read since then or since rewind().
    [[nodiscard]] DrawingKey key() const;

    // Reads on to the end for the hash alone, without a copy of the content. False after a read error.
    bool hashToEnd();

    // True when all that open() saw has been read.
    [[nodiscard]] bool isComplete() const { return m_readSize == m_key.size; }

private:
    int m_descriptor = -1;
    DrawingKey m_key; // without the hash
    std::uint64_t m_readSize = 0;
    ContentHash m_hash;
};

} // namespace zelsvg
