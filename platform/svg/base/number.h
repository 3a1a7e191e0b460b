// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace mirn::zelsvg {

class Diagnostics;

// Reads a number in SVG's syntax (sign, digits, decimal point, exponent) at `begin`. Returns its end, or null if there
// is none. A number too large for a double becomes infinity; "nan" and "inf" are read as such.
[[nodiscard]] const char* scanNumber(const char* begin, const char* end, double& value);

[[nodiscard]] inline bool isSpace(char c)
{
    return c == ' ' || c == '\n' || c == '\t' || c == '\r' || c == '\f';
}
[[nodiscard]] std::string_view trimmed(std::string_view text);
[[nodiscard]] bool equalsIgnoringCase(std::string_view text, std::string_view lowerCase);

// Returns the beginning of a text in lower case, as much of it as any name is long.
[[nodiscard]] std::string lowered(std::string_view text);

// A tokeniser for attribute values that contain numbers. It reports a number that is not finite or exceeds
// LargestNumber as an error of the drawing.
class Scanner
{
public:
    Scanner(std::string_view text, Diagnostics& diagnostics);

    [[nodiscard]] bool isAtEnd() const { return m_position == m_end; }
    [[nodiscard]] char peek() const { return isAtEnd() ? '\0' : *m_position; }
    [[nodiscard]] std::string_view rest() const;
    void advance() { ++m_position; } // must not be called at the end

    void skipSpaces();
    void skipSpacesAndComma();

    // Each reads a token at the current position. It returns false, without moving, if there is something else.
    bool number(double& value);
    bool flag(bool& value); // a single 0 or 1, as in the arcs of a path
    bool letter(char expected);
    std::string_view word(); // letters and '%'; may be empty

    // Reads a number after optional separators; the position does not change if there is none.
    bool nextNumber(double& value);

private:
    const char* m_position;
    const char* m_end;
    Diagnostics& m_diagnostics;
};

} // namespace mirn::zelsvg
