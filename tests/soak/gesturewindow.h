// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelgraphicsscene.h"
#include "host/widgets/findbox.h"
#include "tests/soak/attendant.h"
#include "tests/soak/checkedwindow.h"
#include "tests/support/events.h"

#include <QDockWidget>
#include <QRandomGenerator>
#include <QTest>

inline constexpr int TurnsToSettle = 200; // of the event loop
// A turn of the event loop posts events for the next one: a new window lays out, then fits its drawing.
inline constexpr int TurnsToRest = 5;
inline constexpr int GesturesPerPicture = 40; // comparing pictures takes longer than most gestures

template <typename Container> decltype(auto) pick(Container& container, unsigned number)
{
    return container[static_cast<int>(number % static_cast<unsigned>(std::size(container)))];
}

inline constexpr int Modes[] = {ACTION_SELECT, ACTION_SELECT, ACTION_ZOOM, ACTION_PAN};

// Gestures that only make sense together, such as a band or a drag from the tree to the drawing.
inline const QByteArrayList Phrases{"press release", "press move release", "press move move move release",
    "select-row drag-move drag-move drop", "select-row drag-move drag-move elapse drag-move drag-leave",
    "press-row move-on-row release-row drag-move elapse drop"};

// The gestures that go on with a drag. While something is being dragged, it has the pointer.
inline const QByteArrayList GoOnDragging{"drag-move", "drop", "elapse", "command", "resize"};

