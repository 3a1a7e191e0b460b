// SPDX-License-Identifier: MIT
#include "platform/svg/style/style.h"

#include "platform/svg/base/diagnostics.h"
#include "platform/svg/base/number.h"
#include "platform/svg/base/textpool.h"
#include "platform/svg/style/texttraits.h"

#include <algorithm>
#include <cmath>

namespace mirn::zelsvg {

struct StyleResolver::Context
{
    Style& style;
    const Style parent;
    const ViewportSize viewport;
};

namespace {

// A word that a property may have as its value, and what it stands for.
template <typename Value> struct Keyword
{
    std::string_view word;
    Value value;
};

constexpr Keyword<Baseline> Baselines[]
    = {{"alphabetic", Baseline::Alphabetic}, {"auto", Baseline::Alphabetic}, {"baseline", Baseline::Alphabetic},
        {"middle", Baseline::Middle}, {"central", Baseline::Central}, {"hanging", Baseline::Hanging},
        {"text-before-edge", Baseline::Top}, {"before-edge", Baseline::Top}, {"text-top", Baseline::Top},
        {"top", Baseline::Top}, {"text-after-edge", Baseline::Bottom}, {"after-edge", Baseline::Bottom},
        {"text-bottom", Baseline::Bottom}, {"bottom", Baseline::Bottom}, {"ideographic", Baseline::Bottom}};
constexpr Keyword<TextAnchor> Anchors[]
    = {{"start", TextAnchor::Start}, {"middle", TextAnchor::Middle}, {"end", TextAnchor::End}};
constexpr Keyword<bool> FillRules[] = {{"nonzero", false}, {"evenodd", true}};
constexpr Keyword<bool> Visibilities[] = {{"visible", true}, {"hidden", false}, {"collapse", false}};
constexpr Keyword<double> FontSizes[] = {{"xx-small", 9}, {"x-small", 10}, {"small", 13}, {"medium", 16}, {"large", 18},
    {"x-large", 24}, {"xx-large", 32}}; // in pixels

template <typename Value, std::size_t Count>
[[nodiscard]] bool readKeyword(std::string_view text, const Keyword<Value> (&keywords)[Count], Value& value)
{
    for (const Keyword<Value>& keyword : keywords) {
        if (equalsIgnoringCase(text, keyword.word)) {
            value = keyword.value;
            return true;
        }
    }
    return false;
}

template <auto Member> void copyMember(const Style& from, Style& to)
{
    to.*Member = from.*Member;
}

template <std::uint8_t Traits> void copyTraits(const Style& from, Style& to)
{
    to.textTraits = static_cast<std::uint8_t>((to.textTraits & ~Traits) | (from.textTraits & Traits));
}

void copyFont(const Style& from, Style& to)
{
    to.fontFamily = from.fontFamily;
    to.fontSize = from.fontSize;
    copyTraits<TextTrait::Bold | TextTrait::Italic>(from, to);
}

void copyNothing(const Style&, Style&)
{ }

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

// How a property is read and inherited.
struct StyleResolver::Property
{
    bool (*read)(StyleResolver&, std::string_view, Context&); // returns false, and changes nothing, if it is unreadable
    void (*copy)(const Style& from, Style& to);
};

// The readers of the properties in StyleResolver::Properties.
struct StyleResolver::Readers
{
    template <AttributeName Name, std::uint8_t Traits> static constexpr Property trait()
    {
        return {[](StyleResolver&, std::string_view value, Context& context) {
                    setTrait(Traits, hasTrait(Name, value), context.style.textTraits);
                    return true;
                },
            copyTraits<Traits>};
    }

    template <auto Member, const auto& Keywords> static constexpr Property keyword()
    {
        return {[](StyleResolver&, std::string_view value, Context& context) {
                    return readKeyword(value, Keywords, context.style.*Member);
                },
            copyMember<Member>};
    }

    template <auto Member> static constexpr Property paint()
    {
        return {[](StyleResolver& resolver, std::string_view value, Context& context) {
                    return resolver.applyPaint(value, context.style.*Member);
                },
            copyMember<Member>};
    }

    template <auto Member> static constexpr Property opacity()
    {
        return {[](StyleResolver& resolver, std::string_view value, Context& context) {
                    return parseOpacity(value, resolver.m_diagnostics, context.style.*Member);
                },
            copyMember<Member>};
    }

    // A property that is not drawn, only warned about.
    template <Unsupported Feature> static constexpr Property warning()
    {
        return {[](StyleResolver& resolver, std::string_view value, Context&) {
                    if (!equalsIgnoringCase(value, "none"))
                        resolver.m_diagnostics.warn(Feature);
                    return true;
                },
            copyNothing};
    }

