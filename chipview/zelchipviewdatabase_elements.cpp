// SPDX-License-Identifier: MIT
#include "chipview/zelchipviewdatabase.h"

#include "chipview/zelchipviewdatabase_parts.h"
#include "dialogs/dcupicker.h"
#include "dialogs/dynamicvalues.h"
#include "dialogs/zeldcusettingdlg.h"
#include "filter/viewfilter.h"
#include "graphics/elements/attributeregistry.h"
#include "graphics/hovertext.h"
#include "graphics/sceneelements.h"
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

// The controller's operations on elements of the drawing: drops, probable sites, dynamic values and settings, filter.

namespace mirn::zelchipview {

namespace {

constexpr int DirtyByDynamicValue = 4;

} // namespace

bool ZELChipViewDatabase::canDrop(const QString& rsc, const QString& id) const
{
    return m_parts->dropQuery->isAllowed(rsc, id);
}

bool ZELChipViewDatabase::canDrop(QGraphicsSceneDragDropEvent*, int id) const
{
    QTreeWidgetItem* item = selectedTreeItem();
    return !item || !canDrop(m_parts->tree->getResourceName(item), QString::number(id, 10));
}

int ZELChipViewDatabase::place(const QString& rsc, const QString& id)
{
    return runTclCommand(commandtexts::place(rsc, id));
}

int ZELChipViewDatabase::swap(const QString& rsc, const QString& other)
{
    return runTclCommand(commandtexts::swap(rsc, other));
}

int ZELChipViewDatabase::drop(int id)
{
    QTreeWidgetItem* item = selectedTreeItem();
    return item ? place(m_parts->tree->getResourceName(item), QString::number(id, 10)) : 0;
}

int ZELChipViewDatabase::getCurrentDragDropItemId() const
{
    if (!m_parts->scene || !m_parts->view)
        return PlacementHighlighter::NoSite;
    const QPointF position = m_parts->view->mapToScene(m_parts->view->mapFromGlobal(QCursor::pos()));
    const QGraphicsItem* item = m_parts->scene->elements().topmostItemAt(position, m_parts->view->viewportTransform());
    if (!item || !item->isVisible())
        return PlacementHighlighter::NoSite;
    return item->data(ZEL_GRAPHIC_ITEM_Attribute_KEY).toInt();
}

bool ZELChipViewDatabase::highlightProbPlaceItems(QGraphicsSceneDragDropEvent*, int id)
{
    m_parts->highlighter->arm(id);
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
    const int site = m_parts->highlighter->finishCountdown();
    if (canDrop(nullptr, site))
        return;
    QTreeWidgetItem* item = selectedTreeItem(); // the engine may have changed the selection
    if (!item)
        return;
    m_parts->highlighter->show(m_parts->dropQuery->probableSites(
        m_parts->tree->getResourceName(item), QString::number(site, 10), "onHighlightProbPlaceItems"));
}

void ZELChipViewDatabase::clearHighlightedProbPlaceItems()
{
    m_parts->highlighter->clear();
}

HoverText& ZELChipViewDatabase::hoverText()
{
    return *m_parts->hoverText;
}

ElementIdSet& ZELChipViewDatabase::highlightedIds()
{
    return m_parts->highlighter->highlightedIds();
}

QMap<QString, GraphicItemDynamicAttribute>& ZELChipViewDatabase::getGraphicsDynamicInfo()
{
    return m_parts->dynamicValues->graphicsInfo();
}

QMap<QString, QVector<QString>>* ZELChipViewDatabase::getDynamicValueList(Enum_Dynamic_Dialog_Type type, int id)
{
    return m_parts->dynamicValues->valueLists(type, id);
}

bool ZELChipViewDatabase::setDynamicValue(const QMap<QString, QString>& valueMap, int id, Enum_Dynamic_Dialog_Type type)
{
    for (auto value = valueMap.cbegin(); value != valueMap.cend(); ++value) {
        m_parts->dynamicValues->write(id, type, value.key(), value.value());
        m_parts->dirtyFlag = DirtyByDynamicValue;
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
    if (!m_parts->view || !m_parts->scene)
        return;
    const QPointF point = m_parts->view->mapToScene(pos);
    m_parts->scene->makeItemsIn(QRectF(point, QSizeF(0, 0)));
    const ZELGraphicItemAttribute* site = dcuAmong(
        m_parts->scene->items(point), [this](int loadNumber) { return m_parts->attributes->find(loadNumber); });
    if (!site || !m_parts->dynamicValues->hasDialog(site->itemId))
        return;
    // The dialog is not on the stack, because its parent may be deleted while it is open.
    const QPointer<ZELDCUSettingDlg> dialog(new ZELDCUSettingDlg(m_parts->parentWidget, site->itemId));
    dialog->exec(); // the dialog writes the changes itself
    delete dialog;
}

QMenu* ZELChipViewDatabase::getViewFilterMenu()
{
    return m_parts->filter->buildMenu(m_parts->view, [this](QCheckBox* box) {
        connect(box, &QCheckBox::stateChanged, this, &ZELChipViewDatabase::checkboxItemCliked);
    });
}

void ZELChipViewDatabase::checkboxItemCliked()
{
    if (m_parts->filter->boxChanged(qobject_cast<QCheckBox*>(sender())) && m_parts->scene)
        m_parts->scene->elements().repaintStates();
}

bool ZELChipViewDatabase::isFilterEnable() const
{
    return m_parts->filter->isEnabled();
}

ElementIdSet& ZELChipViewDatabase::filteredIds()
{
    return m_parts->filter->filteredIds();
}

} // namespace mirn::zelchipview
