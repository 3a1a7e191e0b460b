// SPDX-License-Identifier: MIT
#include "platform/svg/reading/drawingreader.h"
#include "platform/svg/reading/gunzipsource.h"
#include "tests/support/testmain.h"
#include "tests/svg/gzipped.h"
#include "tests/svg/memorysource.h"

#include <QElapsedTimer>

namespace {

const QByteArray Rect = "<rect width='1' height='1'/>";

[[nodiscard]] QByteArray errorOf(const QByteArray& file, const zelsvg::Limits& limits)
{
    zelsvg::Diagnostics diagnostics({});
    zelsvg::Drawing drawing;
    MemorySource source(std::string_view(file.constData(), static_cast<std::size_t>(file.size())));
    zelsvg::GunzipSource unpacked(source);
    readDrawing(unpacked, diagnostics, limits, drawing);
    return QByteArray::fromStdString(diagnostics.error());
}

} // namespace

// What a drawing may cost, with limits that a small one reaches.
class TestSvgLimits : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void endReading_data()
    {
        // What may still be read, what may not, and the message.
        const Rows<zelsvg::Limits, QByteArray, QByteArray, QByteArray> add;
        const auto row = [&add](const char* name, auto member, int limit, const QByteArray& most,
                             const QByteArray& more, const char* error) {
            zelsvg::Limits limits;
            limits.*member = static_cast<std::decay_t<decltype(limits.*member)>>(limit);
            add(name, limits, most, more, error);
        };
        using zelsvg::Limits;
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

    void endReading()
    {
        const auto [limits, most, more, error] = row<zelsvg::Limits, QByteArray, QByteArray, QByteArray>();
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
            QCOMPARE(errorOf(file, zelsvg::Limits()), QByteArray());
            QVERIFY2(timer.elapsed() < 20'000, qPrintable(rule + QByteArray::number(timer.elapsed())));
        }
    }
};

ZEL_TEST_MAIN(TestSvgLimits)
#include "tst_svglimits.moc"
