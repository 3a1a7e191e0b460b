// SPDX-License-Identifier: MIT
#include "tests/support/testmain.h"
#include "tests/svg/drawing.h"

#include <QTest>

#include <algorithm>
#include <cmath>

// Where shapes lie and what kind of record they become.
class TestSvgGeometry : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void placesShapes_data();
    void placesShapes();
    void readsViewports_data();
    void readsViewports();
    void roundsCircles();
    void roundsCorners();
};

void TestSvgGeometry::placesShapes_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("records");
    const auto row = [](const char* name, const char* body, const char* records) {
        QTest::newRow(name) << QByteArray(body) << QString::fromLatin1(records);
    };
    row("transforms apply from the right", "<rect width='2' height='1' transform='translate(10,5) scale(2 3)'/>",
        "rect 10,5 4x3 #000000");
    row("a group's transform comes after its child's",
        "<g transform='scale(2)'><rect width='1' height='1' transform='translate(3)'/></g>", "rect 6,0 2x2 #000000");
    row("a quarter turn keeps a rect", "<rect x='1' width='4' height='2' transform='rotate(90)'/>",
        "rect -2,1 2x4 #000000");
    row("so do three of them around a point", "<rect width='4' height='2' transform='rotate(-90 10 10)'/>",
        "rect 0,16 2x4 #000000");
    row("so does a mirror", "<rect x='1' y='1' width='4' height='2' transform='matrix(-1 0 0 1 10 0)'/>",
        "rect 5,1 4x2 #000000");
    row("a turned rect is a polygon", "<rect width='10' height='10' transform='rotate(45)'/>",
        "polygon #000000 0,0 7.071,7.071 0,14.142 -7.071,7.071");
    row("a skewed rect is a polygon", "<rect width='10' height='10' transform='skewX(45)'/>",
        "polygon #000000 0,0 10,0 20,10 10,10");
    row("skewed the other way", "<polygon points='0,0 10,0 10,10' transform='skewY(45)'/>",
        "polygon #000000 0,0 10,10 10,20");
    row("transforms as a style, with units",
        "<rect width='1' height='1' style='transform:translate(1px, 2px)rotate(.25turn)'/>", "rect 0,2 1x1 #000000");
    row("a transform that cannot be read is left out",
        "<rect width='1' height='1' transform='translate(1,2) turn(3)'/>", "rect 0,0 1x1 #000000");
    row("strokes scale by their direction",
        "<g stroke='red' stroke-width='2' transform='scale(1 4)'><line x2='1'/><line y2='1'/><line x2='4' y2='1'/></g>",
        "line 0,0 1,0 #ff0000 8; line 0,0 0,4 #ff0000 2; line 0,0 4,4 #ff0000 5.875");
    row("also those of rects and turned ones",
        "<g fill='none' stroke='red'><rect width='1' height='1' transform='scale(1 4)'/>"
        "<line x2='1' transform='rotate(90) scale(1 4)'/></g>",
        "line 0,0 1,0 #ff0000 4; line 1,0 1,4 #ff0000 1; line 1,4 0,4 #ff0000 4; line 0,4 0,0 #ff0000 1; "
        "line 0,0 0,1 #ff0000 4");
    row("a border by the mean of both axes", "<rect width='1' height='1' stroke='red' transform='scale(1 4)'/>",
        "rect 0,0 1x4 #000000 #ff0000 2");
    row("unless they are fixed", "<line x2='1' stroke='red' vector-effect='non-scaling-stroke' transform='scale(4)'/>",
        "line 0,0 4,0 #ff0000 1");
    row("a rect without fill is its border", "<rect width='2' height='1' fill='none' stroke='red'/>",
        "line 0,0 2,0 #ff0000 1; line 2,0 2,1 #ff0000 1; line 2,1 0,1 #ff0000 1; line 0,1 0,0 #ff0000 1");
    row("a stroked polygon is a polygon and then lines", "<polygon points='0 0,4 0 4,3' stroke='red'/>",
        "polygon #000000 0,0 4,0 4,3; line 0,0 4,0 #ff0000 1; line 4,0 4,3 #ff0000 1; line 4,3 0,0 #ff0000 1");
    row("a polyline is open", "<polyline points='0,0 4,0 4,3' fill='none' stroke='red'/>",
        "line 0,0 4,0 #ff0000 1; line 4,0 4,3 #ff0000 1");
    row("an odd number of coordinates loses the last", "<polyline points='0,0 4,0 4' fill='none' stroke='red'/>",
        "line 0,0 4,0 #ff0000 1");
    row("a line has no fill", "<line x2='5' fill='red'/>", "");
    row("corners rounded by next to nothing", "<rect width='10' height='10' rx='0.1'/>", "rect 0,0 10x10 #000000");
    row("a transform to nothing", "<rect width='1' height='1' transform='scale(0)'/>", "");
}

void TestSvgGeometry::placesShapes()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, records);
    const auto drawing = TestDrawing::fromBody(body);
    QVERIFY2(drawing.isRead(), qPrintable(drawing.error()));
    QCOMPARE(drawing.records(), records);
}

