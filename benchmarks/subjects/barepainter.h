// SPDX-License-Identifier: MIT
#pragma once

#include <QBrush>
#include <QFont>
#include <QList>
#include <QPen>
#include <QPolygonF>
#include <QRectF>
#include <QString>

#include <vector>

class QImage;
class QPainter;
class QTransform;
class zel_SingleGraphItem;

namespace zelbench {

// The yardstick: the time that QPainter alone needs for the picture that the view shows. It holds a list of primitives
// with their pens, brushes and fonts ready, and paints them in order, without a scene, an index or states. Primitives
// are skipped if their bounding rectangle is outside of the picture.
class BarePainter final
{
public:
    // The records must outlive this object.
    explicit BarePainter(const std::vector<zel_SingleGraphItem*>& records);

    // Paints the primitives of these layers on white. Returns how many were painted.
    int paint(QImage& picture, const QTransform& sceneToPicture, const QList<int>& layers) const;

private:
    struct Primitive
    {
        const zel_SingleGraphItem* record = nullptr;
        QRectF bounds; // bounding rectangle in scene units, without the width of a hairline
        QPen pen;
        QBrush brush;
        QPolygonF corners;
        QFont font;
        QString text;
    };

    static Primitive primitiveOf(const zel_SingleGraphItem& record);
    static void draw(const Primitive& primitive, QPainter& painter);

    std::vector<Primitive> m_primitives;
};

} // namespace zelbench
