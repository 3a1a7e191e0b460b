// SPDX-License-Identifier: MIT
#include "tests/soak/gesturewindow.h"

#include "chipview/zelchipgui.h"
#include "chipview/zelchipviewdatabase.h"
#include "engine/referenceengine.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "host/console/consoledock.h"
#include "host/project/projectsession.h"
#include "host/window/findbox.h"
#include "host/window/mainwindow.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDir>
#include <QDockWidget>
#include <QDragLeaveEvent>
#include <QDragMoveEvent>
#include <QGraphicsItem>
#include <QMenu>
#include <QRubberBand>
#include <QTest>
#include <QTreeWidget>
#include <QWheelEvent>
#include <QWindow>

using namespace mirn;
using namespace mirn::zelchip;
using namespace mirn::zelchipview;

namespace {

constexpr int TurnsToSettle = 200; // of the event loop
constexpr int TurnsToRest = 5; // a turn posts events for the next one: a new window lays out, then fits its drawing
constexpr int GesturesPerPicture = 40; // comparing pictures takes longer than most gestures

ZELChipViewDatabase& database()
{
    return *ZELChipViewDatabase::getInstance();
}

template <typename Container> decltype(auto) pick(Container& container, unsigned number)
{
    return container[static_cast<int>(number % static_cast<unsigned>(container.size()))];
}

} // namespace

GestureWindow::GestureWindow() = default;
GestureWindow::~GestureWindow() = default;

DesignEditor& GestureWindow::editor() const
{
    return m_session->editor();
}

ZelChipGUI* GestureWindow::chipView() const
{
    return m_window->findChild<ZelChipGUI*>();
}

ZelGraphicsView* GestureWindow::view() const
{
    return qobject_cast<ZelGraphicsView*>(chipView()->centralWidget());
}

QTreeWidget* GestureWindow::tree() const
{
    return chipView()->findChild<QTreeWidget*>();
}

QString GestureWindow::perform(const Gesture& gesture)
{
    m_fault.clear();
    m_gesture = gesture;
    if (gesture.kind == Gesture::Begin || !m_window) {
        const QString fault = end();
        if (!fault.isEmpty())
            return fault;
        m_project = std::make_unique<SampleProject>();
        open();
    }
    m_attendant.start(number(2));
    carryOut(gesture);
    settle();
    m_attendant.stop();
    if (!editor().isModified())
        m_saved = state();
    checkDesign();
    checkModes();
    if (++m_gestures % GesturesPerPicture == 0 && !m_isPressed && !m_isDragging) {
        checkRows();
        checkPicture();
    }
    return m_fault;
}

QString GestureWindow::end()
{
    if (m_window)
        takeEverythingBack();
    m_window.reset();
    m_project.reset();
    m_isDragging = false;
    m_gestures = 0;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    return m_fault;
}

void GestureWindow::open()
{
    m_window.reset();
    QString error;
    std::unique_ptr<ProjectSession> session = ProjectSession::open(m_project->path(), &error);
    if (!session)
        qFatal("%s", qPrintable(error));
    m_session = session.get();
    m_window = std::make_unique<MainWindow>(std::move(session));
    noteOpening();
    m_window->resize(900, 600);
    m_window->show();
    settle();
    // Of a button that was down when the window before went away.
    if (m_isPressed)
        mouse(Gesture::Release, view()->viewport(), view()->viewport()->rect().center(), Qt::LeftButton);
}

