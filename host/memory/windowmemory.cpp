// SPDX-License-Identifier: MIT
#include "host/memory/windowmemory.h"

#include "host/console/consoledock.h"
#include "host/memory/recentprojects.h"
#include "host/memory/windowplace.h"
#include "host/memory/windowsettings.h"

#include <QAction>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>

#include <utility>

namespace mirn::zelchip {

namespace {

constexpr QSize UsualSize(1600, 1000); // device-independent pixels
const QString MainDocks = QStringLiteral("window");
const QString ChipDocks = QStringLiteral("chipview");

QList<QRect> availableRects()
{
    QList<QRect> rects;
    const QList<QScreen*> screens = QGuiApplication::screens();
    for (const QScreen* screen : screens)
        rects.append(screen->availableGeometry());
    return rects;
}

} // namespace

WindowMemory::WindowMemory(QMainWindow* window, ConsoleDock* console, QMenu* recentMenu)
    : QObject(window)
    , m_window(window)
    , m_console(console)
    , m_recent(new RecentProjects(recentMenu, this))
{ }

WindowMemory::~WindowMemory() = default;

void WindowMemory::begin(std::unique_ptr<WindowSettings> settings, QSize size)
{
    m_settings = std::move(settings);
    place(size);
    if (!m_settings)
        return;
    m_recent->setSettings(m_settings.get());
    m_console->setHistory(m_settings->history());
    m_folder = m_settings->folder();
    m_chipDocks = m_settings->arrangement(ChipDocks);
    for (QAction* toggle : std::as_const(m_toggles))
        toggle->setChecked(m_settings->isOn(toggle->objectName(), toggle->isChecked()));
}

void WindowMemory::keep(QAction* toggle)
{
    m_toggles.append(toggle);
}

void WindowMemory::place(QSize size)
{
    WindowPlace place;
    if (m_settings && size.isEmpty()) {
        place = restoredPlace(m_settings->place(), availableRects());
        place.isMaximized = !place.rect.isNull() && m_settings->isMaximized();
    }
    if (place.rect.isNull() && size.isEmpty() && m_window->screen())
        place = firstPlace(UsualSize, m_window->screen()->availableGeometry());
    if (place.rect.isNull())
        m_window->resize(place.size.isEmpty() ? size : place.size);
    else
        m_window->setGeometry(place.rect);
    if (place.isMaximized)
        m_window->setWindowState(m_window->windowState() | Qt::WindowMaximized);
}

void WindowMemory::leave(const QMainWindow& chipView)
{
    m_chipDocks = chipView.saveState();
}

void WindowMemory::arrangeWindow()
{
    const QByteArray docks = m_settings ? m_settings->arrangement(MainDocks) : QByteArray();
    if (!docks.isEmpty())
        m_window->restoreState(docks);
}

void WindowMemory::arrange(QMainWindow& chipView)
{
    if (!m_chipDocks.isEmpty())
        chipView.restoreState(m_chipDocks);
}

void WindowMemory::save(const QMainWindow& chipView)
{
    if (!m_settings || !m_window->isVisible())
        return;
    const bool isMaximized = m_window->isMaximized();
    const QRect place = isMaximized ? m_window->normalGeometry() : m_window->geometry();
    if (place.isValid())
        m_settings->setPlace(place, isMaximized);
    m_settings->setArrangement(MainDocks, m_window->saveState());
    m_settings->setArrangement(ChipDocks, chipView.saveState());
    for (const QAction* toggle : std::as_const(m_toggles))
        m_settings->setOn(toggle->objectName(), toggle->isChecked());
    m_settings->setHistory(m_console->history());
    m_settings->write();
}

void WindowMemory::setFolderOf(const QString& path)
{
    const QFileInfo info(path);
    m_folder = info.absolutePath();
    if (m_settings)
        m_settings->setFolder(m_folder);
}

} // namespace mirn::zelchip
