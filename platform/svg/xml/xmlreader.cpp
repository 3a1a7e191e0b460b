// SPDX-License-Identifier: MIT
#include "platform/svg/xml/xmlreader.h"

#include "platform/svg/xml/xmlmistake.h"

// expat declares its functions for limiting entities only if this is defined, as it was when expat was built.
#define XML_DTD
#include <expat.h>

#include <algorithm>
#include <functional>
#include <new>
#include <string>

namespace mirn::zelsvg {

namespace {

constexpr std::size_t BlockSize = std::size_t(1) << 18;
constexpr std::size_t LargestBlock = std::size_t(1) << 26;
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

// Limits for entities, which are meant for namespace names and a few characters:
constexpr int MostEntities = 1000;
constexpr float LargestAmplification = 20.0F;
constexpr unsigned long long AmplificationStart = 1ULL << 20; // bytes

[[nodiscard]] std::string describe(XML_Error code)
{
    switch (code) {
    case XML_ERROR_NO_ELEMENTS:
        return "found the end of the file, expected an <svg> element";
    case XML_ERROR_UNCLOSED_TOKEN:
    case XML_ERROR_UNCLOSED_CDATA_SECTION:
    case XML_ERROR_ASYNC_ENTITY:
        return "found an unfinished tag, text or comment, expected its end: the file is truncated or damaged";
    case XML_ERROR_INVALID_TOKEN:
    case XML_ERROR_PARTIAL_CHAR:
        return "found bytes that are no XML text, expected UTF-8 (or what the XML declaration names) and XML tags";
    case XML_ERROR_SYNTAX:
        return "found something else than XML, expected a tag";
    case XML_ERROR_TAG_MISMATCH:
        return "found an end tag that belongs to no open element, expected the end tag of the innermost one";
    case XML_ERROR_DUPLICATE_ATTRIBUTE:
        return "found an attribute for the second time, expected it once in a tag";
    case XML_ERROR_JUNK_AFTER_DOC_ELEMENT:
        return "found text or a tag after the end of the drawing, expected the end of the file";
    case XML_ERROR_UNDEFINED_ENTITY:
        return "found an entity that is not defined, expected one of this file or of XML";
    case XML_ERROR_RECURSIVE_ENTITY_REF:
        return "found an entity that contains itself, expected plain text";
    case XML_ERROR_AMPLIFICATION_LIMIT_BREACH:
        return "found entities that expand to far more than the file holds, expected plain text";
    case XML_ERROR_UNKNOWN_ENCODING:
    case XML_ERROR_INCORRECT_ENCODING:
        return "found an encoding that is not known, expected UTF-8, UTF-16, ISO-8859-1, US-ASCII, "
               "windows-1250 or windows-1252";
    case XML_ERROR_NO_MEMORY:
        return "ran out of memory, expected a smaller drawing";
    default:
        return std::string("found a mistake in the XML (") + XML_ErrorString(code) + "), expected well-formed XML";
    }
}

// Moves `position` over `text`, which is UTF-8. Lines end in LF, CR or CR LF.
void advance(Position& position, std::string_view text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isReturn = text[i] == '\r' && text.substr(i + 1, 1) != "\n";
        if (text[i] == '\n' || isReturn) {
            ++position.line;
            position.column = 1;
        } else if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80 && text[i] != '\r') {
            ++position.column;
        }
    }
}

// Returns the position of `offset` in a text that ends at `position`; line 0 if the text does not reach back to the
// beginning of that line.
[[nodiscard]] Position positionBefore(Position position, std::string_view text, std::size_t offset)
{
    Position moved;
    advance(moved, text.substr(offset));
    if (moved.line == 0)
        return {position.line, position.column - moved.column};
    const std::size_t lineEnd = text.substr(0, offset).find_last_of("\r\n");
    if (lineEnd == std::string_view::npos)
        return {};
    Position result{position.line - moved.line, 1};
    advance(result, text.substr(lineEnd + 1, offset - lineEnd - 1));
    return result;
}

