// SPDX-License-Identifier: MIT
#include "graphics/elements/attributeregistry.h"
#include "graphics/elements/elementidset.h"
#include "graphics/elements/layervisibility.h"
#include "graphics/elements/paintrules.h"
#include "graphics/zelconstants.h"
#include "graphics/zellineattribute.h"
#include "graphics/zelpolygonattribute.h"
#include "graphics/zelrectattribute.h"
#include "graphics/zeltextattribute.h"
#include "platform/contract/zelgraphicrecords.h"
#include "tests/support/testmain.h"

#include <QLineF>
#include <QPointer>
#include <QPolygonF>

#include <limits>
#include <map>
#include <memory>
#include <random>
#include <vector>

using namespace mirn::zelchipview;

namespace {

std::unique_ptr<ZELGraphicItemAttribute> makeAttribute(int kind)
{
    std::vector<tspan> spans;
    switch (kind) {
    case ZEL_GRAPHIC_LINE:
        return std::make_unique<ZELLineAttribute>(1, 2, 3, 4, 0x112233, 0.5);
    case ZEL_GRAPHIC_RECT:
        return std::make_unique<ZELRectAttribute>(1, 2, 3, 4, 0x445566, 0x112233, 0.5, "style");
    case ZEL_GRAPHIC_POLYGON:
        return std::make_unique<ZELPolygonAttribute>(
            std::vector<zel_Point>{{1, 2}, {3, 4}, {5, 6}}, 0x445566, 0x112233, 0.5, "style");
    default:
        return std::make_unique<ZELTextAttribute>("t\xe9xt", 1, 2, 6.5, "Sans", 0x445566, -90, spans, 0, 0);
    }
}

unsigned int fillOf(ZELGraphicItemAttribute& attribute)
{
    return *static_cast<unsigned int*>(attribute.getAttribute(ATTR_FILL_COLOR));
}

constexpr auto Selected = ElementState::Selected;
constexpr auto Filtered = ElementState::Filtered;
constexpr auto Highlighted = ElementState::Highlighted;
const QColor Fill(0x34, 0x56, 0x78);
const QColor Stroke(0x01, 0x02, 0x03);

} // namespace

