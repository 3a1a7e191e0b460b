// SPDX-License-Identifier: MIT
#include "platform/svg/base/diagnostics.h"

#include <algorithm>

namespace mirn::zelsvg {

namespace {

constexpr const char* UnsupportedTexts[] = {
    "gradients are drawn in the one colour of their middle",
    "patterns are not drawn",
    "pictures are not drawn",
    "filters are left out",
    "masks are left out",
    "clipping is left out",
    "markers are not drawn",
    "dashed lines are drawn solid",
    "foreign objects are not drawn",
    "texts on a path are not drawn",
    "style rules with selectors beyond type, class, id and descendant are left out",
    "references to missing, foreign or enclosing elements are left out",
    "numbers that cannot be read or may not be negative are left out",
    "colours that cannot be read are left out",
    "paths are drawn up to the first mistake in them",
    "transforms that cannot be read are left out",
    "characters beyond ISO 8859-1 are shown as '?'",
    "bold letters are drawn plain",
    "italic letters are drawn upright",
    "lines under, over and through texts are not drawn",
    "the spacing of letters and words is left out",
    "vertical texts are drawn horizontally",
    "turned, raised, stretched, converted and right-to-left letters are drawn plain",
    "what reaches beyond nested drawings and symbols is not cut off",
};
static_assert(sizeof UnsupportedTexts / sizeof *UnsupportedTexts == static_cast<std::size_t>(Unsupported::Count));

} // namespace

Diagnostics::Diagnostics(std::string fileName)
    : m_fileName(std::move(fileName))
{ }

void Diagnostics::fail(std::string_view message)
{
    if (!m_hasFailed)
        failAt(m_source ? m_source->position() : Position(), message);
}

void Diagnostics::failIn(std::string_view part, std::string_view message)
{
    if (!m_hasFailed)
        failAt(m_source ? m_source->positionOf(part) : Position(), message);
}

void Diagnostics::failAt(Position position, std::string_view message)
{
    if (m_hasFailed)
        return;
    m_hasFailed = true;
    m_error = m_fileName + ':';
    if (position.line > 0)
        m_error += std::to_string(position.line) + ':' + std::to_string(position.column) + ':';
    m_error.append(" ").append(message);
}

void Diagnostics::warn(Unsupported kind)
{
    const std::uint32_t bit = 1U << static_cast<unsigned>(kind);
    if (m_hasFailed || (m_warned & bit))
        return;
    m_warned |= bit;
    std::string text;
    if (m_source)
        text = "line " + std::to_string(m_source->position().line) + ": ";
    m_warnings.push_back(text + UnsupportedTexts[static_cast<std::size_t>(kind)]);
}

void Diagnostics::takeError(const Diagnostics& other)
{
    m_error = other.m_error;
    m_hasFailed = other.m_hasFailed;
}

void Diagnostics::clear()
{
    m_error.clear();
    m_warnings.clear();
    m_warned = 0;
    m_hasFailed = false;
}

std::string quoted(std::string_view text)
{
    constexpr std::size_t LongestQuote = 40;
    std::string result = "\"";
    std::size_t length = std::min(text.size(), LongestQuote);
    // A UTF-8 sequence must not be cut.
    while (length < text.size() && length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
        --length;
    for (char c : text.substr(0, length))
        result += static_cast<unsigned char>(c) < 0x20 || c == 0x7F ? ' ' : c;
    return result + (length < text.size() ? "...\"" : "\"");
}

} // namespace mirn::zelsvg
