// SPDX-License-Identifier: MIT
#include "platform/svg/elementdecoder.h"

#include <cstring>

namespace zelsvg {

namespace {

struct QualifiedName
{
    std::string_view prefix;
    std::string_view local;
};

[[nodiscard]] QualifiedName splitName(const char* name)
{
    const char* colon = nullptr;
    const char* p = name;
    for (; *p; ++p) {
        if (*p == ':' && !colon)
            colon = p;
    }
    if (!colon)
        return {{}, std::string_view(name, static_cast<std::size_t>(p - name))};
    return {std::string_view(name, static_cast<std::size_t>(colon - name)),
        std::string_view(colon + 1, static_cast<std::size_t>(p - colon - 1))};
}

[[nodiscard]] bool isDeclaration(const char* attribute)
{
    return attribute[0] == 'x' && std::strncmp(attribute, "xmlns", 5) == 0
        && (attribute[5] == '\0' || attribute[5] == ':');
}

} // namespace

ElementDecoder::ElementDecoder(ElementReceiver& receiver, Diagnostics& diagnostics, const Limits& limits)
    : m_receiver(receiver)
    , m_diagnostics(diagnostics)
    , m_limits(limits)
    // What nobody needs to declare, and what some drawings forget to.
    , m_bindings{
          {"", Space::Svg, 0}, {"xml", Space::Xml, 0}, {"xlink", Space::Xlink, 0}, {"tovanel", Space::Tovanel, 0}}
{ }

void ElementDecoder::startTag(const char* name, const char* const* attributes)
{
    if (++m_depth > m_limits.nesting) {
        m_diagnostics.fail(
            "found elements nested too deep, expected at most " + std::to_string(m_limits.nesting) + " levels");
        return;
    }
    if (m_leftOutDepth > 0)
        return;
    declareSpaces(attributes);
    decode(name, attributes);
    if (m_depth == 1)
        checkRoot(name);
    if (m_diagnostics.hasFailed() || !m_receiver.startElement(m_element))
        m_leftOutDepth = m_depth;
}

void ElementDecoder::endTag()
{
    if (m_leftOutDepth == 0)
        m_receiver.endElement();
    if (m_leftOutDepth == m_depth)
        m_leftOutDepth = 0;
    while (m_bindings.back().depth == m_depth)
        m_bindings.pop_back();
    --m_depth;
}

void ElementDecoder::text(std::string_view text)
{
    if (m_leftOutDepth == 0)
        m_receiver.characters(text);
}

void ElementDecoder::declareSpaces(const char* const* attributes)
{
    for (; *attributes; attributes += 2) {
        if (isDeclaration(attributes[0])) {
            const char* prefix = attributes[0][5] == ':' ? attributes[0] + 6 : "";
            m_bindings.push_back({prefix, spaceOfUri(attributes[1]), m_depth});
        }
    }
}

Space ElementDecoder::spaceOf(std::string_view prefix) const
{
    for (auto binding = m_bindings.rbegin(); binding != m_bindings.rend(); ++binding) {
        if (binding->prefix == prefix)
            return binding->space;
    }
    return Space::Other;
}

void ElementDecoder::checkRoot(const char* name)
{
    if (m_element.name() == ElementName::Svg)
        return;
    std::string message = "found the element <" + std::string(name).substr(0, 40) + ">";
    if (splitName(name).local == "svg")
        message += " of another namespace, expected xmlns=\"http://www.w3.org/2000/svg\"";
    else
        message += ", expected <svg>";
    m_diagnostics.fail(message);
}

void ElementDecoder::decode(const char* name, const char* const* attributes)
{
    const QualifiedName qualified = splitName(name);
    m_element.reset(elementName(spaceOf(qualified.prefix), qualified.local));
    if (m_element.name() == ElementName::Unknown)
        return;
    for (; *attributes; attributes += 2) {
        const QualifiedName attribute = splitName(attributes[0]);
        const Space space = attribute.prefix.empty() ? Space::None : spaceOf(attribute.prefix);
        if (space == Space::Other)
            continue;
        const AttributeName known = attributeName(space, attribute.local);
        if (known != AttributeName::Unknown)
            m_element.set(known, attributes[1]);
    }
}

} // namespace zelsvg
