// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace zelsvg {

// Where the bytes of a drawing come from.
class ByteSource
{
public:
    virtual ~ByteSource() = default;

    // Up to `size` bytes into `buffer`; 0 at the end, negative after an error.
    virtual long read(char* buffer, std::size_t size) = 0;

    // What went wrong, after an error.
    [[nodiscard]] virtual std::string readError() const { return "the file cannot be read to its end"; }
};

// A source that can be read again from its beginning.
class DrawingSource : public ByteSource
{
public:
    virtual bool rewind() = 0;

    // Asked between steps of the work on what has been read, `share` of which is done. False when nobody waits for it
    // any more; reading then fails as well.
    virtual bool isWanted(double share) = 0;
};

} // namespace zelsvg
