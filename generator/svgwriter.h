// SPDX-License-Identifier: MIT
#pragma once

#include "generator/geometry.h"

#include <string>
#include <vector>

namespace mirn::zeldevicegenerator {

// Writes a chip drawing as SVG text, one element a line; it writes no file. Styles are class names of the style sheet.
// Labels are measured as they are written; one that is larger than its box is recorded as a misfit.
class SvgWriter
{
public:
    enum class Turn { None, Left, Right }; // text runs rightwards, upwards or downwards

    // Closes the element that it stands for when it goes out of scope.
    class Scope
    {
    public:
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        friend class SvgWriter;
        Scope(SvgWriter& writer, std::string tag);

        SvgWriter& m_writer;
        std::string m_tag;
    };

    SvgWriter(double width, double height, const std::string& title, const std::string& styleSheet);

    // Everything inside is shown on this layer.
    [[nodiscard]] Scope layer(int number);
    // Everything inside belongs to the chip element `id` and has this tooltip.
    [[nodiscard]] Scope element(int id, const std::string& popup);
    [[nodiscard]] Scope definitions();
    [[nodiscard]] Scope definition(const std::string& name);

    void rect(const char* style, const Box& box);
    void line(const char* style, Point from, Point to);
    void polygon(const char* style, const std::vector<Point>& points);
    void use(const std::string& definition, Point at);

    // Writes a text in the middle of a box, which it must not exceed.
    void label(const Box& box, double size, const std::string& text, Turn turn = Turn::None);

    [[nodiscard]] const std::vector<std::string>& misfits() const { return m_misfits; }

    // Returns the whole document; nothing may be written after it.
    [[nodiscard]] std::string finish();

private:
    void open(const std::string& tag, const std::string& attributes);
    void close(const std::string& tag);
    void indent();

    std::string m_text;
    int m_depth = 1;
    std::vector<std::string> m_misfits;
};

// Returns the width of a text at font size 1 in the drawing's font.
[[nodiscard]] double textWidth(const std::string& text);

// Formats a number with at most two decimals and no trailing zeros, independently of the locale.
[[nodiscard]] std::string formatNumber(double value);

} // namespace mirn::zeldevicegenerator
