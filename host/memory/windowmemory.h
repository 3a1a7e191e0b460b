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

// Brings the main window back as it was left: its place, its docks, the console's history, the folder and the projects.
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

    // Keeps the docks of a chip view that is about to be deleted.
    void leave(const QMainWindow& chipView);

    // Keeps which of these checkable actions are checked, by their object names. Call it before begin().
    void remember(const QList<QAction*>& choices) { m_choices += choices; }

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
    void restoreChoices();

    QMainWindow* const m_window;
    ConsoleDock* const m_console;
    RecentProjects* const m_recent; // child
    std::unique_ptr<WindowSettings> m_settings;
    QList<QAction*> m_choices; // children of the window
    QByteArray m_chipDocks; // of the last chip view
    QString m_folder;
};

} // namespace mirn::zelchip
