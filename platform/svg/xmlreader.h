// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/diagnostics.h"
#include "platform/svg/limits.h"

#include <cstddef>
#include <memory>
#include <string_view>

struct XML_ParserStruct;

namespace zelsvg {

// Where the bytes of a drawing come from.
class ByteSource
{
public:
    virtual ~ByteSource() = default;

    // Up to `size` bytes into `buffer`; 0 at the end, negative after an error.
    virtual long read(char* buffer, std::size_t size) = 0;
};

// Takes the tags of an XML file as they come. Names are as written, with their prefix.
class XmlHandler
{
public:
    virtual ~XmlHandler() = default;

    // `attributes` are pairs of name and value, ended by a null. All texts are UTF-8, valid during the call.
    virtual void startTag(const char* name, const char* const* attributes) = 0;
    virtual void endTag() = 0;
    virtual void text(std::string_view text) = 0;

    // Asked after each of these: true ends reading.
    [[nodiscard]] virtual bool isFinished() const = 0;
};

// Reads XML from a byte source: checks that it is well-formed, refuses entities that multiply and never opens another
// file. Errors go to the diagnostics with their place.
class XmlReader final : public PositionSource
{
public:
    XmlReader(XmlHandler& handler, Diagnostics& diagnostics, const Limits& limits);
    ~XmlReader() override;
    XmlReader(const XmlReader&) = delete;
    XmlReader& operator=(const XmlReader&) = delete;

    // To the end of the file, the first error or until the handler has finished.
    void read(ByteSource& source);

    // The start of the tag being handled.
    [[nodiscard]] Position position() const override;

private:
    bool readBlock(ByteSource& source);
    void reportXmlError();
    template <typename Call> void handle(Call call);

    static void onStart(void* reader, const char* name, const char** attributes);
    static void onEnd(void* reader, const char* name);
    static void onText(void* reader, const char* text, int length);
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
    std::uint64_t m_size = 0; // bytes taken from the source
    int m_entities = 0;
};

} // namespace zelsvg
