// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/base/limits.h"
#include "platform/svg/geometry/transform.h"
#include "platform/svg/records/drawing.h"

#include <bitset>
#include <set>
#include <string_view>
#include <vector>

namespace mirn::zelsvg {

class Diagnostics;

// The part that the records of one graphic element have in common.
struct Identity
{
    int id = 0;
    int layer = 0;
    TextPool::Offset name = TextPool::Empty;
    TextPool::Offset tooltip = TextPool::Empty;
    bool flag = false;
};

struct Stroke
{
    unsigned int color = 0;
    double width = 0.0; // scene units; 0 for none
};

// One run of text; the texts are ISO 8859-1.
struct TextRun
{
    zel_Point place; // left end of the baseline
    std::string_view text;
    std::string_view family;
    double fontSize = 0.0;
    unsigned int color = 0;
    int rotation = 0;
    bool isSpan = false;
};

// Adds records to a drawing: fills in the common part, counts them and refuses coordinates that are not sensible. The
// builder owns it; the drawing belongs to the caller. It knows nothing of styles and elements.
class RecordWriter
{
public:
    RecordWriter(Drawing& drawing, Diagnostics& diagnostics, const Limits& limits);

    void addLine(const Identity& identity, zel_Point from, zel_Point to, const Stroke& stroke);
    void addRect(const Identity& identity, zel_Point corner, double width, double height, unsigned int fill,
        const Stroke& stroke);
    void addPolygon(
        const Identity& identity, const zel_Point* points, std::size_t count, unsigned int fill, const Stroke& stroke);
    void addText(const Identity& identity, const TextRun& run);

    // Enclose the content of a rect of this size at the origin whose edges should clip it. Anything beyond the edges is
    // drawn nevertheless, with a warning. A rotated rect is treated as its upright bounding box.
    void enterEdges(const Matrix& matrix, ViewportSize size);
    void leaveEdges() { m_edges.pop_back(); }

    [[nodiscard]] std::size_t recordCount() const { return m_drawing.records.size(); }
    [[nodiscard]] TextPool& texts() { return m_drawing.records.texts(); }

    // Replaces a tooltip in the records from index `first` on. Texts are compared by their offsets.
    void replaceTooltip(std::size_t first, TextPool::Offset replaced, TextPool::Offset tooltip);

    // Adds a range that always shows to each layer that has records but no range.
    void completeLayers();

    // Sets the parameter's width and height from what was drawn.
    void takeSizeFromRecords();

private:
    struct Edges
    {
        zel_Point least;
        zel_Point greatest;
    };

    bool isAllowed(zel_Point point);
    bool isWithinEdges(zel_Point point) const;
    void add(zelgraphic_kind kind, const Identity& identity, PackedRecord& record, PackedLook& look);

    static constexpr int CommonLayers = 256;

    Drawing& m_drawing;
    Diagnostics& m_diagnostics;
    const Limits& m_limits;
    std::size_t m_points = 0;
    std::vector<Edges> m_edges; // each lies within those before it
    std::bitset<CommonLayers> m_commonLayers;
    std::set<int> m_otherLayers;
};

} // namespace mirn::zelsvg
