// SPDX-License-Identifier: MIT
#include "platform/svg/document/names.h"

#include "platform/svg/base/number.h"

#include <cstddef>

namespace zelsvg {

namespace {

template <typename Name> struct Entry
{
    Space space;
    std::string_view text;
    Name name;
};

constexpr Entry<ElementName> Elements[] = {
    {Space::Svg, "a", ElementName::A},
    {Space::Svg, "circle", ElementName::Circle},
    {Space::Svg, "clipPath", ElementName::ClipPath},
    {Space::Svg, "defs", ElementName::Defs},
    {Space::Svg, "desc", ElementName::Desc},
    {Space::Svg, "ellipse", ElementName::Ellipse},
    {Space::Svg, "filter", ElementName::Filter},
    {Space::Svg, "foreignObject", ElementName::ForeignObject},
    {Space::Svg, "g", ElementName::G},
    {Space::Svg, "image", ElementName::Image},
    {Space::Svg, "line", ElementName::Line},
    {Space::Svg, "linearGradient", ElementName::LinearGradient},
    {Space::Svg, "marker", ElementName::Marker},
    {Space::Svg, "mask", ElementName::Mask},
    {Space::Svg, "metadata", ElementName::Metadata},
    {Space::Svg, "path", ElementName::Path},
    {Space::Svg, "pattern", ElementName::Pattern},
    {Space::Svg, "polygon", ElementName::Polygon},
    {Space::Svg, "polyline", ElementName::Polyline},
    {Space::Svg, "radialGradient", ElementName::RadialGradient},
    {Space::Svg, "rect", ElementName::Rect},
    {Space::Svg, "script", ElementName::Script},
    {Space::Svg, "stop", ElementName::Stop},
    {Space::Svg, "style", ElementName::Style},
    {Space::Svg, "svg", ElementName::Svg},
    {Space::Svg, "switch", ElementName::Switch},
    {Space::Svg, "symbol", ElementName::Symbol},
    {Space::Svg, "text", ElementName::Text},
    {Space::Svg, "textPath", ElementName::TextPath},
    {Space::Svg, "title", ElementName::Title},
    {Space::Svg, "tspan", ElementName::TSpan},
    {Space::Svg, "use", ElementName::Use},
    {Space::Tovanel, "layer", ElementName::TovanelLayer},
};

constexpr Entry<AttributeName> Attributes[] = {
    {Space::None, "font-size", AttributeName::FontSize},
    {Space::None, "font", AttributeName::Font},
    {Space::None, "font-family", AttributeName::FontFamily},
    {Space::None, "font-stretch", AttributeName::FontStretch},
    {Space::None, "font-style", AttributeName::FontStyle},
    {Space::None, "font-variant", AttributeName::FontVariant},
    {Space::None, "font-weight", AttributeName::FontWeight},
    {Space::None, "color", AttributeName::Color},
    {Space::None, "fill", AttributeName::Fill},
    {Space::None, "fill-opacity", AttributeName::FillOpacity},
    {Space::None, "fill-rule", AttributeName::FillRule},
    {Space::None, "stroke", AttributeName::Stroke},
    {Space::None, "stroke-opacity", AttributeName::StrokeOpacity},
    {Space::None, "stroke-width", AttributeName::StrokeWidth},
    {Space::None, "stroke-dasharray", AttributeName::StrokeDashArray},
    {Space::None, "opacity", AttributeName::Opacity},
    {Space::None, "display", AttributeName::Display},
    {Space::None, "visibility", AttributeName::Visibility},
    {Space::None, "text-anchor", AttributeName::TextAnchor},
    {Space::None, "dominant-baseline", AttributeName::DominantBaseline},
    {Space::None, "alignment-baseline", AttributeName::AlignmentBaseline},
    {Space::None, "vector-effect", AttributeName::VectorEffect},
    {Space::None, "white-space", AttributeName::WhiteSpace},
    {Space::None, "text-decoration", AttributeName::TextDecoration},
    {Space::None, "text-decoration-line", AttributeName::TextDecoration},
    {Space::None, "letter-spacing", AttributeName::LetterSpacing},
    {Space::None, "word-spacing", AttributeName::WordSpacing},
    {Space::None, "writing-mode", AttributeName::WritingMode},
    {Space::None, "direction", AttributeName::Direction},
    {Space::None, "text-transform", AttributeName::TextTransform},
    {Space::None, "baseline-shift", AttributeName::BaselineShift},
    {Space::None, "transform", AttributeName::Transform},
    {Space::None, "overflow", AttributeName::Overflow},
    {Space::None, "stop-color", AttributeName::StopColor},
    {Space::None, "stop-opacity", AttributeName::StopOpacity},
    {Space::None, "clip-path", AttributeName::ClipPath},
    {Space::None, "mask", AttributeName::Mask},
    {Space::None, "filter", AttributeName::Filter},
    {Space::None, "marker", AttributeName::Marker},
    {Space::None, "marker-start", AttributeName::MarkerStart},
    {Space::None, "marker-mid", AttributeName::MarkerMid},
    {Space::None, "marker-end", AttributeName::MarkerEnd},
    {Space::None, "class", AttributeName::Class},
    {Space::None, "cx", AttributeName::Cx},
    {Space::None, "cy", AttributeName::Cy},
    {Space::None, "d", AttributeName::D},
    {Space::None, "dx", AttributeName::Dx},
    {Space::None, "dy", AttributeName::Dy},
    {Space::None, "height", AttributeName::Height},
    {Space::None, "href", AttributeName::Href},
    {Space::None, "id", AttributeName::Id},
    {Space::None, "media", AttributeName::Media},
    {Space::None, "offset", AttributeName::Offset},
    {Space::None, "points", AttributeName::Points},
    {Space::None, "preserveAspectRatio", AttributeName::PreserveAspectRatio},
    {Space::None, "r", AttributeName::R},
    {Space::None, "rotate", AttributeName::Rotate},
    {Space::None, "rx", AttributeName::Rx},
    {Space::None, "ry", AttributeName::Ry},
    {Space::None, "style", AttributeName::Style},
    {Space::None, "textLength", AttributeName::TextLength},
    {Space::None, "type", AttributeName::Type},
    {Space::None, "viewBox", AttributeName::ViewBox},
    {Space::None, "width", AttributeName::Width},
    {Space::None, "x", AttributeName::X},
    {Space::None, "x1", AttributeName::X1},
    {Space::None, "x2", AttributeName::X2},
    {Space::None, "y", AttributeName::Y},
    {Space::None, "y1", AttributeName::Y1},
    {Space::None, "y2", AttributeName::Y2},
    {Space::None, "maximum", AttributeName::LayerMaximum},
    {Space::None, "minimum", AttributeName::LayerMinimum},
    {Space::None, "number", AttributeName::LayerNumber},
    {Space::Xlink, "href", AttributeName::XlinkHref},
    {Space::Xml, "id", AttributeName::Id},
    {Space::Xml, "space", AttributeName::XmlSpace},
    {Space::Tovanel, "flag", AttributeName::TovanelFlag},
    {Space::Tovanel, "id", AttributeName::TovanelId},
    {Space::Tovanel, "initial-scale", AttributeName::TovanelInitialScale},
    {Space::Tovanel, "layer", AttributeName::TovanelLayer},
    {Space::Tovanel, "maximum-scale", AttributeName::TovanelMaximumScale},
    {Space::Tovanel, "minimum-scale", AttributeName::TovanelMinimumScale},
    {Space::Tovanel, "popup", AttributeName::TovanelPopup},
    {Space::Tovanel, "scale-step", AttributeName::TovanelScaleStep},
};

// A table from (namespace, text) to a name. Every element and attribute of a drawing is looked up, so for speed the
// hash uses only the length and three characters.
template <typename Name, std::size_t Size> class NameTable
{
public:
    template <std::size_t Count> explicit NameTable(const Entry<Name> (&entries)[Count])
    {
        static_assert(Count * 3 < Size && (Size & (Size - 1)) == 0);
        for (const Entry<Name>& entry : entries) {
            std::size_t slot = hash(entry.space, entry.text);
            while (m_slots[slot])
                slot = (slot + 1) % Size;
            m_slots[slot] = &entry;
        }
    }

    [[nodiscard]] const Entry<Name>* find(Space space, std::string_view text) const
    {
        if (text.empty())
            return nullptr;
        for (std::size_t slot = hash(space, text); m_slots[slot]; slot = (slot + 1) % Size) {
            if (m_slots[slot]->space == space && m_slots[slot]->text == text)
                return m_slots[slot];
        }
        return nullptr;
    }

private:
    [[nodiscard]] static std::size_t hash(Space space, std::string_view text)
    {
        const auto at = [text](std::size_t i) { return static_cast<std::size_t>(static_cast<unsigned char>(text[i])); };
        const std::size_t last = text.size() - 1;
        return (static_cast<std::size_t>(space) * 101 + text.size() * 37 + at(0) * 11 + at(last / 2) * 29
                   + at(last) * 3)
            % Size;
    }

    const Entry<Name>* m_slots[Size] = {};
};

const NameTable<AttributeName, 512>& attributeTable()
{
    static const NameTable<AttributeName, 512> table(Attributes);
    return table;
}

} // namespace

ElementName elementName(Space space, std::string_view local)
{
    static const NameTable<ElementName, 128> table(Elements);
    const auto* found = table.find(space == Space::None ? Space::Svg : space, local);
    return found ? found->name : ElementName::Unknown;
}

AttributeName attributeName(Space space, std::string_view local)
{
    const auto* found = attributeTable().find(space, local);
    return found ? found->name : AttributeName::Unknown;
}

AttributeName propertyName(std::string_view name)
{
    AttributeName found = attributeName(Space::None, name);
    if (found == AttributeName::Unknown)
        found = attributeName(Space::None, lowered(name));
    return found < AttributeName::PropertyCount ? found : AttributeName::Unknown;
}

Space spaceOfUri(std::string_view uri)
{
    if (uri.empty())
        return Space::None;
    if (uri == "http://www.w3.org/2000/svg")
        return Space::Svg;
    if (uri == "http://www.w3.org/1999/xlink")
        return Space::Xlink;
    if (uri == "http://www.w3.org/XML/1998/namespace")
        return Space::Xml;
    return uri == "urn:tovanel:chip-drawing" ? Space::Tovanel : Space::Other;
}

} // namespace zelsvg
