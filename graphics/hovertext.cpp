// SPDX-License-Identifier: MIT
#include "graphics/hovertext.h"

#include <QPlainTextEdit>
#include <QTextDocument>
#include <QWindow>
#include <QtMath>

namespace mirn::zelchipview {

namespace {

constexpr QSize WindowSize(150, 30); // pixels

// The window lets input through, so that the drag reaches the site below it even if the pointer gets onto the text.
class TextWindow final : public QPlainTextEdit
{
public:
    using QPlainTextEdit::QPlainTextEdit;

protected:
    // The flag is set here because the native window exists now but is not shown yet. Calling winId() earlier would
    // turn every ancestor widget into a native window as well.
    void showEvent(QShowEvent* event) override
    {
        windowHandle()->setFlag(Qt::WindowTransparentForInput);
        QPlainTextEdit::showEvent(event);
    }
};

// Returns the size at which the window shows all of its text.
QSize sizeFor(const QPlainTextEdit& window)
{
    const int border = qCeil(window.document()->documentMargin()) + window.frameWidth();
    const QSize text = window.fontMetrics().size(0, window.toPlainText());
    return text + QSize(2 * border, 2 * border);
}

} // namespace

void HoverText::create(QWidget* view)
{
    m_window = new TextWindow(view);
    m_window->setWindowFlags(
        Qt::Drawer | Qt::MSWindowsFixedSizeDialogHint | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    m_window->setAttribute(Qt::WA_ShowWithoutActivating);
    m_window->setFocusPolicy(Qt::NoFocus);
    m_window->setAcceptDrops(false);
    m_window->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_window->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_window->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_window->resize(WindowSize);
}

void HoverText::show(const QString& text, const void* owner)
{
    if (!m_window)
        return;
    m_owner = owner;
    if (m_window->toPlainText() != text) { // laying out the document costs more than the rest of a drag move
        m_window->setPlainText(text);
        m_window->resize(WindowSize.expandedTo(sizeFor(*m_window)));
    }
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
