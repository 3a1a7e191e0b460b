// SPDX-License-Identifier: MIT
#include "tests/svg/drawing.h"

#include <algorithm>
#include <cmath>

namespace {

const QByteArray Root = "<svg xmlns='http://www.w3.org/2000/svg' xmlns:t='urn:tovanel:chip-drawing' ";

} // namespace

// Shapes become records of some kind at some place, <use> draws them again, and a chip drawing says more of them than
// SVG: parameters, layers, ids, tooltips, flags.
class TestSvgShapes : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void placesShapes_data()
    {
        const Rows<QByteArray, QString> row;
        for (const auto& each : zeltest::casesIn("svg/cases/shapes.txt"))
            row(each.name.constData(), each.content, each.result);
    }

    void placesShapes()
    {
        const auto [body, records] = row<QByteArray, QString>();
        const auto drawing = TestDrawing::fromBody(body);
        QCOMPARE(drawing.records(), records);
        QCOMPARE(drawing.error(), QString());
        QVERIFY2(drawing.warnings().isEmpty() || !body.contains("<use"), qPrintable(drawing.warnings()));
    }

    void readsViewports_data()
    {
        // The attributes, the size, and what becomes of a rect 10,10 10x10.
        const Rows<QByteArray, QString, QString> row;
        row("no view box", "width='50' height='60'", "50x60", "rect 10,10 10x10");
        row("units", "width='1in' height='72pt'", "96x96", "rect 10,10 10x10");
        row("view box only", "viewBox='10 0 30 40'", "30x40", "rect 0,10 10x10");
        row("percentages count as none", "width='100%' height='100%' viewBox='0 0 30 40'", "30x40", "rect 10,10 10x10");
        row("width alone keeps the proportion", "width='60' viewBox='0 0 30 40'", "60x80", "rect 20,20 20x20");
        row("and so does height", "height='80' viewBox='0 0 30 40'", "60x80", "rect 20,20 20x20");
        row("scaled and centred", "width='200' height='100' viewBox='0 0 50 50'", "200x100", "rect 70,20 20x20");
        row("aligned", "width='200' height='100' viewBox='0 0 50 50' preserveAspectRatio='xMaxYMin meet'", "200x100",
            "rect 120,20 20x20");
        row("sliced", "width='200' height='100' viewBox='0 0 50 50' preserveAspectRatio='xMidYMin slice'", "200x100",
            "rect 40,40 40x40");
        row("stretched", "width='200' height='100' viewBox='0 0 50 50' preserveAspectRatio='none'", "200x100",
            "rect 40,20 40x20");
        row("neither size nor view box: as large as the content", "", "20x20", "rect 10,10 10x10");
        row("an empty view box is none", "width='50' height='60' viewBox='0 0 0 5'", "50x60", "rect 10,10 10x10");
    }

    void readsViewports()
    {
        const auto [root, size, records] = row<QByteArray, QString, QString>();
        const auto drawing
            = TestDrawing::fromFile("<svg " + root + "><rect x='10' y='10' width='10' height='10'/></svg>");
        const zel_Parameter parameter = drawing.parser().getSVGParameter();
        QCOMPARE(QString("%1x%2").arg(parameter.width).arg(parameter.height), size);
        QCOMPARE(drawing.warnings() + drawing.error(), QString());
        QCOMPARE(drawing.records(), records);
    }

    // Every corner lies on the ellipse, and no chord is further from it than a pixel at the largest zoom.
    void roundsCircles()
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

    void roundsCorners()
    {
        const auto drawing = TestDrawing::fromBody("<rect size='20x10' rx='50' ry='4'/>");
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

    void readsPathData_data()
    {
        // The lines drawn, from and to.
        const Rows<QByteArray, QString> row;
        row("lines", "M1 2L3 4H5V6", "1,2 3,4; 3,4 5,4; 5,4 5,6");
        row("relative ones", "m1 2l3 4h5v6", "1,2 4,6; 4,6 9,6; 9,6 9,12");
        row("repeated without a letter", "M0 0 1 0 1 1", "0,0 1,0; 1,0 1,1");
        row("repeated after a relative move", "m1 1 1 0 0 1", "1,1 2,1; 2,1 2,2");
        row("numbers glued together", "M.5.5-1-1L1e1-2", "0.5,0.5 -1,-1; -1,-1 10,-2");
        row("commas and line ends", "M 0,0\n,\t4 , 5 L,6 7", "0,0 4,5; 4,5 6,7");
        row("closing joins to the start", "M1 1h2v2z", "1,1 3,1; 3,1 3,3; 3,3 1,1");
        row("a line after closing begins at the start", "M1 1h2v2zl5 5", "1,1 3,1; 3,1 3,3; 3,3 1,1; 1,1 6,6");
        row("a move alone is nothing", "M1 1M2 2h1", "2,2 3,2");
        row("an arc without a radius is a line", "M0 0A0 5 0 0 1 3 4", "0,0 3,4");
        row("drawn up to a mistake", "M0 0L5 0L5", "0,0 5,0");
        row("up to an unknown letter", "M0 0L5 0X9 9L1 1", "0,0 5,0");
        row("up to an arc flag that is none", "M0 0L5 0A1 1 0 2 1 3 3", "0,0 5,0");
        row("must begin with a move", "L5 0", "");
        row("numbers after closing", "M0 0h5z 3 3", "0,0 5,0");
    }

    void readsPathData()
    {
        const auto [data, lines] = row<QByteArray, QString>();
        const QString records = recordsOf("<path fill='none' stroke='red' d='" + data + "'/>");
        QCOMPARE(QString(records).remove("line ").remove(" red 1"), lines);
    }

    void flattensCurves_data()
    {
        // The centre of the circle of radius 20 on which all corners must lie, and the farthest y, which tells which
        // way round the arc goes.
        const Rows<QByteArray, double, double, double> row;
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

    void flattensCurves()
    {
        const auto [data, centerX, centerY, farthestY] = row<QByteArray, double, double, double>();
        const auto drawing = TestDrawing::fromBody("<path d='" + data + "'/>");
        const auto* polygon = drawing.record<zel_Polygon>(0);
        QVERIFY(polygon);
        QVERIFY(polygon->points.size() > 4);
        double farthest = 0.0;
        for (const zel_Point& point : polygon->points) {
            const double distance = std::hypot(point.x - centerX, point.y - centerY);
            QVERIFY2(std::fabs(distance - 20) < 0.01, qPrintable(QString("%1,%2").arg(point.x).arg(point.y)));
            farthest = std::max(farthest, point.y);
        }
        QVERIFY2(std::fabs(farthest - farthestY) < 0.1, qPrintable(QString::number(farthest)));
    }

    // An element that draws itself, what is around it, itself through others, another file, and nothing.
    void refusesCycles()
    {
        for (const char* body : {"<use id='a' href='#a'/>", "<g id='a'><use href='#a'/></g>",
                 "<defs><g id='a'><use href='#b'/></g><g id='b'><use href='#a'/></g></defs><use href='#a'/>",
                 "<use href='other.svg#a'/>", "<use href='#missing'/><use/>"}) {
            const auto drawing = TestDrawing::fromBody(QByteArray(body) + "<R/>");
            QCOMPARE(drawing.records() + drawing.error(), QString("R"));
            QVERIFY2(drawing.warnings().contains("references to missing"), body);
        }
    }

    // Ten levels, each drawing the next ten times.
    void boundsMultiplication()
    {
        // The leaf is a shape, nothing at all, a long path, a text.
        for (const QByteArray& leaf : {QByteArray("<R/>"), QByteArray(),
                 "<path d='M0 0" + QByteArray(100000, ' ') + "'/>", "<text>" + QByteArray(100000, 'x') + "</text>"}) {
            QByteArray body = "<g id='l0'>" + leaf + "</g>";
            for (int level = 1; level <= 10; ++level) {
                const QByteArray use = "<use href='#l" + QByteArray::number(level - 1) + "'/>";
                body += "<g id='l" + QByteArray::number(level) + "'>" + use.repeated(10) + "</g>\n";
            }
            const auto drawing = TestDrawing::fromBody("<defs>" + body + "</defs><use href='#l10'/>");
            QVERIFY(!drawing.isRead());
            QVERIFY2(drawing.error().contains(", expected "), qPrintable(drawing.error()));
        }
    }

    void readsParameters()
    {
        const auto plain = TestDrawing::fromFile("<svg/>");
        QVERIFY2(plain.isRead(), qPrintable(plain.error()));
        const zel_Parameter defaults = plain.parser().getSVGParameter();
        QVERIFY(defaults.initialScale == 1.0 && defaults.scaleStep == 0.25);
        QVERIFY(defaults.minimumScale <= 0.25 && defaults.maximumScale >= 16.0);
        QVERIFY(defaults.width > 0 && defaults.height > 0);

        const auto drawing = TestDrawing::fromFile(
            Root + "t:initial-scale='2' t:minimum-scale='.5' t:maximum-scale=' 3e1 ' t:scale-step='0.125'/>");
        const zel_Parameter parameter = drawing.parser().getSVGParameter();
        QVERIFY(parameter.initialScale == 2.0 && parameter.scaleStep == 0.125);
        QVERIFY(parameter.minimumScale == 0.5 && parameter.maximumScale == 30.0);
        // One limit alone may lie beyond what the other would be.
        QVERIFY(TestDrawing::fromFile(Root + "t:minimum-scale='40'/>").parser().getSVGParameter().maximumScale >= 40.0);
        QVERIFY(
            TestDrawing::fromFile(Root + "t:maximum-scale='.01'/>").parser().getSVGParameter().minimumScale <= 0.01);
    }

    void readsLayerRanges()
    {
        const auto drawing
            = TestDrawing::fromBody("<R/><g t:layer='300'><R t:layer='-2'/><R/></g><metadata><t:layer number='5' "
                                    "minimum='1.5' maximum='6' name='Sites'/><t:layer number='6' minimum='2'/><r "
                                    "xmlns='urn:x'><t:layer number='7'/></r></metadata><t:layer number='8'/>");
        QVERIFY2(drawing.isRead(), qPrintable(drawing.error()));
        const auto ranges = drawing.parser().getSVGParameter().layerRanges;
        QCOMPARE(ranges.size(), std::size_t(5));
        QVERIFY(ranges.at(5).minimum == 1.5 && ranges.at(5).maximum == 6.0);
        QVERIFY(ranges.at(6).minimum == 2.0 && ranges.at(6).maximum > 1e6);
        for (int used : {-2, 0, 300}) // shown at any scale, also at those below zero that zooming out may reach
            QVERIFY(ranges.at(used).minimum < -1e6 && ranges.at(used).maximum > 1e6);
    }

    void identifiesElements_data()
    {
        // The second text: id/layer/name/tooltip of each record, and a '!' for the flag.
        const Rows<QByteArray, QString> row;
        for (const auto& each : zeltest::casesIn("svg/cases/identities.txt"))
            row(each.name.constData(), each.content, each.result);
        row("names in ISO 8859-1", "<R id='\xC3\xA4\xE2\x80\x93' t:popup='a\xE2\x84\xA2'/>", "-1/0/\u00E4-/a(TM)");
    }

    void identifiesElements()
    {
        const auto [body, identities] = row<QByteArray, QString>();
        const auto drawing = TestDrawing::fromBody(body);
        QVERIFY2(drawing.isRead(), qPrintable(drawing.error()));
        QStringList seen;
        for (const zel_SingleGraphItem* item : drawing.items()) {
            seen.append(QString("%1/%2/").arg(item->id).arg(item->layer) + QString::fromLatin1(item->name) + '/'
                + QString::fromLatin1(item->tooltip) + (item->flag ? QString("!") : QString()));
        }
        QCOMPARE(seen.join("; "), identities);
    }

    void refusesBadValues_data()
    {
        const Rows<QByteArray, QString> row;
        for (const auto& each : zeltest::casesIn("svg/cases/values.txt"))
            row(each.name.constData(), each.content, each.result);
    }

    void refusesBadValues()
    {
        const auto [file, error] = row<QByteArray, QString>();
        const auto drawing = TestDrawing::fromFile(file);
        QVERIFY(!drawing.isRead());
        QCOMPARE(drawing.error(), error);
    }
};

ZEL_TEST_MAIN(TestSvgShapes)
#include "tst_svgshapes.moc"
