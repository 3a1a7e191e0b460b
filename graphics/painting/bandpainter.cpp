// SPDX-License-Identifier: MIT
#include "graphics/painting/bandpainter.h"

#include "graphics/painting/paintthreads.h"

#include <algorithm>
#include <functional>
#include <set>

namespace mirn::zelchipview {

namespace {

// After this many rounds the calling thread draws everything, for then the rounds are short, and waking a thread takes
// longer.
constexpr int MostRounds = 50;

// Only of so few glyphs all masks are made beforehand; those of others are made one by one between the rounds.
constexpr int FewGlyphs = 128;

} // namespace

BandPainter::BandPainter(
    const PaintJob::Sources& sources, const PaintTarget& target, std::vector<PaintJob::Space>& spaces, int bands)
    : m_sources(sources)
    , m_whole(sources, target, m_wholeSpace)
{
    const QRect all = target.part;
    for (int n = 0; n < bands; ++n) {
        const int top = all.top() + all.height() * n / bands;
        const int end = all.top() + all.height() * (n + 1) / bands;
        PaintTarget part = target;
        part.part = QRect(all.left(), top, all.width(), end - top);
        m_bands.emplace_back(sources, part, spaces[static_cast<std::size_t>(n)]);
    }
}

void BandPainter::paint(PaintThreads& threads)
{
    const std::function<void(int)> drawBand = [this](int n) { draw(m_bands[static_cast<std::size_t>(n)]); };
    for (int round = 0; unfinishedBands() > 0; ++round) {
        if (round < MostRounds && unfinishedBands() > 1)
            threads.run(static_cast<int>(m_bands.size()), drawBand);
        else
            std::for_each(m_bands.begin(), m_bands.end(), [this](Band& band) { draw(band); });
        paintBetween();
    }
}

void BandPainter::draw(Band& band)
{
    if (!band.isFound)
        band.job.find();
    band.isFound = true;
    if (band.next != PaintJob::End)
        band.next = band.job.drawPixels();
}

int BandPainter::unfinishedBands() const
{
    return static_cast<int>(
        std::count_if(m_bands.begin(), m_bands.end(), [](const Band& band) { return band.next != PaintJob::End; }));
}

void BandPainter::paintBetween()
{
    if (!m_areTextsPrepared && prepareTexts())
        return; // the bands may be able to draw them now
    std::set<int> places;
    for (const Band& band : m_bands)
        places.insert(band.next);
    places.erase(PaintJob::End);
    for (int place : places) {
        if (!isNextEverywhere(place))
            continue;
        m_whole.paint(place);
        for (Band& band : m_bands) {
            if (band.next == place)
                band.job.skip();
        }
    }
}

// Whether all bands that a primitive touches have drawn what lies below it.
bool BandPainter::isNextEverywhere(int place) const
{
    return std::all_of(m_bands.begin(), m_bands.end(),
        [place](const Band& band) { return band.next >= place || !band.job.isTouched(place); });
}

// Returns whether a band has stopped at a text. Then all texts are prepared, if there are many.
bool BandPainter::prepareTexts()
{
    const auto isAtText = [this](const Band& band) {
        return band.next != PaintJob::End && m_sources.list.primitive(band.next).kind == Primitive::Text;
    };
    const auto isAtUnshaped = [&](const Band& band) {
        return isAtText(band) && !m_sources.shaper.find(*m_sources.list.primitive(band.next).label);
    };
    if (std::none_of(m_bands.begin(), m_bands.end(), isAtText))
        return false;
    m_areTextsPrepared = true;
    if (std::none_of(m_bands.begin(), m_bands.end(), [](const Band& band) { return band.job.hasManyTexts(); }))
        return true;
    m_whole.setHasManyTexts();
    if (std::any_of(m_bands.begin(), m_bands.end(), isAtUnshaped))
        std::for_each(m_bands.begin(), m_bands.end(), [](Band& band) { band.job.shapeTexts(); });
    if (m_sources.shaper.glyphCount() <= FewGlyphs)
        m_sources.masks.makeAll();
    return true;
}

} // namespace mirn::zelchipview
