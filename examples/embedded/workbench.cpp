// SPDX-License-Identifier: MIT
#include "workbench.h"

#include "chipview/zelchipgui.h"
#include "chipview/zelchipviewdatabase.h"
#include "commands.h"
#include "engine/referenceengine.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "planning/dragreason.h"
#include "planning/dragwatch.h"
#include "planning/overviewmap.h"
#include "planning/placeon.h"
#include "planning/planaids.h"
#include "planning/pointernote.h"
#include "platform/contract/zeltext.h"
#include "resources/zeltree.h"

#include <QAction>
#include <QDockWidget>
#include <QFile>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <QTreeWidget>

#include <utility>

using namespace mirn::zelchipview;
using mirn::zelengine::ReferenceEngine;

Workbench::Workbench(std::unique_ptr<ReferenceEngine> engine)
    : m_engine(std::move(engine))
    , m_unplaced(new QListWidget(this))
    , m_log(new QPlainTextEdit(this))
    , m_tools(addToolBar(QStringLiteral("Floorplan")))
{
    setWindowTitle(QStringLiteral("Workbench"));
    addTabs();
    addDocks();
    addTools();
    addPlanningAids();
    refresh();
}

// The view must be deleted first, then its controller, and the engine last. As a child, the view would be deleted only
// after the members of this class, the engine among them.
Workbench::~Workbench()
{
    m_chipView.reset();
    ZELChipViewDatabase::destoryInstance();
}

void Workbench::addTabs()
{
    auto* tabs = new QTabWidget(this);
    m_chipView = std::make_unique<ZelChipGUI>(m_engine.get(), tabs);
    m_chipView->setWindowFlags(Qt::Widget); // otherwise it would stay a top-level window
    connect(m_chipView.get(), &ZelChipGUI::sigRunTclCmd, this, &Workbench::answer);
    m_chipView->initGrahpicView();
    tabs->addTab(m_chipView.get(), QStringLiteral("Floorplan"));
    auto* drawing = qobject_cast<ZelGraphicsView*>(m_chipView->centralWidget());
    m_aids = new PlanAids(drawing, m_chipView->findChild<QTreeWidget*>(), *m_engine); // owned by the drawing's view

    auto* source = new QPlainTextEdit(tabs);
    QFile file(m_engine->project().designFile);
    if (file.open(QIODevice::ReadOnly))
        source->setPlainText(QString::fromUtf8(file.readAll()));
    source->setReadOnly(true);
    tabs->addTab(source, QStringLiteral("Design"));
    setCentralWidget(tabs);
}

void Workbench::addDocks()
{
    auto* unplaced = new QDockWidget(QStringLiteral("To be placed"), this);
    unplaced->setWidget(m_unplaced);
    addDockWidget(Qt::RightDockWidgetArea, unplaced);

    m_log->setReadOnly(true);
    auto* log = new QDockWidget(QStringLiteral("Commands"), this);
    log->setWidget(m_log);
    addDockWidget(Qt::BottomDockWidgetArea, log);
}

// The view's own actions have no icons; a host sets those of its program.
void Workbench::addTools()
{
    const QMap<int, QAction*>& actions = *m_chipView->getActions();
    for (const int id : {ACTION_SELECT, ACTION_PAN, ACTION_ZOOM, ACTION_FILTER})
        m_tools->addAction(actions.value(id));
    m_tools->addSeparator();
    ZelChipGUI* const view = m_chipView.get();
    connect(m_tools->addAction(QStringLiteral("Zoom In")), &QAction::triggered, view, [view] { view->zoomIn(); });
    connect(m_tools->addAction(QStringLiteral("Zoom Out")), &QAction::triggered, view, [view] { view->zoomOut(); });
    connect(m_tools->addAction(QStringLiteral("Reset Zoom")), &QAction::triggered, view, [view] { view->zoomFit(); });
}

// Everything here is a child of the view or of this window, and asks the engine by itself.
void Workbench::addPlanningAids()
{
    ZELChipViewDatabase* const database = ZELChipViewDatabase::getInstance();
    ZelGraphicsScene* const scene = database->getScene(nullptr);
    ZelGraphicsView* const view = database->getView(scene);
    ZelTree* const tree = database->getTree(nullptr);

    new OverviewMap(view);

    auto* note = new PointerNote(this);
    auto* watch = new DragWatch(view, tree, *m_engine);
    auto* reason = new DragReason(view, tree, watch, *m_engine);
    connect(reason, &DragReason::changed, note, &PointerNote::showAt);
    connect(reason, &DragReason::refused, note, &PointerNote::showForAWhile);

    auto* placeOn = new PlaceOn(view, scene, tree, *m_engine);
    QAction* action = m_tools->addAction(QStringLiteral("Place on..."));
    action->setShortcut(Qt::CTRL | Qt::Key_P);
    connect(action, &QAction::triggered, placeOn, &PlaceOn::openForRow);
    connect(placeOn, &PlaceOn::refused, statusBar(), [this](const QString& why) { statusBar()->showMessage(why); });
}

// Called while the view waits: `ret` tells it whether the command was carried out.
void Workbench::answer(const QString& command, int& ret, QString& result)
{
    const QString refusal = runCommand(command, *m_engine);
    ret = refusal.isEmpty() ? 1 : 0;
    result = refusal;
    m_log->appendPlainText(refusal.isEmpty() ? command : QStringLiteral("%1\n  %2").arg(command, refusal));
    statusBar()->showMessage(refusal);
    if (ret)
        refresh();
}

// The engine has changed. Neither the view nor the window's own parts notice that by themselves.
void Workbench::refresh()
{
    m_chipView->refresh(REFRESH_ALL);
    m_aids->refresh();
    m_unplaced->clear();
    for (const int index : m_engine->design().all()) {
        const auto& resource = m_engine->design().resource(index);
        if (resource.site < 0 && resource.children.empty())
            m_unplaced->addItem(resource.path);
    }
}

bool Workbench::placeOne()
{
    ZELChipViewDatabase* const database = ZELChipViewDatabase::getInstance();
    for (int row = 0; row < m_unplaced->count(); ++row) {
        const QString resource = m_unplaced->item(row)->text();
        const std::string name = toEngineText(resource);
        std::list<std::string> sites;
        m_engine->showProbPlaceItem(&name, &name, sites);
        if (!sites.empty())
            return database->place(resource, fromEngineText(sites.front())) != 0;
    }
    return false;
}
