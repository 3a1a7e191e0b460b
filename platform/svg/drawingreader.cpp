// SPDX-License-Identifier: MIT
#include "platform/svg/drawingreader.h"

#include "platform/svg/documenttree.h"
#include "platform/svg/drawingbuilder.h"
#include "platform/svg/elementdecoder.h"
#include "platform/svg/stylesheet.h"

#include <optional>

namespace zelsvg {

namespace {

// Follows the drawing while reading it. False when that is not enough.
bool readStreaming(DrawingSource& source, Diagnostics& diagnostics, const Limits& limits, Drawing& drawing)
{
    DrawingBuilder builder(drawing, diagnostics, limits);
    ElementDecoder decoder(builder, diagnostics, limits);
    XmlReader reader(decoder, diagnostics, limits);
    reader.read(source);
    if (builder.needsTree())
        return false;
    builder.finish();
    return true;
}

// Hands the elements on to a tree, which knows the reader's position only through here.
class TreeReader final : private PositionSource
{
public:
    TreeReader(DrawingSource& source, Diagnostics& diagnostics, const Limits& limits)
        : m_tree(diagnostics, *this, limits)
    {
        ElementDecoder decoder(m_tree, diagnostics, limits);
        XmlReader reader(decoder, diagnostics, limits);
        m_reader = &reader;
        reader.read(source);
        m_reader = nullptr;
        m_tree.finish();
    }

    [[nodiscard]] const DocumentTree& tree() const { return m_tree; }

private:
    [[nodiscard]] Position position() const override { return m_reader->position(); }

    const XmlReader* m_reader = nullptr;
    DocumentTree m_tree;
};

void addStyleSheets(const DocumentTree& tree, StyleSheet& sheet)
{
    for (unsigned node = 0; node < tree.size(); ++node) {
        if (tree.name(node) == ElementName::Style)
            sheet.add(tree.innerText(node));
    }
}

void readThroughTree(DrawingSource& source, Diagnostics& diagnostics, const Limits& limits, Drawing& drawing)
{
    // What stands before a mistake in the XML is drawn all the same; a mistake that shows in drawing it comes first.
    Diagnostics xmlDiagnostics = diagnostics;
    const TreeReader reader(source, xmlDiagnostics, limits);
    StyleSheet sheet(diagnostics, limits);
    addStyleSheets(reader.tree(), sheet);
    DrawingBuilder builder(drawing, diagnostics, limits);
    builder.followTree(reader.tree(), sheet);
    builder.finish();
    if (!diagnostics.hasFailed())
        diagnostics.takeError(xmlDiagnostics);
}

} // namespace

void readDrawing(DrawingSource& source, Diagnostics& diagnostics, const Limits& limits, Drawing& drawing)
{
    drawing = {};
    if (!readStreaming(source, diagnostics, limits, drawing)) {
        drawing = {};
        diagnostics.clear();
        if (source.rewind())
            readThroughTree(source, diagnostics, limits, drawing);
        else
            diagnostics.fail("the file cannot be read a second time");
    }
    drawing.warnings = diagnostics.warnings();
}

} // namespace zelsvg
