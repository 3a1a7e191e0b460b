// SPDX-License-Identifier: MIT
#include "platform/svg/base/number.h"

#include "platform/svg/base/diagnostics.h"
#include "platform/svg/base/limits.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace mirn::zelsvg {

namespace {

[[nodiscard]] bool isDigit(char c)
{
    return static_cast<unsigned char>(c - '0') < 10;
}

[[nodiscard]] char lowered(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

// from_chars reports underflow and overflow alike; a negative exponent or a leading zero distinguishes them.
[[nodiscard]] double outOfRange(std::string_view text)
{
    const std::size_t exponent = text.find_first_of("eE");
    const bool isSmall = exponent != std::string_view::npos
        ? text.substr(exponent + 1, 1) == "-"
        : text.substr(0, text.find('.')).find_first_not_of('0') == std::string_view::npos;
    return isSmall ? 0.0 : std::numeric_limits<double>::infinity();
}

// `begin` points after the sign.
[[nodiscard]] const char* scanSlowly(const char* begin, const char* end, double& value)
{
    const auto [stop, code] = std::from_chars(begin, end, value);
    if (code == std::errc::invalid_argument)
        return nullptr;
    if (code == std::errc::result_out_of_range)
        value = outOfRange(std::string_view(begin, static_cast<std::size_t>(stop - begin)));
    return stop;
}

constexpr double PowersOfTen[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// Nearly all numbers are short decimals. This is exact for them, because neither the digits nor the power of ten is
// rounded.
[[nodiscard]] const char* scanPlain(const char* p, const char* end, double& value)
{
    const char* begin = p;
    std::uint64_t digits = 0;
    while (p != end && isDigit(*p))
        digits = digits * 10 + static_cast<unsigned>(*p++ - '0');
    const char* point = p;
    if (p != end && *p == '.') {
        for (++p; p != end && isDigit(*p); ++p)
            digits = digits * 10 + static_cast<unsigned>(*p - '0');
    }
    const auto length = p - begin;
    if (length == 0 || length > 15 || (p != end && (*p == 'e' || *p == 'E')) || (length == 1 && *begin == '.'))
        return scanSlowly(begin, end, value);
    const auto decimals = p - point;
    value = static_cast<double>(digits);
    if (decimals > 1)
        value /= PowersOfTen[decimals - 1];
    return p;
}

} // namespace

const char* scanNumber(const char* begin, const char* end, double& value)
{
    const char* p = begin;
    const bool isNegative = p != end && *p == '-';
    if (p != end && (*p == '-' || *p == '+'))
        ++p;
    if (p == end || *p == '-')
        return nullptr;
    const char* stop = scanPlain(p, end, value);
    if (stop && isNegative)
        value = -value;
    return stop;
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

bool equalsIgnoringCase(std::string_view text, std::string_view lowerCase)
{
    if (text.size() != lowerCase.size())
        return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (lowered(text[i]) != lowerCase[i])
            return false;
    }
    return true;
}

std::string lowered(std::string_view text)
{
    constexpr std::size_t LongestName = 32;
    std::string lower(text.substr(0, LongestName));
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) { return lowered(c); });
    return lower;
}

Scanner::Scanner(std::string_view text, Diagnostics& diagnostics)
    : m_position(text.data())
    , m_end(text.data() + text.size())
    , m_diagnostics(diagnostics)
{ }

std::string_view Scanner::rest() const
{
    return std::string_view(m_position, static_cast<std::size_t>(m_end - m_position));
}

void Scanner::skipSpaces()
{
    while (m_position != m_end && isSpace(*m_position))
        ++m_position;
}

void Scanner::skipSpacesAndComma()
{
    skipSpaces();
    if (m_position != m_end && *m_position == ',') {
        ++m_position;
        skipSpaces();
    }
}

bool Scanner::number(double& value)
{
    const char* stop = scanNumber(m_position, m_end, value);
    if (!stop)
        return false;
    if (!(std::fabs(value) <= LargestNumber)) {
        const std::string_view text(m_position, static_cast<std::size_t>(stop - m_position));
        m_diagnostics.failIn(text, "found the number " + quoted(text) + ", expected one between -1e9 and 1e9");
        value = 0.0;
    }
    m_position = stop;
    return true;
}

bool Scanner::flag(bool& value)
{
    if (peek() != '0' && peek() != '1')
        return false;
    value = *m_position++ == '1';
    return true;
}

bool Scanner::letter(char expected)
{
    if (peek() != expected || isAtEnd())
        return false;
    ++m_position;
    return true;
}

std::string_view Scanner::word()
{
    const char* begin = m_position;
    while (m_position != m_end && ((lowered(*m_position) >= 'a' && lowered(*m_position) <= 'z') || *m_position == '%'))
        ++m_position;
    return std::string_view(begin, static_cast<std::size_t>(m_position - begin));
}

bool Scanner::nextNumber(double& value)
{
    const char* before = m_position;
    skipSpacesAndComma();
    if (number(value))
        return true;
    m_position = before;
    return false;
}

} // namespace mirn::zelsvg
