// SPDX-License-Identifier: MIT
#include "platform/svg/geometry/transform.h"

#include "platform/svg/base/diagnostics.h"
#include "platform/svg/base/limits.h"
#include "platform/svg/base/number.h"

#include <algorithm>
#include <cmath>

namespace mirn::zelsvg {

namespace {

struct Function
{
    std::string_view name;
    double values[6];
    int count = 0;
};

[[nodiscard]] double radians(double degrees)
{
    return degrees * M_PI / 180.0;
}

// The results for 90, 180 and 270 degrees are exact, so that rects stay exact rects.
[[nodiscard]] Matrix turn(double degrees)
{
    const double rest = std::fmod(std::fmod(degrees, 360.0) + 360.0, 360.0);
    if (rest == 90.0)
        return {0, 1, -1, 0, 0, 0};
    if (rest == 180.0)
        return {-1, 0, 0, -1, 0, 0};
    if (rest == 270.0)
        return {0, -1, 1, 0, 0, 0};
    const double sine = std::sin(radians(degrees));
    const double cosine = std::cos(radians(degrees));
    return {cosine, sine, -sine, cosine, 0, 0};
}

// CSS allows units after the numbers: angles are converted to degrees, lengths to pixels.
[[nodiscard]] bool applyUnit(std::string_view unit, double& value)
{
    if (unit.empty() || unit == "deg")
        return true;
    if (unit == "rad")
        value *= 180.0 / M_PI;
    else if (unit == "turn")
        value *= 360.0;
    else if (unit == "grad")
        value *= 0.9;
    else
        value *= absoluteUnit(unit);
    return absoluteUnit(unit) > 0.0 || unit == "rad" || unit == "turn" || unit == "grad";
}

bool parseFunction(Scanner& scanner, Function& function)
{
    function.name = scanner.word();
    function.count = 0;
    scanner.skipSpaces();
    if (!scanner.letter('('))
        return false;
    double value = 0.0;
    scanner.skipSpaces();
    while (function.count < 6 && (function.count == 0 ? scanner.number(value) : scanner.nextNumber(value))) {
        if (!applyUnit(scanner.word(), value))
            return false;
        function.values[function.count++] = value;
    }
    scanner.skipSpaces();
    return scanner.letter(')');
}

[[nodiscard]] Matrix turnAround(const Function& function)
{
    const Matrix rotation = turn(function.values[0]);
    if (function.count == 1)
        return rotation;
    const double x = function.values[1];
    const double y = function.values[2];
    return translation(x, y) * rotation * translation(-x, -y);
}

bool toMatrix(const Function& function, Matrix& matrix)
{
    const double* v = function.values;
    const int count = function.count;
    const bool isOneOrTwo = count == 1 || count == 2;
    if (function.name == "matrix" && count == 6)
        matrix = {v[0], v[1], v[2], v[3], v[4], v[5]};
    else if (function.name == "translate" && isOneOrTwo)
        matrix = translation(v[0], count == 2 ? v[1] : 0.0);
    else if (function.name == "translateX" && count == 1)
        matrix = translation(v[0], 0.0);
    else if (function.name == "translateY" && count == 1)
        matrix = translation(0.0, v[0]);
    else if (function.name == "scale" && isOneOrTwo)
        matrix = {v[0], 0, 0, count == 2 ? v[1] : v[0], 0, 0};
    else if (function.name == "rotate" && (count == 1 || count == 3))
        matrix = turnAround(function);
    else if (function.name == "skewX" && count == 1)
        matrix = {1, 0, std::tan(radians(v[0])), 1, 0, 0};
    else if (function.name == "skewY" && count == 1)
        matrix = {1, std::tan(radians(v[0])), 0, 1, 0, 0};
    else
        return false;
    return true;
}

[[nodiscard]] bool isSane(const Matrix& m)
{
    const auto isSmall = [](double value) { return std::fabs(value) <= LargestNumber; };
    return isSmall(m.a) && isSmall(m.b) && isSmall(m.c) && isSmall(m.d) && isSmall(m.e) && isSmall(m.f);
}

// Returns the fraction of the free space before the picture for "Min", "Mid" or "Max".
[[nodiscard]] double alignment(std::string_view text)
{
    if (text == "Min")
        return 0.0;
    return text == "Max" ? 1.0 : 0.5;
}

} // namespace

double Matrix::meanScale() const
{
    return std::sqrt(std::fabs(a * d - b * c));
}

// (d x - c y, a y - b x) is the direction before the transform times the determinant. The width scales by the
// determinant divided by the scale factor along the line.
double Matrix::scaleAcross(double x, double y) const
{
    return std::hypot(d * x - c * y, a * y - b * x) / std::hypot(x, y);
}

bool Matrix::isEven() const
{
    constexpr double Negligible = 1e-9;
    const double first = a * a + b * b;
    const double second = c * c + d * d;
    return std::fabs(first - second) + std::fabs(a * c + b * d) <= Negligible * (first + second);
}

double Matrix::largestScale() const
{
    return std::max(std::hypot(a, b), std::hypot(c, d));
}

bool Matrix::keepsAxes() const
{
    constexpr double Negligible = 1e-9;
    const double straight = std::fabs(a) + std::fabs(d);
    const double crossed = std::fabs(b) + std::fabs(c);
    return crossed <= Negligible * straight || straight <= Negligible * crossed;
}

int Matrix::rotation() const
{
    const int degrees = static_cast<int>(std::lround(std::atan2(b, a) * 180.0 / M_PI));
    return degrees == -180 ? 180 : degrees;
}

Matrix operator*(const Matrix& outer, const Matrix& inner)
{
    return {outer.a * inner.a + outer.c * inner.b, outer.b * inner.a + outer.d * inner.b,
        outer.a * inner.c + outer.c * inner.d, outer.b * inner.c + outer.d * inner.d,
        outer.a * inner.e + outer.c * inner.f + outer.e, outer.b * inner.e + outer.d * inner.f + outer.f};
}

Matrix translation(double x, double y)
{
    return {1, 0, 0, 1, x, y};
}

Matrix parseTransform(std::string_view text, Diagnostics& diagnostics)
{
    Matrix result;
    Scanner scanner(text, diagnostics);
    scanner.skipSpaces();
    if (scanner.rest() == "none")
        return result;
    while (!scanner.isAtEnd()) {
        Function function;
        Matrix step;
        if (!parseFunction(scanner, function) || !toMatrix(function, step)) {
            diagnostics.warn(Unsupported::Transform);
            return {};
        }
        result = result * step;
        if (!isSane(result)) {
            diagnostics.failIn(text, "found the transform " + quoted(text) + ", expected one that stays below 1e9");
            return {};
        }
        scanner.skipSpacesAndComma();
    }
    return result;
}

bool parseViewBox(std::string_view text, Diagnostics& diagnostics, ViewBox& box)
{
    Scanner scanner(text, diagnostics);
    double values[4];
    for (double& value : values) {
        if (!scanner.nextNumber(value)) {
            if (!trimmed(text).empty())
                diagnostics.warn(Unsupported::Number);
            return false;
        }
    }
    box = {values[0], values[1], values[2], values[3]};
    return box.width > 0.0 && box.height > 0.0;
}

Matrix viewBoxTransform(const ViewBox& box, ViewportSize size, std::string_view preserveAspectRatio)
{
    double scaleX = size.width / box.width;
    double scaleY = size.height / box.height;
    std::string_view text = trimmed(preserveAspectRatio);
    if (text.substr(0, 6) == "defer ")
        text = trimmed(text.substr(6));
    if (text.substr(0, 4) == "none")
        return {scaleX, 0, 0, scaleY, -box.x * scaleX, -box.y * scaleY};
    const bool isSlice = text.find("slice") != std::string_view::npos;
    scaleX = scaleY = isSlice ? std::max(scaleX, scaleY) : std::min(scaleX, scaleY);
    // In "xMidYMid" the second and the fourth part have three letters each.
    const bool isAligned = text.size() >= 8 && text[0] == 'x' && text[4] == 'Y';
    const double alignX = isAligned ? alignment(text.substr(1, 3)) : 0.5;
    const double alignY = isAligned ? alignment(text.substr(5, 3)) : 0.5;
    return {scaleX, 0, 0, scaleY, alignX * (size.width - box.width * scaleX) - box.x * scaleX,
        alignY * (size.height - box.height * scaleY) - box.y * scaleY};
}

} // namespace mirn::zelsvg
