// SPDX-License-Identifier: MIT
#include "resources/resourcetreemodel.h"

#include "graphics/zelconstants.h"
#include "platform/contract/zelchipengine.h"
#include "platform/contract/zeltext.h"
#include "platform/contract/zeltrace.h"
#include "platform/contract/zeltreeviewcell.h"
#include "resources/resourcerow.h"

#include <QVariant>

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

namespace mirn::zelchipview {

namespace {

QString textOf(const std::string* text)
{
    return text ? fromEngineText(*text) : QString();
}

QString childName(const QString& parentName, const QString& name)
{
    QString result;
    result.reserve(parentName.size() + 1 + name.size());
    result.append(parentName).append(QLatin1Char('/')).append(name);
    return result;
}

template <typename Map> const std::string* firstValue(const Map* map)
{
    return map && !map->empty() ? map->begin()->second : nullptr;
}

std::optional<int> idOf(const zeltreeviewcell& cell)
{
    const std::string* text = firstValue(cell.ids);
    return text ? std::optional<int>(fromEngineText(*text).toInt()) : std::nullopt;
}

} // namespace

ResourceTreeModel::ResourceTreeModel() = default;

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
    m_names.clear();
}

QList<QTreeWidgetItem*>& ResourceTreeModel::rebuild()
{
    const auto countBefore = m_items.size();
    if (!m_items.isEmpty())
        clear();
    diagTrace("call ZEL engine API: tree()", "getTreeItems");
    const zeltreeviewcell* root = m_engine ? m_engine->tree() : nullptr;
    diagTrace("end", "getTreeItems");
    m_rootName = root ? textOf(root->name) : QString();
    m_items.reserve(countBefore);
    if (root && root->children) {
        for (const zeltreeviewcell* child : *root->children)
            m_items.append(child ? makeBranch(*child, nullptr, Owner::Model) : nullptr);
    }
    m_looks.clear();
    m_wereTitlesRequested = false;
    return m_items;
}

QTreeWidgetItem* ResourceTreeModel::itemNamed(const QString& resourceName) const
{
    return m_names.row(resourceName);
}

QSet<int> ResourceTreeModel::idsOfRow(const QTreeWidgetItem& row) const
{
    QSet<int> ids;
    const auto addIdOf = [&](const QTreeWidgetItem& item) {
        if (const std::optional<int> id = m_names.id(ResourceRow::nameOf(item)))
            ids.insert(*id);
    };
    addIdOf(row);
    if (!ids.isEmpty())
        return ids;
    for (int i = 0; i < row.childCount(); ++i)
        addIdOf(*row.child(i));
    return ids;
}

QTreeWidgetItem* ResourceTreeModel::parse(zeltreeviewcell* cell, QTreeWidgetItem* parent)
{
    QTreeWidgetItem* top = cell ? makeBranch(*cell, parent, Owner::Caller) : nullptr;
    m_looks.clear(); // a host may change an icon
    return top;
}

// Keeps all rows but the top one, which comes after them. This is a loop and not a recursion, because the tree may be
// deep. A branch stays in the list until its children are done.
ResourceRow* ResourceTreeModel::makeBranch(const zeltreeviewcell& cell, QTreeWidgetItem* parent, Owner owner)
{
    struct Branch
    {
        ResourceRow* row;
        const std::vector<zeltreeviewcell*>* children; // null if there are none
        std::size_t next;
    };
    ResourceRow* top = makeRow(cell, parent, owner);
    std::vector<Branch> open{{top, cell.children, 0}};
    while (true) {
        Branch& branch = open.back();
        if (branch.children && branch.next < branch.children->size()) {
            const zeltreeviewcell* child = (*branch.children)[branch.next++];
            if (child)
                open.push_back({makeRow(*child, branch.row, Owner::Model), child->children, 0});
            else
                m_items.append(nullptr);
            continue;
        }
        ResourceRow* row = branch.row;
        open.pop_back();
        if (open.empty())
            return top;
        m_items.append(row);
    }
}

// While there are no titles, the engine is asked once per rebuild and not once per row.
int ResourceTreeModel::columnCount()
{
    return static_cast<int>((m_wereTitlesRequested ? m_head : head()).size());
}

// Makes a row without its children. Every column after the first shows the first of the cell's column texts on purpose.
ResourceRow* ResourceTreeModel::makeRow(const zeltreeviewcell& cell, QTreeWidgetItem* parent, Owner owner)
{
    const int headSize = columnCount();
    traceSizes(cell, headSize);
    const QString name = textOf(cell.name);
    ResourceRow::Record record;
    record.resourceName = childName(parent ? ResourceRow::nameOf(*parent) : m_rootName, name);
    record.summary = summaryOf(record.resourceName);
    if (headSize > 0)
        record.text = name;
    if (!parent && !record.summary.isEmpty())
        record.text += QStringLiteral(" (") + record.summary + QLatin1Char(')');
    if (headSize > 1)
        record.otherText = textOf(firstValue(cell.columns));
    const Look& look = lookOf(cell, headSize);
    record.hasIcon = look.icon;
    auto* row = new ResourceRow(*look.row, record); // owned by the model, through m_items, or by the caller
    if (parent)
        parent->addChild(row);
    m_names.add(record.resourceName, owner == Owner::Model ? row : nullptr, idOf(cell));
    return row;
}

const ResourceTreeModel::Look& ResourceTreeModel::lookOf(const zeltreeviewcell& cell, int headSize)
{
    const QIcon* icon = iconOf(cell);
    const auto known = std::find_if(m_looks.cbegin(), m_looks.cend(), [&](const Look& look) {
        return look.icon == icon && look.isDraggable == cell.draggable && look.isResettable == cell.resettable;
    });
    if (known != m_looks.cend())
        return *known;
    auto row = std::make_unique<ZELChipViewTreeItem>(nullptr);
    for (int column = 0; column < headSize; ++column)
        row->setText(column, QString());
    if (icon)
        row->setIcon(0, *icon);
    row->setData(0, DRAGABLE, cell.draggable);
    row->setData(0, RESET, cell.resettable);
    m_looks.push_back({icon, cell.draggable, cell.resettable, std::move(row)});
    return m_looks.back();
}

const QIcon* ResourceTreeModel::iconOf(const zeltreeviewcell& cell)
{
    if (cell.uvccio)
        return &m_icons.icon("UVCCIO");
    return cell.type ? &m_icons.icon(*cell.type) : nullptr;
}

QString ResourceTreeModel::summaryOf(const QString& resourceName)
{
    if (!m_engine)
        return {};
    const std::string engineName = toEngineText(resourceName);
    return fromEngineText(m_engine->getResourceSummary(&engineName));
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
