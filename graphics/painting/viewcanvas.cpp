// SPDX-License-Identifier: MIT
#include "graphics/painting/viewcanvas.h"

#include "graphics/elements/enlarged.h"
#include "graphics/painting/raster/picturedevice.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <iterator>
#include <numeric>
#include <utility>

namespace mirn::zelchipview {

namespace {

constexpr int BorderBreadth = 2; // width in pixels of the strips along the picture's borders where cut-off shapes show

constexpr int MostParts = 96; // that are told one by one after a scroll

constexpr double LongEdge = 64; // pixels; the opacity of a cut-off edge depends on the length that is left of it

bool isSameScale(const QTransform& a, const QTransform& b)
{
    return a.m11() == b.m11() && a.m12() == b.m12() && a.m21() == b.m21() && a.m22() == b.m22() && a.m13() == b.m13()
        && a.m23() == b.m23() && a.m33() == b.m33();
}

bool isWhole(double value)
{
    return value == std::round(value);
}

int wrapped(int value, int length)
{
    const int rest = value % length;
    return rest < 0 ? rest + length : rest;
}

void fillPart(QImage& image, const QRect& part, QRgb color)
{
    uchar* corner = image.bits() + part.top() * image.bytesPerLine() + part.left() * static_cast<int>(sizeof(QRgb));
    QImage(corner, part.width(), part.height(), image.bytesPerLine(), image.format()).fill(color);
}

} // namespace

ViewCanvas::ViewCanvas(DisplayList& list, std::shared_ptr<ListPainter::Memory> memory)
    : m_list(list)
    , m_painter(list, std::move(memory))
{ }

void ViewCanvas::invalidate()
{
    m_isValid = false;
    m_dirty.clear();
}

// While nothing is painted, the number of dirty parts must not grow without limit.
void ViewCanvas::invalidate(const std::vector<int>& places)
{
    if (!m_isValid)
        return;
    const QRectF picture(m_picture.rect());
    std::vector<QRect> parts;
    for (int place : places) {
        if (place < 0)
            continue;
        const QRectF part = enlarged(m_toPicture.mapRect(m_list.boundsOf(place)), PenMargin) & picture;
        if (!part.isEmpty())
            parts.push_back(part.toAlignedRect());
    }
    m_dirty.add(parts, m_picture.size());
    if (m_dirty.areMostOf(m_picture.size()))
        invalidate();
}

void ViewCanvas::update(const Scene& scene)
{
    pause();
    if (needsAll(scene) || !scroll(scene) || m_dirty.areMostOf(m_picture.size()))
        paintAll(scene);
    else
        paintDirtyParts(scene, QDeadlineTimer(QDeadlineTimer::Forever));
}

QRegion ViewCanvas::scrollTo(const Scene& scene)
{
    const QTransform before = m_toPicture;
    const std::size_t first = m_dirty.all().size();
    if (needsAll(scene) || !scroll(scene) || m_dirty.areMostOf(m_picture.size()))
        return m_picture.rect();
    QRegion parts;
    for (std::size_t n = first; n < m_clippedEnd && parts.rectCount() <= MostParts; ++n)
        parts |= m_dirty.all()[n];
    if (parts.rectCount() <= MostParts)
        return parts;
    // They lie along two borders or four.
    const bool isAcross = m_toPicture.dx() != before.dx();
    const bool isDown = m_toPicture.dy() != before.dy();
    const QPoint middle = m_picture.rect().center();
    QRect around[4];
    for (std::size_t n = first; n < m_clippedEnd; ++n) {
        const QRect& part = m_dirty.all()[n];
        const int right = isAcross && part.center().x() > middle.x() ? 1 : 0;
        const int lower = isDown && part.center().y() > middle.y() ? 2 : 0;
        around[right + lower] |= part;
    }
    return std::accumulate(std::begin(around), std::end(around), QRegion(), std::bit_or<>());
}

void ViewCanvas::paintInto(QImage& image, const Scene& scene)
{
    pause();
    invalidate();
    paint(scene, image, image.rect());
}

ViewCanvas::Work ViewCanvas::updateSome(const Scene& scene, const QDeadlineTimer& deadline, Bands bands)
{
    if (!hasBegun(scene)) {
        const bool isElsewhere = scene.size != m_picture.size() || scene.toPicture != m_toPicture;
        begin(scene);
        if (isElsewhere)
            m_picture.fill(scene.background);
        divide(bands);
    } else if (m_dirty.isEmpty()) {
        return Work::None;
    }
    m_painter.keepThreads(true);
    paintDirtyParts(scene, deadline);
    m_painter.keepThreads(!m_dirty.isEmpty());
    return m_dirty.isEmpty() ? Work::Done : Work::Left;
}

// What comes first is at the end, where paintDirtyParts() begins.
void ViewCanvas::divide(Bands bands)
{
    std::vector<QRect> pieces;
    for (int bottom = m_picture.height(); bottom > 0; bottom -= bands.height) {
        const int top = std::max(0, bottom - bands.height);
        pieces.emplace_back(0, top, m_picture.width(), bottom - top);
    }
    const int middle = m_picture.height() / 2;
    if (bands.order == Order::MiddleFirst)
        std::sort(pieces.begin(), pieces.end(), [middle](const QRect& a, const QRect& b) {
            return std::abs(a.center().y() - middle) > std::abs(b.center().y() - middle);
        });
    m_dirty.setPieces(std::move(pieces));
}

bool ViewCanvas::needsAll(const Scene& scene) const
{
    return !m_isValid || !differsOnlyByScroll(scene);
}

bool ViewCanvas::hasBegun(const Scene& scene) const
{
    return !needsAll(scene) && scene.toPicture == m_toPicture;
}

QRegion ViewCanvas::finished() const
{
    QRegion region(m_picture.rect());
    for (const QRect& part : m_dirty.all())
        region -= part;
    return m_isValid ? region : QRegion();
}

QImage ViewCanvas::reduced(int divisor) const
{
    QImage upright(m_picture.size(), m_picture.format());
    QPainter painter(&upright);
    drawOn(painter, QPointF(), 1.0);
    painter.end();
    return upright.scaled(m_picture.size() / divisor);
}

// The picture wraps around, so up to four pieces of the image make it up.
std::vector<ViewCanvas::Piece> ViewCanvas::pieces() const
{
    const int right = m_picture.width() - m_origin.x();
    const int bottom = m_picture.height() - m_origin.y();
    const Piece all[]
        = {{QRect(m_origin, QSize(right, bottom)), {0, 0}}, {QRect(0, m_origin.y(), m_origin.x(), bottom), {right, 0}},
            {QRect(m_origin.x(), 0, right, m_origin.y()), {0, bottom}},
            {QRect(QPoint(), QSize(m_origin.x(), m_origin.y())), {right, bottom}}};
    std::vector<Piece> shown;
    std::copy_if(std::begin(all), std::end(all), std::back_inserter(shown),
        [](const Piece& piece) { return !piece.source.isEmpty(); });
    return shown;
}

void ViewCanvas::drawOn(QPainter& painter, const QPointF& position, qreal ratio) const
{
    // This image shares the pixels; changing the device pixel ratio of a copy would copy them.
    QImage picture(
        m_picture.constBits(), m_picture.width(), m_picture.height(), m_picture.bytesPerLine(), m_picture.format());
    picture.setDevicePixelRatio(ratio);
    if (m_origin.isNull()) {
        painter.drawImage(position, picture);
        return;
    }
    for (const Piece& piece : pieces())
        painter.drawImage(position + piece.target, picture, piece.source);
}

void ViewCanvas::drawParts(QPainter& painter, const QRegion& parts) const
{
    for (const Piece& piece : pieces()) {
        for (const QRect& part : parts) {
            const QRect target = part & QRect(piece.target, piece.source.size());
            if (!target.isEmpty())
                painter.drawImage(
                    target.topLeft(), m_picture, target.translated(piece.source.topLeft() - piece.target));
        }
    }
}

void ViewCanvas::copyParts(QImage& image, QPoint corner, const QRegion& parts) const
{
    for (const Piece& piece : pieces()) {
        for (const QRect& part : parts) {
            const QRect target = part & QRect(piece.target, piece.source.size());
            const QRect source = target.translated(piece.source.topLeft() - piece.target);
            for (int y = 0; y < target.height(); ++y) {
                const auto* from = reinterpret_cast<const QRgb*>(m_picture.constScanLine(source.top() + y));
                auto* to = reinterpret_cast<QRgb*>(image.scanLine(corner.y() + target.top() + y));
                std::memcpy(to + corner.x() + target.left(), from + source.left(), sizeof(QRgb) * target.width());
            }
        }
    }
}

bool ViewCanvas::differsOnlyByScroll(const Scene& scene) const
{
    return isSameScale(scene.toPicture, m_toPicture) && scene.size == m_picture.size() && scene.layers == m_layers
        && scene.listVersion == m_listVersion && scene.hints == m_hints && scene.textPen == m_textPen
        && scene.viewFont == m_viewFont && scene.background == m_background
        && scene.backgroundBrush == m_backgroundBrush;
}

// Returns false if the picture cannot be reused: nothing of it stays visible, it moves by a fraction of a pixel, or its
// background does not move along.
bool ViewCanvas::scroll(const Scene& scene)
{
    const double dx = scene.toPicture.dx() - m_toPicture.dx();
    const double dy = scene.toPicture.dy() - m_toPicture.dy();
    m_clippedEnd = 0;
    if (dx == 0 && dy == 0)
        return true;
    // A background with a pattern or an image does not move along.
    const Qt::BrushStyle behind = scene.backgroundBrush.style();
    if (behind != Qt::NoBrush && behind != Qt::SolidPattern)
        return false;
    const int width = scene.size.width();
    const int height = scene.size.height();
    if (!isWhole(dx) || !isWhole(dy) || std::abs(dx) >= width || std::abs(dy) >= height || scene.isScaled)
        return false;
    const QPoint way(static_cast<int>(dx), static_cast<int>(dy));
    m_origin = QPoint(wrapped(m_origin.x() - way.x(), width), wrapped(m_origin.y() - way.y(), height));
    m_dirty.move(way);
    const std::vector<QRect> borders = edgeStripsFor(way);
    invalidateClippedShapes(borders, way, way); // the areas that they covered before, moved along
    m_toPicture = scene.toPicture;
    invalidateClippedShapes(borders, QPoint(), -way);
    m_clippedEnd = m_dirty.all().size();
    // QPainter rounds shapes that are cut off at the border of an image differently from those inside.
    for (const QRect& border : borders) {
        mark(border);
        mark(border.translated(way));
    }
    if (way.x() != 0)
        mark(QRect(way.x() > 0 ? 0 : width + way.x(), 0, std::abs(way.x()), height));
    if (way.y() != 0)
        mark(QRect(0, way.y() > 0 ? 0 : height + way.y(), width, std::abs(way.y())));
    return true;
}

// Returns strips along the borders that something moves across.
std::vector<QRect> ViewCanvas::edgeStripsFor(QPoint way) const
{
    const int width = m_picture.width();
    const int height = m_picture.height();
    std::vector<QRect> borders;
    if (way.x() != 0)
        borders = {QRect(0, 0, BorderBreadth, height), QRect(width - BorderBreadth, 0, BorderBreadth, height)};
    if (way.y() != 0) {
        borders.emplace_back(0, 0, width, BorderBreadth);
        borders.emplace_back(0, height - BorderBreadth, width, BorderBreadth);
    }
    return borders;
}

// Whether one of the coordinates changes its sign when the picture is scrolled by `way`.
bool ViewCanvas::crossesZero(const QPointF& point, QPoint way) const
{
    const QPointF before = m_toPicture.map(point);
    const QPointF after = before + way;
    return (before.x() < 0) != (after.x() < 0) || (before.y() < 0) != (after.y() < 0);
}

// How QPainter cuts off a slanted shape or a wide border depends on where the picture's border is, and it changes
// pixels along the whole shape. The position of a text is rounded towards zero. Such shapes cannot be moved with the
// picture, so they are repainted. Both distances begin where m_toPicture maps a shape: `way` leads to where its pixels
// are now, `other` to where it was before the scroll or will be after it.
void ViewCanvas::invalidateClippedShapes(const std::vector<QRect>& borders, QPoint way, QPoint other)
{
    // Most primitives are small rects, which can be moved. The scale is the largest one, should the view be rotated.
    const double scale = std::max(std::abs(m_toPicture.m11()) + std::abs(m_toPicture.m21()),
        std::abs(m_toPicture.m12()) + std::abs(m_toPicture.m22()));
    const auto mayMatter = [scale](const Primitive& primitive) {
        if (primitive.kind != Primitive::Rect)
            return true;
        const double penWidth = std::abs(primitive.strokeWidth);
        const double longest = std::max(std::abs(primitive.c), std::abs(primitive.d)) + penWidth;
        return scale * penWidth >= WidePenThreshold || scale * longest + 2 * PenMargin > LongEdge;
    };
    const auto markShape = [&](const Primitive& primitive, const QRectF& bounds, const QRect&) {
        const double penWidth = primitive.strokeWidth * m_toPicture.m11();
        switch (primitive.kind) {
        case Primitive::Text:
            if (crossesZero(QPointF(primitive.a, primitive.b), other))
                mark(bounds, way);
            break;
        case Primitive::Rect:
            if (penWidth >= WidePenThreshold || std::max(bounds.width(), bounds.height()) > LongEdge)
                markEdges(m_toPicture.mapRect(primitive.rect()), std::max(penWidth, 0.0) / 2 + PenMargin, way);
            break;
        default:
            if (primitive.isSlanted() || penWidth >= WidePenThreshold)
                mark(bounds, way);
        }
    };
    m_painter.visitTouching(m_toPicture, borders, m_layers, mayMatter, markShape);
}

void ViewCanvas::markEdges(const QRectF& rect, double reach, QPoint way)
{
    const QRectF outer = rect.adjusted(-reach, -reach, reach, reach);
    mark(QRectF(outer.left(), outer.top(), outer.width(), 2 * reach), way);
    mark(QRectF(outer.left(), rect.bottom() - reach, outer.width(), 2 * reach), way);
    mark(QRectF(outer.left(), outer.top(), 2 * reach, outer.height()), way);
    mark(QRectF(rect.right() - reach, outer.top(), 2 * reach, outer.height()), way);
}

// `way` is how far the part has moved along with the picture.
void ViewCanvas::mark(const QRectF& part, QPoint way)
{
    mark((part.translated(way) & QRectF(m_picture.rect())).toAlignedRect());
}

void ViewCanvas::mark(const QRect& part)
{
    m_dirty.add(part);
}

// Takes over what the picture depends on; all of it has to be painted then.
void ViewCanvas::begin(const Scene& scene)
{
    if (m_picture.size() != scene.size)
        m_picture = QImage(scene.size, QImage::Format_RGB32);
    m_toPicture = scene.toPicture;
    m_layers = scene.layers;
    m_listVersion = scene.listVersion;
    m_hints = scene.hints;
    m_textPen = scene.textPen;
    m_viewFont = scene.viewFont;
    m_background = scene.background;
    m_backgroundBrush = scene.backgroundBrush;
    invalidate();
    m_origin = QPoint();
    m_isValid = true;
}

void ViewCanvas::paintAll(const Scene& scene)
{
    begin(scene);
    if (!m_picture.isNull())
        paint(scene, m_picture, m_picture.rect());
}

void ViewCanvas::paintDirtyParts(const Scene& scene, const QDeadlineTimer& deadline)
{
    if (!m_dirty.isEmpty() && m_scratch.size() != m_picture.size())
        m_scratch = QImage(m_picture.size(), QImage::Format_RGB32);
    QRect last;
    while (!m_dirty.isEmpty()) { // from the back: the large parts come last
        const QRect part = m_dirty.takeLast() & m_picture.rect();
        if (part.isEmpty() || last.contains(part))
            continue;
        last = part;
        paint(scene, m_scratch, part);
        copyFromScratch(part);
        if (deadline.hasExpired())
            break;
    }
}

void ViewCanvas::copyFromScratch(const QRect& part)
{
    const int width = m_picture.width();
    const int left = wrapped(part.left() + m_origin.x(), width);
    const int first = std::min(part.width(), width - left); // the rest wraps around to the other edge
    uchar* picture = m_picture.bits();
    for (int y = part.top(); y <= part.bottom(); ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(m_scratch.constScanLine(y)) + part.left();
        const int row = wrapped(y + m_origin.y(), m_picture.height());
        auto* line = reinterpret_cast<QRgb*>(picture + row * m_picture.bytesPerLine());
        std::memcpy(line + left, from, sizeof(QRgb) * first);
        std::memcpy(line, from + first, sizeof(QRgb) * (part.width() - first));
    }
}

void ViewCanvas::paint(const Scene& scene, QImage& image, const QRect& part)
{
    fillPart(image, part, scene.background.rgb());
    if (scene.drawBackground) {
        PictureDevice device(&image);
        QPainter painter(&device);
        painter.setRenderHints(scene.hints);
        painter.setTransform(scene.toPicture);
        scene.drawBackground(painter, scene.toPicture.inverted().mapRect(QRectF(part)));
    }
    m_painter.paint({&image, part, scene.toPicture, scene.hints, scene.textPen, scene.viewFont, scene.smallestText},
        scene.layers, scene.states);
}

} // namespace mirn::zelchipview
