// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace mirn::zelsvg {

// A position in the drawing file; both numbers count from 1, the column in characters. Line 0 means that it is unknown.
struct Position
{
    unsigned long line = 0;
    unsigned long column = 0;
};

// Knows the position at which reading currently is. The diagnostics do not own it and ask it only when something is
// reported.
class PositionSource
{
public:
    virtual ~PositionSource() = default;
    [[nodiscard]] virtual Position position() const = 0;

    // Returns the position of the attribute whose value contains `part`; the same as position() if that is unknown.
    [[nodiscard]] virtual Position positionOf([[maybe_unused]] std::string_view part) const { return position(); }
};

// Features of SVG that the parser does not draw. The order is that of the texts in diagnostics.cpp.
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

// Collects the first error and one warning per kind while a drawing is read; the parser owns it. After an error,
// reading continues harmlessly until it next checks hasFailed(); anything reported after the first error is dropped.
class Diagnostics
{
public:
    explicit Diagnostics(std::string fileName);

    // The source is not owned and may be null.
    void setPositionSource(const PositionSource* source) { m_source = source; }

    void fail(std::string_view message);

    // Reports an error about `part`, a piece of an attribute's value.
    void failIn(std::string_view part, std::string_view message);
    void failAt(Position position, std::string_view message);
    void warn(Unsupported kind);

    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }
    [[nodiscard]] bool hasWarned(Unsupported kind) const { return m_warned >> static_cast<unsigned>(kind) & 1; }
    [[nodiscard]] const std::string& error() const { return m_error; }
    [[nodiscard]] const std::vector<std::string>& warnings() const { return m_warnings; }

    // Replaces the error by that of `other`.
    void takeError(const Diagnostics& other);

    // Forgets all reports, so that the drawing can be read once more.
    void clear();

private:
    std::string m_fileName;
    const PositionSource* m_source = nullptr;
    std::string m_error;
    std::vector<std::string> m_warnings;
    std::uint32_t m_warned = 0; // one bit per kind
    bool m_hasFailed = false;
};

// Returns a piece of the drawing for a message: shortened, without control characters, in double quotes.
[[nodiscard]] std::string quoted(std::string_view text);

} // namespace mirn::zelsvg
