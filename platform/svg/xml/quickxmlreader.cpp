// SPDX-License-Identifier: MIT
#include "platform/svg/xml/quickxmlreader.h"

#include "platform/svg/xml/xmlcharacters.h"

#include <algorithm>
#include <cstring>

namespace mirn::zelsvg {

namespace {

[[nodiscard]] const char* skipSpaces(const char* p)
{
    return skipXmlBytes(p, XmlByte::Space);
}

[[nodiscard]] std::string_view textOf(const char* begin, const char* end)
{
    return std::string_view(begin, static_cast<std::size_t>(end - begin));
}

// The text must end in a NUL.
[[nodiscard]] bool beginsWith(const char* p, std::string_view word)
{
    return std::strncmp(p, word.data(), word.size()) == 0;
}

// Accepts the usual names of documents and files.
[[nodiscard]] bool isPlainIdentifier(std::string_view text)
{
    return std::all_of(text.begin(), text.end(),
        [](char c) { return (xmlByte(c) & XmlByte::NamePart) || (c != '\0' && std::strchr(" /+,=?!*#@$%()", c)); });
}

[[nodiscard]] bool isUtf8(std::string_view encoding)
{
    return encoding == "UTF-8" || encoding == "utf-8";
}

} // namespace

QuickXmlReader::QuickXmlReader(XmlHandler& handler, Diagnostics& diagnostics, const Limits& limits)
    : m_handler(handler)
    , m_diagnostics(diagnostics)
    , m_limits(limits)
{
    m_diagnostics.setPositionSource(this);
}

QuickXmlReader::~QuickXmlReader()
{
    m_diagnostics.setPositionSource(nullptr);
}

bool QuickXmlReader::read(ByteSource& source)
{
    if (!m_input.fill(source, m_limits.fileSize))
        return false;
    constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
    if (beginsWith(m_input.position(), ByteOrderMark))
        m_input.moveTo(m_input.position() + ByteOrderMark.size());
    while (true) {
        switch (next()) {
        case Step::Done:
            if (isStopped())
                return true;
            m_isAtStart = false;
            break;
        case Step::Incomplete:
            if (m_input.isSourceAtEnd())
                return m_input.position() == m_input.end() && m_hasRoot && m_open.empty();
            if (!m_input.fill(source, m_limits.fileSize))
                return false;
            break;
        case Step::GiveUp:
            return false;
        }
    }
}

Position QuickXmlReader::position() const
{
    return {m_input.line(), 1};
}

QuickXmlReader::Step QuickXmlReader::next()
{
    const char* p = m_input.position();
    if (*p != '<')
        return p == m_input.end() ? Step::Incomplete : readText();
    switch (p[1]) {
    case '/':
        return readEndTag();
    case '?':
        return readDeclaration();
    case '!':
        if (beginsWith(p, "<!--"))
            return readComment(p + 4);
        if (beginsWith(p, "<![CDATA["))
            return readCharacterData(p + 9);
        if (beginsWith(p, "<!DOCTYPE"))
            return readDocumentType(p + 9);
        return m_input.end() - p < 9 ? Step::Incomplete : Step::GiveUp;
    default:
        return readStartTag();
    }
}

// Reads <?xml version="1.0" encoding="UTF-8" standalone="no"?>.
QuickXmlReader::Step QuickXmlReader::readDeclaration()
{
    const char* p = m_input.position() + 5;
    if (!m_isAtStart || !beginsWith(m_input.position(), "<?xml"))
        return m_input.end() - m_input.position() < 5 ? Step::Incomplete : Step::GiveUp;
    const Step step = readAttributes(p);
    if (step != Step::Done)
        return step;
    if (p[0] != '?' || p[1] != '>')
        return unexpected(p[0] == '?' ? p + 1 : p);
    const XmlAttribute* attribute = m_attributes.data();
    const XmlAttribute* end = attribute + m_attributeCount;
    if (attribute == end || attribute->name.text() != "version" || attribute->value != "1.0" || m_rawValues)
        return Step::GiveUp;
    if (++attribute != end && attribute->name.text() == "encoding" && isUtf8(attribute->value))
        ++attribute;
    if (attribute != end && attribute->name.text() == "standalone"
        && (attribute->value == "yes" || attribute->value == "no"))
        ++attribute;
    m_input.moveTo(p + 2);
    return attribute == end ? Step::Done : Step::GiveUp;
}

// Reads <!DOCTYPE svg PUBLIC "..." "...">.
QuickXmlReader::Step QuickXmlReader::readDocumentType(const char* p)
{
    const char* end = findXmlByte(p, m_input.end(), '>');
    if (!end)
        return Step::Incomplete;
    if (m_hasDocumentType || m_hasRoot || !(xmlByte(*p) & XmlByte::Space))
        return Step::GiveUp;
    const char* name = skipSpaces(p);
    p = skipXmlBytes(name, XmlByte::NamePart);
    int literals = 0;
    const char* keyword = skipSpaces(p);
    if (keyword != p && (beginsWith(keyword, "PUBLIC") || beginsWith(keyword, "SYSTEM"))) {
        literals = *keyword == 'P' ? 2 : 1;
        p = keyword + 6;
    }
    for (; literals > 0; --literals) {
        const char* quote = skipSpaces(p);
        const char* close = *quote == '"' || *quote == '\'' ? findXmlByte(quote + 1, end, *quote) : nullptr;
        if (quote == p || !close || !isPlainIdentifier(textOf(quote + 1, close)))
            return Step::GiveUp;
        p = close + 1;
    }
    m_hasDocumentType = true;
    m_input.moveTo(end + 1);
    return (xmlByte(*name) & XmlByte::NameStart) && skipSpaces(p) == end ? Step::Done : Step::GiveUp;
}

QuickXmlReader::Step QuickXmlReader::readComment(const char* p)
{
    while (true) {
        if (p[0] == '-' && p[1] == '-')
            break;
        if ((xmlByte(*p) & (XmlByte::InText | XmlByte::InValue | XmlByte::Space)) || *p == '<' || *p == '&') {
            ++p;
        } else {
            const char* next = static_cast<unsigned char>(*p) >= 0x80 ? skipXmlCharacter(p) : nullptr;
            if (!next)
                return unexpected(p + 3);
            p = next;
        }
    }
    if (p[2] != '>')
        return unexpected(p + 2);
    m_input.moveTo(p + 3);
    return Step::Done;
}

QuickXmlReader::Step QuickXmlReader::readCharacterData(const char* p)
{
    const std::size_t length = textOf(p, m_input.end()).find("]]>");
    if (length == std::string_view::npos)
        return Step::Incomplete;
    if (m_open.empty() || !handleText(p, p + length, TextKind::CharacterData))
        return Step::GiveUp;
    m_input.moveTo(p + length + 3);
    return Step::Done;
}

// Reads up to the next tag.
QuickXmlReader::Step QuickXmlReader::readText()
{
    if (m_open.empty()) {
        m_input.moveTo(skipSpaces(m_input.position()));
        return *m_input.position() == '<' || m_input.position() == m_input.end() ? Step::Done : Step::GiveUp;
    }
    const char* end = findXmlByte(m_input.position(), m_input.end(), '<');
    if (!end)
        return Step::Incomplete;
    if (!handleText(m_input.position(), end, TextKind::Parsed))
        return Step::GiveUp;
    m_input.moveTo(end);
    return Step::Done;
}

// Passes the text on line by line, so that position() is right for each line.
bool QuickXmlReader::handleText(const char* p, const char* end, TextKind kind)
{
    const bool isParsed = kind == TextKind::Parsed;
    const char* piece = p;
    while (p != end) {
        const char* next = p + 1;
        if (xmlByte(*p) & XmlByte::InText) {
            p = next;
            continue;
        }
        std::string_view meaning;
        if (*p == '\n' || *p == '\r') {
            next = p + (p[0] == '\r' && p[1] == '\n' ? 2 : 1);
            meaning = "\n";
        } else if (*p == '&' && isParsed) {
            m_reference.clear();
            next = readXmlReference(p, m_reference);
            meaning = m_reference;
        } else if (static_cast<unsigned char>(*p) >= 0x80) {
            next = skipXmlCharacter(p);
        } else if (!(*p == '&' || *p == '<' || *p == ']') || (isParsed && beginsWith(p, "]]>"))) {
            return false;
        }
        if (!next)
            return false;
        if (!meaning.empty()) {
            handlePiece(piece, textOf(piece, p));
            handlePiece(p, meaning);
            piece = next;
        }
        p = next;
    }
    handlePiece(piece, textOf(piece, p));
    return true;
}

void QuickXmlReader::handlePiece(const char* place, std::string_view text)
{
    m_input.moveTo(place);
    if (!text.empty())
        m_handler.text(text);
}

QuickXmlReader::Step QuickXmlReader::readStartTag()
{
    const char* p = m_input.position() + 1;
    if (!(xmlByte(*p) & XmlByte::NameStart) || (m_hasRoot && m_open.empty()))
        return unexpected(p);
    const char* end = skipXmlBytes(p, XmlByte::NamePart);
    const XmlName name(textOf(p, end));
    p = end;
    const Step step = readAttributes(p);
    if (step != Step::Done)
        return step;
    const bool isEmpty = *p == '/';
    p += isEmpty ? 1 : 0;
    if (*p != '>')
        return unexpected(p);
    if (!completeValues())
        return Step::GiveUp;
    m_hasRoot = true;
    m_handler.startTag(name, m_attributes.data(), m_attributeCount);
    m_input.moveTo(p + 1);
    if (isStopped())
        return Step::Done;
    if (isEmpty) {
        m_handler.endTag();
    } else {
        m_open.push_back(m_openNames.size());
        m_openNames.append(name.text());
    }
    return Step::Done;
}

// Stops at the first thing that is not an attribute.
QuickXmlReader::Step QuickXmlReader::readAttributes(const char*& p)
{
    m_attributeCount = 0;
    m_seenNames = m_rawValues = 0;
    while (true) {
        const char* name = skipSpaces(p);
        const bool isBehindSpace = name != p;
        p = name;
        if (!(xmlByte(*p) & XmlByte::NameStart))
            return Step::Done;
        const Step step = isBehindSpace ? readAttribute(p) : Step::GiveUp;
        if (step != Step::Done)
            return step;
    }
}

QuickXmlReader::Step QuickXmlReader::readAttribute(const char*& p)
{
    const char* end = skipXmlBytes(p, XmlByte::NamePart);
    const XmlName name(textOf(p, end));
    p = skipSpaces(end);
    if (*p != '=')
        return unexpected(p);
    p = skipSpaces(p + 1);
    const char quote = *p;
    if (quote != '"' && quote != '\'')
        return unexpected(p);
    const char* value = ++p;
    const std::uint64_t bit = std::uint64_t(1) << m_attributeCount % MostAttributes;
    for (p = skipXmlBytes(p, XmlByte::InValue); *p != quote; p = skipXmlBytes(p, XmlByte::InValue)) {
        if (static_cast<unsigned char>(*p) >= 0x80) {
            const char* next = skipXmlCharacter(p);
            if (!next)
                return unexpected(p + 3);
            p = next;
            continue;
        }
        if (*p == '&' || (xmlByte(*p) & XmlByte::Space))
            m_rawValues |= bit;
        else if (*p != '"' && *p != '\'')
            return unexpected(p);
        ++p;
    }
    return addAttribute(name, textOf(value, p++));
}

QuickXmlReader::Step QuickXmlReader::addAttribute(const XmlName& name, std::string_view value)
{
    const auto begin = m_attributes.begin();
    const auto end = begin + m_attributeCount;
    const std::uint64_t bit = std::uint64_t(1) << name.hash() % 64;
    const auto isSame = [&name](const XmlAttribute& attribute) { return attribute.name == name; };
    if (m_attributeCount == MostAttributes || ((m_seenNames & bit) && std::any_of(begin, end, isSame)))
        return Step::GiveUp;
    m_seenNames |= bit;
    m_attributes[m_attributeCount++] = {name, value};
    return Step::Done;
}

// Expands the values that contain references, tabs or line ends.
bool QuickXmlReader::completeValues()
{
    m_values.clear();
    std::size_t size = 0;
    for (std::uint64_t rest = m_rawValues; rest; rest &= rest - 1)
        size += m_attributes[static_cast<std::size_t>(__builtin_ctzll(rest))].value.size();
    m_values.reserve(size); // expansion makes no value longer, so the expanded values do not move
    for (std::uint64_t rest = m_rawValues; rest; rest &= rest - 1) {
        std::string_view& value = m_attributes[static_cast<std::size_t>(__builtin_ctzll(rest))].value;
        const std::size_t begin = m_values.size();
        for (const char* p = value.data(); p != value.data() + value.size();) {
            if (*p == '&') {
                p = readXmlReference(p, m_values);
                if (!p)
                    return false;
                continue;
            }
            const bool isSpace = xmlByte(*p) & XmlByte::Space;
            const bool isPair = p[0] == '\r' && p[1] == '\n';
            m_values += isSpace ? ' ' : *p;
            p += isPair ? 2 : 1;
        }
        value = std::string_view(m_values).substr(begin);
    }
    return true;
}

QuickXmlReader::Step QuickXmlReader::readEndTag()
{
    if (m_open.empty())
        return Step::GiveUp;
    const char* p = m_input.position() + 2;
    const std::string_view name = std::string_view(m_openNames).substr(m_open.back());
    if (textOf(p, m_input.end()).substr(0, name.size()) != name)
        return unexpected(p + name.size());
    p = skipSpaces(p + name.size());
    if (*p != '>')
        return unexpected(p);
    m_handler.endTag();
    m_input.moveTo(p + 1);
    m_openNames.resize(m_open.back());
    m_open.pop_back();
    return Step::Done;
}

} // namespace mirn::zelsvg
