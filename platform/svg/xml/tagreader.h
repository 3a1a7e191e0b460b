// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/base/diagnostics.h"

namespace zelsvg {

class ByteSource;

// Reads the tags of an XML file. Knows its place while the handler is called.
class TagReader : public PositionSource
{
public:
    // To the end of the file, the first error or until the handler has finished. False when this reader gives up on
    // what another one may read; what the handler has got by then is of no use.
    [[nodiscard]] virtual bool read(ByteSource& source) = 0;
};

} // namespace zelsvg
