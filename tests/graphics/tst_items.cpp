// SPDX-License-Identifier: MIT
#include "graphics/zellineitem.h"
#include "graphics/zelpolygonitem.h"
#include "graphics/zelrectitem.h"
#include "graphics/zeltextitem.h"
#include "tests/support/chipviewfixture.h"
#include "tests/support/testmain.h"

#include <QGraphicsSceneDragDropEvent>
#include <QHelpEvent>
#include <QMimeData>
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
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
        for (int x = pixels.left(); x <= pixels.right(); ++x) {
            if (image.pixel(x, y) != 0xffffffff)
                return true;
        }
    }
    return false;
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
    void rectsShowTheirState();
    void polygonsShowSelectionAndHighlight();
    void laterElementsLieAbove();
    void linesAreEmptyUntilShown();
    void linesAndTextsShowWhenTheirLayerTurnsOn();
    void textStandsOnItsPosition_data();
    void textStandsOnItsPosition();
    void itemsTellWhatTheyShow_data();
    void itemsTellWhatTheyShow();
    void itemsOfAnotherLayerTellNothingBefore();
    void toolTipsFollowTheAttribute();
    void paintOutsideOfAChipSceneDrawsNothing();
    void dragIsAcceptedOnlyWhereTheEngineAllows_data();
    void dragIsAcceptedOnlyWhereTheEngineAllows();
    void supplySitesAreNotSelectedByADrag();
    void textEndsAHighlight();
};

void TestItems::rectsShowTheirState()
{
    ChipView chip;
    chip.drawing.addRect(7, 10, 10, 40, 40);
    chip.open();
    const QPointF middle(30, 30);
    QCOMPARE(chip.colorAt(middle).rgb(), Grey);
    chip.database()->selectedIds().insert(7);
    QCOMPARE(chip.colorAt(middle), SELECTED_FILL_COLOR);
    chip.database()->filteredIds().insert(7); // without effect while the filter is off
    QCOMPARE(chip.colorAt(middle), SELECTED_FILL_COLOR);
    chip.database()->highlightedIds().insert(7);
    QCOMPARE(chip.colorAt(middle), HIGHLIGHT_COLOR);
    chip.database()->highlightedIds().clear();
    chip.scene()->clearSelectedItems();
    QCOMPARE(chip.colorAt(middle).rgb(), Grey);
}

void TestItems::polygonsShowSelectionAndHighlight()
{
    ChipView chip;
    chip.drawing.addPolygon(9, {{10, 10}, {60, 10}, {10, 60}}, 0x204060);
    chip.open();
    QCOMPARE(chip.colorAt({20, 20}), QColor(0x20, 0x40, 0x60));
    QCOMPARE(chip.colorAt({55, 55}), QColor(Qt::white));
    chip.database()->addSelctedItem(9, false);
    QCOMPARE(chip.colorAt({20, 20}), SELECTED_FILL_COLOR);
    chip.database()->highlightedIds().assign({9});
    QCOMPARE(chip.colorAt({20, 20}), HIGHLIGHT_COLOR);
}

void TestItems::laterElementsLieAbove()
{
    ChipView chip;
    chip.drawing.addRect(1, 10, 10, 40, 40, 0xff0000);
    chip.drawing.addRect(2, 20, 20, 40, 40, 0x00ff00);
    chip.open();
    QCOMPARE(chip.colorAt({15, 15}), QColor(Qt::red));
    QCOMPARE(chip.colorAt({40, 40}), QColor(Qt::green));
}

void TestItems::linesAreEmptyUntilShown()
{
    ChipView chip;
    chip.drawing.addLine(1, 150, 20, 190, 20, 4.9);
    chip.drawing.parameter.layerRanges = {};
    chip.open();
    auto* line = dynamic_cast<ZELLineItem*>(chip.item(1));
    QVERIFY(line);
    chip.picture();
    QVERIFY(line->line().isNull());
    QVERIFY(!isAnythingDrawnIn({0, 0, 200, 100}));
}

// Neither was in the scene's reach while its layer was hidden.
void TestItems::linesAndTextsShowWhenTheirLayerTurnsOn()
{
    ChipView chip;
    chip.drawing.addLine(1, 150, 20, 190, 20, 4.9).layer = 5;
    chip.drawing.addText(2, "HELLO", 20, 80, 20).layer = 5;
    chip.drawing.parameter.layerRanges = {{5, {1.25, 2.0}}};
    chip.open();
    QVERIFY(!isAnythingDrawnIn({0, 0, 200, 100}));
    chip.view()->zoomIn();
    QVERIFY(isAnythingDrawnIn({150, 18, 40, 4}));
    QVERIFY(isAnythingDrawnIn({20, 62, 60, 18}));
    QCOMPARE(dynamic_cast<ZELLineItem*>(chip.item(1))->pen().width(), 4);
    chip.view()->zoomOut();
    QVERIFY(!isAnythingDrawnIn({0, 0, 200, 100}));
}

