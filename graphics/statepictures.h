// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/elementidset.h"
#include "graphics/painting/viewcanvas.h"

#include <memory>
#include <optional>
#include <vector>

namespace mirn::zelchipview {

class SceneElements;

// The picture that a view shows, and another one of the same part of the drawing from before many elements changed
// their states at once. When they change back, as after a band over everything, that one is shown again, and only what
// still differs is painted. The pictures of the view and of the overview are kept in it.
class StatePictures final
{
public:
    explicit StatePictures(SceneElements& elements); // not owned

    // Returns the picture that is shown, which another may take the place of at each of the following calls.
    [[nodiscard]] ViewCanvas& shown() { return *m_shown.canvas; }

    // Replaces what is shown by a picture that is up to date; `next` receives the old one.
    void exchange(std::unique_ptr<ViewCanvas>& next, const PaintStates& states);

    // All, or what was painted for these places, is out of date.
    void invalidate();
    void invalidate(const std::vector<int>& places);

    // Any number of elements may have other states. What that makes out of date, takeOverStates() finds out; it has to
    // be called before anything else is done with the picture that is shown.
    void invalidateStates() { m_areStatesOld = true; }
    void takeOverStates(const ViewCanvas::Scene& scene);

    // Brings the shown picture up to date. Returns whether all of it had to be painted.
    bool update(const ViewCanvas::Scene& scene);

    // Paints the scene into an image of its size. What is shown is out of date then.
    void paintInto(QImage& image, const ViewCanvas::Scene& scene);

    // Does a part of that, and takes over the states before.
    [[nodiscard]] ViewCanvas::Work updateSome(const ViewCanvas::Scene& scene, const QDeadlineTimer& deadline);

private:
    struct Picture
    {
        std::unique_ptr<ViewCanvas> canvas;
        bool areStatesKnown = false;
        ElementIdSet selected; // the states that it was painted with, but for the repainted places
        ElementIdSet highlighted;
        ElementIdSet filtered;
        std::vector<int> repainted;

        void take(const PaintStates& states);
        [[nodiscard]] std::size_t stateCount() const;
    };

    // The places that a picture shows in other states, or nothing if there are too many, or it shows something else.
    [[nodiscard]] std::optional<std::vector<int>> differences(
        const Picture& picture, const ViewCanvas::Scene& scene) const;
    void setAside(const ViewCanvas::Scene& scene);
    void dropUseless(const ViewCanvas::Scene& scene);

    SceneElements& m_elements;
    Picture m_shown;
    Picture m_other;
    bool m_areStatesOld = false;
};

} // namespace mirn::zelchipview
