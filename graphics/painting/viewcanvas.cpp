// SPDX-License-Identifier: MIT
#include "graphics/painting/viewcanvas.h"

#include "graphics/elements/enlarged.h"
#include "graphics/painting/raster/picturedevice.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <utility>

namespace mirn::zelchipview {

namespace {

bool isSameScale(const QTransform& a, const QTransform& b)
{
    return a.m11() == b.m11() && a.m12() == b.m12() && a.m21() == b.m21() && a.m22() == b.m22() && a.m13() == b.m13()
        && a.m23() == b.m23() && a.m33() == b.m33();
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

int ViewCanvas::wrapped(int value, int length)
{
    const int rest = value % length;
    return rest < 0 ? rest + length : rest;
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

std::vector<ViewCanvas::Piece> ViewCanvas::piecesOf(const QRegion& parts) const
{
    std::vector<Piece> shown;
    for (const Piece& piece : pieces()) {
        const QPoint toSource = piece.source.topLeft() - piece.target;
        for (const QRect& part : parts) {
            const QRect target = part & QRect(piece.target, piece.source.size());
            if (!target.isEmpty())
                shown.push_back({target.translated(toSource), target.topLeft()});
        }
    }
    return shown;
}

void ViewCanvas::drawParts(QPainter& painter, const QRegion& parts) const
{
    for (const Piece& piece : piecesOf(parts))
        painter.drawImage(piece.target, m_picture, piece.source);
}

void ViewCanvas::copyParts(QImage& image, QPoint corner, const QRegion& parts) const
{
    for (const auto& [source, target] : piecesOf(parts)) {
        const QPoint place = corner + target;
        for (int y = 0; y < source.height(); ++y) {
            const auto* from = reinterpret_cast<const QRgb*>(m_picture.constScanLine(source.top() + y));
            auto* to = reinterpret_cast<QRgb*>(image.scanLine(place.y() + y));
            std::memcpy(to + place.x(), from + source.left(), sizeof(QRgb) * source.width());
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
