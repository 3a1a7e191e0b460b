// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/base/bytesource.h"
#include "platform/svg/xml/xmlname.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace mirn::zelsvg {

struct XmlAttribute
{
    XmlName name;
    std::string_view value;
};

// Receives the tags of an XML file in their order; the reader does not own it. Names are as written, including their
// prefix. All texts are UTF-8 and valid during the call only.
class XmlHandler
{
public:
    virtual ~XmlHandler() = default;

    virtual void startTag(const XmlName& name, const XmlAttribute* attributes, std::size_t count) = 0;
    virtual void endTag() = 0;
    virtual void text(std::string_view text) = 0;

    // Asked after each of these calls; true ends reading.
    [[nodiscard]] virtual bool isFinished() const = 0;
};

} // namespace mirn::zelsvg
