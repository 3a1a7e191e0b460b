// SPDX-License-Identifier: MIT
#include "platform/svg/reading/drawingreader.h"
#include "platform/svg/reading/gunzipsource.h"
#include "tests/support/cancellingprogress.h"
#include "tests/svg/drawing.h"
#include "tests/svg/gzipped.h"
#include "tests/svg/memorysource.h"

#include <QElapsedTimer>

namespace {

const QByteArray Rect = "<rect width='1' height='1'/>";

[[nodiscard]] QByteArray errorOf(const QByteArray& file, const mirn::zelsvg::Limits& limits)
{
    mirn::zelsvg::Diagnostics diagnostics({});
    mirn::zelsvg::Drawing drawing;
    MemorySource source(std::string_view(file.constData(), static_cast<std::size_t>(file.size())));
    mirn::zelsvg::GunzipSource unpacked(source);
    readDrawing(unpacked, diagnostics, limits, drawing);
    return QByteArray::fromStdString(diagnostics.error());
}

} // namespace

class TestSvgErrors : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void saysWhatAndWhere_data()
    {
        // The file, and how the message begins, without the file name.
        const Rows<QByteArray, QString> row;
        for (const auto& each : zeltest::casesIn("svg/cases/errors.txt"))
            row(each.name.constData(), each.content, each.result);
        row("empty", "", ":1:1: found the end of the file, expected an <svg> element");
        row("a picture", QByteArray("\x89PNG\r\n\x1a\n\0\0\0", 11), ":1:1: found bytes that are no XML text");
        row("truncated between tags", "<svg>\n <g>\n", ":3:1: found the end of the file, expected");
        row("bytes that are no UTF-8", "<svg>\n<text>\xFF\xFE</text></svg>", ":2:7: found bytes that are no XML text");
        row("a control character", "<svg>\n<text>\x01</text></svg>", ":2:7: found bytes that are no XML text");
        const QByteArray packed = gzipped("<svg>\n<rect width='1' height='1'/></svg>");
        row("compressed, with a damaged end", packed.left(packed.size() - 8) + QByteArray(8, 'x'),
            ":2:35: at byte " + QByteArray::number(packed.size() - 4) + " of the compressed file: found damaged data");
        row("compressed, with something behind it", packed + QByteArray("\0\0x", 3),
            ":2:35: at byte " + QByteArray::number(packed.size() + 2)
                + " of the compressed file: found something behind");
        row("compressed in another way", "\x1F\x9D\x90<svg/>",
            ":1:1: at byte 2 of the compressed file: found damaged data");
        row("in the third line of a tag kept with others",
            "<svg><use href='#x'/>\r\n<rect y='1'\r\n \xC3\xA4='\xC3\xA4' width='inf'/></svg>",
            ":3:8: found the number \"inf\"");
        row("an attribute without quotes behind a byte order mark", "\xEF\xBB\xBF<svg x=5/>",
            ":1:6: found x=5 without");
        const QString wide = QChar(0xFEFF) + QString::fromUtf8("<svg>\n\xC3\xA4\xF0\x9F\x98\x80 \xC3\xA4& b</svg>");
        row("an ampersand alone in UTF-16", QByteArray(reinterpret_cast<const char*>(wide.utf16()), wide.size() * 2),
            ":2:5: found \"& b\"");
        row("an ampersand alone in another encoding",
            "<?xml version='1.0' encoding='windows-1252'?><svg>\x80& \x80</svg>", ":1:52: found \"& \xE2\x82\xAC\"");
        row("a byte that windows-1252 has not", "<?xml version='1.0' encoding='windows-1252'?><svg>\x81</svg>",
            ":1:51: found bytes that are no XML text");
        row("transforms that multiply", "<svg>" + QByteArray("<g transform='scale(1e5)'>").repeated(200), ":1:");
        row("nested too deep", "<svg>" + QByteArray("<g>\n").repeated(300), ":256:1: found elements nested too deep");
        row("nested too deep with something foreign", "<svg>" + QByteArray("<x>\n").repeated(300),
            ":256:1: found elements nested too deep");
        QByteArray spaces = "<svg";
        for (int i = 0; i < 1001; ++i)
            spaces += " xmlns:n" + QByteArray::number(i) + "='urn:x'";
        row("namespaces without end", spaces + "/>", ":1:1: found more than 1000 declarations of namespaces");
        QByteArray bomb = "<!DOCTYPE svg [<!ENTITY e0 'haha'>";
        for (int i = 1; i < 12; ++i) {
            bomb += "<!ENTITY e" + QByteArray::number(i) + " '" + ("&e" + QByteArray::number(i - 1) + ";").repeated(10)
                + "'>";
        }
        row("entities that multiply in a text", bomb + "]>\n<svg><text>&e11;</text></svg>",
            ":2:12: found entities that expand");
        row("entities that multiply in an attribute", bomb + "]>\n<svg><rect id='&e11;'/></svg>",
            ":2:6: found entities that expand");
    }

    void saysWhatAndWhere()
    {
        const auto [file, begin] = row<QByteArray, QString>();
        const auto drawing = TestDrawing::fromFile(file);
        QVERIFY(!drawing.isRead());
        QVERIFY2(drawing.error().startsWith(begin), qPrintable(drawing.error()));
        QVERIFY2(drawing.error().size() < 300, qPrintable(drawing.error()));
        QVERIFY(drawing.parser().getSVGParameter().width > 0);
    }

    void keepsWhatCameBefore_data()
    {
        const Rows<QByteArray, QString> row;
        row("a mistake in the XML", "<rect width=>", ":3:9: found width= without a value");
        row("a mistake in the drawing", "<rect width='1' height='1' tovanel:layer='x'/>", ":3:30: ");
        row("truncated", "<re", ":3:3: ");
    }

    void keepsWhatCameBefore()
    {
        const auto [mistake, place] = row<QByteArray, QString>();
        for (const QByteArray use : {"", "<use href='#r'/>"}) { // with one, a drawing is read in another way
            const auto drawing = TestDrawing::fromFile(
                "<svg width='30' height='40'>\n<rect id='r' width='1' height='1'/>" + use + "\n  " + mistake);
            QVERIFY(!drawing.isRead());
            QVERIFY2(drawing.error().startsWith(place), qPrintable(drawing.error()));
            QCOMPARE(static_cast<int>(drawing.items().size()), use.isEmpty() ? 1 : 2);
            QCOMPARE(drawing.parser().getSVGParameter().height, 40.0);
            QCOMPARE(drawing.parser().getSVGParameter().layerRanges.size(), std::size_t(1));
        }
    }

    void reportsWhatCannotBeOpened_data()
    {
        const Rows<QString, QString> row;
        row("missing", "missing.svg", "the file cannot be opened: No such file or directory");
        row("a folder", ".", "found a folder, expected an SVG file");
        row("a device", "/dev/null", "found something else than a file, expected an SVG file");
        row("no name", "", "the file cannot be opened: No such file or directory");
    }

    void reportsWhatCannotBeOpened()
    {
        const auto [name, reason] = row<QString, QString>();
        QTemporaryDir folder;
        const bool isRelative = !name.isEmpty() && !name.startsWith('/');
        const std::string path = (isRelative ? folder.filePath(name) : name).toStdString();
        const QString good = folder.filePath("good.svg");
        zeltest::writeFile(good, "<svg>" + Rect + "</svg>");
        SVGParser parser;
        for (const bool isFirst : {true, false}) { // the parser recovers with the next drawing
            QVERIFY(!parser.loadSVGElements(path, {}));
            QCOMPARE(QString::fromStdString(parser.errorString()), QString::fromStdString(path) + ": " + reason);
            QVERIFY(parser.getGraphicItems().empty());
            QVERIFY(!isFirst || parser.loadSVGElements(good.toStdString(), {}));
            QVERIFY(!isFirst || (parser.errorString().empty() && parser.getGraphicItems().size() == 1));
        }
    }

    void survivesEveryTruncation()
    {
        const QByteArray whole = "<?xml version='1.0'?><!DOCTYPE svg [<!ENTITY c 'red'>]><svg viewBox='0 0 9 "
                                 "9'><style>.a{fill:&c;}</style><g class='a'><title>t</title><path d='M0 0a1 1 0 0 1 2 "
                                 "2z'/><text x='1 2'>\u00E4b<![CDATA[<]]></text></g><use href='#x'/></svg>";
        for (int length = 0; length < whole.size(); ++length) {
            const auto drawing = TestDrawing::fromFile(whole.left(length));
            QVERIFY2(!drawing.isRead(), qPrintable(QString::number(length)));
            QVERIFY2(drawing.error().startsWith(":1:"), qPrintable(drawing.error()));
        }
        QVERIFY(TestDrawing::fromFile(whole).isRead());
        const QByteArray packed = gzipped(whole);
        for (int length = 1; length < packed.size(); ++length) {
            const auto drawing = TestDrawing::fromFile(packed.left(length));
            QVERIFY2(!drawing.isRead(), qPrintable(QString::number(length)));
            const QString where = QString("at byte %1 of the compressed file: found the end").arg(length);
            QVERIFY2(drawing.error().contains(where), qPrintable(drawing.error()));
        }
    }

    // A drawing with <use> is kept before it is drawn. It is cancelled at once, on the way and late.
    void returnsNothingWhenCancelled()
    {
        const QByteArray None;
        const QByteArray Use = "<use href='#none'/>"; // the last step near a share of 1 draws what was read
        for (const auto& [start, share] : {std::pair(None, 0.0), std::pair(None, 0.3), std::pair(None, 1.0),
                 std::pair(Use, 0.0), std::pair(Use, 0.3), std::pair(Use, 0.98)}) {
            QTemporaryDir folder;
            const std::string path = folder.filePath("large.svg").toStdString();
            const std::string workingPath = folder.filePath("zelsvg.temp").toStdString();
            zeltest::writeFile(QString::fromStdString(path), "<svg>" + start + Rect.repeated(40'000) + "</svg>");
            SVGParser parser;
            {
                const zeltest::CancellingProgress progress(zelprogress::READING_DRAWING, share);
                QVERIFY(!parser.loadSVGElements(path, workingPath));
                QVERIFY(progress.isCancelled());
                QVERIFY(!parser.loadSVGElements(path, workingPath));
            }
            QCOMPARE(parser.errorString(), path + ": reading it was cancelled");
            QCOMPARE(parser.graphicItemCount(), std::size_t(0));
            QVERIFY(!QFile::exists(QString::fromStdString(workingPath)));
            QVERIFY(parser.loadSVGElements(path, workingPath));
            QCOMPARE(parser.graphicItemCount(), std::size_t(40'000));
        }
    }

    // The limits of what a drawing may cost are here so low that a small one reaches them.
    void limitsEndReading_data()
    {
        // The drawing that may still be read, the one that may not, and the message.
        const Rows<mirn::zelsvg::Limits, QByteArray, QByteArray, QByteArray> add;
        const auto row = [&add](const char* name, auto member, int limit, const QByteArray& most,
                             const QByteArray& more, const char* error) {
            mirn::zelsvg::Limits limits;
            limits.*member = static_cast<std::decay_t<decltype(limits.*member)>>(limit);
            add(name, limits, most, more, error);
        };
        using mirn::zelsvg::Limits;
        const QByteArray tree = "<use href='#none'/>";
        row("bytes", &Limits::fileSize, 100, Rect, Rect.repeated(4), "the file is too large");
        row("nesting", &Limits::nesting, 3, "<g><g/></g>", "<g><g><g/></g></g>", "found elements nested too deep");
        row("nesting through use", &Limits::nesting, 5, "<g id='g'><g/></g><g><use href='#g'/></g>",
            "<g id='g'><g/></g><g><g><use href='#g'/></g></g>", "found elements nested too deep");
        row("records", &Limits::records, 3, Rect.repeated(3), Rect.repeated(4), "found more than 3 shapes");
        row("corners of polygons", &Limits::points, 6, "<path d='M0 0h1v1z'/><path d='M0 0h1v1z'/>",
            "<path d='M0 0h1v1z'/><path d='M0 0h1v1h-1z'/>", "found more than 6 corners");
        row("points of one outline", &Limits::points, 6, "<path d='M0 0h1v1h1v1h1'/>", "<path d='M0 0h1v1h1v1h1v1'/>",
            "found an outline of more than 6 points");
        row("elements kept", &Limits::nodes, 4, tree + Rect + Rect, tree + Rect.repeated(3),
            "found more than 4 elements");
        row("attributes kept", &Limits::attributes, 5, tree + Rect + Rect, tree + Rect.repeated(3),
            "found more than 5 attributes");
        row("style rules", &Limits::styleRules, 4, "<style>a{fill:red}b{fill:red}</style>",
            "<style>a{fill:red}b{fill:red}c{fill:red}</style>", "found more than 4 selectors and declarations");
        row("instances", &Limits::instances, 3, "<g id='g'>" + Rect + "</g><use href='#g'/>",
            "<g id='g'>" + Rect + "</g><use href='#g'/><use href='#g'/>", "found <use> elements that multiply");
        row("bytes of instances", &Limits::instanceBytes, 20, "<g id='g'><g class='12345'/></g><use href='#g'/>",
            "<g id='g'><g class='1234567890123456789'/></g><use href='#g'/>", "found <use> elements that multiply");
        row("selectors tried", &Limits::selectorTests, 20,
            "<style>g a{fill:red}</style>" + QByteArray("<g/>").repeated(5),
            "<style>g g{fill:red}</style>" + QByteArray("<g/>").repeated(30), "found style sheets that take too long");
    }

    void limitsEndReading()
    {
        const auto [limits, most, more, error] = row<mirn::zelsvg::Limits, QByteArray, QByteArray, QByteArray>();
        QCOMPARE(errorOf("<svg>" + most + "</svg>", limits), QByteArray());
        const QByteArray found = errorOf("<svg>" + more + "</svg>", limits);
        QVERIFY2(found.contains(error), found.constData());
        QCOMPARE(errorOf(gzipped("<svg>" + more + "</svg>"), limits), found);
    }

    // Each of these has taken minutes where a search went on to the end of the sheet.
    void styleSheetsTakeTimeInProportion()
    {
        for (const QByteArray rule : {"a{}", "@a;", "/**/", "a,"}) {
            QElapsedTimer timer;
            timer.start();
            const QByteArray file = "<svg><style>" + rule.repeated(1'500'000) + "</style></svg>";
            QCOMPARE(errorOf(file, mirn::zelsvg::Limits()), QByteArray());
            QVERIFY2(timer.elapsed() < 20'000, qPrintable(rule + QByteArray::number(timer.elapsed())));
        }
    }
};

ZEL_TEST_MAIN(TestSvgErrors)
#include "tst_svgerrors.moc"
