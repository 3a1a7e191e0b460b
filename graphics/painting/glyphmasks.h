// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/textshaper.h"

#include <QRgb>

#include <cstdint>
#include <vector>

namespace mirn::zelchipview {

class Rasteriser;

// What the glyphs of a drawing cover at one scale: each glyph is drawn once by QPainter for each of the four places
// within a pixel that it distinguishes, and then only blended.
class GlyphMasks final
{
public:
    // Labels with more pixels per line than this are QPainter's: it draws large text as outlines.
    static constexpr double LargestSize = 48.0;

    explicit GlyphMasks(TextShaper& shaper); // not owned; must outlive this object

    // Forgets all masks; for when the shaper's glyphs are others.
    void clear();

    // Forgets the masks of another scale. `scale` is the number of image pixels per pixel of the unscaled font.
    void setScale(double scale);

    // Whether a label can be drawn there without drawing a glyph by QPainter before.
    [[nodiscard]] bool isReadyFor(const TextLabel& label, double x, double y) const;

    // Draws a label with the start of its base line at (x, y), in pixels of the image. Draws nothing and returns false
    // for one that is not of usual glyphs: it is QPainter's.
    [[nodiscard]] bool draw(const TextLabel& label, double x, double y, QRgb color, Rasteriser& rasteriser);

private:
    static constexpr int Phases = 4; // within a pixel, from left to right

    struct Mask
    {
        bool isMade = false;
        std::int16_t left = 0; // from the pixel of the glyph's origin
        std::int16_t top = 0;
        std::int16_t width = 0;
        std::int16_t height = 0;
        std::size_t coverage = 0; // index of its first byte
    };

    [[nodiscard]] const Mask& mask(int glyph, int phase);
    void make(Mask& mask, int glyph, int phase);

    TextShaper& m_shaper;
    double m_scale = 0.0;
    std::vector<Mask> m_masks; // Phases for each glyph
    std::vector<std::uint8_t> m_coverage; // of all masks
};

} // namespace mirn::zelchipview
