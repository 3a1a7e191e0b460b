// SPDX-License-Identifier: MIT
#include "host/window/taborder.h"

#include <QWidget>

#include <algorithm>

namespace mirn::zelchip {

namespace {

QRect placeOf(const QWidget* widget)
{
    return {widget->mapTo(widget->window(), QPoint()), widget->size()};
}

bool comesBefore(const QWidget* widget, const QWidget* other)
{
    const QRect a = placeOf(widget);
    const QRect b = placeOf(other);
    const bool isOneAboveTheOther = a.left() <= b.right() && b.left() <= a.right();
    return isOneAboveTheOther ? a.bottom() < b.top() : a.right() < b.left();
}

// Takes a widget that no other comes before. The relation is no order that could be sorted by.
QWidget* takeFirst(QList<QWidget*>& widgets)
{
    const auto first = std::find_if(widgets.begin(), widgets.end(), [&](const QWidget* widget) {
        return std::none_of(
            widgets.begin(), widgets.end(), [widget](const QWidget* other) { return comesBefore(other, widget); });
    });
    return widgets.takeAt(first == widgets.end() ? 0 : static_cast<int>(first - widgets.begin()));
}

} // namespace

void orderTabsByEye(QList<QWidget*> widgets, const QWidget* window)
{
    widgets.erase(std::remove_if(widgets.begin(), widgets.end(),
                      [window](const QWidget* widget) { return widget->window() != window; }),
        widgets.end());
    QWidget* previous = nullptr;
    while (!widgets.isEmpty()) {
        QWidget* next = takeFirst(widgets);
        if (previous)
            QWidget::setTabOrder(previous, next);
        previous = next;
    }
}

} // namespace mirn::zelchip
