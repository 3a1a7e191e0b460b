// SPDX-License-Identifier: MIT
#include "graphics/elements/layervisibility.h"
#include "graphics/elements/paintrules.h"
#include "graphics/zelconstants.h"
#include "tests/support/testmain.h"

#include <limits>

using namespace mirn::zelchipview;

namespace {

constexpr auto Selected = ElementState::Selected;
constexpr auto Filtered = ElementState::Filtered;
constexpr auto Highlighted = ElementState::Highlighted;
const QColor Fill(0x34, 0x56, 0x78);
const QColor Stroke(0x01, 0x02, 0x03);

} // namespace

class TestPaintRules : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void rectByState_data()
    {
        const Rows<ElementStates, QColor, QColor> row;
        row("plain", ElementStates(), Stroke, Fill);
        row("selected", Selected, SELECTED_COLOR, SELECTED_FILL_COLOR);
        row("filtered", Filtered, FILTERCOLOR, FILTER_FILL_COLOR);
        row("highlighted keeps its pen", Highlighted, Stroke, HIGHLIGHT_COLOR);
        row("filter over selection", Selected | Filtered, FILTERCOLOR, FILTER_FILL_COLOR);
        row("highlight over selection", Selected | Highlighted, SELECTED_COLOR, HIGHLIGHT_COLOR);
        row("all three", Selected | Filtered | Highlighted, FILTERCOLOR, HIGHLIGHT_COLOR);
    }

    void rectByState()
    {
        const auto [states, penColor, brushColor] = row<ElementStates, QColor, QColor>();
        // Bits above the 24 of a colour are ignored.
        const auto look = paintrules::rectLook(0x12345678, 0xff010203, 0.5, states);
        const QPen pen = paintrules::borderPen(look);
        const QBrush brush = paintrules::fillBrush(look);
        QCOMPARE(pen.color(), penColor);
        QCOMPARE(brush.color(), brushColor);
        QCOMPARE(brush.style(), Qt::SolidPattern);
        QCOMPARE(pen.widthF(), states.testFlag(Selected) ? 0.0 : 0.5);
    }

    void rectBorderByWidth_data()
    {
        const Rows<double, QColor, double> row;
        row("no width", 0.0, RECT_BORDER_COLOR, 0.0);
        row("less than anything visible", 1e-17, RECT_BORDER_COLOR, 0.0);
        row("negative and less than anything visible", -1e-17, RECT_BORDER_COLOR, 0.0);
        row("no number", std::numeric_limits<double>::quiet_NaN(), RECT_BORDER_COLOR, 0.0);
        row("half a unit", 0.5, Stroke, 0.5);
        row("three and a half", 3.5, Stroke, 3.5);
    }

    void rectBorderByWidth()
    {
        const auto [width, color, penWidth] = row<double, QColor, double>();
        const QPen pen = paintrules::borderPen(paintrules::rectLook(0, 0x010203, width, {}));
        QCOMPARE(pen.color(), color);
        QCOMPARE(pen.widthF(), penWidth);
    }

    void polygonByState_data()
    {
        const Rows<ElementStates, QColor, QColor> row;
        row("plain", {}, QColor(255, 0, 0, 0), Fill);
        row("filtered", Filtered, QColor(255, 0, 0, 0), Fill);
        row("selected", Selected, SELECTED_COLOR, SELECTED_FILL_COLOR);
        row("highlight over selection", Selected | Highlighted, SELECTED_COLOR, HIGHLIGHT_COLOR);
    }

    void polygonByState()
    {
        const auto [states, penColor, brushColor] = row<ElementStates, QColor, QColor>();
        const auto look = paintrules::polygonLook(0x345678, states);
        QCOMPARE(paintrules::borderPen(look).color(), penColor);
        QCOMPARE(paintrules::borderPen(look).widthF(), 0.0);
        QCOMPARE(paintrules::fillBrush(look).color(), brushColor);
    }

    void linePenIsCutToWholeUnits()
    {
        constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();
        for (const auto& [width, penWidth] : {std::pair(1.9, 1), std::pair(0.9, 0), std::pair(-3.0, 0),
                 std::pair(1e300, 32767), std::pair(NoNumber, 0)}) { // QPen takes no more
            QCOMPARE(paintrules::linePen(0x010203, width).width(), penWidth);
            QCOMPARE(paintrules::linePen(0x010203, width).color(), Stroke);
        }
    }

    void textFontIsRenderedLarge()
    {
        for (const auto& [fontSize, pixelSize] : {std::pair(2.0, 10), std::pair(0.59, 2), std::pair(0.1, 1),
                 std::pair(0.0, 1), std::pair(1e30, 100000)}) { // in whole pixels, at least one, and no font is larger
            const QFont font = paintrules::textFont("DejaVu Sans", fontSize);
            QCOMPARE(font.pixelSize(), pixelSize);
            QCOMPARE(font.family(), "DejaVu Sans");
        }
        QCOMPARE(paintrules::TextRenderScale * paintrules::TextItemScale, 1.0);
    }

    void layersByScale_data()
    {
        const Rows<double, QList<int>> row;
        row("below all", 0.5, QList<int>{7});
        row("both ends belong to a range", 1.0, QList<int>{1, 3, 7});
        row("beside a range of one value", 1.01, QList<int>{3, 7});
        row("above all", 20.0, QList<int>{7});
        row("no number hides nothing", std::numeric_limits<double>::quiet_NaN(), QList<int>{1, 3, 7});
    }

    void layersByScale()
    {
        const auto [scale, layers] = row<double, QList<int>>();
        const std::map<int, RangeScale> ranges{{7, {0.0, 100.0}}, {1, {1.0, 1.0}}, {3, {1.0, 4.0}}};
        QCOMPARE(visibleLayersAt(ranges, scale), layers);
        QVERIFY(visibleLayersAt({}, scale).isEmpty());
    }
};

ZEL_TEST_MAIN(TestPaintRules)
#include "tst_paintrules.moc"
