// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>

class QPlainTextEdit;
class QPoint;
class QString;
class QWidget;

namespace mirn::zelchipview {

// The small floating window beside a drag that shows what the site under the pointer is. It never takes the focus.
// Positions are in screen coordinates. All operations do nothing while there is no window. The controller owns this
// object; the view owns the window.
class HoverText final
{
public:
    // Creates the window as a child of the view.
    void create(QWidget* view);

    // Shows the text at the window's current position; an empty text hides the window. `owner` is only compared, to
    // know who showed a text last.
    void show(const QString& text, const void* owner);
    void moveTo(const QPoint& position);
    void hide();
    // Hides the window unless another owner has shown a text since.
    void hideIfOwnedBy(const void* owner);

private:
    QPointer<QPlainTextEdit> m_window;
    const void* m_owner = nullptr;
};

} // namespace mirn::zelchipview
