// SPDX-License-Identifier: MIT
#include "platform/svg/document/elementdecoder.h"
#include "tests/support/testmain.h"
#include "tests/svg/memorysource.h"

namespace {

const QByteArray Svg
    = "<svg xmlns='http://www.w3.org/2000/svg' xmlns:t='urn:tovanel:chip-drawing' width='9' height='9'>";
const QByteArray Rect = "<rect width='1' height='1'/>";

[[nodiscard]] std::string everything(const QByteArray& file, mirn::zelsvg::XmlReading reading, std::size_t blockSize)
{
    MemorySource source(std::string_view(file.constData(), static_cast<std::size_t>(file.size())), blockSize);
    return everythingRead(source, mirn::zelsvg::Limits(), reading);
}

class Ignorer final : public mirn::zelsvg::XmlHandler
{
public:
    void startTag(const mirn::zelsvg::XmlName&, const mirn::zelsvg::XmlAttribute*, std::size_t) override { }
    void endTag() override { }
    void text(std::string_view) override { }
    [[nodiscard]] bool isFinished() const override { return false; }
};

// Whether the quick way does it alone.
[[nodiscard]] bool isQuick(const QByteArray& file)
{
    Ignorer ignorer;
    mirn::zelsvg::Diagnostics diagnostics("");
    MemorySource source(std::string_view(file.constData(), static_cast<std::size_t>(file.size())));
    const mirn::zelsvg::Limits limits;
    return makeTagReader(mirn::zelsvg::XmlReading::Quick, ignorer, diagnostics, limits)->read(source);
}

} // namespace

