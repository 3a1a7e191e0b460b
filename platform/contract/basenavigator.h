// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QObject>
#include <QPoint>
#include <QRectF>

class QEvent;

// Turns navigation gestures into calls of updateView(). Install it as event filter on a view and on its scene; a
// gesture is answered once and consumed wherever it is seen first.
//
// Gestures: Ctrl+wheel zooms, the wheel scrolls (with Alt or a horizontal wheel: sideways), arrow keys scroll,
// + and - zoom. Keys with Ctrl, Alt or Meta are left alone.
class ZELPLATFORM_EXPORT BaseNavigator : public QObject
{
    Q_OBJECT
public:
    // What a gesture asks for.
    enum Navigating : int {
        NavigateNone = 0, // nothing
        NavigateZoomIn = 1, // show less, larger
        NavigateZoomOut = 2, // show more, smaller
        NavigateUp = 3, // scroll
        NavigateDown = 4, // scroll
        NavigateLeft = 5, // scroll
        NavigateRight = 6, // scroll
    };

    // `wheelZooms`: the plain wheel zooms and Ctrl+wheel scrolls, instead of the other way round.
    BaseNavigator(bool wheelZooms, QObject* parent);
    ~BaseNavigator() override;

    // Answers gestures by updateView() and consumes them.
    bool eventFilter(QObject* target, QEvent* event) override;

    // `count` steps of `how` on `target`, the object on which the gesture was seen. The base does nothing.
    virtual void updateView(QObject* target, Navigating how, int count);

    // Show `area` (scene units). For navigation aids that know a rectangle, such as an overview map; no gesture of the
    // base ends here. The base does nothing.
    virtual void updateView(QObject* target, Navigating how, QRectF area);

private:
    bool handleKey(QObject* target, QEvent* event);
    bool handleWheel(QObject* target, QEvent* event, QPoint angleDelta, Qt::KeyboardModifiers modifiers);

    const bool m_wheelZooms;
    int m_wheelRest = 0; // eighths of a degree that did not yet make a whole step
    Navigating m_lastWheel = NavigateNone;
};
