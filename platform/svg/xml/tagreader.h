// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/base/diagnostics.h"

namespace mirn::zelsvg {

class ByteSource;

// Reads the tags of an XML file and passes them to a handler, which it does not own. It knows the position while the
// handler is called.
class TagReader : public PositionSource
{
public:
    // Reads to the end of the file, to the first error, or until the handler has finished. Returns false if this reader
    // gives up on something that another one may be able to read; what the handler has received must then be discarded.
    [[nodiscard]] virtual bool read(ByteSource& source) = 0;
};

} // namespace mirn::zelsvg
