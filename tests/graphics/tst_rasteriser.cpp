// SPDX-License-Identifier: MIT
#include "graphics/painting/polygoncoverage.h"
#include "graphics/painting/rasteriser.h"
#include "tests/support/random.h"
#include "tests/support/testmain.h"

#include <QPainter>
#include <QTest>

#include <cmath>

using namespace mirn::zelchipview;
using namespace zeltest;

namespace {

// Qt 5 draws a rect that lies within one column of pixels too faint: half a pixel by 2.4 gets 0.58 of a pixel's colour.
constexpr bool ThinRectsAreFaint = QT_VERSION < QT_VERSION_CHECK(6, 0, 0);

// Half of the cases each, the same mixture of them.
Rasteriser::Instructions instructionsFor(int number)
{
    return number / 60 % 2 == 0 ? Rasteriser::Instructions::Fastest : Rasteriser::Instructions::Basic;
}

} // namespace

// Held against QPainter, shape by shape.
class TestRasteriser : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void rectsAsQPainterDrawsThem_data();
    void rectsAsQPainterDrawsThem();
    void linesAsQPainterDrawsThem();
    void polygonsAsQPainterDrawsThem_data();
    void polygonsAsQPainterDrawsThem();
};

void TestRasteriser::rectsAsQPainterDrawsThem_data()
{
    QTest::addColumn<double>("largest");
    QTest::addColumn<bool>("isNearWholePixels");
    QTest::newRow("less than a pixel") << 1.2 << false;
    QTest::newRow("some pixels") << 6.0 << false;
    QTest::newRow("across the borders of the image") << 30.0 << false;
    QTest::newRow("on the borders of pixels, but for rounding") << 9.0 << true;
    QTest::newRow("that, across the borders of the image") << 60.0 << true;
}

void TestRasteriser::rectsAsQPainterDrawsThem()
{
    QFETCH(double, largest);
    QFETCH(bool, isNearWholePixels);
    Random random;
    QImage expected(40, 30, QImage::Format_RGB32);
    QImage drawn(expected.size(), QImage::Format_RGB32);
    for (int i = 0; i < 12000; ++i) {
        const double scale = std::pow(1.1, random.below(40) - 20);
        const Rasteriser::Mapping mapping{scale, double(random.below(20)), random.below(3) * 0.5 - 3};
        const auto length = [&](double limit) {
            const double pixels = random.upTo(limit);
            return (isNearWholePixels ? std::round(pixels) : pixels) / scale;
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
        expected.fill(QColor(random.color()));
        drawn = expected.copy();
        QPainter painter(&expected);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setTransform(QTransform(scale, 0, 0, scale, mapping.dx, mapping.dy));
        painter.setPen(QPen(QBrush(border), width));
        painter.setBrush(color);
        painter.drawRect(rect);
        painter.end();
        Rasteriser rasteriser(drawn, drawn.rect(), mapping, instructionsFor(i));
        rasteriser.fillRect(rect, color.rgb());
        rasteriser.strokeRect(rect, border.rgb(), width == 0 ? 256 : static_cast<int>(width * scale * 256));
        QVERIFY2(drawn == expected,
            qPrintable(QStringLiteral("rect %1 %2 %3 %4, scale %5, pen %6, moved %7 %8")
                           .arg(rect.x(), 0, 'g', 17)
                           .arg(rect.y(), 0, 'g', 17)
                           .arg(rect.width(), 0, 'g', 17)
                           .arg(rect.height(), 0, 'g', 17)
                           .arg(scale, 0, 'g', 17)
                           .arg(width)
                           .arg(mapping.dx)
                           .arg(mapping.dy)));
    }
}

void TestRasteriser::linesAsQPainterDrawsThem()
{
    Random random;
    QImage expected(60, 60, QImage::Format_RGB32);
    for (int i = 0; i < 6000; ++i) {
        const double reach = i % 4 == 0 ? 1.5 : 25;
        const QPointF from{15 + random.upTo(30), 15 + random.upTo(30)}; // in braces the order is certain
        QPointF to = from + QPointF{random.upTo(reach) - reach / 2, random.upTo(reach) - reach / 2};
        if (i % 5 == 0)
            to.setX(from.x());
        else if (i % 5 == 1)
            to.setY(from.y());
        const double width = i % 2 == 0 ? 0 : random.upTo(0.99);
        const QColor color(random.color());
        expected.fill(QColor(random.color()));
        QImage drawn = expected.copy();
        QPainter painter(&expected);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QBrush(color), width));
        painter.drawLine(QLineF(from, to));
        painter.end();
        Rasteriser rasteriser(drawn, drawn.rect(), {1, 0, 0}, instructionsFor(i));
        rasteriser.drawLine(QLineF(from, to), color.rgb(), width == 0 ? 256 : static_cast<int>(width * 256));
        QVERIFY2(drawn == expected, qPrintable(QStringLiteral("line %1").arg(i)));
    }
}

void TestRasteriser::polygonsAsQPainterDrawsThem_data()
{
    QTest::addColumn<double>("size");
    QTest::addColumn<double>("grid");
    QTest::newRow("less than a pixel") << 1.2 << 0.0;
    QTest::newRow("some pixels") << 7.0 << 0.0;
    QTest::newRow("across the borders of the image") << 70.0 << 0.0;
    QTest::newRow("in the middle between two places of the grid for corners") << 40.0 << 1.0 / 128;
    QTest::newRow("on the borders of pixels, slanted or not") << 5.0 << 0.5;
}

void TestRasteriser::polygonsAsQPainterDrawsThem()
{
    QFETCH(double, size);
    QFETCH(double, grid);
    Random random;
    PolygonCoverage polygon;
    QImage expected(60, 50, QImage::Format_RGB32);
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
        expected.fill(QColor(random.color()));
        QImage drawn = expected.copy();
        if (!polygon.make(corners.constData(), corners.size(), mapping)) {
            ++left;
            continue;
        }
        QPainter painter(&expected);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setTransform(QTransform(scale, 0, 0, scale, mapping.dx, mapping.dy));
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawPolygon(corners);
        painter.end();
        Rasteriser(drawn, drawn.rect(), mapping, instructionsFor(i)).drawMask(polygon.mask(), color.rgb());
        QVERIFY2(drawn == expected, qPrintable(QStringLiteral("polygon %1").arg(i)));
    }
    QVERIFY(left < 200); // those that may be rects
}

ZEL_TEST_MAIN(TestRasteriser)
#include "tst_rasteriser.moc"
