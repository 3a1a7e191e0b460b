// SPDX-License-Identifier: MIT
#include "tests/support/testmain.h"
#include "tests/svg/drawing.h"

#include <QTest>

class TestSvgUse : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void drawsInstances_data();
    void drawsInstances();
    void refusesCycles_data();
    void refusesCycles();
    void boundsMultiplication_data();
    void boundsMultiplication();
};

void TestSvgUse::drawsInstances_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("records");
    const auto row = [](const char* name, const char* body, const char* records) {
        QTest::newRow(name) << QByteArray(body) << QString::fromLatin1(records);
    };
    row("of what comes later, by either reference",
        "<use href='#r' x='5'/><use xlink:href='#r' y='5'/><defs><rect id='r' "
        "width='1' height='1'/></defs>",
        "rect 5,0 1x1 #000000; rect 0,5 1x1 #000000");
    row("by an identifier of XML", "<rect xml:id='r' width='1' height='1'/><use href='#r' x='3'/>",
        "rect 0,0 1x1 #000000; rect 3,0 1x1 #000000");
    row("of what is drawn itself", "<rect id='r' width='1' height='1'/><use href='#r' transform='scale(2)' x='3'/>",
        "rect 0,0 1x1 #000000; rect 6,0 2x2 #000000");
    row("inherits from the use, not from where it stands",
        "<g fill='red'><rect id='r' width='1' height='1'/></g><use href='#r' fill='blue'/>",
        "rect 0,0 1x1 #ff0000; rect 0,0 1x1 #0000ff");
    row("selectors look at where it stands",
        "<style>.there rect{fill:red} .here rect{fill:blue}</style>"
        "<defs class='there'><rect id='r' width='1' height='1'/></defs><g class='here'><use href='#r'/></g>",
        "rect 0,0 1x1 #ff0000");
    row("a symbol with a view box fills the size of the use",
        "<symbol id='s' viewBox='0 0 10 10'><rect width='5' height='10'/></symbol><use href='#s' width='20' "
        "height='20'/>",
        "rect 0,0 10x20 #000000");
    row("a symbol without one is drawn as it is",
        "<symbol id='s'><rect width='5' height='10'/></symbol><use href='#s' x='1' width='20' height='20'/>",
        "rect 1,0 5x10 #000000");
    row("percentages are of the symbol's view box",
        "<symbol id='s' viewBox='0 0 10 10'><rect width='50%' height='10%'/>"
        "</symbol><use href='#s' width='20' height='20'/>",
        "rect 0,0 10x2 #000000");
    row("a nested drawing takes its size from the use",
        "<defs><svg id='s' width='5' height='5' viewBox='0 0 1 1'><rect "
        "width='1' height='1'/></svg></defs><use href='#s'/><use href='#s' width='7' height='7'/>",
        "rect 0,0 5x5 #000000; rect 0,0 7x7 #000000");
    row("nested uses add up",
        "<defs><g id='a'><use href='#b' x='1'/></g><rect id='b' width='1' height='1'/></defs>"
        "<use href='#a' x='10'/>",
        "rect 11,0 1x1 #000000");
    row("a nested drawing lies in its own viewport",
        "<svg x='10' y='20' width='50' height='50' viewBox='0 0 100 100'>"
        "<rect width='10%' height='10'/></svg>",
        "rect 10,20 5x5 #000000");
    row("texts", "<defs><text id='t'>A</text></defs><use href='#t' x='2'/>", "text 'A' 2,0 #000000");
    row("a hidden target is not drawn, one in something hidden is",
        "<rect id='a' width='1' height='1' display='none'/><g display='none'><rect id='b' width='2' height='2'/></g>"
        "<use href='#a'/><use href='#b'/>",
        "rect 0,0 2x2 #000000");
}

void TestSvgUse::drawsInstances()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, records);
    const auto drawing = TestDrawing::fromBody(body);
    QVERIFY2(drawing.isRead(), qPrintable(drawing.error()));
    QCOMPARE(drawing.records(), records);
    QCOMPARE(drawing.warnings(), QString());
}

void TestSvgUse::refusesCycles_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("of itself") << QByteArray("<use id='a' href='#a'/>");
    QTest::newRow("of what is around it") << QByteArray("<g id='a'><use href='#a'/></g>");
    QTest::newRow("through others") << QByteArray(
        "<defs><g id='a'><use href='#b'/></g><g id='b'><use href='#a'/></g></defs><use href='#a'/>");
    QTest::newRow("of another file") << QByteArray("<use href='other.svg#a'/>");
    QTest::newRow("of nothing") << QByteArray("<use href='#missing'/><use/>");
}

void TestSvgUse::refusesCycles()
{
    QFETCH(QByteArray, body);
    const auto drawing = TestDrawing::fromBody(body + "<rect width='1' height='1'/>");
    QVERIFY2(drawing.isRead(), qPrintable(drawing.error()));
    QCOMPARE(drawing.records(), QStringLiteral("rect 0,0 1x1 #000000"));
    QVERIFY2(drawing.warnings().contains(QLatin1String("references to missing")), qPrintable(drawing.warnings()));
}

// Ten levels, each drawing the next ten times.
void TestSvgUse::boundsMultiplication_data()
{
    QTest::addColumn<QByteArray>("leaf");
    QTest::newRow("of shapes") << QByteArray("<rect width='1' height='1'/>");
    QTest::newRow("of nothing at all") << QByteArray();
    QTest::newRow("of long paths") << "<path d='M0 0" + QByteArray(100000, ' ') + "'/>";
    QTest::newRow("of texts") << "<text>" + QByteArray(100000, 'x') + "</text>";
}

void TestSvgUse::boundsMultiplication()
{
    QFETCH(QByteArray, leaf);
    QByteArray body = "<g id='l0'>" + leaf + "</g>";
    for (int level = 1; level <= 10; ++level) {
        const QByteArray use = "<use href='#l" + QByteArray::number(level - 1) + "'/>";
        body += "<g id='l" + QByteArray::number(level) + "'>" + use.repeated(10) + "</g>\n";
    }
    const auto drawing = TestDrawing::fromBody("<defs>" + body + "</defs><use href='#l10'/>");
    QVERIFY(!drawing.isRead());
    QVERIFY2(drawing.error().contains(QLatin1String(", expected ")), qPrintable(drawing.error()));
}

ZEL_TEST_MAIN(TestSvgUse)
#include "tst_svguse.moc"
