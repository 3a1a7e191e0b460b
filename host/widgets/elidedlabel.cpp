// SPDX-License-Identifier: MIT
#include "host/widgets/elidedlabel.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

namespace mirn::zelchip {

namespace {

constexpr int SidePixels = 8; // free on both sides of the text

} // namespace

ElidedLabel::ElidedLabel(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

int ElidedLabel::widthOf(const QString& text) const
{
    return fontMetrics().horizontalAdvance(text) + 2 * SidePixels;
}

bool ElidedLabel::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip || widthOf(text()) <= width())
        return QLabel::event(event);
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text().toHtmlEscaped(), this);
    return true;
}

void ElidedLabel::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        Q_EMIT clicked();
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    const QRect area = rect().adjusted(SidePixels, 0, -SidePixels, 0);
    const QString line = text().simplified();
    QPainter painter(this);
    painter.drawText(area, static_cast<int>(alignment()) | Qt::TextSingleLine,
        fontMetrics().elidedText(line, Qt::ElideRight, area.width()));
}

} // namespace mirn::zelchip
