// SPDX-License-Identifier: MIT
#include "host/window/moveaids.h"

#include "graphics/zelgraphicsview.h"
#include "host/project/projectsession.h"
#include "host/window/drawingarea.h"
#include "planning/dragreason.h"
#include "planning/dragwatch.h"
#include "planning/ghostlayer.h"
#include "planning/movegesture.h"
#include "planning/namelayer.h"
#include "planning/swapquestion.h"
#include "resources/zeltree.h"

#include <QAction>

namespace mirn::zelchip {

MoveAids::MoveAids(DrawingArea& area, QAction* names)
    : QObject(area.graphicsView())
{
    zelchipview::ZelGraphicsView* view = area.graphicsView(); // everything below becomes its child
    zelchipengine& engine = *area.session().engine();
    m_names = new zelchipview::NameLayer(view, engine);
    m_names->setShown(names->isChecked());
    connect(names, &QAction::toggled, m_names, &zelchipview::NameLayer::setShown);

    auto* watch = new zelchipview::DragWatch(view, area.tree(), engine);
    new zelchipview::GhostLayer(view, watch);
    new zelchipview::SwapQuestion(watch, view);
    auto* reason = new zelchipview::DragReason(view, area.tree(), watch, engine);
    connect(reason, &zelchipview::DragReason::changed, this, &MoveAids::changed);
    connect(reason, &zelchipview::DragReason::commandChanged, this, &MoveAids::commandChanged);
    connect(reason, &zelchipview::DragReason::refused, this, &MoveAids::refused);
    auto* gesture = new zelchipview::MoveGesture(view, area.tree(), engine);
    connect(gesture, &zelchipview::MoveGesture::refused, this, &MoveAids::refused);
}

void MoveAids::refresh()
{
    m_names->refresh();
}

} // namespace mirn::zelchip
