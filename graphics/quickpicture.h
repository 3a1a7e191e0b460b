// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/viewcanvas.h"

#include <QElapsedTimer>
#include <QImage>
#include <QObject>
#include <QRegion>
#include <QTimer>
#include <QTransform>

#include <functional>
#include <memory>
#include <vector>

namespace mirn::zelchipview {

// Returns the time since the clock was started, with a fraction.
[[nodiscard]] double millisecondsOf(const QElapsedTimer& clock);

// What a view shows while its user zooms in a drawing that takes longer to paint than the screen to show the next
// frame: the last exact picture, scaled, and over it as much of the next exact one as is painted. That one comes in
// slices, the middle first, and the user's next event comes between two slices. The view's picture owns it.
class QuickPicture final : public QObject
{
public:
    // What the picture needs of the view that it is for.
    struct Owner
    {
        std::function<bool()> canPaint; // whether there is something to paint
        std::function<ViewCanvas::Scene()> scene; // what to paint now
        std::function<void(const QRegion& part)> update; // repaint this part of the picture; empty for all of it
        std::function<void(std::unique_ptr<ViewCanvas>& next)> finish; // exchange the pictures: `next` is exact
    };

    QuickPicture(DisplayList& list, Owner owner); // the list is not owned

    // See ViewCanvas::setThreads().
    void setThreads(int count) { m_threads = count; }

    // The user has zoomed: the next paint may be approximate.
    void allow() { m_isAllowed = true; }

    // The next paint must be exact.
    void stop();

    // The screen is about to show an exact picture. Returns whether it showed an approximate one.
    bool becomeExact();
    [[nodiscard]] bool isExact() const { return !m_isApproximate; }

    // An exact repaint of everything took this long; `shown` is that picture.
    void noteFullRepaint(double milliseconds, const ViewCanvas& shown);
    void noteCost(double milliseconds, const QTransform& toPicture); // the same of a picture that was not kept

    // Returns the milliseconds that a full repaint will take, judging by the last one; 0 if there was none.
    [[nodiscard]] double expectedCost(const ViewCanvas::Scene& scene) const;

    // Returns whether a full repaint takes longer than the screen shows a picture.
    [[nodiscard]] bool isSlow() const;

    // Returns whether to approximate `scene`, where `shown` is the last exact picture.
    [[nodiscard]] bool isWorthwhile(const ViewCanvas& shown, const ViewCanvas::Scene& scene) const;

    // Returns an exact picture of `scene` that may be exchanged for the one that is shown, if there is one: that from
    // before the last zoom, after which the user has zoomed back. Else null.
    [[nodiscard]] std::unique_ptr<ViewCanvas>* readyFor(const ViewCanvas::Scene& scene);

    // Draws the approximate picture, and begins or continues to paint the exact one. A unit of the painter is a pixel
    // of the picture.
    void draw(QPainter& painter, const ViewCanvas& shown, const ViewCanvas::Scene& scene);

    // Elements look different now: all, or those at these places of the display list.
    void invalidate();
    void invalidate(const std::vector<int>& places);

private:
    [[nodiscard]] bool isActive() const { return m_timer.isActive(); }
    void pause();
    void paintSlice();
    [[nodiscard]] int sliceHeight(const ViewCanvas::Scene& scene) const;
    void showFinished();
    void keepCoarse(const ViewCanvas& shown);

    DisplayList& m_list;
    const Owner m_owner;
    QTimer m_timer; // runs while slices are left
    std::unique_ptr<ViewCanvas> m_next;
    int m_threads = 1;
    bool m_isAllowed = false;
    bool m_isApproximate = false; // what the screen shows
    bool m_isNew = false; // all of the picture under way has to be painted
    double m_spent = 0; // milliseconds on its slices
    QRegion m_onScreen; // what of it is shown
    QElapsedTimer m_sinceShown;
    double m_cost = 0; // milliseconds of the last full repaint
    double m_costScale = 1; // pixels per scene unit of that picture
    QImage m_coarse; // the picture that showed most of the drawing, in half its size
    QTransform m_coarseToPicture;
    unsigned m_coarseVersion = 0; // of the display list
};

} // namespace mirn::zelchipview
