// SPDX-License-Identifier: MIT
#include "tests/soak/gesturewindow.h"

#include "graphics/zelgraphicsscene.h"
#include "host/window/findbox.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDir>
#include <QDockWidget>
#include <QDragLeaveEvent>
#include <QDragMoveEvent>
#include <QGraphicsItem>
#include <QMenu>
#include <QRandomGenerator>
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

// What only makes sense together: a band, a drag from the tree to the drawing.
const QByteArrayList Phrases{"press release", "press move release", "press move move move release",
    "select-row drag-move drag-move drop", "select-row drag-move drag-move elapse drag-move drag-leave",
    "press-row move-on-row release-row drag-move elapse drop"};

// While something is being dragged the pointer is taken, and only these go on with it.
const QByteArrayList GoOnDragging{"drag-move", "drop", "elapse", "command", "resize"};

} // namespace

const std::vector<GestureWindow::Kind>& GestureWindow::kinds()
{
    using W = GestureWindow;
    static const std::vector<Kind> all{
        {"begin", 0, [](W&) {}},
        {"press", 3, [](W& w) { w.stroke(QEvent::MouseButtonPress); }},
        {"move", 6, [](W& w) { w.stroke(QEvent::MouseMove); }},
        {"release", 3, [](W& w) { w.stroke(QEvent::MouseButtonRelease); }},
        {"double-click", 3, [](W& w) { w.stroke(QEvent::MouseButtonDblClick); }},
        {"wheel", 8, [](W& w) { w.turnWheel(); }},
        {"key", 6, [](W& w) { w.pressKey(); }},
        {"mode", 4, [](W& w) { w.chooseMode(); }},
        {"select-row", 6, [](W& w) { w.selectRow(); }},
        {"expand-row", 3, [](W& w) { w.expandRow(); }},
        {"press-row", 2, [](W& w) { w.onRow(QEvent::MouseButtonPress); }},
        {"move-on-row", 2, [](W& w) { w.onRow(QEvent::MouseMove); }},
        {"release-row", 2, [](W& w) { w.onRow(QEvent::MouseButtonRelease); }},
        {"row-menu", 3, [](W& w) { w.openRowMenu(); }},
        {"filter-menu", 3, [](W& w) { w.openFilterMenu(); }},
        {"drag-move", 4, [](W& w) { w.drag(true); }}, // enters the view where nothing is being dragged
        {"drag-leave", 2, [](W&) {}},
        {"drop", 2, [](W& w) { w.drag(false); }},
        {"elapse", 3, [](W& w) { w.elapse(); }}, // of the time that the pointer rests on a site
        {"command", 10, [](W& w) { w.runAnyCommand(); }},
        {"trigger", 5, [](W& w) { w.triggerAction(); }}, // an action of the window
        {"find", 2, [](W& w) { w.find(); }},
        {"move-dock", 2, [](W& w) { w.moveDock(); }},
        {"resize", 2, [](W& w) { w.resize(); }},
        {"hide", 1, [](W& w) { w.hideAndShow(); }},
        {"reopen", 1, [](W& w) { w.reopen(); }}, // the project in the same window
        {"renew", 1, [](W& w) { w.renew(); }}, // deletes the window and makes another one
        {"close", 1, [](W& w) { w.close(); }},
    };
    return all;
}

QByteArrayList GestureWindow::randomGestures(unsigned seed, int count, int round)
{
    QRandomGenerator random(seed);
    QByteArrayList lots = Phrases;
    for (const Kind& kind : kinds()) {
        for (int i = 0; i < kind.weight; ++i)
            lots.append(kind.name);
    }
    QByteArrayList gestures;
    while (gestures.size() < count) {
        const bool isPhrase = random.bounded(3) == 0;
        const auto phrases = static_cast<int>(Phrases.size());
        const int lot = isPhrase ? random.bounded(phrases) : random.bounded(phrases, static_cast<int>(lots.size()));
        const QByteArrayList names = lots[lot].split(' ');
        for (const QByteArray& name : names) {
            if (gestures.size() % round == 0)
                gestures.append("begin 0 0 0");
            gestures.append(name);
            for (int i = 0; i < 3; ++i)
                gestures.last() += ' ' + QByteArray::number(random.generate());
        }
    }
    return gestures;
}

