// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/listpainter.h"

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QImage>
#include <QList>
#include <QTransform>

#include <functional>
#include <vector>

namespace mirn::zelchipview {

// The picture that a view shows, kept from one paint to the next: a scroll moves it and paints what came into sight, a
// change of an element's look paints the spot where it lies. All else, such as another scale, paints it anew. After a
// scroll a pixel may differ by one level of a colour from a picture that is painted anew: QPainter rounds by where the
// border is.
class ViewCanvas final
{
public:
    // Draws what lies behind the elements into an area of the scene.
    using Background = std::function<void(QPainter& painter, const QRectF& sceneArea)>;

    struct Scene
    {
        QTransform toPicture; // from scene coordinates to pixels of the picture
        QSize size; // of the picture, in pixels
        QList<int> layers; // that are shown
        ListPainter::States states;
        unsigned listVersion;
        QPainter::RenderHints hints;
        QPen textPen;
        QFont viewFont;
        QColor background; // opaque
        QBrush backgroundBrush; // what drawBackground() fills with
        Background drawBackground;
        bool isScaled = false; // will be drawn on a device with other pixels than the painter's
    };

    explicit ViewCanvas(DisplayList& list); // not owned

    // The whole picture is out of date.
    void invalidate();

    // What was painted at a place of the list is out of date.
    void invalidate(int place);

    // Brings the picture up to date.
    void update(const Scene& scene);

    // Draws the picture with its top left corner at `position`; a unit of the painter is `ratio` pixels of the picture.
    void drawOn(QPainter& painter, const QPointF& position, qreal ratio) const;

private:
    [[nodiscard]] bool isSameButScrolled(const Scene& scene) const;
    bool scroll(const Scene& scene);
    [[nodiscard]] std::vector<QRect> bordersAcross(QPoint way) const;
    [[nodiscard]] bool crossesZero(const QPointF& point, QPoint way) const;
    void markCutShapes(const std::vector<QRect>& borders, QPoint way, QPoint other);
    void markEdges(const QRectF& rect, double reach, QPoint way);
    void mark(const QRectF& part, QPoint way);
    void mark(const QRect& part);
    [[nodiscard]] bool isMostlyDirty() const;
    void paintAll(const Scene& scene);
    void paintDirtyParts(const Scene& scene);
    void paint(const Scene& scene, QImage& image, const QRect& part);
    void copyFromScratch(const QRect& part);

    DisplayList& m_list;
    ListPainter m_painter;
    QImage m_picture; // as on a torus: its pixel (0, 0) stands at m_origin, and what is beyond an edge at the other one
    QPoint m_origin;
    QImage m_scratch; // where parts are painted: QPainter is never clipped, for a clip changes what it draws
    bool m_isValid = false;
    std::vector<QRect> m_dirty; // parts of the picture
    double m_dirtyPixels = 0; // of all parts together, counted twice where they overlap

    // What the picture shows.
    QTransform m_toPicture;
    QList<int> m_layers;
    unsigned m_listVersion = 0;
    QPainter::RenderHints m_hints;
    QPen m_textPen;
    QFont m_viewFont;
    QColor m_background;
    QBrush m_backgroundBrush;
};

} // namespace mirn::zelchipview
