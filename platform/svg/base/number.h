// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace zelsvg {

class Diagnostics;

// Reads a number as SVG writes it (sign, digits, point, exponent) at `begin`. Gives the end of it, or null when there
// is none. A number too large for a double becomes an infinity; "nan" and "inf" are read as such.
[[nodiscard]] const char* scanNumber(const char* begin, const char* end, double& value);

[[nodiscard]] inline bool isSpace(char c)
{
    return c == ' ' || c == '\n' || c == '\t' || c == '\r' || c == '\f';
}
[[nodiscard]] std::string_view trimmed(std::string_view text);
[[nodiscard]] bool equalsIgnoringCase(std::string_view text, std::string_view lowerCase);

// The beginning of a text in lower case: enough of it for any name, however long the text is.
[[nodiscard]] std::string lowered(std::string_view text);

// Walks over an attribute value that holds numbers. A number that is not finite or absurdly large is an error of the
// drawing.
class Scanner
{
public:
    Scanner(std::string_view text, Diagnostics& diagnostics);

    [[nodiscard]] bool isAtEnd() const { return m_position == m_end; }
    [[nodiscard]] char peek() const { return isAtEnd() ? '\0' : *m_position; }
    [[nodiscard]] std::string_view rest() const;
    void advance() { ++m_position; } // not at the end

    void skipSpaces();
    void skipSpacesAndComma();

    // Each reads what stands at the position; false, without moving, when it is something else.
    bool number(double& value);
    bool flag(bool& value); // a single 0 or 1, as in the arcs of a path
    bool letter(char expected);
    std::string_view word(); // letters and '%'; may be empty

    // A number after separators; the position stays where it is when there is none.
    bool nextNumber(double& value);

private:
    const char* m_position;
    const char* m_end;
    Diagnostics& m_diagnostics;
};

} // namespace zelsvg
