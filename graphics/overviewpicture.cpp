// SPDX-License-Identifier: MIT
#include "graphics/overviewpicture.h"

#include "graphics/elements/layervisibility.h"
#include "graphics/sceneelements.h"
#include "graphics/viewpicture.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"

#include <algorithm>
#include <utility>

namespace mirn::zelchipview {

namespace {

constexpr double SmallestReadableText = 6; // pixels

} // namespace

OverviewPicture::OverviewPicture(ZelGraphicsView& view, std::function<void()> outdated)
    : m_view(view)
    , m_scene(qobject_cast<ZelGraphicsScene*>(view.scene()))
    , m_outdated(std::move(outdated))
{
    if (m_scene)
        m_scene->elements().addPicture(&m_view, this);
}

OverviewPicture::~OverviewPicture()
{
    if (m_scene)
        m_scene->elements().removePicture(this);
}

bool OverviewPicture::hasDrawing() const
{
    return m_scene && !area().isEmpty();
}

QRectF OverviewPicture::area() const
{
    return m_view.sceneRect();
}

QRectF OverviewPicture::shownArea() const
{
    return m_view.viewportTransform().inverted().mapRect(QRectF(m_view.viewport()->rect()));
}

double OverviewPicture::magnification() const
{
    const QRectF shown = shownArea();
    return shown.isEmpty() ? 0.0 : std::max(area().width() / shown.width(), area().height() / shown.height());
}

// Fitting the drawing in takes the same number of steps whatever the view shows now.
QList<int> OverviewPicture::layersAtFit() const
{
    const zel_Parameter& parameter = m_scene->globalParameter();
    const double fit = m_view.transform().m11() / magnification();
    return visibleLayersAt(parameter.layerRanges, wholeZoomSteps(fit, parameter.scaleStep) * parameter.scaleStep + 1.0);
}

ViewCanvas::Work OverviewPicture::update(QSize size, const QDeadlineTimer& deadline)
{
    if (!m_pictures)
        m_pictures = std::make_unique<StatePictures>(m_scene->elements());
    m_layers = layersAtFit();
    ViewCanvas::Scene scene = canvasScene(m_view, *m_scene);
    const QRectF all = area();
    const double scale = std::min(size.width() / all.width(), size.height() / all.height());
    scene.toPicture = QTransform(scale, 0, 0, scale, -all.left() * scale, -all.top() * scale);
    scene.size = size;
    scene.layers = m_layers;
    if (scene.backgroundBrush.style() == Qt::SolidPattern)
        scene.background = scene.backgroundBrush.color();
    scene.smallestText = SmallestReadableText;
    m_pictures->shown().setThreads(m_view.paintThreads());
    const ViewCanvas::Work work = m_pictures->updateSome(scene, deadline);
    m_pictures->shown().pause(); // nobody may ask for the rest
    return work;
}

void OverviewPicture::drawOn(QPainter& painter, const QPointF& position, qreal ratio) const
{
    if (m_pictures)
        m_pictures->shown().drawOn(painter, position, ratio);
}

void OverviewPicture::repaintPlaces(const std::vector<int>& places)
{
    invalidateElements(places);
    m_outdated();
}

void OverviewPicture::repaintAll()
{
    forgetAll();
}

void OverviewPicture::repaintStates()
{
    if (m_pictures)
        m_pictures->invalidateStates();
    m_outdated();
}

void OverviewPicture::invalidateElements(const std::vector<int>& places)
{
    if (m_pictures)
        m_pictures->invalidate(places);
}

// The owner does not see when the view has Qt paint an item.
void OverviewPicture::forgetAll()
{
    if (m_pictures)
        m_pictures->invalidate();
    m_outdated();
}

} // namespace mirn::zelchipview
