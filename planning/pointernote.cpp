// SPDX-License-Identifier: MIT
#include "planning/pointernote.h"

#include <QCoreApplication>
#include <QEvent>
#include <QToolTip>

#include <algorithm>

namespace mirn::zelchipview {

namespace {

constexpr int ReadingMilliseconds = 5000;
constexpr int WidestText = 340; // pixels; longer texts get more lines
constexpr QPoint BesidePointer(30, 66); // below the chip view's own text about the site

} // namespace

PointerNote::PointerNote(QWidget* window)
    : QLabel(window)
{
    setObjectName(QStringLiteral("pointerNote"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setMargin(6);
    setFrameShape(QFrame::Box);
    setAutoFillBackground(true);
    setPalette(QToolTip::palette());
    setBackgroundRole(QPalette::ToolTipBase);
    setForegroundRole(QPalette::ToolTipText);
    m_fading.setSingleShot(true);
    m_fading.setInterval(ReadingMilliseconds);
    connect(&m_fading, &QTimer::timeout, this, &QWidget::hide);
    hide();
}

void PointerNote::showAt(const QString& text, QPoint globalPosition)
{
    stopFading();
    setVisible(!text.isEmpty());
    if (text.isEmpty())
        return;
    setText(text);
    const int width = std::min(WidestText, fontMetrics().horizontalAdvance(text) + 1) + 2 * (margin() + frameWidth());
    resize(width, heightForWidth(width));
    const QRect area = parentWidget()->rect();
    const QPoint pointer = parentWidget()->mapFromGlobal(globalPosition);
    QPoint place = pointer + BesidePointer;
    if (place.y() + height() > area.height())
        place.setY(pointer.y() - BesidePointer.y() - height());
    place.setX(std::clamp(place.x(), 0, std::max(0, area.width() - this->width())));
    move(place);
    raise();
}

void PointerNote::showForAWhile(const QString& text, QPoint globalPosition)
{
    showAt(text, globalPosition);
    fade();
}

void PointerNote::fade()
{
    if (isHidden())
        return;
    m_fading.start();
    QCoreApplication::instance()->installEventFilter(this);
}

bool PointerNote::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride: // all that is sent of a key that is a shortcut
    case QEvent::Wheel:
        hide();
        break;
    default:
        break;
    }
    return QLabel::eventFilter(watched, event);
}

void PointerNote::hideEvent(QHideEvent* event)
{
    if (isHidden()) // else its window is, and the note comes back with it
        stopFading();
    QLabel::hideEvent(event);
}

void PointerNote::stopFading()
{
    m_fading.stop();
    QCoreApplication::instance()->removeEventFilter(this);
}

} // namespace mirn::zelchipview
