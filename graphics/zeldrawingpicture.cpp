// SPDX-License-Identifier: MIT
#include "graphics/zeldrawingpicture.h"

#include "graphics/elements/enlarged.h"
#include "graphics/elements/layervisibility.h"
#include "graphics/painting/vectorpainter.h"
#include "graphics/sceneelements.h"
#include "graphics/viewpicture.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "graphics/zelviewlayer.h"

#include <QPainter>
#include <QPointer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace mirn::zelchipview {

namespace {

constexpr double FitMargin = 2; // pixels that QGraphicsView::fitInView() leaves free on each side

// Where a QGraphicsView puts the middle of a scene that needs no scroll bar: on whole pixels.
double shiftTo(double viewportLength, double middle)
{
    return -std::trunc(middle - std::floor(viewportLength / 2));
}

// The transform with which a viewport of this size shows an area around the middle of the scene.
QTransform fittingTransform(const QSizeF& size, const QRectF& area)
{
    const double width = std::max(1.0, size.width() - 2 * FitMargin);
    const double height = std::max(1.0, size.height() - 2 * FitMargin);
    const double scale = std::min(width / area.width(), height / area.height());
    const QPointF middle = area.center() * scale;
    return QTransform(scale, 0, 0, scale, shiftTo(size.width(), middle.x()), shiftTo(size.height(), middle.y()));
}

// Shows layers of another scale while it lives: the ZelViewLayers ask the scene which ones are shown.
class OtherLayers final
{
public:
    OtherLayers(ZelGraphicsScene& scene, QList<int> layers)
        : m_shown(scene.getVisibleLayers())
        , m_layers(std::move(layers))
    {
        m_shown.swap(m_layers);
    }
    ~OtherLayers() { m_shown.swap(m_layers); }
    OtherLayers(const OtherLayers&) = delete;
    OtherLayers& operator=(const OtherLayers&) = delete;

private:
    QList<int>& m_shown;
    QList<int> m_layers;
};

} // namespace

struct ZelDrawingPicture::Parts
{
    // All that one painting needs.
    struct Frame
    {
        QSizeF size;
        QTransform sceneToPicture;
        double layerScale; // pixels of the picture for one of the layers'
        QList<int> layers;
        ViewCanvas::Scene look;

        [[nodiscard]] QRectF area() const { return sceneToPicture.inverted().mapRect(QRectF(QPointF(), size)); }
    };

    [[nodiscard]] ZelGraphicsScene* scene() const
    {
        return view ? qobject_cast<ZelGraphicsScene*>(view->scene()) : nullptr;
    }
    [[nodiscard]] Frame frame(ZelGraphicsScene& scene) const;
    void frameWhole(Frame& frame, ZelGraphicsScene& scene) const;
    void frameVisible(Frame& frame) const;
    void paintLayers(QPainter& painter, const Frame& frame, ZelGraphicsScene& scene) const;

    const QPointer<ZelGraphicsView> view;
    const Options options;
};

ZelDrawingPicture::ZelDrawingPicture(ZelGraphicsView& view, const Options& options)
    : m_parts(new Parts{&view, options})
{ }

ZelDrawingPicture::~ZelDrawingPicture() = default;

ZelDrawingPicture::Parts::Frame ZelDrawingPicture::Parts::frame(ZelGraphicsScene& scene) const
{
    Frame frame;
    frame.size = options.size.isEmpty() ? QSizeF(view->viewport()->size()) : options.size;
    if (options.part == Part::Whole && !view->sceneRect().isEmpty())
        frameWhole(frame, scene);
    else
        frameVisible(frame);
    scene.elements().takeOverAttributes(frame.area(), nullptr);
    frame.look = canvasScene(*view, scene);
    if (frame.look.backgroundBrush.style() == Qt::SolidPattern)
        frame.look.background = frame.look.backgroundBrush.color();
    return frame;
}

