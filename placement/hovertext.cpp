// SPDX-License-Identifier: MIT
#include "placement/hovertext.h"

#include <QPlainTextEdit>

namespace mirn::zelchipview {

namespace {

constexpr QSize WindowSize(150, 30); // pixels

} // namespace

void HoverText::create(QWidget* view)
{
    m_window = new QPlainTextEdit(view); // child of the view
    m_window->setWindowFlags(
        Qt::Drawer | Qt::MSWindowsFixedSizeDialogHint | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    m_window->setAttribute(Qt::WA_ShowWithoutActivating);
    m_window->setFocusPolicy(Qt::NoFocus);
    m_window->resize(WindowSize);
}

void HoverText::show(const QString& text, const QPoint& position)
{
    if (!m_window)
        return;
    m_window->setPlainText(text);
    m_window->move(position);
    m_window->setVisible(!text.isEmpty());
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
