// SPDX-License-Identifier: MIT
#include "graphics/screenpixels.h"

#include <QPaintEngine>
#include <QPainter>
#include <QRegion>

#include <cstring>

namespace mirn::zelchipview {

namespace {

constexpr double LargestShareOfOthers = 1.0 / 8; // of the part; saving more takes longer than it gains

int pixelsOf(const QRegion& region)
{
    int pixels = 0;
    for (const QRect& rect : region)
        pixels += rect.width() * rect.height();
    return pixels;
}

} // namespace

// The painter's engine keeps a pointer to the window's pixels, so they must not be copied when they are written to.
QImage* writableWindow(const QPainter& painter)
{
    const QPaintEngine* engine = painter.paintEngine();
    QPaintDevice* device = engine ? engine->paintDevice() : nullptr;
    if (!device || device->devType() != QInternal::Image)
        return nullptr;
    auto* window = static_cast<QImage*>(device);
    return window->format() == QImage::Format_RGB32 && window->isDetached() ? window : nullptr;
}

ScreenPixels::ScreenPixels(const QPainter& painter, const QRect& part)
{
    QImage* window = writableWindow(painter);
    if (!window || !window->rect().contains(part))
        return;
    const QRegion others = QRegion(part) - painter.paintEngine()->systemClip();
    if (pixelsOf(others) > LargestShareOfOthers * part.width() * part.height())
        return;
    uchar* corner = window->bits() + part.top() * window->bytesPerLine() + part.left() * static_cast<int>(sizeof(QRgb));
    m_image = QImage(corner, part.width(), part.height(), window->bytesPerLine(), window->format());
    for (const QRect& rect : others.translated(-part.topLeft()))
        m_others.emplace_back(rect, m_image.copy(rect));
}

ScreenPixels::~ScreenPixels()
{
    for (const auto& [rect, pixels] : m_others) {
        for (int y = 0; y < rect.height(); ++y)
            std::memcpy(reinterpret_cast<QRgb*>(m_image.scanLine(rect.top() + y)) + rect.left(),
                pixels.constScanLine(y), sizeof(QRgb) * static_cast<std::size_t>(rect.width()));
    }
}

} // namespace mirn::zelchipview
