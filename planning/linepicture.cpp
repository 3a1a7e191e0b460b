// SPDX-License-Identifier: MIT
#include "planning/linepicture.h"

#include <QColor>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace mirn::zelchipview {

namespace {

constexpr int ScrollMargin = 256; // device pixels around the viewport
constexpr double FarthestPixel = 1 << 28; // what is further away is not drawn, so that no sum overflows
constexpr int ThinLineAlpha = 200;

bool isWholePixel(double distance)
{
    return std::abs(distance - std::round(distance)) < 1e-6;
}

// Maps one coordinate to a pixel. The whole pixels of the offset are added at the end, so that rounding is the same
// after a scroll: many coordinates lie right between two pixels.
class PixelMap
{
public:
    PixelMap(double scale, double offset)
        : m_scale(scale)
    {
        const double parts = std::round(offset * Parts);
        const double whole = std::floor(parts / Parts);
        m_whole = static_cast<int>(whole);
        m_fraction = parts / Parts - whole;
    }

    [[nodiscard]] double position(double coordinate) const { return coordinate * m_scale + m_fraction + m_whole; }
    [[nodiscard]] int pixel(double coordinate) const
    {
        return static_cast<int>(std::floor(coordinate * m_scale + m_fraction)) + m_whole;
    }

private:
    static constexpr double Parts = 1024; // of a pixel

    double m_scale;
    double m_fraction;
    int m_whole;
};

// Draws the pixels of a line that lie in `part`. They do not depend on the part: each is computed from the ends alone.
class ThinLine
{
public:
    ThinLine(QImage& image, const QRect& part)
        : m_pixels(reinterpret_cast<QRgb*>(image.bits()))
        , m_stride(image.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb)))
        , m_part(part)
    { }

    void draw(QPoint from, QPoint to, QRgb color) const
    {
        if (std::abs(to.x() - from.x()) >= std::abs(to.y() - from.y()))
            step(from.x(), from.y(), to.x(), to.y(), m_part.left(), m_part.right(), m_part.top(), m_part.bottom(), 1,
                m_stride, color);
        else
            step(from.y(), from.x(), to.y(), to.x(), m_part.top(), m_part.bottom(), m_part.left(), m_part.right(),
                m_stride, 1, color);
    }

private:
    // `a` is the longer direction, `b` the other one.
    void step(int a0, int b0, int a1, int b1, int aMin, int aMax, int bMin, int bMax, qsizetype aStride,
        qsizetype bStride, QRgb color) const
    {
        if (a0 > a1) {
            std::swap(a0, a1);
            std::swap(b0, b1);
        }
        constexpr int Fraction = 30; // bits
        const std::int64_t slope = a1 == a0 ? 0 : (static_cast<std::int64_t>(b1 - b0) << Fraction) / (a1 - a0);
        const int first = std::max(a0, aMin);
        const int last = std::min(a1, aMax);
        std::int64_t b
            = (static_cast<std::int64_t>(b0) << Fraction) + (std::int64_t(1) << (Fraction - 1)) + slope * (first - a0);
        for (int a = first; a <= last; ++a, b += slope) {
            const int row = static_cast<int>(b >> Fraction);
            if (row >= bMin && row <= bMax)
                m_pixels[a * aStride + row * bStride] = color;
        }
    }

    QRgb* const m_pixels;
    const qsizetype m_stride; // in pixels
    const QRect m_part;
};

} // namespace

QColor colorOf(const PlanLine& line)
{
    if (line.isBroken)
        return QColor(0xff, 0x4a, 0x2e); // that of conflicting sites
    switch (line.kind) {
    case PlanLine::Kind::Clock:
        return QColor(0xa0, 0x58, 0x00);
    case PlanLine::Kind::Ip:
        return QColor(0x56, 0x3a, 0xa8);
    case PlanLine::Kind::Supply:
        break;
    }
    return QColor(0x0b, 0x6e, 0x75);
}

void LinePicture::update(const std::vector<PlanLine>& lines, const QTransform& toPixels, QSize size)
{
    if (m_isValid && size == m_size && scroll(lines, toPixels))
        return;
    const QSize whole = size + 2 * QSize(ScrollMargin, ScrollMargin);
    if (m_image.size() != whole)
        m_image = QImage(whole, QImage::Format_ARGB32_Premultiplied);
    m_size = size;
    m_origin = QPoint(ScrollMargin, ScrollMargin);
    m_toImage = toPixels * QTransform::fromTranslate(ScrollMargin, ScrollMargin);
    m_isValid = true;
    draw(lines, m_image.rect());
}

