// SPDX-License-Identifier: MIT
#include "host/window/scriptaccess.h"

#include "engine/referenceengine.h"
#include "host/design/designeditor.h"
#include "host/window/hostactions.h"
#include "host/window/openproject.h"
#include "resources/zeltree.h"

#include <utility>

namespace mirn::zelchip {

ScriptAccess::ScriptAccess(Window window)
    : m_window(std::move(window))
{ }

zelchipview::ZelChipGUI* ScriptAccess::chipView()
{
    return m_window.project.area()->chipView();
}

zelchipview::ZelGraphicsScene* ScriptAccess::scene()
{
    return m_window.project.area()->scene();
}

zelchipview::ZelGraphicsView* ScriptAccess::graphicsView()
{
    return m_window.project.area()->graphicsView();
}

QTreeWidget* ScriptAccess::tree()
{
    return m_window.project.area()->tree();
}

const zelengine::Device& ScriptAccess::device() const
{
    return m_window.project.editor().engine().device();
}

QAction* ScriptAccess::names()
{
    return m_window.actions.names;
}

QAction* ScriptAccess::overview()
{
    return m_window.actions.overview;
}

} // namespace mirn::zelchip
