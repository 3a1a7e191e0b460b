// SPDX-License-Identifier: MIT
#include "platform/svg/drawingbuilder.h"

#include "platform/svg/chipattributes.h"
#include "platform/svg/diagnostics.h"
#include "platform/svg/latin1.h"
#include "platform/svg/number.h"
#include "platform/svg/paintservers.h"

#include <algorithm>
#include <cmath>

namespace zelsvg {

namespace {

// How far chords may lie from their curve, as a share of the drawing's size: a pixel at a scale of 16, when the whole
// drawing fills a screen of 1600 pixels at a scale of 1. Finer ones would cost more than they show, as every chord of
// an outline is a record.
constexpr double RelativeTolerance = 4e-5;

constexpr std::size_t NodesPerStep = 4096;

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

// A length of the root element: percentages and what is not positive are as good as none.
[[nodiscard]] double rootLength(const Element& root, AttributeName name, Diagnostics& diagnostics)
{
    double value = 0.0;
    if (root.has(name))
        parseLength(root.value(name), LengthContext(), LengthAxis::Horizontal, diagnostics, value);
    return std::max(value, 0.0);
}

} // namespace

class DrawingBuilder::TreePosition final : public PositionSource
{
public:
    explicit TreePosition(const DrawingBuilder& builder)
        : m_builder(builder)
    {
        m_builder.m_diagnostics.setPositionSource(this);
    }
    ~TreePosition() override { m_builder.m_diagnostics.setPositionSource(nullptr); }
    TreePosition(const TreePosition&) = delete;
    TreePosition& operator=(const TreePosition&) = delete;

