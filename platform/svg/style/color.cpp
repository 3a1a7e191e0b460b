// SPDX-License-Identifier: MIT
#include "platform/svg/style/color.h"

#include "platform/svg/base/number.h"
#include "platform/svg/style/colornames.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace mirn::zelsvg {

namespace {

// One argument of a colour function.
struct Argument
{
    double value = 0.0;
    bool isPercent = false;
};

struct Arguments
{
    Argument list[4];
    int count = 0;
};

[[nodiscard]] int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// Reads the forms "#rgb", "#rgba", "#rrggbb" and "#rrggbbaa", without the '#'.
bool parseHex(std::string_view digits, Color& color)
{
    const bool isShort = digits.size() == 3 || digits.size() == 4;
    if (!isShort && digits.size() != 6 && digits.size() != 8)
        return false;
    unsigned int value = 0;
    for (char c : digits) {
        const int digit = hexDigit(c);
        if (digit < 0)
            return false;
        value = isShort ? value << 8 | static_cast<unsigned>(digit * 17) : value << 4 | static_cast<unsigned>(digit);
    }
    const bool hasAlpha = digits.size() == 4 || digits.size() == 8;
    color.alpha = hasAlpha ? (value & 0xFF) / 255.0 : 1.0;
    color.rgb = hasAlpha ? value >> 8 : value;
    return true;
}

// Converts the angle units of a hue to degrees.
[[nodiscard]] bool applyUnit(std::string_view unit, Argument& argument)
{
    if (equalsIgnoringCase(unit, "turn"))
        argument.value *= 360.0;
    else if (equalsIgnoringCase(unit, "rad"))
        argument.value *= 180.0 / M_PI;
    else if (equalsIgnoringCase(unit, "grad"))
        argument.value *= 0.9;
    else
        return unit.empty() || equalsIgnoringCase(unit, "deg");
    return true;
}

// Accepts the form with commas and the one with spaces and a slash before the opacity.
bool parseArguments(std::string_view text, Arguments& arguments)
{
    const char* p = text.data();
    const char* end = p + text.size();
    const auto skip = [&p, end] {
        while (p != end && (isSpace(*p) || *p == ',' || *p == '/'))
            ++p;
    };
    for (skip(); p != end; skip()) {
        if (arguments.count == 4)
            return false;
        Argument& argument = arguments.list[arguments.count++];
        p = scanNumber(p, end, argument.value);
        if (!p || !std::isfinite(argument.value))
            return false;
        const char* unit = p;
        while (p != end && !isSpace(*p) && *p != ',' && *p != '/')
            ++p;
        const std::string_view unitText(unit, static_cast<std::size_t>(p - unit));
        argument.isPercent = unitText == "%";
        if (!argument.isPercent && !applyUnit(unitText, argument))
            return false;
    }
    return arguments.count >= 3;
}

[[nodiscard]] unsigned int channel(double value)
{
    return static_cast<unsigned>(std::lround(std::clamp(value, 0.0, 255.0)));
}

[[nodiscard]] unsigned int packed(double red, double green, double blue)
{
    return channel(red) << 16 | channel(green) << 8 | channel(blue);
}

[[nodiscard]] unsigned int fromHsl(double hue, double saturation, double lightness)
{
    const auto part = [=](double offset) {
        const double position = std::fmod(offset + hue / 30.0, 12.0);
        const double amount = saturation * std::min(lightness, 1.0 - lightness);
        return 255.0 * (lightness - amount * std::max(-1.0, std::min({position - 3.0, 9.0 - position, 1.0})));
    };
    return packed(part(0.0), part(8.0), part(4.0));
}

[[nodiscard]] bool parseFunction(std::string_view name, std::string_view text, Color& color)
{
    Arguments arguments;
    const bool isRgb = name == "rgb" || name == "rgba";
    if ((!isRgb && name != "hsl" && name != "hsla") || !parseArguments(text, arguments))
        return false;
    const Argument* a = arguments.list;
    if (isRgb) {
        const auto value
            = [](const Argument& part) { return part.isPercent ? part.value * 255.0 / 100.0 : part.value; };
        color.rgb = packed(value(a[0]), value(a[1]), value(a[2]));
    } else {
        const double hue = std::fmod(std::fmod(a[0].value, 360.0) + 360.0, 360.0);
        color.rgb = fromHsl(hue, std::clamp(a[1].value / 100.0, 0.0, 1.0), std::clamp(a[2].value / 100.0, 0.0, 1.0));
    }
    const double alpha = arguments.count == 4 ? (a[3].isPercent ? a[3].value / 100.0 : a[3].value) : 1.0;
    color.alpha = std::clamp(alpha, 0.0, 1.0);
    return true;
}

} // namespace

bool parseColor(std::string_view text, Color& color)
{
    text = trimmed(text);
    if (!text.empty() && text.front() == '#')
        return parseHex(text.substr(1), color);
    const std::size_t open = text.find('(');
    if (open != std::string_view::npos && text.back() == ')')
        return parseFunction(lowered(text.substr(0, open)), text.substr(open + 1, text.size() - open - 2), color);
    const std::string lower = lowered(text);
    if (lower == "transparent") {
        color = {0, 0.0};
        return true;
    }
    const auto named = namedColor(lower);
    if (named)
        color = {*named, 1.0};
    return named.has_value();
}

unsigned int blendedWithWhite(unsigned int rgb, double alpha)
{
    if (alpha >= 1.0)
        return rgb;
    const auto blended = [rgb, alpha](unsigned shift) {
        const double part = (rgb >> shift) & 0xFF;
        return static_cast<unsigned>(std::lround(255.0 + (part - 255.0) * std::max(alpha, 0.0))) << shift;
    };
    return blended(16) | blended(8) | blended(0);
}

} // namespace mirn::zelsvg