void GestureWindow::carryOut(const Gesture& gesture)
{
    const bool isDrag = gesture.kind == Gesture::DragMove || gesture.kind == Gesture::Drop
        || gesture.kind == Gesture::Elapse || gesture.kind == Gesture::Command || gesture.kind == Gesture::Resize;
    if (m_isDragging && !isDrag)
        leave(); // the pointer is taken meanwhile
    switch (gesture.kind) {
    case Gesture::Press:
    case Gesture::Move:
    case Gesture::Release:
    case Gesture::DoubleClick:
        pressOrRelease(gesture.kind);
        break;
    case Gesture::Wheel:
        turnWheel();
        break;
    case Gesture::Key:
        pressKey();
        break;
    case Gesture::Mode:
        chooseMode();
        break;
    case Gesture::SelectRow:
        selectRow();
        break;
    case Gesture::ExpandRow:
        if (QTreeWidgetItem* row = anyRow())
            row->setExpanded(!row->isExpanded());
        break;
    case Gesture::PressRow:
    case Gesture::MoveOnRow:
    case Gesture::ReleaseRow:
        if (QTreeWidgetItem* row = anyRow(); row && tree()->isVisible()) {
            const QPoint middle = tree()->visualItemRect(row).center();
            if (tree()->viewport()->rect().contains(middle))
                mouse(gesture.kind, tree()->viewport(), middle,
                    gesture.kind == Gesture::MoveOnRow ? Qt::NoButton : Qt::LeftButton);
        }
        break;
    case Gesture::RowMenu:
        openRowMenu();
        break;
    case Gesture::FilterMenu: {
        QContextMenuEvent event(QContextMenuEvent::Mouse, place(), view()->viewport()->mapToGlobal(place()));
        QApplication::sendEvent(view()->viewport(), &event);
        break;
    }
    case Gesture::DragMove:
        drag(true);
        break;
    case Gesture::Drop:
        drag(false);
        break;
    case Gesture::Elapse:
        elapse();
        break;
    case Gesture::Command:
        runAnyCommand();
        break;
    case Gesture::Trigger:
        triggerAction();
        break;
    case Gesture::Find:
        find();
        break;
    case Gesture::MoveDock:
        moveDock();
        break;
    case Gesture::Resize:
        m_window->resize(static_cast<int>(300 + number(0) % 900), static_cast<int>(250 + number(1) % 700));
        break;
    case Gesture::Hide:
        m_window->setVisible(false);
        settle();
        m_window->setVisible(true);
        break;
    case Gesture::Reopen:
        reopen();
        break;
    case Gesture::Renew:
        if (number(0) % 2 == 0)
            takeEverythingBack();
        open();
        break;
    case Gesture::Close:
        close();
        break;
    default:
        break;
    }
}

// Until all that the gesture has set off is over.
void GestureWindow::settle()
{
    int turns = 0;
    do {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        ++turns;
    } while (turns < TurnsToRest || (Attendant::isWanted() && turns < TurnsToSettle));
    expect(turns < TurnsToSettle, QStringLiteral("a menu or a dialog does not go away"));
}

void GestureWindow::expect(bool isTrue, const QString& fault)
{
    if (!isTrue && m_fault.isEmpty())
        m_fault = fault;
}

// Half of the places are sites, where there is more to happen.
QPoint GestureWindow::place() const
{
    const QSize size = view()->viewport()->size().expandedTo({1, 1});
    if (number(0) % 2 == 0) {
        const auto& sites = editor().engine().device().sites();
        const int id = pick(sites, number(1)).id;
        const QList<QGraphicsItem*> items = qobject_cast<ZelGraphicsScene*>(view()->scene())->itemsOf(id);
        if (!items.isEmpty()) {
            const QPoint middle = view()->mapFromScene(items.first()->sceneBoundingRect().center());
            if (QRect(QPoint(), size).contains(middle))
                return middle;
        }
    }
    return {static_cast<int>((number(0) >> 8) % static_cast<unsigned>(size.width())),
        static_cast<int>((number(1) >> 8) % static_cast<unsigned>(size.height()))};
}

QString GestureWindow::anyResource() const
{
    const zelengine::Design& design = editor().engine().design();
    const std::vector<int> all = design.all();
    return all.empty() ? QStringLiteral("none") : design.resource(pick(all, number(0))).path;
}

// Mostly one where the resource may go.
int GestureWindow::anySite(int resource) const
{
    const std::vector<int> allowed = resource >= 0 ? editor().engine().rules().sitesFor(resource) : std::vector<int>();
    if (!allowed.empty() && number(1) % 4 > 0)
        return pick(allowed, number(1) >> 2);
    return pick(editor().engine().device().sites(), number(1) >> 2).id;
}

// Null for one that the find box has hidden.
QTreeWidgetItem* GestureWindow::anyRow() const
{
    QTreeWidgetItem* row = rowOf(anyResource());
    return row && !row->isHidden() ? row : nullptr;
}

