// SPDX-License-Identifier: MIT
#include "graphics/zelviewlayer.h"

#include <QGraphicsView>
#include <QPainter>

namespace mirn::zelchipview {

ZelViewLayer::ZelViewLayer(QGraphicsView* view)
    : QObject(view)
    , m_view(view)
    , m_viewport(view->viewport())
{
    m_viewport->update();
}

ZelViewLayer::~ZelViewLayer()
{
    if (m_viewport)
        m_viewport->update();
}

void ZelViewLayer::setShown(bool isShown)
{
    if (m_isShown == isShown)
        return;
    m_isShown = isShown;
    if (m_viewport)
        m_viewport->update();
}

void ZelViewLayer::paintElsewhere(QPainter& painter, const QTransform& sceneToPicture, const QRect& area)
{
    if (!view())
        return;
    const Elsewhere elsewhere{sceneToPicture, area};
    m_elsewhere = &elsewhere;
    painter.save();
    paint(painter, area);
    painter.restore();
    m_elsewhere = nullptr;
}

QTransform ZelViewLayer::sceneToPicture() const
{
    return m_elsewhere ? m_elsewhere->sceneToPicture : m_view->viewportTransform();
}

QRect ZelViewLayer::pictureRect() const
{
    return m_elsewhere ? m_elsewhere->area : m_view->viewport()->rect();
}

void ZelViewLayer::update()
{
    if (m_viewport && m_isShown)
        m_viewport->update();
}

void ZelViewLayer::update(const QRectF& area, int margin)
{
    if (!m_viewport || !m_isShown)
        return;
    const QRect pixels = m_view->viewportTransform().mapRect(area).toAlignedRect();
    m_viewport->update(pixels.adjusted(-margin, -margin, margin, margin));
}

} // namespace mirn::zelchipview
