// SPDX-License-Identifier: MIT
#pragma once

#include "host/design/designeditor.h"
#include "tests/program/sampleproject.h"
#include "tests/soak/attendant.h"
#include "tests/soak/gesture.h"

#include <QMimeData>
#include <QSet>
#include <QString>

#include <memory>

class QTreeWidget;
class QTreeWidgetItem;

namespace mirn::zelchip {
class MainWindow;
class ProjectSession;
} // namespace mirn::zelchip

namespace mirn::zelchipview {
class ZelChipGUI;
class ZelGraphicsView;
} // namespace mirn::zelchipview

// {1 2 3}
[[nodiscard]] QString textOf(const QSet<int>& ids);

// The program's window on a copy of the sample project. Carries out gestures and holds what comes of them against what
// Qt, the engine and the window's own full picture say.
class GestureWindow
{
public:
    GestureWindow();
    ~GestureWindow();

    // What is wrong after the gesture; empty when all is as it should be.
    [[nodiscard]] QString perform(const Gesture& gesture);

    // Takes back every change, deletes the window, and the project with it.
    [[nodiscard]] QString end();

private:
    void open();
    void carryOut(const Gesture& gesture);
    void settle();
    void expect(bool isTrue, const QString& fault);
    void takeEverythingBack();

    void mouse(Gesture::Kind kind, QWidget* target, QPoint position, Qt::MouseButton button);
    void pressOrRelease(Gesture::Kind kind);
    void finishStroke();
    void turnWheel();
    void pressKey();
    void chooseMode();
    void selectRow();
    void openRowMenu();
    void drag(bool isOver);
    void leave();
    void elapse();
    void run(const QString& command);
    void runAnyCommand();
    void triggerAction();
    void find();
    void moveDock();
    void reopen();
    void noteOpening();
    void close();

    void checkDesign();
    void checkModes();
    void checkRows();
    void checkPicture();

    [[nodiscard]] unsigned number(int index) const { return m_gesture.numbers[static_cast<std::size_t>(index)]; }
    [[nodiscard]] QPoint place() const;
    [[nodiscard]] QString anyResource() const;
    [[nodiscard]] int anySite(int resource) const;
    [[nodiscard]] QTreeWidgetItem* anyRow() const;
    [[nodiscard]] QTreeWidgetItem* rowOf(const QString& resource) const;
    [[nodiscard]] QSet<int> idsTouchedBy(const QRect& band) const;
    [[nodiscard]] QSet<int> idsClickedAt(QPoint position) const;
    [[nodiscard]] QSet<int> idsOf(const QTreeWidgetItem& row) const;
    [[nodiscard]] QStringList state() const;
    [[nodiscard]] mirn::zelchip::DesignEditor& editor() const;
    [[nodiscard]] mirn::zelchipview::ZelChipGUI* chipView() const;
    [[nodiscard]] mirn::zelchipview::ZelGraphicsView* view() const;
    [[nodiscard]] QTreeWidget* tree() const;

    Attendant m_attendant;
    Gesture m_gesture;
    QString m_fault;
    std::unique_ptr<SampleProject> m_project;
    std::unique_ptr<mirn::zelchip::MainWindow> m_window;
    mirn::zelchip::ProjectSession* m_session = nullptr; // the window's
    QStringList m_saved; // the state of the design
    QStringList m_earliest; // to which it can be undone
    QMimeData m_mimeData;
    bool m_isDragging = false;
    bool m_isPressed = false;
    int m_gestures = 0;
};
