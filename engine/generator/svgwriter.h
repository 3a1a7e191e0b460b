// SPDX-License-Identifier: MIT
#pragma once

#include "engine/generator/geometry.h"

#include <string>
#include <vector>

namespace mirn::zeldevicegenerator {

// Writes a chip drawing as SVG text, one element a line. Styles are the names of classes in the style sheet.
// Labels are measured as they are written: one that is larger than the box it names is remembered as a misfit.
class SvgWriter
{
public:
    enum class Turn { None, Left, Right }; // text runs rightwards, upwards, downwards

    // Closes the element it stands for when it goes out of scope.
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

    // Everything within shows on this layer.
    [[nodiscard]] Scope layer(int number);
    // Everything within belongs to the chip element `id` and has this tooltip.
    [[nodiscard]] Scope element(int id, const std::string& popup);
    [[nodiscard]] Scope definitions();
    [[nodiscard]] Scope definition(const std::string& name);

    void rect(const char* style, const Box& box);
    void line(const char* style, Point from, Point to);
    void polygon(const char* style, const std::vector<Point>& points);
    void use(const std::string& definition, Point at);

    // Text in the middle of a box that it must not exceed.
    void label(const Box& box, double size, const std::string& text, Turn turn = Turn::None);

    [[nodiscard]] const std::vector<std::string>& misfits() const { return m_misfits; }

    // The whole document; ends the writing.
    [[nodiscard]] std::string finish();

private:
    void open(const std::string& tag, const std::string& attributes);
    void close(const std::string& tag);
    void indent();

    std::string m_text;
    int m_depth = 1;
    std::vector<std::string> m_misfits;
};

// Width of a text at font size 1 in the font of the drawing.
[[nodiscard]] double textWidth(const std::string& text);

// At most two decimals, none that are not needed; independent of the locale.
[[nodiscard]] std::string formatNumber(double value);

} // namespace mirn::zeldevicegenerator
