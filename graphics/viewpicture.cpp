// SPDX-License-Identifier: MIT
#include "graphics/viewpicture.h"

#include "graphics/elements/drawingcontroller.h"
#include "graphics/elements/elementidset.h"
#include "graphics/elements/enlarged.h"
#include "graphics/sceneelements.h"
#include "graphics/screenpixels.h"
#include "graphics/zelgraphicsscene.h"

#include <QBackingStore>
#include <QElapsedTimer>
#include <QGraphicsView>
#include <QPaintEngine>
#include <QPainter>

#include <cmath>

namespace mirn::zelchipview {

namespace {

// Up to this many changed elements are repainted one by one; more of them as one bounding rectangle.
constexpr std::size_t MostUpdatedOneByOne = 16;

constexpr int PaintMargin = 2; // pixels that pens and antialiasing reach beyond an element

// Keeping a picture takes some tenths of a millisecond; more than this, and it is kept nevertheless.
constexpr double LongestNotKept = 1; // milliseconds of painting

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
    if (!m_pictures)
        return;
    m_pictures->invalidate(places);
    m_quick->invalidate(places);
}

void ViewPicture::repaintAll()
{
    forgetAll();
    m_view.viewport()->update();
}

void ViewPicture::repaintStates()
{
    if (m_pictures) {
        m_pictures->invalidateStates();
        m_quick->invalidate();
    }
    m_view.viewport()->update();
}

void ViewPicture::forgetAll()
{
    if (!m_pictures)
        return;
    m_pictures->invalidate();
    m_quick->invalidate();
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

void ViewPicture::noteZoom(bool isByUser)
{
    if (m_quick)
        isByUser ? m_quick->allow() : m_quick->stop();
}

// QPainter cuts off a slanted shape at the picture's border, which changes pixels all along the shape.
void ViewPicture::noteScroll()
{
    if (!m_view.scene()) // it may be half destroyed, and the view has let go of it
        return;
    if (!m_pictures || !m_scene || m_view.scene() != m_scene || !m_scene->elements().canPaintFromList())
        return;
    const ViewCanvas::Scene scene = currentScene();
    m_pictures->takeOverStates(scene);
    const bool isAll = scene.isScaled || m_pictures->shown().needsAll(scene);
    m_view.viewport()->update(isAll ? QRegion(m_view.viewport()->rect()) : m_pictures->shown().scrollTo(scene));
}

bool ViewPicture::isSettled() const
{
    return !m_quick || m_quick->isExact();
}

// A picture that a host asks for, by grab() or render(), is exact.
bool ViewPicture::isOnScreen(const QPainter& painter) const
{
    QBackingStore* store = m_view.viewport()->backingStore();
    return store && painter.paintEngine() && painter.paintEngine()->paintDevice() == store->paintDevice();
}

ViewCanvas::Scene ViewPicture::currentScene() const
{
    const QWidget& viewport = *m_view.viewport();
    const auto& [ratio, start] = m_device;
    ViewCanvas::Scene scene = canvasScene(m_view, *m_scene);
    scene.toPicture = m_view.viewportTransform() * QTransform(ratio, 0, 0, ratio, start.x(), start.y());
    scene.size = QSize(static_cast<int>(std::ceil(start.x() + viewport.width() * ratio)),
        static_cast<int>(std::ceil(start.y() + viewport.height() * ratio)));
    scene.layers = m_scene->getVisibleLayers();
    scene.textPen = m_textPen;
    scene.viewFont = m_font;
    scene.drawBackground = m_drawBackground;
    scene.isScaled = ratio != 1.0 || !start.isNull();
    return scene;
}

void ViewPicture::makePictures()
{
    if (m_pictures)
        return;
    m_pictures = std::make_unique<StatePictures>(m_scene->elements());
    m_quick = std::make_unique<QuickPicture>(m_scene->elements().displayList(),
        QuickPicture::Owner{
            [this] { return m_scene && m_view.scene() == m_scene && m_scene->elements().canPaintFromList(); },
            [this] { return currentScene(); }, [this](const QRegion& part) { updatePart(part); },
            [this](std::unique_ptr<ViewCanvas>& next) { exchange(next); }});
}

void ViewPicture::paint(QPainter& painter, const QRegion& exposed, const ViewCanvas::Background& drawBackground)
{
    makePictures();
    const QTransform device = painter.deviceTransform();
    m_device = {device.m11(), QPointF(device.dx() - std::floor(device.dx()), device.dy() - std::floor(device.dy()))};
    m_drawBackground = drawBackground;
    m_textPen = painter.pen();
    m_font = painter.font();
    m_quick->setThreads(m_threads);
    const auto& [ratio, start] = m_device;
    const ViewCanvas::Scene scene = currentScene();
    m_pictures->takeOverStates(scene);
    m_pictures->shown().setThreads(m_threads);
    bool isApproximate = isOnScreen(painter) && m_quick->isWorthwhile(m_pictures->shown(), scene);
    if (std::unique_ptr<ViewCanvas>* ready = isApproximate ? m_quick->readyFor(scene) : nullptr) {
        m_pictures->exchange(*ready, scene.states);
        isApproximate = false;
    }
    if (isApproximate) {
        painter.save();
        painter.translate(-start / ratio);
        painter.scale(1 / ratio, 1 / ratio);
        m_quick->draw(painter, m_pictures->shown(), scene);
        painter.restore();
    } else {
        if (!paintOnScreen(painter, scene))
            drawKept(painter, exposed, scene);
        if (isOnScreen(painter) && m_quick->becomeExact() && m_settled)
            QMetaObject::invokeMethod(m_quick.get(), m_settled, Qt::QueuedConnection);
    }
    painter.setWorldTransform(m_view.viewportTransform());
}

void ViewPicture::drawKept(QPainter& painter, const QRegion& exposed, const ViewCanvas::Scene& scene)
{
    QElapsedTimer clock;
    clock.start();
    if (m_pictures->update(scene))
        m_quick->noteFullRepaint(millisecondsOf(clock), m_pictures->shown());
    const auto& [ratio, start] = m_device;
    QImage* window = isOnScreen(painter) ? writableWindow(painter) : nullptr;
    if (scene.isScaled) {
        m_pictures->shown().drawOn(painter, -start / ratio, ratio);
    } else if (window) { // quicker, because QPainter clips each part row by row
        const QTransform toWindow = painter.deviceTransform();
        const QPoint corner(qRound(toWindow.dx()), qRound(toWindow.dy()));
        const QRegion painted = exposed & painter.paintEngine()->systemClip().translated(-corner);
        m_pictures->shown().copyParts(*window, corner, painted & window->rect().translated(-corner));
    } else {
        m_pictures->shown().drawParts(painter, exposed);
    }
}

// Most zooms are followed by further ones, so the first picture at a scale is painted into the window itself if that is
// quick. With whatever changes or moves next, all is painted once more, to be kept.
bool ViewPicture::isWorthKeeping(const ViewCanvas::Scene& scene) const
{
    const double cost = m_quick->expectedCost(scene);
    return cost <= 0 || cost > LongestNotKept || scene.toPicture.m11() == m_notKept.m11();
}

// Returns false, and does nothing, if the picture is to be kept.
bool ViewPicture::paintOnScreen(const QPainter& painter, const ViewCanvas::Scene& scene)
{
    const auto& [ratio, start] = m_device;
    const bool isOnPixels = start.isNull() && ratio == std::floor(ratio);
    if (!isOnPixels || !m_pictures->shown().needsAll(scene) || isWorthKeeping(scene) || !isOnScreen(painter))
        return false;
    const QTransform toWindow = painter.deviceTransform();
    ScreenPixels pixels(painter, QRect(QPoint(qRound(toWindow.dx()), qRound(toWindow.dy())), scene.size));
    if (pixels.image().isNull())
        return false;
    QElapsedTimer clock;
    clock.start();
    m_pictures->paintInto(pixels.image(), scene);
    m_quick->noteCost(millisecondsOf(clock), scene.toPicture);
    m_notKept = scene.toPicture;
    return true;
}

// In pixels of the picture.
void ViewPicture::updatePart(const QRegion& part)
{
    const auto& [ratio, start] = m_device;
    const QTransform toViewport
        = QTransform::fromTranslate(-start.x(), -start.y()) * QTransform::fromScale(1 / ratio, 1 / ratio);
    const QRect all = m_view.viewport()->rect();
    m_view.viewport()->update(part.isEmpty() ? all : toViewport.mapRect(QRectF(part.boundingRect())).toAlignedRect());
}

void ViewPicture::exchange(std::unique_ptr<ViewCanvas>& next)
{
    m_pictures->exchange(next, currentScene().states);
    m_view.viewport()->update();
}

} // namespace mirn::zelchipview
