// SPDX-License-Identifier: MIT
#include "host/gestures/pointergestures.h"

#include "chipview/zelchipviewdatabase.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "host/drawing/drawingfit.h"
#include "host/gestures/viewhistory.h"
#include "platform/contract/zelparameter.h"

#include <QAction>
#include <QApplication>
#include <QMouseEvent>
#include <QRubberBand>
#include <QScrollBar>
#include <QShortcut>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace mirn::zelchip {

namespace {

bool isZoomMode()
{
    return zelchipview::ZELChipViewDatabase::getInstance()->getMouseMode() == zelchipview::ACTION_ZOOM;
}

void scrollBy(QScrollBar* bar, int pixels)
{
    bar->setValue(bar->value() + pixels);
}

// Beyond the drawing's largest scale the view could not zoom out again, so an area that is too small becomes larger.
QRectF withinLimits(const QRectF& area, const zelchipview::ZelGraphicsView& view, const zel_Parameter& parameter)
{
    const double steps = (parameter.maximumScale - 1.0) / parameter.scaleStep;
    const QSizeF smallest = QSizeF(view.viewport()->size()) / std::pow(1.0 + parameter.scaleStep, steps);
    const double missing
        = std::min(smallest.width() - area.width(), smallest.height() - area.height()) / 2; // on each side
    return missing > 0 ? area.adjusted(-missing, -missing, missing, missing) : area;
}

} // namespace

PointerGestures::PointerGestures(zelchipview::ZelGraphicsView* view)
    : QObject(view)
    , m_view(view)
{
    m_view->viewport()->installEventFilter(this);
    addEscape();
}

// In other modes Escape is left to whoever has the focus.
void PointerGestures::addEscape()
{
    auto* escape = new QShortcut(Qt::Key_Escape, m_view); // child of the view
    const QAction* zoom = zelchipview::ZELChipViewDatabase::getInstance()->getAction(zelchipview::ACTION_ZOOM);
    escape->setEnabled(zoom->isChecked());
    connect(zoom, &QAction::toggled, escape, &QShortcut::setEnabled);
    connect(escape, &QShortcut::activated, this, &PointerGestures::leaveZoomMode);
}

void PointerGestures::leaveZoomMode()
{
    zelchipview::ZELChipViewDatabase::getInstance()->getAction(zelchipview::ACTION_SELECT)->trigger();
    if (auto* band = m_view->findChild<QRubberBand*>())
        band->hide();
}

bool PointerGestures::eventFilter(QObject* watched, QEvent* event)
{
    if (m_isFinishing)
        return false;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        return press(static_cast<QMouseEvent&>(*event));
    case QEvent::MouseMove:
        return move(static_cast<QMouseEvent&>(*event));
    case QEvent::MouseButtonRelease:
        return release(static_cast<QMouseEvent&>(*event));
    case QEvent::Wheel:
        return scrollSideways(static_cast<QWheelEvent&>(*event));
    default:
        return QObject::eventFilter(watched, event);
    }
}

bool PointerGestures::press(const QMouseEvent& event)
{
    if (event.button() == Qt::LeftButton && isZoomMode())
        m_zoomFrom = event.pos();
    if (event.button() != Qt::MiddleButton)
        return false;
    m_panFrom = event.pos();
    return true;
}

bool PointerGestures::move(const QMouseEvent& event)
{
    if (!m_panFrom || !(event.buttons() & Qt::MiddleButton))
        return false;
    const QPoint way = *m_panFrom - event.pos();
    m_panFrom = event.pos();
    scrollBy(m_view->horizontalScrollBar(), way.x());
    scrollBy(m_view->verticalScrollBar(), way.y());
    return true;
}

bool PointerGestures::release(QMouseEvent& event)
{
    if (event.button() == Qt::MiddleButton) {
        m_panFrom.reset();
        return true;
    }
    const std::optional<QPoint> from = std::exchange(m_zoomFrom, std::nullopt);
    if (event.button() != Qt::LeftButton || !from)
        return false;
    if (!isZoomMode()) // else the view would select what the rectangle touches
        return true;
    const QRect band = QRect(*from, event.pos()).normalized();
    if ((event.pos() - *from).manhattanLength() < QApplication::startDragDistance())
        zoomInAt(event.pos(), event);
    else
        zoomToBand(band, event);
    return true;
}

bool PointerGestures::scrollSideways(const QWheelEvent& event)
{
    if (event.modifiers() != Qt::ShiftModifier || event.angleDelta().x() != 0)
        return false;
    QWheelEvent turned(event.position(), event.globalPosition(), event.pixelDelta().transposed(),
        event.angleDelta().transposed(), event.buttons(), Qt::NoModifier, event.phase(), event.inverted());
    QApplication::sendEvent(m_view->horizontalScrollBar(), &turned);
    return true;
}

// The view clears the selection and hides its rubber band; its own zoom is then replaced.
void PointerGestures::letTheViewFinish(QMouseEvent& event)
{
    m_isFinishing = true;
    QApplication::sendEvent(m_view->viewport(), &event);
    m_isFinishing = false;
}

void PointerGestures::zoomToBand(const QRect& band, QMouseEvent& release)
{
    const QRectF area = m_view->mapToScene(band).boundingRect();
    letTheViewFinish(release);
    const auto* scene = zelchipview::ZELChipViewDatabase::getInstance()->getScene(nullptr);
    zoomToArea(*m_view, withinLimits(area, *m_view, scene->globalParameter()), 0);
}

void PointerGestures::zoomInAt(QPoint position, QMouseEvent& release)
{
    const QPointF place = m_view->mapToScene(position);
    const ViewedPart before = viewedPart(*m_view);
    letTheViewFinish(release);
    showPart(*m_view, before);
    m_view->zoomIn();
    const QPoint way = m_view->mapFromScene(place) - position;
    scrollBy(m_view->horizontalScrollBar(), way.x());
    scrollBy(m_view->verticalScrollBar(), way.y());
}

} // namespace mirn::zelchip
