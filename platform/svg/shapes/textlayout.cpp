// SPDX-License-Identifier: MIT
#include "platform/svg/shapes/textlayout.h"

#include "platform/svg/base/diagnostics.h"
#include "platform/svg/base/latin1.h"
#include "platform/svg/base/number.h"
#include "platform/svg/shapes/textmetrics.h"
#include "platform/svg/style/texttraits.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace mirn::zelsvg {

namespace {

constexpr std::size_t MostRuns = 65536; // per text

enum { ListX, ListY, ListDx, ListDy };

// Returns the distance of the baseline below the given position, in font sizes.
[[nodiscard]] double baselineShift(Baseline baseline)
{
    switch (baseline) {
    case Baseline::Middle:
        return TextXHeight / 2;
    case Baseline::Central:
        return (TextAscent - TextDescent) / 2;
    case Baseline::Hanging:
        return TextCapHeight;
    case Baseline::Top:
        return TextAscent;
    case Baseline::Bottom:
        return -TextDescent;
    case Baseline::Alphabetic:
        break;
    }
    return 0.0;
}

[[nodiscard]] bool isSamePaint(const Style& a, const Style& b)
{
    unsigned int colorA = 0;
    unsigned int colorB = 0;
    return a.textColor(colorA) == b.textColor(colorB) && colorA == colorB;
}

} // namespace

TextLayout::TextLayout(RecordWriter& writer, Diagnostics& diagnostics)
    : m_writer(writer)
    , m_diagnostics(diagnostics)
{ }

void TextLayout::begin(const Matrix& matrix, ViewportSize viewport)
{
    m_matrix = matrix;
    m_viewport = viewport;
    // In a mirrored drawing a text stays readable and occupies the same area.
    m_rotation = matrix.rotation();
    m_isReversed = matrix.isMirror() && (m_rotation > 90 || m_rotation <= -90);
    m_isFlipped = matrix.isMirror() && !m_isReversed;
    if (m_isReversed)
        m_rotation += m_rotation > 0 ? -180 : 180;
    m_positions.clear();
    m_unfinished.clear();
    m_runs.clear();
    m_endsWithSpace = true;
}

void TextLayout::pushElement(const Element& element, const Style& style)
{
    m_positions.emplace_back();
    auto& lists = m_positions.back().lists;
    readList(element, AttributeName::X, LengthAxis::Horizontal, style, lists[ListX]);
    readList(element, AttributeName::Y, LengthAxis::Vertical, style, lists[ListY]);
    readList(element, AttributeName::Dx, LengthAxis::Horizontal, style, lists[ListDx]);
    readList(element, AttributeName::Dy, LengthAxis::Vertical, style, lists[ListDy]);
    for (const std::vector<double>& list : lists)
        m_positions.back().longest = std::max(m_positions.back().longest, list.size());
    if (element.has(AttributeName::TextLength) || !trimmed(element.value(AttributeName::Rotate)).empty())
        m_diagnostics.warn(Unsupported::TextEffects);
    if (m_positions.back().longest > 0)
        m_unfinished.push_back(m_positions.size() - 1);
}

void TextLayout::popElement()
{
    m_positions.pop_back();
    if (!m_unfinished.empty() && m_unfinished.back() == m_positions.size())
        m_unfinished.pop_back();
}

void TextLayout::readList(
    const Element& element, AttributeName name, LengthAxis axis, const Style& style, std::vector<double>& list)
{
    const LengthContext lengths{style.fontSize, m_viewport};
    std::string_view rest = trimmed(element.value(name));
    constexpr std::string_view Separators = " ,\t\r\n\f";
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of(Separators), rest.size());
        double value = 0.0;
        if (!parseLength(rest.substr(0, end), lengths, axis, m_diagnostics, value))
            return;
        list.push_back(value);
        rest.remove_prefix(std::min(rest.find_first_not_of(Separators, end), rest.size()));
    }
}

// Blanks collapse to one and are removed at both ends, unless they are preserved.
void TextLayout::add(std::string_view text, const Style& style, const Identity& identity)
{
    bool goesOn = !m_runs.empty() && continues(style, identity);
    while (!text.empty()) {
        char32_t character = takeCharacter(text);
        const bool isBlank = character < 0x80 && isSpace(static_cast<char>(character));
        if (isBlank)
            character = ' ';
        if (isBlank && !style.keepsSpaces && m_endsWithSpace)
            continue;
        Position position;
        if (character >= 0x80 && !m_runs.empty() && addMark(character, m_runs.back().text)) {
            takePosition(position); // counts as a character, but is drawn with its letter
            continue;
        }
        if ((takePosition(position) || !goesOn) && !addRun(style, identity, position))
            return;
        goesOn = true;
        addCharacter(character);
        m_endsWithSpace = isBlank && !style.keepsSpaces;
    }
}

// The innermost element with an entry for this character determines its position. Returns false if there is none.
bool TextLayout::takePosition(Position& position)
{
    double values[4] = {};
    bool has[4] = {};
    for (std::size_t index : m_unfinished) {
        Positions& positions = m_positions[index];
        for (int list = 0; list < 4; ++list) {
            if (positions.next < positions.lists[list].size()) {
                values[list] = positions.lists[list][positions.next];
                has[list] = true;
            }
        }
        ++positions.next;
    }
    const auto isFinished = [this](std::size_t i) { return m_positions[i].next >= m_positions[i].longest; };
    m_unfinished.erase(std::remove_if(m_unfinished.begin(), m_unfinished.end(), isFinished), m_unfinished.end());
    position = {has[ListX], has[ListY], {values[ListX], values[ListY]}, {values[ListDx], values[ListDy]}};
    return has[ListX] || has[ListY] || values[ListDx] != 0.0 || values[ListDy] != 0.0;
}