    static constexpr Property nothing()
    {
        return {[](StyleResolver&, std::string_view, Context&) { return true; }, copyNothing};
    }

    static bool color(StyleResolver& resolver, std::string_view value, Context& context)
    {
        if (equalsIgnoringCase(value, "currentcolor") || parseColor(value, context.style.color))
            return true;
        resolver.m_diagnostics.warn(Unsupported::Color);
        return false;
    }

    static bool groupOpacity(StyleResolver& resolver, std::string_view value, Context& context)
    {
        double opacity = 1.0;
        const bool isRead = parseOpacity(value, resolver.m_diagnostics, opacity);
        context.style.groupOpacity = context.parent.groupOpacity * opacity;
        return isRead;
    }

    static bool strokeWidth(StyleResolver& resolver, std::string_view value, Context& context)
    {
        const LengthContext lengths{context.style.fontSize, context.viewport};
        double width = 0.0;
        if (!parseSize(value, lengths, LengthAxis::Diagonal, resolver.m_diagnostics, width))
            return false;
        context.style.strokeWidth = width;
        return true;
    }

    static bool display(StyleResolver&, std::string_view value, Context& context)
    {
        context.style.isDisplayed = !equalsIgnoringCase(value, "none");
        return true;
    }

    static bool vectorEffect(StyleResolver&, std::string_view value, Context& context)
    {
        context.style.hasFixedStroke = equalsIgnoringCase(value, "non-scaling-stroke");
        return true;
    }

