// SPDX-License-Identifier: MIT
#include "host/window/listdock.h"

#include <QAction>
#include <QLocale>
#include <QMainWindow>

#include <utility>

namespace mirn::zelchip {

ListDock::ListDock(QMainWindow* window, QDockWidget* console, const QString& name, Titles titles, Area area)
    : QDockWidget(window)
    , m_console(console)
    , m_titles(std::move(titles))
    , m_area(std::move(area))
{
    setObjectName(name);
    setCount(0);
    if (window->dockWidgetArea(console) == Qt::NoDockWidgetArea)
        window->addDockWidget(Qt::BottomDockWidgetArea, console);
    window->addDockWidget(Qt::BottomDockWidgetArea, this);
    hide();
    connect(toggleViewAction(), &QAction::triggered, this, [this](bool isShown) {
        if (isShown)
            come();
    });
}

// A tab bar takes the focus even while it has but one tab and is not seen. Therefore there is none before.
void ListDock::come()
{
    if (!m_hasCome)
        qobject_cast<QMainWindow*>(parentWidget())->tabifyDockWidget(m_console, this);
    m_hasCome = true;
    QDockWidget::show();
    raise();
    list()->setFocus();
}

void ListDock::showEvent(QShowEvent* event)
{
    QDockWidget::showEvent(event);
    refresh();
}

// The menu has the name without the count.
void ListDock::setCount(int count)
{
    setWindowTitle(count == 0 ? m_titles.plain : m_titles.counted.arg(locale().toString(count)));
    toggleViewAction()->setText(m_titles.menu);
}

} // namespace mirn::zelchip
