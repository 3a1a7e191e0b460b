// SPDX-License-Identifier: MIT
#include "graphics/zellineitem.h"
#include "graphics/zelpolygonitem.h"
#include "graphics/zelrectitem.h"
#include "graphics/zeltextitem.h"
#include "tests/support/chipviewfixture.h"
#include "tests/support/pixels.h"

#include <QGraphicsSceneDragDropEvent>
#include <QHelpEvent>
#include <QPlainTextEdit>
#include <QTimer>
#include <QToolTip>

using namespace zeltest;

namespace {

constexpr QRgb Grey = 0xff808080;

// Whether anything but white is in the part of the view's picture that shows a rect of the scene.
bool isAnythingDrawnIn(const QRectF& area)
{
    const QImage image = ChipView::picture();
    const QRect pixels = ChipView::view()->mapFromScene(area).boundingRect() & image.rect();
    return colorsIn(image, pixels).value(0xffffffff) < pixels.width() * pixels.height();
}

// Lets each item paint itself, as in a view that is no chip view.
void letItemsPaint()
{
    QImage image(500, 400, QImage::Format_RGB32);
    QPainter painter(&image);
    ChipView::scene()->render(&painter);
}

bool sendDrag(QGraphicsItem* item, QEvent::Type type)
{
    QGraphicsSceneDragDropEvent event(type);
    event.accept();
    ChipView::scene()->sendEvent(item, &event);
    return event.isAccepted();
}

} // namespace

