// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QObject>
#include <QPoint>
#include <QRectF>

class QEvent;

// Turns navigation gestures into calls of updateView(). Install it as an event filter on a view and on its scene: a
// gesture is answered once, and consumed by the object that sees it first.
//
// Gestures: Ctrl+wheel zooms, the wheel scrolls (with Alt, or with a horizontal wheel, sideways), arrow keys scroll, +
// and - zoom. Keys with Ctrl, Alt or Meta are left alone.
class ZELPLATFORM_EXPORT BaseNavigator : public QObject
{
    Q_OBJECT
public:
    // The action that a gesture asks for.
    enum Navigating : int {
        NavigateNone = 0, // nothing
        NavigateZoomIn = 1, // show less, larger
        NavigateZoomOut = 2, // show more, smaller
        NavigateUp = 3, // scroll
        NavigateDown = 4, // scroll
        NavigateLeft = 5, // scroll
        NavigateRight = 6, // scroll
    };

    // With `wheelZooms`, the plain wheel zooms and Ctrl+wheel scrolls, instead of the other way round.
    BaseNavigator(bool wheelZooms, QObject* parent);
    ~BaseNavigator() override;

    // Calls updateView() for gestures and consumes them.
    bool eventFilter(QObject* target, QEvent* event) override;

    // Performs `count` steps of `how`. `target` is the object that received the gesture. The base class does nothing.
    virtual void updateView(QObject* target, Navigating how, int count);

    // Shows `area` (scene units). This is for navigation aids that know a rectangle, such as an overview map; no
    // gesture of the base class calls it. The base class does nothing.
    virtual void updateView(QObject* target, Navigating how, QRectF area);

private:
    bool handleKey(QObject* target, QEvent* event);
    bool handleWheel(QObject* target, QEvent* event, QPoint angleDelta, Qt::KeyboardModifiers modifiers);

    const bool m_wheelZooms;
    int m_wheelRest = 0; // eighths of a degree that do not yet make a whole step
    Navigating m_lastWheel = NavigateNone;
};
