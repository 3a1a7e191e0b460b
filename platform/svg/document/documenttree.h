// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/base/diagnostics.h"
#include "platform/svg/base/limits.h"
#include "platform/svg/base/textpool.h"
#include "platform/svg/document/element.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace mirn::zelsvg {

// A drawing that is stored as a whole, for drawings whose elements refer to each other: `use`, gradients, style sheets.
// It owns copies of all texts. Nodes are numbered in document order; the root is 0.
class DocumentTree final : public ElementReceiver
{
public:
    DocumentTree(Diagnostics& diagnostics, const PositionSource& positions, const Limits& limits);

    bool startElement(const Element& element) override;
    void endElement() override;
    void characters(std::string_view text) override;
    [[nodiscard]] bool isFinished() const override { return false; }

    // Closes the elements that a mistake in the drawing has left open.
    void finish();

    [[nodiscard]] unsigned size() const { return static_cast<unsigned>(m_nodes.size()); }
    [[nodiscard]] ElementName name(unsigned node) const { return m_nodes[node].name; }
    [[nodiscard]] Position position(unsigned node) const { return {m_nodes[node].line, m_nodes[node].column}; }

    // Returns the position of the attribute whose value contains `part`; that of the node if there is none.
    [[nodiscard]] Position positionOf(unsigned node, std::string_view part) const;

    // The enclosing node; Element::NoNode for the root.
    [[nodiscard]] unsigned parent(unsigned node) const { return m_nodes[node].parent; }

    // The first node after its subtree.
    [[nodiscard]] unsigned end(unsigned node) const { return m_nodes[node].end; }

    [[nodiscard]] std::string_view value(unsigned node, AttributeName attribute) const;
    void fill(unsigned node, Element& element) const;

    // The total size of a node's attribute values, for counting work.
    [[nodiscard]] std::size_t byteCount(unsigned node) const { return m_nodes[node].bytes; }

    // The text of a character data node, and all text inside an element.
    [[nodiscard]] std::string_view text(unsigned node) const;
    [[nodiscard]] std::string innerText(unsigned node) const;

    // Returns Element::NoNode if no element has this id; the first of several with the same id counts.
    [[nodiscard]] unsigned find(std::string_view id) const;

private:
    struct Attribute
    {
        AttributeName name;
        std::uint16_t lines; // lines below its node's; LargestDistance if unknown
        std::uint32_t column;
        const char* value;
    };
    static constexpr unsigned LargestDistance = 0xFFFF;

    struct Node
    {
        ElementName name;
        unsigned parent;
        unsigned end;
        std::uint32_t line;
        std::uint32_t column;
        std::uint32_t attributeCount;
        std::size_t firstAttribute;
        std::size_t bytes;
    };

    unsigned addNode(ElementName name);
    void addAttribute(AttributeName name, std::string_view value);

    Diagnostics& m_diagnostics;
    const PositionSource& m_positions;
    const Limits& m_limits;
    TextPool m_texts;
    std::vector<Node> m_nodes;
    std::vector<Attribute> m_attributes;
    std::vector<unsigned> m_open;
    std::unordered_map<std::string_view, unsigned> m_ids;
};

} // namespace mirn::zelsvg
