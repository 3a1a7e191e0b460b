// SPDX-License-Identifier: MIT
#include "host/gestures/viewhistory.h"

#include "graphics/zelgraphicsview.h"

#include <QCoreApplication>
#include <QEvent>

namespace mirn::zelchip {

namespace {

constexpr int RestMilliseconds = 400;
constexpr std::size_t MostParts = 100;

} // namespace

bool ViewedPart::operator==(const ViewedPart& other) const
{
    // Scroll bars move by whole pixels, so a part that is shown again may be up to a pixel off in each direction.
    const QPointF way = transform.map(center) - transform.map(other.center);
    return transform == other.transform && currentScale == other.currentScale && way.manhattanLength() <= 2.0;
}

ViewedPart viewedPart(const zelchipview::ZelGraphicsView& view)
{
    const QPointF center = QRectF(view.viewport()->rect()).center();
    return {view.transform(), view.currentScale(), view.viewportTransform().inverted().map(center)};
}

void showPart(zelchipview::ZelGraphicsView& view, const ViewedPart& part)
{
    // setCurrentScale() also multiplies the transform.
    view.setTransform(part.transform * QTransform::fromScale(1 / part.currentScale, 1 / part.currentScale));
    view.setCurrentScale(part.currentScale);
    view.setTransform(part.transform);
    view.centerOn(part.center);
}

ViewHistory::ViewHistory(zelchipview::ZelGraphicsView* view)
    : QObject(view)
    , m_view(view)
    , m_parts{viewedPart(*view)}
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(RestMilliseconds);
    connect(&m_rest, &QTimer::timeout, this, &ViewHistory::note);
    m_view->viewport()->installEventFilter(this);
}

// Zooming and scrolling always end in a paint.
bool ViewHistory::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Paint && viewedPart(*m_view) != m_parts[m_current])
        m_rest.start();
    return QObject::eventFilter(watched, event);
}

void ViewHistory::note()
{
    m_rest.stop();
    const ViewedPart part = viewedPart(*m_view);
    if (part == m_parts[m_current])
        return;
    m_parts.resize(m_current + 1);
    m_parts.push_back(part);
    if (m_parts.size() > MostParts)
        m_parts.erase(m_parts.begin());
    m_current = m_parts.size() - 1;
}

void ViewHistory::replace()
{
    m_rest.stop();
    m_parts[m_current] = viewedPart(*m_view);
}

void ViewHistory::back()
{
    note();
    if (m_current > 0)
        show(m_current - 1);
}

void ViewHistory::forward()
{
    note();
    if (m_current + 1 < m_parts.size())
        show(m_current + 1);
}

void ViewHistory::show(std::size_t index)
{
    m_current = index;
    const ViewedPart part = m_parts[index];
    showPart(*m_view, part);
    QCoreApplication::sendPostedEvents(m_view, QEvent::MetaCall); // scroll bars come and go, and move the drawing
    showPart(*m_view, part);
    m_parts[index] = viewedPart(*m_view);
    m_rest.stop();
}

} // namespace mirn::zelchip
