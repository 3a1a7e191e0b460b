// SPDX-License-Identifier: MIT
#include "host/memory/recentprojects.h"

#include "host/memory/windowsettings.h"

#include <QAction>
#include <QDir>
#include <QFontMetrics>
#include <QMenu>

namespace mirn::zelchip {

namespace {

constexpr int MostRecent = 10;
constexpr int WidestPath = 480; // pixels

// Returns the path as the menu shows it, with ~ for the home folder.
QString menuText(const QString& path, const QFontMetrics& metrics)
{
    const QString home = QDir::homePath() + QLatin1Char('/');
    const QString text = path.startsWith(home) ? QStringLiteral("~/") + path.mid(home.size()) : path;
    QString shown = metrics.elidedText(text, Qt::ElideMiddle, WidestPath);
    return shown.replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

RecentProjects::RecentProjects(QMenu* menu, QObject* parent)
    : QObject(parent)
    , m_menu(menu)
{
    m_menu->setToolTipsVisible(true);
    connect(m_menu, &QMenu::aboutToShow, this, &RecentProjects::fill); // another window may have opened something
    fill();
}

void RecentProjects::setSettings(WindowSettings* settings)
{
    m_settings = settings;
    fill();
}

QStringList RecentProjects::paths() const
{
    if (!m_settings)
        return m_paths;
    return m_settings->recent().mid(0, MostRecent);
}

void RecentProjects::setPaths(const QStringList& paths)
{
    m_paths = paths.mid(0, MostRecent);
    if (m_settings)
        m_settings->setRecent(m_paths);
    fill();
}

void RecentProjects::add(const QString& path)
{
    QStringList paths = this->paths();
    paths.removeAll(path);
    paths.prepend(path);
    setPaths(paths);
}

void RecentProjects::remove(const QString& path)
{
    QStringList paths = this->paths();
    if (paths.removeAll(path) > 0)
        setPaths(paths);
}

void RecentProjects::fill()
{
    m_menu->clear();
    const QStringList paths = this->paths();
    for (const QString& path : paths) {
        QAction* action = m_menu->addAction(menuText(path, m_menu->fontMetrics()));
        action->setToolTip(QDir::toNativeSeparators(path));
        connect(
            action, &QAction::triggered, this, [this, path] { Q_EMIT chosen(path); }, Qt::QueuedConnection);
    }
    if (!paths.isEmpty()) {
        m_menu->addSeparator();
        connect(
            m_menu->addAction(tr("&Clear List")), &QAction::triggered, this, [this] { setPaths({}); },
            Qt::QueuedConnection);
    }
    m_menu->menuAction()->setEnabled(!paths.isEmpty());
}

} // namespace mirn::zelchip
