// SPDX-License-Identifier: MIT
#include "platform/svg/xml/xmlreading.h"

#include "platform/svg/xml/quickxmlreader.h"
#include "platform/svg/xml/xmlreader.h"

namespace mirn::zelsvg {

std::unique_ptr<TagReader> makeTagReader(
    XmlReading reading, XmlHandler& handler, Diagnostics& diagnostics, const Limits& limits)
{
    if (reading == XmlReading::Quick)
        return std::make_unique<QuickXmlReader>(handler, diagnostics, limits);
    return std::make_unique<XmlReader>(handler, diagnostics, limits);
}

} // namespace mirn::zelsvg
