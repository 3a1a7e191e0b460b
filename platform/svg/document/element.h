// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/document/names.h"

#include <string_view>

namespace zelsvg {

// One element with the attributes that mean something, for the moment in which it is handed on: the values belong to
// whoever hands it on.
class Element
{
public:
    // Where the element is kept, when it is kept at all.
    static constexpr unsigned NoNode = ~0U;

    void reset(ElementName name, unsigned node = NoNode)
    {
        m_name = name;
        m_node = node;
        m_present[0] = m_present[1] = 0;
    }

    // A second value for the same attribute replaces the first.
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

    // Empty where there is none.
    [[nodiscard]] std::string_view value(AttributeName name) const
    {
        return has(name) ? m_values[static_cast<std::size_t>(name)] : std::string_view();
    }

    // One bit per style property that stands as an attribute of its own.
    [[nodiscard]] std::uint64_t properties() const { return m_present[0] & ((std::uint64_t(1) << PropertyCount) - 1); }

    // One bit per attribute, in two words.
    [[nodiscard]] const std::uint64_t* present() const { return m_present; }

private:
    ElementName m_name = ElementName::Unknown;
    unsigned m_node = NoNode;
    std::uint64_t m_present[2] = {0, 0};
    std::string_view m_values[AttributeCount]; // set where the bit is
};

// Takes the elements of a drawing one after the other.
class ElementReceiver
{
public:
    virtual ~ElementReceiver() = default;

    // False leaves the element out with everything in it: neither endElement() nor anything else follows for it.
    virtual bool startElement(const Element& element) = 0;
    virtual void endElement() = 0;
    virtual void characters(std::string_view text) = 0;

    // True when nothing more is wanted, though the drawing is not at its end.
    [[nodiscard]] virtual bool isFinished() const = 0;
};

} // namespace zelsvg
