// SPDX-License-Identifier: MIT
#include "graphics/painting/raster/polygoncoverage.h"
#include "graphics/painting/raster/rasteriser.h"
#include "graphics/painting/raster/rectborder.h"
#include "tests/support/random.h"
#include "tests/support/testmain.h"

#include <QDebug>
#include <QPainter>

#include <cmath>
#include <vector>

using namespace mirn::zelchipview;
using namespace zeltest;

namespace {

// Qt 5 draws a rect that lies within one column of pixels too faint: half a pixel by 2.4 gets 0.58 of a pixel's colour.
constexpr bool ThinRectsAreFaint = QT_VERSION < QT_VERSION_CHECK(6, 0, 0);

// A third of the cases each, the same mixture of them.
Rasteriser::Instructions instructionsFor(int number)
{
    return static_cast<Rasteriser::Instructions>(number / 60 % 3);
}

// Cuts an image into four, as a picture is painted in parts.
std::vector<QRect> partsOf(const QRect& image, Random& random)
{
    const QRect first(0, 0, 1 + random.below(image.width() - 1), 1 + random.below(image.height() - 1));
    const int right = image.width() - first.width();
    const int bottom = image.height() - first.height();
    return {first, QRect(first.width(), 0, right, first.height()), QRect(0, first.height(), first.width(), bottom),
        QRect(first.width(), first.height(), right, bottom)};
}

// The image with what QPainter draws on it, smoothed.
template <typename Draw>
QImage painted(const QImage& image, const Rasteriser::Mapping& mapping, const QPen& pen, const QBrush& brush, Draw draw)
{
    QImage result = image.copy();
    QPainter painter(&result);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(QTransform(mapping.scale, 0, 0, mapping.scale, mapping.dx, mapping.dy));
    painter.setPen(pen);
    painter.setBrush(brush);
    draw(painter);
    return result;
}

} // namespace

