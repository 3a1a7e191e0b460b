// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/document/element.h"
#include "platform/svg/geometry/transform.h"
#include "platform/svg/records/recordwriter.h"
#include "platform/svg/style/style.h"

#include <string>
#include <string_view>
#include <vector>

namespace mirn::zelsvg {

class Diagnostics;

// Lays out one text element at a time: collects its characters with their positions and styles, and writes a record for
// each run that is drawn in one go. The builder owns it. It has no access to fonts; see textmetrics.h.
class TextLayout
{
public:
    TextLayout(RecordWriter& writer, Diagnostics& diagnostics);

    // `matrix` and `viewport` are those of the text element. Text elements cannot be nested.
    void begin(const Matrix& matrix, ViewportSize viewport);

    // Enclose the content of a text or tspan, whose position lists apply to it.
    void pushElement(const Element& element, const Style& style);
    void popElement();

    // Adds characters of the innermost element, in UTF-8.
    void add(std::string_view text, const Style& style, const Identity& identity);

    // Writes the records.
    void end();

    void replaceTooltip(TextPool::Offset replaced, TextPool::Offset tooltip);

private:
    // The lists x, y, dx and dy of an element, with one entry for each of its characters until they run out.
    struct Positions
    {
        std::vector<double> lists[4];
        std::size_t longest = 0;
        std::size_t next = 0;
    };

    // The position of a character.
    struct Position
    {
        bool hasX = false; // whether the position is absolute in x
        bool hasY = false;
        zel_Point place;
        zel_Point shift; // relative to the end of the characters before it
    };

    // Characters that one record draws.
    struct Run
    {
        std::string text; // ISO 8859-1
        Identity identity;
        Style style;
        Position position;
        bool isSpan = false;
        zel_Point place; // left end, before the baseline shift; set once all runs are known
    };

    void readList(
        const Element& element, AttributeName name, LengthAxis axis, const Style& style, std::vector<double>& list);
    bool takePosition(Position& position);
    bool addRun(const Style& style, const Identity& identity, const Position& position);
    void addCharacter(char32_t character);
    [[nodiscard]] bool continues(const Style& style, const Identity& identity) const;
    [[nodiscard]] double chunkShift(std::size_t first) const;
    [[nodiscard]] double widthOf(const Run& run) const;
    void place();
    void mirror();
    void writeRun(const Run& run);
    void warnOf(const Style& style);

    RecordWriter& m_writer;
    Diagnostics& m_diagnostics;
    Matrix m_matrix;
    ViewportSize m_viewport;
    int m_rotation = 0; // direction of the letters, in degrees
    bool m_isReversed = false; // whether the letters run against the matrix
    bool m_isFlipped = false; // whether the letters stand upright against the matrix
    std::vector<Positions> m_positions; // one per open element
    std::vector<std::size_t> m_unfinished; // indices of those whose lists have not run out
    std::vector<Run> m_runs;
    bool m_endsWithSpace = true; // whether a further blank collapses: at the beginning and after a blank
};

} // namespace mirn::zelsvg
