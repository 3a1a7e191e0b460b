// SPDX-License-Identifier: MIT
#include "platform/svg/style/style.h"

#include "platform/svg/base/diagnostics.h"
#include "platform/svg/base/number.h"
#include "platform/svg/base/textpool.h"
#include "platform/svg/style/texttraits.h"

#include <algorithm>
#include <cmath>

namespace zelsvg {

struct StyleResolver::Context
{
    Style& style;
    const Style parent;
    const ViewportSize viewport;
};

namespace {

void copyTraits(int traits, const Style& from, Style& to)
{
    to.textTraits = static_cast<std::uint8_t>((to.textTraits & ~traits) | (from.textTraits & traits));
}

// Copies one property from one style to another.
void copyProperty(AttributeName property, const Style& from, Style& to)
{
    switch (property) {
    case AttributeName::Fill:
        to.fill = from.fill;
        break;
    case AttributeName::Stroke:
        to.stroke = from.stroke;
        break;
    case AttributeName::Color:
        to.color = from.color;
        break;
    case AttributeName::FillOpacity:
        to.fillOpacity = from.fillOpacity;
        break;
    case AttributeName::StrokeOpacity:
        to.strokeOpacity = from.strokeOpacity;
        break;
    case AttributeName::StrokeWidth:
        to.strokeWidth = from.strokeWidth;
        break;
    case AttributeName::Font:
        to.fontFamily = from.fontFamily;
        copyTraits(TextTrait::Bold | TextTrait::Italic, from, to);
        [[fallthrough]];
    case AttributeName::FontSize:
        to.fontSize = from.fontSize;
        break;
    case AttributeName::FontFamily:
        to.fontFamily = from.fontFamily;
        break;
    case AttributeName::TextAnchor:
        to.anchor = from.anchor;
        break;
    case AttributeName::DominantBaseline:
    case AttributeName::AlignmentBaseline:
        to.baseline = from.baseline;
        break;
    case AttributeName::FillRule:
        to.isEvenOdd = from.isEvenOdd;
        break;
    case AttributeName::Visibility:
        to.isVisible = from.isVisible;
        break;
    case AttributeName::WhiteSpace:
        to.keepsSpaces = from.keepsSpaces;
        break;
    case AttributeName::Display:
        to.isDisplayed = from.isDisplayed;
        break;
    case AttributeName::VectorEffect:
        to.hasFixedStroke = from.hasFixedStroke;
        break;
    default:
        copyTraits(traitOf(property), from, to);
        break;
    }
}

[[nodiscard]] Baseline baselineOf(std::string_view value, Baseline otherwise)
{
    if (value == "middle")
        return Baseline::Middle;
    if (value == "central")
        return Baseline::Central;
    if (value == "hanging")
        return Baseline::Hanging;
    if (value == "text-before-edge" || value == "before-edge" || value == "text-top" || value == "top")
        return Baseline::Top;
    if (value == "text-after-edge" || value == "after-edge" || value == "text-bottom" || value == "bottom"
        || value == "ideographic")
        return Baseline::Bottom;
    return value == "alphabetic" || value == "auto" || value == "baseline" ? Baseline::Alphabetic : otherwise;
}

// Returns the size of a font size keyword in pixels; 0 for any other text.
[[nodiscard]] double namedFontSize(std::string_view value)
{
    struct Size
    {
        std::string_view name;
        double pixels;
    };
    constexpr Size Sizes[] = {{"xx-small", 9}, {"x-small", 10}, {"small", 13}, {"medium", 16}, {"large", 18},
        {"x-large", 24}, {"xx-large", 32}};
    for (const Size& size : Sizes) {
        if (value == size.name)
            return size.pixels;
    }
    return 0.0;
}

} // namespace

bool Style::paintColor(const Paint& paint, double opacity, unsigned int& rgb) const
{
    const Color& plain = paint.kind == Paint::Kind::CurrentColor ? color : paint.color;
    const double alpha = plain.alpha * opacity * groupOpacity;
    if (paint.kind == Paint::Kind::None || !isVisible || alpha <= 0.0)
        return false;
    rgb = blendedWithWhite(plain.rgb, alpha);
    return true;
}

StyleResolver::StyleResolver(TextPool& texts, PaintServers& servers, Diagnostics& diagnostics)
    : m_texts(texts)
    , m_servers(servers)
    , m_diagnostics(diagnostics)
{ }

void StyleResolver::resolve(const Cascade& cascade, ViewportSize viewport, Style& style)
{
    style.isDisplayed = true;
    style.hasFixedStroke = false;
    if (cascade.isEmpty())
        return;
    Context context{style, style, viewport};
    cascade.forEach([&](AttributeName property, std::string_view value) {
        if (!applyKeyword(property, value, context))
            apply(property, value, context);
    });
}

// Applies the keywords that all properties accept.
bool StyleResolver::applyKeyword(AttributeName property, std::string_view value, Context& context)
{
    // No other relevant value has five or more letters and begins with one of these.
    if (value.size() < 5 || (value[0] != 'i' && value[0] != 'u' && value[0] != 'r'))
        return false;
    static const Style initial;
    if (value == "initial")
        copyProperty(property, initial, context.style);
    else if (value == "inherit")
        copyProperty(property, context.parent, context.style);
    else
        return value == "unset" || value == "revert";
    if (property == AttributeName::Opacity && value == "inherit")
        context.style.groupOpacity = context.parent.groupOpacity;
    return true;
}

void StyleResolver::apply(AttributeName property, std::string_view value, Context& context)
{
    Style& style = context.style;
    switch (property) {
    case AttributeName::FontSize:
        applyFontSize(value, context);
        break;
    case AttributeName::Font:
        applyFont(value, context);
        break;
    case AttributeName::FontFamily:
        applyFontFamily(value, style);
        break;
    case AttributeName::Color:
        if (!equalsIgnoringCase(value, "currentcolor") && !parseColor(value, style.color))
            m_diagnostics.warn(Unsupported::Color);
        break;
    case AttributeName::Fill:
        applyPaint(value, context.parent, style.fill);
        break;
    case AttributeName::Stroke:
        applyPaint(value, context.parent, style.stroke);
        break;
    case AttributeName::FillOpacity:
        parseOpacity(value, m_diagnostics, style.fillOpacity);
        break;
    case AttributeName::StrokeOpacity:
        parseOpacity(value, m_diagnostics, style.strokeOpacity);
        break;
    case AttributeName::Opacity: {
        double opacity = 1.0;
        parseOpacity(value, m_diagnostics, opacity);
        style.groupOpacity = context.parent.groupOpacity * opacity;
        break;
    }
    case AttributeName::StrokeWidth: {
        const LengthContext lengths{style.fontSize, context.viewport};
        double width = 0.0;
        if (parseSize(value, lengths, LengthAxis::Diagonal, m_diagnostics, width))
            style.strokeWidth = width;
        break;
    }
    case AttributeName::FillRule:
        style.isEvenOdd = value == "evenodd";
        break;
    case AttributeName::Display:
        style.isDisplayed = value != "none";
        break;
    case AttributeName::Visibility:
        style.isVisible = value == "visible";
        break;
    case AttributeName::TextAnchor:
        style.anchor = value == "middle" ? TextAnchor::Middle : value == "end" ? TextAnchor::End : TextAnchor::Start;
        break;
    case AttributeName::DominantBaseline:
    case AttributeName::AlignmentBaseline:
        style.baseline = baselineOf(value, style.baseline);
        break;
    case AttributeName::VectorEffect:
        style.hasFixedStroke = value == "non-scaling-stroke";
        break;
    case AttributeName::WhiteSpace:
        style.keepsSpaces = value.substr(0, 3) == "pre";
        break;
    default:
        if (const std::uint8_t trait = traitOf(property))
            setTrait(trait, hasTrait(property, value), style.textTraits);
        else
            warnOf(property, value);
        break;
    }
}

// Warns about properties that are not supported.
void StyleResolver::warnOf(AttributeName property, std::string_view value)
{
    if (value == "none")
        return;
    switch (property) {
    case AttributeName::StrokeDashArray:
        m_diagnostics.warn(Unsupported::Dash);
        break;
    case AttributeName::ClipPath:
        m_diagnostics.warn(Unsupported::Clip);
        break;
    case AttributeName::Mask:
        m_diagnostics.warn(Unsupported::Mask);
        break;
    case AttributeName::Filter:
        m_diagnostics.warn(Unsupported::Filter);
        break;
    case AttributeName::Marker:
    case AttributeName::MarkerStart:
    case AttributeName::MarkerMid:
    case AttributeName::MarkerEnd:
        m_diagnostics.warn(Unsupported::Marker);
        break;
    default:
        break;
    }
}

void StyleResolver::applyPaint(std::string_view value, const Style& parent, Paint& paint)
{
    Color color;
    value = trimmed(value);
    if (parseColor(value, color))
        paint = {color, Paint::Kind::Plain};
    else if (value == "none")
        paint = {};
    else if (equalsIgnoringCase(value, "currentcolor"))
        paint = {{}, Paint::Kind::CurrentColor};
    else if (value.substr(0, 4) == "url(")
        applyServer(value, parent, paint);
    else
        m_diagnostics.warn(Unsupported::Color);
}

// The value has the form "url(#name) fallback".
void StyleResolver::applyServer(std::string_view value, const Style& parent, Paint& paint)
{
    const std::size_t close = value.find(')');
    std::string_view name = trimmed(value.substr(4, close == std::string_view::npos ? close : close - 4));
    if (name.size() >= 2 && (name.front() == '"' || name.front() == '\'') && name.back() == name.front())
        name = name.substr(1, name.size() - 2);
    const std::string_view fallback = close == std::string_view::npos ? "" : trimmed(value.substr(close + 1));
    Color color;
    bool isFound = false;
    paint = {};
    if (!name.empty() && name.front() == '#' && m_servers.serverColor(name.substr(1), color, isFound))
        paint = {color, Paint::Kind::Plain};
    else if (!isFound && !fallback.empty() && fallback.substr(0, 4) != "url(")
        applyPaint(fallback, parent, paint);
}

// Applies the shorthand: weight and the like come before the size, the family after it. A value without a size is
// invalid.
void StyleResolver::applyFont(std::string_view value, Context& context)
{
    const std::size_t size = value.find_first_of("0123456789.");
    // A number without a unit is a weight.
    std::size_t begin = size;
    while (begin != std::string_view::npos) {
        const std::string_view token = value.substr(begin, value.find_first_of(" \t\n/", begin) - begin);
        if (token.find_first_not_of("0123456789.") != std::string_view::npos)
            break;
        begin = value.find_first_of("0123456789.", begin + token.size());
    }
    if (begin == std::string_view::npos)
        return;
    applyFontTraits(value.substr(0, begin), context.style.textTraits);
    const std::size_t end = value.find_first_of(" \t\n/", begin);
    applyFontSize(value.substr(begin, end - begin), context);
    if (end == std::string_view::npos)
        return;
    std::string_view rest = trimmed(value.substr(end));
    if (!rest.empty() && rest.front() == '/')
        rest = trimmed(rest.substr(std::min(rest.find_first_of(" \t\n", 1), rest.size())));
    applyFontFamily(rest, context.style);
}

// Applies the first family of the list, without quotes.
void StyleResolver::applyFontFamily(std::string_view value, Style& style)
{
    std::string_view family = trimmed(value.substr(0, value.find(',')));
    if (family.size() >= 2 && (family.front() == '"' || family.front() == '\'') && family.back() == family.front())
        family = trimmed(family.substr(1, family.size() - 2));
    if (!family.empty())
        style.fontFamily = m_texts.text(m_texts.intern(family));
}

void StyleResolver::applyFontSize(std::string_view value, Context& context)
{
    value = trimmed(value);
    const double parentSize = context.parent.fontSize;
    double size = namedFontSize(value);
    if (value == "smaller")
        size = parentSize / 1.2;
    else if (value == "larger")
        size = parentSize * 1.2;
    // A percentage refers to the parent's font size.
    const LengthContext lengths{parentSize, {parentSize, parentSize}};
    if (size > 0.0 || parseSize(value, lengths, LengthAxis::Horizontal, m_diagnostics, size))
        context.style.fontSize = size;
}

bool parseOpacity(std::string_view text, Diagnostics& diagnostics, double& opacity)
{
    Scanner scanner(text, diagnostics);
    scanner.skipSpaces();
    double number = 0.0;
    const bool isNumber = scanner.number(number);
    const bool isPercent = scanner.letter('%');
    scanner.skipSpaces();
    if (!isNumber || !scanner.isAtEnd()) {
        diagnostics.warn(Unsupported::Number);
        return false;
    }
    opacity = std::clamp(isPercent ? number / 100.0 : number, 0.0, 1.0);
    return true;
}

} // namespace zelsvg
