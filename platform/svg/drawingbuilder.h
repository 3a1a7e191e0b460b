// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/documenttree.h"
#include "platform/svg/drawing.h"
#include "platform/svg/shapes.h"
#include "platform/svg/stylesheet.h"
#include "platform/svg/textlayout.h"

#include <functional>
#include <string>
#include <vector>

namespace zelsvg {

// Follows the elements of a drawing, keeps what they inherit from each other and hands the graphic ones to the rooms
// that turn them into records.
//
// A drawing in which no place refers to another is followed while it is being read. With the first `use`, style sheet
// or gradient that is not enough: then needsTree() becomes true, and the drawing has to come once more, kept as a tree.
class DrawingBuilder final : public ElementReceiver, private PaintServers
{
public:
    DrawingBuilder(Drawing& drawing, Diagnostics& diagnostics, const Limits& limits);

    bool startElement(const Element& element) override;
    void endElement() override;
    void characters(std::string_view text) override;
    [[nodiscard]] bool isFinished() const override { return m_needsTree; }
    [[nodiscard]] bool needsTree() const { return m_needsTree; }

    // Follows the elements of a tree instead. `sheet` has the drawing's style rules. `isWanted(share)` is asked between
    // steps whether to go on; no is an error.
    using IsWanted = std::function<bool(double share)>;
    void followTree(const DocumentTree& tree, StyleSheet& sheet, IsWanted isWanted);

    // Completes the parameter, also after an error.
    void finish();

private:
    // An open element and what its children inherit.
    struct Frame
    {
        Style style;
        Matrix matrix;
        ViewportSize viewport;
        TextPool::Offset tooltip = TextPool::Empty;
        std::size_t firstRecord = 0;
        int layer = 0;
        int id = 0;
        bool hasId = false;
        bool hasTooltip = false; // of its own
        bool isHidden = false; // not drawn, with all below
        ElementName name = ElementName::Unknown;
    };

    // The position in the tree, for messages.
    class TreePosition;

    // How a `use` changes the element that it draws.
    struct Instance
    {
        std::string_view width;
        std::string_view height;
        bool isNext = false; // the next element to start is the one
    };

    [[nodiscard]] Frame& top() { return m_frames[m_depth - 1]; }
    Frame& push(ElementName name);
    bool startHidden(const Element& element);
    bool startRoot(const Element& element);
    bool startGraphic(const Element& element);
    bool startTextPart(const Element& element);
    void readInherited(const Element& element, Frame& frame);
    void resolveStyle(const Element& element, Frame& frame);
    void drawShape(const Element& element);
    void enterViewport(const Element& element, Frame& frame, const Instance& instance);
    void setViewBox(const Element& element, Frame& frame, ViewportSize size);
    void drawUse(const Element& element);
    void drawInstance(const Element& element, unsigned target);
    void follow(unsigned node);
    void noteSkipped(ElementName name);
    void applyTitle();
    [[nodiscard]] Identity identify(const Element& element, const Frame& frame);
    bool serverColor(std::string_view name, Color& color, bool& isFound) override;

    Drawing& m_drawing;
    Diagnostics& m_diagnostics;
    const Limits& m_limits;
    RecordWriter m_writer;
    TextPool m_families;
    StyleResolver m_resolver;
    Shapes m_shapes;
    TextLayout m_text;
    Cascade m_cascade;
    std::vector<Frame> m_frames; // never shrinks; m_depth of them are open
    std::size_t m_depth = 0;
    std::size_t m_textDepth = 0; // the depth of the open text element, 0 for none
    Identity m_textIdentity;
    std::string m_title;
    std::string m_buffer;
    double m_tolerance = 1.0;
    int m_lastOwnId = 0; // counts down
    bool m_hasSize = false;
    bool m_needsTree = false;

    // When following a tree:
    const DocumentTree* m_tree = nullptr;
    StyleSheet* m_sheet = nullptr;
    unsigned m_node = 0;
    Instance m_instance;
    std::vector<unsigned> m_openInstances; // the elements being drawn through `use`
    IsWanted m_isWanted;
    std::size_t m_followed = 0;
    std::size_t m_instances = 0;
    std::size_t m_instanceBytes = 0;
};

} // namespace zelsvg
