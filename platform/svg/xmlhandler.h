// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/xmlname.h"

#include <cstddef>
#include <string>
#include <string_view>

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

struct XmlAttribute
{
    XmlName name;
    std::string_view value;
};

// Takes the tags of an XML file as they come. Names are as written, with their prefix. All texts are UTF-8, valid
// during the call.
class XmlHandler
{
public:
    virtual ~XmlHandler() = default;

    virtual void startTag(const XmlName& name, const XmlAttribute* attributes, std::size_t count) = 0;
    virtual void endTag() = 0;
    virtual void text(std::string_view text) = 0;

    // Asked after each of these: true ends reading.
    [[nodiscard]] virtual bool isFinished() const = 0;
};

} // namespace zelsvg
