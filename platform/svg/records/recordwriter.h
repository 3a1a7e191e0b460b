// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/base/limits.h"
#include "platform/svg/geometry/transform.h"
#include "platform/svg/records/drawing.h"

#include <bitset>
#include <set>
#include <string_view>
#include <vector>

namespace zelsvg {

class Diagnostics;

// What the records of one graphic element have in common.
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

// What one record of a text draws; texts are ISO 8859-1.
struct TextRun
{
    zel_Point place; // left end of the base line
    std::string_view text;
    std::string_view family;
    double fontSize = 0.0;
    unsigned int color = 0;
    int rotation = 0;
    bool isSpan = false;
};

// Makes records: fills in the common part, keeps count and refuses coordinates that make no sense.
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

    // Around what should be cut off at the edges of a rect of this size at the origin: what reaches beyond them is
    // drawn all the same, and warned of. A turned rect counts as the upright one around it.
    void enterEdges(const Matrix& matrix, ViewportSize size);
    void leaveEdges() { m_edges.pop_back(); }

    [[nodiscard]] std::size_t recordCount() const { return m_drawing.records.size(); }
    [[nodiscard]] TextPool& texts() { return m_drawing.records.texts(); }

    // In the records from `first` on, puts `tooltip` for `replaced`; texts are compared by their offsets.
    void replaceTooltip(std::size_t first, TextPool::Offset replaced, TextPool::Offset tooltip);

    // Gives every layer that has a record and no range one that always shows.
    void completeLayers();

    // The parameter's width and height as large as what was drawn, where the drawing gives none.
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
    std::vector<Edges> m_edges; // each within those before it
    std::bitset<CommonLayers> m_commonLayers;
    std::set<int> m_otherLayers;
};

} // namespace zelsvg
