// SPDX-License-Identifier: MIT
#include "graphics/zelgraphicsview.h"

#include "chipview/zelchipviewdatabase.h"
#include "graphics/attributeregistry.h"
#include "graphics/elementidset.h"
#include "graphics/grown.h"
#include "graphics/layervisibility.h"
#include "graphics/painting/viewcanvas.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsscene.h"
#include "platform/contract/zelgraphicrecords.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QGraphicsItem>
#include <QMenu>
#include <QMouseEvent>
#include <QPaintEngine>
#include <QPaintEvent>
#include <QPainter>
#include <QRubberBand>
#include <QScrollBar>

#include <algorithm>
#include <cmath>
#include <utility>

namespace mirn::zelchipview {

namespace {

// A rubber band counts when both sides are larger than this, in scene units; else the gesture was a click.
constexpr double SmallestBand = 2.0;

// Keeps a transform that is a whole number of steps from being counted one short.
constexpr double StepTolerance = 1e-9;

constexpr double LargestCount = 1e9; // of steps

// Up to this many changed spots are painted for themselves, more of them with all that lies between.
constexpr std::size_t MostUpdatedOneByOne = 16;

constexpr int PaintMargin = 2; // pixels that pens and smoothing reach beyond an element

ZELChipViewDatabase& database()
{
    return *ZELChipViewDatabase::getInstance();
}

bool isBand(const QRectF& rect)
{
    return rect.width() > SmallestBand && rect.height() > SmallestBand;
}

} // namespace

ZelGraphicsView::ZelGraphicsView(QGraphicsScene* scene, QWidget* parent)
    : QGraphicsView(scene, parent)
    , m_scene(qobject_cast<ZelGraphicsScene*>(scene))
    , m_rubberBand(new QRubberBand(QRubberBand::Rectangle, this))
{
    m_rubberBand->hide();
    setCursor(Qt::ArrowCursor);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent); // paints its background as well
}

ZelGraphicsView::~ZelGraphicsView() = default;

void ZelGraphicsView::setCurrentScale(double scale)
{
    QGraphicsView::scale(scale, scale);
    setScaleAndLayers(scale);
}

void ZelGraphicsView::zoomIn()
{
    if (!m_scene)
        return;
    const zel_Parameter& parameter = m_scene->globalParameter();
    if (m_currentScale + parameter.scaleStep > parameter.maximumScale)
        return;
    QGraphicsView::scale(1 + parameter.scaleStep, 1 + parameter.scaleStep);
    setScaleAndLayers(m_currentScale + parameter.scaleStep);
}

void ZelGraphicsView::zoomOut()
{
    if (!m_scene)
        return;
    const zel_Parameter& parameter = m_scene->globalParameter();
    if (parameter.minimumScale > m_currentScale - parameter.scaleStep)
        return;
    QGraphicsView::scale(1 / (1 + parameter.scaleStep), 1 / (1 + parameter.scaleStep));
    setScaleAndLayers(m_currentScale - parameter.scaleStep);
}

void ZelGraphicsView::zoomFit()
{
    if (!m_scene)
        return;
    const zel_Parameter& parameter = m_scene->globalParameter();
    const double factor = std::pow(1 / (1 + parameter.scaleStep), getScaleTimes());
    if (factor != 1.0)
        QGraphicsView::scale(factor, factor);
    setScaleAndLayers(parameter.initialScale);
}

int ZelGraphicsView::getScaleTimes() const
{
    const double step = m_scene ? m_scene->globalParameter().scaleStep : 0.0;
    const double m11 = transform().m11();
    if (!(step > 0) || !(m11 > 0))
        return 0;
    const double times = std::clamp(std::log(m11) / std::log(1 + step), -LargestCount, LargestCount);
    return times < 0 ? -static_cast<int>(-times + StepTolerance) : static_cast<int>(times + StepTolerance);
}

void ZelGraphicsView::zoomTo(QList<QGraphicsItem*>* items)
{
    if (!m_scene)
        return;
    const QList<QGraphicsItem*>& targets = items ? *items : m_scene->zoomItems();
    if (targets.isEmpty() || !targets.first())
        return;
    QRectF area;
    for (const QGraphicsItem* item : targets) {
        if (item)
            area |= item->mapRectToScene(item->boundingRect());
    }
    fitInView(area, Qt::KeepAspectRatio);
    setScaleAndLayers(getScaleTimes() * m_scene->globalParameter().scaleStep + 1.0);
}

void ZelGraphicsView::setScaleAndLayers(double scale)
{
    m_currentScale = scale;
    calculateVisibleLayers();
}

void ZelGraphicsView::calculateVisibleLayers()
{
    if (!m_scene)
        return;
    const QList<int> layers = visibleLayersAt(m_scene->globalParameter().layerRanges, m_currentScale);
    if (layers == m_visibleLayers)
        return;
    m_visibleLayers = layers;
    m_scene->synchroniseShownElements();
    // They paint by the layers of the scene's first view, which may be this one.
    const QList<QGraphicsView*> views = m_scene->views();
    for (QGraphicsView* view : views)
        view->viewport()->update();
}

