// SPDX-License-Identifier: MIT
#include "generator/benchmarkdrawing.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace mirn::zeldevicegenerator {

namespace {

constexpr double LayerScaleStep = 0.75; // between the scales at which successive layers appear
constexpr double Gap = 0.1; // on each side, as a fraction of the cell

// A generator of its own, because the standard distributions differ between libraries.
class Random
{
public:
    std::uint32_t below(std::uint32_t limit)
    {
        m_state = m_state * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<std::uint32_t>((m_state >> 33) % limit);
    }

private:
    std::uint64_t m_state = 0x5DEECE66D;
};

struct Cell
{
    double x;
    double y;
    double size;
};

class BenchmarkWriter
{
public:
    BenchmarkWriter(int elements, int layers)
        : m_elements(elements)
        , m_layers(layers < 1 ? 1 : layers)
        , m_columns(elements > 0 ? static_cast<int>(std::ceil(std::sqrt(elements))) : 1)
    {
        m_text.reserve(static_cast<std::size_t>(elements) * 130 + 1000);
    }

    std::string write()
    {
        header();
        for (int number = 0; number < m_elements; ++number)
            element(number);
        return std::move(m_text += "</svg>\n");
    }

private:
    void header();
    void element(int number);
    void common(int number);
    void paint(bool stroked);
    void attribute(const char* name, double value);
    void append(const char* text) { m_text += text; }
    void append(double value);
    void append(int value);

    int m_elements;
    int m_layers;
    int m_columns;
    Random m_random;
    std::string m_text;
};

void BenchmarkWriter::header()
{
    append("<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:tovanel=\"urn:tovanel:chip-drawing\"");
    attribute("width", BenchmarkSize);
    attribute("height", BenchmarkSize);
    append(" tovanel:maximum-scale=\"6\">\n<metadata>\n");
    for (int layer = 0; layer < m_layers; ++layer) {
        append("<tovanel:layer number=\"");
        append(layer);
        append("\"");
        attribute("minimum", layer == 0 ? 0.0 : 1.0 + layer * LayerScaleStep);
        append(" maximum=\"100\"/>\n");
    }
    append("</metadata>\n");
}

// Of every twenty elements sixteen are rects, two lines, one a polygon and one a text.
void BenchmarkWriter::element(int number)
{
    const double pitch = BenchmarkSize / m_columns;
    const double shrink = 0.5 + m_random.below(50) / 100.0;
    const Cell cell{
        (number % m_columns + Gap) * pitch, (number / m_columns + Gap) * pitch, (1 - 2 * Gap) * pitch * shrink};
    const int kind = number % 20;
    if (kind == 5 || kind == 15) {
        append("<line");
        common(number);
        attribute("x1", cell.x);
        attribute("y1", cell.y);
        attribute("x2", cell.x + cell.size);
        attribute("y2", kind == 5 ? cell.y : cell.y + cell.size);
        paint(true);
        append("/>\n");
    } else if (kind == 9) {
        append("<polygon");
        common(number);
        append(" points=\"");
        for (const auto& [dx, dy] : {std::array<double, 2>{0, 0}, {1, 0.3}, {0.7, 1}, {0.2, 0.8}}) {
            append(cell.x + dx * cell.size);
            append(",");
            append(cell.y + dy * cell.size);
            append(" ");
        }
        append("\"");
        paint(false);
        append("/>\n");
    } else if (kind == 19) {
        append("<text");
        common(number);
        attribute("x", cell.x);
        attribute("y", cell.y + cell.size);
        attribute("font-size", std::max(0.2, cell.size / 2));
        append(">T");
        append(number % 1000);
        append("</text>\n");
    } else {
        append("<rect");
        common(number);
        attribute("x", cell.x);
        attribute("y", cell.y);
        attribute("width", cell.size);
        attribute("height", cell.size * (0.5 + kind / 40.0));
        paint(kind % 2 == 0);
        append("/>\n");
    }
}

void BenchmarkWriter::common(int number)
{
    append(" tovanel:id=\"");
    append(number + 1);
    append("\"");
    if (m_layers > 1) {
        append(" tovanel:layer=\"");
        append(number % m_layers);
        append("\"");
    }
}

void BenchmarkWriter::paint(bool stroked)
{
    static constexpr std::array<const char*, 8> FILLS
        = {"#c0d0de", "#e3b7bb", "#ecc0aa", "#d9deda", "#b3d2cd", "#e8dcab", "#c9bce0", "#f2d292"};
    append(" fill=\"");
    append(FILLS[m_random.below(FILLS.size())]);
    append(stroked ? "\" stroke=\"#7b828a\" stroke-width=\"0.05\"" : "\"");
}

void BenchmarkWriter::attribute(const char* name, double value)
{
    append(" ");
    append(name);
    append("=\"");
    append(value);
    append("\"");
}

void BenchmarkWriter::append(double value)
{
    std::array<char, 64> buffer{};
    const auto result = std::to_chars(buffer.begin(), buffer.end(), value, std::chars_format::fixed, 3);
    m_text.append(buffer.begin(), result.ptr);
}

void BenchmarkWriter::append(int value)
{
    m_text += std::to_string(value);
}

} // namespace

std::string benchmarkDrawing(int elements, int layers)
{
    return BenchmarkWriter(elements, layers).write();
}

} // namespace mirn::zeldevicegenerator
