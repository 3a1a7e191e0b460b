// SPDX-License-Identifier: MIT
#include "host/window/moveaids.h"

#include "engine/referenceengine.h"
#include "graphics/zelgraphicsview.h"
#include "host/design/designeditor.h"
#include "host/gestures/dragreason.h"
#include "host/project/projectsession.h"
#include "host/window/drawingarea.h"
#include "planning/dragwatch.h"
#include "planning/ghostlayer.h"
#include "planning/movegesture.h"
#include "planning/namelayer.h"
#include "planning/resourcetip.h"
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
    new zelchipview::ResourceTip(view, engine);

    auto* watch = new zelchipview::DragWatch(view, area.tree(), engine);
    new zelchipview::GhostLayer(view, watch);
    new zelchipview::SwapQuestion(watch, view);
    auto* reason = new DragReason(view, area.tree(), watch, area.session().editor().engine());
    connect(reason, &DragReason::changed, this, &MoveAids::changed);
    connect(reason, &DragReason::refused, this, &MoveAids::refused);
    auto* gesture = new zelchipview::MoveGesture(view, area.tree(), engine);
    connect(gesture, &zelchipview::MoveGesture::refused, this, &MoveAids::refused);
}

void MoveAids::refresh()
{
    m_names->refresh();
}

} // namespace mirn::zelchip
