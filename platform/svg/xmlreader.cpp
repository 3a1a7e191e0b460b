// SPDX-License-Identifier: MIT
#include "platform/svg/xmlreader.h"

// expat declares its limits on entities only under the option that it was built with.
#define XML_DTD
#include <expat.h>

#include <algorithm>
#include <new>
#include <string>

namespace zelsvg {

namespace {

constexpr std::size_t BlockSize = std::size_t(1) << 18;
constexpr std::size_t LargestBlock = std::size_t(1) << 26;

// Entities are for namespace names and a few characters. What they may add up to:
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
        return "found an encoding that is not known, expected UTF-8, UTF-16, ISO-8859-1 or US-ASCII";
    case XML_ERROR_NO_MEMORY:
        return "ran out of memory, expected a smaller drawing";
    default:
        return std::string("found a mistake in the XML (") + XML_ErrorString(code) + "), expected well-formed XML";
    }
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
    return {XML_GetCurrentLineNumber(m_parser.get()), XML_GetCurrentColumnNumber(m_parser.get()) + 1};
}

// False after the last block.
bool XmlReader::readBlock(ByteSource& source)
{
    XML_Parser parser = m_parser.get();
    // A tag longer than a block is scanned again with every further block. Blocks that grow with what is still
    // unhandled keep the whole linear.
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
        m_diagnostics.fail("the file cannot be read to its end");
        return false;
    }
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

void XmlReader::reportXmlError()
{
    m_diagnostics.fail(describe(XML_GetErrorCode(m_parser.get())));
}

// Nothing may be thrown through the XML parser, which is C.
template <typename Call> void XmlReader::handle(Call call)
{
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
    m_attributes.clear();
    for (; *attributes; attributes += 2)
        m_attributes.push_back({XmlName(attributes[0]), attributes[1]});
    m_handler.startTag(XmlName(name), m_attributes.data(), m_attributes.size());
}

void XmlReader::onEnd(void* reader, const char*)
{
    auto* self = static_cast<XmlReader*>(reader);
    // An empty element's end comes even when its start has stopped the parser.
    if (!self->m_diagnostics.hasFailed() && !self->m_handler.isFinished())
        self->handle([=] { self->m_handler.endTag(); });
}

void XmlReader::onText(void* reader, const char* text, int length)
{
    auto* self = static_cast<XmlReader*>(reader);
    self->handle([=] { self->m_handler.text(std::string_view(text, static_cast<std::size_t>(length))); });
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

// Another file would have to be read. Comes for entities in texts only, not for the document type's own file.
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

} // namespace zelsvg
