// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/paintjob.h"

#include <deque>
#include <vector>

namespace mirn::zelchipview {

class PaintThreads;

// Paints a part of an image in horizontal bands, by several threads. They draw pixels in rounds: each band as far as
// its next primitive that needs QPainter or a font. Between two rounds the calling thread alone paints those of them
// that no other band has yet to reach. So every pixel gets its primitives in paint order, as one thread would draw
// them.
class BandPainter final
{
public:
    // Nothing is owned. `spaces` has at least as many as there are bands.
    BandPainter(
        const PaintJob::Sources& sources, const PaintTarget& target, std::vector<PaintJob::Space>& spaces, int bands);

    void paint(PaintThreads& threads);

private:
    struct Band
    {
        Band(const PaintJob::Sources& sources, const PaintTarget& target, PaintJob::Space& space)
            : job(sources, target, space)
        { }

        PaintJob job;
        bool isFound = false;
        int next = 0; // the place where it stopped
    };

    void draw(Band& band);
    [[nodiscard]] int unfinishedBands() const;
    void paintBetween();
    [[nodiscard]] bool isNextEverywhere(int place) const;
    [[nodiscard]] bool prepareTexts();

    const PaintJob::Sources m_sources;
    std::deque<Band> m_bands;
    PaintJob::Space m_wholeSpace;
    PaintJob m_whole; // of all bands
    bool m_areTextsPrepared = false;
};

} // namespace mirn::zelchipview
