// SPDX-License-Identifier: MIT
#include "tests/support/testmain.h"
#include "tests/svg/drawing.h"
#include "tests/svg/gzipped.h"

#include <QFont>
#include <QFontMetricsF>
#include <QTest>

#include <cmath>

class TestSvgText : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void placesText_data();
    void placesText();
    void translatesCharacters_data();
    void translatesCharacters();
    void centresAsTheFontDoes();
    void followsTransforms();
    void readsFonts_data();
    void readsFonts();
};

// At a font size of 1000 in DejaVu Sans "A" is 684 wide, "B" 686, a blank 318.
void TestSvgText::placesText_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("records");
    const auto row = [](const char* name, const char* text, const char* records) {
        QTest::newRow(name) << QByteArray(text) << QString::fromLatin1(records);
    };
    row("at its place", "<text x='1' y='2'>A</text>", "text 'A' 1,2 #000000");
    row("in the middle", "<text x='1000' text-anchor='middle'>AB</text>", "text 'AB' 315,0 #000000");
    row("at the end", "<g text-anchor='end'><text x='2000'>AB</text></g>", "text 'AB' 630,0 #000000");
    row("a tspan of the same look goes on", "<text>A<tspan fill='red'>B</tspan>A</text>",
        "text 'A' 0,0 #000000; text 'B' 684,0 #ff0000; text 'A' 1370,0 #000000");
    row("anchored as a whole", "<text x='1000' text-anchor='middle'>A<tspan fill='red'>B</tspan></text>",
        "text 'A' 315,0 #000000; text 'B' 999,0 #ff0000");
    row("a tspan with a place of its own is a chunk of its own",
        "<text x='5' text-anchor='end'>A<tspan x='1000' y='7'>B</tspan></text>",
        "text 'A' -679,0 #000000; text 'B' 314,7 #000000");
    row("shifted", "<text x='10' dx='1' dy='2'>A<tspan dy='1em'>B</tspan></text>",
        "text 'A' 11,2 #000000; text 'B' 695,1002 #000000");
    row("a place for each character", "<text x='1 2,3'>ABBA</text>",
        "text 'A' 1,0 #000000; text 'B' 2,0 #000000; text 'BA' 3,0 #000000");
    row("a mark counts as a character",
        "<text x='1 2 3'>A\xCC\x88"
        "B</text>",
        "text '\xC4' 1,0 #000000; text 'B' 3,0 #000000");
    row("blanks fold", "<text>\n  A \t\n <tspan> B</tspan>  \n</text>",
        "text 'A ' 0,0 #000000; text 'B' 1002,0 #000000");
    row("unless they are kept", "<text xml:space='preserve'> A  B </text>", "text ' A  B ' 0,0 #000000");
    row("blanks alone are nothing", "<text>  </text><text/>", "");
    row("a title is no text", "<text><title>T</title>A<desc>d</desc></text>", "text 'A' 0,0 #000000");
    row("hidden parts take no room", "<text>A<tspan display='none'>B</tspan>A</text>", "text 'AA' 0,0 #000000");
    row("no fill, no text", "<text fill='none'>A<tspan stroke='red' stroke-width='0'>B</tspan></text>", "");
    row("no fill, but an outline", "<text fill='none' stroke='red'>A<tspan stroke='blue'>B</tspan></text>",
        "text 'A' 0,0 #ff0000; text 'B' 684,0 #0000ff");
    row("from right to left it is turned round in its room",
        "<g transform='scale(-1 1)'><text x='10'>AB</text><text x='10' text-anchor='end'>A</text></g>",
        "text 'AB' -1380,0 #000000; text 'A' -10,0 #000000");
    row("with all its parts",
        "<g transform='scale(-1 1)'><text>A<tspan fill='red'>B</tspan></text><text x='0 700'>AB</text></g>",
        "text 'A' -1370,0 #000000; text 'B' -686,0 #ff0000; text 'A' -1386,0 #000000; text 'B' -686,0 #000000");
    row("columns and lines by themselves",
        "<g transform='scale(-1 1)'><text x='0 5000' y='0'>AB<tspan x='0' y='5'>A</tspan></text></g>",
        "text 'A' -684,0 #000000; text 'B' -5686,0 #000000; text 'A' -684,5 #000000");
    row("upside down it is stood up in its room",
        "<g transform='scale(1 -1)'><text y='5'>A</text><text dominant-baseline='hanging'>A</text></g>",
        "text 'A' 0,724 #000000; text 'A' 0,0 #000000");
    row("in a mirror that turns it",
        "<text transform='matrix(0 -1 -1 0 0 0)'>A</text><text transform='rotate(90) scale(1 -1)'>A</text>",
        "text 'A' 0,-684 #000000 turned 90; text 'A' -729,0 #000000 turned 90");
    row("turned by half, it stands on its head", "<text transform='scale(-1)'>A</text>",
        "text 'A' 0,0 #000000 turned 180");
    row("no size, no text", "<text font-size='0'>A</text>", "");
    row("central", "<text dominant-baseline='central'>A</text>", "text 'A' 0,346 #000000");
    row("a link is a tspan", "<text><a>A</a></text>", "text 'A' 0,0 #000000");
}

void TestSvgText::placesText()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, records);
    const auto drawing = TestDrawing::fromBody("<g font-size='1000'>" + text + "</g>");
    QVERIFY2(drawing.isRead(), qPrintable(drawing.error()));
    QCOMPARE(drawing.records(), records);
}

