// SPDX-License-Identifier: MIT
#include "planning/namelayer.h"

#include "graphics/painting/displaylist.h"
#include "graphics/sceneelements.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "graphics/zelpolygonitem.h"
#include "graphics/zelrectitem.h"
#include "planning/planquery.h"
#include "planning/siteplaces.h"
#include "platform/contract/zelchipdata.h"
#include "platform/contract/zelchipengine.h"

#include <QFontMetricsF>
#include <QGraphicsItem>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <optional>

namespace mirn::zelchipview {

namespace {

constexpr double NameMargin = 3.0; // pixels between a name and the border of its site
constexpr double BrightnessOfDarkText = 0.5; // of the fill, from 0 to 1, above which a text is dark
const QColor DarkText(20, 24, 32);
const QColor LightText(250, 250, 250);
constexpr double LeadingShare = 0.2; // of the height of a text's bounds, above its letters and below
constexpr int PlateOpacity = 225; // of 255

// The brightness that people see.
double brightnessOf(const QColor& color)
{
    return 0.299 * color.redF() + 0.587 * color.greenF() + 0.114 * color.blueF();
}

// Returns the colour in which the site is painted now, or nothing if its layer is hidden.
std::optional<QColor> shownFill(ZelGraphicsScene& scene, const QGraphicsItem* item)
{
    const auto* element = dynamic_cast<const ChipElement*>(item);
    if (!element || !element->attribute() || !scene.isLayerVisible(element->attribute()->layer))
        return {};
    if (const auto* rect = dynamic_cast<const ZELRectItem*>(item))
        return rect->brush().color();
    const auto* polygon = dynamic_cast<const ZELPolygonItem*>(item);
    return polygon ? std::optional(polygon->brush().color()) : std::nullopt;
}

// Returns what the drawing's own texts cover of an area, in scene coordinates. The list's bounds are larger than
// needed, because they are made without laying out the texts.
std::vector<QRectF> labelsIn(ZelGraphicsScene& scene, const QRectF& area)
{
    std::vector<QRectF> labels;
    DisplayList& list = scene.elements().displayList();
    for (int place : list.placesIn(area)) {
        const Primitive& primitive = list.primitive(place);
        if (primitive.kind != Primitive::Text || !scene.isLayerVisible(list.layers()[primitive.layer]))
            continue;
        const QRectF label = list.element(place)->graphicsItem()->sceneBoundingRect();
        if (label.intersects(area))
            labels.push_back(label);
    }
    return labels;
}

// A text's bounds are higher than its letters.
QRectF withoutLeading(const QRectF& label)
{
    return label.adjusted(0, label.height() * LeadingShare, 0, -label.height() * LeadingShare);
}

// Returns where a name stands on its site: in the middle, else at the lower or upper border, whichever keeps it off
// the labels; nothing if none does.
std::optional<QRectF> placeOf(QSizeF size, const QRectF& site, const std::vector<QRectF>& labels)
{
    const double left = site.center().x() - size.width() / 2;
    const double middle = site.center().y() - size.height() / 2;
    const double lowest = site.bottom() - size.height() - 1; // a text's height has a margin of its own
    const double highest = site.top() + 1;
    for (const double top : {middle, lowest, highest}) {
        const QRectF place(QPointF(left, top), size);
        const auto isCovering = [&place](const QRectF& label) { return label.intersects(place); };
        if (std::none_of(labels.begin(), labels.end(), isCovering))
            return place;
    }
    return {};
}

} // namespace

NameLayer::NameLayer(ZelGraphicsView* view, zelchipengine& engine)
    : ZelViewLayer(view)
    , m_engine(engine)
{ }

NameLayer::~NameLayer() = default;

void NameLayer::refresh()
{
    m_areCollected = false;
    update();
}

void NameLayer::collect(ZelGraphicsScene& scene)
{
    m_names.clear();
    m_areCollected = true;
    zelchipdata* chip = m_engine.chip();
    if (!chip || !dynamic_cast<zelplanengine*>(&m_engine))
        return;
    const PlanQuery query(m_engine);
    for (const zelchiprecord* record : chip->records()) {
        const int site = record ? static_cast<int>(record->id) : -1;
        const QString resource = record ? query.occupant(site) : QString();
        const QGraphicsItem* outline = resource.isEmpty() ? nullptr : outlineOf(scene, site);
        if (outline)
            m_names.push_back({site, outline->sceneBoundingRect(),
                {resource.section(QLatin1Char('/'), -2), resource.section(QLatin1Char('/'), -1)}, {}});
    }
}

void NameLayer::measure(const QFont& font)
{
    const QFontMetricsF metrics(font);
    m_font = font;
    m_height = metrics.height();
    m_largest = {};
    m_narrowest = 0;
    for (Name& name : m_names) {
        for (int i : {0, 1})
            name.widths[i] = metrics.horizontalAdvance(name.texts[i]);
        m_narrowest = m_narrowest > 0 ? std::min(m_narrowest, name.widths[1]) : name.widths[1];
        m_largest = m_largest.expandedTo(name.area.size());
    }
}

bool NameLayer::hasRoomForAny(double scale) const
{
    return m_largest.width() * scale >= m_narrowest + 2 * NameMargin && m_largest.height() * scale >= m_height;
}

void NameLayer::paint(QPainter& painter, const QRect& exposed)
{
    auto* scene = view() ? qobject_cast<ZelGraphicsScene*>(view()->scene()) : nullptr;
    if (!scene)
        return;
    if (!m_areCollected) {
        collect(*scene);
        measure(view()->font());
    } else if (m_font != view()->font()) {
        measure(view()->font());
    }
    const QTransform transform = view()->viewportTransform();
    if (m_names.empty() || !hasRoomForAny(transform.m11()))
        return;
    painter.setFont(m_font);
    for (const Name& name : m_names) {
        const QRectF site = transform.mapRect(name.area);
        if (site.height() >= m_height && site.width() >= name.widths[1] + 2 * NameMargin && site.intersects(exposed))
            paintName(painter, *scene, name, site);
    }
}

void NameLayer::paintName(QPainter& painter, ZelGraphicsScene& scene, const Name& name, const QRectF& site) const
{
    const std::optional<QColor> fill = shownFill(scene, outlineOf(scene, name.site));
    if (!fill)
        return;
    std::vector<QRectF> labels = labelsIn(scene, name.area);
    for (QRectF& label : labels)
        label = withoutLeading(view()->viewportTransform().mapRect(label));
    const int which = site.width() >= name.widths[0] + 2 * NameMargin ? 0 : 1;
    const std::optional<QRectF> place = placeOf({name.widths[which], m_height}, site, labels);
    if (!place)
        return;
    if (!labels.empty()) {
        QColor plate = *fill;
        plate.setAlpha(PlateOpacity);
        painter.fillRect(place->adjusted(-NameMargin, 0, NameMargin, 0), plate);
    }
    painter.setPen(brightnessOf(*fill) > BrightnessOfDarkText ? DarkText : LightText);
    painter.drawText(QPointF(std::round(place->left()), std::round(place->top() + QFontMetricsF(m_font).ascent())),
        name.texts[which]);
}

} // namespace mirn::zelchipview
