// SPDX-License-Identifier: MIT
// The shape of the padlock.
#include "planning/locklayer.h"

#include <QColor>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QRectF>

namespace mirn::zelchipview {

namespace {

// Fractions of the padlock's height.
constexpr double PadlockWidth = 0.8;
constexpr double BodyHeight = 0.55;
constexpr double BowWidth = 0.5;
constexpr double BowThickness = 0.13;
constexpr double BodyRounding = 0.08;

} // namespace

void LockLayer::paintPadlock(QPainter& painter, const QRectF& area, const QColor& color)
{
    const double height = area.height();
    const double middle = area.center().x();
    const QRectF body(middle - height * PadlockWidth / 2, area.bottom() - height * BodyHeight, height * PadlockWidth,
        height * BodyHeight);
    const double line = height * BowThickness;
    const double left = middle - height * BowWidth / 2 + line / 2;
    const double width = height * BowWidth - line;
    const double top = area.top() + line / 2;
    QPainterPath bow;
    bow.moveTo(left, body.top());
    bow.lineTo(left, top + width / 2);
    bow.arcTo(QRectF(left, top, width, width), 180, -180);
    bow.lineTo(left + width, body.top());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.strokePath(bow, QPen(color, line, Qt::SolidLine, Qt::FlatCap));
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(body, height * BodyRounding, height * BodyRounding);
    painter.restore();
}

} // namespace mirn::zelchipview
