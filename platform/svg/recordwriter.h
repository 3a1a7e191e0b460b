// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/drawing.h"
#include "platform/svg/limits.h"

#include <bitset>
#include <set>

namespace zelsvg {

class Diagnostics;

// What the records of one graphic element have in common.
struct Identity
{
    int id = 0;
    int layer = 0;
    const char* name = TextPool::emptyText();
    const char* tooltip = TextPool::emptyText();
    bool flag = false;
};

struct Stroke
{
    unsigned int color = 0;
    double width = 0.0; // scene units; 0 for none
};

// Makes records: fills in the common part, keeps count and refuses coordinates that make no sense.
class RecordWriter
{
public:
    RecordWriter(Drawing& drawing, Diagnostics& diagnostics, const Limits& limits);

    void addLine(const Identity& identity, zel_Point from, zel_Point to, const Stroke& stroke);
    void addRect(const Identity& identity, zel_Point corner, double width, double height, unsigned int fill,
        const Stroke& stroke);
    void addPolygon(const Identity& identity, std::vector<zel_Point> points, unsigned int fill, const Stroke& stroke);

    // Null when there is no room for it, else a text of which only the common part is filled in.
    zel_Text* addText(const Identity& identity, zel_Point position);

    [[nodiscard]] std::size_t recordCount() const { return m_drawing.records.size(); }
    [[nodiscard]] TextPool& names() { return m_drawing.records.names(); }

    // In the records from `first` on, puts `tooltip` for `replaced` (which is compared as a pointer).
    void replaceTooltip(std::size_t first, const char* replaced, const char* tooltip);

    // Gives every layer that has a record and no range one that always shows.
    void completeLayers();

    // The parameter's width and height as large as what was drawn, where the drawing gives none.
    void takeSizeFromRecords();

private:
    bool isAllowed(zel_Point point);
    void setCommon(const Identity& identity, zel_SingleGraphItem* record);

    static constexpr int CommonLayers = 256;

    Drawing& m_drawing;
    Diagnostics& m_diagnostics;
    const Limits& m_limits;
    std::size_t m_points = 0;
    std::bitset<CommonLayers> m_commonLayers;
    std::set<int> m_otherLayers;
};

} // namespace zelsvg
