// SPDX-License-Identifier: MIT
#include "platform/svg/document/elementdecoder.h"

#include "platform/svg/base/diagnostics.h"
#include "platform/svg/base/limits.h"

#include <algorithm>

namespace mirn::zelsvg {

namespace {

constexpr std::size_t MostSpaces = 1000; // declared at the same time

struct QualifiedName
{
    std::string_view prefix;
    std::string_view local;
};

[[nodiscard]] QualifiedName splitName(std::string_view name)
{
    const std::size_t colon = name.find(':');
    if (colon == std::string_view::npos)
        return {{}, name};
    return {name.substr(0, colon), name.substr(colon + 1)};
}

[[nodiscard]] bool isDeclaration(std::string_view attribute)
{
    constexpr std::string_view Word = "xmlns";
    return attribute.front() == Word.front() && attribute.substr(0, Word.size()) == Word
        && (attribute.size() == Word.size() || attribute[Word.size()] == ':');
}

} // namespace

ElementDecoder::ElementDecoder(ElementReceiver& receiver, Diagnostics& diagnostics, const Limits& limits)
    : m_receiver(receiver)
    , m_diagnostics(diagnostics)
    , m_limits(limits)
    // The prefixes that need no declaration, and those whose declaration some drawings lack.
    , m_bindings{{"", XmlNamespace::Svg, 0}, {"xml", XmlNamespace::Xml, 0}, {"xlink", XmlNamespace::Xlink, 0},
          {"tovanel", XmlNamespace::Tovanel, 0}}
{ }

void ElementDecoder::startTag(const XmlName& name, const XmlAttribute* attributes, std::size_t count)
{
    if (++m_depth > m_limits.nesting) {
        m_diagnostics.fail(
            "found elements nested too deep, expected at most " + std::to_string(m_limits.nesting) + " levels");
        return;
    }
    if (m_skippedDepth > 0)
        return;
    declareSpaces(attributes, count);
    m_element.reset(elementName(name));
    if (m_element.name() != ElementName::Unknown) {
        for (std::size_t i = 0; i < count; ++i) {
            const AttributeName attribute = attributeName(attributes[i].name);
            if (attribute != AttributeName::Unknown)
                m_element.set(attribute, attributes[i].value);
        }
    }
    if (m_depth == 1)
        checkRoot(name.text());
    if (m_diagnostics.hasFailed() || !m_receiver.startElement(m_element))
        m_skippedDepth = m_depth;
}

void ElementDecoder::endTag()
{
    if (m_skippedDepth == 0)
        m_receiver.endElement();
    if (m_skippedDepth == m_depth)
        m_skippedDepth = 0;
    if (m_bindings.back().depth == m_depth)
        forgetSpaces();
    --m_depth;
}

void ElementDecoder::text(std::string_view text)
{
    if (m_skippedDepth == 0)
        m_receiver.characters(text);
}

void ElementDecoder::declareSpaces(const XmlAttribute* attributes, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        const std::string_view name = attributes[i].name.text();
        if (!isDeclaration(name))
            continue;
        const QualifiedName qualified = splitName(name);
        const std::string_view prefix = qualified.prefix.empty() ? std::string_view() : qualified.local;
        m_bindings.push_back({std::string(prefix), namespaceOfUri(attributes[i].value), m_depth});
        m_elementNames.clear();
        m_attributeNames.clear();
    }
    if (m_bindings.size() > MostSpaces)
        m_diagnostics.fail(
            "found more than " + std::to_string(MostSpaces) + " declarations of namespaces, expected fewer");
}

// Removes the bindings of the element that ends.
void ElementDecoder::forgetSpaces()
{
    while (m_bindings.back().depth == m_depth)
        m_bindings.pop_back();
    m_elementNames.clear();
    m_attributeNames.clear();
}

XmlNamespace ElementDecoder::spaceOf(std::string_view prefix) const
{
    for (auto binding = m_bindings.rbegin(); binding != m_bindings.rend(); ++binding) {
        if (binding->prefix == prefix)
            return binding->space;
    }
    return XmlNamespace::Other;
}

ElementName ElementDecoder::elementName(const XmlName& name)
{
    return m_elementNames.meaning(name, [&] {
        const QualifiedName qualified = splitName(name.text());
        return mirn::zelsvg::elementName(spaceOf(qualified.prefix), qualified.local);
    });
}

AttributeName ElementDecoder::attributeName(const XmlName& name)
{
    return m_attributeNames.meaning(name, [&] {
        const QualifiedName qualified = splitName(name.text());
        const XmlNamespace space = qualified.prefix.empty() ? XmlNamespace::None : spaceOf(qualified.prefix);
        return space == XmlNamespace::Other ? AttributeName::Unknown
                                            : mirn::zelsvg::attributeName(space, qualified.local);
    });
}

void ElementDecoder::checkRoot(std::string_view name)
{
    if (m_element.name() == ElementName::Svg)
        return;
    std::string message = "found the element <" + std::string(name.substr(0, 40)) + ">";
    if (splitName(name).local == "svg")
        message += " of another namespace, expected xmlns=\"http://www.w3.org/2000/svg\"";
    else
        message += ", expected <svg>";
    m_diagnostics.fail(message);
}

} // namespace mirn::zelsvg
