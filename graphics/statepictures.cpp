// SPDX-License-Identifier: MIT
#include "graphics/statepictures.h"

#include "graphics/sceneelements.h"

#include <utility>

namespace mirn::zelchipview {

namespace {

// Finding the places of more elements takes longer than painting everything.
constexpr std::size_t MostDifferences = 20000;

const ElementIdSet& filteredOf(const PaintStates& states)
{
    static const ElementIdSet none;
    return states.filtered ? *states.filtered : none;
}

} // namespace

StatePictures::StatePictures(SceneElements& elements)
    : m_elements(elements)
{
    m_shown.canvas = std::make_unique<ViewCanvas>(m_elements.displayList());
}

void StatePictures::Picture::take(const PaintStates& states)
{
    selected = *states.selected;
    highlighted = *states.highlighted;
    filtered = filteredOf(states);
    repainted.clear();
    areStatesKnown = true;
}

std::size_t StatePictures::Picture::stateCount() const
{
    return selected.size() + highlighted.size() + filtered.size();
}

void StatePictures::exchange(std::unique_ptr<ViewCanvas>& next, const PaintStates& states)
{
    m_shown.canvas.swap(next);
    m_shown.take(states);
}

void StatePictures::invalidate()
{
    m_shown.canvas->invalidate();
    m_other = Picture();
}

void StatePictures::invalidate(const std::vector<int>& places)
{
    for (Picture* picture : {&m_shown, &m_other}) {
        if (!picture->canvas)
            continue;
        picture->canvas->invalidate(places);
        picture->repainted.insert(picture->repainted.end(), places.begin(), places.end());
        if (picture->repainted.size() > MostDifferences) {
            picture->repainted.clear();
            picture->areStatesKnown = false;
        }
    }
}

void StatePictures::takeOverStates(const ViewCanvas::Scene& scene)
{
    if (!std::exchange(m_areStatesOld, false))
        return;
    std::optional<std::vector<int>> changed = differences(m_shown, scene);
    std::optional<std::vector<int>> others = differences(m_other, scene);
    if (others && (!changed || others->size() < changed->size())) {
        std::swap(m_shown, m_other);
        changed.swap(others);
    }
    if (!changed) {
        setAside(scene);
        m_shown.canvas->invalidate();
        return;
    }
    m_shown.canvas->invalidate(*changed);
    m_shown.take(scene.states);
}

std::optional<std::vector<int>> StatePictures::differences(const Picture& picture, const ViewCanvas::Scene& scene) const
{
    if (!picture.canvas || !picture.areStatesKnown || picture.canvas->needsAll(scene))
        return std::nullopt;
    std::vector<int> ids;
    if (!picture.selected.findDifferences(*scene.states.selected, MostDifferences, ids)
        || !picture.highlighted.findDifferences(*scene.states.highlighted, MostDifferences, ids)
        || !picture.filtered.findDifferences(filteredOf(scene.states), MostDifferences, ids))
        return std::nullopt;
    std::vector<int> places = m_elements.placesOf(ids);
    places.insert(places.end(), picture.repainted.begin(), picture.repainted.end());
    return places;
}

// Keeps what is shown for a later time, unless a picture of fewer states is kept already: most go back to none.
void StatePictures::setAside(const ViewCanvas::Scene& scene)
{
    const auto isUsable = [&scene](const Picture& picture) {
        return picture.canvas && picture.areStatesKnown && !picture.canvas->needsAll(scene);
    };
    if (!isUsable(m_shown) || (isUsable(m_other) && m_other.stateCount() <= m_shown.stateCount()))
        return;
    std::swap(m_shown, m_other);
    if (!m_shown.canvas)
        m_shown.canvas = std::make_unique<ViewCanvas>(m_elements.displayList(), m_other.canvas->memory());
}

bool StatePictures::update(const ViewCanvas::Scene& scene)
{
    const bool isAll = m_shown.canvas->needsAll(scene);
    if (isAll)
        m_shown.take(scene.states);
    m_shown.canvas->update(scene);
    if (isAll)
        dropUseless(scene);
    return isAll;
}

// A picture takes much memory.
void StatePictures::dropUseless(const ViewCanvas::Scene& scene)
{
    if (m_other.canvas && m_other.canvas->needsAll(scene))
        m_other = Picture();
}

void StatePictures::paintInto(QImage& image, const ViewCanvas::Scene& scene)
{
    m_shown.canvas->paintInto(image, scene);
    dropUseless(scene);
}

ViewCanvas::Work StatePictures::updateSome(const ViewCanvas::Scene& scene, const QDeadlineTimer& deadline)
{
    takeOverStates(scene);
    if (!m_shown.canvas->hasBegun(scene))
        m_shown.take(scene.states); // what changes from now on is invalidated
    return m_shown.canvas->updateSome(scene, deadline);
}

} // namespace mirn::zelchipview
