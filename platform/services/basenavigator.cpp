// SPDX-License-Identifier: MIT
#include "platform/contract/basenavigator.h"

#include <QGraphicsSceneWheelEvent>
#include <QKeyEvent>
#include <QWheelEvent>

#include <cstdlib>

namespace {

// Eighths of a degree that make one step, as QWheelEvent defines a notch.
constexpr int WheelStep = QWheelEvent::DefaultDeltasPerStep;

BaseNavigator::Navigating navigationOf(int key)
{
    switch (key) {
    case Qt::Key_Plus:
        return BaseNavigator::NavigateZoomIn;
    case Qt::Key_Minus:
        return BaseNavigator::NavigateZoomOut;
    case Qt::Key_Up:
        return BaseNavigator::NavigateUp;
    case Qt::Key_Down:
        return BaseNavigator::NavigateDown;
    case Qt::Key_Left:
        return BaseNavigator::NavigateLeft;
    case Qt::Key_Right:
        return BaseNavigator::NavigateRight;
    default:
        return BaseNavigator::NavigateNone;
    }
}

} // namespace

BaseNavigator::BaseNavigator(bool wheelZooms, QObject* parent)
    : QObject(parent)
    , m_wheelZooms(wheelZooms)
{ }

BaseNavigator::~BaseNavigator() = default;

bool BaseNavigator::eventFilter(QObject* target, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        return handleKey(target, event);
    case QEvent::Wheel: {
        auto* wheel = static_cast<QWheelEvent*>(event);
        return handleWheel(target, wheel, wheel->angleDelta(), wheel->modifiers());
    }
    case QEvent::GraphicsSceneWheel: {
        auto* wheel = static_cast<QGraphicsSceneWheelEvent*>(event);
        const bool sideways = wheel->orientation() == Qt::Horizontal;
        const QPoint delta = sideways ? QPoint(wheel->delta(), 0) : QPoint(0, wheel->delta());
        return handleWheel(target, wheel, delta, wheel->modifiers());
    }
    default:
        return QObject::eventFilter(target, event);
    }
}

void BaseNavigator::updateView(QObject*, Navigating, int)
{ }

void BaseNavigator::updateView(QObject*, Navigating, QRectF)
{ }

bool BaseNavigator::handleKey(QObject* target, QEvent* event)
{
    auto* key = static_cast<QKeyEvent*>(event);
    if (key->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return false;
    const Navigating how = navigationOf(key->key());
    if (how == NavigateNone)
        return false;
    event->accept();
    updateView(target, how, 1);
    return true;
}

bool BaseNavigator::handleWheel(QObject* target, QEvent* event, QPoint angleDelta, Qt::KeyboardModifiers modifiers)
{
    const bool sideways = angleDelta.y() == 0;
    const int delta = sideways ? angleDelta.x() : angleDelta.y();
    if (delta == 0)
        return false;

    const bool zooms = !sideways && m_wheelZooms != bool(modifiers & Qt::ControlModifier);
    Navigating how = delta > 0 ? NavigateUp : NavigateDown;
    if (zooms)
        how = delta > 0 ? NavigateZoomIn : NavigateZoomOut;
    else if (sideways || (modifiers & Qt::AltModifier))
        how = delta > 0 ? NavigateLeft : NavigateRight;

    // Fine wheels and touch pads send fractions of a step; they add up while the direction stays the same.
    if (how != m_lastWheel)
        m_wheelRest = 0;
    m_lastWheel = how;
    const qint64 way = m_wheelRest + std::abs(static_cast<qint64>(delta));
    const auto count = static_cast<int>(way / WheelStep);
    m_wheelRest = static_cast<int>(way % WheelStep);
    if (count > 0)
        updateView(target, how, count);
    // A view whose scene did not accept the event would scroll by itself as well.
    event->accept();
    return true;
}