// The bytes of the file that the XML parser holds, split at an offset in the file.
struct Context
{
    std::string_view before;
    std::string_view behind; // empty if the parser does not hold the offset
};

[[nodiscard]] Context contextAt(XML_Parser parser, std::int64_t index)
{
    int offset = 0;
    int size = 0;
    const char* bytes = XML_GetInputContext(parser, &offset, &size);
    const std::int64_t split = offset - (XML_GetCurrentByteIndex(parser) - index);
    if (!bytes || split < 0 || split > size)
        return {};
    const std::string_view whole(bytes, static_cast<std::size_t>(size));
    return {whole.substr(0, static_cast<std::size_t>(split)), whole.substr(static_cast<std::size_t>(split))};
}

int onUnknownEncoding(void* unknown, const char* name, XML_Encoding* map)
{
    const XmlEncoding encoding = xmlEncoding(name);
    if (!isWindows(encoding)) {
        *static_cast<std::string*>(unknown) = name;
        return XML_STATUS_ERROR;
    }
    fillWindowsMap(encoding, map->map);
    map->data = nullptr;
    map->convert = nullptr;
    map->release = nullptr;
    return XML_STATUS_OK;
}

} // namespace

void XmlReader::ParserDeleter::operator()(XML_ParserStruct* parser) const
{
    XML_ParserFree(parser);
}

XmlReader::XmlReader(XmlHandler& handler, Diagnostics& diagnostics, const Limits& limits)
    : m_handler(handler)
    , m_diagnostics(diagnostics)
    , m_limits(limits)
    , m_parser(XML_ParserCreate(nullptr))
{
    XML_Parser parser = m_parser.get();
    if (!parser)
        throw std::bad_alloc();
    XML_SetUserData(parser, this);
    XML_SetElementHandler(parser, onStart, onEnd);
    XML_SetCharacterDataHandler(parser, onText);
    XML_SetDefaultHandlerExpand(parser, onAnythingElse);
    XML_SetXmlDeclHandler(parser, onDeclaration);
    XML_SetUnknownEncodingHandler(parser, onUnknownEncoding, &m_unknownEncoding);
    XML_SetEntityDeclHandler(parser, onEntity);
    XML_SetExternalEntityRefHandler(parser, onForeignEntity);
    XML_SetSkippedEntityHandler(parser, onSkippedEntity);
    XML_SetBillionLaughsAttackProtectionMaximumAmplification(parser, LargestAmplification);
    XML_SetBillionLaughsAttackProtectionActivationThreshold(parser, AmplificationStart);
    m_diagnostics.setPositionSource(this);
}

XmlReader::~XmlReader()
{
    m_diagnostics.setPositionSource(nullptr);
}

bool XmlReader::read(ByteSource& source)
{
    while (readBlock(source)) { }
    return true;
}

Position XmlReader::position() const
{
    const Position position{XML_GetCurrentLineNumber(m_parser.get()), XML_GetCurrentColumnNumber(m_parser.get()) + 1};
    const bool isBehindMark = m_hasMark && position.line == 1 && position.column > 1;
    return {position.line, position.column - (isBehindMark ? 1 : 0)};
}

Position XmlReader::positionOf(std::string_view part) const
{
    const auto isWithin = [part](std::string_view value) {
        return part.data() && std::less_equal<>()(value.data(), part.data())
            && std::less_equal<>()(part.data(), value.data() + value.size());
    };
    for (std::size_t i = 0; i < m_attributes.size(); ++i) {
        if (!isWithin(m_attributes[i].value))
            continue;
        if (m_attributePositions.empty())
            findAttributes();
        // an attribute added by the document type is not in the tag
        return i < m_attributePositions.size() ? m_attributePositions[i] : position();
    }
    return position();
}

