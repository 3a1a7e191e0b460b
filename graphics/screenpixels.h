// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QRect>

#include <utility>
#include <vector>

class QPainter;

namespace mirn::zelchipview {

// Returns the window's image that a paint event paints on, if its pixels may be set without the painter; else null.
[[nodiscard]] QImage* writableWindow(const QPainter& painter);

// A part of what a window shows, for a paint event that sets the pixels by itself instead of drawing a picture of them.
// What the event must not paint, such as other widgets over the part, is put back at the end.
class ScreenPixels final
{
public:
    // The painter is that of the event and stays active; `part` is in pixels of its device.
    ScreenPixels(const QPainter& painter, const QRect& part);
    ~ScreenPixels();
    ScreenPixels(const ScreenPixels&) = delete;
    ScreenPixels& operator=(const ScreenPixels&) = delete;

    // The part as an image. Null if its pixels cannot be set, or too many of them must stay.
    [[nodiscard]] QImage& image() { return m_image; }

private:
    QImage m_image; // shares the pixels of the window
    std::vector<std::pair<QRect, QImage>> m_others; // and where in the part they belong
};

} // namespace mirn::zelchipview
