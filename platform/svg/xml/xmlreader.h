// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/base/limits.h"
#include "platform/svg/xml/tagreader.h"
#include "platform/svg/xml/xmlencoding.h"
#include "platform/svg/xml/xmlhandler.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct XML_ParserStruct;

namespace mirn::zelsvg {

// Reads any XML from a byte source: checks that it is well-formed, refuses entities that multiply, and never opens
// another file. Errors are reported to the diagnostics with their position.
class XmlReader final : public TagReader
{
public:
    XmlReader(XmlHandler& handler, Diagnostics& diagnostics, const Limits& limits);
    ~XmlReader() override;
    XmlReader(const XmlReader&) = delete;
    XmlReader& operator=(const XmlReader&) = delete;

    // Always returns true: this reader never gives up.
    bool read(ByteSource& source) override;

    // The start of the tag being handled.
    [[nodiscard]] Position position() const override;
    [[nodiscard]] Position positionOf(std::string_view part) const override;

private:
    bool readBlock(ByteSource& source);
    void noteEncoding(std::string_view begin);
    void reportXmlError();
    bool reportMistake();
    void findAttributes() const;
    void noteEnd();
    void startTag(const char* name, const char* const* attributes);
    template <typename Call> void handle(Call call);

    static void onStart(void* reader, const char* name, const char** attributes);
    static void onEnd(void* reader, const char* name);
    static void onText(void* reader, const char* text, int length);
    static void onAnythingElse(void* reader, const char* text, int length);
    static void onDeclaration(void* reader, const char* version, const char* encoding, int isStandalone);
    static void onEntity(void* reader, const char* name, int isParameter, const char* value, int length,
        const char* base, const char* systemId, const char* publicId, const char* notation);
    static int onForeignEntity(
        XML_ParserStruct* parser, const char* context, const char* base, const char* systemId, const char* publicId);
    static void onSkippedEntity(void* reader, const char* name, int isParameter);

    struct ParserDeleter
    {
        void operator()(XML_ParserStruct* parser) const;
    };

    XmlHandler& m_handler;
    Diagnostics& m_diagnostics;
    const Limits& m_limits;
    std::unique_ptr<XML_ParserStruct, ParserDeleter> m_parser;
    std::vector<XmlAttribute> m_attributes; // attributes of the tag being handled
    mutable std::vector<Position> m_attributePositions; // their positions; found when one is first asked for
    XmlEncoding m_encoding = XmlEncoding::Utf8;
    std::string m_unknownEncoding; // the one that the file names, if it cannot be read
    bool m_hasMark = false; // whether the file begins with a byte order mark, which is no character
    std::uint64_t m_size = 0; // bytes taken from the source
    std::int64_t m_end = 0; // the end of what was handled last, in bytes
    int m_entities = 0;
};

} // namespace mirn::zelsvg
