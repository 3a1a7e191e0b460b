// SPDX-License-Identifier: MIT
#include "generator/svgwriter.h"

#include "generator/layers.h"

#include <array>
#include <charconv>
#include <utility>

namespace mirn::zeldevicegenerator {

namespace {

constexpr double CapHeight = 0.73; // fraction of the font size, like LineHeight
constexpr double LineHeight = 1.0;

std::string escaped(const std::string& text)
{
    std::string result;
    for (char c : text) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            result += c;
        }
    }
    return result;
}

std::string attribute(const char* name, const std::string& value)
{
    return std::string(" ") + name + "=\"" + value + '"';
}

std::string attribute(const char* name, double value)
{
    return attribute(name, formatNumber(value));
}

std::string layerTable()
{
    std::string result;
    for (int number = 0; number < LAYER_COUNT; ++number) {
        const LayerRange& range = LAYERS[number];
        result += "    <tovanel:layer" + attribute("number", number) + attribute("minimum", range.minimum)
            + attribute("maximum", range.maximum) + attribute("name", range.name) + "/>\n";
    }
    return result;
}

} // namespace

std::string formatNumber(double value)
{
    std::array<char, 64> buffer{};
    const auto result = std::to_chars(buffer.begin(), buffer.end(), value, std::chars_format::fixed, 2);
    std::string text(buffer.begin(), result.ptr);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.')
        text.pop_back();
    return text == "-0" ? "0" : text;
}

// The advance widths of DejaVu Sans in thousandths of the font size, from space to '~'.
double textWidth(const std::string& text)
{
    static constexpr std::array<short, 95> ADVANCE = {318, 401, 460, 838, 636, 950, 780, 275, 390, 390, 500, 838, 318,
        361, 318, 337, 636, 636, 636, 636, 636, 636, 636, 636, 636, 636, 337, 337, 838, 838, 838, 531, 1000, 684, 686,
        698, 770, 632, 575, 775, 752, 295, 295, 656, 557, 863, 748, 787, 603, 787, 695, 635, 611, 732, 684, 989, 685,
        611, 685, 390, 337, 390, 838, 500, 500, 613, 635, 550, 635, 615, 352, 635, 634, 278, 278, 579, 278, 974, 634,
        612, 635, 635, 411, 521, 392, 634, 592, 818, 592, 592, 525, 636, 337, 636, 838};
    int width = 0;
    for (char c : text)
        width += c >= ' ' && c <= '~' ? ADVANCE[static_cast<std::size_t>(c - ' ')] : 1000;
    return width / 1000.0;
}

SvgWriter::Scope::Scope(SvgWriter& writer, std::string tag)
    : m_writer(writer)
    , m_tag(std::move(tag))
{ }

SvgWriter::Scope::~Scope()
{
    m_writer.close(m_tag);
}

SvgWriter::SvgWriter(double width, double height, const std::string& title, const std::string& styleSheet)
{
    m_text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\""
             " xmlns:xlink=\"http://www.w3.org/1999/xlink\" xmlns:tovanel=\"urn:tovanel:chip-drawing\"\n    "
        + attribute("width", width) + attribute("height", height)
        + attribute("viewBox", "0 0 " + formatNumber(width) + ' ' + formatNumber(height)) + "\n    "
        + attribute("tovanel:initial-scale", 1) + attribute("tovanel:minimum-scale", MinimumScale)
        + attribute("tovanel:maximum-scale", MaximumScale) + attribute("tovanel:scale-step", ScaleStep) + ">\n"
        + " <title>" + escaped(title) + "</title>\n <metadata>\n" + layerTable() + " </metadata>\n <style>\n"
        + styleSheet + " </style>\n";
}

SvgWriter::Scope SvgWriter::layer(int number)
{
    open("g", attribute("tovanel:layer", number));
    return {*this, "g"};
}

SvgWriter::Scope SvgWriter::element(int id, const std::string& popup)
{
    open("g", attribute("tovanel:id", std::to_string(id)) + attribute("tovanel:popup", escaped(popup)));
    return {*this, "g"};
}

SvgWriter::Scope SvgWriter::definitions()
{
    open("defs", {});
    return {*this, "defs"};
}

SvgWriter::Scope SvgWriter::definition(const std::string& name)
{
    open("g", attribute("id", name));
    return {*this, "g"};
}

void SvgWriter::rect(const char* style, const Box& box)
{
    indent();
    m_text += "<rect" + attribute("class", style) + attribute("x", box.x) + attribute("y", box.y)
        + attribute("width", box.width) + attribute("height", box.height) + "/>\n";
}

void SvgWriter::line(const char* style, Point from, Point to)
{
    indent();
    m_text += "<line" + attribute("class", style) + attribute("x1", from.x) + attribute("y1", from.y)
        + attribute("x2", to.x) + attribute("y2", to.y) + "/>\n";
}

void SvgWriter::polygon(const char* style, const std::vector<Point>& points)
{
    std::string list;
    for (const Point& point : points)
        list += (list.empty() ? "" : " ") + formatNumber(point.x) + ',' + formatNumber(point.y);
    indent();
    m_text += "<polygon" + attribute("class", style) + attribute("points", list) + "/>\n";
}

void SvgWriter::use(const std::string& definition, Point at)
{
    indent();
    m_text += "<use" + attribute("xlink:href", '#' + definition) + attribute("x", at.x) + attribute("y", at.y) + "/>\n";
}

void SvgWriter::label(const Box& box, double size, const std::string& text, Turn turn)
{
    const bool upright = turn == Turn::None;
    if (textWidth(text) * size > (upright ? box.width : box.height)
        || LineHeight * size > (upright ? box.height : box.width))
        m_misfits.push_back(text);

    const Point center{box.centerX(), box.centerY()};
    indent();
    m_text += "<text" + attribute("x", center.x) + attribute("y", center.y + CapHeight / 2 * size)
        + attribute("font-size", size);
    if (!upright)
        m_text += attribute("transform",
            std::string(turn == Turn::Left ? "rotate(-90 " : "rotate(90 ") + formatNumber(center.x) + ' '
                + formatNumber(center.y) + ')');
    m_text += '>' + escaped(text) + "</text>\n";
}

std::string SvgWriter::finish()
{
    close("svg");
    return std::move(m_text);
}

void SvgWriter::open(const std::string& tag, const std::string& attributes)
{
    indent();
    m_text += '<' + tag + attributes + ">\n";
    ++m_depth;
}

void SvgWriter::close(const std::string& tag)
{
    --m_depth;
    indent();
    m_text += "</" + tag + ">\n";
}

void SvgWriter::indent()
{
    m_text.append(static_cast<std::size_t>(m_depth), ' ');
}

} // namespace mirn::zeldevicegenerator
