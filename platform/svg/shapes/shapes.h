// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/document/element.h"
#include "platform/svg/geometry/flatpath.h"
#include "platform/svg/records/recordwriter.h"
#include "platform/svg/style/style.h"

namespace mirn::zelsvg {

// How and where a shape is drawn.
struct ShapeContext
{
    const Style& style;
    const Matrix& matrix; // user units to scene units
    ViewportSize viewport;
    double tolerance; // scene units; largest distance between a chord and its curve
};

// Turns basic shapes and paths into records; the builder owns it. An upright rect becomes a rect, a line becomes lines.
// Everything else becomes a polygon for the fill and, above it, lines for the stroke, because polygons are drawn
// without their strokes.
class Shapes
{
public:
    Shapes(RecordWriter& writer, Diagnostics& diagnostics, const Limits& limits);

    [[nodiscard]] static bool isShape(ElementName name);

    // `identify()` returns the identity; it is called only if there is something to draw.
    template <typename Identify> void draw(const Element& element, const ShapeContext& context, Identify identify)
    {
        if (readPaint(context) && readGeometry(element, context))
            write(identify());
    }

private:
    [[nodiscard]] bool readPaint(const ShapeContext& context);
    bool readGeometry(const Element& element, const ShapeContext& context);
    bool readRect(const Element& element, const ShapeContext& context);
    bool readLine(const Element& element, const ShapeContext& context);
    bool readEllipse(const Element& element, const ShapeContext& context);
    void roundedRect(zel_Point corner, double width, double height, double radiusX, double radiusY);
    [[nodiscard]] double length(const Element& element, AttributeName name, LengthAxis axis) const;
    bool sizeIsGiven(const Element& element, AttributeName name, LengthAxis axis, double& value) const;

    void write(const Identity& identity);
    void writeRect(const Identity& identity);
    void writeFill(const Identity& identity);
    void writeStroke(const Identity& identity);
    void writeLine(const Identity& identity, zel_Point from, zel_Point to, bool isEven);
    [[nodiscard]] bool isStrokeEven() const;
    [[nodiscard]] bool areAllAlike() const;
    [[nodiscard]] std::vector<zel_Point> bridged() const;

    RecordWriter& m_writer;
    Diagnostics& m_diagnostics;
    FlatPath m_path;

    // The shape being drawn:
    LengthContext m_lengths;
    bool m_hasFill = false;
    bool m_hasStroke = false;
    bool m_isRect = false; // whether it is the rect below instead of the path
    bool m_isEvenOdd = false;
    unsigned int m_fill = 0;
    Stroke m_stroke; // has the mean width if the scaling is not even
    const Style* m_style = nullptr;
    const Matrix* m_matrix = nullptr;
    zel_Point m_corner;
    double m_width = 0.0;
    double m_height = 0.0;
};

} // namespace mirn::zelsvg
