// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/document/element.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace mirn::zelsvg {

// The weight of a declaration against others for the same property. It is ordered by importance, then origin, then the
// specificity of the selector, then order. The heaviest declaration wins; of equal ones the later.
class Weight
{
public:
    static constexpr std::uint64_t Attribute = 0;
    static constexpr std::uint64_t StyleAttribute = std::uint64_t(1) << 62;
    static constexpr std::uint64_t Important = std::uint64_t(1) << 63;

    // `specificity` must be below 2^28.
    [[nodiscard]] static constexpr std::uint64_t ofRule(std::uint32_t specificity, std::uint32_t order)
    {
        return std::uint64_t(1) << 61 | std::uint64_t(specificity) << 32 | order;
    }
};

// The cascade of one element: collects its declared values from presentation attributes, style rules and the style
// attribute, and keeps the heaviest for each property. It does not interpret the values and owns hardly any: they
// belong to the element and the style sheet.
class Cascade
{
public:
    void reset()
    {
        m_present = 0;
        m_overridden.clear();
    }

    void set(AttributeName property, std::string_view value, std::uint64_t weight)
    {
        const auto index = static_cast<std::size_t>(property);
        const std::uint64_t bit = std::uint64_t(1) << index;
        Declared declared{value, weight};
        if ((m_present & bit) && m_declared[index].weight > weight) {
            m_overridden.emplace_back(property, declared);
            return;
        }
        if (m_present & bit)
            m_overridden.emplace_back(property, m_declared[index]);
        m_present |= bit;
        m_declared[index] = declared;
    }

    void addAttributes(const Element& element);

    // Adds the declarations of a style attribute, such as "fill: red; stroke: none !important". The text must live as
    // long as the values are used; those of a text with comments are valid until the next text with comments.
    void addStyle(std::string_view text);

    [[nodiscard]] bool isEmpty() const { return m_present == 0; }
    [[nodiscard]] bool has(AttributeName property) const { return m_present >> static_cast<std::size_t>(property) & 1; }
    [[nodiscard]] std::string_view value(AttributeName property) const
    {
        return has(property) ? m_declared[static_cast<std::size_t>(property)].value : std::string_view();
    }

    // Calls function(property, value) for each property that has a value, in the order of AttributeName. If it returns
    // false, which says that the value is unreadable, it is called with the value that this one overrode.
    template <typename Function> void forEach(Function function)
    {
        for (std::uint64_t rest = m_present; rest; rest &= rest - 1) {
            const auto index = static_cast<std::size_t>(__builtin_ctzll(rest));
            const auto property = static_cast<AttributeName>(index);
            if (function(property, m_declared[index].value))
                continue;
            bool isRead = false;
            for (const Declared& declared : overridden(property))
                isRead = isRead || function(property, declared.value);
        }
    }

private:
    struct Declared
    {
        std::string_view value;
        std::uint64_t weight;
    };

    [[nodiscard]] std::vector<Declared> overridden(AttributeName property) const; // the heaviest first

    std::uint64_t m_present = 0;
    Declared m_declared[PropertyCount];
    std::vector<std::pair<AttributeName, Declared>> m_overridden; // in the order of declaration
    std::string m_withoutComments; // a copy of the style attribute, if it has comments
};

} // namespace mirn::zelsvg
