// SPDX-License-Identifier: MIT
#include "tests/svg/drawing.h"

// Which colour and which stroke a shape ends up with.
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
                // What is no colour leaves the inherited one.
                {"#12", "#008000"}, {"#gggggg", "#008000"}, {"rgb(1,2)", "#008000"}, {"nocolour", "#008000"},
                {"rgb(1e999,0,0)", "#008000"}};
        for (const auto& [color, fill] : colors) {
            const QString records = recordsOf("<g fill='green' color='blue'><R fill='" + color + "'/></g>");
            QVERIFY2(records == "R " + fill, color + ": " + records.toUtf8());
        }
    }

    void cascades_data()
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
        row("for reference", "<defs><R/></defs><symbol><R/></symbol><clipPath><R/></clipPath><marker><R/></marker>",
            "");
        row("elements of other programs",
            "<x:g xmlns:x='urn:x'><R/></x:g><unknown><R/></unknown><g xmlns:x='urn:x' x:display='none'><R/></g>", "R");
    }

    void cascades()
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
};

ZEL_TEST_MAIN(TestSvgStyle)
#include "tst_svgstyle.moc"
