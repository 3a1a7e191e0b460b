// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/records/recordstore.h"

#include <vector>

namespace mirn::zelsvg {

// Converts packed records to the contract's objects, one at a time: an object is reused for the next record of its
// kind. The texts they point at belong to the store.
class RecordUnpacker
{
public:
    explicit RecordUnpacker(const RecordStore& store); // the store is not owned

    [[nodiscard]] const zel_SingleGraphItem& unpacked(const PackedRecord& record);

private:
    const RecordStore& m_store;
    zel_Line m_line;
    zel_Rect m_rect;
    zel_Polygon m_polygon;
    zel_Text m_text;
};

// The contract's objects for all records at the same time, for a caller that wants the whole list. The parser owns it;
// the texts that the objects point at belong to the store.
class RecordObjects
{
public:
    explicit RecordObjects(const RecordStore& store); // the store is not owned

    // The objects in paint order.
    [[nodiscard]] const std::vector<zel_SingleGraphItem*>& items() const { return m_items; }

private:
    std::vector<zel_Line> m_lines;
    std::vector<zel_Rect> m_rects;
    std::vector<zel_Polygon> m_polygons;
    std::vector<zel_Text> m_texts;
    std::vector<zel_SingleGraphItem*> m_items;
};

} // namespace mirn::zelsvg
