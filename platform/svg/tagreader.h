// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/diagnostics.h"

#include <memory>

namespace zelsvg {

class ByteSource;
class XmlHandler;
struct Limits;

// The two ways to read XML: fast, with what drawings rarely hold left out, and in full.
enum class XmlReading { Quick, Thorough };

// Reads the tags of an XML file. Knows its place while the handler is called.
class TagReader : public PositionSource
{
public:
    // To the end of the file, the first error or until the handler has finished. False when this reader gives up on
    // what another one may read; what the handler has got by then is of no use.
    [[nodiscard]] virtual bool read(ByteSource& source) = 0;
};

[[nodiscard]] std::unique_ptr<TagReader> makeTagReader(
    XmlReading reading, XmlHandler& handler, Diagnostics& diagnostics, const Limits& limits);

} // namespace zelsvg
