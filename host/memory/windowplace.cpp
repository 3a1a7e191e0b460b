// SPDX-License-Identifier: MIT
#include "host/memory/windowplace.h"

#include <algorithm>

namespace mirn::zelchip {

namespace {

// Room for the frame that a window manager may draw around the window; how wide it is, is known only when it is there.
constexpr int FrameWidth = 8;
constexpr int TitleHeight = 36;

// What has to be seen of a remembered window; a person can pull it back by that.
constexpr QSize SmallestSight(64, 32);

QRect withoutFrame(const QRect& available)
{
    return available.adjusted(FrameWidth, TitleHeight, -FrameWidth, -FrameWidth);
}

int areaOf(const QRect& rect)
{
    return rect.isEmpty() ? 0 : rect.width() * rect.height();
}

} // namespace

WindowPlace firstPlace(QSize wanted, const QRect& available)
{
    const QRect room = withoutFrame(available);
    const bool isTooLarge = wanted.width() > room.width() && wanted.height() > room.height();
    return {isTooLarge ? room : QRect(), wanted.boundedTo(room.size()), isTooLarge};
}

WindowPlace restoredPlace(const QRect& remembered, const QList<QRect>& available)
{
    const auto best = std::max_element(available.begin(), available.end(), [&](const QRect& one, const QRect& other) {
        return areaOf(one.intersected(remembered)) < areaOf(other.intersected(remembered));
    });
    if (best == available.end())
        return {};
    const QSize sight = best->intersected(remembered).size();
    if (sight.width() < SmallestSight.width() || sight.height() < SmallestSight.height())
        return {};
    const QRect room = withoutFrame(*best);
    QRect rect(remembered.topLeft(), remembered.size().boundedTo(room.size()));
    rect.moveLeft(qBound(best->left(), rect.left(), qMax(best->left(), best->right() - rect.width() + 1)));
    rect.moveTop(qBound(best->top(), rect.top(), qMax(best->top(), best->bottom() - rect.height() + 1)));
    return {rect, rect.size(), false};
}

} // namespace mirn::zelchip
