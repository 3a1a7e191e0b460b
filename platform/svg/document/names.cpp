// SPDX-License-Identifier: MIT
#include "platform/svg/document/names.h"

#include "platform/svg/base/number.h"

#include <cstddef>

namespace mirn::zelsvg {

namespace {

template <typename Name> struct Entry
{
    XmlNamespace space;
    std::string_view text;
    Name name;
};

constexpr Entry<ElementName> Elements[] = {
    {XmlNamespace::Svg, "a", ElementName::A},
    {XmlNamespace::Svg, "circle", ElementName::Circle},
    {XmlNamespace::Svg, "clipPath", ElementName::ClipPath},
    {XmlNamespace::Svg, "defs", ElementName::Defs},
    {XmlNamespace::Svg, "desc", ElementName::Desc},
    {XmlNamespace::Svg, "ellipse", ElementName::Ellipse},
    {XmlNamespace::Svg, "filter", ElementName::Filter},
    {XmlNamespace::Svg, "foreignObject", ElementName::ForeignObject},
    {XmlNamespace::Svg, "g", ElementName::G},
    {XmlNamespace::Svg, "image", ElementName::Image},
    {XmlNamespace::Svg, "line", ElementName::Line},
    {XmlNamespace::Svg, "linearGradient", ElementName::LinearGradient},
    {XmlNamespace::Svg, "marker", ElementName::Marker},
    {XmlNamespace::Svg, "mask", ElementName::Mask},
    {XmlNamespace::Svg, "metadata", ElementName::Metadata},
    {XmlNamespace::Svg, "path", ElementName::Path},
    {XmlNamespace::Svg, "pattern", ElementName::Pattern},
    {XmlNamespace::Svg, "polygon", ElementName::Polygon},
    {XmlNamespace::Svg, "polyline", ElementName::Polyline},
    {XmlNamespace::Svg, "radialGradient", ElementName::RadialGradient},
    {XmlNamespace::Svg, "rect", ElementName::Rect},
    {XmlNamespace::Svg, "script", ElementName::Script},
    {XmlNamespace::Svg, "stop", ElementName::Stop},
    {XmlNamespace::Svg, "style", ElementName::Style},
    {XmlNamespace::Svg, "svg", ElementName::Svg},
    {XmlNamespace::Svg, "switch", ElementName::Switch},
    {XmlNamespace::Svg, "symbol", ElementName::Symbol},
    {XmlNamespace::Svg, "text", ElementName::Text},
    {XmlNamespace::Svg, "textPath", ElementName::TextPath},
    {XmlNamespace::Svg, "title", ElementName::Title},
    {XmlNamespace::Svg, "tspan", ElementName::TSpan},
    {XmlNamespace::Svg, "use", ElementName::Use},
    {XmlNamespace::Tovanel, "layer", ElementName::TovanelLayer},
};

constexpr Entry<AttributeName> Attributes[] = {
    {XmlNamespace::None, "font-size", AttributeName::FontSize},
    {XmlNamespace::None, "font", AttributeName::Font},
    {XmlNamespace::None, "font-family", AttributeName::FontFamily},
    {XmlNamespace::None, "font-stretch", AttributeName::FontStretch},
    {XmlNamespace::None, "font-style", AttributeName::FontStyle},
    {XmlNamespace::None, "font-variant", AttributeName::FontVariant},
    {XmlNamespace::None, "font-weight", AttributeName::FontWeight},
    {XmlNamespace::None, "color", AttributeName::Color},
    {XmlNamespace::None, "fill", AttributeName::Fill},
    {XmlNamespace::None, "fill-opacity", AttributeName::FillOpacity},
    {XmlNamespace::None, "fill-rule", AttributeName::FillRule},
    {XmlNamespace::None, "stroke", AttributeName::Stroke},
    {XmlNamespace::None, "stroke-opacity", AttributeName::StrokeOpacity},
    {XmlNamespace::None, "stroke-width", AttributeName::StrokeWidth},
    {XmlNamespace::None, "stroke-dasharray", AttributeName::StrokeDashArray},
    {XmlNamespace::None, "opacity", AttributeName::Opacity},
    {XmlNamespace::None, "display", AttributeName::Display},
    {XmlNamespace::None, "visibility", AttributeName::Visibility},
    {XmlNamespace::None, "text-anchor", AttributeName::TextAnchor},
    {XmlNamespace::None, "dominant-baseline", AttributeName::DominantBaseline},
    {XmlNamespace::None, "alignment-baseline", AttributeName::AlignmentBaseline},
    {XmlNamespace::None, "vector-effect", AttributeName::VectorEffect},
    {XmlNamespace::None, "white-space", AttributeName::WhiteSpace},
    {XmlNamespace::None, "text-decoration", AttributeName::TextDecoration},
    {XmlNamespace::None, "text-decoration-line", AttributeName::TextDecoration},
    {XmlNamespace::None, "letter-spacing", AttributeName::LetterSpacing},
    {XmlNamespace::None, "word-spacing", AttributeName::WordSpacing},
    {XmlNamespace::None, "writing-mode", AttributeName::WritingMode},
    {XmlNamespace::None, "direction", AttributeName::Direction},
    {XmlNamespace::None, "text-transform", AttributeName::TextTransform},
    {XmlNamespace::None, "baseline-shift", AttributeName::BaselineShift},
    {XmlNamespace::None, "transform", AttributeName::Transform},
    {XmlNamespace::None, "overflow", AttributeName::Overflow},
    {XmlNamespace::None, "stop-color", AttributeName::StopColor},
    {XmlNamespace::None, "stop-opacity", AttributeName::StopOpacity},
    {XmlNamespace::None, "clip-path", AttributeName::ClipPath},
    {XmlNamespace::None, "mask", AttributeName::Mask},
    {XmlNamespace::None, "filter", AttributeName::Filter},
    {XmlNamespace::None, "marker", AttributeName::Marker},
    {XmlNamespace::None, "marker-start", AttributeName::MarkerStart},
    {XmlNamespace::None, "marker-mid", AttributeName::MarkerMid},
    {XmlNamespace::None, "marker-end", AttributeName::MarkerEnd},
    {XmlNamespace::None, "class", AttributeName::Class},
    {XmlNamespace::None, "cx", AttributeName::Cx},
    {XmlNamespace::None, "cy", AttributeName::Cy},
    {XmlNamespace::None, "d", AttributeName::D},
    {XmlNamespace::None, "dx", AttributeName::Dx},
    {XmlNamespace::None, "dy", AttributeName::Dy},
    {XmlNamespace::None, "height", AttributeName::Height},
    {XmlNamespace::None, "href", AttributeName::Href},
    {XmlNamespace::None, "id", AttributeName::Id},
    {XmlNamespace::None, "media", AttributeName::Media},
    {XmlNamespace::None, "offset", AttributeName::Offset},
    {XmlNamespace::None, "points", AttributeName::Points},
    {XmlNamespace::None, "preserveAspectRatio", AttributeName::PreserveAspectRatio},
    {XmlNamespace::None, "r", AttributeName::R},
    {XmlNamespace::None, "rotate", AttributeName::Rotate},
    {XmlNamespace::None, "rx", AttributeName::Rx},
    {XmlNamespace::None, "ry", AttributeName::Ry},
    {XmlNamespace::None, "style", AttributeName::Style},
    {XmlNamespace::None, "textLength", AttributeName::TextLength},
    {XmlNamespace::None, "type", AttributeName::Type},
    {XmlNamespace::None, "viewBox", AttributeName::ViewBox},
    {XmlNamespace::None, "width", AttributeName::Width},
    {XmlNamespace::None, "x", AttributeName::X},
    {XmlNamespace::None, "x1", AttributeName::X1},
    {XmlNamespace::None, "x2", AttributeName::X2},
    {XmlNamespace::None, "y", AttributeName::Y},
    {XmlNamespace::None, "y1", AttributeName::Y1},
    {XmlNamespace::None, "y2", AttributeName::Y2},
    {XmlNamespace::None, "maximum", AttributeName::LayerMaximum},
    {XmlNamespace::None, "minimum", AttributeName::LayerMinimum},
    {XmlNamespace::None, "number", AttributeName::LayerNumber},
    {XmlNamespace::Xlink, "href", AttributeName::XlinkHref},
    {XmlNamespace::Xml, "id", AttributeName::Id},
    {XmlNamespace::Xml, "space", AttributeName::XmlSpace},
    {XmlNamespace::Tovanel, "flag", AttributeName::TovanelFlag},
    {XmlNamespace::Tovanel, "id", AttributeName::TovanelId},
    {XmlNamespace::Tovanel, "initial-scale", AttributeName::TovanelInitialScale},
    {XmlNamespace::Tovanel, "layer", AttributeName::TovanelLayer},
    {XmlNamespace::Tovanel, "maximum-scale", AttributeName::TovanelMaximumScale},
    {XmlNamespace::Tovanel, "minimum-scale", AttributeName::TovanelMinimumScale},
    {XmlNamespace::Tovanel, "popup", AttributeName::TovanelPopup},
    {XmlNamespace::Tovanel, "scale-step", AttributeName::TovanelScaleStep},
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

    [[nodiscard]] const Entry<Name>* find(XmlNamespace space, std::string_view text) const
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
    [[nodiscard]] static std::size_t hash(XmlNamespace space, std::string_view text)
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

ElementName elementName(XmlNamespace space, std::string_view local)
{
    static const NameTable<ElementName, 128> table(Elements);
    const auto* found = table.find(space == XmlNamespace::None ? XmlNamespace::Svg : space, local);
    return found ? found->name : ElementName::Unknown;
}

AttributeName attributeName(XmlNamespace space, std::string_view local)
{
    const auto* found = attributeTable().find(space, local);
    return found ? found->name : AttributeName::Unknown;
}

AttributeName propertyName(std::string_view name)
{
    AttributeName found = attributeName(XmlNamespace::None, name);
    if (found == AttributeName::Unknown)
        found = attributeName(XmlNamespace::None, lowered(name));
    return found < AttributeName::PropertyCount ? found : AttributeName::Unknown;
}

XmlNamespace namespaceOfUri(std::string_view uri)
{
    if (uri.empty())
        return XmlNamespace::None;
    if (uri == "http://www.w3.org/2000/svg")
        return XmlNamespace::Svg;
    if (uri == "http://www.w3.org/1999/xlink")
        return XmlNamespace::Xlink;
    if (uri == "http://www.w3.org/XML/1998/namespace")
        return XmlNamespace::Xml;
    return uri == "urn:tovanel:chip-drawing" ? XmlNamespace::Tovanel : XmlNamespace::Other;
}

} // namespace mirn::zelsvg
