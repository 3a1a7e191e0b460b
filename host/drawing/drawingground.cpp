// SPDX-License-Identifier: MIT
#include "host/drawing/drawingground.h"

#include "host/look/palettes.h"

#include <QEvent>
#include <QGraphicsView>

namespace mirn::zelchip {

DrawingGround::DrawingGround(QGraphicsView* view)
    : QObject(view)
    , m_view(view)
{
    apply();
    view->installEventFilter(this);
}

bool DrawingGround::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::PaletteChange)
        apply();
    return QObject::eventFilter(watched, event);
}

void DrawingGround::apply()
{
    const QPalette palette = drawingPalette(m_view->palette());
    m_view->viewport()->setPalette(palette);
    m_view->setBackgroundBrush(palette.color(QPalette::Base));
}

} // namespace mirn::zelchip
