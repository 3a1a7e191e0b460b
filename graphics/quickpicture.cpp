// SPDX-License-Identifier: MIT
#include "graphics/quickpicture.h"

#include <QElapsedTimer>
#include <QPainter>

#include <cmath>
#include <utility>

namespace mirn::zelchipview {

namespace {

constexpr double LongestExactFrame = 10; // milliseconds; what is painted faster is painted exactly at once
constexpr double Frame = 1000.0 / 60; // milliseconds that the screen shows a picture
constexpr int SliceTime = 10; // milliseconds, after which events are looked at
constexpr int TimeBetweenParts = 60; // milliseconds, after which what is finished is shown
constexpr int LeastSliceHeight = 64; // pixels; enough for two threads
constexpr int MostSliceHeight = 256; // because the cost may lie in a few rows
constexpr int CoarseDivisor = 2;
constexpr double Less = 0.95; // the share of a scale that is less than it

double scaleOf(const QTransform& transform)
{
    return std::hypot(transform.m11(), transform.m12());
}

} // namespace

double millisecondsOf(const QElapsedTimer& clock)
{
    constexpr double NanosecondsPerMillisecond = 1e6;
    return static_cast<double>(clock.nsecsElapsed()) / NanosecondsPerMillisecond;
}

QuickPicture::QuickPicture(DisplayList& list, Owner owner)
    : m_list(list)
    , m_owner(std::move(owner))
{
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, &QuickPicture::paintSlice);
}

void QuickPicture::stop()
{
    m_isAllowed = false;
    pause();
    if (m_isApproximate)
        m_owner.update({});
}

bool QuickPicture::becomeExact()
{
    m_isAllowed = false;
    pause();
    return std::exchange(m_isApproximate, false);
}

void QuickPicture::pause()
{
    m_timer.stop();
    if (m_next)
        m_next->pause();
}

void QuickPicture::noteFullRepaint(double milliseconds, const ViewCanvas& shown)
{
    noteCost(milliseconds, shown.toPicture());
    keepCoarse(shown);
}

void QuickPicture::noteCost(double milliseconds, const QTransform& toPicture)
{
    m_cost = milliseconds;
    m_costScale = scaleOf(toPicture);
}

bool QuickPicture::isSlow() const
{
    return m_cost > Frame;
}

// Only a picture that shows clearly more of the drawing replaces the one that there is, because the copy takes time.
void QuickPicture::keepCoarse(const ViewCanvas& shown)
{
    const bool isNewer = m_coarse.isNull() || m_coarseVersion != shown.listVersion();
    if (!isNewer && scaleOf(shown.toPicture()) > Less * scaleOf(m_coarseToPicture))
        return;
    m_coarse = shown.reduced(CoarseDivisor);
    m_coarseToPicture = shown.toPicture();
    m_coarseVersion = shown.listVersion();
}

// The time grows with the part of the drawing that is seen.
double QuickPicture::expectedCost(const ViewCanvas::Scene& scene) const
{
    const double growth = m_costScale / scaleOf(scene.toPicture);
    return m_cost * growth * growth;
}

// A picture that misses a change of state is not shown again.
bool QuickPicture::isWorthwhile(const ViewCanvas& shown, const ViewCanvas::Scene& scene) const
{
    return (m_isAllowed || isActive()) && expectedCost(scene) > LongestExactFrame && shown.needsAll(scene)
        && shown.isFinished() && shown.listVersion() == scene.listVersion;
}

std::unique_ptr<ViewCanvas>* QuickPicture::readyFor(const ViewCanvas::Scene& scene)
{
    return m_next && m_next->isFinished() && m_next->hasBegun(scene) ? &m_next : nullptr;
}

void QuickPicture::draw(QPainter& painter, const ViewCanvas& shown, const ViewCanvas::Scene& scene)
{
    if (!m_next)
        m_next = std::make_unique<ViewCanvas>(m_list, shown.memory());
    m_next->setThreads(m_threads);
    painter.fillRect(QRect(QPoint(), scene.size), scene.background);
    if (m_coarseVersion == scene.listVersion && scaleOf(scene.toPicture) < scaleOf(shown.toPicture())) {
        painter.save();
        painter.setTransform(
            QTransform::fromScale(CoarseDivisor, CoarseDivisor) * m_coarseToPicture.inverted() * scene.toPicture, true);
        painter.drawImage(QPoint(), m_coarse);
        painter.restore();
    }
    painter.save();
    painter.setTransform(shown.toPicture().inverted() * scene.toPicture, true);
    shown.drawOn(painter, QPointF(), 1.0);
    painter.restore();
    if (isActive() && m_next->hasBegun(scene))
        m_next->drawParts(painter, m_next->finished());
    else
        m_isNew = false;
    m_isAllowed = false;
    m_isApproximate = true;
    m_timer.start();
}

void QuickPicture::paintSlice()
{
    if (!m_owner.canPaint()) {
        pause();
        return;
    }
    QElapsedTimer clock;
    clock.start();
    const ViewCanvas::Scene scene = m_owner.scene();
    if (!m_next->hasBegun(scene)) {
        m_isNew = true;
        m_spent = 0;
        m_onScreen = QRegion();
        m_sinceShown.start();
    }
    // One part takes about SliceTime, so a second one is begun only after a short one.
    const ViewCanvas::Work work = m_next->updateSome(
        scene, QDeadlineTimer(SliceTime / 2), {sliceHeight(scene), ViewCanvas::Order::MiddleFirst});
    m_spent += millisecondsOf(clock);
    if (work == ViewCanvas::Work::Left) {
        showFinished();
        return;
    }
    m_timer.stop();
    if (m_isNew)
        noteFullRepaint(m_spent, *m_next);
    m_owner.finish(m_next);
}

// A part of the picture that takes about SliceTime: the higher it is, the more evenly the threads share the work.
int QuickPicture::sliceHeight(const ViewCanvas::Scene& scene) const
{
    const double share = std::min(SliceTime / std::max(expectedCost(scene), 1.0), 1.0);
    return std::clamp(static_cast<int>(scene.size.height() * share), LeastSliceHeight, MostSliceHeight);
}

// Showing a part takes time, by which the exact picture comes later.
void QuickPicture::showFinished()
{
    if (m_sinceShown.elapsed() < TimeBetweenParts)
        return;
    const QRegion finished = m_next->finished();
    m_owner.update(finished - m_onScreen);
    m_onScreen = finished;
    m_sinceShown.start();
}

void QuickPicture::invalidate()
{
    stop();
    if (m_next)
        m_next->invalidate();
}

void QuickPicture::invalidate(const std::vector<int>& places)
{
    stop();
    if (m_next)
        m_next->invalidate(places);
}

} // namespace mirn::zelchipview
