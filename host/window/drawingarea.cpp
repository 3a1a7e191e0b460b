// SPDX-License-Identifier: MIT
#include "host/window/drawingarea.h"

#include "chipview/zelchipgui.h"
#include "chipview/zelchipviewdatabase.h"
#include "engine/referenceengine.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "host/design/designeditor.h"
#include "host/drawing/drawingfit.h"
#include "host/drawing/drawingground.h"
#include "host/drawing/lockmarks.h"
#include "host/drawing/rowkeeper.h"
#include "host/gestures/dragnavigation.h"
#include "host/gestures/pointergestures.h"
#include "host/gestures/viewhistory.h"
#include "host/gestures/zoomanchor.h"
#include "host/project/projectsession.h"
#include "host/widgets/findbox.h"
#include "planning/elementprobe.h"
#include "planning/overviewmap.h"
#include "planning/resourcetip.h"
#include "resources/zelrestable.h"
#include "resources/zeltree.h"

#include <QCoreApplication>
#include <QDockWidget>
#include <QEvent>
#include <QGraphicsItem>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTreeWidgetItemIterator>

namespace mirn::zelchip {

using zelchipview::ZelChipGUI;
using zelchipview::ZELChipViewDatabase;
using zelchipview::ZelGraphicsView;

namespace {

const QString PlacementDock = QStringLiteral("Placement");
const QString UsageDock = QStringLiteral("Usage");

constexpr int DockWidth = 330;
constexpr double UsageShare = 0.3; // fraction of the docks' height
constexpr int UsageRowPadding = 6; // pixels added to the font height of a row
constexpr int RowsExpandedAtStart = 200; // a larger design opens with only its top level

bool hasMoreRowsThan(int limit, QTreeWidget* tree)
{
    QTreeWidgetItemIterator row(tree);
    for (int count = 0; *row; ++row) {
        if (++count > limit)
            return true;
    }
    return false;
}

} // namespace

DrawingArea::DrawingArea(std::unique_ptr<ProjectSession> session, QWidget* parent)
    : m_session(std::move(session))
{
    m_session->activate();
    m_chipView = std::make_unique<ZelChipGUI>(m_session->engine(), parent);
    m_chipView->setWindowFlags(Qt::Widget);
    ZELChipViewDatabase& controller = *ZELChipViewDatabase::getInstance();
    m_scene = controller.getScene(nullptr); // the window has created all four
    m_graphicsView = controller.getView(m_scene);
    m_tree = controller.getTree(nullptr);
    m_table = controller.getResTable(nullptr);
    m_graphicsView->setFrameShape(QFrame::NoFrame);
    new DrawingGround(m_graphicsView); // child of the view
    m_graphicsView->setTransformationAnchor(QGraphicsView::AnchorUnderMouse);
    // Otherwise a pointer that rests on the drawing would drag along what it last moved over, wherever a command has
    // zoomed since.
    m_graphicsView->setResizeAnchor(QGraphicsView::AnchorViewCenter);
    m_chipView->setItemsOnDemand(true);
    m_chipView->initGrahpicView();
    m_chipView->refresh(zelchipview::REFRESH_ALL);
    arrangeTree();
    arrangeTable();
    addFindBox();
    new ZoomAnchor(m_graphicsView); // child of the view
    new PointerGestures(m_graphicsView); // child of the view
    new DragNavigation(m_graphicsView); // child of the view
    m_fit = new DrawingFit(m_graphicsView); // child of the view
    m_fit->fit();
    m_history = new ViewHistory(m_graphicsView); // child of the view
    // Qt asks the last installed event filter first. The aids of the planning menu come later, so that a line or the
    // reason of a refusal goes before the resource of the site.
    new zelchipview::ResourceTip(m_graphicsView, *m_session->engine()); // child of the view
    m_overview = new zelchipview::OverviewMap(m_graphicsView); // child of the viewport
    QObject::connect(m_fit, &DrawingFit::refitted, m_history, &ViewHistory::replace);
    m_locks = new LockMarks(m_graphicsView, m_tree, m_session->editor().engine().design()); // child of the view
    m_rows = new RowKeeper(m_tree); // child of the tree
    QObject::connect(m_rows, &RowKeeper::clickedAgain, &controller, &ZELChipViewDatabase::treeItemClicked);
}

DrawingArea::~DrawingArea()
{
    if (m_session)
        endChipView();
}

std::unique_ptr<ProjectSession> DrawingArea::takeSession()
{
    endChipView();
    m_session->deactivate();
    return std::move(m_session);
}

void DrawingArea::endChipView()
{
    m_chipView.reset();
    ZELChipViewDatabase::destoryInstance();
}

void DrawingArea::showSentence(const QString& text)
{
    QWidget* viewport = m_graphicsView->viewport();
    auto* label = new QLabel(text, viewport); // owned by the viewport
    label->setObjectName(QStringLiteral("sentence"));
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    auto* layout = new QVBoxLayout(viewport); // owned by the viewport
    layout->addWidget(label);
}

void DrawingArea::refresh()
{
    m_chipView->refresh(zelchipview::REFRESH_ALL);
    m_rows->restore();
    m_locks->refresh();
}

void DrawingArea::fit()
{
    m_fit->fit();
}

void DrawingArea::settle()
{
    QCoreApplication::sendPostedEvents(m_graphicsView, QEvent::MetaCall); // scroll bars come and go
    m_fit->settle();
    m_overview->settle();
}

bool DrawingArea::zoomToSelection()
{
    QList<QGraphicsItem*> selected;
    for (int id : ZELChipViewDatabase::getInstance()->selectedIds().ids())
        selected += m_scene->itemsOf(id);
    zoomToItems(*m_graphicsView, selected);
    return !selected.isEmpty();
}

void DrawingArea::selectAndZoom(const std::vector<int>& ids)
{
    m_scene->clearSelectedItems();
    for (int id : ids) {
        if (!m_scene->itemsOf(id).isEmpty())
            ZELChipViewDatabase::getInstance()->addSelctedItem(id, true);
    }
    zoomToSelection();
}

void DrawingArea::selectRow(const QString& resource)
{
    for (QTreeWidgetItemIterator row(m_tree); *row; ++row) {
        if (m_tree->getResourceName(*row) != resource)
            continue;
        m_tree->setCurrentItem(*row);
        m_tree->scrollToItem(*row);
        return;
    }
}

void DrawingArea::arrangeTree()
{
    m_tree->sortByColumn(0, Qt::AscendingOrder);
    if (!hasMoreRowsThan(RowsExpandedAtStart, m_tree))
        m_chipView->expandAllTreeItems();
}

void DrawingArea::arrangeTable()
{
    QHeaderView* rows = m_table->verticalHeader();
    rows->setMinimumSectionSize(rows->fontMetrics().height());
    rows->setDefaultSectionSize(rows->fontMetrics().height() + UsageRowPadding);
}

void DrawingArea::addFindBox()
{
    auto* dock = m_chipView->findChild<QDockWidget*>(PlacementDock);
    auto* titleBar = new QWidget(dock); // owned by the dock
    auto* row = new QHBoxLayout(titleBar);
    row->setContentsMargins(6, 3, 3, 3);
    row->addWidget(new QLabel(dock->windowTitle(), titleBar));
    row->addSpacing(12);
    m_findBox = new FindBox(m_tree, titleBar);
    row->addWidget(m_findBox, 1);
    dock->setTitleBarWidget(titleBar);
    QObject::connect(m_findBox, &FindBox::chosen, m_chipView.get(), [this] { zoomToSelection(); });
}

void DrawingArea::arrangeDocks()
{
    auto* placement = m_chipView->findChild<QDockWidget*>(PlacementDock);
    auto* usage = m_chipView->findChild<QDockWidget*>(UsageDock);
    const int usageHeight = static_cast<int>(m_chipView->height() * UsageShare);
    m_chipView->resizeDocks({placement, usage}, {DockWidth, DockWidth}, Qt::Horizontal);
    m_chipView->resizeDocks({placement, usage}, {m_chipView->height() - usageHeight, usageHeight}, Qt::Vertical);
}

} // namespace mirn::zelchip
