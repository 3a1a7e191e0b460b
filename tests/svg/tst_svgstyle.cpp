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
        const QString Border = "line 0,0 1,0 red 1; line 1,0 1,1 red 1; line 1,1 0,1 red 1; line 0,1 0,0 red 1";
        row("the default is black without a stroke", "<R/>", "R");
        row("a group's style is inherited", "<g fill='red' style='stroke:blue'><R/></g>", "R red blue 1");
        row("the style attribute outweighs the attribute", "<R fill='red' style='fill:blue'/>", "R blue");
        row("a rule outweighs the attribute", "<style>rect{fill:blue}</style><R fill='red'/>", "R blue");
        row("style attributes outweigh rules", "<style>#a{fill:blue}</style><R id='a' style='fill:red'/>", "R red");
        row("important rules win", "<style>rect{fill:blue ! important}</style><R style='fill:red'/>", "R blue");
        row("id outweighs class outweighs type, whatever the order",
            "<style>#i{fill:red}.c{fill:green;stroke:lime}rect{fill:blue;stroke:navy;stroke-width:3}</style><rect "
            "id='i' class='b c' size='1x1'/>",
            "R red lime 3");
        row("of two alike the later counts", "<style>.a{fill:red}.b{fill:blue}</style><R class='b a'/>", "R blue");
        row("a sheet at the end of the drawing", "<R class='a'/><style>.a{fill:red}</style>", "R red");
        row("descendants, children and compounds",
            "<style>.p rect{fill:red} .p>rect{stroke:blue} g.p.q #z{stroke-width:2}</style><g class='q p'><R/><g><rect "
            "id='z' size='2x2'/></g></g>",
            "R red blue 1; rect 0,0 2x2 red");
        row("groups, comments and unknown rules",
            "<style>/* a { */ circle, .a , rect:hover {fill:red} @media print{.a{fill:blue}} .a[b]{fill:blue} <!-- "
            "--></style><R class='a'/>",
            "R red");
        row("a semicolon in quotes ends nothing", "<R style='font-family:\"a;b\";fill:red'/>", "R red");
        row("inherit takes what the parent has",
            "<g stroke='red' stroke-width='2'><g stroke='blue'><R "
            "style='stroke:inherit;stroke-width:initial'/></g></g>",
            "R #000000 blue 1");
        row("opacities multiply and blend with white",
            "<g opacity='0.5'><R fill='black' fill-opacity='50%' stroke='red'/></g>", "R #bfbfbf #ff8080 1");
        row("currentColor is the element's", "<g fill='currentColor' color='red'><R color='blue'/></g>", "R blue");
        row("a gradient is its middle, through a chain and a rule",
            "<style>.s{stop-color:#ff0}</style><R fill='url(\"#b\")'/><linearGradient id='a'><stop/><stop class='s' "
            "offset='25%' stop-opacity='.5'/><stop offset='.75' stop-color='red'/><stop "
            "offset='1'/></linearGradient><radialGradient id='b' xlink:href='#a'/>",
            "R #ffa040");
        row("a gradient with all stops on one side is the nearest",
            "<linearGradient id='a'><stop offset='.6' stop-color='red'/><stop "
            "offset='1'/></linearGradient><linearGradient id='b'><stop/><stop offset='.1' "
            "stop-color='lime'/></linearGradient><R fill='url(#a)'/><R fill='url(#b)'/>",
            "R red; R lime");
        row("a gradient without stops leaves it to the fallback",
            "<linearGradient id='a'/><R fill='url(#a) red' stroke='url(#a)'/>", "R red");
        row("comments in a style", "<R style='/* a */ fill:red;/* b:c; */ font-family:\"/*\";stroke:/**/blue/*'/>",
            "R red blue 1");
        row("sheets in another language and for another medium",
            "<style type=' TEXT/CSS; charset=utf-8' media='print, Screen'>rect{fill:blue}</style><style "
            "type='text/less'>rect{fill:red}</style><style media='print, tty'>rect{stroke:red}</style><R/>",
            "R blue");
        row("an unreadable value leaves the one that it would have overridden",
            "<style>rect{stroke:lime} #a{stroke:1}</style><R id='a' fill='red' stroke='blue' "
            "style='stroke-width:-1;fill:oops;fill:;stroke:2' stroke-width='4'/>",
            "R red lime 4");
        row("the case of names and words in a style",
            "<g stroke='red' fill='lime'><R fill='red' style='FILL:None !IMPORTANT;Stroke:Inherit'/></g>", Border);
        row("no opacity has a unit", "<g fill-opacity='.5'><R opacity='.1mm' fill-opacity='0.2x'/></g>", "R #808080");
        row("a pattern is nothing", "<pattern id='p'/><R fill='url(#p) red' stroke='red'/>", Border);
        row("widths in units",
            "<g font-size='10'><line x2='1in' stroke='red' stroke-width='.5em'/><line x2='2ex' stroke='red' "
            "stroke-width='1pc'/><line x2='50%' y2='25.4mm' stroke='red' stroke-width='1%'/></g>",
            "line 0,0 96,0 red 5; line 0,0 10,0 red 16; line 0,0 50,96 red 1");
        row("a negative width is no width", "<line x2='1' stroke='red' stroke-width='-2'/>", "line 0,0 1,0 red 1");
        row("display none, with all below", "<g display='none'><g display='inline'><R/></g></g>", "");
        row("a hidden group with a visible child", "<g visibility='hidden'><R/><R visibility='visible'/></g>", "R");
        row("no paint at all", "<R fill='none'/>", "");
        row("fully transparent", "<R opacity='0' stroke='red'/>", "");
        row("a transparent fill keeps its stroke", "<R fill='transparent' stroke='red'/>", Border);
        row("a rect without an area", "<rect size='0x1'/><rect size='1x-1'/><rect/>", "");
        row("what stands in a shape", "<rect size='2x2'><R/><g><text>A</text></g></rect>", "rect 0,0 2x2");
        row("what only others refer to",
            "<defs><R/></defs><symbol><R/></symbol><clipPath><R/></clipPath><marker><R/></marker>", "");
        row("elements of other programs",
            "<x:g xmlns:x='urn:x'><R/></x:g><unknown><R/></unknown><g xmlns:x='urn:x' x:display='none'><R/></g>", "R");
        const auto text = [&row](const char* name, const QByteArray& body, const char* records) {
            row(name, "<g font-size='1000'>" + body + "</g>", records);
        };
        // At a font size of 1000 in DejaVu Sans "A" is 684 wide, "B" 686, a blank 318.
        text("at its place", "<text x='1' y='2'>A</text>", "text 'A' 1,2");
        text("in the middle", "<text x='1000' text-anchor='middle'>AB</text>", "text 'AB' 315,0");
        text("at the end", "<g text-anchor='end'><text x='2000'>AB</text></g>", "text 'AB' 630,0");
        text("a tspan of the same look goes on", "<text>A<tspan fill='red'>B</tspan>A</text>",
            "text 'A' 0,0; text 'B' 684,0 red; text 'A' 1370,0");
        text("anchored as a whole", "<text x='1000' text-anchor='middle'>A<tspan fill='red'>B</tspan></text>",
            "text 'A' 315,0; text 'B' 999,0 red");
        text("a tspan with a place of its own is a chunk of its own",
            "<text x='5' text-anchor='end'>A<tspan x='1000' y='7'>B</tspan></text>", "text 'A' -679,0; text 'B' 314,7");
        text("shifted", "<text x='10' dx='1' dy='2'>A<tspan dy='1em'>B</tspan></text>",
            "text 'A' 11,2; text 'B' 695,1002");
        text("a place for each character", "<text x='1 2,3'>ABBA</text>", "text 'A' 1,0; text 'B' 2,0; text 'BA' 3,0");
        text("a mark counts as a character", "<text x='1 2 3'>A\u0308B</text>", "text '\u00C4' 1,0; text 'B' 3,0");
        text("blanks fold", "<text>\n  A \t\n <tspan> B</tspan>  \n</text>", "text 'A ' 0,0; text 'B' 1002,0");
        text("unless they are kept", "<text xml:space='preserve'> A  B </text>", "text ' A  B ' 0,0");
        text("blanks alone are nothing", "<text>  </text><text/>", "");
        text("a title is no text", "<text><title>T</title>A<desc>d</desc></text>", "text 'A' 0,0");
        text("hidden parts take no room", "<text>A<tspan display='none'>B</tspan>A</text>", "text 'AA' 0,0");
        text("no fill, no text", "<text fill='none'>A<tspan stroke='red' stroke-width='0'>B</tspan></text>", "");
        text("no fill, but an outline", "<text fill='none' stroke='red'>A<tspan stroke='blue'>B</tspan></text>",
            "text 'A' 0,0 red; text 'B' 684,0 blue");
        text("from right to left it is turned round in its room",
            "<g transform='scale(-1 1)'><text x='10'>AB</text><text x='10' text-anchor='end'>A</text></g>",
            "text 'AB' -1380,0; text 'A' -10,0");
        text("with all its parts",
            "<g transform='scale(-1 1)'><text>A<tspan fill='red'>B</tspan></text><text x='0 700'>AB</text></g>",
            "text 'A' -1370,0; text 'B' -686,0 red; text 'A' -1386,0; text 'B' -686,0");
        text("columns and lines by themselves",
            "<g transform='scale(-1 1)'><text x='0 5000' y='0'>AB<tspan x='0' y='5'>A</tspan></text></g>",
            "text 'A' -684,0; text 'B' -5686,0; text 'A' -684,5");
        text("upside down it is stood up in its room",
            "<g transform='scale(1 -1)'><text y='5'>A</text><text dominant-baseline='hanging'>A</text></g>",
            "text 'A' 0,724; text 'A' 0,0");
        text("in a mirror that turns it",
            "<text transform='matrix(0 -1 -1 0 0 0)'>A</text><text transform='rotate(90) scale(1 -1)'>A</text>",
            "text 'A' 0,-684 turned 90; text 'A' -729,0 turned 90");
        text(
            "turned by half, it stands on its head", "<text transform='scale(-1)'>A</text>", "text 'A' 0,0 turned 180");
        text("no size, no text", "<text font-size='0'>A</text>", "");
        text("central", "<text dominant-baseline='central'>A</text>", "text 'A' 0,346");
        text("a link is a tspan", "<text><a>A</a></text>", "text 'A' 0,0");
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