QTreeWidgetItem* GestureWindow::rowOf(const QString& resource) const
{
    for (QTreeWidgetItemIterator row(tree()); *row; ++row) {
        if ((*row)->data(0, RESOURCENAME).toString() == resource)
            return *row;
    }
    return nullptr;
}

// As the pointer's events come from the window system: to the window, which finds the widget.
void GestureWindow::mouse(Gesture::Kind kind, QWidget* target, QPoint position, Qt::MouseButton button)
{
    QWidget* top = target->window();
    if (!target->isVisible() || !top->windowHandle())
        return;
    const QPoint inWindow = target->mapTo(top, position);
    if (!top->rect().contains(inWindow) || inWindow.isNull())
        return;
    const bool isPress = kind == Gesture::Press || kind == Gesture::PressRow || kind == Gesture::DoubleClick;
    if (isPress && !top->isActiveWindow()) { // as window managers do
        top->activateWindow();
        QCoreApplication::processEvents();
    }
    if (isPress && m_isPressed)
        QTest::mouseRelease(top->windowHandle(), Qt::LeftButton, Qt::NoModifier, inWindow);
    switch (kind) {
    case Gesture::Press:
    case Gesture::PressRow:
        QTest::mousePress(top->windowHandle(), button, Qt::NoModifier, inWindow);
        break;
    case Gesture::Move:
    case Gesture::MoveOnRow:
        QTest::mouseMove(top->windowHandle(), inWindow);
        break;
    case Gesture::DoubleClick:
        QTest::mouseDClick(top->windowHandle(), button, Qt::NoModifier, inWindow);
        break;
    default:
        QTest::mouseRelease(top->windowHandle(), button, Qt::NoModifier, inWindow);
        break;
    }
    if (button == Qt::LeftButton)
        m_isPressed = isPress && kind != Gesture::DoubleClick;
}

void GestureWindow::pressOrRelease(Gesture::Kind kind)
{
    QWidget* viewport = view()->viewport();
    if (kind == Gesture::Press && !m_isPressed && number(2) % 16 == 0) {
        mouse(Gesture::Press, viewport, place(), Qt::MiddleButton);
        mouse(Gesture::Release, viewport, place(), Qt::MiddleButton);
    } else if (kind == Gesture::Release && m_isPressed) {
        finishStroke();
    } else {
        mouse(kind, viewport, place(), kind == Gesture::Move ? Qt::NoButton : Qt::LeftButton);
    }
}

void GestureWindow::finishStroke()
{
    const auto* band = view()->findChild<QRubberBand*>();
    mouse(Gesture::Move, view()->viewport(), place(), Qt::NoButton); // as Qt has it before a release elsewhere
    settle();
    const bool isSelecting = database().getMouseMode() == ACTION_SELECT && band->isVisible();
    const QPoint position = place();
    const QRect area = band->geometry();
    const QSizeF inScene = view()->mapToScene(area).boundingRect().size();
    const bool isBand = inScene.width() > 2 && inScene.height() > 2;
    // A selected element has another pen, and with it another shape: the selection ends before, as the release begins
    // with. What lies within a pixel of the band's border may be in it or not.
    if (isSelecting)
        database().selectedIds().clear();
    const auto touchedBy = [&](int border) {
        return isBand ? idsTouchedBy(area.adjusted(-border, -border, border, border)) : idsClickedAt(position);
    };
    const QSet<int> expected = touchedBy(0);
    const QSet<int> inside = touchedBy(-1);
    const QSet<int> outside = touchedBy(1);
    mouse(Gesture::Release, view()->viewport(), position, Qt::LeftButton);
    if (!isSelecting || band->isVisible())
        return;
    const QSet<int> selected = database().selectedIds().ids();
    expect(selected == expected || (isBand && selected.contains(inside) && outside.contains(selected)),
        QStringLiteral("selected are %1 instead of %2").arg(textOf(selected), textOf(expected)));
    const int occupant = expected.size() == 1 ? editor().engine().design().occupant(*expected.begin()) : -1;
    QTreeWidgetItem* row = occupant >= 0 ? rowOf(editor().engine().design().resource(occupant).path) : nullptr;
    expect(!row || tree()->currentItem() == row, QStringLiteral("the row of what was clicked is not the current one"));
}