// Attributes of elements, their registry by load numbers, sets of element ids, and the rules of painting.
class TestAttributes : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void serveTheirKeysOnly_data()
    {
        const Rows<int, QMap<int, QVariant>> row; // the values by their keys
        const QVariant fill = 0x445566u;
        const QVariant stroke = 0x112233u;
        row("line", 0, {{ATTR_LINE, QLineF(1, 2, 3, 4)}, {ATTR_STROKE_COLOR, stroke}, {ATTR_STROKE_WIDTH, 0.5}});
        row("rect", 1,
            {{ATTR_RECT, QRectF(1, 2, 3, 4)}, {ATTR_STROKE_COLOR, stroke}, {ATTR_STROKE_WIDTH, 0.5},
                {ATTR_FILL_COLOR, fill}});
        row("polygon", 2, {{ATTR_FILL_COLOR, fill}, {ATTR_POINTS, QPolygonF({{1, 2}, {3, 4}, {5, 6}})}});
        row("text", 3,
            {{ATTR_TEXT, "t\u00e9xt"}, {ATTR_POS, QPointF(1, 2)}, {ATTR_ROTATION, -90}, {ATTR_FONT_FAMILY, "Sans"},
                {ATTR_FONT_SIZE, 6.5}, {ATTR_FILL_COLOR, fill}});
    }

    void serveTheirKeysOnly()
    {
        const auto [kind, values] = row<int, QMap<int, QVariant>>();
        const auto attribute = makeAttribute(kind);
        for (int key = -1; key < 20; ++key) {
            const void* served = attribute->getAttribute(static_cast<zelgraphic_attribute_key>(key));
            QCOMPARE(served != nullptr, values.contains(key));
            if (served) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
                QCOMPARE(QVariant(values[key].metaType(), served), values[key]);
#else
                QCOMPARE(QVariant(values[key].userType(), served), values[key]);
#endif
            }
        }
    }

    void takeTheCommonFields()
    {
        zel_Rect record;
        record.id = 4711;
        record.name = "PLL \xb5";
        record.tooltip = nullptr;
        record.layer = 3;
        record.flag = true;
        const auto attribute = makeAttribute(ZEL_GRAPHIC_RECT);
        QCOMPARE(attribute->layer, -1);
        QCOMPARE(attribute->kind, 4);
        attribute->setAttribute(record);
        QCOMPARE(attribute->itemId, 4711);
        QCOMPARE(attribute->elementName, "PLL \u00b5");
        QVERIFY(attribute->toolTip.isEmpty());
        QCOMPARE(attribute->layer, 3);
        QCOMPARE(attribute->kind, int(ZEL_GRAPHIC_RECT));
        QVERIFY(attribute->flag);
    }

    void restoreDefaults_data()
    {
        const Rows<int, unsigned int, QString> row;
        row("rect", 1, 0x00ff00u, "first");
        row("polygon", 2, 0x00ff00u, "first");
        row("text stays as it is", 3, 0x445566u, "dynamic");
    }

    void restoreDefaults()
    {
        const auto [kind, recoloured, restoredToolTip] = row<int, unsigned int, QString>();
        const auto attribute = makeAttribute(kind);
        zel_SingleGraphItem record(kind);
        record.tooltip = "first";
        attribute->setAttribute(record);
        record.tooltip = "second";
        attribute->setAttribute(record);
        QCOMPARE(attribute->toolTip, "second");

        attribute->setFillColor(0x00ff00);
        attribute->toolTip = "dynamic";
        QCOMPARE(fillOf(*attribute), recoloured);
        attribute->setToDefaultValue(ATTR_STROKE_COLOR);
        QCOMPARE(fillOf(*attribute), recoloured);
        attribute->setToDefaultValue(ATTR_FILL_COLOR);
        attribute->setToDefaultValue(ATTR_TOOLTIP);
        QCOMPARE(fillOf(*attribute), 0x445566u);
        QCOMPARE(attribute->toolTip, restoredToolTip);
    }

    void areFoundByLoadNumber()
    {
        AttributeRegistry registry;
        const std::vector<int> numbers{1, 2, 5, 3, -4, 0, 1000000000, 4, 7};
        std::map<int, ZELGraphicItemAttribute*> expected;
        for (const int number : numbers) {
            expected[number] = makeAttribute(ZEL_GRAPHIC_RECT).release();
            registry.set(number, expected[number]);
        }
        for (const int number : {2, 5, 7}) {
            const std::unique_ptr<ZELGraphicItemAttribute> replaced(registry.find(number));
            expected[number] = number == 5 ? nullptr : makeAttribute(ZEL_GRAPHIC_LINE).release();
            registry.set(number, expected[number]);
        }
        for (int number = -6; number < 10; ++number)
            QCOMPARE(registry.find(number), expected.count(number) ? expected[number] : nullptr);
        QCOMPARE(registry.find(1000000000), expected[1000000000]);

        QPointer<QObject> last(registry.find(7));
        registry.deleteAll();
        QVERIFY(!last);
        QVERIFY(!registry.find(1));
    }

    void behavesAsASet()
    {
        constexpr int Edge = 1 << 24;
        const std::vector<int> ids = {std::numeric_limits<int>::min(), -64, -1, 0, 1, 63, 64, 65, 1000, 100000,
            Edge - 1, Edge, Edge + 1, std::numeric_limits<int>::max()};
        std::mt19937 random(7);
        ElementIdSet set;
        QSet<int> expected;
        for (int step = 0; step < 400; ++step) {
            const int id = ids[random() % ids.size()];
            const int other = ids[random() % ids.size()];
            const auto deed = random() % 6;
            if (deed == 0) {
                set.insert(id);
                expected.insert(id);
            } else if (deed == 1) {
                set.insert(std::vector<int>{id, other, id});
                expected += {id, other};
            } else if (deed <= 3) {
                set.remove(id);
                expected.remove(id);
            } else if (deed == 4 && step % 10 == 0) {
                set.assign({id, other});
                expected = {id, other};
            } else if (deed == 5 && step % 50 == 0) {
                set.clear();
                expected.clear();
            }
            QCOMPARE(set.ids(), expected);
            QCOMPARE(set.isEmpty(), expected.isEmpty());
            for (int each : ids)
                QCOMPARE(set.contains(each), expected.contains(each));
        }
    }

    void tellsOfRealChangesOnly()
    {
        ElementIdSet set;
        std::vector<std::vector<int>> told;
        set.setListener([&told](const std::vector<int>& changed) { told.push_back(changed); });
        set.insert(std::vector<int>{5, -3, 5, 7});
        set.insert(std::vector<int>{5, 7});
        set.insert(7);
        set.remove(8);
        set.insert(std::vector<int>{7, 9});
        set.assign({5, 7, 9, 11});
        set.clear();
        set.clear();
        set.insert(4);
        {
            const ElementIdBatch together(set);
            set.clear();
            set.insert(std::vector<int>{4, 6});
            set.insert(-8);
        }
        {
            const ElementIdBatch nothingInTheEnd(set);
            set.clear();
            set.insert(std::vector<int>{4, 6, -8});
        }
        const std::vector<std::vector<int>> expected = {{5, -3, 7}, {9}, {11, -3}, {5, 7, 9, 11}, {4}, {6, -8}};
        QCOMPARE(told, expected);
    }

    void colorsByState_data()
    {
        const Rows<bool, ElementStates, QColor, QColor> row; // whether it is a polygon, its pen and its brush
        row("plain", false, ElementStates(), Stroke, Fill);
        row("selected", false, Selected, SELECTED_COLOR, SELECTED_FILL_COLOR);
        row("filtered", false, Filtered, FILTERCOLOR, FILTER_FILL_COLOR);
        row("highlighted keeps its pen", false, Highlighted, Stroke, HIGHLIGHT_COLOR);
        row("filter over selection", false, Selected | Filtered, FILTERCOLOR, FILTER_FILL_COLOR);
        row("highlight over selection", false, Selected | Highlighted, SELECTED_COLOR, HIGHLIGHT_COLOR);
        row("all three", false, Selected | Filtered | Highlighted, FILTERCOLOR, HIGHLIGHT_COLOR);
        const QColor NoBorder(255, 0, 0, 0);
        row("a plain polygon", true, {}, NoBorder, Fill);
        row("a filtered polygon", true, Filtered, NoBorder, Fill);
        row("a selected polygon", true, Selected, SELECTED_COLOR, SELECTED_FILL_COLOR);
        row("a polygon, highlight over selection", true, Selected | Highlighted, SELECTED_COLOR, HIGHLIGHT_COLOR);
    }

    void colorsByState()
    {
        const auto [isPolygon, states, penColor, brushColor] = row<bool, ElementStates, QColor, QColor>();
        // Bits above the 24 of a colour are ignored.
        const auto look = isPolygon ? paintrules::polygonLook(0x345678, states)
                                    : paintrules::rectLook(0x12345678, 0xff010203, 0.5, states);
        const QPen pen = paintrules::borderPen(look);
        const QBrush brush = paintrules::fillBrush(look);
        QCOMPARE(pen.color(), penColor);
        QCOMPARE(brush.color(), brushColor);
        QCOMPARE(brush.style(), Qt::SolidPattern);
        QCOMPARE(pen.widthF(), isPolygon || states.testFlag(Selected) ? 0.0 : 0.5);
    }

    // What is less than anything visible is no width, nor is what is no number.
    void rectBorderByWidth()
    {
        for (const double width : {0.0, 1e-17, -1e-17, std::numeric_limits<double>::quiet_NaN(), 0.5, 3.5}) {
            const bool isVisible = width > 0.1;
            const QPen pen = paintrules::borderPen(paintrules::rectLook(0, 0x010203, width, {}));
            QCOMPARE(pen.color(), isVisible ? Stroke : RECT_BORDER_COLOR);
            QCOMPARE(pen.widthF(), isVisible ? width : 0.0);
        }
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

    void layersByScale()
    {
        const std::map<int, RangeScale> ranges{{7, {0.0, 100.0}}, {1, {1.0, 1.0}}, {3, {1.0, 4.0}}};
        const std::pair<double, QList<int>> expected[] = {{0.5, {7}}, {20.0, {7}}, // below and above the others
            {1.0, {1, 3, 7}}, // both ends belong to a range
            {1.01, {3, 7}}, {std::numeric_limits<double>::quiet_NaN(), {1, 3, 7}}}; // no number hides nothing
        for (const auto& [scale, layers] : expected)
            QCOMPARE(visibleLayersAt(ranges, scale), layers);
        QVERIFY(visibleLayersAt({}, 1.0).isEmpty());
    }
};

ZEL_TEST_MAIN(TestAttributes)
#include "tst_attributes.moc"
