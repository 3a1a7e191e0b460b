// SPDX-License-Identifier: MIT
#include "tests/svg/drawing.h"
#include "tests/svg/gzipped.h"

#include <QFont>
#include <QFontMetricsF>

#include <cmath>

class TestSvgText : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    // At a font size of 1000 in DejaVu Sans "A" is 684 wide, "B" 686, a blank 318.
    void placesText_data()
    {
        const Rows<QByteArray, QString> row;
        row("at its place", "<text x='1' y='2'>A</text>", "text 'A' 1,2");
        row("in the middle", "<text x='1000' text-anchor='middle'>AB</text>", "text 'AB' 315,0");
        row("at the end", "<g text-anchor='end'><text x='2000'>AB</text></g>", "text 'AB' 630,0");
        row("a tspan of the same look goes on", "<text>A<tspan fill='red'>B</tspan>A</text>",
            "text 'A' 0,0; text 'B' 684,0 red; text 'A' 1370,0");
        row("anchored as a whole", "<text x='1000' text-anchor='middle'>A<tspan fill='red'>B</tspan></text>",
            "text 'A' 315,0; text 'B' 999,0 red");
        row("a tspan with a place of its own is a chunk of its own",
            "<text x='5' text-anchor='end'>A<tspan x='1000' y='7'>B</tspan></text>", "text 'A' -679,0; text 'B' 314,7");
        row("shift", "<text x='10' dx='1' dy='2'>A<tspan dy='1em'>B</tspan></text>",
            "text 'A' 11,2; text 'B' 695,1002");
        row("a place for each character", "<text x='1 2,3'>ABBA</text>", "text 'A' 1,0; text 'B' 2,0; text 'BA' 3,0");
        row("a mark counts as a character",
            "<text x='1 2 3'>A\xCC\x88"
            "B</text>",
            "text '\u00C4' 1,0; text 'B' 3,0");
        row("blanks fold", "<text>\n  A \t\n <tspan> B</tspan>  \n</text>", "text 'A ' 0,0; text 'B' 1002,0");
        row("unless they are kept", "<text xml:space='preserve'> A  B </text>", "text ' A  B ' 0,0");
        row("blanks alone are nothing", "<text>  </text><text/>", "");
        row("a title is no text", "<text><title>T</title>A<desc>d</desc></text>", "text 'A' 0,0");
        row("hidden parts take no room", "<text>A<tspan display='none'>B</tspan>A</text>", "text 'AA' 0,0");
        row("no fill, no text", "<text fill='none'>A<tspan stroke='red' stroke-width='0'>B</tspan></text>", "");
        row("no fill, but an outline", "<text fill='none' stroke='red'>A<tspan stroke='blue'>B</tspan></text>",
            "text 'A' 0,0 red; text 'B' 684,0 blue");
        row("from right to left it is turned round in its room",
            "<g transform='scale(-1 1)'><text x='10'>AB</text><text x='10' text-anchor='end'>A</text></g>",
            "text 'AB' -1380,0; text 'A' -10,0");
        row("with all its parts",
            "<g transform='scale(-1 1)'><text>A<tspan fill='red'>B</tspan></text><text x='0 700'>AB</text></g>",
            "text 'A' -1370,0; text 'B' -686,0 red; text 'A' -1386,0; text 'B' -686,0");
        row("columns and lines by themselves",
            "<g transform='scale(-1 1)'><text x='0 5000' y='0'>AB<tspan x='0' y='5'>A</tspan></text></g>",
            "text 'A' -684,0; text 'B' -5686,0; text 'A' -684,5");
        row("upside down it is stood up in its room",
            "<g transform='scale(1 -1)'><text y='5'>A</text><text dominant-baseline='hanging'>A</text></g>",
            "text 'A' 0,724; text 'A' 0,0");
        row("in a mirror that turns it",
            "<text transform='matrix(0 -1 -1 0 0 0)'>A</text><text transform='rotate(90) scale(1 -1)'>A</text>",
            "text 'A' 0,-684 turned 90; text 'A' -729,0 turned 90");
        row("turned by half, it stands on its head", "<text transform='scale(-1)'>A</text>", "text 'A' 0,0 turned 180");
        row("no size, no text", "<text font-size='0'>A</text>", "");
        row("central", "<text dominant-baseline='central'>A</text>", "text 'A' 0,346");
        row("a link is a tspan", "<text><a>A</a></text>", "text 'A' 0,0");
    }

    void placesText()
    {
        const auto [text, records] = row<QByteArray, QString>();
        QCOMPARE(recordsOf("<g font-size='1000'>" + text + "</g>"), records);
    }

    void translatesCharacters_data()
    {
        // text: ISO 8859-1
        const Rows<QByteArray, QByteArray, bool> row;
        const auto body = [](const char* text) { return QByteArray("<svg><text>") + text + "</text></svg>"; };
        const auto in = [&body](const char* encoding, const char* text) {
            return QByteArray("<?xml version='1.0' encoding='") + encoding + "'?>" + body(text);
        };
        row("UTF-8", body("\xC2\xB5m \xC3\xA4"), "\xB5m \xE4", true);
        row("dashes, quotes, dots and units",
            body("1\xE2\x80\x93"
                 "2\xE2\x80\x94\xE2\x80\x9Cx\xE2\x80\x9D\xE2\x80\xA6 5\xCE\xA9"),
            "1-2--\"x\"... 5Ohm", true);
        row("letters with combining marks", body("u\xCC\x88&#x41;&#x30A;n\xCC\x83 c\xCC\x8C\xC4\x8D e\xCC\x82\xCC\x81"),
            "\xFC\xC5\xF1 cc \xEA", true);
        row("marks without a letter, and other marks", body("-\xCC\x88R\xCC\x85"), "-?R?", false);
        row("anything else is a question mark", body("a\xE4\xB8\xAD\xF0\x9F\x98\x80z?"), "a??z?", false);
        row("character references and CDATA", body("&#65;&lt;<![CDATA[<B>]]>"), "A<<B>", true);
        row("Latin-1 by declaration", in("ISO-8859-1", "\xE4\xB5"), "\xE4\xB5", true);
        row("windows-1250 by declaration", in("Windows-1250", "\xE9\x8A\xBE\xA5"), "\xE9SlA", true);
        row("windows-1252 by its other name", in("cp1252", "\x80\xE4"), "EUR\xE4", true);
        row("compressed", gzipped(body("A")), "A", true);
        row("compressed in parts and padded",
            gzipped("<svg><te") + gzipped("") + QByteArray(3, '\0') + gzipped("xt>A</text></svg>")
                + QByteArray(9, '\0'),
            "A", true);
        const QString wide = QChar(0xFEFF) + QString::fromUtf8(body("\xC3\xA4"));
        row("UTF-16", QByteArray(reinterpret_cast<const char*>(wide.utf16()), wide.size() * 2), "\xE4", true);
    }

    void translatesCharacters()
    {
        const auto [file, text, isComplete] = row<QByteArray, QByteArray, bool>();
        const auto drawing = TestDrawing::fromFile(file);
        QVERIFY2(drawing.isRead(), qPrintable(drawing.error()));
        const auto* record = drawing.record<zel_Text>(0);
        QVERIFY(record);
        QCOMPARE(QByteArray::fromStdString(record->text), text);
        QCOMPARE(drawing.parser().warnings().empty(), isComplete);
    }

    // The parser knows no fonts; what it takes a text to be wide is what the font draws.
    void centresAsTheFontDoes()
    {
        const QByteArray label = "SLICE_X12Y7 (\xE4/W) fifo_mgr@1.8V";
        const auto drawing = TestDrawing::fromFile(
            "<?xml version='1.0' encoding='ISO-8859-1'?><svg><text font-size='100' text-anchor='end'>" + label
            + "</text></svg>");
        const auto* record = drawing.record<zel_Text>(0);
        QVERIFY(record);
        QFont font(QString("DejaVu Sans"));
        font.setPixelSize(100);
        font.setKerning(false);
        const double width = QFontMetricsF(font).horizontalAdvance(QString::fromLatin1(label));
        QVERIFY2(std::fabs(-record->x - width) < 0.01 * width, qPrintable(QString::number(-record->x / width)));
    }

    void followsTransforms()
    {
        const auto drawing = TestDrawing::fromBody("<text x='1' font-size='4' transform='translate(10 20) rotate(90) "
                                                   "scale(2)'>A<tspan dy='4'>B</tspan></text>");
        QCOMPARE(drawing.records(), QString("text 'A' 10,22 turned 90; text 'B' 2,27.472 turned 90"));
        QCOMPARE(drawing.record<zel_Text>(0)->fontSize, 8.0);
        QVERIFY(drawing.record<zel_Text>(0)->spans.empty());
        QCOMPARE(drawing.record<zel_Text>(1)->spans.size(), std::size_t(1));
        QCOMPARE(drawing.record<zel_Text>(1)->spans[0].text, std::string("B"));
    }

    void readsFonts_data()
    {
        const Rows<QByteArray, QByteArray, double> add;
        const auto row
            = [&add](const char* style, const char* family, double size) { add(style, style, family, size); };
        row("fill:red", "Base", 20);
        row("font-family:'DejaVu Sans', serif", "DejaVu Sans", 20);
        row("font-size:150%", "Base", 30);
        row("font-size:2em", "Base", 40);
        row("font-size:12pt", "Base", 16);
        row("font-size:larger", "Base", 24);
        row("font-size:medium", "Base", 16);
        row("font-size:-3", "Base", 20);
        row("font:bold 12px Arial", "Arial", 12);
        row("font:italic 700 2em/1.5 'A B',C", "A B", 40);
    }

    void readsFonts()
    {
        const auto [style, family, size] = row<QByteArray, QByteArray, double>();
        const auto drawing
            = TestDrawing::fromBody("<g font-family='Base' font-size='20'><text style=\"" + style + "\">A</text></g>");
        const auto* record = drawing.record<zel_Text>(0);
        QVERIFY(record);
        QCOMPARE(QByteArray::fromStdString(record->fontFamily), family);
        QCOMPARE(record->fontSize, size);
    }
};

ZEL_TEST_MAIN(TestSvgText)
#include "tst_svgtext.moc"
