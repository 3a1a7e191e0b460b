// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/document/element.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zelsvg {

// What a declaration weighs against another one for the same property: importance, then where it stands, then how
// specific its selector is, then its order. The heavier one wins, of two alike the later.
class Weight
{
public:
    static constexpr std::uint64_t Attribute = 0;
    static constexpr std::uint64_t StyleAttribute = std::uint64_t(1) << 62;
    static constexpr std::uint64_t Important = std::uint64_t(1) << 63;

    // `specificity` below 2^28.
    [[nodiscard]] static constexpr std::uint64_t ofRule(std::uint32_t specificity, std::uint32_t order)
    {
        return std::uint64_t(1) << 61 | std::uint64_t(specificity) << 32 | order;
    }
};

// The declared values of one element's style properties, of which the heaviest win.
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

    // Of a style attribute: "fill: red; stroke: none !important". The text must live as long as the values are asked;
    // the values of one with comments last until the next such text.
    void addStyle(std::string_view text);

    [[nodiscard]] bool isEmpty() const { return m_present == 0; }
    [[nodiscard]] bool has(AttributeName property) const { return m_present >> static_cast<std::size_t>(property) & 1; }
    [[nodiscard]] std::string_view value(AttributeName property) const
    {
        return has(property) ? m_declared[static_cast<std::size_t>(property)].value : std::string_view();
    }

    // Calls function(property, value) for every property that has a value, in the order of AttributeName. Where it
    // returns false, which says that the value is unreadable, it is called with the value that this one overrode.
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
    std::string m_withoutComments; // the style attribute, where it has any
};

} // namespace zelsvg
