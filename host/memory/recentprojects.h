// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>

class QMenu;

namespace mirn::zelchip {

class WindowSettings;

// The projects and drawings that were opened, and the menu that opens them again. They are remembered if there are
// settings, otherwise for this run. The window's memory owns it.
class RecentProjects final : public QObject
{
    Q_OBJECT
public:
    // Fills the menu, which must live as long.
    RecentProjects(QMenu* menu, QObject* parent);

    // The settings must live as long.
    void setSettings(WindowSettings* settings);

    // Puts a path in front. remove() takes one out, such as that of a project that is gone.
    void add(const QString& path);
    void remove(const QString& path);

Q_SIGNALS:
    void chosen(const QString& path);

private:
    [[nodiscard]] QStringList paths() const;
    void setPaths(const QStringList& paths);
    void fill();

    QMenu* const m_menu;
    WindowSettings* m_settings = nullptr;
    QStringList m_paths; // without settings
};

} // namespace mirn::zelchip
