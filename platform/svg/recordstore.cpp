// SPDX-License-Identifier: MIT
#include "platform/svg/recordstore.h"

namespace zelsvg {

void RecordStore::reserve(std::size_t lines, std::size_t rects, std::size_t polygons, std::size_t texts)
{
    m_items.reserve(m_items.size() + lines + rects + polygons + texts);
    if (lines > 0)
        m_lines.reserve(lines);
    if (rects > 0)
        m_rects.reserve(rects);
    if (polygons > 0)
        m_polygons.reserve(polygons);
    if (texts > 0)
        m_texts.reserve(texts);
}

} // namespace zelsvg
