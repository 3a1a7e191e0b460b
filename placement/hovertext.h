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

    // An empty text hides it.
    void show(const QString& text, const QPoint& position);
    void moveTo(const QPoint& position);
    void hide();

private:
    QPointer<QPlainTextEdit> m_window;
};

} // namespace mirn::zelchipview
