// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/document/element.h"
#include "platform/svg/reading/treefollower.h"
#include "platform/svg/reading/zoomlimits.h"
#include "platform/svg/records/drawing.h"
#include "platform/svg/shapes/shapes.h"
#include "platform/svg/shapes/textlayout.h"
#include "platform/svg/shapes/viewport.h"

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

    // Whoever leads through a tree instead; not owned.
    void setFollower(TreeFollower* follower) { m_follower = follower; }

    // Completes the parameter, also after an error.
    void finish();

private:
    // An open element and what its children inherit.
    struct Frame
    {
        Style style;
        Viewport viewport;
        TextPool::Offset tooltip = TextPool::Empty;
        std::size_t firstRecord = 0;
        int layer = 0;
        int id = 0;
        bool hasId = false;
        bool hasTooltip = false; // of its own
        bool isHidden = false; // not drawn, with all below
        bool hasEdges = false; // at which its content should be cut off
        ElementName name = ElementName::Unknown;
    };

    [[nodiscard]] Frame& top() { return m_frames[m_depth - 1]; }
    Frame& push(ElementName name);
    bool startHidden(const Element& element);
    bool startRoot(const Element& element);
    bool startGraphic(const Element& element);
    void startViewport(const Element& element, const TreeFollower::Instance& instance, Frame& frame);
    bool startTextPart(const Element& element);
    void readInherited(const Element& element, Frame& frame);
    [[nodiscard]] TextPool::Offset tooltipOf(std::string_view text);
    void resolveStyle(const Element& element, Frame& frame);
    void drawShape(const Element& element);
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
    GivenLimits m_givenLimits;
    bool m_hasSize = false;
    bool m_needsTree = false;
    TreeFollower* m_follower = nullptr; // null while the drawing is being read
};

} // namespace zelsvg