void ZelGraphicsView::scrollBy(double dx, double dy)
{
    if (dx == 0)
        verticalScrollBar()->triggerAction(
            dy < 0 ? QAbstractSlider::SliderSingleStepSub : QAbstractSlider::SliderSingleStepAdd);
    else if (dy == 0)
        horizontalScrollBar()->triggerAction(
            dx < 0 ? QAbstractSlider::SliderSingleStepSub : QAbstractSlider::SliderSingleStepAdd);
}

void ZelGraphicsView::changeMouseCursor()
{
    switch (database().getMouseMode()) {
    case ACTION_ZOOM:
        setCursor(Qt::CrossCursor);
        break;
    case ACTION_PAN:
        setCursor(Qt::OpenHandCursor);
        break;
    default:
        setCursor(Qt::ArrowCursor);
    }
}

void ZelGraphicsView::mousePressEvent(QMouseEvent* event)
{
    if (m_scene && event->button() == Qt::LeftButton) {
        m_pressPosition = event->pos();
        if (database().getMouseMode() == ACTION_PAN) {
            m_horizontalScrollStart = horizontalScrollBar()->value();
            m_verticalScrollStart = verticalScrollBar()->value();
            m_panning = true;
        } else {
            m_rubberBand->setGeometry(QRect(m_pressPosition, QSize()));
            m_rubberBand->show();
        }
    }
    QGraphicsView::mousePressEvent(event);
}

void ZelGraphicsView::mouseMoveEvent(QMouseEvent* event)
{
    if (m_panning && m_scene && database().getMouseMode() == ACTION_PAN) {
        panTo(event->pos());
    } else {
        const QPoint other = event->pos();
        const QPoint topLeft(qMin(m_pressPosition.x(), other.x()), qMin(m_pressPosition.y(), other.y()));
        const QPoint bottomRight(qMax(m_pressPosition.x(), other.x()), qMax(m_pressPosition.y(), other.y()));
        m_rubberBand->setGeometry(QRect(topLeft, bottomRight));
    }
    QGraphicsView::mouseMoveEvent(event);
}

void ZelGraphicsView::panTo(QPoint position)
{
    const QPoint way = m_pressPosition - position;
    if (way.manhattanLength() < QApplication::startDragDistance())
        return;
    horizontalScrollBar()->setValue(way.x() + m_horizontalScrollStart);
    verticalScrollBar()->setValue(way.y() + m_verticalScrollStart);
}

void ZelGraphicsView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        // Deliberately the press handler: items see the other buttons' releases as presses.
        QGraphicsView::mousePressEvent(event);
        return;
    }
    m_rubberBand->hide();
    if (std::exchange(m_panning, false) || !m_scene)
        return;
    switch (database().getMouseMode()) {
    case ACTION_SELECT:
        finishSelecting(event->pos());
        break;
    case ACTION_ZOOM:
        finishZooming(event->pos());
        break;
    default:
        break;
    }
}

QRectF ZelGraphicsView::rubberBandInScene() const
{
    return mapToScene(m_rubberBand->geometry()).boundingRect().normalized();
}

// The topmost element at a viewport position that is not a text; null where there is none.
QGraphicsItem* ZelGraphicsView::elementToSelectAt(QPoint position) const
{
    QGraphicsItem* best = nullptr;
    const QList<QGraphicsItem*> candidates = items(position);
    for (QGraphicsItem* item : candidates) {
        const int loadNumber = item->data(ZEL_GRAPHIC_ITEM_Attribute_KEY).toInt();
        const ZELGraphicItemAttribute* attribute = database().attributes().find(loadNumber);
        if (attribute && attribute->kind != ZEL_GRAPHIC_TEXT && (!best || item->zValue() > best->zValue()))
            best = item;
    }
    return best;
}

void ZelGraphicsView::finishSelecting(QPoint position)
{
    const QRectF band = rubberBandInScene();
    m_scene->clearSelectedItems();
    if (isBand(band))
        database().addSelctedItems(m_scene->elementsTouching(band));
    else
        m_scene->addSelectedItem(elementToSelectAt(position));
}

void ZelGraphicsView::finishZooming(QPoint position)
{
    const QRectF band = rubberBandInScene();
    m_scene->clearSelectedItems();
    QList<QGraphicsItem*> targets;
    if (isBand(band))
        targets = m_scene->items(band, Qt::IntersectsItemShape);
    else
        targets.append(m_scene->itemAt(mapToScene(position), viewportTransform()));
    zoomTo(&targets);
}

void ZelGraphicsView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (m_scene)
        database().showDynamicDlg(event->pos(), DYNAMIC_DIALOG_DCU);
}

void ZelGraphicsView::contextMenuEvent(QContextMenuEvent* event)
{
    // The menu takes the release of a button that is still down.
    m_rubberBand->hide();
    if (!m_scene)
        return;
    if (QMenu* menu = database().getViewFilterMenu())
        menu->exec(event->globalPos());
}

