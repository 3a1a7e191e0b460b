// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

#include <memory>

class QAction;
class QMainWindow;
class QMenu;

namespace mirn::zelchip {

class ConsoleDock;
class RecentProjects;
class WindowSettings;

// Brings the main window back as it was left: its place, its docks, what its menus
// switch on, the console's history, the folder and the projects.
// Without settings it does so from one project to the next only. The main window owns it.
class WindowMemory final : public QObject
{
    Q_OBJECT
public:
    WindowMemory(QMainWindow* window, ConsoleDock* console, QMenu* recentMenu);
    ~WindowMemory() override;

    // Call it before the window is shown; `size` is the wanted one, or empty for the remembered one. Null settings
    // remember nothing.
    void begin(std::unique_ptr<WindowSettings> settings, QSize size);

    // Remembers whether an action that can be checked is, under its object name. Call it before begin(); the action
    // must live as long as the window.
    void keep(QAction* toggle);

    // Keeps the docks of a chip view that is about to be deleted.
    void leave(const QMainWindow& chipView);

    // Arranges the docks as they were. Call it when window and chip view have been arranged in the usual way.
    void arrangeWindow();
    void arrange(QMainWindow& chipView);

    // Call it when the window closes.
    void save(const QMainWindow& chipView);

    // The folder where the next dialog begins.
    [[nodiscard]] QString folder() const { return m_folder; }
    void setFolderOf(const QString& path);

    [[nodiscard]] RecentProjects& recent() { return *m_recent; }

private:
    void place(QSize size);

    QMainWindow* const m_window;
    ConsoleDock* const m_console;
    RecentProjects* const m_recent; // child
    std::unique_ptr<WindowSettings> m_settings;
    QList<QAction*> m_toggles;
    QByteArray m_chipDocks; // of the last chip view
    QString m_folder;
};

} // namespace mirn::zelchip
