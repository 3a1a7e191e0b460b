// SPDX-License-Identifier: MIT
#pragma once

#include "host/project/projectsession.h"
#include "host/window/drawingarea.h"

#include <QObject>
#include <QString>

#include <memory>

class QMainWindow;

namespace mirn::zelchip {

class ChipStatusBar;
class DesignEditor;
class ProjectNotice;
class WindowMemory;

// The project that the window has open, with its drawing in the middle of the window, and how one project takes the
// place of another: dialogs, progress, questions, and the notice about what others do to its files. The main window
// owns it.
class OpenProject final : public QObject
{
    Q_OBJECT
public:
    // The three outlive it. No project is open before the first show().
    OpenProject(QMainWindow* window, WindowMemory& memory, ChipStatusBar* statusBar);
    ~OpenProject() override;

    // Null while one project takes the place of another.
    [[nodiscard]] DrawingArea* area() const { return m_area.get(); }
    [[nodiscard]] DesignEditor& editor() const { return m_area->session().editor(); }

    // Asks about unsaved changes, then opens a project folder or a drawing. If that fails, a message box says why;
    // then, and if the user cancels a long load, the present project stays open.
    void open(const QString& path);
    void chooseProject();
    void chooseDrawing();

    // The same without questions and dialogs, for a command. Returns an empty text for success.
    [[nodiscard]] QString openFor(const QString& path);

    void show(std::unique_ptr<ProjectSession> session);

    // Asks about the project's lock if it is in doubt, and watches its files from now on. Call it once the window is
    // shown; a window that is only rendered into a file leaves the project to others.
    void begin();

    // Asks about unsaved changes, and keeps how the window is left.
    [[nodiscard]] bool mayClose();

Q_SIGNALS:
    // Emitted before the present drawing is deleted.
    void leaving();
    // Emitted when the new drawing is in its place, before it gets the focus.
    void shown();

private:
    [[nodiscard]] QString replace(
        const QString& path, ProjectSession::DoubtfulLock lock = ProjectSession::DoubtfulLock::Stays);
    void replaceArea(std::unique_ptr<ProjectSession> session);
    void takeOver();
    void askAboutLock();
    void watch();
    [[nodiscard]] bool isOnScreen() const;

    QMainWindow* const m_window;
    WindowMemory& m_memory;
    ChipStatusBar* const m_statusBar;
    ProjectNotice* const m_notice; // child of the window
    std::unique_ptr<DrawingArea> m_area;
};

} // namespace mirn::zelchip
