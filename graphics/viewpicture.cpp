// SPDX-License-Identifier: MIT
#include "graphics/viewpicture.h"

#include "graphics/elements/drawingcontroller.h"
#include "graphics/elements/elementidset.h"
#include "graphics/elements/enlarged.h"
#include "graphics/sceneelements.h"
#include "graphics/zelgraphicsscene.h"

#include <QGraphicsView>
#include <QPaintEngine>
#include <QPainter>

#include <cmath>

namespace mirn::zelchipview {

namespace {

// Up to this many changed elements are repainted one by one; more of them as one bounding rectangle.
constexpr std::size_t MostUpdatedOneByOne = 16;

constexpr int PaintMargin = 2; // pixels that pens and antialiasing reach beyond an element

} // namespace

ViewCanvas::Scene canvasScene(const QGraphicsView& view, ZelGraphicsScene& scene)
{
    const QWidget& viewport = *view.viewport();
    DrawingController& controller = DrawingController::current();
    ViewCanvas::Scene look;
    look.states = {&controller.selectedIds(), &controller.highlightedIds(),
        controller.isFilterEnable() ? &controller.filteredIds() : nullptr};
    look.listVersion = scene.elements().displayList().version();
    look.hints = view.renderHints();
    look.textPen = viewport.palette().color(viewport.foregroundRole());
    look.viewFont = viewport.font();
    look.background = viewport.palette().color(viewport.backgroundRole());
    look.backgroundBrush
        = view.backgroundBrush().style() != Qt::NoBrush ? view.backgroundBrush() : scene.backgroundBrush();
    return look;
}

ViewPicture::ViewPicture(QGraphicsView& view, ZelGraphicsScene* scene)
    : m_view(view)
    , m_scene(scene)
{
    if (m_scene)
        m_scene->elements().addPicture(&m_view, this);
}

ViewPicture::~ViewPicture()
{
    if (m_scene)
        m_scene->elements().removePicture(this);
}

void ViewPicture::repaintPlaces(const std::vector<int>& places)
{
    if (!m_scene)
        return;
    invalidateElements(places);
    const DisplayList& list = m_scene->elements().displayList();
    const QTransform toViewport = m_view.viewportTransform();
    const QRectF shown(m_view.viewport()->rect());
    QRegion changed;
    QRect around;
    for (int place : places) {
        if (place < 0)
            continue;
        // The cached picture may have another scale or size than the viewport, so its dirty parts cannot be used here.
        const QRect part = (enlarged(toViewport.mapRect(list.boundsOf(place)), PaintMargin) & shown).toAlignedRect();
        around |= part;
        if (places.size() <= MostUpdatedOneByOne)
            changed |= part;
    }
    if (!around.isEmpty())
        m_view.viewport()->update(places.size() <= MostUpdatedOneByOne ? changed : QRegion(around));
}

void ViewPicture::invalidateElements(const std::vector<int>& places)
{
    for (int place : places) {
        if (m_canvas && place >= 0)
            m_canvas->invalidate(place);
    }
}

void ViewPicture::repaintAll()
{
    forgetAll();
    m_view.viewport()->update();
}

void ViewPicture::forgetAll()
{
    if (m_canvas)
        m_canvas->invalidate();
}

bool ViewPicture::canPaintOn(const QPainter& painter) const
{
    const QWidget* viewport = m_view.viewport();
    const QBrush& background = viewport->palette().brush(viewport->backgroundRole());
    const QTransform device = painter.deviceTransform();
    return m_scene && m_view.scene() == m_scene && m_scene->elements().canPaintFromList() && painter.paintEngine()
        && painter.paintEngine()->type() == QPaintEngine::Raster && device.type() <= QTransform::TxScale
        && device.m11() == device.m22() && device.m11() > 0 && background.isOpaque()
        && background.style() == Qt::SolidPattern;
}

void ViewPicture::paint(QPainter& painter, const QRegion& exposed, const ViewCanvas::Background& drawBackground)
{
    DisplayList& list = m_scene->elements().displayList();
    if (!m_canvas)
        m_canvas = std::make_unique<ViewCanvas>(list);
    const QWidget& viewport = *m_view.viewport();
    // The widget's origin may lie between two device pixels.
    const QTransform device = painter.deviceTransform();
    const qreal ratio = device.m11();
    const QPointF start(device.dx() - std::floor(device.dx()), device.dy() - std::floor(device.dy()));
    ViewCanvas::Scene scene = canvasScene(m_view, *m_scene);
    scene.toPicture = m_view.viewportTransform() * QTransform(ratio, 0, 0, ratio, start.x(), start.y());
    scene.size = QSize(static_cast<int>(std::ceil(start.x() + viewport.width() * ratio)),
        static_cast<int>(std::ceil(start.y() + viewport.height() * ratio)));
    scene.layers = m_scene->getVisibleLayers();
    scene.textPen = painter.pen();
    scene.viewFont = painter.font();
    scene.drawBackground = drawBackground;
    scene.isScaled = ratio != 1.0 || !start.isNull();
    m_canvas->setThreads(m_threads);
    m_canvas->update(scene);
    if (scene.isScaled)
        m_canvas->drawOn(painter, -start / ratio, ratio);
    else
        m_canvas->drawParts(painter, exposed);
    painter.setWorldTransform(m_view.viewportTransform());
}

} // namespace mirn::zelchipview
