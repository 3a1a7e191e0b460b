// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/base/limits.h"
#include "platform/svg/xml/tagreader.h"
#include "platform/svg/xml/xmlbuffer.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace zelsvg {

// Reads the XML that nearly all drawings are written in, several times as fast as XmlReader: UTF-8, a document type
// that names no more than another file, no entities but the five of XML. Within that it is strict. Where it meets
// anything else, a mistake included, it gives up and the drawing is to be read by XmlReader from its begin: one reader
// alone says what is wrong and where.
class QuickXmlReader final : public TagReader
{
public:
    QuickXmlReader(XmlHandler& handler, Diagnostics& diagnostics, const Limits& limits);
    ~QuickXmlReader() override;
    QuickXmlReader(const QuickXmlReader&) = delete;
    QuickXmlReader& operator=(const QuickXmlReader&) = delete;

    [[nodiscard]] bool read(ByteSource& source) override;

    // The line of the tag or piece of text being handled. Columns are not known.
    [[nodiscard]] Position position() const override;

private:
    enum class Step { Done, Incomplete, GiveUp };
    enum class TextKind { Parsed, CharacterData };

    Step next();
    Step readDeclaration();
    Step readDocumentType(const char* p);
    Step readComment(const char* p);
    Step readCharacterData(const char* p);
    Step readText();
    Step readStartTag();
    Step readAttributes(const char*& p);
    Step readAttribute(const char*& p);
    Step addAttribute(const XmlName& name, std::string_view value);
    Step readEndTag();
    bool completeValues();
    bool handleText(const char* p, const char* end, TextKind kind);
    void handlePiece(const char* place, std::string_view text);

    // What it means to meet `p` where something else has to stand.
    [[nodiscard]] Step unexpected(const char* p) const { return p >= m_input.end() ? Step::Incomplete : Step::GiveUp; }
    [[nodiscard]] bool isStopped() const { return m_diagnostics.hasFailed() || m_handler.isFinished(); }

    static constexpr std::size_t MostAttributes = 64; // of one element

    XmlHandler& m_handler;
    Diagnostics& m_diagnostics;
    const Limits& m_limits;

    XmlBuffer m_input;
    std::string m_openNames; // of the open elements, one behind the other
    std::vector<std::size_t> m_open; // where each of them begins
    bool m_isAtStart = true; // of the file
    bool m_hasDocumentType = false;
    bool m_hasRoot = false;

    // Of the tag being read:
    std::array<XmlAttribute, MostAttributes> m_attributes;
    std::size_t m_attributeCount = 0;
    std::uint64_t m_seenNames = 0; // a bit for each, by its hash
    std::uint64_t m_rawValues = 0; // a bit for each whose value is not yet what it stands for
    std::string m_values; // those values
    std::string m_reference; // what a reference stands for
};

} // namespace zelsvg