// The quick way to read a drawing against the thorough one: what a drawing is read as does not depend on it.
class TestSvgReadings : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void readingsAgree_data()
    {
        const Rows<QByteArray, bool> row;
        const auto quick = [&row](const char* name, const QByteArray& file) { row(name, file, true); };
        const auto slow = [&row](const char* name, const QByteArray& file) { row(name, file, false); };
        const auto mistake = [&slow](const QByteArray& part, const QByteArray& file) {
            slow("a mistake: " + part.toPercentEncoding("<>='& /![]-"), file);
        };
        const auto body = [](const QByteArray& text) { return Svg + text + "</svg>"; };
        const auto value = [&](const QByteArray& text) { return body("<rect id=" + text + " width='1' height='1'/>"); };
        const auto text = [&](const QByteArray& text) { return body("<text>" + text + "</text>"); };

        quick("a plain drawing", body(Rect));
        quick("a declaration", "<?xml version=\"1.0\" encoding='UTF-8' standalone=\"no\" ?>\r\n" + body(Rect));
        quick("a byte order mark", "\xEF\xBB\xBF<?xml version='1.0'?>" + body(Rect));
        quick("a document type",
            "<!DOCTYPE svg PUBLIC '-//W3C//DTD SVG 1.1//EN'\n 'http://www.w3.org/Graphics/SVG/1.1/DTD/svg11.dtd' >\n"
                + body(Rect));
        quick("a document type by its name", "<!DOCTYPE svg>" + body(Rect));
        quick("comments all over", "<!---->" + body("<!-- <rect> & ]]> \xC3\xA4 - -->" + Rect) + "<!--\n-->\n");
        quick("blanks wherever they may be", body("<rect\twidth = '1'\n height\r\n=\r'1'\n/><g ></g >") + " \r\n\t");
        quick("both quotes", value("\"it's\"") + "\n" + "<!-- -->");
        quick("references in a value", value("'&lt;&gt;&amp;&quot;&apos;&#65;&#x42;&#xe4;&#x1F600;&#10;'"));
        quick("blanks in a value", value("'a\tb\nc\r\nd\re'"));
        quick("an empty value", value("''"));
        quick("references in a text", text("a&lt;b&amp;&amp;c&#xA0;d&#x9;e"));
        quick("line ends in a text", text("a\nb\r\nc\rd\n\n"));
        quick("character data", text("a<![CDATA[<&>]] ]> \xC3\xA4\r\n]]>b<![CDATA[]]>"));
        quick("characters of two, three and four bytes",
            text("\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\xED\x9F\xBF\xC2\x80\x7F"));
        quick("brackets in a text", text("] ]] ]>"));
        quick("elements and namespaces of others", body("<x:g xmlns:x='urn:x'><x:rect/>" + Rect + "</x:g>"));
        quick("namespaces that change",
            body("<g xmlns:t='urn:x' t:layer='x'><rect xmlns:t='urn:tovanel:chip-drawing' t:layer='3' width='1' "
                 "height='1'/></g><g t:layer='2'>"
                + Rect + "</g>"));
        quick("prefixes of one namespace",
            body("<g xmlns:u='urn:tovanel:chip-drawing' t:layer='1' u:layer='2'>" + Rect + "</g>"));
        quick("a drawing kept as a tree",
            body("<style><![CDATA[\n.a{fill:red}]]></style><g id='g'><rect class='a' width='1' height='1'/></g><use "
                 "href='#g' x='3'/><image/>"));
        quick("warnings with their lines",
            body("\n<image/>\r\n<text>\n\xE4\xB8\x80</text>\r<rect "
                 "fill='?'\nwidth='1'\n/><foreignObject/><text\n>a&#x4E00;\n</text>"));
        quick("an empty text element that warns at its end", body("\n<text\nx='?'\n/>"));
        quick("many attributes",
            body("<rect a='' b='' c='' d='' e='' f='' g='' h='' i='' j='' k='' l='' m='' n='' o='' p='' q='' r='' s='' "
                 "t='' u='' v='' w='' width='1' height='1'/>"));
        quick("long names",
            body("<rect dominant-baseline='x' font-size-adjust='1' width='1' height='1' preserveAspectRatio='none' "
                 "preserveAspectRatix='none'/>"));

        slow("an internal document type", "<!DOCTYPE svg [<!ENTITY c 'red'>]>" + value("'&c;'"));
        slow("another encoding", "<?xml version='1.0' encoding='ISO-8859-1'?>" + text("\xE4"));
        slow("UTF-16", QByteArray("\xFF\xFE<\0s\0v\0g\0/\0>\0", 14));
        slow("processing instructions", "<?a b?>" + body("<?c d?>") + "<?e?>");
        slow("letters beyond ASCII in a name", body("<g \xC3\xA4='1'>" + Rect + "</g>"));
        slow("more attributes than anyone writes", [] {
            QByteArray tag = "<rect width='1' height='1'";
            for (int i = 0; i < 80; ++i)
                tag += " a" + QByteArray::number(i) + "=''";
            return Svg + tag + "/></svg>";
        }());

        const QByteArray plain = body(Rect);
        for (const QByteArray& file :
            {QByteArray(), QByteArray(" \n"), QByteArray("<!-- -->"), plain + "<g/>", plain + "x", "x" + plain,
                " <?xml version='1.0'?>" + plain, "<?xmlx version='1.0'?>" + plain, plain + "<!DOCTYPE svg>",
                "<!DOCTYPE svg><!DOCTYPE svg>" + plain, "<!DOCTYPE svg PUBLIC 'a'>" + plain, "<![CDATA[ ]]>" + plain})
            mistake(file, file);
        for (const char* tag : {"<rect width='1' height='1' width='2'/>", "<rect width height='1'/>", "<rect width=1/>",
                 "<g preserveAspectRatio='a' preserveAspectRatio='b'/>", "<rect width='1'height='1'/>", "<g></h>",
                 "<g></gg>", "<g></g a=''>", "<1/>", "<:g/>", "<g/ >", "<!-- a--b -->", "<!-- \x01 -->"})
            mistake(tag, body(tag));
        for (const QByteArray& inside : {QByteArray("'<'"), QByteArray("'&#65'"), QByteArray("'a\0b'", 5)})
            mistake(inside, value(inside));
        // References to nothing, and bytes that are no character or only a part of one.
        for (const char* inside :
            {"&nbsp;", "&#0;", "&#xD800;", "&#x110000;", "&#x;", "&lt", "a & b", "]]>", "\x0B", "\x80", "\xE2\x82",
                "\xC0\xAF", "\xED\xA0\x80", "\xEF\xBF\xBF", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80"})
            mistake(inside, text(inside));
        slow("a NUL in a text", text(QByteArray("a\0b", 3)));
        slow("a NUL in a tag", body(QByteArray("<g\0/>", 5)));
    }

    void readingsAgree()
    {
        const auto [file, quick] = row<QByteArray, bool>();
        for (std::size_t blockSize : {1, 2, 3, 5, 1 << 20}) {
            QCOMPARE(everything(file, mirn::zelsvg::XmlReading::Quick, blockSize),
                everything(file, mirn::zelsvg::XmlReading::Thorough, blockSize));
        }
        QCOMPARE(isQuick(file), quick);
    }

    void readingsAgreeOnEveryDamage()
    {
        const QByteArray whole = "<?xml version='1.0'?>\n<!DOCTYPE svg SYSTEM 'a'>" + Svg
            + "<!-- c --><g t:id='3'><title>a&amp;b</title>" + Rect
            + "</g>\n<text x='1'>\xC3\xA4<![CDATA[<]]>&#65;</text></svg>\n";
        const QByteArray replacements = "<>&'\"=/!?-]; \n\rx:0\x80\xC3\x01";
        for (int i = 0; i < whole.size(); ++i) {
            for (int j = 0; j <= replacements.size(); ++j) {
                QByteArray damaged = whole;
                if (j < replacements.size())
                    damaged[i] = replacements[j];
                else
                    damaged.remove(i, 1);
                if (everything(damaged, mirn::zelsvg::XmlReading::Quick, 1 << 20)
                    != everything(damaged, mirn::zelsvg::XmlReading::Thorough, 1 << 20))
                    QFAIL(damaged.constData());
            }
        }
    }

    // The tags are longer than the blocks in which files are read.
    void readingsAgreeOnLongTags()
    {
        const QByteArray path = "<path d='M0 0" + QByteArray("h1v1H0z").repeated(150'000) + "'/>";
        const QByteArray comment = "<!--" + QByteArray(700'000, 'c') + "-->";
        const QByteArray text = "<text>" + QByteArray("\xC3\xA4 b").repeated(80'000) + "</text>";
        const QByteArray file = comment + Svg + text + comment + path + "\n<image/>" + text + "</svg>";
        QVERIFY(isQuick(file));
        QCOMPARE(everything(file, mirn::zelsvg::XmlReading::Quick, 1 << 16),
            everything(file, mirn::zelsvg::XmlReading::Thorough, ~std::size_t(0)));
    }
};

ZEL_TEST_MAIN(TestSvgReadings)
#include "tst_svgreadings.moc"