void TestItems::textStandsOnItsPosition_data()
{
    QTest::addColumn<int>("rotation");
    QTest::addColumn<QRectF>("drawn");
    QTest::addColumn<QRectF>("empty");
    const QRectF right(102, 36, 40, 14);
    const QRectF above(86, 5, 14, 43);
    const QRectF below(100, 52, 40, 30);
    QTest::newRow("upright: above the base line, to the right") << 0 << right << below;
    QTest::newRow("turned to the left: upwards") << -90 << above << below;
    QTest::newRow("turned all around") << 360 << right << below;
}

void TestItems::textStandsOnItsPosition()
{
    QFETCH(int, rotation);
    QFETCH(QRectF, drawn);
    QFETCH(QRectF, empty);
    ChipView chip;
    chip.drawing.addText(1, "HHHH", 100, 50, 20).rotation = rotation;
    for (int i = 0; i < 100; ++i) // too many for a document each
        chip.drawing.addText(1, "H", 100, 50, 1).layer = 9;
    chip.open();
    QVERIFY(isAnythingDrawnIn(drawn));
    QVERIFY(!isAnythingDrawnIn(empty));
    auto* text = dynamic_cast<ZELTextItem*>(chip.item(1));
    // What is painted must lie inside, or it would stay behind when the view scrolls.
    QVERIFY(text->sceneBoundingRect().contains(drawn.adjusted(3, 3, -3, -3)));
    // Measured without a document, which the window's becoming active makes none of, it is found where one would be.
    QTRY_VERIFY(chip.scene()->isActive());
    QVERIFY(text->QGraphicsTextItem::toPlainText().isEmpty());
    const QPainterPath measured = text->shape();
    QImage image(chip.view()->viewport()->size(), QImage::Format_RGB32);
    QPainter painter(&image);
    chip.scene()->render(&painter);
    QCOMPARE(text->QGraphicsTextItem::toPlainText(), QStringLiteral("HHHH"));
    QCOMPARE(text->shape(), measured);
    QCOMPARE(text->QGraphicsTextItem::boundingRect(), measured.boundingRect());
}

void TestItems::itemsTellWhatTheyShow_data()
{
    QTest::addColumn<int>("more"); // elements, and texts
    QTest::newRow("in a small drawing through Qt's classes as well") << 0;
    QTest::newRow("in a large drawing through their own") << 6000;
}

// What they would set if they painted themselves.
void TestItems::itemsTellWhatTheyShow()
{
    QFETCH(int, more);
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
    const auto fillOf
        = [more](auto* item) { return (more > 0 ? item->brush() : item->QAbstractGraphicsShapeItem::brush()).color(); };
    QCOMPARE(fillOf(rect).rgb(), Grey);
    QCOMPARE(rect->pen().widthF(), 2.0);
    QCOMPARE(fillOf(polygon), QColor(0x20, 0x40, 0x60));
    QCOMPARE(rect->toolTip(), QStringLiteral("free"));
    QCOMPARE(polygon->toolTip(), QStringLiteral("polygon"));
    QCOMPARE(more > 0 ? text->toPlainText() : text->QGraphicsTextItem::toPlainText(), QStringLiteral("label"));
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

    chip.engine.device.addRecord(7, {{"fill", "#FF0000"}, {"tovanel:popup", "occupied"}});
    chip.window->refresh(REFRESH_GRAPHIC);
    QCOMPARE(fillOf(rect), QColor(Qt::red));
    QCOMPARE(rect->toolTip(), QStringLiteral("occupied"));

    // Nothing of one whose layer is hidden was touched; it is told when it is shown.
    auto* hidden = dynamic_cast<ZELRectItem*>(chip.item(5));
    QCOMPARE(hidden->brush(), QBrush());
    QVERIFY(hidden->toolTip().isEmpty());
    chip.database()->getGraphicItemAttribute(5)->layer = 0;
    chip.database()->getGraphicItemAttribute(3)->toolTip = QStringLiteral("written");
    *static_cast<QString*>(chip.database()->getGraphicItemAttribute(3)->getAttribute(ATTR_TEXT))
        = QStringLiteral("new");
    chip.picture();
    QCOMPARE(fillOf(hidden), QColor(Qt::red));
    QCOMPARE(hidden->toolTip(), QStringLiteral("occupied"));
    QCOMPARE(text->toolTip(), QStringLiteral("written"));
    QCOMPARE(text->toPlainText(), QStringLiteral("new"));
}