void XmlReader::findAttributes() const
{
    XML_Parser parser = m_parser.get();
    const auto size = static_cast<std::size_t>(XML_GetCurrentByteCount(parser));
    const std::string tag
        = decodedXml(contextAt(parser, XML_GetCurrentByteIndex(parser)).behind.substr(0, size), m_encoding);
    Position place = position();
    std::size_t done = 0;
    for (std::size_t offset : attributeOffsets(tag)) {
        advance(place, std::string_view(tag).substr(done, offset - done));
        m_attributePositions.push_back(place);
        done = offset;
    }
}

// Returns false after the last block.
bool XmlReader::readBlock(ByteSource& source)
{
    XML_Parser parser = m_parser.get();
    // A tag longer than a block is rescanned with every further block. Blocks that grow with the unhandled bytes keep
    // the total time linear.
    const XML_Index handled = XML_GetCurrentByteIndex(parser);
    const std::uint64_t pending = handled < 0 ? 0 : m_size - std::min(m_size, static_cast<std::uint64_t>(handled));
    const auto blockSize = static_cast<std::size_t>(std::clamp<std::uint64_t>(pending, BlockSize, LargestBlock));
    void* buffer = XML_GetBuffer(parser, static_cast<int>(blockSize));
    if (!buffer) {
        reportXmlError();
        return false;
    }
    const long length = source.read(static_cast<char*>(buffer), blockSize);
    if (length < 0) {
        m_diagnostics.fail(source.readError());
        return false;
    }
    if (m_size == 0)
        noteEncoding({static_cast<const char*>(buffer), static_cast<std::size_t>(length)});
    m_size += static_cast<std::uint64_t>(length);
    if (m_size > m_limits.fileSize) {
        m_diagnostics.fail("the file is too large, expected at most 1 GiB");
        return false;
    }
    if (XML_ParseBuffer(parser, static_cast<int>(length), length == 0) == XML_STATUS_ERROR) {
        if (XML_GetErrorCode(parser) != XML_ERROR_ABORTED)
            reportXmlError();
        return false;
    }
    return length > 0;
}

// The first bytes show whether the file is UTF-16; other encodings are named in the XML declaration.
void XmlReader::noteEncoding(std::string_view begin)
{
    constexpr std::string_view LittleMark = "\xFF\xFE";
    constexpr std::string_view BigMark = "\xFE\xFF";
    const std::string_view two = begin.substr(0, 2);
    if (two == LittleMark || two == std::string_view("<\0", 2))
        m_encoding = XmlEncoding::Utf16Little;
    else if (two == BigMark || two == std::string_view("\0<", 2))
        m_encoding = XmlEncoding::Utf16Big;
    if (two == LittleMark || two == BigMark)
        m_end = 2;
    else if (begin.substr(0, 3) == ByteOrderMark)
        m_end = 3;
    m_hasMark = m_end > 0;
}

void XmlReader::reportXmlError()
{
    XML_Parser parser = m_parser.get();
    const XML_Error code = XML_GetErrorCode(parser);
    if (code == XML_ERROR_INVALID_TOKEN && reportMistake())
        return;
    constexpr std::size_t LongestName = 40;
    std::string message = describe(code);
    if (!m_unknownEncoding.empty())
        message += "; it is " + quoted(m_unknownEncoding.substr(0, LongestName));
    if (code == XML_ERROR_UNDEFINED_ENTITY) {
        const auto bytes = contextAt(parser, XML_GetCurrentByteIndex(parser)).behind.substr(0, LongestName);
        const std::string text = decodedXml(bytes, m_encoding);
        message += "; it is " + quoted(text.substr(0, text.find(';')) + ';');
    }
    m_diagnostics.fail(message);
}

