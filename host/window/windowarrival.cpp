// SPDX-License-Identifier: MIT
#include "host/window/windowarrival.h"

#include <QEvent>
#include <QWidget>
#include <QWindow>

#include <utility>

namespace mirn::zelchip {

namespace {

constexpr int RestMilliseconds = 200; // between two steps of a window manager lies less
constexpr int PatienceMilliseconds = 5000;

} // namespace

WindowArrival::WindowArrival(QWidget* window, std::function<void()> arrived)
    : QObject(window)
    , m_window(window)
    , m_arrived(std::move(arrived))
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(RestMilliseconds);
    connect(&m_rest, &QTimer::timeout, this, &WindowArrival::check);
    m_window->installEventFilter(this);
    m_clock.start();
    m_rest.start();
}

bool WindowArrival::isSeen() const
{
    const QWindow* handle = m_window->windowHandle();
    return handle && handle->isExposed();
}

void WindowArrival::check()
{
    if (!isSeen() && m_clock.elapsed() < PatienceMilliseconds) {
        m_rest.start();
        return;
    }
    m_window->removeEventFilter(this);
    deleteLater();
    m_arrived();
}

bool WindowArrival::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::WindowStateChange:
    case QEvent::WindowActivate:
        if (m_clock.elapsed() < PatienceMilliseconds)
            m_rest.start();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace mirn::zelchip