void TestSvgGeometry::readsViewports_data()
{
    QTest::addColumn<QByteArray>("root");
    QTest::addColumn<QString>("size");
    QTest::addColumn<QString>("records"); // of a rect 10,10 10x10
    const auto row = [](const char* name, const char* root, const char* size, const char* records) {
        QTest::newRow(name) << QByteArray(root) << QString::fromLatin1(size) << QString::fromLatin1(records);
    };
    row("no view box", "width='50' height='60'", "50x60", "rect 10,10 10x10 #000000");
    row("units", "width='1in' height='72pt'", "96x96", "rect 10,10 10x10 #000000");
    row("view box only", "viewBox='10 0 30 40'", "30x40", "rect 0,10 10x10 #000000");
    row("percentages are as good as none", "width='100%' height='100%' viewBox='0 0 30 40'", "30x40",
        "rect 10,10 10x10 #000000");
    row("width alone keeps the proportion", "width='60' viewBox='0 0 30 40'", "60x80", "rect 20,20 20x20 #000000");
    row("scaled and centred", "width='200' height='100' viewBox='0 0 50 50'", "200x100", "rect 70,20 20x20 #000000");
    row("aligned", "width='200' height='100' viewBox='0 0 50 50' preserveAspectRatio='xMaxYMin meet'", "200x100",
        "rect 120,20 20x20 #000000");
    row("sliced", "width='200' height='100' viewBox='0 0 50 50' preserveAspectRatio='xMidYMin slice'", "200x100",
        "rect 40,40 40x40 #000000");
    row("stretched", "width='200' height='100' viewBox='0 0 50 50' preserveAspectRatio='none'", "200x100",
        "rect 40,20 40x20 #000000");
    row("neither size nor view box: as large as the content", "", "20x20", "rect 10,10 10x10 #000000");
    row("an empty view box is none", "width='50' height='60' viewBox='0 0 0 5'", "50x60", "rect 10,10 10x10 #000000");
}

void TestSvgGeometry::readsViewports()
{
    QFETCH(QByteArray, root);
    QFETCH(QString, size);
    QFETCH(QString, records);
    const auto drawing = TestDrawing::fromFile("<svg " + root + "><rect x='10' y='10' width='10' height='10'/></svg>");
    QVERIFY2(drawing.isRead(), qPrintable(drawing.error()));
    const zel_Parameter parameter = drawing.parser().getSVGParameter();
    QCOMPARE(QStringLiteral("%1x%2").arg(parameter.width).arg(parameter.height), size);
    QCOMPARE(drawing.warnings(), QString());
    QCOMPARE(drawing.records(), records);
}

// Every corner lies on the ellipse, and no chord is further from it than a pixel at the largest zoom.
void TestSvgGeometry::roundsCircles()
{
    const auto drawing = TestDrawing::fromBody("<ellipse cx='5' cy='5' rx='40' ry='20' transform='scale(1 2)'/>");
    const auto* polygon = drawing.record<zel_Polygon>(0);
    QVERIFY(polygon);
    double largestGap = 0.0;
    for (std::size_t i = 0; i < polygon->points.size(); ++i) {
        const zel_Point& a = polygon->points[i];
        const zel_Point& b = polygon->points[(i + 1) % polygon->points.size()];
        QVERIFY(std::fabs(std::hypot(a.x - 5, a.y - 10) - 40) < 1e-9);
        largestGap = std::max(largestGap, 40 - std::hypot((a.x + b.x) / 2 - 5, (a.y + b.y) / 2 - 10));
    }
    QVERIFY2(largestGap < 0.005, qPrintable(QString::number(largestGap)));
    QVERIFY2(polygon->points.size() < 300, qPrintable(QString::number(polygon->points.size())));
}

void TestSvgGeometry::roundsCorners()
{
    const auto drawing = TestDrawing::fromBody("<rect width='20' height='10' rx='50' ry='4'/>");
    const auto* polygon = drawing.record<zel_Polygon>(0);
    QVERIFY(polygon);
    const auto has = [polygon](double x, double y) {
        return std::any_of(polygon->points.begin(), polygon->points.end(),
            [=](const zel_Point& p) { return std::fabs(p.x - x) < 1e-9 && std::fabs(p.y - y) < 1e-9; });
    };
    QVERIFY(has(10, 0) && has(20, 4) && has(20, 6) && has(10, 10) && has(0, 6) && has(0, 4)); // rx is cut to half
    QVERIFY(!has(0, 0) && !has(20, 10));
    // The curves bend outwards: the outline is larger than the octagon of its six corners.
    QVERIFY(std::all_of(polygon->points.begin(), polygon->points.end(), [](const zel_Point& p) {
        return std::fabs(p.x - 10) / 10 + std::max(std::fabs(p.y - 5) - 1, 0.0) / 4 > 1 - 1e-9;
    }));
}

ZEL_TEST_MAIN(TestSvgGeometry)
#include "tst_svggeometry.moc"
