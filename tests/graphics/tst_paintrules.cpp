// SPDX-License-Identifier: MIT
#include "graphics/elements/layervisibility.h"
#include "graphics/elements/paintrules.h"
#include "graphics/zelconstants.h"
#include "tests/support/testmain.h"

#include <QTest>

#include <limits>

using namespace mirn::zelchipview;

namespace {

constexpr auto Selected = ElementState::Selected;
constexpr auto Filtered = ElementState::Filtered;
constexpr auto Highlighted = ElementState::Highlighted;
const QColor Fill(0x34, 0x56, 0x78);
const QColor Stroke(0x01, 0x02, 0x03);

} // namespace

Q_DECLARE_METATYPE(ElementStates)

class TestPaintRules : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void rectByState_data();
    void rectByState();
    void rectBorderByWidth_data();
    void rectBorderByWidth();
    void polygonByState();
    void linePenIsCutToWholeUnits_data();
    void linePenIsCutToWholeUnits();
    void textFontIsRenderedLarge_data();
    void textFontIsRenderedLarge();
    void layersByScale_data();
    void layersByScale();
};

void TestPaintRules::rectByState_data()
{
    QTest::addColumn<ElementStates>("states");
    QTest::addColumn<QColor>("pen");
    QTest::addColumn<QColor>("brush");
    QTest::newRow("plain") << ElementStates() << Stroke << Fill;
    QTest::newRow("selected") << ElementStates(Selected) << SELECTED_COLOR << SELECTED_FILL_COLOR;
    QTest::newRow("filtered") << ElementStates(Filtered) << FILTERCOLOR << FILTER_FILL_COLOR;
    QTest::newRow("highlighted keeps its pen") << ElementStates(Highlighted) << Stroke << HIGHLIGHT_COLOR;
    QTest::newRow("filter over selection") << (Selected | Filtered) << FILTERCOLOR << FILTER_FILL_COLOR;
    QTest::newRow("highlight over selection") << (Selected | Highlighted) << SELECTED_COLOR << HIGHLIGHT_COLOR;
    QTest::newRow("all three") << (Selected | Filtered | Highlighted) << FILTERCOLOR << HIGHLIGHT_COLOR;
}

void TestPaintRules::rectByState()
{
    QFETCH(ElementStates, states);
    // Bits above the 24 of a colour are ignored.
    const auto look = paintrules::rectLook(0x12345678, 0xff010203, 0.5, states);
    const QPen pen = paintrules::borderPen(look);
    const QBrush brush = paintrules::fillBrush(look);
    QTEST(pen.color(), "pen");
    QTEST(brush.color(), "brush");
    QCOMPARE(brush.style(), Qt::SolidPattern);
    QCOMPARE(pen.widthF(), states.testFlag(Selected) ? 0.0 : 0.5);
}

void TestPaintRules::rectBorderByWidth_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<double>("penWidth");
    QTest::newRow("no width") << 0.0 << RECT_BORDER_COLOR << 0.0;
    QTest::newRow("less than anything visible") << 1e-17 << RECT_BORDER_COLOR << 0.0;
    QTest::newRow("negative and less than anything visible") << -1e-17 << RECT_BORDER_COLOR << 0.0;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << RECT_BORDER_COLOR << 0.0;
    QTest::newRow("half a unit") << 0.5 << Stroke << 0.5;
    QTest::newRow("three and a half") << 3.5 << Stroke << 3.5;
}

void TestPaintRules::rectBorderByWidth()
{
    QFETCH(double, width);
    const QPen pen = paintrules::borderPen(paintrules::rectLook(0, 0x010203, width, {}));
    QTEST(pen.color(), "color");
    QTEST(pen.widthF(), "penWidth");
}

void TestPaintRules::polygonByState()
{
    const auto pen
        = [](ElementStates states) { return paintrules::borderPen(paintrules::polygonLook(0x345678, states)); };
    const auto fill
        = [](ElementStates states) { return paintrules::fillBrush(paintrules::polygonLook(0x345678, states)).color(); };
    QCOMPARE(pen({}).color(), QColor(255, 0, 0, 0));
    QCOMPARE(pen({}).widthF(), 0.0);
    QCOMPARE(pen(Selected).color(), SELECTED_COLOR);
    QCOMPARE(fill(Filtered), Fill);
    QCOMPARE(fill(Selected), SELECTED_FILL_COLOR);
    QCOMPARE(fill(Selected | Highlighted), HIGHLIGHT_COLOR);
}

void TestPaintRules::linePenIsCutToWholeUnits_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<int>("penWidth");
    QTest::newRow("just below two") << 1.9 << 1;
    QTest::newRow("a hairline") << 0.9 << 0;
    QTest::newRow("negative") << -3.0 << 0;
    QTest::newRow("wider than any pen") << 1e300 << 32767;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 0;
}

void TestPaintRules::linePenIsCutToWholeUnits()
{
    QFETCH(double, width);
    QTEST(paintrules::linePen(0x010203, width).width(), "penWidth");
    QCOMPARE(paintrules::linePen(0x010203, width).color(), Stroke);
}

void TestPaintRules::textFontIsRenderedLarge_data()
{
    QTest::addColumn<double>("fontSize");
    QTest::addColumn<int>("pixelSize");
    QTest::newRow("two units") << 2.0 << 10;
    QTest::newRow("cut to whole pixels") << 0.59 << 2;
    QTest::newRow("too small for a pixel") << 0.1 << 1;
    QTest::newRow("no size") << 0.0 << 1;
    QTest::newRow("beyond any font") << 1e30 << 100000;
}

void TestPaintRules::textFontIsRenderedLarge()
{
    QFETCH(double, fontSize);
    const QFont font = paintrules::textFont(QStringLiteral("DejaVu Sans"), fontSize);
    QTEST(font.pixelSize(), "pixelSize");
    QCOMPARE(font.family(), QStringLiteral("DejaVu Sans"));
    QCOMPARE(paintrules::TextRenderScale * paintrules::TextItemScale, 1.0);
}

void TestPaintRules::layersByScale_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<QList<int>>("layers");
    QTest::newRow("below all") << 0.5 << QList<int>{7};
    QTest::newRow("both ends belong to a range") << 1.0 << QList<int>{1, 3, 7};
    QTest::newRow("beside a range of one value") << 1.01 << QList<int>{3, 7};
    QTest::newRow("above all") << 20.0 << QList<int>{7};
    QTest::newRow("no number hides nothing") << std::numeric_limits<double>::quiet_NaN() << QList<int>{1, 3, 7};
}

void TestPaintRules::layersByScale()
{
    QFETCH(double, scale);
    const std::map<int, RangeScale> ranges{{7, {0.0, 100.0}}, {1, {1.0, 1.0}}, {3, {1.0, 4.0}}};
    QTEST(visibleLayersAt(ranges, scale), "layers");
    QVERIFY(visibleLayersAt({}, scale).isEmpty());
}

ZEL_TEST_MAIN(TestPaintRules)
#include "tst_paintrules.moc"
