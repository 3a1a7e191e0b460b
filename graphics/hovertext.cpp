// SPDX-License-Identifier: MIT
#include "graphics/hovertext.h"

#include <QPlainTextEdit>
#include <QWindow>

namespace mirn::zelchipview {

namespace {

constexpr QSize WindowSize(150, 30); // pixels

// Should the pointer get onto the text, the drag must still reach the site below.
class TextWindow final : public QPlainTextEdit
{
public:
    using QPlainTextEdit::QPlainTextEdit;

protected:
    // Between the making of the window and its coming up. Whoever asks for the window earlier, through winId(), turns
    // every widget around it into a window of the window system.
    void showEvent(QShowEvent* event) override
    {
        windowHandle()->setFlag(Qt::WindowTransparentForInput);
        QPlainTextEdit::showEvent(event);
    }
};

} // namespace

void HoverText::create(QWidget* view)
{
    m_window = new TextWindow(view); // child of the view
    m_window->setWindowFlags(
        Qt::Drawer | Qt::MSWindowsFixedSizeDialogHint | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    m_window->setAttribute(Qt::WA_ShowWithoutActivating);
    m_window->setFocusPolicy(Qt::NoFocus);
    m_window->setAcceptDrops(false);
    m_window->resize(WindowSize);
}

void HoverText::show(const QString& text, const void* owner)
{
    if (!m_window)
        return;
    m_owner = owner;
    if (m_window->toPlainText() != text) // making a document anew takes longer than the rest of a drag's move
        m_window->setPlainText(text);
    m_window->setVisible(!text.isEmpty());
}

void HoverText::hideIfOwnedBy(const void* owner)
{
    if (owner == m_owner)
        hide();
}

void HoverText::moveTo(const QPoint& position)
{
    if (m_window)
        m_window->move(position);
}

void HoverText::hide()
{
    if (m_window)
        m_window->hide();
}

} // namespace mirn::zelchipview
