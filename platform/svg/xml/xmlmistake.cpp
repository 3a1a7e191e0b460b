// SPDX-License-Identifier: MIT
#include "platform/svg/xml/xmlmistake.h"

#include "platform/svg/base/diagnostics.h"
#include "platform/svg/xml/xmlcharacters.h"

#include <algorithm>

namespace mirn::zelsvg {

namespace {

constexpr std::size_t None = std::string_view::npos;

[[nodiscard]] bool isAt(std::string_view text, std::size_t at, std::string_view word)
{
    return at < text.size() && text.substr(at, word.size()) == word;
}

[[nodiscard]] bool isBeyondAscii(char c)
{
    return static_cast<unsigned char>(c) >= 0x80;
}

[[nodiscard]] bool isOf(std::string_view text, std::size_t at, std::uint8_t kind)
{
    return at < text.size() && (xmlByte(text[at]) & kind);
}

// All non-ASCII letters count as letters of names here; the XML reader decides.
[[nodiscard]] bool beginsName(std::string_view text, std::size_t at)
{
    return isOf(text, at, XmlByte::NameStart) || (at < text.size() && (text[at] == ':' || isBeyondAscii(text[at])));
}

[[nodiscard]] std::size_t skipName(std::string_view text, std::size_t at)
{
    while (isOf(text, at, XmlByte::NamePart) || (at < text.size() && isBeyondAscii(text[at])))
        ++at;
    return at;
}

[[nodiscard]] std::size_t skipSpaces(std::string_view text, std::size_t at)
{
    while (isOf(text, at, XmlByte::Space))
        ++at;
    return at;
}

// Returns the text at `at` for a message, at most to the end of a line, tag or value.
[[nodiscard]] std::string excerpt(std::string_view text, std::size_t at)
{
    constexpr std::size_t Longest = 12;
    std::string_view rest = text.substr(at, Longest);
    rest = rest.substr(0, rest.find_first_of("<>\"'\r\n", 1));
    const bool isCut = at + rest.size() >= text.size() || (text[at + rest.size()] & 0xC0) == 0x80;
    while (isCut && rest.size() > 1 && isBeyondAscii(rest.back())) // the end may be within a character
        rest.remove_suffix(1);
    return quoted(rest);
}

[[nodiscard]] std::string shortened(std::string_view name)
{
    constexpr std::size_t Longest = 40;
    return std::string(name.substr(0, Longest));
}

[[nodiscard]] bool isReference(std::string_view text, std::size_t at)
{
    const bool isNumber = isAt(text, at + 1, "#");
    const std::size_t begin = at + (isNumber ? 2 : 1);
    const std::size_t end = skipName(text, begin);
    return end > begin && (isNumber || beginsName(text, begin)) && isAt(text, end, ";");
}

// Scans a tag from its beginning.
class TagScanner
{
public:
    explicit TagScanner(std::string_view text)
        : m_text(text)
        , m_at(skipName(text, 1))
        , m_tag(text.substr(1, m_at - 1))
    { }

    // Scans the next attribute. Returns false at the end of the tag or of the text, and at a mistake.
    bool next();

    [[nodiscard]] std::size_t begin() const { return m_begin; }
    [[nodiscard]] bool isAtEnd() const { return isAt(m_text, m_at, ">") || isAt(m_text, m_at, "/>"); }
    [[nodiscard]] const std::optional<XmlMistake>& mistake() const { return m_mistake; }

private:
    bool fail(std::size_t offset, const std::string& message);
    bool readName();
    bool readValue();
    bool readWithoutQuotes();