// The rasteriser is held against QPainter, shape by shape.
class TestRasteriser : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void rectsAsQPainterDrawsThem_data()
    {
        const Rows<double, bool> row;
        row("less than a pixel", 1.2, false);
        row("some pixels", 6.0, false);
        row("across the borders of the image", 30.0, false);
        row("on the borders of pixels, but for rounding", 9.0, true);
        row("that, across the borders of the image", 60.0, true);
    }

    void rectsAsQPainterDrawsThem()
    {
        const auto [largest, isNearWholePixels] = row<double, bool>();
        Random random;
        QImage drawn(40, 30, QImage::Format_RGB32);
        for (int i = 0; i < 12000; ++i) {
            const double scale = std::pow(1.1, random.below(40) - 20);
            const Rasteriser::Mapping mapping{scale, double(random.below(20)), random.below(3) * 0.5 - 3};
            const auto length = [&, isRounded = isNearWholePixels](double limit) {
                const double pixels = random.upTo(limit);
                return (isRounded ? std::round(pixels) : pixels) / scale;
            };
            const QRectF rect{
                length(60) - (mapping.dx + 10) / scale, length(30) - 4 / scale, length(largest), length(largest)};
            constexpr double Rounding = 1e-9;
            const double left = mapping.x(rect.left());
            const double right = mapping.x(rect.right());
            if (!Rasteriser::DrawsCutRects && (left < 0 || right > drawn.width()))
                continue;
            if (ThinRectsAreFaint && std::floor(left + Rounding) + 1 >= std::ceil(right - Rounding))
                continue;
            const QColor color(random.color());
            const QColor border(random.color());
            const double width = i % 3 == 0 ? 0 : random.upTo(0.99) / scale;
            drawn.fill(QColor(random.color()));
            const QImage expected = painted(
                drawn, mapping, QPen(border, width), color, [&rect](QPainter& painter) { painter.drawRect(rect); });
            for (const QRect& part : partsOf(drawn.rect(), random)) {
                Rasteriser rasteriser(drawn, part, mapping, instructionsFor(i));
                rasteriser.drawRect(
                    rect, color.rgb(), border.rgb(), width == 0 ? 256 : static_cast<int>(width * scale * 256));
            }
            if (drawn != expected)
                qDebug() << rect << "scale" << scale << "pen" << width << "moved" << mapping.dx << mapping.dy;
            QVERIFY(drawn == expected);
        }
    }

    void wideBordersAsQPainterDrawsThem_data()
    {
        const Rows<double, double, double> row;
        row("within the image", 30.0, 6.0, 0.0);
        row("of whole or half pixels", 30.0, 6.0, 0.5);
        row("wider than the rect", 6.0, 12.0, 0.0);
        row("across the borders of the image", 400.0, 9.0, 0.0);
    }

    void wideBordersAsQPainterDrawsThem()
    {
        if (!RectBorder::IsExact)
            QSKIP("QPainter draws them");
        const auto [largest, widest, grid] = row<double, double, double>();
        Random random;
        RectBorder border;
        QImage drawn(64, 56, QImage::Format_RGB32);
        for (int i = 0; i < 12000; ++i) {
            const double scale = std::pow(1.1, random.below(40) - 20);
            const Rasteriser::Mapping mapping{scale, double(random.below(20)), random.below(3) * 0.5 - 3};
            const auto length = [&, step = grid](double limit) {
                const double pixels = random.upTo(limit);
                return (step > 0 ? std::round(pixels / step) * step : pixels) / scale;
            };
            const QRectF rect{length(80) - (mapping.dx + 20) / scale, length(80) - (mapping.dy + 20) / scale,
                length(largest), length(largest)};
            const double width = (grid > 0 ? 1.5 : 1.002) / scale + length(widest);
            const QColor color(random.color());
            drawn.fill(QColor(random.color()));
            const QImage expected = painted(drawn, mapping, QPen(color, width), Qt::NoBrush,
                [&rect](QPainter& painter) { painter.drawRect(rect); });
            QVERIFY(border.make(rect, width, mapping) || rect.isEmpty());
            if (rect.isEmpty())
                continue;
            Rasteriser rasteriser(drawn, drawn.rect(), mapping, instructionsFor(i));
            rasteriser.drawStretchedMask(border.mask(), color.rgb());
            if (drawn != expected)
                qDebug() << rect << "scale" << scale << "pen" << width << "moved" << mapping.dx << mapping.dy;
            QVERIFY(drawn == expected);
        }
    }

    void linesAsQPainterDrawsThem()
    {
        Random random;
        QImage drawn(60, 60, QImage::Format_RGB32);
        const Rasteriser::Mapping unscaled{1, 0, 0};
        for (int i = 0; i < 6000; ++i) {
            constexpr double Reaches[] = {1.5, 25, 25, 300};
            const double reach = Reaches[i % 4];
            const QPointF from{random.upTo(80) - 10, random.upTo(80) - 10}; // in braces the order is certain
            QPointF to = from + QPointF{random.upTo(reach) - reach / 2, random.upTo(reach) - reach / 2};
            if (i % 5 == 0)
                to.setX(from.x());
            else if (i % 5 == 1)
                to.setY(from.y());
            const double width = i % 2 == 0 ? 0 : random.upTo(0.99);
            const QColor color(random.color());
            drawn.fill(QColor(random.color()));
            const QImage expected = painted(drawn, unscaled, QPen(color, width), Qt::NoBrush,
                [&](QPainter& painter) { painter.drawLine(QLineF(from, to)); });
            Rasteriser rasteriser(drawn, drawn.rect(), unscaled, instructionsFor(i));
            rasteriser.drawLine(QLineF(from, to), color.rgb(), width == 0 ? 256 : static_cast<int>(width * 256));
            QVERIFY2(drawn == expected, qPrintable(QString("line %1").arg(i)));
        }
    }

    void polygonsAsQPainterDrawsThem_data()
    {
        const Rows<double, double> row;
        row("less than a pixel", 1.2, 0.0);
        row("some pixels", 7.0, 0.0);
        row("across the borders of the image", 70.0, 0.0);
        row("in the middle between two places of the grid for corners", 40.0, 1.0 / 128);
        row("on the borders of pixels, slanted or not", 5.0, 0.5);
    }

    void polygonsAsQPainterDrawsThem()
    {
        const auto [size, grid] = row<double, double>();
        Random random;
        PolygonCoverage polygon;
        QImage drawn(60, 50, QImage::Format_RGB32);
        int left = 0;
        for (int i = 0; i < 6000; ++i) {
            const double scale = std::pow(1.1, random.below(40) - 20);
            const Rasteriser::Mapping mapping{scale, random.below(60) - size / 2, random.below(50) - size / 2};
            QPolygonF corners;
            for (int corner = 3 + random.below(5); corner > 0; --corner) {
                QPointF position{random.upTo(size), random.upTo(size)};
                if (grid > 0)
                    position = QPointF(std::round(position.x() / grid), std::round(position.y() / grid)) * grid;
                corners.append(position / scale);
            }
            const QColor color(random.color());
            const QColor border(random.color());
            drawn.fill(QColor(random.color()));
            if (!polygon.make(corners.constData(), corners.size(), mapping)) {
                ++left;
                continue;
            }
            const QImage expected = painted(drawn, mapping, QPen(border, 0), color,
                [&corners](QPainter& painter) { painter.drawPolygon(corners); });
            Rasteriser rasteriser(drawn, drawn.rect(), mapping, instructionsFor(i));
            rasteriser.drawMask(polygon.mask(), color.rgb());
            rasteriser.strokePolygon(corners.constData(), corners.size(), border.rgb(), 256);
            QVERIFY2(drawn == expected, qPrintable(QString("polygon %1").arg(i)));
        }
        QVERIFY(left < 200); // those that may be rects
    }
};

ZEL_TEST_MAIN(TestRasteriser)
#include "tst_rasteriser.moc"
