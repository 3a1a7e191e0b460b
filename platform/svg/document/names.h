// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

namespace mirn::zelsvg {

enum class ElementName : std::uint8_t {
    Unknown,
    A,
    Circle,
    ClipPath,
    Defs,
    Desc,
    Ellipse,
    Filter,
    ForeignObject,
    G,
    Image,
    Line,
    LinearGradient,
    Marker,
    Mask,
    Metadata,
    Path,
    Pattern,
    Polygon,
    Polyline,
    RadialGradient,
    Rect,
    Script,
    Stop,
    Style,
    Svg,
    Switch,
    Symbol,
    Text,
    TextPath,
    Title,
    TSpan,
    Use,
    TovanelLayer,
    CharacterData, // stands for a piece of text in a stored drawing
};

// All attributes in one numbering. The first PropertyCount are style properties, which may also be in a style sheet, in
// the order in which they are resolved: lengths need the font size, paints the colour.
enum class AttributeName : std::uint8_t {
    FontSize,
    Font,
    FontFamily,
    FontStretch,
    FontStyle,
    FontVariant,
    FontWeight,
    Color,
    Fill,
    FillOpacity,
    FillRule,
    Stroke,
    StrokeOpacity,
    StrokeWidth,
    StrokeDashArray,
    Opacity,
    Display,
    Visibility,
    TextAnchor,
    DominantBaseline,
    AlignmentBaseline,
    VectorEffect,
    WhiteSpace,
    TextDecoration,
    LetterSpacing,
    WordSpacing,
    WritingMode,
    Direction,
    TextTransform,
    BaselineShift,
    Transform,
    Overflow,
    StopColor,
    StopOpacity,
    ClipPath,
    Mask,
    Filter,
    Marker,
    MarkerStart,
    MarkerMid,
    MarkerEnd,
    PropertyCount,
    Class = PropertyCount,
    Cx,
    Cy,
    D,
    Dx,
    Dy,
    Height,
    Href,
    Id,
    Media,
    Offset,
    Points,
    PreserveAspectRatio,
    R,
    Rotate,
    Rx,
    Ry,
    Style,
    TextLength,
    Type,
    ViewBox,
    Width,
    X,
    X1,
    X2,
    Y,
    Y1,
    Y2,
    XlinkHref,
    XmlSpace,
    TovanelFlag,
    TovanelId,
    TovanelInitialScale,
    TovanelLayer,
    TovanelMaximumScale,
    TovanelMinimumScale,
    TovanelPopup,
    TovanelScaleStep,
    LayerMaximum, // the attributes of <tovanel:layer>
    LayerMinimum,
    LayerNumber,
    Count,
    Unknown = Count,
};

constexpr std::size_t PropertyCount = static_cast<std::size_t>(AttributeName::PropertyCount);
constexpr std::size_t AttributeCount = static_cast<std::size_t>(AttributeName::Count);
static_assert(PropertyCount <= 64 && AttributeCount <= 128);

// The namespaces that have a meaning here.
enum class XmlNamespace : std::uint8_t { None, Svg, Xlink, Xml, Tovanel, Other };

// `local` is the name without its prefix. Names without a meaning here are Unknown.
[[nodiscard]] ElementName elementName(XmlNamespace space, std::string_view local);
[[nodiscard]] AttributeName attributeName(XmlNamespace space, std::string_view local);

// Returns the style property of this name, whose case does not matter, as in CSS; Unknown for any other name.
[[nodiscard]] AttributeName propertyName(std::string_view name);

// Returns the namespace with this URI.
[[nodiscard]] XmlNamespace namespaceOfUri(std::string_view uri);

} // namespace mirn::zelsvg
