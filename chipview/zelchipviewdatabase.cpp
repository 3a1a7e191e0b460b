// SPDX-License-Identifier: MIT
#include "chipview/zelchipviewdatabase.h"

#include "chipview/chipviewnavigator.h"
#include "chipview/toolactions.h"
#include "chipview/zelchipviewdatabase_parts.h"
#include "dialogs/dynamicvalues.h"
#include "filter/viewfilter.h"
#include "graphics/elements/attributeregistry.h"
#include "graphics/hovertext.h"
#include "graphics/sceneelements.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "placement/dropquery.h"
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

// This file has the controller's lifetime, its parts, refreshing and the tool actions. Its operations on resources and
// on elements of the drawing are in zelchipviewdatabase_resources.cpp and zelchipviewdatabase_elements.cpp.

namespace mirn::zelchipview {

namespace {

template <typename Interface> Interface& controllerAs()
{
    return *ZELChipViewDatabase::getInstance();
}

// Set during static initialisation, because a host may create an item, a tree or a dialog before it asks for the
// controller.
[[maybe_unused]] const bool isProvided = [] {
    DrawingController::setProvider(controllerAs<DrawingController>);
    TreeController::setProvider(controllerAs<TreeController>);
    SettingsController::setProvider(controllerAs<SettingsController>);
    return true;
}();

bool isProgramEnding = false;

// A tool that looks for lost memory finds it here. Nobody reads it, so that only "volatile" has it written at all.
struct
{
    AttributeRegistry* volatile attributes;
    ZelGraphicsScene* volatile scene;
} leftToSystem;

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

void ZELChipViewDatabase::programEnds()
{
    isProgramEnding = true;
}

ZELChipViewDatabase* ZELChipViewDatabase::existingInstance()
{
    return m_object;
}

ZELChipViewDatabase::Parts::Parts(ZELChipViewDatabase* controller)
    : treeModel(std::make_unique<ResourceTreeModel>())
    , usageRows(std::make_unique<UsageRows>())
    , dropQuery(std::make_unique<DropQuery>())
    , highlighter(std::make_unique<PlacementHighlighter>(new QTimer(controller)))
    , dynamicValues(std::make_unique<DynamicValues>())
    , filter(std::make_unique<ViewFilter>())
    , toolActions(std::make_unique<ToolActions>(controller))
    , hoverText(std::make_unique<HoverText>())
    , attributes(std::make_unique<AttributeRegistry>())
{ }

ZELChipViewDatabase::Parts::~Parts() = default;

ZELChipViewDatabase::ZELChipViewDatabase()
    : m_parts(std::make_unique<Parts>(this))
{
    buildTreeMenus();
    connectModeActions();
    connect(m_parts->highlighter->timer(), &QTimer::timeout, this, &ZELChipViewDatabase::onHighlightProbPlaceItems);
    const auto repaint = [this](const std::vector<int>& changed) {
        if (m_parts->scene)
            m_parts->scene->elements().repaint(changed);
    };
    m_parts->selectedIds.setListener([this, repaint](const std::vector<int>& changed) {
        m_parts->shownRow = nullptr;
        repaint(changed);
        Q_EMIT selectedElementsChanged();
    });
    m_parts->highlighter->highlightedIds().setListener(repaint);
    m_parts->filter->filteredIds().setListener(repaint);
}

ZELChipViewDatabase::~ZELChipViewDatabase()
{
    m_parts->selectedIds.setListener({});
    m_parts->highlighter->highlightedIds().setListener({});
    m_parts->filter->filteredIds().setListener({});
    // No signal and no query may reach rows that are being deleted.
    if (m_parts->tree) {
        m_parts->tree->blockSignals(true);
        m_parts->tree->forget();
    }
    m_parts->treeModel->clear();
    m_parts->treeMenus.reset();
    m_parts->treeModel.reset();
    if (isProgramEnding && m_parts->scene && m_parts->scene->views().isEmpty()) {
        leftToSystem.attributes = m_parts->attributes.release();
        leftToSystem.scene = m_parts->scene.data();
    } else {
        m_parts->attributes->deleteAll();
        delete m_parts->scene.data();
    }
    delete m_parts->tree.data();
    m_parts->parser.reset();
    m_parts->filter->deleteMenu();
}

void ZELChipViewDatabase::buildTreeMenus()
{
    TreeMenus::Commands commands;
    commands.reset = [this] { resetIP(); };
    commands.remove = [this] { removeIP(); };
    commands.configure = [this] { configIP(); };
    commands.expand = [this] { expandIP(); };
    commands.collapse = [this] { collapseIP(); };
    m_parts->treeMenus = std::make_unique<TreeMenus>(zelproject::getInstance()->flowName(), this, commands);
}

void ZELChipViewDatabase::connectModeActions()
{
    connect(getAction(ACTION_SELECT), &QAction::triggered, this, &ZELChipViewDatabase::onSelect);
    connect(getAction(ACTION_PAN), &QAction::triggered, this, &ZELChipViewDatabase::onPan);
    connect(getAction(ACTION_ZOOM), &QAction::triggered, this, &ZELChipViewDatabase::onZoom);
}

void ZELChipViewDatabase::setChipEngine(zelchipengine* engine)
{
    m_parts->engine = engine;
    m_parts->treeModel->setEngine(engine);
    m_parts->usageRows->setEngine(engine);
    m_parts->dropQuery->setEngine(engine);
    m_parts->dynamicValues->setEngine(engine);
    m_parts->filter->setEngine(engine);
    getViewFilterMenu();
    m_parts->toolActions->setFilterMenu(m_parts->filter->menu());
}

void ZELChipViewDatabase::setParent(QWidget* parent)
{
    m_parts->parentWidget = parent;
}

ZelGraphicsScene* ZELChipViewDatabase::getScene(QObject* parent)
{
    if (!m_parts->scene)
        m_parts->scene = new ZelGraphicsScene(parent);
    return m_parts->scene;
}

ZelGraphicsView* ZELChipViewDatabase::getView(ZelGraphicsScene* scene)
{
    if (m_parts->view)
        return m_parts->view;
    m_parts->view = new ZelGraphicsView(scene, nullptr); // the window takes it as its central widget
    auto* navigator = new ChipViewNavigator(m_parts->view); // child of the view
    m_parts->view->installEventFilter(navigator);
    if (scene)
        scene->installEventFilter(navigator);
    m_parts->hoverText->create(m_parts->view);
    updateCursor(); // a new view starts with the current mouse mode
    return m_parts->view;
}

ZelTree* ZELChipViewDatabase::getTree(QWidget* parent)
{
    if (m_parts->tree)
        return m_parts->tree;
    m_parts->tree = new ZelTree(parent); // deleted by the destructor
    m_parts->tree->setSortingEnabled(true);
    connect(m_parts->tree, &QTreeWidget::itemSelectionChanged, this, &ZELChipViewDatabase::treeItemClicked);
    watchRows();
    return m_parts->tree;
}

// Connects to everything that may change which ids the selected row stands for.
void ZELChipViewDatabase::watchRows()
{
    const auto forget = [this] { m_parts->shownRow = nullptr; };
    // This is called after the tree has emitted its own signal.
    connect(m_parts->tree->selectionModel(), &QItemSelectionModel::selectionChanged, this, forget);
    const QAbstractItemModel* rows = m_parts->tree->model();
    connect(rows, &QAbstractItemModel::dataChanged, this, forget);
    connect(rows, &QAbstractItemModel::rowsInserted, this, forget);
    connect(rows, &QAbstractItemModel::rowsRemoved, this, forget);
}

ZelResTable* ZELChipViewDatabase::getResTable(QWidget* parent)
{
    if (!m_parts->table)
        m_parts->table = new ZelResTable(parent); // owned by its parent
    return m_parts->table;
}

SVGParser* ZELChipViewDatabase::getSVGParser()
{
    if (!m_parts->parser)
        m_parts->parser = SVGParser::create();
    return m_parts->parser.get();
}

bool ZELChipViewDatabase::refresh(Enum_ChipView_Refresh_Type kind)
{
    if (m_parts->engine)
        m_parts->engine->refresh(kind);
    if (m_parts->tree && (kind == REFRESH_TREE || kind == REFRESH_ALL))
        m_parts->tree->refresh();
    if (m_parts->scene && (kind == REFRESH_GRAPHIC || kind == REFRESH_ALL)) {
        m_parts->scene->refresh();
        m_parts->scene->elements().synchroniseShown();
    }
    if (m_parts->table && (kind == REFRESH_TABLE || kind == REFRESH_ALL))
        m_parts->table->refresh();
    return true;
}

int ZELChipViewDatabase::getMouseMode() const
{
    return m_parts->toolActions->mouseMode();
}

QAction* ZELChipViewDatabase::getAction(int id) const
{
    return m_parts->toolActions->action(id);
}

int ZELChipViewDatabase::getDirtyFlag() const
{
    return m_parts->dirtyFlag;
}

void ZELChipViewDatabase::clearDirtyFlag()
{
    m_parts->dirtyFlag = 0;
}

QMap<int, QAction*>& ZELChipViewDatabase::actions()
{
    return m_parts->toolActions->byId();
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
    if (m_parts->view)
        m_parts->view->changeMouseCursor();
}

ZELGraphicItemAttribute* ZELChipViewDatabase::getGraphicItemAttribute(int id) const
{
    ZELGraphicItemAttribute* attribute = m_parts->attributes->find(id);
    if (attribute && AttributeRegistry::handOut(*attribute) && m_parts->scene)
        m_parts->scene->elements().index().watch(id, attribute->itemId);
    return attribute;
}

void ZELChipViewDatabase::setGraphicAttribute(int id, ZELGraphicItemAttribute* attribute)
{
    if (m_parts->scene && m_parts->attributes->isLatent(id))
        m_parts->scene->makeAllItems(); // an item keeps the attribute that it was loaded with
    m_parts->attributes->set(id, attribute);
    if (attribute)
        AttributeRegistry::handOut(*attribute);
}

AttributeRegistry& ZELChipViewDatabase::attributes()
{
    return *m_parts->attributes;
}

int ZELChipViewDatabase::runTclCommand(const QString& command)
{
    int ret = 0;
    QString result;
    Q_EMIT sigRunTclCmd(command, ret, result);
    return ret;
}

} // namespace mirn::zelchipview