bool TextLayout::addRun(const Style& style, const Identity& identity, const Position& position)
{
    if (m_runs.size() >= MostRuns)
        m_diagnostics.fail("found a text of more than 65536 pieces, expected fewer positions in it");
    else
        m_runs.push_back({{}, identity, style, position, m_positions.size() > 1, {}});
    if (style.textTraits != 0)
        warnOf(style);
    return !m_diagnostics.hasFailed();
}

void TextLayout::addCharacter(char32_t character)
{
    char single[2];
    const std::string_view latin1 = latin1Of(character, single);
    if (latin1 == "?" && character != '?')
        m_diagnostics.warn(Unsupported::Character);
    m_runs.back().text.append(latin1);
}

bool TextLayout::continues(const Style& style, const Identity& identity) const
{
    const Run& last = m_runs.back();
    return last.style.fontSize == style.fontSize && std::strcmp(last.style.fontFamily, style.fontFamily) == 0
        && last.style.baseline == style.baseline && isSamePaint(last.style, style) && last.identity.id == identity.id
        && last.identity.layer == identity.layer && last.isSpan == (m_positions.size() > 1);
}

void TextLayout::end()
{
    // The last character is a blank that must be removed.
    if (m_endsWithSpace && !m_runs.empty() && !m_runs.back().text.empty())
        m_runs.back().text.pop_back();
    place();
    if (m_isReversed)
        mirror();
    for (const Run& run : m_runs)
        writeRun(run);
    m_runs.clear();
}

void TextLayout::place()
{
    zel_Point at;
    for (std::size_t i = 0; i < m_runs.size(); ++i) {
        const Position& position = m_runs[i].position;
        at.x = (position.hasX ? position.place.x : at.x) + position.shift.x;
        at.y = (position.hasY ? position.place.y : at.y) + position.shift.y;
        if (i == 0 || position.hasX || position.hasY)
            at.x += chunkShift(i);
        m_runs[i].place = at;
        at.x += widthOf(m_runs[i]);
    }
}

// Letters do not run backwards: a piece that reads as one unit begins at its other end instead.
void TextLayout::mirror()
{
    for (std::size_t first = 0, end = 0; first < m_runs.size(); first = end) {
        double left = m_runs[first].place.x;
        double right = left + widthOf(m_runs[first]);
        for (end = first + 1; end < m_runs.size(); ++end) {
            const Run& run = m_runs[end];
            const bool goesOn = std::fabs(run.place.x - right) < run.style.fontSize;
            if ((run.position.hasX || run.position.hasY) && !(goesOn && run.place.y == m_runs[end - 1].place.y))
                break;
            left = std::min(left, run.place.x);
            right = std::max(right, run.place.x + widthOf(run));
        }
        for (std::size_t i = first; i < end; ++i)
            m_runs[i].place.x = left + right - m_runs[i].place.x;
    }
}

double TextLayout::widthOf(const Run& run) const
{
    return textAdvance(run.text) * run.style.fontSize;
}

// A chunk, which is all runs up to the next absolute position, is anchored as a whole.
double TextLayout::chunkShift(std::size_t first) const
{
    if (m_runs[first].style.anchor == TextAnchor::Start)
        return 0.0;
    double width = 0.0;
    for (std::size_t i = first; i < m_runs.size(); ++i) {
        const Run& run = m_runs[i];
        if (i > first && (run.position.hasX || run.position.hasY))
            break;
        width += widthOf(run) + (i > first ? run.position.shift.x : 0.0);
    }
    return m_runs[first].style.anchor == TextAnchor::Middle ? -width / 2 : -width;
}

void TextLayout::writeRun(const Run& run)
{
    unsigned int color = 0;
    const double size = run.style.fontSize * m_matrix.meanScale();
    const bool isBlank = run.text.find_first_not_of(' ') == std::string::npos;
    if (isBlank || !(size > 0.0) || !run.style.textColor(color))
        return;
    // Letters that would be upside down are turned upright and shifted by their height, to occupy the same area.
    const double below = baselineShift(run.style.baseline) - (m_isFlipped ? TextCapHeight : 0.0);
    const zel_Point place = m_matrix.map(run.place.x, run.place.y + below * run.style.fontSize);
    std::string buffer;
    const std::string_view family = toLatin1(run.style.fontFamily, buffer, m_diagnostics);
    m_writer.addText(run.identity, {place, run.text, family, size, color, m_rotation, run.isSpan});
}

void TextLayout::warnOf(const Style& style)
{
    struct Trait
    {
        int bits;
        Unsupported kind;
    };
    constexpr Trait Traits[] = {{TextTrait::Bold, Unsupported::Bold}, {TextTrait::Italic, Unsupported::Italic},
        {TextTrait::Lines, Unsupported::TextLines},
        {TextTrait::LetterSpacing | TextTrait::WordSpacing, Unsupported::TextSpacing},
        {TextTrait::Vertical, Unsupported::VerticalText}, {TextTrait::Effects, Unsupported::TextEffects}};
    for (const Trait& trait : Traits) {
        if (style.textTraits & trait.bits)
            m_diagnostics.warn(trait.kind);
    }
}

void TextLayout::replaceTooltip(TextPool::Offset replaced, TextPool::Offset tooltip)
{
    for (Run& run : m_runs) {
        if (run.identity.tooltip == replaced)
            run.identity.tooltip = tooltip;
    }
}

} // namespace mirn::zelsvg
