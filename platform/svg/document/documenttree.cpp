// SPDX-License-Identifier: MIT
#include "platform/svg/document/documenttree.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace mirn::zelsvg {

namespace {

// Text inside other elements has no meaning.
[[nodiscard]] bool holdsText(ElementName name)
{
    switch (name) {
    case ElementName::A:
    case ElementName::Style:
    case ElementName::Text:
    case ElementName::TextPath:
    case ElementName::Title:
    case ElementName::TSpan:
        return true;
    default:
        return false;
    }
}

} // namespace

DocumentTree::DocumentTree(Diagnostics& diagnostics, const PositionSource& positions, const Limits& limits)
    : m_diagnostics(diagnostics)
    , m_positions(positions)
    , m_limits(limits)
{ }

bool DocumentTree::startElement(const Element& element)
{
    if (element.name() == ElementName::Unknown)
        return false;
    const unsigned node = addNode(element.name());
    m_open.push_back(node);
    for (std::size_t half = 0; half < 2; ++half) {
        for (std::uint64_t rest = element.present()[half]; rest; rest &= rest - 1) {
            const auto name = static_cast<AttributeName>(half * 64 + static_cast<std::size_t>(__builtin_ctzll(rest)));
            addAttribute(name, element.value(name));
        }
    }
    const std::string_view id = value(node, AttributeName::Id);
    if (!id.empty())
        m_ids.emplace(id, node);
    return true;
}

void DocumentTree::endElement()
{
    m_nodes[m_open.back()].end = size();
    m_open.pop_back();
}

void DocumentTree::characters(std::string_view text)
{
    if (m_open.empty() || !holdsText(m_nodes[m_open.back()].name))
        return;
    const unsigned node = addNode(ElementName::CharacterData);
    addAttribute(AttributeName::Unknown, text);
    m_nodes[node].end = size();
}

void DocumentTree::finish()
{
    while (!m_open.empty())
        endElement();
}

std::string_view DocumentTree::value(unsigned node, AttributeName attribute) const
{
    const Attribute* begin = m_attributes.data() + m_nodes[node].firstAttribute;
    for (const Attribute* a = begin; a != begin + m_nodes[node].attributeCount; ++a) {
        if (a->name == attribute)
            return a->value;
    }
    return {};
}

Position DocumentTree::positionOf(unsigned node, std::string_view part) const
{
    const Attribute* begin = m_attributes.data() + m_nodes[node].firstAttribute;
    for (const Attribute* a = begin; a != begin + m_nodes[node].attributeCount; ++a) {
        const bool isWithin = std::less_equal<>()(a->value, part.data())
            && std::less_equal<>()(part.data(), a->value + std::strlen(a->value));
        if (isWithin && a->lines != LargestDistance)
            return {m_nodes[node].line + a->lines, a->column};
    }
    return position(node);
}

void DocumentTree::fill(unsigned node, Element& element) const
{
    element.reset(m_nodes[node].name, node);
    const Attribute* begin = m_attributes.data() + m_nodes[node].firstAttribute;
    for (const Attribute* a = begin; a != begin + m_nodes[node].attributeCount; ++a)
        element.set(a->name, a->value);
}

std::string_view DocumentTree::text(unsigned node) const
{
    return m_attributes[m_nodes[node].firstAttribute].value;
}

std::string DocumentTree::innerText(unsigned node) const
{
    std::string result;
    for (unsigned inner = node + 1; inner < end(node); ++inner) {
        if (m_nodes[inner].name == ElementName::CharacterData)
            result.append(text(inner));
    }
    return result;
}

unsigned DocumentTree::find(std::string_view id) const
{
    const auto found = m_ids.find(id);
    return found == m_ids.end() ? Element::NoNode : found->second;
}

unsigned DocumentTree::addNode(ElementName name)
{
    if (m_nodes.size() >= m_limits.nodes)
        m_diagnostics.fail(
            "found more than " + std::to_string(m_limits.nodes) + " elements, expected a smaller drawing");
    const Position position = m_positions.position();
    const unsigned node = size();
    m_nodes.push_back(
        {name, m_open.empty() ? Element::NoNode : m_open.back(), node + 1, static_cast<std::uint32_t>(position.line),
            static_cast<std::uint32_t>(position.column), 0, m_attributes.size(), 0});
    return node;
}

void DocumentTree::addAttribute(AttributeName name, std::string_view value)
{
    if (m_attributes.size() >= m_limits.attributes)
        m_diagnostics.fail(
            "found more than " + std::to_string(m_limits.attributes) + " attributes, expected a smaller drawing");
    Node& node = m_nodes.back();
    const Position position = m_positions.positionOf(value);
    const unsigned long lines = std::min<unsigned long>(position.line - node.line, LargestDistance);
    m_attributes.push_back({name, static_cast<std::uint16_t>(lines), static_cast<std::uint32_t>(position.column),
        m_texts.text(m_texts.add(value))});
    ++node.attributeCount;
    node.bytes += value.size() + 1;
}

} // namespace mirn::zelsvg
