// SPDX-License-Identifier: MIT
#include "host/window/lockactions.h"

#include "engine/referenceengine.h"
#include "graphics/zelgraphicsview.h"
#include "host/design/designcommands.h"
#include "host/design/designeditor.h"
#include "host/project/projectsession.h"
#include "host/window/drawingarea.h"
#include "host/window/rowmenu.h"
#include "resources/zeltree.h"

#include <QAction>
#include <QMenu>

namespace mirn::zelchip {

LockActions::LockActions(DrawingArea& area, QAction* lock, QAction* unlock, RowMenu* rowMenu)
    : QObject(area.graphicsView())
    , m_area(area)
    , m_engine(area.session().editor().engine())
{
    connect(lock, &QAction::triggered, this, [this] { onSelected(&designcommands::lock); });
    connect(unlock, &QAction::triggered, this, [this] { onSelected(&designcommands::unlock); });
    connect(rowMenu, &RowMenu::filling, this, &LockActions::addTo);
}

// Of an IP with locked and other parts, both are possible.
void LockActions::addTo(QMenu* menu, const QString& resource)
{
    const auto add = [&](const QString& text, bool isPossible, QString (*command)(const QString&)) {
        QAction* action = menu->addAction(text);
        action->setEnabled(isPossible);
        connect(action, &QAction::triggered, this,
            [this, resource, command] { Q_EMIT commandRequested(command(resource)); });
    };
    add(tr("Lock"), m_engine.proposeLock(resource).isAllowed(), &designcommands::lock);
    add(tr("Unlock"), m_engine.proposeUnlock(resource).isAllowed(), &designcommands::unlock);
}

void LockActions::onSelected(QString (*command)(const QString& resource))
{
    const QList<QTreeWidgetItem*> selected = m_area.tree()->selectedItems();
    const QString resource
        = m_area.tree()->getResourceName(selected.isEmpty() ? m_area.tree()->currentItem() : selected.first());
    if (resource.isEmpty())
        Q_EMIT refused(tr("No resource is chosen in the tree."));
    else
        Q_EMIT commandRequested(command(resource));
}

} // namespace mirn::zelchip
