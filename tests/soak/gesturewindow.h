// SPDX-License-Identifier: MIT
#pragma once

#include "tests/host/shownwindow.h"
#include "tests/program/sampleproject.h"

#include <QByteArrayList>
#include <QEvent>
#include <QMimeData>
#include <QSet>
#include <QTimer>

#include <array>
#include <memory>
#include <vector>

class QDialog;
class QMenu;

// Answers the menus and dialogs that come up while a gesture is carried out, as a number says: chooses, confirms or
// declines. What does not go away by itself it closes.
class Attendant final : public QObject
{
public:
    Attendant();

    void start(unsigned number);
    void stop() { m_timer.stop(); }

    // Something waits for an answer.
    [[nodiscard]] static bool isWanted();

private:
    void attend();
    void answerMenu(QMenu& menu);
    void answerDialog(QDialog& dialog);

    // The next choice among so many.
    int choose(int count);

    QTimer m_timer;
    unsigned m_number = 0;
    int m_turns = 0;
};

// The program's window on a copy of the sample project. Carries out gestures and holds what comes of them against what
// Qt, the engine and the window's own full picture say. A gesture is something that a person does to the window or that
// happens to it: a line with its name and three numbers, which may be any. What they mean, such as which row or which
// place, depends on what the window shows, so that every part of a list of gestures can be carried out.
class GestureWindow final : private ShownWindow
{
public:
    ~GestureWindow() { window.reset(); } // before the project goes

    // The same for the same seed. Every `round` gestures one begins anew, with a new copy of the project.
    [[nodiscard]] static QByteArrayList randomGestures(unsigned seed, int count, int round);

    // What is wrong after the gesture; empty when all is as it should be.
    [[nodiscard]] QString perform(const QByteArray& gesture);

    // Takes back every change, deletes the window, and the project with it.
    [[nodiscard]] QString end();

private:
    struct Kind
    {
        QByteArray name;
        int weight; // how often it comes
        void (*carryOut)(GestureWindow&);
    };
    [[nodiscard]] static const std::vector<Kind>& kinds();

    void open();
    void settle();
    void expect(bool isTrue, const QString& fault);
    void expectIds(const char* what, const QSet<int>& found, const QSet<int>& expected);
    void takeEverythingBack();

    void mouse(QEvent::Type type, QWidget* target, QPoint position, Qt::MouseButton button = Qt::LeftButton);
    void stroke(QEvent::Type type);
    void finishStroke();
    void turnWheel();
    void pressKey();
    void chooseMode();
    void selectRow();
    void expandRow();
    void onRow(QEvent::Type type);
    void openRowMenu();
    void openFilterMenu();
    void drag(bool isOver);
    void leave();
    void elapse();
    void runAnyCommand();
    void triggerAction();
    void find();
    void moveDock();
    void resize();
    void hideAndShow();
    void reopen();
    void noteOpening();
    void renew();
    void close();

    void checkDesign();
    void checkModes();
    void checkRows();
    void checkPicture();

    [[nodiscard]] unsigned number(int index) const { return m_numbers[static_cast<std::size_t>(index)]; }
    [[nodiscard]] QPoint place() const;
    [[nodiscard]] QString anyResource() const;
    [[nodiscard]] int anySite(int resource) const;
    [[nodiscard]] QTreeWidgetItem* anyRow() const;
    [[nodiscard]] QSet<int> idsTouchedBy(const QRect& band) const;
    [[nodiscard]] QSet<int> idsClickedAt(QPoint position) const;
    [[nodiscard]] QSet<int> idsOf(const QTreeWidgetItem& row) const;
    [[nodiscard]] QStringList state() const;

    Attendant m_attendant;
    std::array<unsigned, 3> m_numbers{};
    QString m_fault;
    std::unique_ptr<SampleProject> m_project;
    QStringList m_saved; // the state of the design
    QStringList m_earliest; // to which it can be undone
    QMimeData m_mimeData;
    bool m_isDragging = false;
    bool m_isPressed = false;
    int m_gestures = 0;
};