void ZelDrawingPicture::Parts::frameWhole(Frame& frame, ZelGraphicsScene& scene) const
{
    const QRectF all = view->sceneRect();
    frame.sceneToPicture
        = fittingTransform(frame.size, enlarged(all, options.margin * std::max(all.width(), all.height())));
    frame.layerScale = 1;
    const zel_Parameter& parameter = scene.globalParameter();
    const int steps = wholeZoomSteps(frame.sceneToPicture.m11(), parameter.scaleStep);
    frame.layers = visibleLayersAt(parameter.layerRanges, steps * parameter.scaleStep + 1.0);
}

void ZelDrawingPicture::Parts::frameVisible(Frame& frame) const
{
    const QSizeF shown = view->viewport()->size();
    const double scale = std::min(frame.size.width() / shown.width(), frame.size.height() / shown.height());
    const QSizeF rest = frame.size - shown * scale;
    frame.sceneToPicture
        = view->viewportTransform() * QTransform(scale, 0, 0, scale, rest.width() / 2, rest.height() / 2);
    frame.layerScale = scale;
    frame.layers = view->getVisibleLayers();
}

void ZelDrawingPicture::Parts::paintLayers(QPainter& painter, const Frame& frame, ZelGraphicsScene& scene) const
{
    if (!options.hasLayers)
        return;
    const OtherLayers layers(scene, frame.layers);
    const double scale = frame.layerScale;
    painter.save();
    painter.scale(scale, scale);
    const QTransform toLayer
        = scale == 1 ? frame.sceneToPicture : frame.sceneToPicture * QTransform::fromScale(1 / scale, 1 / scale);
    const QRect area = QRectF(QPointF(), frame.size / scale).toAlignedRect();
    const QObjectList& parts = view->children();
    for (QObject* part : parts) {
        auto* layer = qobject_cast<ZelViewLayer*>(part);
        if (layer && layer->isShown())
            layer->paintElsewhere(painter, toLayer, area);
    }
    painter.restore();
}

bool ZelDrawingPicture::paint(QPainter& painter, const GoesOn& goesOn) const
{
    const QPointer<ZelGraphicsScene> scene = m_parts->scene();
    if (!scene)
        return false;
    const Parts::Frame frame = m_parts->frame(*scene);
    const auto mayGoOn = [&](double share) {
        return (!goesOn || goesOn(share)) && scene && m_parts->scene() == scene
            && scene->elements().displayList().version() == frame.look.listVersion;
    };
    painter.save();
    painter.setRenderHints(frame.look.hints);
    const QRectF page(QPointF(), frame.size);
    painter.fillRect(page, frame.look.background);
    if (frame.look.backgroundBrush.style() != Qt::NoBrush)
        painter.fillRect(page, frame.look.backgroundBrush);
    const VectorPainter::Target target{&painter, frame.sceneToPicture * painter.worldTransform(),
        enlarged(frame.area(), PenMargin / frame.sceneToPicture.m11()), frame.layerScale / frame.sceneToPicture.m11(),
        frame.look.textPen, frame.look.viewFont};
    const bool isDone
        = VectorPainter(scene->elements().displayList()).paint(target, frame.layers, frame.look.states, mayGoOn);
    painter.restore();
    if (isDone)
        m_parts->paintLayers(painter, frame, *scene);
    return isDone;
}

QImage ZelDrawingPicture::image() const
{
    ZelGraphicsScene* scene = m_parts->scene();
    if (!scene)
        return {};
    const Parts::Frame frame = m_parts->frame(*scene);
    QImage image(frame.size.toSize(), QImage::Format_RGB32);
    if (image.isNull())
        return image;
    image.fill(frame.look.background);
    if (frame.look.backgroundBrush.style() != Qt::NoBrush) {
        QPainter painter(&image);
        painter.fillRect(image.rect(), frame.look.backgroundBrush);
    }
    ListPainter(scene->elements().displayList())
        .paint({&image, image.rect(), frame.sceneToPicture, frame.look.hints, frame.look.textPen, frame.look.viewFont},
            frame.layers, frame.look.states);
    QPainter painter(&image);
    m_parts->paintLayers(painter, frame, *scene);
    return image;
}

} // namespace mirn::zelchipview
