// SPDX-License-Identifier: MIT
#include "platform/svg/reading/drawingreader.h"

#include "platform/svg/base/number.h"
#include "platform/svg/document/documenttree.h"
#include "platform/svg/document/elementdecoder.h"
#include "platform/svg/reading/drawingbuilder.h"
#include "platform/svg/reading/treefollower.h"

#include <algorithm>
#include <initializer_list>

// The stages of reading, each of which calls the next: a TagReader passes tags to the ElementDecoder, which passes
// elements to the DrawingBuilder. That has Shapes and TextLayout add records through its RecordWriter. If elements
// refer to each other, the decoder fills a DocumentTree first, and a TreeFollower passes its elements to the builder.

namespace mirn::zelsvg {

namespace {

// Stores the elements in a tree, to which it also reports the position of the XML reader.
class TreeReader final : private PositionSource
{
public:
    TreeReader(XmlReading reading, Diagnostics& diagnostics, const Limits& limits)
        : m_reading(reading)
        , m_diagnostics(diagnostics)
        , m_limits(limits)
        , m_tree(diagnostics, *this, limits)
    { }

    // Returns false if the XML reader gives up.
    bool read(DrawingSource& source)
    {
        ElementDecoder decoder(m_tree, m_diagnostics, m_limits);
        m_reader = makeTagReader(m_reading, decoder, m_diagnostics, m_limits);
        const bool isRead = m_reader->read(source);
        m_reader.reset();
        m_tree.finish();
        return isRead;
    }

    [[nodiscard]] const DocumentTree& tree() const { return m_tree; }

private:
    [[nodiscard]] Position position() const override { return m_reader->position(); }

    // The quick XML reader knows no columns, so it is not asked.
    [[nodiscard]] Position positionOf(std::string_view part) const override
    {
        return m_reading == XmlReading::Quick ? Position() : m_reader->positionOf(part);
    }

    const XmlReading m_reading;
    Diagnostics& m_diagnostics;
    const Limits& m_limits;
    std::unique_ptr<TagReader> m_reader;
    DocumentTree m_tree;
};

[[nodiscard]] bool isOneOf(std::string_view text, std::initializer_list<std::string_view> words)
{
    return std::any_of(words.begin(), words.end(), [text](auto word) { return equalsIgnoringCase(text, word); });
}

// Whether a style element contains CSS for screens. Media are a list; media conditions are not evaluated.
[[nodiscard]] bool applies(const DocumentTree& tree, unsigned style)
{
    const std::string_view type = tree.value(style, AttributeName::Type);
    if (!isOneOf(trimmed(type.substr(0, type.find(';'))), {"", "text/css"}))
        return false;
    const std::string_view media = tree.value(style, AttributeName::Media);
    bool isForScreen = false;
    for (std::size_t begin = 0; begin <= media.size() && !isForScreen;) {
        const std::size_t end = std::min(media.find(',', begin), media.size());
        isForScreen = isOneOf(trimmed(media.substr(begin, end - begin)), {"", "all", "screen", "only screen"});
        begin = end + 1;
    }
    return isForScreen;
}

void addStyleSheets(const DocumentTree& tree, StyleSheet& sheet, Diagnostics& diagnostics)
{
    for (unsigned node = 0; node < tree.size(); ++node) {
        if (tree.name(node) != ElementName::Style)
            continue;
        if (applies(tree, node))
            sheet.add(tree.innerText(node));
        else if (tree.value(node, AttributeName::Media).find('(') != std::string_view::npos)
            diagnostics.warn(Unsupported::Selector);
    }
}

// One attempt to read a drawing with one of the XML readers.
class Attempt
{
public:
    Attempt(XmlReading reading, DrawingSource& source, Diagnostics& diagnostics, const Limits& limits, Drawing& drawing)
        : m_reading(reading)
        , m_source(source)
        , m_diagnostics(diagnostics)
        , m_limits(limits)
        , m_drawing(drawing)
    { }

    // Builds the drawing while reading it. Returns false if the XML reader gives up; `needsTree` says whether the
    // drawing must be stored as a tree instead.
    bool follow(bool& needsTree)
    {
        DrawingBuilder builder(m_drawing, m_diagnostics, m_limits);
        ElementDecoder decoder(builder, m_diagnostics, m_limits);
        const auto reader = makeTagReader(m_reading, decoder, m_diagnostics, m_limits);
        const bool isRead = reader->read(m_source);
        needsTree = builder.needsTree();
        if (!needsTree)
            builder.finish();
        return isRead;
    }

    // Builds the drawing from a tree. Returns false if the XML reader gives up.
    bool followTree()
    {
        // Elements before a mistake in the XML are drawn nevertheless. An error in drawing them takes precedence over
        // that mistake.
        Diagnostics xmlDiagnostics = m_diagnostics;
        TreeReader reader(m_reading, xmlDiagnostics, m_limits);
        if (!reader.read(m_source))
            return false;
        StyleSheet sheet(m_diagnostics, m_limits);
        addStyleSheets(reader.tree(), sheet, m_diagnostics);
        DrawingBuilder builder(m_drawing, m_diagnostics, m_limits);
        const auto reportProgress = [this](double share) { return m_source.reportProgress(share); };
        TreeFollower follower(reader.tree(), sheet, builder, m_diagnostics, m_limits, reportProgress);
        builder.setFollower(&follower);
        follower.follow();
        builder.setFollower(nullptr);
        builder.finish();
        if (!m_diagnostics.hasFailed())
            m_diagnostics.takeError(xmlDiagnostics);
        return true;
    }

    // Prepares for another attempt.
    bool startAgain()
    {
        m_drawing = {};
        m_diagnostics.clear();
        if (!m_source.rewind())
            m_diagnostics.fail("the file cannot be read a second time");
        return !m_diagnostics.hasFailed();
    }

private:
    const XmlReading m_reading;
    DrawingSource& m_source;
    Diagnostics& m_diagnostics;
    const Limits& m_limits;
    Drawing& m_drawing;
};

} // namespace

void readDrawing(
    DrawingSource& source, Diagnostics& diagnostics, const Limits& limits, Drawing& drawing, XmlReading reading)
{
    drawing = {};
    Attempt attempt(reading, source, diagnostics, limits, drawing);
    bool needsTree = false;
    bool isRead = attempt.follow(needsTree);
    if (isRead && needsTree && attempt.startAgain())
        isRead = attempt.followTree();
    const bool isDoubtful = !isRead || diagnostics.hasFailed();
    if (reading == XmlReading::Quick && isDoubtful && attempt.startAgain())
        readDrawing(source, diagnostics, limits, drawing, XmlReading::Thorough);
    else
        drawing.warnings = diagnostics.warnings();
}

} // namespace mirn::zelsvg