// Returns false if nothing can be reused.
bool LinePicture::scroll(const std::vector<PlanLine>& lines, const QTransform& toPixels)
{
    // The scale is compared as it is: after a scroll it is the same number.
    if (toPixels.m11() != m_toImage.m11() || toPixels.m22() != m_toImage.m22())
        return false;
    const QPointF exact(m_toImage.dx() - toPixels.dx(), m_toImage.dy() - toPixels.dy());
    const QPoint origin = exact.toPoint();
    if (!isWholePixel(exact.x()) || !isWholePixel(exact.y()))
        return false;
    if (m_image.rect().contains(QRect(origin, m_size))) {
        m_origin = origin;
        return true;
    }
    const QPoint way = QPoint(ScrollMargin, ScrollMargin) - origin;
    if (std::abs(way.x()) >= m_image.width() || std::abs(way.y()) >= m_image.height())
        return false;
    m_toImage *= QTransform::fromTranslate(way.x(), way.y());
    m_origin = QPoint(ScrollMargin, ScrollMargin);
    move(way);
    const int width = m_image.width();
    const int height = m_image.height();
    if (way.x() != 0)
        draw(lines, QRect(way.x() > 0 ? 0 : width + way.x(), 0, std::abs(way.x()), height));
    if (way.y() != 0)
        draw(lines, QRect(0, way.y() > 0 ? 0 : height + way.y(), width, std::abs(way.y())));
    return true;
}

void LinePicture::move(QPoint way)
{
    const int width = m_image.width();
    const int height = m_image.height();
    const int from = std::max(0, -way.x());
    const std::size_t bytes = sizeof(QRgb) * static_cast<std::size_t>(width - std::abs(way.x()));
    for (int n = 0; n < height - std::abs(way.y()); ++n) {
        const int y = way.y() > 0 ? height - 1 - n : n; // no row is overwritten before it is moved
        const auto* source = reinterpret_cast<const QRgb*>(m_image.constScanLine(y - way.y())) + from;
        std::memmove(reinterpret_cast<QRgb*>(m_image.scanLine(y)) + from + way.x(), source, bytes);
    }
}

void LinePicture::draw(const std::vector<PlanLine>& lines, const QRect& part)
{
    for (int row = part.top(); row <= part.bottom(); ++row)
        std::memset(m_image.scanLine(row) + sizeof(QRgb) * static_cast<std::size_t>(part.left()), 0,
            sizeof(QRgb) * static_cast<std::size_t>(part.width()));
    const ThinLine pen(m_image, part);
    const QRectF near = QRectF(part).adjusted(-1, -1, 1, 1);
    const QRectF drawable(-FarthestPixel, -FarthestPixel, 2 * FarthestPixel, 2 * FarthestPixel);
    const PixelMap x(m_toImage.m11(), m_toImage.dx());
    const PixelMap y(m_toImage.m22(), m_toImage.dy());
    for (const bool isBroken : {false, true}) {
        for (const PlanLine& line : lines) {
            if (line.isBroken != isBroken || line.isStub)
                continue;
            const QPointF from(x.position(line.from.x()), y.position(line.from.y()));
            const QPointF to(x.position(line.to.x()), y.position(line.to.y()));
            if (std::max(from.x(), to.x()) < near.left() || std::min(from.x(), to.x()) > near.right()
                || std::max(from.y(), to.y()) < near.top() || std::min(from.y(), to.y()) > near.bottom())
                continue;
            if (!drawable.contains(from) || !drawable.contains(to))
                continue;
            const QPoint first(x.pixel(line.from.x()), y.pixel(line.from.y()));
            const QPoint last(x.pixel(line.to.x()), y.pixel(line.to.y()));
            if (first == last)
                continue;
            QColor color = colorOf(line);
            color.setAlpha(ThinLineAlpha);
            pen.draw(first, last, qPremultiply(color.rgba()));
        }
    }
}

} // namespace mirn::zelchipview
