// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace mirn::zelsvg {

// A name in an XML file; a view that does not own its text. Nearly all names have at most 16 characters; they are
// compared and hashed as two words, which are computed once.
class XmlName
{
public:
    static constexpr std::size_t LongestKey = 16;

    XmlName() = default;
    explicit XmlName(std::string_view text)
        : m_text(text)
    {
        const std::size_t size = text.size();
        const char* p = text.data();
        if (size >= 8) {
            m_first = load<std::uint64_t>(p);
            m_last = load<std::uint64_t>(p + size - 8);
        } else if (size >= 4) {
            m_first = load<std::uint32_t>(p);
            m_last = load<std::uint32_t>(p + size - 4);
        } else if (size > 0) {
            m_first = static_cast<unsigned char>(p[0]) | std::uint64_t(static_cast<unsigned char>(p[size / 2])) << 8;
            m_last = static_cast<unsigned char>(p[size - 1]);
        }
    }

    [[nodiscard]] std::string_view text() const { return m_text; }

    // The first and the last eight characters; fewer for a shorter name.
    [[nodiscard]] std::uint64_t first() const { return m_first; }
    [[nodiscard]] std::uint64_t last() const { return m_last; }
    [[nodiscard]] bool isKey() const { return m_text.size() <= LongestKey; }

    [[nodiscard]] std::size_t hash() const
    {
        const std::uint64_t mixed = (m_first ^ (m_last << 1) ^ m_text.size()) * 0x9E3779B97F4A7C15;
        return static_cast<std::size_t>(mixed >> 32);
    }

    friend bool operator==(const XmlName& a, const XmlName& b)
    {
        return a.m_first == b.m_first && a.m_last == b.m_last && a.m_text.size() == b.m_text.size()
            && (a.isKey() || a.m_text == b.m_text);
    }
    friend bool operator!=(const XmlName& a, const XmlName& b) { return !(a == b); }

private:
    template <typename Word> [[nodiscard]] static Word load(const char* bytes)
    {
        Word word;
        std::memcpy(&word, bytes, sizeof word);
        return word;
    }

    std::string_view m_text;
    std::uint64_t m_first = 0;
    std::uint64_t m_last = 0;
};

} // namespace mirn::zelsvg
