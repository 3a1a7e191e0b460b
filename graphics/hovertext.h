// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>

class QPlainTextEdit;
class QPoint;
class QString;
class QWidget;

namespace mirn::zelchipview {

// The small floating window beside a drag that tells what the site under the pointer is. Never takes the focus.
// Positions are in screen coordinates. Does nothing while it has no window.
class HoverText final
{
public:
    // Makes the window, as a child of the view.
    void create(QWidget* view);

    // Shows the text where the window is; an empty text hides it. `owner` only serves to tell who showed it last.
    void show(const QString& text, const void* owner);
    void moveTo(const QPoint& position);
    void hide();
    // Only when nobody else has shown a text since.
    void hideIfOwnedBy(const void* owner);

private:
    QPointer<QPlainTextEdit> m_window;
    const void* m_owner = nullptr;
};

} // namespace mirn::zelchipview