    static bool whiteSpace(StyleResolver&, std::string_view value, Context& context)
    {
        context.style.keepsSpaces = equalsIgnoringCase(value.substr(0, 3), "pre");
        return true;
    }
};

// One entry for each property, in the order of AttributeName.
const StyleResolver::Property StyleResolver::Properties[PropertyCount] = {
    {[](StyleResolver& resolver, std::string_view value, Context& context) {
         return resolver.applyFontSize(value, context);
     },
        copyMember<&Style::fontSize>},
    {[](StyleResolver& resolver, std::string_view value, Context& context) {
         return resolver.applyFont(value, context);
     },
        copyFont},
    {[](StyleResolver& resolver, std::string_view value, Context& context) {
         return resolver.applyFontFamily(value, context.style);
     },
        copyMember<&Style::fontFamily>},
    Readers::trait<AttributeName::FontStretch, TextTrait::Effects>(),
    Readers::trait<AttributeName::FontStyle, TextTrait::Italic>(),
    Readers::trait<AttributeName::FontVariant, TextTrait::Effects>(),
    Readers::trait<AttributeName::FontWeight, TextTrait::Bold>(), {Readers::color, copyMember<&Style::color>},
    Readers::paint<&Style::fill>(), Readers::opacity<&Style::fillOpacity>(),
    Readers::keyword<&Style::isEvenOdd, FillRules>(), Readers::paint<&Style::stroke>(),
    Readers::opacity<&Style::strokeOpacity>(), {Readers::strokeWidth, copyMember<&Style::strokeWidth>},
    Readers::warning<Unsupported::Dash>(), {Readers::groupOpacity, copyNothing},
    {Readers::display, copyMember<&Style::isDisplayed>}, Readers::keyword<&Style::isVisible, Visibilities>(),
    Readers::keyword<&Style::anchor, Anchors>(), Readers::keyword<&Style::baseline, Baselines>(), // dominant-baseline
    Readers::keyword<&Style::baseline, Baselines>(), // alignment-baseline
    {Readers::vectorEffect, copyMember<&Style::hasFixedStroke>}, {Readers::whiteSpace, copyMember<&Style::keepsSpaces>},
    Readers::trait<AttributeName::TextDecoration, TextTrait::Lines>(),
    Readers::trait<AttributeName::LetterSpacing, TextTrait::LetterSpacing>(),
    Readers::trait<AttributeName::WordSpacing, TextTrait::WordSpacing>(),
    Readers::trait<AttributeName::WritingMode, TextTrait::Vertical>(),
    Readers::trait<AttributeName::Direction, TextTrait::Effects>(),
    Readers::trait<AttributeName::TextTransform, TextTrait::Effects>(),
    Readers::trait<AttributeName::BaselineShift, TextTrait::Effects>(),
    Readers::nothing(), // transform, which is no matter of style here
    Readers::nothing(), // overflow
    Readers::nothing(), // stop-color
    Readers::nothing(), // stop-opacity
    Readers::warning<Unsupported::Clip>(), Readers::warning<Unsupported::Mask>(),
    Readers::warning<Unsupported::Filter>(),
    Readers::warning<Unsupported::Marker>(), // marker
    Readers::warning<Unsupported::Marker>(), // marker-start
    Readers::warning<Unsupported::Marker>(), // marker-mid
    Readers::warning<Unsupported::Marker>(), // marker-end
};

void StyleResolver::resolve(Cascade& cascade, ViewportSize viewport, Style& style)
{
    style.isDisplayed = true;
    style.hasFixedStroke = false;
    if (cascade.isEmpty())
        return;
    Context context{style, style, viewport};
    cascade.forEach([&](AttributeName property, std::string_view value) { return apply(property, value, context); });
}

// Returns false if the value is unreadable.
bool StyleResolver::apply(AttributeName property, std::string_view value, Context& context)
{
    return applyKeyword(property, value, context)
        || Properties[static_cast<std::size_t>(property)].read(*this, value, context);
}

// The keywords that every property takes. Returns false for any other value.
bool StyleResolver::applyKeyword(AttributeName property, std::string_view value, Context& context)
{
    enum class Wide { Initial, Inherit, Unset };
    static constexpr Keyword<Wide> Words[]
        = {{"initial", Wide::Initial}, {"inherit", Wide::Inherit}, {"unset", Wide::Unset}, {"revert", Wide::Unset}};
    static const Style initial;
    // Few other values begin with these letters and are as long.
    if (value.size() < 5 || std::string_view("iurIUR").find(value.front()) == std::string_view::npos)
        return false;
    Wide word = Wide::Unset;
    if (!readKeyword(value, Words, word))
        return false;
    if (word != Wide::Unset)
        Properties[static_cast<std::size_t>(property)].copy(
            word == Wide::Initial ? initial : context.parent, context.style);
    return true;
}

// Returns false, with a warning, if the value is unreadable.
bool StyleResolver::applyPaint(std::string_view value, Paint& paint)
{
    Color color;
    value = trimmed(value);
    if (parseColor(value, color))
        paint = {color, Paint::Kind::Plain};
    else if (equalsIgnoringCase(value, "none"))
        paint = {};
    else if (equalsIgnoringCase(value, "currentcolor"))
        paint = {{}, Paint::Kind::CurrentColor};
    else if (equalsIgnoringCase(value.substr(0, 4), "url("))
        applyServer(value, paint);
    else {
        m_diagnostics.warn(Unsupported::Color);
        return false;
    }
    return true;
}

// "url(#name) fallback"
void StyleResolver::applyServer(std::string_view value, Paint& paint)
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
    else if (!isFound && !fallback.empty() && !equalsIgnoringCase(fallback.substr(0, 4), "url("))
        applyPaint(fallback, paint);
}

// The shorthand: weight and the like stand before the size, the family after it. Returns false if there is no size.
bool StyleResolver::applyFont(std::string_view value, Context& context)
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
        return false;
    const std::size_t end = value.find_first_of(" \t\n/", begin);
    if (!applyFontSize(value.substr(begin, end - begin), context))
        return false;
    applyFontTraits(value.substr(0, begin), context.style.textTraits);
    if (end == std::string_view::npos)
        return true;
    std::string_view rest = trimmed(value.substr(end));
    if (!rest.empty() && rest.front() == '/')
        rest = trimmed(rest.substr(std::min(rest.find_first_of(" \t\n", 1), rest.size())));
    applyFontFamily(rest, context.style);
    return true;
}

// Takes the first family of the list, without quotes. Returns false if there is none.
bool StyleResolver::applyFontFamily(std::string_view value, Style& style)
{
    std::string_view family = trimmed(value.substr(0, value.find(',')));
    if (family.size() >= 2 && (family.front() == '"' || family.front() == '\'') && family.back() == family.front())
        family = trimmed(family.substr(1, family.size() - 2));
    if (family.empty())
        return false;
    style.fontFamily = m_texts.text(m_texts.intern(family));
    return true;
}

bool StyleResolver::applyFontSize(std::string_view value, Context& context)
{
    value = trimmed(value);
    const double parentSize = context.parent.fontSize;
    const Keyword<double> relativeSizes[] = {{"smaller", parentSize / 1.2}, {"larger", parentSize * 1.2}};
    // A percentage refers to the font size of the parent.
    const LengthContext lengths{parentSize, {parentSize, parentSize}};
    return readKeyword(value, FontSizes, context.style.fontSize)
        || readKeyword(value, relativeSizes, context.style.fontSize)
        || parseSize(value, lengths, LengthAxis::Horizontal, m_diagnostics, context.style.fontSize);
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

} // namespace mirn::zelsvg