    [[nodiscard]] Position position() const override { return m_builder.m_tree->position(m_builder.m_node); }

private:
    const DrawingBuilder& m_builder;
};

DrawingBuilder::DrawingBuilder(Drawing& drawing, Diagnostics& diagnostics, const Limits& limits)
    : m_drawing(drawing)
    , m_diagnostics(diagnostics)
    , m_limits(limits)
    , m_writer(drawing, diagnostics, limits)
    , m_resolver(m_families, *this, diagnostics)
    , m_shapes(m_writer, diagnostics, limits)
    , m_text(m_writer, diagnostics)
{
    m_frames.reserve(static_cast<std::size_t>(limits.nesting)); // frames stay where they are while children start
}

bool DrawingBuilder::startElement(const Element& element)
{
    if (m_depth == 0)
        return startRoot(element);
    // The reader counts as well, but not what `use` nests.
    if (m_depth >= static_cast<std::size_t>(m_limits.nesting)) {
        m_diagnostics.fail(
            "found elements nested too deep, expected at most " + std::to_string(m_limits.nesting) + " levels");
        return false;
    }
    if (top().isHidden)
        return startHidden(element);
    const ElementName name = element.name();
    if (name == ElementName::Title) {
        m_title.clear();
        push(name);
        return true;
    }
    if (m_textDepth > 0)
        return startTextPart(element);
    if (Shapes::isShape(name) || isGroup(name) || name == ElementName::Text)
        return startGraphic(element);
    noteSkipped(name);
    if (name == ElementName::TovanelLayer && top().name == ElementName::Metadata)
        readLayerRange(element, m_diagnostics, m_drawing.parameter);
    if (name == ElementName::Metadata) {
        push(name);
        return true;
    }
    return startHidden(element);
}

// What is not drawn may still hold style sheets; a tree has found them beforehand.
bool DrawingBuilder::startHidden(const Element& element)
{
    if (element.name() == ElementName::Style && !m_tree)
        m_needsTree = true;
    if (m_tree || element.name() == ElementName::Unknown)
        return false;
    push(element.name()).isHidden = true;
    return true;
}

bool DrawingBuilder::startRoot(const Element& element)
{
    Frame& frame = push(element.name());
    zel_Parameter& parameter = m_drawing.parameter;
    readZoomParameters(element, m_diagnostics, parameter);
    ViewBox box;
    const bool hasBox = parseViewBox(element.value(AttributeName::ViewBox), m_diagnostics, box);
    double width = rootLength(element, AttributeName::Width, m_diagnostics);
    double height = rootLength(element, AttributeName::Height, m_diagnostics);
    if (hasBox && width == 0.0)
        width = height > 0.0 ? height * box.width / box.height : box.width;
    if (hasBox && height == 0.0)
        height = width * box.height / box.width;
    m_hasSize = width > 0.0 && height > 0.0;
    parameter.width = width > 0.0 ? std::min(width, LargestNumber) : parameter.width;
    parameter.height = height > 0.0 ? std::min(height, LargestNumber) : parameter.height;
    m_tolerance = std::max(parameter.width, parameter.height) * RelativeTolerance;
    frame.viewport = {parameter.width, parameter.height};
    resolveStyle(element, frame);
    readInherited(element, frame);
    setViewBox(element, frame, frame.viewport);
    frame.isHidden = !frame.style.isDisplayed;
    return true;
}

bool DrawingBuilder::startGraphic(const Element& element)
{
    const ElementName name = element.name();
    const Instance instance = m_instance;
    m_instance = {};
    if (name == ElementName::Symbol && !instance.isNext)
        return startHidden(element);
    if (name == ElementName::Use && !m_tree) {
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
        enterViewport(element, frame, instance);
    if (Shapes::isShape(name)) {
        drawShape(element);
    } else if (name == ElementName::Text) {
        m_textDepth = m_depth;
        m_textIdentity = identify(element, frame);
        m_text.begin(frame.matrix, frame.viewport);
        m_text.pushElement(element, frame.style);
    } else if (name == ElementName::Use) {
        drawUse(element);
    }
    return true;
}

// Inside of a text.
bool DrawingBuilder::startTextPart(const Element& element)
{
    const ElementName name = element.name();
    if (name != ElementName::TSpan && name != ElementName::A) {
        noteSkipped(name);
        return startHidden(element);
    }
    Frame& frame = push(name);
    const Matrix matrix = frame.matrix;
    resolveStyle(element, frame);
    frame.matrix = matrix; // pieces of a text are not transformed
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
        frame.tooltip = m_writer.texts().intern(toLatin1(text, m_buffer, m_diagnostics));
    }
}

void DrawingBuilder::resolveStyle(const Element& element, Frame& frame)
{
    m_cascade.reset();
    m_cascade.addAttributes(element);
    if (m_sheet)
        m_sheet->apply(*m_tree, element.node(), m_cascade);
    if (element.has(AttributeName::Style))
        m_cascade.addStyle(element.value(AttributeName::Style));
    m_resolver.resolve(m_cascade, frame.viewport, frame.style);
    if (element.has(AttributeName::XmlSpace))
        frame.style.keepsSpaces = element.value(AttributeName::XmlSpace) == "preserve";
    if (m_cascade.has(AttributeName::Transform))
        frame.matrix = frame.matrix * parseTransform(m_cascade.value(AttributeName::Transform), m_diagnostics);
}

void DrawingBuilder::drawShape(const Element& element)
{
    const Frame& frame = top();
    m_shapes.draw(
        element, {frame.style, frame.matrix, frame.viewport, m_tolerance}, [&] { return identify(element, frame); });
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
        // Instances repeat the names of what they draw.
        identity.name = m_openInstances.empty() ? m_writer.texts().add(name) : m_writer.texts().intern(name);
    }
    return identity;
}

void DrawingBuilder::enterViewport(const Element& element, Frame& frame, const Instance& instance)
{
    const LengthContext lengths{frame.style.fontSize, frame.viewport};
    const auto length = [&](std::string_view text, LengthAxis axis, double otherwise) {
        double value = otherwise;
        parseLength(text, lengths, axis, m_diagnostics, value);
        return std::min(std::max(value, 0.0), LargestNumber);
    };
    const auto sizeText = [&](std::string_view own, std::string_view given) { return given.empty() ? own : given; };
    const double width = length(
        sizeText(element.value(AttributeName::Width), instance.width), LengthAxis::Horizontal, frame.viewport.width);
    const double height = length(
        sizeText(element.value(AttributeName::Height), instance.height), LengthAxis::Vertical, frame.viewport.height);
    double x = 0.0;
    double y = 0.0;
    parseLength(element.value(AttributeName::X), lengths, LengthAxis::Horizontal, m_diagnostics, x);
    parseLength(element.value(AttributeName::Y), lengths, LengthAxis::Vertical, m_diagnostics, y);
    frame.matrix = frame.matrix * translation(x, y);
    frame.viewport = {width, height};
    frame.isHidden = width <= 0.0 || height <= 0.0;
    if (!frame.isHidden)
        setViewBox(element, frame, frame.viewport);
}

