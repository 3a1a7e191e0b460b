// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zelsvg {

// A place in the drawing file; both count from 1, in characters. Line 0 means that there is no place to name.
struct Position
{
    unsigned long line = 0;
    unsigned long column = 0;
};

// Whoever knows where reading stands right now. Asked only when something is to be reported.
class PositionSource
{
public:
    virtual ~PositionSource() = default;
    [[nodiscard]] virtual Position position() const = 0;

    // Of the attribute with a value that `part` is a piece of; as position() where that is not known.
    [[nodiscard]] virtual Position positionOf([[maybe_unused]] std::string_view part) const { return position(); }
};

// What a drawing may use and the parser does not draw. The order is that of the texts in diagnostics.cpp.
enum class Unsupported {
    Gradient,
    Pattern,
    Image,
    Filter,
    Mask,
    Clip,
    Marker,
    Dash,
    ForeignObject,
    TextPath,
    Selector,
    Reference,
    Number,
    Color,
    Path,
    Transform,
    Character,
    Bold,
    Italic,
    TextLines,
    TextSpacing,
    VerticalText,
    TextEffects,
    Overflow,
    Count
};

// Collects the first error and one warning per kind. Reading goes on harmlessly after an error until the next place
// that asks hasFailed(); what is reported after the first error is dropped.
class Diagnostics
{
public:
    explicit Diagnostics(std::string fileName);

    // Not owned; null for none.
    void setPositionSource(const PositionSource* source) { m_source = source; }

    void fail(std::string_view message);

    // What `part`, a piece of an attribute's value, has to do with.
    void failIn(std::string_view part, std::string_view message);
    void failAt(Position position, std::string_view message);
    void warn(Unsupported kind);

    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }
    [[nodiscard]] bool hasWarned(Unsupported kind) const { return m_warned >> static_cast<unsigned>(kind) & 1; }
    [[nodiscard]] const std::string& error() const { return m_error; }
    [[nodiscard]] const std::vector<std::string>& warnings() const { return m_warnings; }

    // Takes over the error of `other`, if it has one.
    void takeError(const Diagnostics& other);

    // Forgets everything reported, for reading the drawing once more.
    void clear();

private:
    std::string m_fileName;
    const PositionSource* m_source = nullptr;
    std::string m_error;
    std::vector<std::string> m_warnings;
    std::uint32_t m_warned = 0; // one bit per kind
    bool m_hasFailed = false;
};

// A piece of the drawing for a message: shortened, without control characters, in double quotes.
[[nodiscard]] std::string quoted(std::string_view text);

} // namespace zelsvg
