// SPDX-License-Identifier: MIT
#include "graphics/painting/vectorpainter.h"

#include "graphics/elements/enlarged.h"
#include "graphics/painting/shapepainter.h"

#include <vector>

namespace mirn::zelchipview {

namespace {

constexpr int ElementsBetweenLooks = 1000;

} // namespace

VectorPainter::VectorPainter(DisplayList& list)
    : m_list(list)
    , m_shaper(list.labels())
{ }

// It goes through all elements instead of asking for those in the area: an answer would have to be kept while `goesOn`
// lets others ask.
bool VectorPainter::paint(
    const Target& target, const QList<int>& layers, const ListPainter::States& states, const GoesOn& goesOn)
{
    std::vector<char> isShown;
    for (int layer : m_list.layers())
        isShown.push_back(layers.contains(layer));
    m_shaper.setViewFont(target.viewFont);
    target.painter->setTransform(target.sceneToPicture);
    const int count = m_list.size();
    for (int place = 0; place < count; ++place) {
        if (place % ElementsBetweenLooks == 0 && !goesOn(double(place) / count))
            return false;
        const Primitive& primitive = m_list.primitive(place);
        if (isShown[primitive.layer] && touches(m_list.boundsOf(place), target.area))
            draw(primitive, target, states.of(primitive.elementId));
    }
    return true;
}

void VectorPainter::draw(const Primitive& primitive, const Target& target, ElementStates states)
{
    ShapePainter shapes(*target.painter, target.pixel);
    switch (primitive.kind) {
    case Primitive::Rect:
        shapes.drawRect(primitive.rect(),
            paintrules::rectLook(primitive.fillColor, primitive.strokeColor, primitive.strokeWidth, states));
        break;
    case Primitive::Line:
        shapes.drawLine(primitive);
        break;
    case Primitive::Polygon:
        shapes.drawPolygon(m_list.corner(primitive.corners.first), primitive.corners.count,
            paintrules::polygonLook(primitive.fillColor, states));
        break;
    case Primitive::Text:
        shapes.drawText(primitive, m_shaper.font(*primitive.label), target.textPen, target.sceneToPicture);
        break;
    }
}

} // namespace mirn::zelchipview
