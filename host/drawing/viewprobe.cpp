// SPDX-License-Identifier: MIT
#include "host/drawing/viewprobe.h"

#include "engine/model/device.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsview.h"
#include "host/sites/sitetext.h"
#include "planning/elementprobe.h"

#include <QMouseEvent>

namespace mirn::zelchip {

ViewProbe::ViewProbe(zelchipview::ZelGraphicsView* view, const zelengine::Device& device)
    : QObject(view)
    , m_view(view)
    , m_device(device)
{
    m_view->viewport()->setMouseTracking(true);
    m_view->viewport()->installEventFilter(this);
}

bool ViewProbe::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseMove:
        m_pointer = static_cast<QMouseEvent*>(event)->pos();
        m_isInside = true;
        probe();
        break;
    case QEvent::Leave:
        m_isInside = false;
        Q_EMIT pointerLeft();
        break;
    case QEvent::Paint:
        update();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void ViewProbe::probe()
{
    const zelchipview::ZELGraphicItemAttribute* element = zelchipview::elementAt(*m_view, m_pointer);
    const zelengine::Site* site = element ? m_device.site(element->itemId) : nullptr;
    Q_EMIT pointerMoved(m_view->mapToScene(m_pointer), element ? zelchipview::describeElement(*element) : QString(),
        site ? placeOf(*site) : QString());
}

void ViewProbe::refresh()
{
    if (m_isInside)
        probe();
}

// Zooming and scrolling always end in a paint, and both move the drawing under a pointer that does not move.
void ViewProbe::update()
{
    const QTransform transform = m_view->viewportTransform();
    if (transform == m_transform && m_view->currentScale() == m_scale)
        return;
    m_transform = transform;
    m_scale = m_view->currentScale();
    Q_EMIT scaleChanged(m_transform.m11());
    refresh();
}

} // namespace mirn::zelchip
