// SPDX-License-Identifier: MIT
#include "chipview/zelchipviewdatabase.h"

#include "chipview/zelchipviewdatabase_parts.h"
#include "placement/commandtexts.h"
#include "platform/contract/zelchipengine.h"
#include "platform/contract/zeltext.h"
#include "platform/contract/zeltrace.h"
#include "resources/resourcetreemodel.h"
#include "resources/treemenus.h"
#include "resources/usagerows.h"
#include "resources/zeltree.h"

#include <QMessageBox>

#include <algorithm>

// The controller's operations on the design's resources: rows, usage, the elements of a row, commands on one resource.

namespace mirn::zelchipview {

namespace {

constexpr std::ptrdiff_t MostSurplusConnections = 16;

} // namespace

QStringList& ZELChipViewDatabase::getTreeHead()
{
    return m_parts->treeModel->head();
}

QList<QTreeWidgetItem*>& ZELChipViewDatabase::getTreeItems()
{
    m_parts->shownRow = nullptr;
    return m_parts->treeModel->rebuild();
}

QTreeWidgetItem* ZELChipViewDatabase::parseTree(zeltreeviewcell* cell, QTreeWidgetItem* parent)
{
    m_parts->shownRow = nullptr;
    return m_parts->treeModel->parse(cell, parent);
}

QIcon& ZELChipViewDatabase::getIconFromType(const QString& type)
{
    return m_parts->treeModel->icon(toEngineText(type));
}

int ZELChipViewDatabase::getResourceType(const QString& name) const
{
    const std::string engineName = toEngineText(name);
    return m_parts->engine ? m_parts->engine->getResourceType(&engineName) : ZEL_RESOURCE_UNKNOWN;
}

QMenu* ZELChipViewDatabase::getTreePopupMenu(QTreeWidgetItem* item) const
{
    return m_parts->treeMenus->menuFor(item);
}

// Each row comes before its children. This is a loop and not a recursion, because the tree may be deep.
void ZELChipViewDatabase::getAllChildren(QTreeWidgetItem* item, QVector<QTreeWidgetItem*>& out) const
{
    QVector<QTreeWidgetItem*> pending;
    const auto addChildrenOf = [&pending](const QTreeWidgetItem* parent) {
        for (int i = parent->childCount() - 1; i >= 0; --i)
            pending.append(parent->child(i));
    };
    if (item)
        addChildrenOf(item);
    while (!pending.isEmpty()) {
        out.append(pending.takeLast());
        addChildrenOf(out.last());
    }
}

void ZELChipViewDatabase::expandIP()
{
    if (const QTreeWidgetItem* item = selectedTreeItem())
        m_parts->tree->expandBranch(item);
}

void ZELChipViewDatabase::collapseIP()
{
    if (QTreeWidgetItem* item = selectedTreeItem())
        item->setExpanded(false);
}

QTreeWidgetItem* ZELChipViewDatabase::selectedTreeItem() const
{
    const QList<QTreeWidgetItem*> selected = m_parts->tree ? m_parts->tree->selectedItems() : QList<QTreeWidgetItem*>();
    return selected.isEmpty() ? nullptr : selected.first();
}

// Returns an empty text if no row is selected; the name of a row is never empty.
QString ZELChipViewDatabase::selectedResource() const
{
    QTreeWidgetItem* item = selectedTreeItem();
    return item ? m_parts->tree->getResourceName(item) : QString();
}

QStringList& ZELChipViewDatabase::getResTableHead()
{
    return m_parts->usageRows->head();
}

QList<QStringList> ZELChipViewDatabase::getResTableItems() const
{
    return m_parts->usageRows->rows();
}

// The tree's signal arrives once for each connection that addSelctedItem() has made. The repetitions have nothing to
// do, unless something has changed in between.
void ZELChipViewDatabase::treeItemClicked()
{
    QTreeWidgetItem* item = selectedTreeItem();
    const bool isRepeated = item == m_parts->shownRow && sender() == m_parts->tree;
    if (!item || isRepeated)
        return;
    m_parts->selectedIds.assign(m_parts->treeModel->idsOfRow(*item));
    m_parts->shownRow = item;
}

void ZELChipViewDatabase::addSelctedItem(int id, bool selectInTree)
{
    m_parts->selectedIds.insert(id);
    if (!selectInTree || !m_parts->tree)
        return;
    const auto name = m_parts->treeModel->namesById().constFind(id);
    if (name != m_parts->treeModel->namesById().constEnd()) {
        disconnect(m_parts->tree, &QTreeWidget::itemSelectionChanged, this, &ZELChipViewDatabase::treeItemClicked);
        QTreeWidgetItem* item = m_parts->treeModel->itemNamed(name.value());
        if (item && m_parts->tree->columnCount() > 0) // without columns Qt would lose the item and print a warning
            m_parts->tree->setCurrentItem(item);
    }
    // For an id without a row, nothing was disconnected above, so the number of connections grows by one.
    connect(m_parts->tree, &QTreeWidget::itemSelectionChanged, this, &ZELChipViewDatabase::treeItemClicked);
}

void ZELChipViewDatabase::addSelctedItems(const std::vector<int>& ids)
{
    m_parts->selectedIds.insert(ids);
    if (!m_parts->tree)
        return;
    ElementIdSet named;
    for (auto name = m_parts->treeModel->namesById().cbegin(); name != m_parts->treeModel->namesById().cend(); ++name)
        named.insert(name.key());
    const auto lastNamed = std::find_if(ids.rbegin(), ids.rend(), [&named](int id) { return named.contains(id); });
    if (lastNamed != ids.rend())
        addSelctedItem(*lastNamed, true);
    // Each id without a row adds a connection, as in addSelctedItem(). Beyond a few, their number makes no difference.
    const auto unnamed = std::min<std::ptrdiff_t>(lastNamed - ids.rbegin(), MostSurplusConnections);
    for (std::ptrdiff_t i = 0; i < unnamed; ++i)
        connect(m_parts->tree, &QTreeWidget::itemSelectionChanged, this, &ZELChipViewDatabase::treeItemClicked);
}

ElementIdSet& ZELChipViewDatabase::selectedIds()
{
    return m_parts->selectedIds;
}

void ZELChipViewDatabase::removeSelectedItem(int id)
{
    m_parts->selectedIds.remove(id);
}

int ZELChipViewDatabase::resetResource(const QString& name)
{
    return runTclCommand(commandtexts::reset(name));
}

int ZELChipViewDatabase::removeResource(const QString& name)
{
    const QPointer<ZELChipViewDatabase> self(this); // the host may end the view while the question is open
    const QString question = QStringLiteral("Are you sure you want to delete ") + name + QLatin1Char('?');
    const auto answer = QMessageBox::warning(
        nullptr, tr("Delete"), question, QMessageBox::Yes | QMessageBox::No, QMessageBox::NoButton);
    return self && answer == QMessageBox::Yes ? runTclCommand(commandtexts::remove(name)) : 0;
}

int ZELChipViewDatabase::configResource(const QString& name)
{
    diagTrace("call ZEL engine API: config()", "configResource");
    const std::string engineName = toEngineText(name);
    diagTrace(toEngineText(QStringLiteral("The params is %1").arg(name)).c_str(), "configResource");
    const int changed = m_parts->engine ? m_parts->engine->config(&engineName) : 0;
    diagTrace("end", "configResource");
    return changed;
}

void ZELChipViewDatabase::runOnSelected(int (ZELChipViewDatabase::*command)(const QString&))
{
    const QPointer<ZELChipViewDatabase> self(this); // the host may end the view while the command runs
    if (selectedTreeItem() && (this->*command)(selectedResource()) != 0 && self)
        refresh(REFRESH_ALL);
}

void ZELChipViewDatabase::resetIP()
{
    const QPointer<ZELChipViewDatabase> self(this);
    runOnSelected(&ZELChipViewDatabase::resetResource);
    if (self)
        m_parts->selectedIds.clear();
}

void ZELChipViewDatabase::removeIP()
{
    runOnSelected(&ZELChipViewDatabase::removeResource);
}

void ZELChipViewDatabase::configIP()
{
    runOnSelected(&ZELChipViewDatabase::configResource);
}

} // namespace mirn::zelchipview
