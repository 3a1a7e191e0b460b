// SPDX-License-Identifier: MIT
#include "platform/svg/reading/drawingbuilder.h"

#include "platform/svg/base/diagnostics.h"
#include "platform/svg/base/latin1.h"
#include "platform/svg/base/number.h"
#include "platform/svg/reading/chipattributes.h"

#include <algorithm>
#include <cmath>

namespace mirn::zelsvg {

namespace {

// The largest distance between chords and their curve, as a fraction of the drawing's size. It is one pixel at a scale
// of 16 if the whole drawing fills a screen of 1600 pixels at a scale of 1. A smaller one would cost more than it
// shows, because every chord of an outline is a record.
constexpr double RelativeTolerance = 4e-5;

[[nodiscard]] bool isGroup(ElementName name)
{
    switch (name) {
    case ElementName::A:
    case ElementName::G:
    case ElementName::Svg:
    case ElementName::Switch:
    case ElementName::Symbol:
    case ElementName::Use:
        return true;
    default:
        return false;
    }
}

[[nodiscard]] bool hasViewport(ElementName name)
{
    return name == ElementName::Svg || name == ElementName::Symbol;
}

} // namespace

DrawingBuilder::DrawingBuilder(Drawing& drawing, Diagnostics& diagnostics, const Limits& limits)
    : m_drawing(drawing)
    , m_diagnostics(diagnostics)
    , m_limits(limits)
    , m_writer(drawing, diagnostics, limits)
    , m_resolver(m_families, *this, diagnostics)
    , m_shapes(m_writer, diagnostics, limits)
    , m_text(m_writer, diagnostics)
{
    m_frames.reserve(static_cast<std::size_t>(limits.nesting)); // frames must not move while children start
}

bool DrawingBuilder::startElement(const Element& element)
{
    if (m_depth == 0)
        return startRoot(element);
    // The reader checks the nesting as well, but without what `use` nests.
    if (m_depth >= static_cast<std::size_t>(m_limits.nesting)) {
        m_diagnostics.fail(
            "found elements nested too deep, expected at most " + std::to_string(m_limits.nesting) + " levels");
        return false;
    }
    const ElementName name = element.name();
    if (name == ElementName::TovanelLayer && top().name == ElementName::Metadata)
        readLayerRange(element, m_diagnostics, m_drawing.parameter);
    if (top().isHidden || top().name == ElementName::Title || top().name == ElementName::Metadata)
        return startHidden(element);
    if (name == ElementName::Title) {
        m_title.clear();
        push(name);
        return true;
    }
    if (m_textDepth > 0)
        return startTextPart(element);
    if (Shapes::isShape(top().name) && name != ElementName::Metadata)
        return startHidden(element);
    if (Shapes::isShape(name) || isGroup(name) || name == ElementName::Text)
        return startGraphic(element);
    noteSkipped(name);
    if (name == ElementName::Metadata) {
        push(name);
        return true;
    }
    return startHidden(element);
}

// Hidden content may still contain style sheets. If there is a tree, they have been found already.
bool DrawingBuilder::startHidden(const Element& element)
{
    if (element.name() == ElementName::Style && !m_follower)
        m_needsTree = true;
    if (m_follower || element.name() == ElementName::Unknown)
        return false;
    push(element.name()).isHidden = true;
    return true;
}

bool DrawingBuilder::startRoot(const Element& element)
{
    Frame& frame = push(element.name());
    zel_Parameter& parameter = m_drawing.parameter;
    m_givenLimits = readZoomParameters(element, m_diagnostics, parameter);
    const ViewportSize size = rootSize(element, m_diagnostics);
    m_hasSize = size.width > 0.0 && size.height > 0.0;
    parameter.width = size.width > 0.0 ? size.width : parameter.width;
    parameter.height = size.height > 0.0 ? size.height : parameter.height;
    m_tolerance = std::max(parameter.width, parameter.height) * RelativeTolerance;
    frame.viewport.size = {parameter.width, parameter.height};
    resolveStyle(element, frame);
    readInherited(element, frame);
    enterViewBox(element, m_diagnostics, frame.viewport);
    frame.isHidden = !frame.style.isDisplayed;
    return true;
}

bool DrawingBuilder::startGraphic(const Element& element)
{
    const ElementName name = element.name();
    const TreeFollower::Instance instance = m_follower ? m_follower->takeInstance() : TreeFollower::Instance();
    if (name == ElementName::Symbol && !instance.isNext)
        return startHidden(element);
    if (name == ElementName::Use && !m_follower) {
        m_needsTree = true;
        return false;
    }
    Frame& frame = push(name);
    resolveStyle(element, frame);
    if (!frame.style.isDisplayed) {
        --m_depth;
        return startHidden(element);
    }
    readInherited(element, frame);
    if (hasViewport(name))
        startViewport(element, instance, frame);
    if (Shapes::isShape(name)) {
        drawShape(element);
    } else if (name == ElementName::Text) {
        m_textDepth = m_depth;
        m_textIdentity = identify(element, frame);
        m_text.begin(frame.viewport.matrix, frame.viewport.size);
        m_text.pushElement(element, frame.style);
    } else if (name == ElementName::Use) {
        moveOrigin(element, frame.style.fontSize, m_diagnostics, frame.viewport);
        m_follower->drawInstance(element);
    }
    return true;
}

void DrawingBuilder::startViewport(const Element& element, const TreeFollower::Instance& instance, Frame& frame)
{
    const std::string_view overflow = m_cascade.value(AttributeName::Overflow);
    Viewport outside;
    frame.isHidden = !enterViewport(
        element, instance.width, instance.height, frame.style.fontSize, m_diagnostics, outside, frame.viewport);
    frame.hasEdges = !frame.isHidden && overflow != "visible" && overflow != "auto";
    if (frame.hasEdges)
        m_writer.enterEdges(outside.matrix, outside.size);
}

// Starts an element inside a text.
bool DrawingBuilder::startTextPart(const Element& element)
{
    const ElementName name = element.name();
    if (name != ElementName::TSpan && name != ElementName::A) {
        noteSkipped(name);
        return startHidden(element);
    }
    Frame& frame = push(name);
    const Matrix matrix = frame.viewport.matrix;
    resolveStyle(element, frame);
    frame.viewport.matrix = matrix; // parts of a text are not transformed
    readInherited(element, frame);
    if (!frame.style.isDisplayed) {
        --m_depth;
        return startHidden(element);
    }
    m_text.pushElement(element, frame.style);
    return true;
}

void DrawingBuilder::endElement()
{
    const Frame& frame = top();
    if (frame.name == ElementName::Title && !frame.isHidden) {
        applyTitle();
    } else if (m_textDepth > 0 && !frame.isHidden) {
        m_text.popElement();
        if (m_textDepth == m_depth) {
            m_text.end();
            m_textDepth = 0;
        }
    } else if (frame.hasEdges) {
        m_writer.leaveEdges();
    }
    --m_depth;
}

void DrawingBuilder::characters(std::string_view text)
{
    const Frame& frame = top();
    if (frame.isHidden)
        return;
    if (frame.name == ElementName::Title) {
        m_title.append(text);
    } else if (m_textDepth > 0) {
        Identity identity = m_textIdentity;
        identity.layer = frame.layer;
        identity.tooltip = frame.tooltip;
        if (frame.hasId)
            identity.id = frame.id;
        m_text.add(text, frame.style, identity);
    }
}

void DrawingBuilder::finish()
{
    m_writer.completeLayers();
    if (!m_hasSize)
        m_writer.takeSizeFromRecords();
    completeZoomLimits(m_drawing.parameter, m_givenLimits);
}

DrawingBuilder::Frame& DrawingBuilder::push(ElementName name)
{
    if (m_depth == m_frames.size())
        m_frames.emplace_back();
    Frame& frame = m_frames[m_depth];
    if (m_depth > 0)
        frame = m_frames[m_depth - 1];
    ++m_depth;
    frame.name = name;
    frame.hasTooltip = false;
    frame.hasEdges = false;
    frame.firstRecord = m_writer.recordCount();
    return frame;
}

void DrawingBuilder::readInherited(const Element& element, Frame& frame)
{
    frame.layer = readLayer(element, m_diagnostics).value_or(frame.layer);
    const auto id = readId(element, m_diagnostics);
    frame.hasId = frame.hasId || id.has_value();
    frame.id = id.value_or(frame.id);
    if (element.has(AttributeName::TovanelPopup)) {
        frame.hasTooltip = true;
        const std::string_view text = element.value(AttributeName::TovanelPopup);
        frame.tooltip = tooltipOf(toLatin1(text, m_buffer, m_diagnostics));
    }
}

// A <title> replaces the tooltip that its parent has inherited, which is recognised by its offset. An element's own
// tooltip must therefore have a different offset, even if the text is the same.
TextPool::Offset DrawingBuilder::tooltipOf(std::string_view text)
{
    const TextPool::Offset tooltip = m_writer.texts().intern(text);
    const auto isInherited = [tooltip](const Frame& frame) { return !frame.hasTooltip && frame.tooltip == tooltip; };
    const auto begin = m_frames.begin();
    const bool isShared = std::any_of(begin, begin + static_cast<std::ptrdiff_t>(m_depth) - 1, isInherited);
    return isShared ? m_writer.texts().addDistinct(text) : tooltip;
}

void DrawingBuilder::resolveStyle(const Element& element, Frame& frame)
{
    m_cascade.reset();
    m_cascade.addAttributes(element);
    if (m_follower)
        m_follower->applyRules(element, m_cascade);
    if (element.has(AttributeName::Style))
        m_cascade.addStyle(element.value(AttributeName::Style));
    m_resolver.resolve(m_cascade, frame.viewport.size, frame.style);
    if (element.has(AttributeName::XmlSpace))
        frame.style.keepsSpaces = element.value(AttributeName::XmlSpace) == "preserve";
    if (m_cascade.has(AttributeName::Transform))
        frame.viewport.matrix
            = frame.viewport.matrix * parseTransform(m_cascade.value(AttributeName::Transform), m_diagnostics);
}

void DrawingBuilder::drawShape(const Element& element)
{
    const Frame& frame = top();
    m_shapes.draw(element, {frame.style, frame.viewport.matrix, frame.viewport.size, m_tolerance},
        [&] { return identify(element, frame); });
}

Identity DrawingBuilder::identify(const Element& element, const Frame& frame)
{
    Identity identity;
    identity.id = frame.hasId ? frame.id : --m_lastOwnId;
    identity.layer = frame.layer;
    identity.tooltip = frame.tooltip;
    identity.flag = readFlag(element, m_diagnostics);
    if (element.has(AttributeName::Id)) {
        const std::string_view name = toLatin1(element.value(AttributeName::Id), m_buffer, m_diagnostics);
        // Instances repeat the names of the elements that they draw.
        const bool isRepeated = m_follower && m_follower->isInInstance();
        identity.name = isRepeated ? m_writer.texts().intern(name) : m_writer.texts().add(name);
    }
    return identity;
}

void DrawingBuilder::noteSkipped(ElementName name)
{
    switch (name) {
    case ElementName::Image:
        m_diagnostics.warn(Unsupported::Image);
        break;
    case ElementName::ForeignObject:
        m_diagnostics.warn(Unsupported::ForeignObject);
        break;
    case ElementName::TextPath:
        m_diagnostics.warn(Unsupported::TextPath);
        break;
    default:
        break;
    }
}

// A title becomes the tooltip of its parent, for what the parent has drawn so far and for what follows. A popup
// attribute of the parent takes precedence; the root's title is that of the drawing.
void DrawingBuilder::applyTitle()
{
    Frame& frame = m_frames[m_depth - 2];
    const std::string_view text = trimmed(m_title);
    if (m_depth == 2 || frame.hasTooltip || text.empty())
        return;
    frame.hasTooltip = true;
    const TextPool::Offset replaced = frame.tooltip;
    frame.tooltip = m_writer.texts().intern(toLatin1(text, m_buffer, m_diagnostics));
    m_writer.replaceTooltip(frame.firstRecord, replaced, frame.tooltip);
    m_text.replaceTooltip(replaced, frame.tooltip);
}

bool DrawingBuilder::serverColor(std::string_view name, Color& color, bool& isFound)
{
    if (m_follower)
        return m_follower->serverColor(name, color, isFound);
    m_needsTree = true;
    return false;
}

} // namespace mirn::zelsvg