void GestureWindow::turnWheel()
{
    const int steps = number(2) % 2 == 0 ? 1 : -1;
    const Qt::KeyboardModifiers modifiers = (number(2) >> 1) % 3 > 0 ? Qt::ControlModifier : Qt::NoModifier;
    QWidget* viewport = view()->viewport();
    QWheelEvent event(place(), viewport->mapToGlobal(place()), QPoint(), QPoint(0, 120 * steps), Qt::NoButton,
        modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(viewport, &event);
}

void GestureWindow::pressKey()
{
    constexpr Qt::Key Keys[] = {Qt::Key_Plus, Qt::Key_Minus, Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down,
        Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown, Qt::Key_Escape, Qt::Key_Return, Qt::Key_Tab, Qt::Key_Asterisk,
        Qt::Key_S, Qt::Key_H, Qt::Key_Z, Qt::Key_F};
    const Qt::Key key = Keys[number(0) % std::size(Keys)];
    QWidget* const targets[] = {view(), tree(), m_window.get(), QApplication::focusWidget()};
    QWidget* target = targets[number(1) % std::size(targets)];
    QTest::keyClick(target ? target : m_window.get(), key);
}

void GestureWindow::chooseMode()
{
    constexpr int Modes[] = {ACTION_SELECT, ACTION_SELECT, ACTION_ZOOM, ACTION_PAN};
    database().getAction(Modes[number(0) % std::size(Modes)])->trigger();
}

void GestureWindow::selectRow()
{
    QTreeWidgetItem* row = anyRow();
    if (!row || row->isSelected())
        return;
    tree()->setCurrentItem(row);
    const QSet<int> selected = database().selectedIds().ids();
    expect(selected == idsOf(*row),
        QStringLiteral("the row selects %1 instead of %2").arg(textOf(selected), textOf(idsOf(*row))));
}

void GestureWindow::openRowMenu()
{
    QTreeWidgetItem* row = anyRow();
    if (!row || !tree()->isVisible())
        return;
    tree()->setCurrentItem(row);
    tree()->scrollToItem(row);
    const QPoint middle = tree()->visualItemRect(row).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, middle, tree()->viewport()->mapToGlobal(middle));
    QApplication::sendEvent(tree()->viewport(), &event);
}

