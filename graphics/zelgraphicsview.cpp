// SPDX-License-Identifier: MIT
#include "graphics/zelgraphicsview.h"

#include "graphics/elements/attributeregistry.h"
#include "graphics/elements/drawingcontroller.h"
#include "graphics/elements/elementidset.h"
#include "graphics/elements/layervisibility.h"
#include "graphics/sceneelements.h"
#include "graphics/viewpicture.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelviewlayer.h"
#include "platform/contract/zelgraphicrecords.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QGraphicsItem>
#include <QMenu>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QRubberBand>
#include <QScrollBar>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace mirn::zelchipview {

namespace {

// A rubber band counts only if both sides are longer than this, in scene units; otherwise the gesture was a click.
constexpr double SmallestBand = 2.0;

DrawingController& viewController()
{
    return DrawingController::current();
}

bool isBand(const QRectF& rect)
{
    return rect.width() > SmallestBand && rect.height() > SmallestBand;
}

} // namespace

struct ZelGraphicsView::Parts
{
    Parts(ZelGraphicsView& view, ZelGraphicsScene* shown)
        : scene(shown)
        , picture(view, shown)
        , rubberBand(new QRubberBand(QRubberBand::Rectangle, &view))
    { }

    const QPointer<ZelGraphicsScene> scene;
    ViewPicture picture;
    double currentScale = 1.0;
    QRubberBand* const rubberBand;
    QPoint pressPosition;
    int horizontalScrollStart = 0;
    int verticalScrollStart = 0;
    bool isPanning = false;
    bool isUserZooming = false;
};

ZelGraphicsView::ZelGraphicsView(QGraphicsScene* scene, QWidget* parent)
    : QGraphicsView(scene, parent)
    , m_parts(std::make_unique<Parts>(*this, qobject_cast<ZelGraphicsScene*>(scene)))
{
    m_parts->picture.whenSettled([this] { Q_EMIT becameExact(); });
    m_parts->rubberBand->hide();
    setCursor(Qt::ArrowCursor);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent); // paintEvent() fills the background itself
}

ZelGraphicsView::~ZelGraphicsView() = default;

double ZelGraphicsView::currentScale() const
{
    return m_parts->currentScale;
}

QList<int>& ZelGraphicsView::getVisibleLayers()
{
    return m_parts->picture.visibleLayers();
}

void ZelGraphicsView::setCurrentScale(double scale)
{
    QGraphicsView::scale(scale, scale);
    setScaleAndLayers(scale);
}

void ZelGraphicsView::zoomIn()
{
    if (!m_parts->scene)
        return;
    const zel_Parameter& parameter = m_parts->scene->globalParameter();
    if (m_parts->currentScale + parameter.scaleStep > parameter.maximumScale)
        return;
    QGraphicsView::scale(1 + parameter.scaleStep, 1 + parameter.scaleStep);
    setScaleAndLayers(m_parts->currentScale + parameter.scaleStep);
}

void ZelGraphicsView::zoomOut()
{
    if (!m_parts->scene)
        return;
    const zel_Parameter& parameter = m_parts->scene->globalParameter();
    if (parameter.minimumScale > m_parts->currentScale - parameter.scaleStep)
        return;
    QGraphicsView::scale(1 / (1 + parameter.scaleStep), 1 / (1 + parameter.scaleStep));
    setScaleAndLayers(m_parts->currentScale - parameter.scaleStep);
}

void ZelGraphicsView::zoomFit()
{
    if (!m_parts->scene)
        return;
    const zel_Parameter& parameter = m_parts->scene->globalParameter();
    const double factor = std::pow(1 / (1 + parameter.scaleStep), getScaleTimes());
    if (factor != 1.0)
        QGraphicsView::scale(factor, factor);
    setScaleAndLayers(parameter.initialScale);
}

int ZelGraphicsView::getScaleTimes() const
{
    return m_parts->scene ? wholeZoomSteps(transform().m11(), m_parts->scene->globalParameter().scaleStep) : 0;
}

void ZelGraphicsView::zoomTo(QList<QGraphicsItem*>* items)
{
    if (!m_parts->scene)
        return;
    const QList<QGraphicsItem*>& targets = items ? *items : m_parts->scene->zoomItems();
    if (targets.isEmpty() || !targets.first())
        return;
    QRectF area;
    for (const QGraphicsItem* item : targets) {
        if (item)
            area |= item->mapRectToScene(item->boundingRect());
    }
    fitInView(area, Qt::KeepAspectRatio);
    setScaleAndLayers(getScaleTimes() * m_parts->scene->globalParameter().scaleStep + 1.0);
}