// A host moves elements from one hidden layer to another, which is shown later.
void TestItems::itemsOfAnotherLayerTellNothingBefore()
{
    ChipView chip;
    chip.drawing.parameter.layerRanges = {{0, {0, 9}}, {1, {2, 9}}, {2, {4, 9}}};
    chip.drawing.addRect(7, 10, 10, 40, 40).layer = 1;
    chip.drawing.addLine(8, 10, 80, 60, 90, 3).layer = 1;
    chip.open();
    for (int loadNumber : {1, 2})
        chip.database()->getGraphicItemAttribute(loadNumber)->layer = 2;
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

void TestItems::toolTipsFollowTheAttribute()
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
    QCOMPARE(toolTipAt({20, 20}), QStringLiteral("site"));
    QVERIFY(toolTipAt({70, 20}) != QStringLiteral("hidden"));
    chip.database()->getGraphicItemAttribute(1)->toolTip = QStringLiteral("occupied");
    QCOMPARE(toolTipAt({20, 20}), QStringLiteral("occupied"));

    // An item that paints itself shows it as well.
    chip.database()->getGraphicItemAttribute(1)->toolTip = QStringLiteral("free");
    QImage image(20, 20, QImage::Format_RGB32);
    QPainter painter(&image);
    chip.scene()->render(&painter);
    QCOMPARE(chip.item(1)->toolTip(), QStringLiteral("free"));
    QVERIFY(chip.item(2)->toolTip().isEmpty());
}

void TestItems::paintOutsideOfAChipSceneDrawsNothing()
{
    ChipView chip;
    chip.drawing.addRect(7, 0, 0, 20, 20);
    chip.open();
    QGraphicsScene plain;
    plain.addItem(new ZELRectItem(1));
    plain.addItem(new ZELRectItem(99)); // has no attribute
    QImage image(20, 20, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    plain.render(&painter, {0, 0, 20, 20}, {0, 0, 20, 20});
    QCOMPARE(image.pixelColor(10, 10), QColor(Qt::white));
}

void TestItems::dragIsAcceptedOnlyWhereTheEngineAllows_data()
{
    QTest::addColumn<int>("loadNumber");
    QTest::addColumn<bool>("isAllowed");
    QTest::addColumn<QSet<int>>("selectedOnEnter");
    QTest::addColumn<bool>("isHighlightPending");
    QTest::newRow("a free rect is selected and asked about") << 1 << true << QSet<int>{70} << true;
    QTest::newRow("a refusing rect is neither") << 1 << false << QSet<int>{} << false;
    QTest::newRow("a polygon accepts without selecting itself") << 2 << true << QSet<int>{} << false;
    QTest::newRow("a polygon refuses") << 2 << false << QSet<int>{} << false;
}

void TestItems::dragIsAcceptedOnlyWhereTheEngineAllows()
{
    QFETCH(int, loadNumber);
    QFETCH(bool, isAllowed);
    ChipView chip;
    chip.engine.addCell(nullptr, "ip1");
    chip.drawing.addRect(70, 10, 10, 40, 40).tooltip = "site 70";
    chip.drawing.addPolygon(80, {{60, 10}, {90, 10}, {60, 60}});
    if (isAllowed)
        chip.engine.allowedSites = {"70", "80"};
    chip.open();
    chip.picture();
    chip.selectRow(0);

    QGraphicsItem* item = chip.item(loadNumber);
    QCOMPARE(sendDrag(item, QEvent::GraphicsSceneDragEnter), isAllowed);
    QTEST(chip.selected(), "selectedOnEnter");
    QTEST(chip.database()->findChild<QTimer*>()->isActive(), "isHighlightPending");
    if (loadNumber == 1) {
        auto* hoverText = chip.view()->findChild<QPlainTextEdit*>();
        QCOMPARE(hoverText->toPlainText(), QStringLiteral("site 70"));
        QVERIFY(hoverText->isVisible());
    }
    sendDrag(item, QEvent::GraphicsSceneDragLeave);
    QVERIFY(chip.selected().isEmpty());
}

void TestItems::supplySitesAreNotSelectedByADrag()
{
    ChipView chip;
    chip.engine.addCell(nullptr, "vccio");
    chip.engine.allowedSites = {"70"};
    chip.engine.types["70"] = ZEL_RESOURCE_UVCCIO;
    chip.drawing.addRect(70, 10, 10, 40, 40);
    chip.open();
    chip.selectRow(0);
    QVERIFY(sendDrag(chip.item(1), QEvent::GraphicsSceneDragEnter));
    QVERIFY(chip.selected().isEmpty());
    QVERIFY(chip.database()->findChild<QTimer*>()->isActive());
}

void TestItems::textEndsAHighlight()
{
    ChipView chip;
    chip.drawing.addText(5, "label", 10, 50, 10);
    chip.open();
    chip.database()->highlightedIds().assign({1, 2});
    sendDrag(chip.item(1), QEvent::GraphicsSceneDragEnter);
    QVERIFY(chip.database()->highlightedIds().isEmpty());
}

ZEL_TEST_MAIN(TestItems)
#include "tst_items.moc"