// Carries out gestures in the window and checks what comes of them. A gesture is something that a person does to the
// window or that happens to it: a line with its name and any three numbers. The meaning of the numbers, such as which
// row or which place, depends on what the window shows, so that every part of a list of gestures can be carried out.
class GestureWindow final : private CheckedWindow
{
public:
    // Returns the same gestures for the same seed. After every `round` of them a new copy of the project is opened.
    [[nodiscard]] static QByteArrayList randomGestures(unsigned seed, int count, int round)
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
            for (const QByteArray& name : lots[lot].split(' ')) {
                if (gestures.size() % round == 0)
                    gestures.append("begin 0 0 0");
                gestures.append(name);
                for (int i = 0; i < 3; ++i)
                    gestures.last() += ' ' + QByteArray::number(random.generate());
            }
        }
        return gestures;
    }

    // Returns what is wrong after the gesture; empty when all is as it should be.
    [[nodiscard]] QString perform(const QByteArray& gesture)
    {
        m_fault.clear();
        const QByteArrayList words = gesture.split(' ');
        for (int i = 0; i < 3; ++i)
            m_numbers[i] = words.value(i + 1).toUInt();
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

    // Undoes every change, and deletes the window and the project.
    [[nodiscard]] QString end()
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

private:
    struct Kind
    {
        QByteArray name;
        int weight; // how often the gesture comes
        void (*carryOut)(GestureWindow&);
    };
    [[nodiscard]] static const std::vector<Kind>& kinds()
    {
        using W = GestureWindow;
        static const std::vector<Kind> all{
            {"begin", 0, [](W&) {}},
            {"press", 3, [](W& w) { w.stroke(QTest::MousePress); }},
            {"move", 6, [](W& w) { w.stroke(QTest::MouseMove); }},
            {"release", 3, [](W& w) { w.stroke(QTest::MouseRelease); }},
            {"double-click", 3, [](W& w) { w.stroke(QTest::MouseDClick); }},
            {"wheel", 8, [](W& w) { w.turnWheel(); }},
            {"key", 6, [](W& w) { w.pressKey(); }},
            {"mode", 4, [](W& w) { database().getAction(pick(Modes, w.number(0)))->trigger(); }},
            {"select-row", 6, [](W& w) { w.selectRow(); }},
            {"expand-row", 3, [](W& w) { w.toggle(w.anyRow()); }},
            {"press-row", 2, [](W& w) { w.onRow(QTest::MousePress); }},
            {"move-on-row", 2, [](W& w) { w.onRow(QTest::MouseMove); }},
            {"release-row", 2, [](W& w) { w.onRow(QTest::MouseRelease); }},
            {"row-menu", 3, [](W& w) { w.openRowMenu(); }},
            {"filter-menu", 3, [](W& w) { zeltest::openMenu(w.view()->viewport(), w.place()); }},
            {"drag-move", 4, [](W& w) { w.drag(true); }}, // enters the view where nothing is being dragged
            {"drag-leave", 2, [](W&) {}},
            {"drop", 2, [](W& w) { w.drag(false); }},
            {"elapse", 3, [](W& w) { w.elapse(); }}, // the time that the pointer rests on a site
            {"command", 10, [](W& w) { w.runAnyCommand(); }},
            {"trigger", 5, [](W& w) { w.triggerAction(); }}, // an action of the window
            {"find", 2, [](W& w) { w.find(); }},
            {"move-dock", 2, [](W& w) { w.moveDock(); }},
            {"resize", 2, [](W& w) { w.window->resize(300 + w.number(0) % 900, 250 + w.number(1) % 700); }},
            {"hide", 1, [](W& w) { w.hideAndShow(); }},
            {"reopen", 1, [](W& w) { w.reopen(); }}, // the project in the same window
            {"renew", 1, [](W& w) { w.renew(); }}, // deletes the window and makes another one
            {"close", 1, [](W& w) { w.close(); }},
        };
        return all;
    }

    void open()
    {
        show(m_project->path());
        noteOpening();
        settle();
        // A button may have been down when the window before went away.
        if (m_isPressed)
            mouse(QTest::MouseRelease, view()->viewport(), view()->viewport()->rect().center());
    }

    // Waits until everything that the gesture has set off is over.
    void settle()
    {
        int turns = 0;
        do {
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            ++turns;
        } while (turns < TurnsToRest
            || (turns < TurnsToSettle && (Attendant::isWanted() || (window && !view()->isExact()))));
        expect(turns < TurnsToSettle, "a menu or a dialog does not go away");
    }

    void takeEverythingBack()
    {
        while (editor().undoStack().canUndo()) {
            const QString problem = editor().undo().sentence();
            expect(problem.isEmpty(), "undo: " + problem);
            if (!problem.isEmpty())
                return;
        }
        const QString difference = differenceOf(state(), m_earliest);
        expect(difference.isEmpty(), "after undoing everything there is " + difference);
    }

    // Sends the pointer's event as the window system does: to the window, which finds the widget.
    void mouse(QTest::MouseAction action, QWidget* target, QPoint position, Qt::MouseButton button = Qt::LeftButton)
    {
        QWindow* handle = target->window()->windowHandle();
        if (!target->isVisible() || !handle)
            return;
        const QPoint inWindow = target->mapTo(target->window(), position);
        if (!target->window()->rect().contains(inWindow) || inWindow.isNull())
            return;
        const bool isMove = action == QTest::MouseMove;
        const bool isPress = action == QTest::MousePress || action == QTest::MouseDClick;
        if (isPress && !target->isActiveWindow()) { // as window managers do
            target->activateWindow();
            QCoreApplication::processEvents();
        }
        if (isPress && m_isPressed)
            QTest::mouseRelease(handle, Qt::LeftButton, Qt::NoModifier, inWindow);
        QTest::mouseEvent(action, handle, isMove ? Qt::NoButton : button, Qt::NoModifier, inWindow);
        if (button == Qt::LeftButton && !isMove)
            m_isPressed = action == QTest::MousePress;
    }

    void stroke(QTest::MouseAction action)
    {
        QWidget* viewport = view()->viewport();
        if (action == QTest::MousePress && !m_isPressed && number(2) % 16 == 0) {
            mouse(action, viewport, place(), Qt::MiddleButton);
            mouse(QTest::MouseRelease, viewport, place(), Qt::MiddleButton);
        } else if (action == QTest::MouseRelease && m_isPressed) {
            finishStroke();
        } else {
            mouse(action, viewport, place());
        }
    }

    void finishStroke()
    {
        const auto* band = view()->findChild<QRubberBand*>();
        mouse(QTest::MouseMove, view()->viewport(), place()); // as Qt has it before a release elsewhere
        settle();
        const bool isSelecting = database().getMouseMode() == ACTION_SELECT && band->isVisible();
        const QPoint position = place();
        const QRect area = band->geometry();
        const QSizeF inScene = view()->mapToScene(area).boundingRect().size();
        const bool isBand = inScene.width() > 2 && inScene.height() > 2;
        // A selected element has another pen, and with it another shape: the selection is emptied first, as the release
        // does. An element within a pixel of the band's border may be selected or not.
        if (isSelecting)
            database().selectedIds().clear();
        const auto touchedBy = [&](int border) {
            return isBand ? idsTouchedBy(area.adjusted(-border, -border, border, border)) : idsClickedAt(position);
        };
        const QSet<int> expected = touchedBy(0);
        const QSet<int> inside = touchedBy(-1);
        const QSet<int> outside = touchedBy(1);
        mouse(QTest::MouseRelease, view()->viewport(), position);
        if (!isSelecting || band->isVisible())
            return;
        const QSet<int> selected = database().selectedIds().ids();
        if (selected != expected && !(selected.contains(inside) && outside.contains(selected)))
            expectIds("selected are ", selected, expected);
        const int occupant = expected.size() == 1 ? design().occupant(*expected.begin()) : -1;
        const QTreeWidgetItem* item = occupant >= 0 ? row(design().resource(occupant).path) : nullptr;
        expect(!item || tree()->currentItem() == item, "the row of what was clicked is not the current one");
    }

    void turnWheel()
    {
        const int steps = number(2) % 2 == 0 ? 1 : -1;
        const Qt::KeyboardModifiers modifiers = (number(2) >> 1) % 3 > 0 ? Qt::ControlModifier : Qt::NoModifier;
        zeltest::turnWheel(view()->viewport(), place(), QPoint(0, 120 * steps), modifiers);
    }

    void pressKey()
    {
        constexpr Qt::Key Keys[] = {Qt::Key_Plus, Qt::Key_Minus, Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down,
            Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown, Qt::Key_Escape, Qt::Key_Return, Qt::Key_Tab, Qt::Key_Asterisk,
            Qt::Key_S, Qt::Key_H, Qt::Key_Z, Qt::Key_F};
        const Qt::Key key = pick(Keys, number(0));
        QWidget* const targets[] = {view(), tree(), window.get(), QApplication::focusWidget()};
        QWidget* target = pick(targets, number(1));
        QTest::keyClick(target ? target : window.get(), key);
    }

    void selectRow()
    {
        QTreeWidgetItem* row = anyRow();
        if (!row || row->isSelected())
            return;
        tree()->setCurrentItem(row);
        expectIds("the row selects ", database().selectedIds().ids(), idsOf(*row));
    }

    static void toggle(QTreeWidgetItem* row)
    {
        if (row)
            row->setExpanded(!row->isExpanded());
    }

    void onRow(QTest::MouseAction action)
    {
        const QTreeWidgetItem* row = anyRow();
        const QPoint middle = row ? tree()->visualItemRect(row).center() : QPoint();
        if (row && tree()->isVisible() && tree()->viewport()->rect().contains(middle))
            mouse(action, tree()->viewport(), middle);
    }

    void openRowMenu()
    {
        QTreeWidgetItem* row = anyRow();
        if (!row || !tree()->isVisible())
            return;
        tree()->setCurrentItem(row);
        tree()->scrollToItem(row);
        zeltest::openMenu(tree()->viewport(), tree()->visualItemRect(row).center());
    }

    void drag(bool isOver)
    {
        QWidget* viewport = view()->viewport();
        const QPoint position = place();
        if (!m_isDragging && !isOver)
            return;
        if (!m_isDragging)
            zeltest::drag<QDragEnterEvent>(viewport, position);
        m_isDragging = true;
        const bool isAccepted = zeltest::drag<QDragMoveEvent>(viewport, position);
        if (isOver)
            return;
        m_isDragging = false;
        if (!isAccepted)
            return zeltest::leaveDrag(viewport);
        zeltest::drag<QDropEvent>(viewport, position);
        expect(database().highlightedIds().isEmpty(), "sites are lit after a drop");
    }

    void leave()
    {
        zeltest::leaveDrag(view()->viewport());
        m_isDragging = false;
    }

    // The time elapses only while something is being dragged.
    void elapse()
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
        const int resource = design().find(rows.first()->data(0, RESOURCENAME).toString());
        const std::vector<int> sites
            = resource >= 0 ? editor().engine().rules().sitesFor(resource) : std::vector<int>();
        expectIds("lit are ", lit, QSet<int>(sites.begin(), sites.end()));
    }

    void runAnyCommand()
    {
        const QString name = anyResource();
        const QString site = QString::number(anySite(design().find(name)));
        const QStringList commands{"zel_resource place -rsc {%1} -id %2", "zel_resource place -rsc {%1} -id %2",
            "zel_resource reset -ip {%1}", "zel_resource remove -ip {%1}", "undo", "redo", "zel_project save",
            "zel_project refresh", "zel_view select %2", "zel_view zoom %2", "zel_view fit",
            "zel_tree select -rsc {%1}", "zel_tree expand", "zel_tree collapse", "zel_tree where -rsc {%1}",
            "zel_setting -id 8000000 -key CH0 -value {CORE CLOCK}",
            "zel_resource configure -ip {%1} -key frequency -value 75"};
        const QStringList removed = design().removedPaths();
        if (!removed.isEmpty() && number(2) % 8 == 0)
            run(QString("zel_resource restore -ip {%1}").arg(pick(removed, number(1))));
        else
            run(QString(pick(commands, number(2))).replace("%1", name).replace("%2", site));
    }

    // Actions that open a dialog for files are left out: that dialog watches the whole disk.
    void triggerAction()
    {
        QList<QAction*> actions;
        for (QAction* action : window->findChildren<QAction*>()) {
            if (action->isEnabled() && !action->menu() && !action->text().endsWith("...")
                && !action->text().endsWith(QChar(0x2026)) && action->shortcut() != QKeySequence(QKeySequence::Quit))
                actions.append(action);
        }
        pick(actions, number(0))->trigger();
    }

    void find()
    {
        auto* box = window->findChild<FindBox*>();
        if (number(0) % 3 == 0) {
            QTest::keyClick(box, number(1) % 2 == 0 ? Qt::Key_Escape : Qt::Key_Return);
            return;
        }
        const QStringList texts{"pll", "lane", "x", "sgm"};
        QTest::keyClicks(box, pick(texts, number(1)));
    }

    void moveDock()
    {
        const QList<QDockWidget*> docks = window->findChildren<QDockWidget*>();
        QDockWidget* dock = pick(docks, number(0));
        auto* owner = qobject_cast<QMainWindow*>(dock->parentWidget());
        constexpr Qt::DockWidgetArea Areas[]
            = {Qt::LeftDockWidgetArea, Qt::RightDockWidgetArea, Qt::BottomDockWidgetArea};
        if (number(1) % 4 == 0)
            dock->setVisible(!dock->isVisible());
        else if (number(1) % 4 == 1)
            dock->setFloating(!dock->isFloating());
        else if (dock->isAreaAllowed(pick(Areas, number(2))))
            owner->addDockWidget(pick(Areas, number(2)), dock);
    }

    void hideAndShow()
    {
        window->setVisible(false);
        settle();
        window->setVisible(true);
    }

    void reopen()
    {
        if (m_isPressed)
            finishStroke();
        auto opened = openSession(m_project->path());
        session = opened.get();
        window->showSession(std::move(opened));
        noteOpening();
    }

    // Changes that the opening brought back can be undone.
    void noteOpening() { m_earliest = editor().undoStack().canUndo() ? m_saved : state(); }

    void renew()
    {
        if (number(0) % 2 == 0)
            takeEverythingBack();
        open();
    }

    void close()
    {
        if (window->close())
            open();
    }

    [[nodiscard]] unsigned number(int index) const { return m_numbers[index]; }
    // Half of the places are sites, where more can happen.
    [[nodiscard]] QPoint place() const
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

    [[nodiscard]] QString anyResource() const
    {
        const std::vector<int> all = design().all();
        return all.empty() ? "none" : design().resource(pick(all, number(0))).path;
    }

    // The site is mostly one where the resource may go.
    [[nodiscard]] int anySite(int resource) const
    {
        const std::vector<int> allowed
            = resource >= 0 ? editor().engine().rules().sitesFor(resource) : std::vector<int>();
        if (!allowed.empty() && number(1) % 4 > 0)
            return pick(allowed, number(1) >> 2);
        return pick(editor().engine().device().sites(), number(1) >> 2).id;
    }

    // Null for a row that the find box has hidden.
    [[nodiscard]] QTreeWidgetItem* anyRow() const
    {
        QTreeWidgetItem* item = row(anyResource());
        return item && !item->isHidden() ? item : nullptr;
    }

    Attendant m_attendant;
    unsigned m_numbers[3] = {};
    QStringList m_saved; // the state of the design that was saved last
    QStringList m_earliest; // the state to which the design can be undone
    bool m_isDragging = false;
    int m_gestures = 0;
};