// Explains a mistake to the author of the drawing. Returns false if this is not possible.
bool XmlReader::reportMistake()
{
    constexpr std::size_t Excerpt = 100; // bytes after the mistake
    const Context context = contextAt(m_parser.get(), m_end);
    const auto stop = static_cast<std::size_t>(XML_GetCurrentByteIndex(m_parser.get()) - m_end);
    if (stop >= context.behind.size())
        return false;
    std::string before = decodedXml(context.before, m_encoding);
    if (before.compare(0, ByteOrderMark.size(), ByteOrderMark) == 0)
        before.erase(0, ByteOrderMark.size());
    if (context.before.size() == static_cast<std::uint64_t>(m_end))
        before.insert(before.begin(), '\n'); // the first line begins here
    const std::string passed = decodedXml(context.behind.substr(0, stop), m_encoding);
    const std::string text = passed + decodedXml(context.behind.substr(stop, Excerpt), m_encoding);
    const auto mistake = findXmlMistake(text, passed.size());
    if (!mistake)
        return false;
    const std::size_t offset = std::min(mistake->offset, passed.size());
    const Position place = positionBefore(position(), before + passed, before.size() + offset);
    m_diagnostics.failAt(place.line > 0 ? place : position(), mistake->message);
    return true;
}

// Notes the end of what is being handled.
void XmlReader::noteEnd()
{
    m_end = XML_GetCurrentByteIndex(m_parser.get()) + XML_GetCurrentByteCount(m_parser.get());
}

// No exception may pass through the XML parser, which is written in C.
template <typename Call> void XmlReader::handle(Call call)
{
    noteEnd();
    try {
        call();
    } catch (const std::bad_alloc&) {
        m_diagnostics.fail("ran out of memory, expected a smaller drawing");
    }
    if (m_diagnostics.hasFailed() || m_handler.isFinished())
        XML_StopParser(m_parser.get(), XML_FALSE);
}

void XmlReader::onStart(void* reader, const char* name, const char** attributes)
{
    auto* self = static_cast<XmlReader*>(reader);
    self->handle([=] { self->startTag(name, attributes); });
}

void XmlReader::startTag(const char* name, const char* const* attributes)
{
    for (; *attributes; attributes += 2)
        m_attributes.push_back({XmlName(attributes[0]), attributes[1]});
    m_handler.startTag(XmlName(name), m_attributes.data(), m_attributes.size());
    m_attributes.clear();
    m_attributePositions.clear();
}

void XmlReader::onEnd(void* reader, const char*)
{
    auto* self = static_cast<XmlReader*>(reader);
    // The end of an empty element is reported even if its start stopped the parser.
    if (!self->m_diagnostics.hasFailed() && !self->m_handler.isFinished())
        self->handle([=] { self->m_handler.endTag(); });
}

void XmlReader::onText(void* reader, const char* text, int length)
{
    auto* self = static_cast<XmlReader*>(reader);
    self->handle([=] { self->m_handler.text(std::string_view(text, static_cast<std::size_t>(length))); });
}

void XmlReader::onAnythingElse(void* reader, const char*, int)
{
    static_cast<XmlReader*>(reader)->noteEnd();
}

void XmlReader::onDeclaration(void* reader, const char*, const char* encoding, int)
{
    auto* self = static_cast<XmlReader*>(reader);
    if (encoding && self->m_encoding == XmlEncoding::Utf8)
        self->m_encoding = xmlEncoding(encoding);
    self->noteEnd();
}

void XmlReader::onEntity(
    void* reader, const char*, int, const char*, int, const char*, const char*, const char*, const char*)
{
    auto* self = static_cast<XmlReader*>(reader);
    self->handle([=] {
        if (++self->m_entities > MostEntities)
            self->m_diagnostics.fail("found more than 1000 entities, expected plain text");
    });
}

// Reading the entity would require another file. This is called only for entities in texts, not for an external
// document type.
int XmlReader::onForeignEntity(XML_ParserStruct* parser, const char*, const char*, const char*, const char*)
{
    auto* self = static_cast<XmlReader*>(XML_GetUserData(parser));
    self->m_diagnostics.fail("found an entity that stands for another file, expected one of this file");
    return XML_STATUS_ERROR;
}

void XmlReader::onSkippedEntity(void* reader, const char* name, int isParameter)
{
    auto* self = static_cast<XmlReader*>(reader);
    self->handle([=] {
        if (!isParameter)
            self->m_diagnostics.fail("found the entity " + quoted(name) + ", expected one that this file defines");
    });
}

} // namespace mirn::zelsvg
