// SPDX-License-Identifier: MIT
#include "chipview/zelchipgui.h"

#include "chipview/drawingloader.h"
#include "chipview/zelchipviewdatabase.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "platform/contract/mirnprojectmanager.h"
#include "platform/contract/svgparser.h"
#include "platform/contract/zelchipdata.h"
#include "platform/contract/zelchipengine.h"
#include "platform/contract/zeltrace.h"
#include "resources/zelrestable.h"
#include "resources/zeltree.h"

#include <QDockWidget>
#include <QPointer>

namespace mirn::zelchipview {

namespace {

// The parser's scratch file in the implementation's directory.
const std::string WorkingFileName = "/zelsvg.temp";

void debugOut(const std::string& text)
{
    TRQDebug::getInstance()->trqDebugOut(text, "a");
}

MirnImplementation* defaultImplementation()
{
    const MirnProject* project = MirnProjectManager::getProjectManager()->getProject();
    return project ? project->getImplementation(project->getDefaultImplementation()) : nullptr;
}

// Removes an object that the controller owns from a window that is about to delete its children.
template <typename Object> void takeOut(Object* object, const QObject* window)
{
    for (const QObject* ancestor = object ? object->parent() : nullptr; ancestor; ancestor = ancestor->parent()) {
        if (ancestor == window) {
            object->setParent(nullptr);
            return;
        }
    }
}

} // namespace

struct ZelChipGUI::Parts
{
    zelchipengine* engine; // not owned
    QPointer<ZelGraphicsScene> scene;
    QPointer<ZelGraphicsView> view;
    QPointer<ZelTree> tree;
    QPointer<ZelResTable> table;
};

ZelChipGUI::ZelChipGUI(zelchipengine* engine, QWidget* parent)
    : QMainWindow(parent, Qt::WindowFlags())
    , m_parts(new Parts{engine, {}, {}, {}, {}})
{
    ZELChipViewDatabase* database = ZELChipViewDatabase::getInstance();
    database->setChipEngine(engine);
    database->setParent(parent);
    m_parts->scene = database->getScene(this);
    m_parts->view = database->getView(m_parts->scene);
    m_parts->view->setResizeAnchor(QGraphicsView::AnchorUnderMouse);
    m_parts->view->setRenderHint(QPainter::Antialiasing, true);
    m_parts->view->setViewportUpdateMode(QGraphicsView::BoundingRectViewportUpdate);
    m_parts->tree = database->getTree(this);
    m_parts->table = database->getResTable(this);
    setCentralWidget(m_parts->view);
    addDock(QStringLiteral("Placement"), tr("Placement"), m_parts->tree);
    addDock(QStringLiteral("Usage"), tr("Usage"), m_parts->table);
    connect(database, &ZELChipViewDatabase::sigRunTclCmd, this, &ZelChipGUI::sigRunTclCmd);
}

ZelChipGUI::~ZelChipGUI()
{
    // The controller outlives the window and continues to own scene and tree. If the controller is already gone, it is
    // not created again.
    if (ZELChipViewDatabase* database = ZELChipViewDatabase::existingInstance())
        database->clearHighlightedProbPlaceItems();
    takeOut(m_parts->scene.data(), this);
    takeOut(m_parts->tree.data(), this);
}

void ZelChipGUI::addDock(const QString& name, const QString& title, QWidget* content)
{
    auto* dock = new QDockWidget(title, this);
    dock->setObjectName(name);
    dock->setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea | Qt::BottomDockWidgetArea);
    dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    dock->setWidget(content);
    addDockWidget(Qt::LeftDockWidgetArea, dock);
}

bool ZelChipGUI::initTreeView()
{
    return true;
}

bool ZelChipGUI::initGrahpicView()
{
    const zelchipdata* chip = m_parts->engine ? m_parts->engine->chip() : nullptr;
    const std::string drawingFile = chip ? chip->drawingFile() : std::string();
    debugOut("ZelChipGUI::initGrahpicView svfgile: " + drawingFile);
    SVGParser* parser = ZELChipViewDatabase::getInstance()->getSVGParser();
    const MirnImplementation* implementation = defaultImplementation();
    if (!implementation)
        return false;
    const std::string workingPath = implementation->getImplementFullPath() + WorkingFileName;
    debugOut("ZelChipGUI::initGrahpicView filePath: " + workingPath);
    if (m_parts->scene && m_parts->view)
        loadDrawing(*parser, drawingFile, workingPath);
    refresh(REFRESH_GRAPHIC);
    return true;
}

void ZelChipGUI::loadDrawing(SVGParser& parser, const std::string& drawingFile, const std::string& workingPath)
{
    const bool isLoaded = parser.loadSVGElements(drawingFile, workingPath);
    debugOut(std::string("ZelChipGUI::initGrahpicView loadSVGElements ") + (isLoaded ? "FINISHED" : "FAILED") + "  "
        + workingPath);
    // After a failure, the view shows the records read so far.
    m_parts->scene->setGlobalParameter(parser.getSVGParameter());
    const zel_Parameter& parameter = m_parts->scene->globalParameter();
    m_parts->scene->setSceneRect(0, 0, parameter.width, parameter.height);
    m_parts->view->setCurrentScale(parameter.initialScale);
    DrawingLoader(m_parts->scene).load(parser);
}

void ZelChipGUI::setItemsOnDemand(bool isOn)
{
    if (m_parts->scene)
        m_parts->scene->setItemsOnDemand(isOn);
}

void ZelChipGUI::zoomIn()
{
    if (m_parts->view)
        m_parts->view->zoomIn();
}

void ZelChipGUI::zoomOut()
{
    if (m_parts->view)
        m_parts->view->zoomOut();
}

void ZelChipGUI::zoomFit()
{
    if (m_parts->view)
        m_parts->view->zoomFit();
}

void ZelChipGUI::zoomTo()
{
    if (m_parts->view)
        m_parts->view->zoomTo(nullptr);
}

bool ZelChipGUI::refresh(Enum_ChipView_Refresh_Type kind)
{
    return ZELChipViewDatabase::getInstance()->refresh(kind);
}

int ZelChipGUI::getDirtyFlag()
{
    return ZELChipViewDatabase::getInstance()->getDirtyFlag();
}

void ZelChipGUI::clearDirtyFlag()
{
    ZELChipViewDatabase::getInstance()->clearDirtyFlag();
}

QMap<int, QAction*>* ZelChipGUI::getActions()
{
    return &ZELChipViewDatabase::getInstance()->actions();
}

void ZelChipGUI::expandAllTreeItems()
{
    // Without columns Qt would take the top-level rows for the children of every row, and never finish.
    if (m_parts->tree && m_parts->tree->columnCount() > 0)
        m_parts->tree->expandAll();
}

void ZelChipGUI::collapseAllTreeItems()
{
    if (m_parts->tree)
        m_parts->tree->collapseAll();
}

} // namespace mirn::zelchipview