QString GestureWindow::perform(const QByteArray& gesture)
{
    m_fault.clear();
    const QByteArrayList words = gesture.split(' ');
    for (int i = 0; i < 3; ++i)
        m_numbers[static_cast<std::size_t>(i)] = words.value(i + 1).toUInt();
    if (words[0] == "begin" || !window) {
        const QString fault = end();
        if (!fault.isEmpty())
            return fault;
        m_project = std::make_unique<SampleProject>();
        open();
    }
    if (m_isDragging && !GoOnDragging.contains(words[0]))
        leave();
    m_attendant.start(number(2));
    for (const Kind& kind : kinds()) {
        if (kind.name == words[0])
            kind.carryOut(*this);
    }
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
    if (window)
        takeEverythingBack();
    window.reset();
    m_project.reset();
    m_isDragging = false;
    m_gestures = 0;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    return m_fault;
}

void GestureWindow::open()
{
    show(m_project->path(), QSize(900, 600));
    noteOpening();
    settle();
    // Of a button that was down when the window before went away.
    if (m_isPressed)
        mouse(QEvent::MouseButtonRelease, view()->viewport(), view()->viewport()->rect().center());
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
    expect(turns < TurnsToSettle, "a menu or a dialog does not go away");
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
    return all.empty() ? "none" : design.resource(pick(all, number(0))).path;
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
    QTreeWidgetItem* item = row(anyResource());
    return item && !item->isHidden() ? item : nullptr;
}

// As the pointer's events come from the window system: to the window, which finds the widget.
void GestureWindow::mouse(QEvent::Type type, QWidget* target, QPoint position, Qt::MouseButton button)
{
    QWindow* handle = target->window()->windowHandle();
    if (!target->isVisible() || !handle)
        return;
    const QPoint inWindow = target->mapTo(target->window(), position);
    if (!target->window()->rect().contains(inWindow) || inWindow.isNull())
        return;
    const bool isPress = type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick;
    if (isPress && !target->isActiveWindow()) { // as window managers do
        target->activateWindow();
        QCoreApplication::processEvents();
    }
    if (isPress && m_isPressed)
        QTest::mouseRelease(handle, Qt::LeftButton, Qt::NoModifier, inWindow);
    if (type == QEvent::MouseButtonPress)
        QTest::mousePress(handle, button, Qt::NoModifier, inWindow);
    else if (type == QEvent::MouseMove)
        QTest::mouseMove(handle, inWindow);
    else if (type == QEvent::MouseButtonDblClick)
        QTest::mouseDClick(handle, button, Qt::NoModifier, inWindow);
    else
        QTest::mouseRelease(handle, button, Qt::NoModifier, inWindow);
    if (button == Qt::LeftButton && type != QEvent::MouseMove)
        m_isPressed = type == QEvent::MouseButtonPress;
}

void GestureWindow::stroke(QEvent::Type type)
{
    QWidget* viewport = view()->viewport();
    if (type == QEvent::MouseButtonPress && !m_isPressed && number(2) % 16 == 0) {
        mouse(type, viewport, place(), Qt::MiddleButton);
        mouse(QEvent::MouseButtonRelease, viewport, place(), Qt::MiddleButton);
    } else if (type == QEvent::MouseButtonRelease && m_isPressed) {
        finishStroke();
    } else {
        mouse(type, viewport, place());
    }
}

