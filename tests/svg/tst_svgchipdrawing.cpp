// SPDX-License-Identifier: MIT
#include "tests/svg/drawing.h"

namespace {

const QByteArray Root = "<svg xmlns='http://www.w3.org/2000/svg' xmlns:t='urn:tovanel:chip-drawing' ";

} // namespace

// What a chip drawing says beyond SVG: parameters, layers, ids, tooltips, flags.
class TestSvgChipDrawing : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
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
        row("an own title, inherited popup", "<g t:popup='p'><R><title>t</title></R><R/></g>", "-1/0//t; -2/0//p");
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
        row("in ISO 8859-1", "<R id='\xC3\xA4\xE2\x80\x93' t:popup='a\xE2\x84\xA2'/>", "-1/0/\u00E4-/a(TM)");
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
        QCOMPARE(seen.join(QString("; ")), identities);
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

ZEL_TEST_MAIN(TestSvgChipDrawing)
#include "tst_svgchipdrawing.moc"
