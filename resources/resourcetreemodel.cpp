// SPDX-License-Identifier: MIT
#include "resources/resourcetreemodel.h"

#include "graphics/zelconstants.h"
#include "platform/contract/zelchipengine.h"
#include "platform/contract/zeltext.h"
#include "platform/contract/zeltrace.h"
#include "platform/contract/zeltreeviewcell.h"
#include "resources/zelchipviewtreeitem.h"

#include <QVariant>

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace mirn::zelchipview {

namespace {

QString textOf(const std::string* text)
{
    return text ? fromEngineText(*text) : QString();
}

template <typename Map> const std::string* firstValue(const Map* map)
{
    return map && !map->empty() ? map->begin()->second : nullptr;
}

} // namespace

ResourceTreeModel::~ResourceTreeModel()
{
    clear();
}

QStringList& ResourceTreeModel::head()
{
    if (!m_head.isEmpty() || !m_engine)
        return m_head;
    m_wereTitlesRequested = true;
    diagTrace("call ZEL engine API: zelchipengine::headers ()", "getTreeHead");
    const std::map<int, std::string>& headers = m_engine->headers();
    diagTrace("end", "getTreeHead");
    for (const auto& header : headers)
        m_head.append(fromEngineText(header.second));
    return m_head;
}

void ResourceTreeModel::clear()
{
    const QSet<QTreeWidgetItem*> own(m_items.cbegin(), m_items.cend());
    std::vector<QTreeWidgetItem*> others; // rows that a host has added below ours
    const auto takeChildrenOf = [&](QTreeWidgetItem* item) {
        const QList<QTreeWidgetItem*> children = item->takeChildren();
        std::copy_if(children.begin(), children.end(), std::back_inserter(others),
            [&own](QTreeWidgetItem* child) { return !own.contains(child); });
    };
    // The children are detached first, because deleting an attached child makes Qt search for it among its siblings.
    for (QTreeWidgetItem* item : std::as_const(m_items)) {
        if (item)
            takeChildrenOf(item);
    }
    for (std::size_t i = 0; i < others.size(); ++i)
        takeChildrenOf(others[i]);
    qDeleteAll(others);
    qDeleteAll(m_items);
    m_items.clear();
    m_itemByName.clear();
    m_idByName.clear();
    m_nameById.clear();
}

QList<QTreeWidgetItem*>& ResourceTreeModel::rebuild()
{
    if (!m_items.isEmpty())
        clear();
    diagTrace("call ZEL engine API: tree()", "getTreeItems");
    const zeltreeviewcell* root = m_engine ? m_engine->tree() : nullptr;
    diagTrace("end", "getTreeItems");
    m_rootName = root ? textOf(root->name) : QString();
    if (root && root->children) {
        for (zeltreeviewcell* child : *root->children)
            append(parse(child, nullptr));
    }
    m_wereTitlesRequested = false;
    return m_items;
}

void ResourceTreeModel::append(QTreeWidgetItem* item)
{
    m_items.append(item);
    if (!item)
        return;
    const QString name = item->data(0, RESOURCENAME).toString();
    if (!m_itemByName.contains(name))
        m_itemByName.insert(name, item);
}

QTreeWidgetItem* ResourceTreeModel::itemNamed(const QString& resourceName) const
{
    return m_itemByName.value(resourceName, nullptr);
}

QSet<int> ResourceTreeModel::idsOfRow(const QTreeWidgetItem& row) const
{
    QSet<int> ids;
    const auto addIdOf = [&](const QTreeWidgetItem& item) {
        const auto id = m_idByName.constFind(item.data(0, RESOURCENAME).toString());
        if (id != m_idByName.constEnd())
            ids.insert(id.value());
    };
    addIdOf(row);
    if (!ids.isEmpty())
        return ids;
    for (int i = 0; i < row.childCount(); ++i)
        addIdOf(*row.child(i));
    return ids;
}

// This is a loop and not a recursion, because the tree may be deep. A branch stays in the list until its children are
// done.
QTreeWidgetItem* ResourceTreeModel::parse(zeltreeviewcell* cell, QTreeWidgetItem* parent)
{
    if (!cell)
        return nullptr;
    struct Branch
    {
        QTreeWidgetItem* item;
        const std::vector<zeltreeviewcell*>* children; // null if there are none
        std::size_t next;
    };
    QTreeWidgetItem* top = newItem(*cell, parent);
    std::vector<Branch> open{{top, cell->children, 0}};
    while (true) {
        Branch& branch = open.back();
        if (branch.children && branch.next < branch.children->size()) {
            const zeltreeviewcell* child = (*branch.children)[branch.next++];
            if (child)
                open.push_back({newItem(*child, branch.item), child->children, 0});
            else
                append(nullptr);
            continue;
        }
        QTreeWidgetItem* item = branch.item;
        open.pop_back();
        if (open.empty())
            return top;
        append(item);
    }
}

// While there are no titles, the engine is asked once per rebuild and not once per row.
int ResourceTreeModel::columnCount()
{
    return static_cast<int>((m_wereTitlesRequested ? m_head : head()).size());
}

// Makes a row without its children.
QTreeWidgetItem* ResourceTreeModel::newItem(const zeltreeviewcell& cell, QTreeWidgetItem* parent)
{
    auto* item = new ZELChipViewTreeItem(parent); // owned by the model, through m_items
    const int headSize = columnCount();
    traceSizes(cell, headSize);
    fillColumns(item, cell, headSize);
    setIcon(item, cell);
    item->setData(0, DRAGABLE, cell.draggable);
    item->setData(0, RESET, cell.resettable);

    const QString prefix = parent ? parent->data(0, RESOURCENAME).toString() : m_rootName;
    const QString resourceName = prefix + QLatin1Char('/') + textOf(cell.name);
    item->setData(0, RESOURCENAME, resourceName);

    const std::string engineName = toEngineText(resourceName);
    const QString summary = m_engine ? fromEngineText(m_engine->getResourceSummary(&engineName)) : QString();
    item->setToolTip(0, summary);
    item->setData(0, Qt::AccessibleDescriptionRole, summary);
    if (!parent && !summary.isEmpty())
        item->setText(0, item->text(0) + QStringLiteral(" (") + summary + QLatin1Char(')'));
    keepId(resourceName, cell);
    return item;
}

// Every column after the first shows the first of the cell's column texts on purpose.
void ResourceTreeModel::fillColumns(QTreeWidgetItem* item, const zeltreeviewcell& cell, int headSize)
{
    if (headSize > 0)
        item->setText(0, textOf(cell.name));
    const QString columnText = textOf(firstValue(cell.columns));
    for (int column = 1; column < headSize; ++column)
        item->setText(column, columnText);
}

void ResourceTreeModel::setIcon(QTreeWidgetItem* item, const zeltreeviewcell& cell)
{
    if (cell.uvccio)
        item->setIcon(0, m_icons.icon(QStringLiteral("UVCCIO")));
    else if (cell.type)
        item->setIcon(0, m_icons.icon(fromEngineText(*cell.type)));
}

void ResourceTreeModel::keepId(const QString& resourceName, const zeltreeviewcell& cell)
{
    const std::string* idText = firstValue(cell.ids);
    if (!idText)
        return;
    const int id = fromEngineText(*idText).toInt();
    m_idByName.insert(resourceName, id);
    m_nameById.insert(id, resourceName);
}

void ResourceTreeModel::traceSizes(const zeltreeviewcell& cell, int headSize)
{
    if (!isDiagTraceEnabled())
        return;
    const auto columns = static_cast<qulonglong>(cell.columns ? cell.columns->size() : 0);
    diagTrace(qPrintable(QStringLiteral("The head size is %1").arg(headSize)), "parseTree");
    diagTrace(qPrintable(QStringLiteral("The child column size is %1").arg(columns)), "parseTree");
}

} // namespace mirn::zelchipview
