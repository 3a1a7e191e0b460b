// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/base/limits.h"
#include "platform/svg/xml/tagreader.h"
#include "platform/svg/xml/xmlbuffer.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace mirn::zelsvg {

// Reads the XML that nearly all drawings use, several times as fast as XmlReader: UTF-8, a document type that at most
// names another file, and no entities but XML's own five. Within that it is strict. If it meets anything else,
// including a mistake, it gives up, and XmlReader has to read the drawing from the beginning: only one reader reports
// errors.
class QuickXmlReader final : public TagReader
{
public:
    QuickXmlReader(XmlHandler& handler, Diagnostics& diagnostics, const Limits& limits);
    ~QuickXmlReader() override;
    QuickXmlReader(const QuickXmlReader&) = delete;
    QuickXmlReader& operator=(const QuickXmlReader&) = delete;

    [[nodiscard]] bool read(ByteSource& source) override;

    // Returns the line of the tag or piece of text being handled; the column is always 1.
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

    // The result when `p` is not the expected character.
    [[nodiscard]] Step unexpected(const char* p) const { return p >= m_input.end() ? Step::Incomplete : Step::GiveUp; }
    [[nodiscard]] bool isStopped() const { return m_diagnostics.hasFailed() || m_handler.isFinished(); }

    static constexpr std::size_t MostAttributes = 64; // per element

    XmlHandler& m_handler;
    Diagnostics& m_diagnostics;
    const Limits& m_limits;

    XmlBuffer m_input;
    std::string m_openNames; // names of the open elements, concatenated
    std::vector<std::size_t> m_open; // offset of each of these names
    bool m_isAtStart = true; // whether nothing of the file has been handled yet
    bool m_hasDocumentType = false;
    bool m_hasRoot = false;

    // The tag being read:
    std::array<XmlAttribute, MostAttributes> m_attributes;
    std::size_t m_attributeCount = 0;
    std::uint64_t m_seenNames = 0; // one bit per name, by its hash
    std::uint64_t m_rawValues = 0; // one bit per attribute whose value is not yet expanded
    std::string m_values; // the expanded values
    std::string m_reference; // the expansion of a reference
};

} // namespace mirn::zelsvg
