// SPDX-License-Identifier: MIT
#include "graphics/painting/listpainter.h"

#include "graphics/elements/enlarged.h"
#include "graphics/painting/bandpainter.h"
#include "graphics/painting/paintjob.h"
#include "graphics/painting/paintthreads.h"
#include "graphics/painting/text/glyphmasks.h"

#include <algorithm>
#include <utility>

namespace mirn::zelchipview {

namespace {

// Fewer elements are painted before another thread has begun.
constexpr double FewElements = 5000;

constexpr int BandsPerThread = 4; // one may hold more than another, or has to wait
constexpr int LeastBandHeight = 16; // pixels

} // namespace

struct ListPainter::Memory
{
    explicit Memory(const TextLabels& labels) // not owned
        : shaper(labels)
        , masks(shaper)
    { }

    TextShaper shaper;
    GlyphMasks masks;
    std::vector<PaintJob::Space> spaces; // of each band
};

ListPainter::ListPainter(DisplayList& list, std::shared_ptr<Memory> memory)
    : m_list(list)
    , m_memory(memory ? std::move(memory) : std::make_shared<Memory>(list.labels()))
{ }

ListPainter::~ListPainter() = default;

void ListPainter::setThreads(int count)
{
    if (count != m_threads)
        m_helpers.reset();
    m_threads = count;
}

void ListPainter::keepThreads(bool isOn)
{
    m_keepsThreads = isOn;
    if (!isOn)
        m_helpers.reset();
}

void ListPainter::paint(const Target& target, const QList<int>& layers, const States& states)
{
    if (m_memory->shaper.setViewFont(target.viewFont))
        m_memory->masks.clear();
    m_memory->masks.setScale(target.sceneToImage.m11() * paintrules::TextItemScale);
    std::vector<char> isShown;
    for (int layer : m_list.layers())
        isShown.push_back(layers.contains(layer));
    const PaintJob::Sources sources{m_list, m_memory->shaper, m_memory->masks, states, isShown};
    const int bands = bandsFor(target);
    m_memory->spaces.resize(std::max(m_memory->spaces.size(), static_cast<std::size_t>(bands)));
    if (bands > 1) {
        if (!m_helpers)
            m_helpers = std::make_unique<PaintThreads>(m_threads - 1);
        BandPainter(sources, target, m_memory->spaces, bands).paint(*m_helpers);
        keepThreads(m_keepsThreads);
        return;
    }
    PaintJob job(sources, target, m_memory->spaces.front());
    job.find();
    job.paint();
}

int ListPainter::bandsFor(const Target& target) const
{
    if (m_threads < 2 || m_list.estimate(sceneArea(target.sceneToImage, target.part)) < FewElements)
        return 1;
    return std::clamp(target.part.height() / LeastBandHeight, 1, BandsPerThread * m_threads);
}

void ListPainter::visitTouching(const QTransform& sceneToImage, const std::vector<QRect>& strips,
    const QList<int>& layers, const TouchFilter& filter, const TouchVisitor& visitor)
{
    for (const QRect& strip : strips) {
        const QRectF area = sceneArea(sceneToImage, strip);
        for (int place : m_list.placesIn(area)) {
            const Primitive& primitive = m_list.primitive(place);
            if (!filter(primitive))
                continue;
            const QRectF bounds = m_list.boundsOf(place);
            if (touches(bounds, area) && layers.contains(m_list.layers()[primitive.layer]))
                visitor(primitive, enlarged(sceneToImage.mapRect(bounds), PenMargin), strip);
        }
    }
}

} // namespace mirn::zelchipview
