// SPDX-License-Identifier: MIT
#include "chipview/zelchipviewdatabase.h"

#include "dialogs/dcupicker.h"
#include "dialogs/dynamicvalues.h"
#include "dialogs/zeldcusettingdlg.h"
#include "filter/viewfilter.h"
#include "graphics/attributeregistry.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "placement/commandtexts.h"
#include "placement/dropquery.h"
#include "placement/placementhighlighter.h"
#include "resources/zeltree.h"

#include <QCheckBox>
#include <QCursor>
#include <QGraphicsItem>
#include <QMenu>
#include <QTimer>

// The controller's dealings with elements of the drawing: drops, probable sites, dynamic values and settings, filter.

namespace mirn::zelchipview {

namespace {

constexpr int DirtyByDynamicValue = 4;

} // namespace

bool ZELChipViewDatabase::canDrop(const QString& rsc, const QString& id) const
{
    return m_dropQuery->isAllowed(rsc, id);
}

bool ZELChipViewDatabase::canDrop(QGraphicsSceneDragDropEvent*, int id) const
{
    QTreeWidgetItem* item = selectedTreeItem();
    return !item || !canDrop(m_tree->getResourceName(item), QString::number(id, 10));
}

int ZELChipViewDatabase::place(const QString& rsc, const QString& id)
{
    return runTclCommand(commandtexts::place(rsc, id));
}

int ZELChipViewDatabase::drop(int id)
{
    QTreeWidgetItem* item = selectedTreeItem();
    return item ? place(m_tree->getResourceName(item), QString::number(id, 10)) : 0;
}

int ZELChipViewDatabase::getCurrentDragDropItemId() const
{
    if (!m_scene || !m_view)
        return PlacementHighlighter::NoSite;
    const QPointF position = m_view->mapToScene(m_view->mapFromGlobal(QCursor::pos()));
    const QGraphicsItem* item = m_scene->topmostItemAt(position, m_view->viewportTransform());
    if (!item || !item->isVisible())
        return PlacementHighlighter::NoSite;
    return item->data(ZEL_GRAPHIC_ITEM_Attribute_KEY).toInt();
}

bool ZELChipViewDatabase::highlightProbPlaceItems(QGraphicsSceneDragDropEvent*, int id)
{
    m_highlighter->arm(id);
    return true;
}

bool ZELChipViewDatabase::highlightProbPlaceItems()
{
    if (getCurrentDragDropItemId() == PlacementHighlighter::NoSite)
        clearHighlightedProbPlaceItems();
    return true;
}

void ZELChipViewDatabase::onHighlightProbPlaceItems()
{
    const int site = m_highlighter->takeRest();
    if (canDrop(nullptr, site))
        return;
    QTreeWidgetItem* item = selectedTreeItem(); // the engine may have changed the selection
    if (!item)
        return;
    m_highlighter->show(m_dropQuery->probableSites(
        m_tree->getResourceName(item), QString::number(site, 10), "onHighlightProbPlaceItems"));
}

void ZELChipViewDatabase::clearHighlightedProbPlaceItems()
{
    m_highlighter->clear();
}

ElementIdSet& ZELChipViewDatabase::highlightedIds()
{
    return m_highlighter->highlightedIds();
}

QMap<QString, GraphicItemDynamicAttribute>& ZELChipViewDatabase::getGraphicsDynamicInfo()
{
    return m_dynamicValues->graphicsInfo();
}

QMap<QString, QVector<QString>>* ZELChipViewDatabase::getDynamicValueList(Enum_Dynamic_Dialog_Type type, int id)
{
    return m_dynamicValues->valueLists(type, id);
}

bool ZELChipViewDatabase::setDynamicValue(const QMap<QString, QString>& valueMap, int id, Enum_Dynamic_Dialog_Type type)
{
    for (auto value = valueMap.cbegin(); value != valueMap.cend(); ++value) {
        m_dynamicValues->write(id, type, value.key(), value.value());
        m_dirtyFlag = DirtyByDynamicValue;
    }
    refresh(REFRESH_ALL);
    return true;
}

void ZELChipViewDatabase::showDynamicDlg(const QPoint& pos, Enum_Dynamic_Dialog_Type type)
{
    if (type == DYNAMIC_DIALOG_DCU)
        showDCUSettingDlg(pos);
}

void ZELChipViewDatabase::showDCUSettingDlg(const QPoint& pos)
{
    if (!m_view || !m_scene)
        return;
    const ZELGraphicItemAttribute* site = dcuAmong(
        m_scene->items(m_view->mapToScene(pos)), [this](int loadNumber) { return m_attributes->find(loadNumber); });
    if (!site || !m_dynamicValues->hasDialog(site->itemId))
        return;
    // Not on the stack: its parent may be deleted while it stands.
    const QPointer<ZELDCUSettingDlg> dialog(new ZELDCUSettingDlg(m_parentWidget, site->itemId));
    dialog->exec(); // writes what was changed by itself; the result tells nothing more
    delete dialog;
}

QMenu* ZELChipViewDatabase::getViewFilterMenu()
{
    return m_filter->buildMenu(m_view, [this](QCheckBox* box) {
        connect(box, &QCheckBox::stateChanged, this, &ZELChipViewDatabase::checkboxItemCliked);
    });
}

void ZELChipViewDatabase::checkboxItemCliked()
{
    if (m_filter->boxChanged(qobject_cast<QCheckBox*>(sender())) && m_scene)
        m_scene->repaintAllElements();
}

bool ZELChipViewDatabase::isFilterEnable() const
{
    return m_filter->isEnabled();
}

ElementIdSet& ZELChipViewDatabase::filteredIds()
{
    return m_filter->filteredIds();
}

} // namespace mirn::zelchipview
