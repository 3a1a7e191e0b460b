// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/document/names.h"

#include <string_view>

namespace mirn::zelsvg {

// One element with those of its attributes that are known here, while the decoder or the tree passes it to a receiver.
// It does not own the values of the attributes.
class Element
{
public:
    // The node of an element that is not stored in a tree.
    static constexpr unsigned NoNode = ~0U;

    void reset(ElementName name, unsigned node = NoNode)
    {
        m_name = name;
        m_node = node;
        m_present[0] = m_present[1] = 0;
    }

    // Replaces an earlier value of the attribute.
    void set(AttributeName name, std::string_view value)
    {
        const auto index = static_cast<std::size_t>(name);
        m_values[index] = value;
        m_present[index / 64] |= std::uint64_t(1) << index % 64;
    }

    [[nodiscard]] ElementName name() const { return m_name; }
    [[nodiscard]] unsigned node() const { return m_node; }

    [[nodiscard]] bool has(AttributeName name) const
    {
        const auto index = static_cast<std::size_t>(name);
        return m_present[index / 64] >> index % 64 & 1;
    }

    // Returns an empty text if the attribute is missing.
    [[nodiscard]] std::string_view value(AttributeName name) const
    {
        return has(name) ? m_values[static_cast<std::size_t>(name)] : std::string_view();
    }

    // One bit for each style property that is given as a presentation attribute.
    [[nodiscard]] std::uint64_t properties() const { return m_present[0] & ((std::uint64_t(1) << PropertyCount) - 1); }

    // One bit for each attribute, in two words.
    [[nodiscard]] const std::uint64_t* present() const { return m_present; }

private:
    ElementName m_name = ElementName::Unknown;
    unsigned m_node = NoNode;
    std::uint64_t m_present[2] = {0, 0};
    std::string_view m_values[AttributeCount]; // valid if the attribute's bit is set
};

// Receives the elements of a drawing in document order: the builder, or the tree that stores a drawing. The caller does
// not own it.
class ElementReceiver
{
public:
    virtual ~ElementReceiver() = default;

    // Returning false skips the element with its content: no further call is made for it, not even endElement().
    virtual bool startElement(const Element& element) = 0;
    virtual void endElement() = 0;
    virtual void characters(std::string_view text) = 0;

    // Whether nothing more is wanted before the end of the drawing.
    [[nodiscard]] virtual bool isFinished() const = 0;
};

} // namespace mirn::zelsvg
