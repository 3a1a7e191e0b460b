// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelgraphicsscene.h"

#include <QGraphicsView>
#include <QScrollBar>

namespace zeltest {

// A view of Qt's own on what another view shows: every item paints itself.
class ItemsView final : public QGraphicsView
{
public:
    explicit ItemsView(const QGraphicsView& other)
        : QGraphicsView(other.scene())
    {
        if (auto* scene = qobject_cast<mirn::zelchipview::ZelGraphicsScene*>(other.scene()))
            scene->makeAllItems();
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setRenderHints(other.renderHints());
        setBackgroundBrush(other.backgroundBrush());
        setFont(other.font());
        setFrameShape(QFrame::NoFrame);
        resize(other.viewport()->size());
        setTransform(other.transform());
        setAttribute(Qt::WA_DontShowOnScreen);
        show();
        horizontalScrollBar()->setValue(other.horizontalScrollBar()->value());
        verticalScrollBar()->setValue(other.verticalScrollBar()->value());
    }
};

} // namespace zeltest