void ZelGraphicsView::setScaleAndLayers(double scale)
{
    m_parts->currentScale = scale;
    m_parts->picture.noteZoom(m_parts->isUserZooming);
    calculateVisibleLayers();
}

void ZelGraphicsView::calculateVisibleLayers()
{
    if (!m_parts->scene)
        return;
    const QList<int> layers = visibleLayersAt(m_parts->scene->globalParameter().layerRanges, m_parts->currentScale);
    if (layers == m_parts->picture.visibleLayers())
        return;
    m_parts->picture.visibleLayers() = layers;
    m_parts->scene->elements().synchroniseShown();
    // All views use the layers of the scene's first view, which may be this one.
    const QList<QGraphicsView*> views = m_parts->scene->views();
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

void ZelGraphicsView::zoomApproximately(const std::function<void()>& zoom)
{
    m_parts->isUserZooming = true;
    zoom();
    m_parts->isUserZooming = false;
}

bool ZelGraphicsView::isExact() const
{
    return m_parts->picture.isSettled();
}

void ZelGraphicsView::setPaintThreads(int count)
{
    m_parts->picture.setThreads(std::max(count, 1));
}

int ZelGraphicsView::paintThreads() const
{
    return m_parts->picture.threads();
}

void ZelGraphicsView::changeMouseCursor()
{
    switch (viewController().getMouseMode()) {
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
    if (m_parts->scene && event->button() == Qt::LeftButton) {
        m_parts->pressPosition = event->pos();
        if (viewController().getMouseMode() == ACTION_PAN) {
            m_parts->horizontalScrollStart = horizontalScrollBar()->value();
            m_parts->verticalScrollStart = verticalScrollBar()->value();
            m_parts->isPanning = true;
        } else {
            m_parts->rubberBand->setGeometry(QRect(m_parts->pressPosition, QSize()));
            m_parts->rubberBand->show();
        }
    }
    QGraphicsView::mousePressEvent(event);
}

void ZelGraphicsView::mouseMoveEvent(QMouseEvent* event)
{
    if (m_parts->isPanning && m_parts->scene && viewController().getMouseMode() == ACTION_PAN) {
        panTo(event->pos());
    } else {
        const QPoint other = event->pos();
        const QPoint topLeft(qMin(m_parts->pressPosition.x(), other.x()), qMin(m_parts->pressPosition.y(), other.y()));
        const QPoint bottomRight(
            qMax(m_parts->pressPosition.x(), other.x()), qMax(m_parts->pressPosition.y(), other.y()));
        m_parts->rubberBand->setGeometry(QRect(topLeft, bottomRight));
    }
    QGraphicsView::mouseMoveEvent(event);
}

void ZelGraphicsView::panTo(QPoint position)
{
    const QPoint way = m_parts->pressPosition - position;
    if (way.manhattanLength() < QApplication::startDragDistance())
        return;
    horizontalScrollBar()->setValue(way.x() + m_parts->horizontalScrollStart);
    verticalScrollBar()->setValue(way.y() + m_parts->verticalScrollStart);
}

void ZelGraphicsView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        // The press handler is called on purpose: items receive the release of another button as a press.
        QGraphicsView::mousePressEvent(event);
        return;
    }
    m_parts->rubberBand->hide();
    if (std::exchange(m_parts->isPanning, false) || !m_parts->scene)
        return;
    switch (viewController().getMouseMode()) {
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
    return mapToScene(m_parts->rubberBand->geometry()).boundingRect().normalized();
}

// Returns the topmost element at a viewport position that is not a text, or null.
QGraphicsItem* ZelGraphicsView::elementToSelectAt(QPoint position) const
{
    QGraphicsItem* best = nullptr;
    m_parts->scene->makeItemsIn(mapToScene(QRect(position, QSize(1, 1))).boundingRect());
    const QList<QGraphicsItem*> candidates = items(position);
    for (QGraphicsItem* item : candidates) {
        const int loadNumber = item->data(ZEL_GRAPHIC_ITEM_Attribute_KEY).toInt();
        const ZELGraphicItemAttribute* attribute = viewController().attributes().find(loadNumber);
        if (attribute && attribute->kind != ZEL_GRAPHIC_TEXT && (!best || item->zValue() > best->zValue()))
            best = item;
    }
    return best;
}

void ZelGraphicsView::finishSelecting(QPoint position)
{
    const QRectF band = rubberBandInScene();
    if (isBand(band) && m_parts->picture.isSlow())
        viewport()->repaint(m_parts->rubberBand->geometry()); // the band goes at once, however long the rest takes
    std::optional<ElementIdBatch> oneChange;
    if (m_parts->picture.isSlow())
        oneChange.emplace(viewController().selectedIds()); // else what is between the two would be painted, too
    m_parts->scene->clearSelectedItems();
    if (isBand(band))
        viewController().addSelctedItems(m_parts->scene->elements().idsTouching(band));
    else
        m_parts->scene->addSelectedItem(elementToSelectAt(position));
}

void ZelGraphicsView::finishZooming(QPoint position)
{
    const QRectF band = rubberBandInScene();
    m_parts->scene->clearSelectedItems();
    QList<QGraphicsItem*> targets;
    if (isBand(band))
        targets = m_parts->scene->elements().itemsSpanning(band);
    else
        targets.append(m_parts->scene->elements().topmostItemAt(mapToScene(position), viewportTransform()));
    zoomTo(&targets);
}

void ZelGraphicsView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (m_parts->scene)
        viewController().showDynamicDlg(event->pos(), DYNAMIC_DIALOG_DCU);
}

