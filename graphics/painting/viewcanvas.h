// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/dirtyparts.h"
#include "graphics/painting/listpainter.h"

#include <QBrush>
#include <QColor>
#include <QDeadlineTimer>
#include <QFont>
#include <QImage>
#include <QList>
#include <QRegion>
#include <QTransform>

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

namespace mirn::zelchipview {

// The picture that a view shows, cached from one paint to the next. A scroll moves it and paints only what comes into
// sight; a changed element repaints only the area where it lies. Everything else, such as another scale, repaints all.
// After a scroll, a pixel at an edge may differ by one level from a fresh picture, because QPainter's rounding depends
// on where the picture's border is. ViewPicture owns the canvas.
class ViewCanvas final
{
public:
    // Draws what lies behind the elements into an area of the scene.
    using Background = std::function<void(QPainter& painter, const QRectF& sceneArea)>;

    // What to paint, and how: all that the picture depends on.
    struct Scene
    {
        QTransform toPicture; // from scene coordinates to pixels of the picture
        QSize size; // of the picture, in pixels
        QList<int> layers; // visible layers
        ListPainter::States states;
        unsigned listVersion;
        QPainter::RenderHints hints;
        QPen textPen;
        QFont viewFont;
        QColor background; // opaque
        QBrush backgroundBrush; // what drawBackground() fills with
        Background drawBackground;
        bool isScaled = false; // a pixel of the picture is not a unit of the painter
        double smallestText = 0; // pixels; texts in a smaller size are left out
    };

    // The list is not owned. See ListPainter for the memory.
    explicit ViewCanvas(DisplayList& list, std::shared_ptr<ListPainter::Memory> memory = {});
    [[nodiscard]] const std::shared_ptr<ListPainter::Memory>& memory() const { return m_painter.memory(); }

    // See ListPainter::setThreads().
    void setThreads(int count) { m_painter.setThreads(count); }

    // Marks the whole picture as out of date.
    void invalidate();

    // Marks what was painted for places of the display list as out of date. Negative ones are left out.
    void invalidate(const std::vector<int>& places);

    // Brings the picture up to date.
    void update(const Scene& scene);

    // Moves the picture to where the scene is, if they differ only by a scroll. Returns which of its pixels will change
    // by more than one level, beside what comes into sight.
    [[nodiscard]] QRegion scrollTo(const Scene& scene);

    // Paints the scene into an image of its size. The picture is out of date then.
    void paintInto(QImage& image, const Scene& scene);

    // The bands in which updateSome() paints.
    enum class Order { TopFirst, MiddleFirst };
    struct Bands
    {
        int height; // pixels
        Order order;
    };

    // Does a part of the work of update(): stops after the first part of the picture that ends later than `deadline`. A
    // new picture comes in bands; meanwhile the old one stays where it fits. While work is left, the threads of
    // setThreads() wait for more; pause() ends them.
    enum class Work { None, Done, Left }; // the picture was up to date, is up to date now, or is not yet
    [[nodiscard]] Work updateSome(const Scene& scene, const QDeadlineTimer& deadline, Bands bands = TopDown);
    void pause() { m_painter.keepThreads(false); }

    // Returns whether update() would have to paint all of it anew.
    [[nodiscard]] bool needsAll(const Scene& scene) const;

    // Returns what of the picture is up to date, and whether all of it is. hasBegun() returns whether the picture is of
    // this scene, however much of it is up to date.
    [[nodiscard]] QRegion finished() const;
    [[nodiscard]] bool isFinished() const { return m_isValid && m_dirty.isEmpty(); }
    [[nodiscard]] bool hasBegun(const Scene& scene) const;

    // The scale, place and display list that the picture was painted with.
    [[nodiscard]] const QTransform& toPicture() const { return m_toPicture; }
    [[nodiscard]] unsigned listVersion() const { return m_listVersion; }

    // Returns the picture with each side divided by a number.
    [[nodiscard]] QImage reduced(int divisor) const;

    // Draws the picture with its top left corner at `position`; a unit of the painter is `ratio` pixels of the picture.
    void drawOn(QPainter& painter, const QPointF& position, qreal ratio) const;

    // Draws parts of the picture, in its pixels, whose unit is that of the painter, at the painter's origin. Where only
    // narrow parts show this is quicker, because QPainter would clip the whole picture row by row.
    void drawParts(QPainter& painter, const QRegion& parts) const;

    // Copies parts of the picture to an image of the same format, where the picture's corner is. It must have room.
    void copyParts(QImage& image, QPoint corner, const QRegion& parts) const;

private:
    static constexpr Bands TopDown{8, Order::TopFirst};

    struct Piece
    {
        QRect source; // in m_picture
        QPoint target; // in the picture
    };
    [[nodiscard]] std::vector<Piece> pieces() const;
    [[nodiscard]] std::vector<Piece> piecesOf(const QRegion& parts) const;
    [[nodiscard]] static int wrapped(int value, int length);
    [[nodiscard]] bool differsOnlyByScroll(const Scene& scene) const;
    bool scroll(const Scene& scene);
    [[nodiscard]] std::vector<QRect> edgeStripsFor(QPoint way) const;
    [[nodiscard]] bool crossesZero(const QPointF& point, QPoint way) const;
    void invalidateClippedShapes(const std::vector<QRect>& borders, QPoint way, QPoint other);
    void markEdges(const QRectF& rect, double reach, QPoint way);
    void mark(const QRectF& part, QPoint way);
    void mark(const QRect& part);
    void begin(const Scene& scene);
    void divide(Bands bands);
    void paintAll(const Scene& scene);
    void paintDirtyParts(const Scene& scene, const QDeadlineTimer& deadline);
    void paint(const Scene& scene, QImage& image, const QRect& part);
    void copyFromScratch(const QRect& part);

    DisplayList& m_list;
    ListPainter m_painter;
    QImage m_picture; // wraps around at its edges: pixel (0, 0) is stored at m_origin
    QPoint m_origin;
    QImage m_scratch; // parts are painted here, because a clip would change what QPainter draws
    bool m_isValid = false;
    DirtyParts m_dirty;
    std::size_t m_clippedEnd = 0; // behind the parts of shapes that the last scroll() found cut off

    // The values that the picture was painted with.
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
