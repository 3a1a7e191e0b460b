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

// The yardstick: what QPainter alone needs for the picture that the view shows. A list of primitives with their pens,
// brushes and fonts ready, painted in order; no scene, no index, no states. What lies outside the picture is skipped
// by its bounding box.
class BarePainter final
{
public:
    // The records must outlive it.
    explicit BarePainter(const std::vector<zel_SingleGraphItem*>& records);

    // Paints what is on these layers on white; gives how many primitives that were.
    int paint(QImage& picture, const QTransform& sceneToPicture, const QList<int>& layers) const;

private:
    struct Primitive
    {
        const zel_SingleGraphItem* record = nullptr;
        QRectF bounds; // scene units, without the width of a hairline
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
