// SPDX-License-Identifier: MIT
#include "platform/svg/tagreader.h"

#include "platform/svg/quickxmlreader.h"
#include "platform/svg/xmlreader.h"

namespace zelsvg {

std::unique_ptr<TagReader> makeTagReader(
    XmlReading reading, XmlHandler& handler, Diagnostics& diagnostics, const Limits& limits)
{
    if (reading == XmlReading::Quick)
        return std::make_unique<QuickXmlReader>(handler, diagnostics, limits);
    return std::make_unique<XmlReader>(handler, diagnostics, limits);
}

} // namespace zelsvg
