// SPDX-License-Identifier: MIT
#include "platform/svg/geometry/pathdata.h"

#include "platform/svg/base/diagnostics.h"
#include "platform/svg/base/number.h"
#include "platform/svg/geometry/flatpath.h"

namespace mirn::zelsvg {

namespace {

class PathReader
{
public:
    PathReader(std::string_view text, FlatPath& path, Diagnostics& diagnostics)
        : m_scanner(text, diagnostics)
        , m_path(path)
    { }

    // Returns true at the end of the text, false at a mistake.
    bool read();

private:
    bool readSegment(char command);
    bool readArc();
    bool readSmooth(char command);
    bool point(zel_Point& to);
    bool coordinate(double& value, double base);
    [[nodiscard]] zel_Point reflected(bool hasControl) const;

    Scanner m_scanner;
    FlatPath& m_path;
    bool m_isRelative = false;
    char m_last = '\0'; // the previous command, in upper case
    zel_Point m_control; // the control point of the previous command
};

bool PathReader::read()
{
    char command = '\0';
    m_scanner.skipSpaces();
    while (!m_scanner.isAtEnd()) {
        const char letter = m_scanner.peek();
        const bool isLetter = (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z');
        if (isLetter) {
            command = static_cast<char>(letter & ~0x20);
            m_isRelative = letter >= 'a';
            m_scanner.advance();
        } else if (command == 'M') {
            command = 'L'; // coordinates after those of a move are lines
        }
        if ((m_last == '\0' && command != 'M') || (command == 'Z' && !isLetter) || !readSegment(command))
            return false;
        m_last = command;
        m_scanner.skipSpaces();
        if (m_scanner.peek() == ',') {
            m_scanner.skipSpacesAndComma();
            const char next = m_scanner.peek();
            if ((next & 0x40) || next == '\0')
                return false; // a comma may only separate numbers
        }
    }
    return true;
}

bool PathReader::readSegment(char command)
{
    zel_Point to = m_path.current();
    zel_Point control;
    m_scanner.skipSpaces();
    switch (command) {
    case 'M':
        if (!point(to))
            return false;
        m_path.moveTo(to);
        return true;
    case 'L':
        if (!point(to))
            return false;
        m_path.lineTo(to);
        return true;
    case 'H':
        if (!coordinate(to.x, to.x))
            return false;
        m_path.lineTo(to);
        return true;
    case 'V':
        if (!coordinate(to.y, to.y))
            return false;
        m_path.lineTo(to);
        return true;
    case 'C':
        if (!point(control) || !point(m_control) || !point(to))
            return false;
        m_path.cubicTo(control, m_control, to);
        return true;
    case 'Q':
        if (!point(m_control) || !point(to))
            return false;
        m_path.quadTo(m_control, to);
        return true;
    case 'S':
    case 'T':
        return readSmooth(command);
    case 'A':
        return readArc();
    case 'Z':
        m_path.close();
        return true;
    default:
        return false;
    }
}

bool PathReader::readSmooth(char command)
{
    zel_Point to;
    if (command == 'S') {
        const zel_Point control = reflected(m_last == 'C' || m_last == 'S');
        if (!point(m_control) || !point(to))
            return false;
        m_path.cubicTo(control, m_control, to);
        return true;
    }
    const zel_Point control = reflected(m_last == 'Q' || m_last == 'T');
    if (!point(to))
        return false;
    m_control = control;
    m_path.quadTo(control, to);
    return true;
}

bool PathReader::readArc()
{
    double radiusX = 0.0;
    double radiusY = 0.0;
    double angle = 0.0;
    bool isLarge = false;
    bool isClockwise = false;
    zel_Point to;
    if (!m_scanner.nextNumber(radiusX) || !m_scanner.nextNumber(radiusY) || !m_scanner.nextNumber(angle))
        return false;
    // No separators are needed between the flags or between them and the next number.
    m_scanner.skipSpacesAndComma();
    if (!m_scanner.flag(isLarge))
        return false;
    m_scanner.skipSpacesAndComma();
    if (!m_scanner.flag(isClockwise) || !point(to))
        return false;
    m_path.arcTo(radiusX, radiusY, angle, isLarge, isClockwise, to);
    return true;
}

bool PathReader::point(zel_Point& to)
{
    const zel_Point base = m_path.current();
    return coordinate(to.x, base.x) && coordinate(to.y, base.y);
}

bool PathReader::coordinate(double& value, double base)
{
    double number = 0.0;
    if (!m_scanner.nextNumber(number))
        return false;
    value = m_isRelative ? base + number : number;
    return true;
}

zel_Point PathReader::reflected(bool hasControl) const
{
    const zel_Point at = m_path.current();
    return hasControl ? zel_Point{2 * at.x - m_control.x, 2 * at.y - m_control.y} : at;
}

} // namespace

void readPathData(std::string_view text, FlatPath& path, Diagnostics& diagnostics)
{
    if (text == "none")
        return;
    if (!PathReader(text, path, diagnostics).read())
        diagnostics.warn(Unsupported::Path);
}

void readPoints(std::string_view text, FlatPath& path, Diagnostics& diagnostics)
{
    Scanner scanner(text, diagnostics);
    zel_Point corner;
    bool isFirst = true;
    scanner.skipSpaces();
    while (scanner.nextNumber(corner.x)) {
        if (!scanner.nextNumber(corner.y))
            break;
        if (isFirst)
            path.moveTo(corner);
        else
            path.lineTo(corner);
        isFirst = false;
    }
    scanner.skipSpaces();
    if (!scanner.isAtEnd())
        diagnostics.warn(Unsupported::Path);
}

} // namespace mirn::zelsvg