void TestSvgText::translatesCharacters_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("text"); // ISO 8859-1
    QTest::addColumn<bool>("isComplete");
    const auto body = [](const char* text) { return QByteArray("<svg><text>") + text + "</text></svg>"; };
    QTest::newRow("UTF-8") << body("\xC2\xB5m \xC3\xA4") << QByteArray("\xB5m \xE4") << true;
    QTest::newRow("dashes, quotes, dots and units")
        << body("1\xE2\x80\x93"
                "2\xE2\x80\x94\xE2\x80\x9Cx\xE2\x80\x9D\xE2\x80\xA6 5\xCE\xA9")
        << QByteArray("1-2--\"x\"... 5Ohm") << true;
    QTest::newRow("letters with combining marks")
        << body("u\xCC\x88&#x41;&#x30A;n\xCC\x83 c\xCC\x8C\xC4\x8D e\xCC\x82\xCC\x81")
        << QByteArray("\xFC\xC5\xF1 cc \xEA") << true;
    QTest::newRow("marks without a letter, and other marks")
        << body("-\xCC\x88R\xCC\x85") << QByteArray("-?R?") << false;
    QTest::newRow("anything else is a question mark")
        << body("a\xE4\xB8\xAD\xF0\x9F\x98\x80z?") << QByteArray("a??z?") << false;
    QTest::newRow("character references and CDATA") << body("&#65;&lt;<![CDATA[<B>]]>") << QByteArray("A<<B>") << true;
    QTest::newRow("Latin-1 by declaration")
        << "<?xml version='1.0' encoding='ISO-8859-1'?>" + body("\xE4\xB5") << QByteArray("\xE4\xB5") << true;
    QTest::newRow("windows-1250 by declaration")
        << "<?xml version='1.0' encoding='Windows-1250'?>" + body("\xE9\x8A\xBE\xA5") << QByteArray("\xE9SlA") << true;
    QTest::newRow("windows-1252 by its other name")
        << "<?xml version='1.0' encoding='cp1252'?>" + body("\x80\xE4") << QByteArray("EUR\xE4") << true;
    QTest::newRow("compressed") << gzipped(body("A")) << QByteArray("A") << true;
    QTest::newRow("compressed in parts and padded")
        << gzipped("<svg><te") + gzipped("") + QByteArray(3, '\0') + gzipped("xt>A</text></svg>") + QByteArray(9, '\0')
        << QByteArray("A") << true;
    const QString wide = QChar(0xFEFF) + QString::fromUtf8(body("\xC3\xA4"));
    QTest::newRow("UTF-16 with its mark")
        << QByteArray(reinterpret_cast<const char*>(wide.utf16()), wide.size() * 2) << QByteArray("\xE4") << true;
}

void TestSvgText::translatesCharacters()
{
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, text);
    QFETCH(bool, isComplete);
    const auto drawing = TestDrawing::fromFile(file);
    QVERIFY2(drawing.isRead(), qPrintable(drawing.error()));
    const auto* record = drawing.record<zel_Text>(0);
    QVERIFY(record);
    QCOMPARE(QByteArray::fromStdString(record->text), text);
    QCOMPARE(drawing.parser().warnings().empty(), isComplete);
}

// The parser knows no fonts; what it takes a text to be wide is what the font draws.
void TestSvgText::centresAsTheFontDoes()
{
    const QByteArray label = "SLICE_X12Y7 (\xE4/W) fifo_mgr@1.8V";
    const auto drawing = TestDrawing::fromFile("<?xml version='1.0' encoding='ISO-8859-1'?><svg><text font-size='100' "
                                               "text-anchor='end'>"
        + label + "</text></svg>");
    const auto* record = drawing.record<zel_Text>(0);
    QVERIFY(record);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(100);
    font.setKerning(false);
    const double width = QFontMetricsF(font).horizontalAdvance(QString::fromLatin1(label));
    QVERIFY2(std::fabs(-record->x - width) < 0.01 * width, qPrintable(QString::number(-record->x / width)));
}

void TestSvgText::followsTransforms()
{
    const auto drawing = TestDrawing::fromBody(
        "<text x='1' font-size='4' transform='translate(10 20) rotate(90) scale(2)'>A<tspan dy='4'>B</tspan></text>");
    const auto* first = drawing.record<zel_Text>(0);
    const auto* second = drawing.record<zel_Text>(1);
    QVERIFY(first && second);
    QCOMPARE(describe(first), QStringLiteral("text 'A' 10,22 #000000 turned 90"));
    QCOMPARE(first->fontSize, 8.0);
    QVERIFY(first->spans.empty());
    QCOMPARE(describe(second), QStringLiteral("text 'B' 2,27.472 #000000 turned 90"));
    QCOMPARE(second->spans.size(), std::size_t(1));
    QCOMPARE(second->spans[0].text, std::string("B"));
}

void TestSvgText::readsFonts_data()
{
    QTest::addColumn<QByteArray>("style");
    QTest::addColumn<QByteArray>("family");
    QTest::addColumn<double>("size");
    const auto row = [](const char* style, const char* family, double size) {
        QTest::newRow(style) << QByteArray(style) << QByteArray(family) << size;
    };
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

void TestSvgText::readsFonts()
{
    QFETCH(QByteArray, style);
    QFETCH(QByteArray, family);
    QFETCH(double, size);
    const auto drawing
        = TestDrawing::fromBody("<g font-family='Base' font-size='20'><text style=\"" + style + "\">A</text></g>");
    const auto* record = drawing.record<zel_Text>(0);
    QVERIFY(record);
    QCOMPARE(QByteArray::fromStdString(record->fontFamily), family);
    QCOMPARE(record->fontSize, size);
}

ZEL_TEST_MAIN(TestSvgText)
#include "tst_svgtext.moc"
