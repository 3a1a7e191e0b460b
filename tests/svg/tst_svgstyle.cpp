// SPDX-License-Identifier: MIT
#include "tests/svg/drawing.h"
#include "tests/svg/gzipped.h"

#include <QFont>
#include <QFontMetricsF>

#include <cmath>

// The colour and the stroke that a shape ends up with, and the texts with their fonts.
class TestSvgStyle : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void readsColors()
    {
        const std::pair<QByteArray, QString> colors[]
            = {{"#1aF", "#11aaff"}, {"#12aBf0", "#12abf0"}, {"#0008", "#777777"}, {"#00000080", "#7f7f7f"},
                {"CornflowerBlue", "#6495ed"}, {"yellowgreen", "#9acd32"}, {"aliceblue", "#f0f8ff"},
                {"rgb(1,2,3)", "#010203"}, {"rgb( 100%, 50% ,0% )", "#ff8000"}, {"rgb(300,-5,0)", "red"},
                {"rgba(0,0,0,0.5)", "#808080"}, {"rgb(0 0 0 / 50%)", "#808080"}, {"hsl(120,100%,25%)", "#008000"},
                {"hsl(-240 100% 50%)", "lime"}, {"hsla(0.5turn, 100%, 50%, 1)", "#00ffff"}, {"currentColor", "blue"},
                {"url(#nothing) red", "red"}, {"RGB(" + QByteArray(200, ' ') + "1,2,3)", "#010203"},
                // These are no colours and leave the inherited one.
                {"#12", "#008000"}, {"#gggggg", "#008000"}, {"rgb(1,2)", "#008000"}, {"nocolour", "#008000"},
                {"rgb(1e999,0,0)", "#008000"}};
        for (const auto& [color, fill] : colors) {
            const QString records = recordsOf("<g fill='green' color='blue'><R fill='" + color + "'/></g>");
            QVERIFY2(records == "R " + fill, color + ": " + records.toUtf8());
        }
    }

    // A body becomes records with these colours, strokes and places.
    void bodiesBecomeRecords_data()
    {
        const Rows<QByteArray, QString> row;
        for (const auto& each : zeltest::casesIn("svg/cases/styles.txt"))
            row(each.name.constData(), each.content, each.result);
        const auto text = [&row](const char* name, const QByteArray& body, const QString& records) {
            row(name, "<g font-size='1000'>" + body + "</g>", records);
        };
        // At a font size of 1000 in DejaVu Sans "A" is 684 wide, "B" 686, a blank 318.
        for (const auto& each : zeltest::casesIn("svg/cases/texts.txt"))
            text(each.name.constData(), each.content, each.result);
        text("a mark counts as a character", "<text x='1 2 3'>A\u0308B</text>", "text '\u00C4' 1,0; text 'B' 3,0");
        text("blanks fold", "<text>\n  A \t\n <tspan> B</tspan>  \n</text>", "text 'A ' 0,0; text 'B' 1002,0");
    }

    void bodiesBecomeRecords()
    {
        const auto [body, records] = row<QByteArray, QString>();
        QCOMPARE(recordsOf(body), records);
    }

    // The other radius takes the place of a negative one.
    void negativeRadiiCountAsNone()
    {
        const auto drawing = TestDrawing::fromBody(
            "<ellipse rx='-1' ry='2'/><ellipse rx='2' ry='-1'/><ellipse rx='-1'/><circle r='-1'/>");
        QCOMPARE(drawing.error(), QString());
        QCOMPARE(drawing.items().size(), std::size_t(2));
    }

    void warnsOncePerKind_data()
    {
        const Rows<QByteArray, QString> add;
        const auto row = [&add](const QByteArray& body, const char* w) { add(body.constData(), body + body, w); };
        row("<image/>\n<g mask='url(#m)'/><g mask='url(#m)' filter='none'/>",
            "line 2: pictures are not drawn; line 3: masks are left out");
        for (const char* size : {"<line x2='1' stroke='red' stroke-width='-2'/>", "<circle r='-1'/>",
                 "<rect width='-1'/>", "<R rx='-1'/>", "<ellipse rx='1' ry='-2'/>", "<text font-size='-3'>A</text>",
                 "<g opacity='0.1mm'/>", "<g stroke-opacity='.5%x'/>", "<svg width='-1'/>"})
            row(size, "line 2: numbers that cannot be read or may not be negative are left out");
        for (const char* style : {"font-weight:bold", "font-weight:700", "font:bold 12px Arial"})
            row(QByteArray("<g style='") + style + "'><text>A</text></g>", "line 2: bold letters are drawn plain");
        for (const char* style : {"font-style:oblique 20deg", "font:italic small 9px Arial"})
            row(QByteArray("<text style='") + style + "'>A</text>", "line 2: italic letters are drawn upright");
        row("<text text-decoration='underline'>A</text>", "line 2: lines under, over and through texts are not drawn");
        for (const char* style : {"letter-spacing:2", "word-spacing:-.1em"})
            row(QByteArray("<text style='") + style + "'>A</text>",
                "line 2: the spacing of letters and words is left out");
        for (const char* style : {"tb", "vertical-rl", "sideways-lr"})
            row(QByteArray("<text writing-mode='") + style + "'>A</text>",
                "line 2: vertical texts are drawn horizontally");
        for (const char* attribute : {"rotate='9'", "textLength='9'", "direction='rtl'", "baseline-shift='super'",
                 "font-variant='small-caps'", "font-stretch='50%'", "text-transform='uppercase'"})
            row(QByteArray("<text ") + attribute + ">A</text>",
                "line 2: turned, raised, stretched, converted and right-to-left letters are drawn plain");
        row("<g font-weight='bold' font-style='italic' letter-spacing='2' writing-mode='tb'><text font-weight='400' "
            "font-style='normal' letter-spacing='0px' writing-mode='lr-tb' word-spacing='normal' direction='ltr' "
            "text-decoration='none' baseline-shift='baseline' font-variant='normal'>A</text><rect/></g>",
            "");
        for (const char* body : {"<svg x='5' size='5x5'><rect size='5x6'/></svg>",
                 "<svg x='5' size='5x5'><g transform='translate(-1)'><line x2='2' stroke='red'/></g></svg>",
                 "<svg size='5x5'><svg size='9x9'><path d='M6 1h1v1z'/></svg></svg>",
                 "<symbol id='s' viewBox='0 0 9 9'><text x='10'>A</text></symbol><use href='#s' size='9x9'/>"})
            row(body, "line 2: what reaches beyond nested drawings and symbols is not cut off");
        row("<svg x='5' size='5x5'><rect size='5x5'/></svg><rect size='50x50'/><svg size='5x5' "
            "overflow='visible'><rect size='9x9'/></svg>",
            "");
    }

    void warnsOncePerKind()
    {
        const auto [body, warnings] = row<QByteArray, QString>();
        const auto drawing = TestDrawing::fromBody(body);
        QCOMPARE(drawing.warnings() + drawing.error(), warnings);
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
        row("dashes, quotes, dots and units", body("1\u20132\u2014\u201Cx\u201D\u2026 5\u03A9"), "1-2--\"x\"... 5Ohm",
            true);
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
        QFont font("DejaVu Sans");
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

ZEL_TEST_MAIN(TestSvgStyle)
#include "tst_svgstyle.moc"