class TestItems : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void elementsShowTheirState()
    {
        ChipView chip;
        chip.drawing.addRect(7, 10, 10, 40, 40);
        chip.drawing.addPolygon(9, {{70, 10}, {120, 10}, {70, 60}}, 0x204060);
        chip.drawing.addRect(8, 40, 40, 20, 20, 0x00ff00);
        chip.open();
        QCOMPARE(chip.colorAt({45, 45}), QColor(Qt::green)); // later ones lie above
        QCOMPARE(chip.colorAt({115, 55}), QColor(Qt::white)); // beside the polygon's slope
        for (const auto& [id, point, plain] :
            {std::tuple(7, QPointF(30, 30), Grey), std::tuple(9, QPointF(80, 20), 0xff204060U)}) {
            QCOMPARE(chip.colorAt(point).rgb(), plain);
            chip.database()->addSelctedItem(id, false);
            chip.database()->filteredIds().insert(id); // without effect while the filter is off
            QCOMPARE(chip.colorAt(point), SELECTED_FILL_COLOR);
            chip.database()->highlightedIds().assign({id});
            QCOMPARE(chip.colorAt(point), HIGHLIGHT_COLOR);
            chip.database()->highlightedIds().clear();
            chip.scene()->clearSelectedItems();
            QCOMPARE(chip.colorAt(point).rgb(), plain);
        }
    }

    // Neither was in the scene's reach while its layer was hidden, and the line had no geometry.
    void linesAndTextsShowWhenTheirLayerTurnsOn()
    {
        ChipView chip;
        chip.drawing.addLine(1, 150, 20, 190, 20, 4.9).layer = 5;
        chip.drawing.addText(2, "HELLO", 20, 80, 20).layer = 5;
        chip.drawing.parameter.layerRanges = {{5, {1.25, 2.0}}};
        chip.open();
        const auto* line = dynamic_cast<ZELLineItem*>(chip.item(1));
        QVERIFY(!isAnythingDrawnIn({0, 0, 200, 100}) && line->line().isNull());
        chip.view()->zoomIn();
        QVERIFY(isAnythingDrawnIn({150, 18, 40, 4}) && isAnythingDrawnIn({20, 62, 60, 18}));
        QCOMPARE(line->pen().width(), 4);
        chip.view()->zoomOut();
        QVERIFY(!isAnythingDrawnIn({0, 0, 200, 100}));
        chip.refresh(1, {{"tovanel:popup", "new"}}); // of which an item hears when it is shown
        QVERIFY(line->toolTip().isEmpty());
        chip.view()->zoomIn();
        QCOMPARE(line->toolTip(), "new");
    }

    void textStandsOnItsPosition_data()
    {
        const Rows<int, QRectF, QRectF> row;
        const QRectF right(102, 36, 40, 14);
        const QRectF above(86, 5, 14, 43);
        const QRectF below(100, 52, 40, 30);
        row("upright: above the base line, to the right", 0, right, below);
        row("turned to the left: upwards", -90, above, below);
        row("turned all around", 360, right, below);
    }

    void textStandsOnItsPosition()
    {
        const auto [rotation, drawn, empty] = row<int, QRectF, QRectF>();
        ChipView chip;
        chip.drawing.addText(1, "HHHH", 100, 50, 20).rotation = rotation;
        for (int i = 0; i < 100; ++i) // too many for a document each
            chip.drawing.addText(1, "H", 100, 50, 1).layer = 9;
        chip.open();
        QVERIFY(isAnythingDrawnIn(drawn));
        QVERIFY(!isAnythingDrawnIn(empty));
        auto* text = dynamic_cast<ZELTextItem*>(chip.item(1));
        // The painted pixels must lie inside, or they would stay behind when the view scrolls.
        QVERIFY(text->sceneBoundingRect().contains(drawn.adjusted(3, 3, -3, -3)));
        // Measured without a document, which the window's becoming active makes none of, it is found where one would
        // be.
        QTRY_VERIFY(chip.scene()->isActive());
        QVERIFY(text->QGraphicsTextItem::toPlainText().isEmpty());
        const QPainterPath measured = text->shape();
        letItemsPaint();
        QCOMPARE(text->QGraphicsTextItem::toPlainText(), "HHHH");
        QCOMPARE(text->shape(), measured);
        QCOMPARE(text->QGraphicsTextItem::boundingRect(), measured.boundingRect());
    }

    // Items tell the values that they would set if they painted themselves.
    void itemsTellWhatTheyShow()
    {
        // Qt's own classes tell them as well in a small drawing, but not in a large one with texts.
        for (const int more : {0, 6000}) {
            const bool isLarge = more > 0;
            ChipView chip;
            zel_Rect& site = chip.drawing.addRect(7, 10, 10, 40, 40);
            site.tooltip = "free";
            site.strokeWidth = 2;
            chip.drawing.addPolygon(8, {{60, 10}, {90, 10}, {60, 60}}, 0x204060).tooltip = "polygon";
            chip.drawing.addText(9, "label", 100, 50, 10).fillColor = 0x010203;
            chip.drawing.addLine(10, 10, 80, 60, 90, 3);
            chip.drawing.addRect(7, 150, 10, 20, 20).layer = 9;
            for (int i = 0; i < more; ++i) {
                chip.drawing.addRect(100 + i, 120, 70, 5, 5);
                if (i % 50 == 0)
                    chip.drawing.addText(1, "t", 120, 90, 2);
            }
            chip.open();
            chip.picture();
            auto* rect = dynamic_cast<ZELRectItem*>(chip.item(1));
            auto* polygon = dynamic_cast<ZELPolygonItem*>(chip.item(2));
            auto* text = dynamic_cast<ZELTextItem*>(chip.item(3));
            const auto fillOf = [isLarge](auto* item) {
                return (isLarge ? item->brush() : item->QAbstractGraphicsShapeItem::brush()).color();
            };
            QCOMPARE(fillOf(rect).rgb(), Grey);
            QCOMPARE(rect->pen().widthF(), 2.0);
            QCOMPARE(fillOf(polygon), QColor(0x20, 0x40, 0x60));
            QCOMPARE(rect->toolTip(), "free");
            QCOMPARE(polygon->toolTip(), "polygon");
            QCOMPARE(isLarge ? text->toPlainText() : text->QGraphicsTextItem::toPlainText(), "label");
            QCOMPARE(text->font().pixelSize(), 50);
            QCOMPARE(text->defaultTextColor(), QColor(1, 2, 3));
            QCOMPARE(dynamic_cast<ZELLineItem*>(chip.item(4))->pen().width(), 3);

            chip.database()->selectedIds().insert(7);
            chip.database()->selectedIds().insert(8);
            QCOMPARE(fillOf(rect), SELECTED_FILL_COLOR);
            QCOMPARE(rect->pen().color(), SELECTED_COLOR);
            QCOMPARE(fillOf(polygon), SELECTED_FILL_COLOR);
            chip.database()->highlightedIds().assign({7});
            QCOMPARE(fillOf(rect), HIGHLIGHT_COLOR);
            chip.database()->selectedIds().clear();
            chip.database()->highlightedIds().clear();

            chip.refresh(7, {{"fill", "#FF0000"}, {"tovanel:popup", "occupied"}});
            QCOMPARE(fillOf(rect), QColor(Qt::red));
            QCOMPARE(rect->toolTip(), "occupied");

            // Nothing of one whose layer is hidden was touched; it is told when it is shown.
            auto* hidden = dynamic_cast<ZELRectItem*>(chip.item(5));
            QCOMPARE(hidden->brush(), QBrush());
            QVERIFY(hidden->toolTip().isEmpty());
            chip.attribute(5)->layer = 0;
            chip.attribute(3)->toolTip = "written";
            *static_cast<QString*>(chip.attribute(3)->getAttribute(ATTR_TEXT)) = "new";
            chip.picture();
            QCOMPARE(fillOf(hidden), QColor(Qt::red));
            QCOMPARE(hidden->toolTip(), "occupied");
            QCOMPARE(text->toolTip(), "written");
            QCOMPARE(text->toPlainText(), "new");
        }
    }

    // A host moves elements from one hidden layer to another, which is shown later.
    void itemsOfAnotherLayerTellNothingBefore()
    {
        ChipView chip;
        chip.drawing.parameter.layerRanges = {{0, {0, 9}}, {1, {2, 9}}, {2, {4, 9}}};
        chip.drawing.addRect(7, 10, 10, 40, 40).layer = 1;
        chip.drawing.addLine(8, 10, 80, 60, 90, 3).layer = 1;
        chip.open();
        for (int loadNumber : {1, 2})
            chip.attribute(loadNumber)->layer = 2;
        auto* rect = dynamic_cast<QAbstractGraphicsShapeItem*>(chip.item(1));
        auto* line = dynamic_cast<QGraphicsLineItem*>(chip.item(2));
        for (const double scale : {1.0, 2.0}) {
            chip.view()->setCurrentScale(scale);
            chip.picture();
            QVERIFY(line->line().isNull());
            QCOMPARE(rect->brush(), QBrush());
        }
        chip.view()->setCurrentScale(4);
        chip.picture();
        QCOMPARE(line->line(), QLineF(10, 80, 60, 90));
        QCOMPARE(rect->brush().color().rgb(), Grey);
    }

    void toolTipsFollowTheAttribute()
    {
        ChipView chip;
        chip.drawing.addRect(7, 10, 10, 40, 40).tooltip = "site";
        chip.drawing.addRect(8, 60, 10, 40, 40).tooltip = "hidden";
        chip.drawing.records.back()->layer = 9;
        chip.open();
        const auto toolTipAt = [&chip](const QPointF& scenePoint) {
            const QPoint position = chip.view()->mapFromScene(scenePoint);
            QHelpEvent event(QEvent::ToolTip, position, chip.view()->viewport()->mapToGlobal(position));
            QApplication::sendEvent(chip.view()->viewport(), &event);
            return QToolTip::text();
        };
        QCOMPARE(toolTipAt({20, 20}), "site");
        QVERIFY(toolTipAt({70, 20}) != "hidden");
        chip.attribute(1)->toolTip = "occupied";
        QCOMPARE(toolTipAt({20, 20}), "occupied");

        // An item that paints itself shows it as well.
        chip.attribute(1)->toolTip = "free";
        letItemsPaint();
        QCOMPARE(chip.item(1)->toolTip(), "free");
        QVERIFY(chip.item(2)->toolTip().isEmpty());
    }

    void paintOutsideOfAChipSceneDrawsNothing()
    {
        ChipView chip({{7, {0, 0, 20, 20}}});
        QGraphicsScene plain;
        plain.addItem(new ZELRectItem(1));
        plain.addItem(new ZELRectItem(99)); // has no attribute
        QImage image(20, 20, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        plain.render(&painter, {0, 0, 20, 20}, {0, 0, 20, 20});
        QCOMPARE(image.pixelColor(10, 10), QColor(Qt::white));
    }

    void dragIsAcceptedOnlyWhereTheEngineAllows_data()
    {
        const Rows<int, bool, int, QSet<int>, bool> row; // load number, allowed, type; selected, highlight pending
        row("a free rect is selected and asked about", 1, true, ZEL_RESOURCE_UNKNOWN, {70}, true);
        row("a supply site is asked about", 1, true, ZEL_RESOURCE_UVCCIO, {}, true);
        row("a refusing rect is neither", 1, false, ZEL_RESOURCE_UNKNOWN, {}, false);
        row("a polygon accepts without selecting itself", 2, true, ZEL_RESOURCE_UNKNOWN, {}, false);
        row("a polygon refuses", 2, false, ZEL_RESOURCE_UNKNOWN, {}, false);
    }

    void dragIsAcceptedOnlyWhereTheEngineAllows()
    {
        const auto [loadNumber, isAllowed, type, selected, isPending] = row<int, bool, int, QSet<int>, bool>();
        ChipView chip;
        chip.engine.addCell(nullptr, "ip1");
        chip.engine.types["70"] = type;
        chip.drawing.addRect(70, 10, 10, 40, 40).tooltip = "site 70";
        chip.drawing.addPolygon(80, {{60, 10}, {90, 10}, {60, 60}});
        chip.drawing.addText(90, "label", 10, 90, 10);
        if (isAllowed)
            chip.engine.allowedSites = {"70", "80"};
        chip.open();
        chip.picture();
        chip.selectRow(0);

        QGraphicsItem* item = chip.item(loadNumber);
        QCOMPARE(sendDrag(item, QEvent::GraphicsSceneDragEnter), isAllowed);
        QCOMPARE(chip.selected(), selected);
        QCOMPARE(chip.database()->findChild<QTimer*>()->isActive(), isPending);
        const auto* hoverText = chip.view()->findChild<QPlainTextEdit*>();
        if (loadNumber == 1)
            QVERIFY(hoverText->toPlainText() == "site 70" && hoverText->isVisible());
        sendDrag(item, QEvent::GraphicsSceneDragLeave);
        QVERIFY(chip.selected().isEmpty());
        chip.database()->highlightedIds().assign({1, 2});
        sendDrag(chip.item(3), QEvent::GraphicsSceneDragEnter); // a text only ends the highlight
        QVERIFY(chip.database()->highlightedIds().isEmpty());
    }
};

ZEL_TEST_MAIN(TestItems)
#include "tst_items.moc"