    std::string_view m_text;
    std::size_t m_at;
    std::string_view m_tag; // the tag's name
    std::size_t m_begin = 0; // start of the current attribute
    std::string m_name; // name of the current attribute; of the previous one until it is read
    std::optional<XmlMistake> m_mistake;
};

bool TagScanner::next()
{
    return readName() && readValue();
}

bool TagScanner::fail(std::size_t offset, const std::string& message)
{
    m_mistake = {offset, message};
    return false;
}

bool TagScanner::readName()
{
    const std::size_t behind = m_at;
    m_begin = skipSpaces(m_text, m_at);
    m_at = m_begin;
    if (isAtEnd() || m_at >= m_text.size())
        return false;
    const bool isName = beginsName(m_text, m_at);
    m_at = skipName(m_text, m_at);
    const std::string name = isName ? shortened(m_text.substr(m_begin, m_at - m_begin)) : excerpt(m_text, m_begin);
    if (m_begin == behind && !m_name.empty())
        return fail(m_begin,
            "found " + name + " directly behind the value of " + m_name
                + ", expected a blank between attributes, > or />");
    if (!isName)
        return fail(
            m_begin, "found " + name + " in the tag <" + shortened(m_tag) + ">, expected an attribute, > or />");
    m_name = name;
    return true;
}

bool TagScanner::readValue()
{
    m_at = skipSpaces(m_text, m_at);
    if (m_at >= m_text.size())
        return false;
    if (m_text[m_at] != '=')
        return fail(m_begin, "found " + m_name + " without a value, expected " + m_name + "=\"...\"");
    m_at = skipSpaces(m_text, m_at + 1);
    if (m_at >= m_text.size())
        return false;
    const char quote = m_text[m_at];
    if (quote != '"' && quote != '\'')
        return readWithoutQuotes();
    for (++m_at; m_at < m_text.size() && m_text[m_at] != quote; ++m_at) {
        if (m_text[m_at] == '<')
            return fail(
                m_begin, "found < in the value of " + m_name + ", expected the quote that ends it (or &lt; for a <)");
        if (m_text[m_at] == '&' && !isReference(m_text, m_at))
            return fail(m_at,
                "found " + excerpt(m_text, m_at) + " in the value of " + m_name
                    + ", expected an entity: & begins an entity; write &amp;");
    }
    return m_at < m_text.size() && ++m_at;
}

bool TagScanner::readWithoutQuotes()
{
    const std::string_view rest = m_text.substr(m_at);
    const std::string value = shortened(rest.substr(0, rest.find_first_of(" \t\r\n<>\"'/")));
    const std::string name = m_name + '=';
    if (value.empty())
        return fail(m_begin, "found " + name + " without a value, expected " + name + "\"...\"");
    return fail(m_begin, "found " + name + value + " without quotes, expected " + name + '"' + value + '"');
}

[[nodiscard]] std::optional<XmlMistake> mistakeInEndTag(std::string_view text)
{
    const std::size_t end = skipName(text, 2);
    const std::size_t at = skipSpaces(text, end);
    if (at >= text.size() || text[at] == '>')
        return std::nullopt;
    return XmlMistake{
        at, "found " + excerpt(text, at) + " in the end tag </" + shortened(text.substr(2, end - 2)) + ">, expected >"};
}

[[nodiscard]] std::optional<XmlMistake> mistakeInReference(std::string_view text, std::size_t at)
{
    if (isReference(text, at))
        return XmlMistake{at, "found a mistake in what " + excerpt(text, at) + " stands for, expected well-formed XML"};
    return XmlMistake{at, "found " + excerpt(text, at) + ", expected an entity: & begins an entity; write &amp;"};
}

// Looks for characters that XML does not allow at this position.
[[nodiscard]] std::optional<XmlMistake> mistakeInText(std::string_view text, std::size_t stop)
{
    constexpr std::string_view End = "]]>";
    for (std::size_t at = stop >= 2 ? stop - 2 : 0; at <= stop; ++at) {
        if (isAt(text, at, End))
            return XmlMistake{at, "found ]]> in a text, expected ]]&gt;"};
    }
    if (stop > 0 && text[stop - 1] == '&') // within the value of an entity
        return mistakeInReference(text, stop - 1);
    return std::nullopt;
}

[[nodiscard]] std::optional<XmlMistake> mistakeInComment(std::string_view text, std::size_t stop)
{
    const std::size_t hyphens = text.find("--", 4);
    if (hyphens == None || hyphens > stop)
        return std::nullopt;
    return XmlMistake{hyphens, "found -- within a comment, expected --> or a single -"};
}

[[nodiscard]] std::optional<XmlMistake> commonMistake(std::string_view text, std::size_t stop)
{
    if (text.front() == '&')
        return mistakeInReference(text, 0);
    if (isAt(text, 0, "<!--"))
        return mistakeInComment(text, stop);
    if (isAt(text, 0, "</"))
        return mistakeInEndTag(text);
    if (beginsName(text, 1) && text.front() == '<') {
        TagScanner tag(text);
        while (tag.next()) { }
        return tag.mistake();
    }
    if (text.front() != '<' || isAt(text, 1, "!") || isAt(text, 1, "?"))
        return mistakeInText(text, stop);
    return XmlMistake{0, "found " + excerpt(text, 0) + ", expected a tag: < begins a tag; write &lt;"};
}

[[nodiscard]] bool isCharacterAt(std::string_view text, std::size_t at)
{
    if (at >= text.size())
        return true;
    if (!isBeyondAscii(text[at]))
        return text[at] >= ' ' || isOf(text, at, XmlByte::Space);
    const std::string rest(text.substr(at, 4)); // adds a NUL at the end
    return skipXmlCharacter(rest.c_str()) != nullptr;
}

} // namespace

std::optional<XmlMistake> findXmlMistake(std::string_view text, std::size_t stop)
{
    if (stop >= text.size() || !isCharacterAt(text, stop))
        return std::nullopt;
    const auto mistake = commonMistake(text, stop);
    return mistake ? mistake : XmlMistake{stop, "found " + excerpt(text, stop) + ", expected well-formed XML"};
}

std::vector<std::size_t> attributeOffsets(std::string_view tag)
{
    std::vector<std::size_t> offsets;
    if (!isAt(tag, 0, "<"))
        return offsets;
    TagScanner scanner(tag);
    while (scanner.next())
        offsets.push_back(scanner.begin());
    return offsets;
}

} // namespace mirn::zelsvg
