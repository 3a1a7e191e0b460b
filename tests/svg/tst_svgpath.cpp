// SPDX-License-Identifier: MIT
#include "tests/support/testmain.h"
#include "tests/svg/drawing.h"

#include <QTest>

#include <cmath>

class TestSvgPath : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void readsPathData_data();
    void readsPathData();
    void flattensCurves_data();
    void flattensCurves();
    void fillsSubpaths_data();
    void fillsSubpaths();
};

void TestSvgPath::readsPathData_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("corners"); // of the lines drawn
    const auto row = [](const char* name, const char* data, const char* corners) {
        QTest::newRow(name) << QByteArray(data) << QString::fromLatin1(corners);
    };
    row("lines", "M1 2L3 4H5V6", "1,2 3,4 5,4 5,6");
    row("relative ones", "m1 2l3 4h5v6", "1,2 4,6 9,6 9,12");
    row("repeated without a letter", "M0 0 1 0 1 1", "0,0 1,0 1,1");
    row("repeated after a relative move", "m1 1 1 0 0 1", "1,1 2,1 2,2");
    row("numbers glued together", "M.5.5-1-1L1e1-2", "0.5,0.5 -1,-1 10,-2");
    row("commas and line ends", "M 0,0\n,\t4 , 5 L,6 7", "0,0 4,5 6,7");
    row("closing joins to the start", "M1 1h2v2z", "1,1 3,1 3,3 1,1");
    row("a line after closing begins at the start", "M1 1h2v2zl5 5", "1,1 3,1 3,3 1,1 6,6");
    row("a move alone is nothing", "M1 1M2 2h1", "2,2 3,2");
    row("an arc without a radius is a line", "M0 0A0 5 0 0 1 3 4", "0,0 3,4");
    row("drawn up to a mistake", "M0 0L5 0L5", "0,0 5,0");
    row("up to an unknown letter", "M0 0L5 0X9 9L1 1", "0,0 5,0");
    row("up to an arc flag that is none", "M0 0L5 0A1 1 0 2 1 3 3", "0,0 5,0");
    row("must begin with a move", "L5 0", "");
    row("numbers after closing", "M0 0h5z 3 3", "0,0 5,0");
}

void TestSvgPath::readsPathData()
{
    QFETCH(QByteArray, data);
    QFETCH(QString, corners);
    const auto drawing = TestDrawing::fromBody("<path fill='none' stroke='red' d='" + data + "'/>");
    QVERIFY2(drawing.isRead(), qPrintable(drawing.error()));
    QStringList seen;
    for (std::size_t i = 0; i < drawing.items().size(); ++i) {
        const QStringList parts = describe(drawing.items()[i]).split(QLatin1Char(' '));
        if (seen.isEmpty() || seen.last() != parts[1])
            seen.append(parts[1]);
        seen.append(parts[2]);
    }
    QCOMPARE(seen.join(QLatin1Char(' ')), corners);
}

void TestSvgPath::flattensCurves_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<double>("centerX"); // of the circle of radius 20 on which all corners must lie
    QTest::addColumn<double>("centerY");
    QTest::addColumn<double>("farthestY"); // of all corners: tells which way round the arc goes
    const auto row = [](const char* name, const char* data, double x, double y, double farthest) {
        QTest::newRow(name) << QByteArray(data) << x << y << farthest;
    };
    row("a small arc, clockwise", "M0 0A20 20 0 0 1 20 20", 0, 20, 20);
    row("a small arc, the other way", "M0 0A20 20 0 0 0 20 20", 20, 0, 20);
    row("a large arc, clockwise", "M0 0A20 20 0 1 1 20 20", 20, 0, 20);
    row("a large arc, the other way", "M0 0A20 20 0 1 0 20 20", 0, 20, 40);
    row("relative, flags glued", "m0 0a20 20 0 0120 20", 0, 20, 20);
    row("radii too small are enlarged", "M0 0A5 5 0 0 0 40 0", 20, 0, 20);
    row("a cubic that is nearly a circle", "M0 0C11.0457 0 20 8.9543 20 20", 0, 20, 20);
    row("a quadratic that is nearly a circle", "M0 0Q3.978 0 7.654 1.522", 0, 20, 1.522);
    row("its smooth continuation", "M0 0C11.0457 0 20 8.9543 20 20S11.0457 40 0 40", 0, 20, 40);
}

void TestSvgPath::flattensCurves()
{
    QFETCH(QByteArray, data);
    QFETCH(double, centerX);
    QFETCH(double, centerY);
    QFETCH(double, farthestY);
    const auto drawing = TestDrawing::fromBody("<path d='" + data + "'/>");
    const auto* polygon = drawing.record<zel_Polygon>(0);
    QVERIFY(polygon);
    QVERIFY(polygon->points.size() > 4);
    double farthest = 0.0;
    for (const zel_Point& point : polygon->points) {
        const double distance = std::hypot(point.x - centerX, point.y - centerY);
        QVERIFY2(std::fabs(distance - 20) < 0.01, qPrintable(QStringLiteral("%1,%2").arg(point.x).arg(point.y)));
        farthest = std::max(farthest, point.y);
    }
    QVERIFY2(std::fabs(farthest - farthestY) < 0.1, qPrintable(QString::number(farthest)));
}

void TestSvgPath::fillsSubpaths_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QString>("records");
    const auto row = [](const char* name, const char* path, const char* records) {
        QTest::newRow(name) << QByteArray(path) << QString::fromLatin1(records);
    };
    row("a hole by the even-odd rule is bridged", "fill-rule='evenodd' d='M0 0h9v9zM1 1h2v2z'",
        "polygon #000000 0,0 9,0 9,9 0,0 1,1 3,1 3,3 1,1 0,0");
    row("a hole that turns the other way is bridged", "d='M0 0h9v9zM1 1v2h2z'",
        "polygon #000000 0,0 9,0 9,9 0,0 1,1 1,3 3,3 1,1 0,0");
    row("parts that turn the same way overlap", "d='M0 0h9v9zM1 1h2v2z'",
        "polygon #000000 0,0 9,0 9,9; polygon #000000 1,1 3,1 3,3");
    row("an open subpath is filled as if closed", "d='M0 0h9v9'", "polygon #000000 0,0 9,0 9,9");
    row("back at the start is as good as closed", "d='M0 0h9v9L0 0'", "polygon #000000 0,0 9,0 9,9");
    row("two corners enclose nothing", "d='M0 0h9'", "");
}

void TestSvgPath::fillsSubpaths()
{
    QFETCH(QByteArray, path);
    QFETCH(QString, records);
    const auto drawing = TestDrawing::fromBody("<path " + path + "/>");
    QVERIFY2(drawing.isRead(), qPrintable(drawing.error()));
    QCOMPARE(drawing.records(), records);
}

ZEL_TEST_MAIN(TestSvgPath)
#include "tst_svgpath.moc"
