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
        row("transforms apply from the right", "<rect size='2x1' transform='translate(10,5) scale(2 3)'/>",
            "rect 10,5 4x3");
        row("a group's transform comes last", "<g transform='scale(2)'><R transform='translate(3)'/></g>",
            "rect 6,0 2x2");
        row("a quarter turn keeps rects", "<rect x='1' size='4x2' transform='rotate(90)'/>", "rect -2,1 2x4");
        row("three quarters around a point do so", "<rect size='4x2' transform='rotate(-90 10 10)'/>", "rect 0,16 2x4");
        row("a mirror does so", "<rect x='1' y='1' size='4x2' transform='matrix(-1 0 0 1 10 0)'/>", "rect 5,1 4x2");
        row("a turned rect is a polygon", "<rect size='10x10' transform='rotate(45)'/>",
            "polygon 0,0 7.071,7.071 0,14.142 -7.071,7.071");
        row("a skewed rect is a polygon", "<rect size='10x10' transform='skewX(45)'/>", "polygon 0,0 10,0 20,10 10,10");
        row("skewed the other way", "<polygon points='0,0 10,0 10,10' transform='skewY(45)'/>",
            "polygon 0,0 10,10 10,20");
        row("transforms as a style, with units", "<R style='transform:translate(1px, 2px)rotate(.25turn)'/>",
            "rect 0,2 1x1");
        row("a transform that cannot be read is left out", "<R transform='translate(1,2) turn(3)'/>", "R");
        row("strokes scale by their direction",
            "<g stroke='red' stroke-width='2' transform='scale(1 4)'><line x2='1'/><line y2='1'/><line x2='4' "
            "y2='1'/></g>",
            "line 0,0 1,0 red 8; line 0,0 0,4 red 2; line 0,0 4,4 red 5.875");
        row("also those of rects and turned ones",
            "<g fill='none' stroke='red'><R transform='scale(1 4)'/><line x2='1' transform='rotate(90) scale(1 "
            "4)'/></g>",
            "line 0,0 1,0 red 4; line 1,0 1,4 red 1; line 1,4 0,4 red 4; line 0,4 0,0 red 1; line 0,0 0,1 red 4");
        row("a border by the axes' mean", "<R stroke='red' transform='scale(1 4)'/>", "rect 0,0 1x4 #000000 red 2");
        row("unless they are fixed",
            "<line x2='1' stroke='red' vector-effect='non-scaling-stroke' transform='scale(4)'/>",
            "line 0,0 4,0 red 1");
        row("a rect without fill is its border", "<rect size='2x1' fill='none' stroke='red'/>",
            "line 0,0 2,0 red 1; line 2,0 2,1 red 1; line 2,1 0,1 red 1; line 0,1 0,0 red 1");
        row("a stroked polygon is a polygon and then lines", "<polygon points='0 0,4 0 4,3' stroke='red'/>",
            "polygon 0,0 4,0 4,3; line 0,0 4,0 red 1; line 4,0 4,3 red 1; line 4,3 0,0 red 1");
        row("a polyline is open", "<polyline points='0,0 4,0 4,3' fill='none' stroke='red'/>",
            "line 0,0 4,0 red 1; line 4,0 4,3 red 1");
        row("an odd coordinate is lost", "<polyline points='0,0 4,0 4' fill='none' stroke='red'/>",
            "line 0,0 4,0 red 1");
        row("a line has no fill", "<line x2='5' fill='red'/>", "");
        row("corners rounded by next to nothing", "<rect size='10x10' rx='0.1'/>", "rect 0,0 10x10");
        row("a transform to nothing", "<R transform='scale(0)'/>", "");
        row("a hole by the even-odd rule is bridged", "<path fill-rule='evenodd' d='M0 0h9v9zM1 1h2v2z'/>",
            "polygon 0,0 9,0 9,9 0,0 1,1 3,1 3,3 1,1 0,0");
        row("a hole that turns the other way is bridged", "<path d='M0 0h9v9zM1 1v2h2z'/>",
            "polygon 0,0 9,0 9,9 0,0 1,1 1,3 3,3 1,1 0,0");
        row("parts that turn alike overlap", "<path d='M0 0h9v9zM1 1h2v2z'/>",
            "polygon 0,0 9,0 9,9; polygon 1,1 3,1 3,3");
        row("an open subpath is filled as if closed", "<path d='M0 0h9v9'/>", "polygon 0,0 9,0 9,9");
        row("back at the start is as good as closed", "<path d='M0 0h9v9L0 0'/>", "polygon 0,0 9,0 9,9");
        row("two corners enclose nothing", "<path d='M0 0h9'/>", "");
        // These are drawn by <use>.
        row("of what comes later, by either reference",
            "<use href='#r' x='5'/><use xlink:href='#r' y='5'/><defs><R id='r'/></defs>", "rect 5,0 1x1; rect 0,5 1x1");
        row("by an identifier of XML", "<R xml:id='r'/><use href='#r' x='3'/>", "R; rect 3,0 1x1");
        row("of what is drawn itself", "<R id='r'/><use href='#r' transform='scale(2)' x='3'/>", "R; rect 6,0 2x2");
        row("inherits from its use", "<g fill='red'><R id='r'/></g><use href='#r' fill='blue'/>", "R red; R blue");
        row("selectors look at where it stands",
            "<style>.there rect{fill:red} .here rect{fill:blue}</style><defs class='there'><rect id='r' width='1' "
            "height='1'/></defs><g class='here'><use href='#r'/></g>",
            "R red");
        row("a symbol with a view box fills the size of the use",
            "<symbol id='s' viewBox='0 0 10 10'><rect size='5x10'/></symbol><use href='#s' width='20' height='20'/>",
            "rect 0,0 10x20");
        row("a symbol without one is drawn as it is",
            "<symbol id='s'><rect size='5x10'/></symbol><use href='#s' x='1' size='20x20'/>", "rect 1,0 5x10");
        row("percentages are of the symbol's view box",
            "<symbol id='s' viewBox='0 0 10 10'><rect size='50%x10%'/></symbol><use href='#s' width='20' height='20'/>",
            "rect 0,0 10x2");
        row("a nested drawing takes its size from the use",
            "<defs><svg id='s' size='5x5' viewBox='0 0 1 1'><R/></svg></defs><use href='#s'/><use href='#s' "
            "size='7x7'/>",
            "rect 0,0 5x5; rect 0,0 7x7");
        row("nested uses add up", "<defs><g id='a'><use href='#b' x='1'/></g><R id='b'/></defs><use href='#a' x='10'/>",
            "rect 11,0 1x1");
        row("a nested drawing lies in its own viewport",
            "<svg x='10' y='20' size='50x50' viewBox='0 0 100 100'><rect size='10%x10'/></svg>", "rect 10,20 5x5");
        row("texts", "<defs><text id='t'>A</text></defs><use href='#t' x='2'/>", "text 'A' 2,0");
        row("a hidden target is not drawn, one in something hidden is",
            "<R id='a' display='none'/><g display='none'><rect id='b' size='2x2'/></g><use href='#a'/><use href='#b'/>",
            "rect 0,0 2x2");
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
        row("without a word of it", "<R/><R id='n'/>", "-1/0//; -2/0/n/");
        row("all given", "<R xml:id='n' t:id='0' t:layer='3' t:popup='p' t:flag='true'/>", "0/3/n/p!");
        row("inherited but for name and flag",
            "<g id='n' t:id='7' t:layer='3' t:popup='p' t:flag='true'><g><R/></g><R t:id='8'/></g><R/>",
            "7/3//p; 8/3//p; -1/0//");
        row("a title without popup", "<g><title> t\n</title><R/><R><title>u</title></R></g>", "-1/0//t; -2/0//u");
        row("a popup goes before the title", "<R t:popup='p'><title>t</title></R>", "-1/0//p");
        row("an own title goes before an inherited popup", "<g t:popup='p'><R><title>t</title></R><R/></g>",
            "-1/0//t; -2/0//p");
        row("an empty popup silences the inherited one", "<g t:popup='p'><R t:popup=''/></g>", "-1/0//");
        row("a title that comes late", "<g><R/><R t:popup='p'/><title>t</title><R/></g>", "-1/0//t; -2/0//p; -3/0//t");
        row("a popup that reads like the inherited one is an own one",
            "<g t:popup='p'><g><R t:popup='p'/><R/><title>t</title></g></g>", "-1/0//p; -2/0//t");
        row("an empty popup is an own one", "<g><R t:popup=''/><R/><title>t</title></g>", "-1/0//; -2/0//t");
        row("titles and metadata are not drawn", "<g><title>t<R/></title><metadata><R/></metadata><R/></g>", "-1/0//t");
        row("the drawing's own title is nobody's tooltip", "<title>drawing</title><R/>", "-1/0//");
        row("all records of an element have its identity", "<polygon id='n' points='0,0 1,0 1,1' stroke='red'/><R/>",
            "-1/0/n/; -1/0/n/; -1/0/n/; -1/0/n/; -2/0//");
        row("instances are elements of their own",
            "<defs><R id='n'/></defs><use href='#n' t:id='4'/><use href='#n'><title>t</title></use>",
            "4/0/n/; -1/0/n/t");
        row("texts and their parts",
            "<text t:popup='p' id='n'>A<tspan t:id='3' t:layer='1' fill='red'>B</tspan></text>", "-1/0/n/p; 3/1/n/p");
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
        const auto root = [&row](const char* name, const char* attributes, const QString& error) {
            row(name, Root + attributes + "/>", ":1:76: found tovanel:" + error);
        };
        root("a scale of zero", "t:initial-scale='0'", "initial-scale=\"0\", expected a number above 0");
        root("a scale that is none", "t:scale-step='1x'", "scale-step=\"1x\", expected a number above 0");
        root("a scale without end", "t:maximum-scale='inf'", "maximum-scale=\"inf\", expected a number above 0");
        root("limits the wrong way round", "t:minimum-scale='4' t:maximum-scale='2'",
            "minimum-scale=\"4\", expected at most tovanel:maximum-scale");
        const auto body = [&row](const char* name, const char* element, int column, const QString& error) {
            row(name, Root + ">\n <g/>" + element + "</svg>", QString(":2:%1: found %2").arg(column).arg(error));
        };
        body("a layer that is no number", "<g t:layer='top'/>", 9, "tovanel:layer=\"top\", expected a whole number");
        body("a layer too large", "<g t:layer='99999999999'/>", 9,
            "tovanel:layer=\"99999999999\", expected a whole number");
        body("a negative id", "<g t:id='-4'/>", 9, "tovanel:id=\"-4\", expected a whole number from 0 to 2147483647");
        body("a fractional id", "<g t:id='4.5'/>", 9,
            "tovanel:id=\"4.5\", expected a whole number from 0 to 2147483647");
        body("a flag that is neither", "<rect width='1' height='1' t:flag='yes'/>", 33,
            "tovanel:flag=\"yes\", expected true or false");
        body("a range without its layer", "<metadata><t:layer minimum='1'/></metadata>", 16,
            "number=\"\", expected the layer's whole number");
        body("a range the wrong way round", "<metadata><t:layer number='1' minimum='3' maximum='2'/></metadata>", 36,
            "minimum=\"3\", expected at most the layer's maximum");
        body("a range that is none", "<metadata><t:layer number='1' maximum='nan'/></metadata>", 36,
            "maximum=\"nan\", expected a number");
        body("a layer with two ranges", "<metadata><t:layer number='1'/><t:layer number='1'/></metadata>", 46,
            "number=\"1\", expected each layer once");
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
