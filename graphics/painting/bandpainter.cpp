// SPDX-License-Identifier: MIT
#include "graphics/painting/bandpainter.h"

#include "graphics/painting/paintthreads.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace mirn::zelchipview {

namespace {

// After this many rounds the calling thread draws everything, for then the rounds are short, and waking a thread takes
// longer.
constexpr int MostRounds = 50;

// Only of so few glyphs all masks are made beforehand; those of others are made one by one between the rounds.
constexpr int FewGlyphs = 128;

} // namespace

BandPainter::BandPainter(const PaintJob::Sources& sources, const ListPainter::Target& target,
    std::vector<PaintJob::Space>& spaces, int bands)
    : m_sources(sources)
    , m_whole(sources, target, m_wholeSpace)
{
    const QRect all = target.part;
    for (int n = 0; n < bands; ++n) {
        const int top = all.top() + all.height() * n / bands;
        const int end = all.top() + all.height() * (n + 1) / bands;
        ListPainter::Target part = target;
        part.part = QRect(all.left(), top, all.width(), end - top);
        m_bands.emplace_back(sources, part, spaces[static_cast<std::size_t>(n)]);
    }
}

void BandPainter::paint(int threads)
{
    PaintThreads helpers(threads - 1);
    const std::function<void(int)> drawBand = [this](int n) { draw(m_bands[static_cast<std::size_t>(n)]); };
    const auto bands = static_cast<int>(m_bands.size());
    for (int round = 0;; ++round) {
        if (round < MostRounds)
            helpers.run(bands, drawBand);
        else
            std::for_each(m_bands.begin(), m_bands.end(), [this](Band& band) { draw(band); });
        const int place = lowestPlace();
        if (place == PaintJob::End)
            break;
        paintBetween(place);
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

int BandPainter::lowestPlace() const
{
    return std::accumulate(m_bands.begin(), m_bands.end(), PaintJob::End,
        [](int lowest, const Band& band) { return std::min(lowest, band.next); });
}

void BandPainter::paintBetween(int place)
{
    const Primitive& primitive = m_sources.list.primitive(place);
    if (primitive.kind == Primitive::Text && !m_areTextsPrepared) {
        prepareTexts(*primitive.label);
        return; // the bands may be able to draw it now
    }
    m_whole.paint(place);
    for (Band& band : m_bands) {
        if (band.next == place)
            band.job.skip();
    }
}

void BandPainter::prepareTexts(const TextLabel& label)
{
    m_areTextsPrepared = true;
    const int texts = std::accumulate(
        m_bands.begin(), m_bands.end(), 0, [](int sum, const Band& band) { return sum + band.job.textCount(); });
    m_whole.setHasManyTexts(PaintJob::areManyTexts(texts));
    if (!PaintJob::areManyTexts(texts))
        return;
    if (!m_sources.shaper.find(label))
        std::for_each(m_bands.begin(), m_bands.end(), [](Band& band) { band.job.shapeTexts(); });
    if (m_sources.shaper.glyphCount() <= FewGlyphs)
        m_sources.masks.makeAll();
}

} // namespace mirn::zelchipview
