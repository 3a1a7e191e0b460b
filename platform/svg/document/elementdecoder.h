// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/document/element.h"
#include "platform/svg/document/namecache.h"
#include "platform/svg/xml/xmlhandler.h"

#include <string>
#include <vector>

namespace mirn::zelsvg {

class Diagnostics;
struct Limits;

// Turns tags into elements: resolves namespaces and names, checks the root element and the nesting, and skips what the
// receiver does not want. It interprets no attribute values and owns nothing that it is given.
class ElementDecoder final : public XmlHandler
{
public:
    ElementDecoder(ElementReceiver& receiver, Diagnostics& diagnostics, const Limits& limits);

    void startTag(const XmlName& name, const XmlAttribute* attributes, std::size_t count) override;
    void endTag() override;
    void text(std::string_view text) override;
    [[nodiscard]] bool isFinished() const override { return m_receiver.isFinished(); }

private:
    struct Binding
    {
        std::string prefix; // empty for elements without a prefix
        XmlNamespace space;
        int depth; // nesting depth of the element that declares it
    };

    void declareSpaces(const XmlAttribute* attributes, std::size_t count);
    void forgetSpaces();
    [[nodiscard]] XmlNamespace spaceOf(std::string_view prefix) const;
    [[nodiscard]] ElementName elementName(const XmlName& name);
    [[nodiscard]] AttributeName attributeName(const XmlName& name);
    void checkRoot(std::string_view name);

    ElementReceiver& m_receiver;
    Diagnostics& m_diagnostics;
    const Limits& m_limits;
    std::vector<Binding> m_bindings;
    // The meanings of names; they are valid until a namespace is declared or goes out of scope.
    NameCache<ElementName> m_elementNames;
    NameCache<AttributeName> m_attributeNames;
    Element m_element;
    int m_depth = 0;
    int m_skippedDepth = 0; // the depth of the element being skipped, 0 for none
};

} // namespace mirn::zelsvg
