// SPDX-License-Identifier: MIT
#include "graphics/zelviewlayer.h"

#include "graphics/zelgraphicsview.h"

#include <QWidget>

namespace mirn::zelchipview {

ZelViewLayer::ZelViewLayer(ZelGraphicsView* view)
    : QObject(view)
    , m_view(view)
{
    view->addLayer(this);
}

ZelViewLayer::~ZelViewLayer()
{
    if (m_view)
        m_view->removeLayer(this);
}

void ZelViewLayer::setShown(bool isShown)
{
    if (m_isShown == isShown)
        return;
    m_isShown = isShown;
    if (m_view)
        m_view->viewport()->update();
}

void ZelViewLayer::update()
{
    if (m_view && m_isShown)
        m_view->viewport()->update();
}

void ZelViewLayer::update(const QRectF& area, int margin)
{
    if (!m_view || !m_isShown)
        return;
    const QRect pixels = m_view->viewportTransform().mapRect(area).toAlignedRect();
    m_view->viewport()->update(pixels.adjusted(-margin, -margin, margin, margin));
}

} // namespace mirn::zelchipview
