// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/text/textshaper.h"

#include <QPoint>
#include <QRect>
#include <QRgb>

#include <cstdint>
#include <vector>

class QImage;

namespace mirn::zelchipview {

class Rasteriser;

// A cache of the glyphs of a drawing at one scale. QPainter draws each glyph once for each of the four horizontal
// positions within a pixel that it distinguishes; from then on its coverage mask is only blended. The list painter owns
// the cache.
class GlyphMasks final
{
public:
    // Labels with a larger font than this, in image pixels, are left to QPainter, which draws large text as outlines.
    static constexpr double LargestSize = 48.0;

    explicit GlyphMasks(TextShaper& shaper); // not owned; must outlive this object

    // Discards all masks. Must be called when the shaper has discarded its glyphs.
    void clear();

    // `scale` is the number of image pixels per pixel of the unscaled font. A new scale discards all masks.
    void setScale(double scale);

    // Returns whether a label can be drawn at (x, y), in image pixels, from masks that exist.
    [[nodiscard]] bool isReadyFor(const TextLabel& label, double x, double y) const;

    // Draws a label with the start of its base line at (x, y), in image pixels. Returns false and draws nothing if the
    // label has unusual glyphs, which are left to QPainter; see hasUsualGlyphs().
    [[nodiscard]] bool draw(const TextLabel& label, double x, double y, QRgb color, Rasteriser& rasteriser);

    // Does the same from masks that exist; returns false and draws nothing if one does not. Several threads may do so
    // at the same time.
    [[nodiscard]] bool drawReady(const TextLabel& label, double x, double y, QRgb color, Rasteriser& rasteriser) const;

    // Makes all masks of the glyphs that have been shaped.
    void makeAll();

private:
    static constexpr int Phases = 4; // horizontal positions within a pixel, from left to right

    struct Mask
    {
        bool isMade = false;
        std::int16_t left = 0; // relative to the pixel of the glyph's origin
        std::int16_t top = 0;
        std::int16_t width = 0;
        std::int16_t height = 0;
        std::size_t coverage = 0; // index of its first byte in m_coverage
    };

    [[nodiscard]] const Mask& mask(int glyph, int phase);
    void draw(const Mask& mask, int column, int row, QRgb color, Rasteriser& rasteriser) const;
    void make(int glyph);
    void take(Mask& mask, const QImage& image, const QRect& part, QPoint origin);

    TextShaper& m_shaper;
    double m_scale = 0.0;
    std::vector<Mask> m_masks; // `Phases` masks for each glyph
    std::vector<std::uint8_t> m_coverage; // the bytes of all masks
};

} // namespace mirn::zelchipview