void GestureWindow::drag(bool isOver)
{
    const QPoint position = place();
    QWidget* viewport = view()->viewport();
    const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
    if (!m_isDragging && !isOver)
        return;
    QCursor::setPos(viewport->mapToGlobal(position));
    if (!m_isDragging) {
        QDragEnterEvent enter(position, actions, &m_mimeData, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(viewport, &enter);
        m_isDragging = true;
    }
    QDragMoveEvent move(position, actions, &m_mimeData, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(viewport, &move);
    if (isOver)
        return;
    if (!move.isAccepted()) {
        leave();
        return;
    }
    QDropEvent drop(position, actions, &m_mimeData, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(viewport, &drop);
    m_isDragging = false;
    expect(database().highlightedIds().isEmpty(), QStringLiteral("sites are lit after a drop"));
}

void GestureWindow::leave()
{
    QDragLeaveEvent event;
    QApplication::sendEvent(view()->viewport(), &event);
    m_isDragging = false;
}

// Only with something in hand.
void GestureWindow::elapse()
{
    const QList<QTimer*> timers = m_isDragging ? database().findChildren<QTimer*>() : QList<QTimer*>();
    for (QTimer* timer : timers) {
        if (!timer->isActive())
            continue;
        QTimerEvent event(timer->timerId());
        QApplication::sendEvent(timer, &event);
    }
    const QSet<int> lit = database().highlightedIds().ids();
    const QList<QTreeWidgetItem*> rows = tree()->selectedItems();
    if (lit.isEmpty() || rows.isEmpty() || timers.isEmpty())
        return;
    const int resource = editor().engine().design().find(rows.first()->data(0, RESOURCENAME).toString());
    const std::vector<int> sites = resource >= 0 ? editor().engine().rules().sitesFor(resource) : std::vector<int>();
    const QSet<int> expected(sites.begin(), sites.end());
    expect(lit == expected, QStringLiteral("%1 are lit instead of %2").arg(textOf(lit), textOf(expected)));
}

void GestureWindow::run(const QString& command)
{
    Q_EMIT m_window->findChild<ConsoleDock*>()->commandEntered(command);
}

void GestureWindow::runAnyCommand()
{
    const QString name = anyResource();
    const QString site = QString::number(anySite(editor().engine().design().find(name)));
    const QStringList commands{QStringLiteral("zel_resource place -rsc {%1} -id %2"),
        QStringLiteral("zel_resource place -rsc {%1} -id %2"), QStringLiteral("zel_resource reset -ip {%1}"),
        QStringLiteral("zel_resource remove -ip {%1}"), QStringLiteral("undo"), QStringLiteral("redo"),
        QStringLiteral("zel_project save"), QStringLiteral("zel_project refresh"), QStringLiteral("zel_view select %2"),
        QStringLiteral("zel_view zoom %2"), QStringLiteral("zel_view fit"), QStringLiteral("zel_tree select -rsc {%1}"),
        QStringLiteral("zel_tree expand"), QStringLiteral("zel_tree collapse"),
        QStringLiteral("zel_tree where -rsc {%1}"),
        QStringLiteral("zel_setting -id 8000000 -key CH0 -value {CORE CLOCK}"),
        QStringLiteral("zel_resource configure -ip {%1} -key frequency -value 75")};
    const QStringList removed = editor().engine().design().removedPaths();
    if (!removed.isEmpty() && number(2) % 8 == 0)
        run(QStringLiteral("zel_resource restore -ip {%1}").arg(pick(removed, number(1))));
    else
        run(QString(pick(commands, number(2))).replace(QLatin1String("%1"), name).replace(QLatin1String("%2"), site));
}

// Those that open a dialog for files are left out: it watches the whole disk.
void GestureWindow::triggerAction()
{
    QList<QAction*> actions;
    const QList<QAction*> all = m_window->findChildren<QAction*>();
    for (QAction* action : all) {
        if (action->isEnabled() && !action->menu() && !action->text().endsWith(QLatin1String("..."))
            && !action->text().endsWith(QChar(0x2026)) && action->shortcut() != QKeySequence(QKeySequence::Quit))
            actions.append(action);
    }
    pick(actions, number(0))->trigger();
}

void GestureWindow::find()
{
    auto* box = m_window->findChild<FindBox*>();
    if (number(0) % 3 == 0) {
        QTest::keyClick(box, number(1) % 2 == 0 ? Qt::Key_Escape : Qt::Key_Return);
        return;
    }
    const QStringList texts{QStringLiteral("pll"), QStringLiteral("lane"), QStringLiteral("x"), QStringLiteral("sgm")};
    QTest::keyClicks(box, pick(texts, number(1)));
}

void GestureWindow::moveDock()
{
    const QList<QDockWidget*> docks = m_window->findChildren<QDockWidget*>();
    QDockWidget* dock = pick(docks, number(0));
    auto* owner = qobject_cast<QMainWindow*>(dock->parentWidget());
    constexpr Qt::DockWidgetArea Areas[] = {Qt::LeftDockWidgetArea, Qt::RightDockWidgetArea, Qt::BottomDockWidgetArea};
    if (number(1) % 4 == 0)
        dock->setVisible(!dock->isVisible());
    else if (number(1) % 4 == 1)
        dock->setFloating(!dock->isFloating());
    else if (dock->isAreaAllowed(Areas[number(2) % std::size(Areas)]))
        owner->addDockWidget(Areas[number(2) % std::size(Areas)], dock);
}

void GestureWindow::reopen()
{
    if (m_isPressed)
        finishStroke();
    QString error;
    std::unique_ptr<ProjectSession> session = ProjectSession::open(m_project->path(), &error);
    if (!session)
        qFatal("%s", qPrintable(error));
    m_session = session.get();
    m_window->showSession(std::move(session));
    noteOpening();
}

// Work that is back can be undone.
void GestureWindow::noteOpening()
{
    m_earliest = editor().undoStack().canUndo() ? m_saved : state();
}

void GestureWindow::close()
{
    if (m_window->close())
        open();
}
