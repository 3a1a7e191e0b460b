// SPDX-License-Identifier: MIT
#include "chipview/zelchipviewdatabase.h"

#include "chipview/chipviewnavigator.h"
#include "chipview/toolactions.h"
#include "dialogs/dynamicvalues.h"
#include "filter/viewfilter.h"
#include "graphics/attributeregistry.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "placement/dropquery.h"
#include "placement/hovertext.h"
#include "placement/placementhighlighter.h"
#include "platform/contract/svgparser.h"
#include "platform/contract/zelchipengine.h"
#include "platform/contract/zelproject.h"
#include "resources/resourcetreemodel.h"
#include "resources/treemenus.h"
#include "resources/usagerows.h"
#include "resources/zelrestable.h"
#include "resources/zeltree.h"

#include <QAction>
#include <QItemSelectionModel>
#include <QTimer>

// The controller itself: its life, its parts, refreshing and the tool actions. What it does with resources and with
// elements of the drawing stands in zelchipviewdatabase_resources.cpp and zelchipviewdatabase_elements.cpp.

namespace mirn::zelchipview {

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
    , m_attributes(std::make_unique<AttributeRegistry>())
{
    buildTreeMenus();
    connectModeActions();
    connect(m_highlighter->timer(), &QTimer::timeout, this, &ZELChipViewDatabase::onHighlightProbPlaceItems);
    const auto repaint = [this](const std::vector<int>& changed) {
        if (m_scene)
            m_scene->repaintElements(changed);
    };
    m_selectedIds.setListener([this, repaint](const std::vector<int>& changed) {
        m_shownRow = nullptr;
        repaint(changed);
    });
    m_highlighter->highlightedIds().setListener(repaint);
    m_filter->filteredIds().setListener(repaint);
}

ZELChipViewDatabase::~ZELChipViewDatabase()
{
    m_selectedIds.setListener({});
    m_highlighter->highlightedIds().setListener({});
    m_filter->filteredIds().setListener({});
    // The tree must not report, and nobody must be asked about, rows that are on their way out.
    if (m_tree) {
        m_tree->blockSignals(true);
        m_tree->forget();
    }
    m_treeModel->clear();
    m_treeMenus.reset();
    m_treeModel.reset();
    m_attributes->deleteAll();
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
    updateCursor(); // the mouse mode is the one of the view before
    return m_view;
}

ZelTree* ZELChipViewDatabase::getTree(QWidget* parent)
{
    if (m_tree)
        return m_tree;
    m_tree = new ZelTree(parent); // deleted by the destructor
    m_tree->setSortingEnabled(true);
    connect(m_tree, &QTreeWidget::itemSelectionChanged, this, &ZELChipViewDatabase::treeItemClicked);
    watchRows();
    return m_tree;
}

// Whatever may change which ids the selected row stands for.
void ZELChipViewDatabase::watchRows()
{
    const auto forget = [this] { m_shownRow = nullptr; };
    // Comes after the tree has told everyone.
    connect(m_tree->selectionModel(), &QItemSelectionModel::selectionChanged, this, forget);
    const QAbstractItemModel* rows = m_tree->model();
    connect(rows, &QAbstractItemModel::dataChanged, this, forget);
    connect(rows, &QAbstractItemModel::rowsInserted, this, forget);
    connect(rows, &QAbstractItemModel::rowsRemoved, this, forget);
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
    ZELGraphicItemAttribute* attribute = m_attributes->find(id);
    if (attribute && AttributeRegistry::handOut(*attribute) && m_scene)
        m_scene->elementIndex().watch(id, attribute->itemId);
    return attribute;
}

void ZELChipViewDatabase::setGraphicAttribute(int id, ZELGraphicItemAttribute* attribute)
{
    m_attributes->set(id, attribute);
    if (attribute)
        AttributeRegistry::handOut(*attribute);
}

int ZELChipViewDatabase::runTclCommand(const QString& command)
{
    int ret = 0;
    QString result;
    Q_EMIT sigRunTclCmd(command, ret, result);
    return ret;
}

} // namespace mirn::zelchipview
