// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/raster/coveragemask.h"

#include <QImage>
#include <QLineF>
#include <QPointF>
#include <QRect>
#include <QRectF>

#include <cstdint>

namespace mirn::zelchipview {

// Draws the shapes that a chip drawing mostly consists of into the pixels of an image, many times faster than a general
// painter and with the same result, pixel for pixel, as QPainter with antialiasing on an image of Format_RGB32.
//
// Shapes come in scene coordinates and are scaled evenly and moved, but not rotated. Pixel (0, 0) of the image covers
// the square from (0, 0) to (1, 1). Colours are opaque.
class Rasteriser final
{
public:
    // Shapes that reach further than this, in image pixels, are left to QPainter: the fixed-point numbers here would
    // overflow.
    static constexpr double Farthest = 16000.0;
    [[nodiscard]] static bool isNear(double pixels) { return pixels > -Farthest && pixels < Farthest; }

    // Whether rects may reach beyond the left and the right border of the image. Qt 5 rounds differently there.
    static constexpr bool DrawsCutRects = QT_VERSION >= QT_VERSION_CHECK(6, 0, 0);

    // Maps scene coordinates to pixels: times `scale` (> 0), plus the offset.
    struct Mapping
    {
        double scale;
        double dx;
        double dy;

        [[nodiscard]] double x(double sceneX) const { return scale * sceneX + dx; }
        [[nodiscard]] double y(double sceneY) const { return scale * sceneY + dy; }
    };

    // The instructions to use: those that every processor has, those of many, or the best that this one has. The result
    // is the same.
    enum class Instructions { Basic, Avx2, Fastest };

    // Draws only into `clip`, a part of the image. The image must be of Format_RGB32, outlive the rasteriser and not be
    // copied meanwhile.
    Rasteriser(
        QImage& image, const QRect& clip, const Mapping& mapping, Instructions instructions = Instructions::Fastest);

    // Fills a rect and draws a line one pixel wide around it. `opacity` (0 to 256) thins a pen that is narrower than a
    // pixel; there is no line if it is 0. The sides of the rect may have any length >= 0. Unless DrawsCutRects is true,
    // the rect must not reach beyond the left or right border of the image.
    void drawRect(const QRectF& rect, QRgb fill, QRgb border, int opacity);

    // Draws a line one pixel wide that reaches half a pixel beyond both ends.
    void drawLine(const QLineF& line, QRgb color, int opacity);

    // Draws a line one pixel wide around a polygon.
    void strokePolygon(const QPointF* corners, int count, QRgb color, int opacity);

    // These blend a mask, which may reach beyond the image.
    void drawMask(const CoverageMask& mask, QRgb color);
    void drawStretchedMask(const StretchedMask& mask, QRgb color);

private:
    struct Stroke; // a thin line's colour and opacity
    struct Extent;
    struct Sides;
    struct Area
    {
        double left;
        double top;
        double right;
        double bottom;
    };
    struct Avx2Fills; // the drawing code compiled for newer processors
    struct Avx2Lines;
    struct Avx2SmallRects;
    struct Avx512Fills;
    struct Avx512Rects;

    [[nodiscard]] bool isTiny(const QRectF& rect, bool hasLine) const;
    [[nodiscard]] bool findCovered(const QRectF& rect, Area& covered) const;
    [[nodiscard]] Sides lineAround(const QRectF& rect) const;
    void fillRect(const QRectF& rect, QRgb color);
    void strokeRect(const QRectF& rect, QRgb color, int opacity);
    template <bool isAvx2> void fillAnyRect(const QRectF& rect, QRgb color);
    template <bool isAvx2> void strokeAnyRect(const QRectF& rect, QRgb color, int opacity);
    void drawAnyLine(const QLineF& line, QRgb color, int opacity);
    void strokeAnyPolygon(const QPointF* corners, int count, QRgb color, int opacity);
    void drawAnyMask(const CoverageMask& mask, QRgb color);
    void drawAnyStretched(const StretchedMask& mask, QRgb color);
    enum class Ends { Flat, Square };
    [[nodiscard]] bool cutOff(QPointF& a, QPointF& b) const;
    void thinLine(QPointF a, QPointF b, const Stroke& stroke, Ends ends);
    [[nodiscard]] bool isWithinClip(int left, int top, int right, int bottom) const;
    void fillLargeRect(const Extent& across, const Extent& down, QRgb color);
    void fillSmallRect(const Extent& across, const Extent& down, QRgb color);
    void strokeAcross(int left, int right, int middle, const Stroke& stroke);
    void strokeDown(int top, int bottom, int middle, const Stroke& stroke);
    template <bool isAvx2> void strokeSmallRect(int left, int top, int right, int bottom, const Stroke& stroke);
    template <bool isSteep> void straightLine(int start, int end, int across, const Stroke& stroke);
    template <bool isSteep> void scan(int start, int end, int across, int slope, const Stroke& stroke);
    template <bool isSteep> void step(int along, int across, int weight, const Stroke& stroke);
    void blendFew(int x, int top, int bottom, QRgb color, const std::uint8_t* covered);
    void blend(int x, int y, QRgb color, unsigned coverage);
    void blendRow(int left, int right, int y, QRgb color, unsigned coverage);
    void blendColumn(int x, int top, int bottom, QRgb color, unsigned coverage);
    [[nodiscard]] std::uint32_t* row(int y) const;

    const bool m_hasAvx2;
    const bool m_hasAvx512;
    unsigned char* const m_bits;
    const qsizetype m_bytesPerLine;
    const QSize m_size;
    const QRect m_clip;
    const Area m_clipArea; // the clip's outline
    const Mapping m_mapping;
    const double m_pixel; // in scene units
};

} // namespace mirn::zelchipview
