// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QLabel>
#include <QTimer>

namespace mirn::zelchipview {

// A short text beside the pointer that lets all input through: why a site refuses a resource. What the site is, the
// chip view says in a text of its own. It is a child of the window that it is shown in.
class ZELCHIPGUI_EXPORT PointerNote final : public QLabel
{
    Q_OBJECT
public:
    // The window becomes the owner.
    explicit PointerNote(QWidget* window);

    // Shows the text beside a position on the screen, inside the window. An empty text hides the note at once.
    void showAt(const QString& text, QPoint globalPosition);

    // Does the same, and has the note fade.
    void showForAWhile(const QString& text, QPoint globalPosition);

    // Hides the note after some seconds, so that there is time to read it, or as soon as a button, a key or the wheel
    // is used.
    void fade();

protected:
    // While the note fades, it watches the whole program.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void stopFading();

    QTimer m_fading;
};

} // namespace mirn::zelchipview
