// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/records/recordstore.h"

#include <vector>

namespace zelsvg {

// Turns packed records into the objects of the contract, one at a time: the object of the last record becomes that of
// the next of its kind. What the objects point at belongs to the store.
class RecordUnpacker
{
public:
    explicit RecordUnpacker(const RecordStore& store); // not owned

    [[nodiscard]] const zel_SingleGraphItem& unpacked(const PackedRecord& record);

private:
    const RecordStore& m_store;
    zel_Line m_line;
    zel_Rect m_rect;
    zel_Polygon m_polygon;
    zel_Text m_text;
};

// An object for every record, all at the same time.
class RecordObjects
{
public:
    explicit RecordObjects(const RecordStore& store); // not owned

    // In paint order.
    [[nodiscard]] const std::vector<zel_SingleGraphItem*>& items() const { return m_items; }

private:
    std::vector<zel_Line> m_lines;
    std::vector<zel_Rect> m_rects;
    std::vector<zel_Polygon> m_polygons;
    std::vector<zel_Text> m_texts;
    std::vector<zel_SingleGraphItem*> m_items;
};

} // namespace zelsvg
