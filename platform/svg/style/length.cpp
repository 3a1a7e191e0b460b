// SPDX-License-Identifier: MIT
#include "platform/svg/style/length.h"

#include "platform/svg/base/diagnostics.h"
#include "platform/svg/base/number.h"

#include <cmath>

namespace mirn::zelsvg {

double LengthContext::percentBase(LengthAxis axis) const
{
    switch (axis) {
    case LengthAxis::Horizontal:
        return viewport.width;
    case LengthAxis::Vertical:
        return viewport.height;
    case LengthAxis::Diagonal:
        break;
    }
    return std::sqrt((viewport.width * viewport.width + viewport.height * viewport.height) / 2.0);
}

double absoluteUnit(std::string_view unit)
{
    struct Unit
    {
        std::string_view name;
        double size;
    };
    constexpr double PerInch = 96.0;
    constexpr Unit Units[] = {{"", 1.0}, {"px", 1.0}, {"pt", PerInch / 72.0}, {"pc", PerInch / 6.0},
        {"mm", PerInch / 25.4}, {"cm", PerInch / 2.54}, {"q", PerInch / 101.6}, {"in", PerInch}};
    for (const Unit& known : Units) {
        if (equalsIgnoringCase(unit, known.name))
            return known.size;
    }
    return 0.0;
}

bool parseLength(
    std::string_view text, const LengthContext& context, LengthAxis axis, Diagnostics& diagnostics, double& value)
{
    Scanner scanner(text, diagnostics);
    scanner.skipSpaces();
    double number = 0.0;
    const bool isNumber = scanner.number(number);
    if (isNumber && scanner.isAtEnd()) {
        value = number;
        return true;
    }
    const std::string_view unit = scanner.word();
    double size = absoluteUnit(unit);
    bool isUnit = true;
    if (equalsIgnoringCase(unit, "em"))
        size = context.fontSize;
    else if (equalsIgnoringCase(unit, "rem"))
        size = 16.0;
    else if (equalsIgnoringCase(unit, "ex"))
        size = context.fontSize / 2.0;
    else if (unit == "%")
        size = context.percentBase(axis) / 100.0;
    else
        isUnit = size > 0.0;
    scanner.skipSpaces();
    if (!isNumber || !isUnit || !scanner.isAtEnd()) {
        if (!trimmed(text).empty() && trimmed(text) != "auto")
            diagnostics.warn(Unsupported::Number);
        return false;
    }
    value = number * size;
    return true;
}

void warnOfNegative(Diagnostics& diagnostics)
{
    diagnostics.warn(Unsupported::Number);
}

} // namespace mirn::zelsvg
