// SPDX-License-Identifier: MIT
#include "planning/namelayer.h"

#include "graphics/elements/paintrules.h"
#include "graphics/painting/displaylist.h"
#include "graphics/sceneelements.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "graphics/zelpolygonitem.h"
#include "graphics/zelrectitem.h"
#include "planning/planquery.h"
#include "planning/siteplaces.h"
#include "platform/contract/zelchipengine.h"
#include "platform/contract/zelplanengine.h"

#include <QFontMetricsF>
#include <QGraphicsItem>
#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <optional>

namespace mirn::zelchipview {

namespace {

constexpr double NameMargin = 3.0; // pixels between a name and the border of its site
constexpr double BrightnessOfDarkText = 0.5; // of the fill, from 0 to 1, above which a text is dark
const QColor DarkText(20, 24, 32);
const QColor LightText(250, 250, 250);
constexpr int FewSites = 2000; // that are looked at one by one
constexpr int PlateOpacity = 225; // of 255

// Elements without an id in the drawing have a negative one.
bool mayBeSite(const Primitive& primitive)
{
    return primitive.elementId >= 0 && (primitive.kind == Primitive::Rect || primitive.kind == Primitive::Polygon);
}

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

// Returns what the letters of a text cover, in scene coordinates, turned with the text.
QRectF lettersOf(const Primitive& text, const TextLabels& labels)
{
    const QRectF upright = QFontMetricsF(labels.font(text.label->font)).tightBoundingRect(text.label->text);
    QTransform transform = QTransform::fromTranslate(text.a, text.b);
    transform.scale(paintrules::TextItemScale, paintrules::TextItemScale);
    return transform.rotate(text.c).mapRect(upright);
}

// Returns what the letters of the drawing's own texts cover of an area, in scene coordinates.
std::vector<QRectF> labelsIn(ZelGraphicsScene& scene, const QRectF& area)
{
    std::vector<QRectF> labels;
    DisplayList& list = scene.elements().displayList();
    for (int place : list.placesIn(area)) {
        const Primitive& primitive = list.primitive(place);
        if (primitive.kind != Primitive::Text || !scene.isLayerVisible(list.layers()[primitive.layer]))
            continue;
        const QRectF letters = lettersOf(primitive, list.labels());
        if (letters.intersects(area))
            labels.push_back(letters);
    }
    return labels;
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
    m_names.clear();
    update();
}

// Any element with an id of its own and an area may be a site. Which of them are is asked when they are in sight. Only
// the highest are listed, because of more than a few the view's area is searched.
void NameLayer::collect(ZelGraphicsScene& scene)
{
    const DisplayList& list = scene.elements().displayList();
    if (m_listVersion == list.version())
        return;
    m_listVersion = list.version();
    m_sites.clear();
    for (int place = 0; place < list.size(); ++place) {
        if (mayBeSite(list.primitive(place)))
            m_sites.push_back(place);
    }
    const auto isHigher = [&list](int a, int b) { return list.primitive(a).d > list.primitive(b).d; };
    const auto end = m_sites.begin() + std::min<std::ptrdiff_t>(FewSites + 1, m_sites.size());
    std::partial_sort(m_sites.begin(), end, m_sites.end(), isHigher);
    m_sites.erase(end, m_sites.end());
    m_sites.shrink_to_fit();
}

void NameLayer::measure()
{
    if (m_height > 0 && m_font == view()->font())
        return;
    m_font = view()->font();
    m_height = QFontMetricsF(m_font).height();
    m_widths.clear();
    m_names.clear();
}

// Returns the places of those elements at least as high as `lowest` (scene units) that may touch an area. At most
// scales they are few of all elements, or the area has few elements.
const std::vector<int>& NameLayer::sitesIn(ZelGraphicsScene& scene, const QRectF& area, double lowest)
{
    DisplayList& list = scene.elements().displayList();
    const auto isHigher = [&](int place) { return list.primitive(place).d >= lowest; };
    const auto end = std::partition_point(m_sites.begin(), m_sites.end(), isHigher);
    m_found.clear();
    const auto takeOver = [&](int place) {
        if (list.primitive(place).rect().intersects(area))
            m_found.push_back(place);
    };
    if (end - m_sites.begin() <= FewSites) {
        std::for_each(m_sites.begin(), end, takeOver);
        return m_found;
    }
    for (int place : list.placesIn(area)) {
        if (mayBeSite(list.primitive(place)) && isHigher(place))
            takeOver(place);
    }
    return m_found;
}

double NameLayer::widthOf(const QString& text)
{
    auto width = m_widths.find(text);
    if (width == m_widths.end())
        width = m_widths.insert(text, QFontMetricsF(m_font).horizontalAdvance(text));
    return *width;
}

const NameLayer::Name& NameLayer::nameOf(int site)
{
    auto name = m_names.find(site);
    if (name == m_names.end()) {
        const QString resource = PlanQuery(m_engine).occupant(site);
        const QString texts[] = {resource.section(QLatin1Char('/'), -2), resource.section(QLatin1Char('/'), -1)};
        name = m_names.insert(site, {{texts[0], texts[1]}, {widthOf(texts[0]), widthOf(texts[1])}});
    }
    return *name;
}

void NameLayer::paint(QPainter& painter, const QRect& exposed)
{
    auto* scene = view() ? qobject_cast<ZelGraphicsScene*>(view()->scene()) : nullptr;
    if (!scene || !dynamic_cast<zelplanengine*>(&m_engine))
        return;
    collect(*scene);
    measure();
    const QTransform transform = sceneToPicture();
    const QRectF area = transform.inverted().mapRect(QRectF(exposed));
    painter.setFont(m_font);
    for (int place : sitesIn(*scene, area, m_height / transform.m11())) {
        const DisplayList& list = scene->elements().displayList();
        const Primitive& primitive = list.primitive(place);
        if (primitive.c * transform.m11() > 2 * NameMargin && scene->elements().outlineOf(primitive.elementId) == place)
            paintName(painter, *scene, primitive.elementId, primitive.rect());
    }
}

void NameLayer::paintName(QPainter& painter, ZelGraphicsScene& scene, int id, const QRectF& area)
{
    const QRectF site = sceneToPicture().mapRect(area);
    const Name& name = nameOf(id);
    if (name.texts[1].isEmpty() || site.width() < name.widths[1] + 2 * NameMargin)
        return;
    const std::optional<QColor> fill = shownFill(scene, outlineOf(scene, id));
    if (!fill)
        return;
    std::vector<QRectF> labels = labelsIn(scene, area);
    for (QRectF& label : labels)
        label = sceneToPicture().mapRect(label);
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
