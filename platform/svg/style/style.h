// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/style/cascade.h"
#include "platform/svg/style/color.h"
#include "platform/svg/style/length.h"

#include <cstdint>
#include <string_view>

namespace mirn::zelsvg {

class Diagnostics;
class TextPool;

struct Paint
{
    enum class Kind : std::uint8_t { None, Plain, CurrentColor };

    Color color;
    Kind kind = Kind::None;
};

enum class TextAnchor : std::uint8_t { Start, Middle, End };

// The part of the letters that is placed at y.
enum class Baseline : std::uint8_t { Alphabetic, Middle, Central, Hanging, Top, Bottom };

// The resolved style of an element. The members of the second group are not inherited.
struct Style
{
    Paint fill{{}, Paint::Kind::Plain};
    Paint stroke;
    Color color;
    double fillOpacity = 1.0;
    double strokeOpacity = 1.0;
    double groupOpacity = 1.0; // product of all opacities from the root to this element
    double strokeWidth = 1.0;
    double fontSize = 16.0;
    const char* fontFamily = "sans-serif"; // UTF-8, stored in the resolver's text pool
    TextAnchor anchor = TextAnchor::Start;
    Baseline baseline = Baseline::Alphabetic;
    bool isEvenOdd = false;
    bool isVisible = true;
    bool keepsSpaces = false;
    std::uint8_t textTraits = 0; // see TextTrait

    bool isDisplayed = true;
    bool hasFixedStroke = false; // whether the stroke width is not scaled

    // Set the colour to draw with, with the opacity blended over white. They return false if nothing is drawn.
    [[nodiscard]] bool fillColor(unsigned int& rgb) const { return paintColor(fill, fillOpacity, rgb); }
    [[nodiscard]] bool strokeColor(unsigned int& rgb) const { return paintColor(stroke, strokeOpacity, rgb); }

    // Letters have a single colour: the fill, or the stroke if there is no fill.
    [[nodiscard]] bool textColor(unsigned int& rgb) const
    {
        return fillColor(rgb) || (strokeWidth > 0.0 && strokeColor(rgb));
    }

private:
    [[nodiscard]] bool paintColor(const Paint& paint, double opacity, unsigned int& rgb) const;
};

// Finds the colour for "url(#name)". The builder implements it, so that resolving a style does not depend on the tree.
class PaintServers
{
public:
    virtual ~PaintServers() = default;

    // Returns false if there is no colour; `isFound` then says whether the server exists, so that no fallback applies.
    virtual bool serverColor(std::string_view name, Color& color, bool& isFound) = 0;
};

// Turns the declared values of an element into its style, starting from its parent's. The builder owns it. It warns
// about values that cannot be read or drawn.
class StyleResolver
{
public:
    StyleResolver(TextPool& texts, PaintServers& servers, Diagnostics& diagnostics);

    // `style` comes in as the parent's and goes out as the element's. An unreadable value counts as not declared.
    void resolve(Cascade& cascade, ViewportSize viewport, Style& style);

private:
    struct Context;
    struct Property;
    struct Readers;

    static const Property Properties[PropertyCount];

    bool apply(AttributeName property, std::string_view value, Context& context);
    bool applyKeyword(AttributeName property, std::string_view value, Context& context);
    bool applyPaint(std::string_view value, Paint& paint);
    void applyServer(std::string_view value, Paint& paint);
    bool applyFont(std::string_view value, Context& context);
    bool applyFontFamily(std::string_view value, Style& style);
    bool applyFontSize(std::string_view value, Context& context);

    TextPool& m_texts;
    PaintServers& m_servers;
    Diagnostics& m_diagnostics;
};

// Reads an opacity, clamped to 0 to 1. Returns false, with a warning, for anything else.
bool parseOpacity(std::string_view text, Diagnostics& diagnostics, double& opacity);

} // namespace mirn::zelsvg