void GestureWindow::finishStroke()
{
    const auto* band = view()->findChild<QRubberBand*>();
    mouse(QEvent::MouseMove, view()->viewport(), place()); // as Qt has it before a release elsewhere
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
    mouse(QEvent::MouseButtonRelease, view()->viewport(), position);
    if (!isSelecting || band->isVisible())
        return;
    const QSet<int> selected = database().selectedIds().ids();
    if (selected != expected && !(selected.contains(inside) && outside.contains(selected)))
        expectIds("selected are ", selected, expected);
    const int occupant = expected.size() == 1 ? editor().engine().design().occupant(*expected.begin()) : -1;
    const QTreeWidgetItem* item = occupant >= 0 ? row(editor().engine().design().resource(occupant).path) : nullptr;
    expect(!item || tree()->currentItem() == item, "the row of what was clicked is not the current one");
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
    QWidget* const targets[] = {view(), tree(), window.get(), QApplication::focusWidget()};
    QWidget* target = targets[number(1) % std::size(targets)];
    QTest::keyClick(target ? target : window.get(), key);
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
    expectIds("the row selects ", database().selectedIds().ids(), idsOf(*row));
}

void GestureWindow::expandRow()
{
    if (QTreeWidgetItem* row = anyRow())
        row->setExpanded(!row->isExpanded());
}

void GestureWindow::onRow(QEvent::Type type)
{
    QTreeWidgetItem* row = anyRow();
    const QPoint middle = row ? tree()->visualItemRect(row).center() : QPoint();
    if (row && tree()->isVisible() && tree()->viewport()->rect().contains(middle))
        mouse(type, tree()->viewport(), middle);
}

void GestureWindow::openFilterMenu()
{
    QWidget* viewport = view()->viewport();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place(), viewport->mapToGlobal(place()));
    QApplication::sendEvent(viewport, &event);
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
    expect(database().highlightedIds().isEmpty(), "sites are lit after a drop");
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
    expectIds("lit are ", lit, QSet<int>(sites.begin(), sites.end()));
}

void GestureWindow::runAnyCommand()
{
    const QString name = anyResource();
    const QString site = QString::number(anySite(editor().engine().design().find(name)));
    const QStringList commands{"zel_resource place -rsc {%1} -id %2", "zel_resource place -rsc {%1} -id %2",
        "zel_resource reset -ip {%1}", "zel_resource remove -ip {%1}", "undo", "redo", "zel_project save",
        "zel_project refresh", "zel_view select %2", "zel_view zoom %2", "zel_view fit", "zel_tree select -rsc {%1}",
        "zel_tree expand", "zel_tree collapse", "zel_tree where -rsc {%1}",
        "zel_setting -id 8000000 -key CH0 -value {CORE CLOCK}",
        "zel_resource configure -ip {%1} -key frequency -value 75"};
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
    const QList<QAction*> all = window->findChildren<QAction*>();
    for (QAction* action : all) {
        if (action->isEnabled() && !action->menu() && !action->text().endsWith(QLatin1String("..."))
            && !action->text().endsWith(QChar(0x2026)) && action->shortcut() != QKeySequence(QKeySequence::Quit))
            actions.append(action);
    }
    pick(actions, number(0))->trigger();
}

void GestureWindow::find()
{
    auto* box = window->findChild<FindBox*>();
    if (number(0) % 3 == 0) {
        QTest::keyClick(box, number(1) % 2 == 0 ? Qt::Key_Escape : Qt::Key_Return);
        return;
    }
    const QStringList texts{"pll", "lane", "x", "sgm"};
    QTest::keyClicks(box, pick(texts, number(1)));
}

void GestureWindow::moveDock()
{
    const QList<QDockWidget*> docks = window->findChildren<QDockWidget*>();
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

void GestureWindow::resize()
{
    window->resize(static_cast<int>(300 + number(0) % 900), static_cast<int>(250 + number(1) % 700));
}

void GestureWindow::hideAndShow()
{
    window->setVisible(false);
    settle();
    window->setVisible(true);
}

void GestureWindow::reopen()
{
    if (m_isPressed)
        finishStroke();
    auto opened = openSession(m_project->path());
    session = opened.get();
    window->showSession(std::move(opened));
    noteOpening();
}

// Work that is back can be undone.
void GestureWindow::noteOpening()
{
    m_earliest = editor().undoStack().canUndo() ? m_saved : state();
}

void GestureWindow::renew()
{
    if (number(0) % 2 == 0)
        takeEverythingBack();
    open();
}

void GestureWindow::close()
{
    if (window->close())
        open();
}
