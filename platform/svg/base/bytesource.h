// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace mirn::zelsvg {

// A source of a drawing's bytes, read once from beginning to end. The readers use it and do not own it.
class ByteSource
{
public:
    virtual ~ByteSource() = default;

    // Reads up to `size` bytes into `buffer`. Returns their number, 0 at the end, or a negative number after an error.
    virtual long read(char* buffer, std::size_t size) = 0;

    // The reason after an error.
    [[nodiscard]] virtual std::string readError() const { return "the file cannot be read to its end"; }
};

// A source that can be read again from its beginning, and through which a load reports its progress and is cancelled.
class DrawingSource : public ByteSource
{
public:
    virtual bool rewind() = 0;

    // Reports progress between the steps of processing what has been read; `share` is the fraction done. Returns false
    // once the load is cancelled; reading then fails as well.
    virtual bool reportProgress(double share) = 0;
};

} // namespace mirn::zelsvg