void ZelGraphicsView::dragLeaveEvent(QDragLeaveEvent* event)
{
    QGraphicsView::dragLeaveEvent(event);
}

// When a dialog opens while a button is down, Qt forgets the button and does not deliver its release.
void ZelGraphicsView::focusOutEvent(QFocusEvent* event)
{
    if (event->reason() == Qt::ActiveWindowFocusReason) {
        m_rubberBand->hide();
        m_panning = false;
    }
    QGraphicsView::focusOutEvent(event);
}

void ZelGraphicsView::repaintPlaces(const std::vector<int>& places)
{
    if (!m_scene)
        return;
    forgetPlaces(places);
    const DisplayList& list = m_scene->displayList();
    const QTransform toViewport = viewportTransform();
    const QRectF shown(viewport()->rect());
    QRegion changed;
    QRect around;
    for (int place : places) {
        if (place < 0)
            continue;
        // The kept picture may be of another scale or size than what stands on the screen.
        const QRect part = (grown(toViewport.mapRect(list.boundsOf(place)), PaintMargin) & shown).toAlignedRect();
        around |= part;
        if (places.size() <= MostUpdatedOneByOne)
            changed |= part;
    }
    if (!around.isEmpty())
        viewport()->update(places.size() <= MostUpdatedOneByOne ? changed : QRegion(around));
}

void ZelGraphicsView::forgetPlaces(const std::vector<int>& places)
{
    for (int place : places) {
        if (m_canvas && place >= 0)
            m_canvas->invalidate(place);
    }
}

void ZelGraphicsView::repaintAll()
{
    forgetPicture();
    viewport()->update();
}

void ZelGraphicsView::forgetPicture()
{
    if (m_canvas)
        m_canvas->invalidate();
}

void ZelGraphicsView::paintEvent(QPaintEvent* event)
{
    if (!m_scene) {
        paintByItems(event);
        return;
    }
    m_scene->takeOverAttributes(mapToScene(event->rect()).boundingRect(), this);
    // For hosts that add elements by themselves: those found here were not shown before.
    m_scene->synchroniseShownElements();
    QPainter painter(viewport());
    if (paintsByItself(painter)) {
        paintPicture(painter);
        return;
    }
    painter.end();
    paintByItems(event);
}

void ZelGraphicsView::paintByItems(QPaintEvent* event)
{
    if (viewport()->testAttribute(Qt::WA_OpaquePaintEvent) && viewport()->autoFillBackground())
        QPainter(viewport()).fillRect(event->rect(), viewport()->palette().brush(viewport()->backgroundRole()));
    QGraphicsView::paintEvent(event);
}

// The drawing as it was loaded, on a widget or an image. All else is left to Qt, item by item.
bool ZelGraphicsView::paintsByItself(const QPainter& painter) const
{
    const QTransform device = painter.deviceTransform();
    return scene() == m_scene && m_scene->isPlain() && painter.paintEngine()
        && painter.paintEngine()->type() == QPaintEngine::Raster && device.type() <= QTransform::TxScale
        && device.m11() == device.m22() && device.m11() > 0
        && viewport()->palette().brush(viewport()->backgroundRole()).isOpaque()
        && viewport()->palette().brush(viewport()->backgroundRole()).style() == Qt::SolidPattern;
}

void ZelGraphicsView::paintPicture(QPainter& painter)
{
    DisplayList& list = m_scene->displayList();
    if (!m_canvas)
        m_canvas = std::make_unique<ViewCanvas>(list);
    // The widget may begin in the middle of a device pixel.
    const QTransform device = painter.deviceTransform();
    const qreal ratio = device.m11();
    const QPointF start(device.dx() - std::floor(device.dx()), device.dy() - std::floor(device.dy()));
    ViewCanvas::Scene scene;
    scene.toPicture = viewportTransform() * QTransform(ratio, 0, 0, ratio, start.x(), start.y());
    scene.size = QSize(static_cast<int>(std::ceil(start.x() + viewport()->width() * ratio)),
        static_cast<int>(std::ceil(start.y() + viewport()->height() * ratio)));
    scene.layers = m_scene->getVisibleLayers();
    const bool isFiltered = database().isFilterEnable();
    scene.states
        = {&database().selectedIds(), &database().highlightedIds(), isFiltered ? &database().filteredIds() : nullptr};
    scene.listVersion = list.version();
    scene.hints = renderHints();
    scene.textPen = painter.pen();
    scene.viewFont = painter.font();
    scene.background = viewport()->palette().color(viewport()->backgroundRole());
    scene.backgroundBrush = backgroundBrush().style() != Qt::NoBrush ? backgroundBrush() : m_scene->backgroundBrush();
    scene.drawBackground = [this](QPainter& on, const QRectF& area) { drawBackground(&on, area); };
    scene.isScaled = ratio != 1.0 || !start.isNull();
    m_canvas->update(scene);
    m_canvas->drawOn(painter, -start / ratio, ratio);
    painter.setWorldTransform(viewportTransform());
    drawForeground(&painter, mapToScene(viewport()->rect()).boundingRect());
}

} // namespace mirn::zelchipview
