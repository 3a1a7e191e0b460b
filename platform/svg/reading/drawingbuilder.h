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

namespace mirn::zelsvg {

// Follows the elements of a drawing, tracks what they inherit, and passes the graphic ones to the classes that turn
// them into records.
//
// A drawing without references between its elements is built while it is being read. At the first `use`, style sheet or
// gradient needsTree() becomes true, and the drawing must be read again and stored as a tree.
class DrawingBuilder final : public ElementReceiver, private PaintServers
{
public:
    DrawingBuilder(Drawing& drawing, Diagnostics& diagnostics, const Limits& limits);

    bool startElement(const Element& element) override;
    void endElement() override;
    void characters(std::string_view text) override;
    [[nodiscard]] bool isFinished() const override { return m_needsTree; }
    [[nodiscard]] bool needsTree() const { return m_needsTree; }

    // Sets the follower that leads the builder through a tree; not owned.
    void setFollower(TreeFollower* follower) { m_follower = follower; }

    // Completes the zoom parameters; call it after an error as well.
    void finish();

private:
    // An open element and what its children inherit from it.
    struct Frame
    {
        Style style;
        Viewport viewport;
        TextPool::Offset tooltip = TextPool::Empty;
        std::size_t firstRecord = 0;
        int layer = 0;
        int id = 0;
        bool hasId = false;
        bool hasTooltip = false; // whether its tooltip is its own, not inherited
        bool isHidden = false; // not drawn, with all its content
        bool hasEdges = false; // whether its edges should clip its content
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
    std::vector<Frame> m_frames; // never shrinks; the first m_depth are open
    std::size_t m_depth = 0;
    std::size_t m_textDepth = 0; // depth of the open text element, 0 for none
    Identity m_textIdentity;
    std::string m_title;
    std::string m_buffer;
    double m_tolerance = 1.0;
    int m_lastOwnId = 0; // counts down for elements without an id
    GivenLimits m_givenLimits;
    bool m_hasSize = false;
    bool m_needsTree = false;
    TreeFollower* m_follower = nullptr; // null while the drawing is being read
};

} // namespace mirn::zelsvg
