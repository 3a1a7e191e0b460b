// SPDX-License-Identifier: MIT
#include "chipview/zelchipviewdatabase.h"

#include "chipview/chipviewnavigator.h"
#include "chipview/toolactions.h"
#include "dialogs/dcupicker.h"
#include "dialogs/zeldcusettingdlg.h"
#include "filter/viewfilter.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "placement/commandtexts.h"
#include "placement/dropquery.h"
#include "placement/hovertext.h"
#include "placement/placementhighlighter.h"
#include "platform/contract/svgparser.h"
#include "platform/contract/zelchipengine.h"
#include "platform/contract/zelproject.h"
#include "platform/contract/zeltext.h"
#include "platform/contract/zeltrace.h"
#include "resources/resourcetreemodel.h"
#include "resources/treemenus.h"
#include "resources/usagerows.h"
#include "resources/zelrestable.h"
#include "resources/zeltree.h"

#include <QAction>
#include <QCheckBox>
#include <QCursor>
#include <QGraphicsItem>
#include <QMessageBox>
#include <QTimer>

#include <utility>

namespace mirn::zelchipview {

namespace {

constexpr int DirtyByDynamicValue = 4;

} // namespace

ZELChipViewDatabase* ZELChipViewDatabase::m_object = nullptr;

ZELChipViewDatabase* ZELChipViewDatabase::getInstance()
{
    if (!m_object)
        m_object = new ZELChipViewDatabase; // deleted by destoryInstance()
    return m_object;
}

void ZELChipViewDatabase::destoryInstance()
{
    delete m_object;
    m_object = nullptr;
}

ZELChipViewDatabase* ZELChipViewDatabase::existingInstance()
{
    return m_object;
}

ZELChipViewDatabase::ZELChipViewDatabase()
    : m_treeModel(std::make_unique<ResourceTreeModel>())
    , m_usageRows(std::make_unique<UsageRows>())
    , m_dropQuery(std::make_unique<DropQuery>())
    , m_highlighter(std::make_unique<PlacementHighlighter>(new QTimer(this)))
    , m_dynamicValues(std::make_unique<DynamicValues>())
    , m_filter(std::make_unique<ViewFilter>())
    , m_toolActions(std::make_unique<ToolActions>(this))
    , m_hoverText(std::make_unique<HoverText>())
{
    buildTreeMenus();
    connectModeActions();
    connect(m_highlighter->timer(), &QTimer::timeout, this, &ZELChipViewDatabase::onHighlightProbPlaceItems);
    const auto repaint = [this](const QSet<int>& changed) {
        if (m_scene)
            m_scene->repaintElements(changed);
    };
    m_selectedIds.setListener(repaint);
    m_highlighter->highlightedIds().setListener(repaint);
    m_filter->filteredIds().setListener(repaint);
}

ZELChipViewDatabase::~ZELChipViewDatabase()
{
    m_selectedIds.setListener({});
    m_highlighter->highlightedIds().setListener({});
    m_filter->filteredIds().setListener({});
    // The tree must not report, and nobody must be asked about, rows that are on their way out.
    if (m_tree)
        m_tree->blockSignals(true);
    m_treeModel->clear();
    m_treeMenus.reset();
    m_treeModel.reset();
    qDeleteAll(m_attributes);
    m_attributes.clear();
    delete m_scene.data();
    delete m_tree.data();
    m_parser.reset();
    m_filter->deleteMenu();
}

void ZELChipViewDatabase::buildTreeMenus()
{
    TreeMenus::Commands commands;
    commands.reset = [this] { resetIP(); };
    commands.remove = [this] { removeIP(); };
    commands.configure = [this] { configIP(); };
    commands.expand = [this] { expandIP(); };
    commands.collapse = [this] { collapseIP(); };
    m_treeMenus = std::make_unique<TreeMenus>(zelproject::getInstance()->flowName(), this, commands);
}

void ZELChipViewDatabase::connectModeActions()
{
    connect(getAction(ACTION_SELECT), &QAction::triggered, this, &ZELChipViewDatabase::onSelect);
    connect(getAction(ACTION_PAN), &QAction::triggered, this, &ZELChipViewDatabase::onPan);
    connect(getAction(ACTION_ZOOM), &QAction::triggered, this, &ZELChipViewDatabase::onZoom);
}

void ZELChipViewDatabase::setChipEngine(zelchipengine* engine)
{
    m_engine = engine;
    m_treeModel->setEngine(engine);
    m_usageRows->setEngine(engine);
    m_dropQuery->setEngine(engine);
    m_dynamicValues->setEngine(engine);
    m_filter->setEngine(engine);
    getViewFilterMenu();
    m_toolActions->setFilterMenu(m_filter->menu());
}

void ZELChipViewDatabase::setParent(QWidget* parent)
{
    m_parentWidget = parent;
}

ZelGraphicsScene* ZELChipViewDatabase::getScene(QObject* parent)
{
    if (!m_scene)
        m_scene = new ZelGraphicsScene(parent);
    return m_scene;
}

ZelGraphicsView* ZELChipViewDatabase::getView(ZelGraphicsScene* scene)
{
    if (m_view)
        return m_view;
    m_view = new ZelGraphicsView(scene, nullptr); // the window takes it as its central widget
    auto* navigator = new ChipViewNavigator(m_view); // child of the view
    m_view->installEventFilter(navigator);
    if (scene)
        scene->installEventFilter(navigator);
    m_hoverText->create(m_view);
    return m_view;
}

ZelTree* ZELChipViewDatabase::getTree(QWidget* parent)
{
    if (m_tree)
        return m_tree;
    m_tree = new ZelTree(parent); // deleted by the destructor
    m_tree->setSortingEnabled(true);
    connect(m_tree, &QTreeWidget::itemSelectionChanged, this, &ZELChipViewDatabase::treeItemClicked);
    return m_tree;
}

ZelResTable* ZELChipViewDatabase::getResTable(QWidget* parent)
{
    if (!m_table)
        m_table = new ZelResTable(parent); // its parent's
    return m_table;
}

SVGParser* ZELChipViewDatabase::getSVGParser()
{
    if (!m_parser)
        m_parser = SVGParser::create();
    return m_parser.get();
}

bool ZELChipViewDatabase::refresh(Enum_ChipView_Refresh_Type kind)
{
    if (m_engine)
        m_engine->refresh(kind);
    if (m_tree && (kind == REFRESH_TREE || kind == REFRESH_ALL))
        m_tree->refresh();
    if (m_scene && (kind == REFRESH_GRAPHIC || kind == REFRESH_ALL)) {
        m_scene->refresh();
        m_scene->synchroniseShownElements();
    }
    if (m_table && (kind == REFRESH_TABLE || kind == REFRESH_ALL))
        m_table->refresh();
    return true;
}

int ZELChipViewDatabase::getMouseMode() const
{
    return m_toolActions->mouseMode();
}

QAction* ZELChipViewDatabase::getAction(int id) const
{
    return m_toolActions->action(id);
}

QMap<int, QAction*>& ZELChipViewDatabase::actions()
{
    return m_toolActions->byId();
}

void ZELChipViewDatabase::onSelect(bool)
{
    updateCursor();
}

void ZELChipViewDatabase::onPan(bool)
{
    updateCursor();
}

void ZELChipViewDatabase::onZoom(bool)
{
    updateCursor();
}

void ZELChipViewDatabase::updateCursor()
{
    if (m_view)
        m_view->changeMouseCursor();
}

ZELGraphicItemAttribute* ZELChipViewDatabase::getGraphicItemAttribute(int id) const
{
    return m_attributes.value(id, nullptr);
}

void ZELChipViewDatabase::setGraphicAttribute(int id, ZELGraphicItemAttribute* attribute)
{
    m_attributes.insert(id, attribute);
}

QStringList& ZELChipViewDatabase::getTreeHead()
{
    return m_treeModel->head();
}

QList<QTreeWidgetItem*>& ZELChipViewDatabase::getTreeItems()
{
    return m_treeModel->rebuild();
}

QTreeWidgetItem* ZELChipViewDatabase::parseTree(zeltreeviewcell* cell, QTreeWidgetItem* parent)
{
    return m_treeModel->parse(cell, parent);
}

QIcon& ZELChipViewDatabase::getIconFromType(const QString& type)
{
    return m_treeModel->icon(type);
}

int ZELChipViewDatabase::getResourceType(const QString& name) const
{
    const std::string engineName = toEngineText(name);
    return m_engine ? m_engine->getResourceType(&engineName) : ZEL_RESOURCE_UNKNOWN;
}

QMenu* ZELChipViewDatabase::getTreePopupMenu(QTreeWidgetItem* item) const
{
    return m_treeMenus->menuFor(item);
}

void ZELChipViewDatabase::getAllChildren(QTreeWidgetItem* item, QVector<QTreeWidgetItem*>& out) const
{
    for (int i = 0; item && i < item->childCount(); ++i) {
        out.append(item->child(i));
        getAllChildren(item->child(i), out);
    }
}

void ZELChipViewDatabase::expandIP()
{
    QTreeWidgetItem* item = selectedTreeItem();
    if (!item)
        return;
    QVector<QTreeWidgetItem*> branch{item};
    getAllChildren(item, branch);
    for (QTreeWidgetItem* row : std::as_const(branch)) {
        if (row->treeWidget())
            row->setExpanded(true);
    }
}

void ZELChipViewDatabase::collapseIP()
{
    if (QTreeWidgetItem* item = selectedTreeItem())
        item->setExpanded(false);
}

QTreeWidgetItem* ZELChipViewDatabase::selectedTreeItem() const
{
    const QList<QTreeWidgetItem*> selected = m_tree ? m_tree->selectedItems() : QList<QTreeWidgetItem*>();
    return selected.isEmpty() ? nullptr : selected.first();
}

// Empty when no row is selected; the name of a row never is.
QString ZELChipViewDatabase::selectedResource() const
{
    QTreeWidgetItem* item = selectedTreeItem();
    return item ? m_tree->getResourceName(item) : QString();
}

QStringList& ZELChipViewDatabase::getResTableHead()
{
    return m_usageRows->head();
}

QList<QStringList> ZELChipViewDatabase::getResTableItems() const
{
    return m_usageRows->rows();
}

void ZELChipViewDatabase::treeItemClicked()
{
    QTreeWidgetItem* item = selectedTreeItem();
    if (!item)
        return;
    m_selectedIds.assign(m_treeModel->idsOfRow(*item));
}

void ZELChipViewDatabase::addSelctedItem(int id, bool selectInTree)
{
    m_selectedIds.insert(id);
    if (!selectInTree || !m_tree)
        return;
    const auto name = m_treeModel->namesById().constFind(id);
    if (name != m_treeModel->namesById().constEnd()) {
        disconnect(m_tree, &QTreeWidget::itemSelectionChanged, this, &ZELChipViewDatabase::treeItemClicked);
        if (QTreeWidgetItem* item = m_treeModel->itemNamed(name.value()))
            m_tree->setCurrentItem(item);
    }
    // Also for an id that no row has, where nothing was disconnected: the connection then counts one more.
    connect(m_tree, &QTreeWidget::itemSelectionChanged, this, &ZELChipViewDatabase::treeItemClicked);
}

void ZELChipViewDatabase::removeSelectedItem(int id)
{
    m_selectedIds.remove(id);
}

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

int ZELChipViewDatabase::runTclCommand(const QString& command)
{
    int ret = 0;
    QString result;
    Q_EMIT sigRunTclCmd(command, ret, result);
    return ret;
}

int ZELChipViewDatabase::getCurrentDragDropItemId() const
{
    if (!m_scene || !m_view)
        return PlacementHighlighter::NoSite;
    const QPointF position = m_view->mapToScene(m_view->mapFromGlobal(QCursor::pos()));
    const QGraphicsItem* item = m_scene->itemAt(position, m_view->viewportTransform());
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
    m_highlighter->show(
        m_dropQuery->probableSites(selectedResource(), QString::number(site, 10), "onHighlightProbPlaceItems"));
}

void ZELChipViewDatabase::clearHighlightedProbPlaceItems()
{
    m_highlighter->clear();
}

void ZELChipViewDatabase::stopHighlightTimer()
{
    m_highlighter->timer()->stop();
}

ElementIdSet& ZELChipViewDatabase::highlightedIds()
{
    return m_highlighter->highlightedIds();
}

int ZELChipViewDatabase::resetResource(const QString& name)
{
    return runTclCommand(commandtexts::reset(name));
}

int ZELChipViewDatabase::removeResource(const QString& name)
{
    const QString question = QStringLiteral("Are you sure you want to delete ") + name + QLatin1Char('?');
    const auto answer = QMessageBox::warning(
        nullptr, tr("Delete"), question, QMessageBox::Yes | QMessageBox::No, QMessageBox::NoButton);
    return answer == QMessageBox::Yes ? runTclCommand(commandtexts::remove(name)) : 0;
}

int ZELChipViewDatabase::configResource(const QString& name)
{
    diagTrace("call ZEL engine API: config()", "configResource");
    const std::string engineName = toEngineText(name);
    diagTrace(toEngineText(QStringLiteral("The params is %1").arg(name)).c_str(), "configResource");
    const int changed = m_engine ? m_engine->config(&engineName) : 0;
    diagTrace("end", "configResource");
    return changed;
}

void ZELChipViewDatabase::runOnSelected(int (ZELChipViewDatabase::*command)(const QString&))
{
    if (selectedTreeItem() && (this->*command)(selectedResource()) != 0)
        refresh(REFRESH_ALL);
}

void ZELChipViewDatabase::resetIP()
{
    runOnSelected(&ZELChipViewDatabase::resetResource);
    m_selectedIds.clear();
}

void ZELChipViewDatabase::removeIP()
{
    runOnSelected(&ZELChipViewDatabase::removeResource);
}

void ZELChipViewDatabase::configIP()
{
    runOnSelected(&ZELChipViewDatabase::configResource);
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
    const ZELGraphicItemAttribute* site = dcuAmong(m_scene->items(m_view->mapToScene(pos)),
        [this](int loadNumber) { return getGraphicItemAttribute(loadNumber); });
    if (!site || !m_dynamicValues->hasDialog(site->itemId))
        return;
    // Writes what was changed by itself; the result tells nothing more.
    ZELDCUSettingDlg(m_parentWidget, site->itemId).exec();
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
        m_scene->update();
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