void ZelGraphicsView::contextMenuEvent(QContextMenuEvent* event)
{
    // The menu receives the release of a button that is still down, which would leave the rubber band on the screen.
    m_parts->rubberBand->hide();
    if (!m_parts->scene)
        return;
    if (QMenu* menu = viewController().getViewFilterMenu())
        menu->exec(event->globalPos());
}

void ZelGraphicsView::dragLeaveEvent(QDragLeaveEvent* event)
{
    QGraphicsView::dragLeaveEvent(event);
}

// Qt forgets a pressed button when a dialog opens, and does not deliver its release.
void ZelGraphicsView::focusOutEvent(QFocusEvent* event)
{
    if (event->reason() == Qt::ActiveWindowFocusReason) {
        m_parts->rubberBand->hide();
        m_parts->isPanning = false;
    }
    QGraphicsView::focusOutEvent(event);
}

void ZelGraphicsView::paintEvent(QPaintEvent* event)
{
    if (!m_parts->scene) {
        paintByItems(event);
        return;
    }
    SceneElements& elements = m_parts->scene->elements();
    elements.takeOverAttributes(mapToScene(event->rect()).boundingRect(), &m_parts->picture);
    // Elements that a host has added itself are still pending.
    elements.synchroniseShown();
    QPainter painter(viewport());
    if (m_parts->picture.canPaintOn(painter)) {
        m_parts->picture.paint(
            painter, event->region(), [this](QPainter& on, const QRectF& area) { drawBackground(&on, area); });
        drawForeground(&painter, mapToScene(viewport()->rect()).boundingRect());
        paintLayers(painter, event->rect());
        return;
    }
    painter.end();
    elements.makeAllItems();
    paintByItems(event);
    QPainter over(viewport());
    paintLayers(over, event->rect());
}

void ZelGraphicsView::scrollContentsBy(int dx, int dy)
{
    QGraphicsView::scrollContentsBy(dx, dy);
    m_parts->picture.noteScroll();
}

void ZelGraphicsView::paintLayers(QPainter& painter, const QRect& exposed)
{
    const QObjectList& parts = children();
    for (QObject* part : parts) {
        auto* layer = qobject_cast<ZelViewLayer*>(part);
        if (!layer || !layer->isShown())
            continue;
        painter.save();
        painter.resetTransform();
        layer->paint(painter, exposed);
        painter.restore();
    }
}

void ZelGraphicsView::paintByItems(QPaintEvent* event)
{
    if (viewport()->testAttribute(Qt::WA_OpaquePaintEvent) && viewport()->autoFillBackground())
        QPainter(viewport()).fillRect(event->rect(), viewport()->palette().brush(viewport()->backgroundRole()));
    QGraphicsView::paintEvent(event);
}

} // namespace mirn::zelchipview