void DrawingBuilder::setViewBox(const Element& element, Frame& frame, ViewportSize size)
{
    ViewBox box;
    if (!parseViewBox(element.value(AttributeName::ViewBox), m_diagnostics, box))
        return;
    frame.matrix = frame.matrix * viewBoxTransform(box, size, element.value(AttributeName::PreserveAspectRatio));
    frame.viewport = {box.width, box.height};
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

// A title's text becomes the tooltip of the element around it, of what that has drawn so far and of what follows. An
// element's own popup goes before; the root's title is that of the drawing.
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

void DrawingBuilder::followTree(const DocumentTree& tree, StyleSheet& sheet, IsWanted isWanted)
{
    m_isWanted = std::move(isWanted);
    m_tree = &tree;
    m_sheet = &sheet;
    const TreePosition position(*this);
    if (tree.size() > 0)
        follow(0);
}

// Nested as deep as the elements, which startElement() limits.
void DrawingBuilder::follow(unsigned node)
{
    m_node = node;
    if (++m_followed % NodesPerStep == 0 && !m_isWanted(static_cast<double>(node) / m_tree->size()))
        m_diagnostics.fail("reading it was cancelled");
    if (!m_openInstances.empty()) {
        m_instanceBytes += m_tree->byteCount(node);
        if (++m_instances > m_limits.instances || m_instanceBytes > m_limits.instanceBytes)
            m_diagnostics.fail(
                "found <use> elements that multiply beyond any sensible drawing, expected fewer of them");
    }
    if (m_diagnostics.hasFailed())
        return;
    if (m_tree->name(node) == ElementName::CharacterData) {
        characters(m_tree->text(node));
        return;
    }
    Element element;
    m_tree->fill(node, element);
    if (!startElement(element))
        return;
    for (unsigned inner = node + 1; inner < m_tree->end(node); inner = m_tree->end(inner)) {
        follow(inner);
        if (m_diagnostics.hasFailed())
            break;
    }
    endElement();
}

void DrawingBuilder::drawUse(const Element& element)
{
    std::string_view reference = trimmed(element.value(AttributeName::Href));
    if (reference.empty())
        reference = trimmed(element.value(AttributeName::XlinkHref));
    const bool isLocal = !reference.empty() && reference.front() == '#';
    const unsigned target = isLocal ? m_tree->find(reference.substr(1)) : Element::NoNode;
    const auto isOpen = [this](unsigned node) {
        return std::find(m_openInstances.begin(), m_openInstances.end(), node) != m_openInstances.end();
    };
    bool isAround = target == Element::NoNode || isOpen(target);
    for (unsigned around = element.node(); !isAround && around != Element::NoNode; around = m_tree->parent(around))
        isAround = around == target;
    if (isAround)
        m_diagnostics.warn(Unsupported::Reference);
    else
        drawInstance(element, target);
}

void DrawingBuilder::drawInstance(const Element& element, unsigned target)
{
    Frame& frame = top();
    const LengthContext lengths{frame.style.fontSize, frame.viewport};
    double x = 0.0;
    double y = 0.0;
    parseLength(element.value(AttributeName::X), lengths, LengthAxis::Horizontal, m_diagnostics, x);
    parseLength(element.value(AttributeName::Y), lengths, LengthAxis::Vertical, m_diagnostics, y);
    frame.matrix = frame.matrix * translation(x, y);
    m_openInstances.push_back(target);
    m_instance = {element.value(AttributeName::Width), element.value(AttributeName::Height), true};
    const unsigned node = m_node;
    follow(target);
    m_node = node;
    m_instance = {};
    m_openInstances.pop_back();
}

bool DrawingBuilder::serverColor(std::string_view name, Color& color, bool& isFound)
{
    if (m_tree)
        return gradientColor(*m_tree, *m_sheet, name, m_diagnostics, color, isFound);
    m_needsTree = true;
    return false;
}

} // namespace zelsvg
