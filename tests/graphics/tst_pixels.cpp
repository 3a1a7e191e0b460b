// SPDX-License-Identifier: MIT
#include "graphics/painting/dirtyparts.h"
#include "graphics/painting/viewcanvas.h"
#include "graphics/quickpicture.h"
#include "graphics/sceneelements.h"
#include "graphics/statepictures.h"
#include "graphics/viewpicture.h"
#include "graphics/zellineattribute.h"
#include "graphics/zellineitem.h"
#include "graphics/zelpolygonattribute.h"
#include "graphics/zelpolygonitem.h"
#include "graphics/zeltextattribute.h"
#include "graphics/zeltextitem.h"
#include "graphics/zelviewlayer.h"
#include "tests/support/chipviewfixture.h"
#include "tests/support/itemsview.h"
#include "tests/support/random.h"

#include <QBackingStore>
#include <QCheckBox>
#include <QGraphicsEllipseItem>
#include <QMenu>

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>

using namespace zeltest;

namespace {

constexpr int Width = 420;
constexpr int Height = 310;

// The share of a picture's pixels that may be wrong: Qt 5 draws a rect within one column of pixels too faint.
constexpr double ThinRects = QT_VERSION < QT_VERSION_CHECK(6, 0, 0) ? 0.01 : 0;

// All kinds of elements, tiny and large, with every sort of pen, on three layers and partly outside.
void fill(Drawing& drawing, int count)
{
    Random random;
    drawing.setSize(400, 300);
    drawing.parameter.maximumScale = 1000;
    drawing.parameter.layerRanges = {{0, {0.0, 1000.0}}, {1, {0.0, 3.0}}, {2, {2.0, 1000.0}}};
    constexpr double Widths[] = {0, 0.05, 0.3, 1, 2.5};
    for (int i = 0; i < count; ++i) {
        const int id = 1 + random.below(count);
        const double size = i % 17 == 0 ? 60 : i % 3 == 0 ? 0.8 : 9;
        double x = random.upTo(430) - 15;
        double y = random.upTo(330) - 15;
        if (i % 4 == 0) {
            x = std::floor(x); // whole numbers lie on the borders of pixels
            y = std::floor(y);
        }
        zel_SingleGraphItem* added = nullptr;
        if (i % 20 == 5) {
            const double length = random.upTo(4 * size) - size;
            added = &drawing.addLine(id, x, y, x + length, y + size, random.upTo(3));
            static_cast<zel_Line*>(added)->strokeColor = random.color();
        } else if (i % 20 == 6) {
            added = &drawing.addLine(id, x, y, i % 40 == 6 ? x : x + size, i % 40 == 6 ? y + size : y);
            if (i % 100 == 6) // without a length, thin and wide
                drawing.addLine(id, x, y + 5, x, y + 5, i % 3);
        } else if (i % 20 == 9) {
            std::vector<zel_Point> corners{{x, y}, {x + size, y + 2}, {x + 0.7 * size, y + size}};
            if (i % 40 == 9)
                corners.insert(corners.end(), {{x, y + 0.3 * size}, {x + 1.2 * size, y + 0.8 * size}});
            added = &drawing.addPolygon(id, corners, random.color());
        } else if (i % 20 == 13) {
            added = &drawing.addText(id, i % 3 ? "PLL_T" + std::to_string(i) : "AVA fi", x, y, 0.5 + random.upTo(9));
            static_cast<zel_Text*>(added)->rotation = i % 8 == 5 ? -90 : 0;
        } else {
            const double width = random.upTo(size);
            const double height = i % 9 ? random.upTo(size) : size;
            zel_Rect& rect = drawing.addRect(id, x, y, width, height, random.color());
            rect.strokeWidth = Widths[random.below(5)];
            rect.strokeColor = random.color();
            added = &rect;
        }
        added->layer = i % 7 == 0 ? 1 + i % 2 : 0;
    }
}

bool isNear(QRgb a, QRgb b, int levels)
{
    return std::abs(qRed(a) - qRed(b)) <= levels && std::abs(qGreen(a) - qGreen(b)) <= levels
        && std::abs(qBlue(a) - qBlue(b)) <= levels;
}

// A pixel differs when one of its colours does so by more than `levels`.
int differingPixels(const QImage& a, const QImage& b, int levels = 0)
{
    if (a.size() != b.size())
        return -1;
    int differing = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x)
            differing += isNear(a.pixel(x, y), b.pixel(x, y), levels) ? 0 : 1;
    }
    return differing;
}

QImage grabbed(QWidget* viewport, qreal ratio)
{
    QImage image(viewport->size() * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    viewport->render(&image);
    return image;
}

// The picture of a view of Qt's own, in which every item paints itself.
QImage paintedByItems(const QGraphicsView& like, qreal ratio)
{
    const ItemsView items(like);
    return grabbed(items.viewport(), ratio);
}

// A host's change to an item, and how it is taken back.
using Change = std::function<void(QGraphicsItem*, bool isDone)>;
using FontChange = std::function<void(QFont&)>;
using Writing = std::function<void(ZELGraphicItemAttribute&)>;

const QString ViewIsRight = "view, 0 wrong";
const QString QtIsRight = "Qt, 0 wrong";

class PixelView : public ChipView
{
public:
    explicit PixelView(int elements, const std::function<void(Drawing&)>& addMore = {})
    {
        fill(drawing, elements);
        if (addMore)
            addMore(drawing);
        writeFile(folder.filePath("filter.txt"), "some:3,6,9,12,40,41,42,43,44,100\n");
        open();
        view()->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view()->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        window->resize(window->size() + QSize(Width, Height) - view()->viewport()->size());
        QCoreApplication::processEvents();
    }

    static int differing(qreal ratio = 1.0, int levels = 0)
    {
        const QImage expected = paintedByItems(*view(), ratio);
        const int pixels = differingPixels(grabbed(view()->viewport(), ratio), expected, levels);
        return pixels > ThinRects * expected.width() * expected.height() ? pixels : 0;
    }

    // Who paints it, and how many pixels are wrong.
    static QString verdict(qreal ratio = 1.0)
    {
        const int wrong = differing(ratio); // after which Qt has told the scene of everything
        return QString("%1, %2 wrong").arg(scene()->elements().canPaintFromList() ? "view" : "Qt").arg(wrong);
    }

    static QString verdictAtRest()
    {
        QCoreApplication::processEvents();
        return verdict();
    }

    static void zoom(double scale, const QPointF& centre)
    {
        view()->resetTransform();
        view()->setCurrentScale(scale);
        view()->centerOn(centre);
        QCoreApplication::processEvents();
    }

    static void scroll(QPoint way)
    {
        for (const auto& [bar, distance] :
            {std::pair(view()->horizontalScrollBar(), way.x()), std::pair(view()->verticalScrollBar(), way.y())})
            bar->setValue(bar->value() + distance);
        QCoreApplication::processEvents();
    }

    static void changeStates(int step)
    {
        for (int i = 0; i < 40; ++i)
            database()->addSelctedItem(step * 50 + i * 3, false);
        QSet<int> sites;
        for (int i = 0; i < 50; ++i)
            sites.insert(step * 31 + i * 4);
        database()->highlightedIds().assign(sites);
        if (auto* box = database()->getViewFilterMenu()->findChild<QCheckBox*>())
            box->setChecked(step % 2 == 0);
    }
};

} // namespace

class Stripe final : public ZelViewLayer
{
public:
    explicit Stripe(ZelGraphicsView* view, const QColor& color)
        : ZelViewLayer(view)
        , m_color(color)
    { }

    void paint(QPainter& painter, const QRect&) override { painter.fillRect(Place, m_color); }

    static constexpr QRect Place{20, 30, 40, 10}; // pixels in the viewport

private:
    const QColor m_color;
};

class TestPixels : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void viewShowsWhatItemsPaint_data()
    {
        const Rows<double, double, int, int> row; // scale, ratio, elements, threads
        for (const double scale : {0.37, 1.0, 1.331, 4.0, 10.0, 30.0}) {
            for (const double ratio : {1.0, 1.5, 2.0})
                row(qPrintable(QString("scale %1, device pixel ratio %2").arg(scale).arg(ratio)), scale, ratio, 3000,
                    1);
        }
        row("by two threads", 0.37, 1.0, 12000, 2); // fewer elements are not shared among threads
        row("by five threads", 0.7, 2.0, 12000, 5);
    }

    void viewShowsWhatItemsPaint()
    {
        const auto [scale, ratio, elements, threads] = row<double, double, int, int>();
        PixelView chip(elements);
        chip.view()->setPaintThreads(threads);
        chip.zoom(scale, {170, 120});
        QCOMPARE(chip.differing(ratio), 0);
        for (int step = 0; step < 3; ++step) {
            chip.changeStates(step);
            QCOMPARE(chip.verdict(ratio), ViewIsRight); // else Qt painted both
        }
        chip.database()->selectedIds().clear();
        chip.refresh(17, {{"fill", "#FF0000"}, {"tovanel:popup", "occupied"}});
        QCOMPARE(chip.differing(ratio), 0);
    }

    // There are as many texts as QPainter draws one by one, and as many as are put together from glyphs.
    void labelsHaveTheTraitsOfTheViewsFont_data()
    {
        const Rows<FontChange> row;
        row("none", [](QFont&) {});
        row("bold", [](QFont& font) { font.setBold(true); });
        row("slanted", [](QFont& font) { font.setItalic(true); });
        row("not hinted", [](QFont& font) { font.setHintingPreference(QFont::PreferNoHinting); });
        row("fully hinted", [](QFont& f) { f.setHintingPreference(QFont::PreferFullHinting); });
        row("spaced", [](QFont& font) { font.setLetterSpacing(QFont::AbsoluteSpacing, 3); });
        row("stretched", [](QFont& font) { font.setStretch(QFont::SemiExpanded); });
        row("in small capitals", [](QFont& font) { font.setCapitalization(QFont::SmallCaps); });
        row("underlined", [](QFont& font) { font.setUnderline(true); });
    }

    void labelsHaveTheTraitsOfTheViewsFont()
    {
        const auto [change] = row<FontChange>();
        for (const int texts : {30, 400}) {
            PixelView chip(400, [texts](Drawing& drawing) {
                Random random;
                for (int i = 0; i < texts; ++i)
                    drawing.addText(i, "AVA fi" + std::to_string(i), random.upTo(380), random.upTo(300), 2 + i % 9);
            });
            QFont font = chip.view()->font();
            change(font);
            chip.view()->setFont(font);
            for (const double scale : {1.0, 2.3}) {
                chip.zoom(scale, {170, 120});
                QCOMPARE(chip.differing(), 0);
            }
            chip.view()->setFont(QFont());
            QCOMPARE(chip.verdict(), ViewIsRight);
        }
    }

    // After a scroll a pixel may be off by one level, for QPainter rounds by where the border is; painted anew, by
    // none.
    void pictureStaysRightWhenScrolled()
    {
        PixelView chip(3000, [](Drawing& drawing) {
            Random random;
            for (int i = 0; i < 40; ++i) { // edges on the borders of pixels
                zel_Rect& rect = drawing.addRect(5000 + i, random.below(60), random.below(300),
                    random.below(60) + i % 2 * 0.5, 1 + random.below(12), random.color());
                rect.strokeWidth = i % 5 == 0 ? 0.1 : 0;
                rect.strokeColor = random.color();
            }
            for (int i = 0; i < 60;
                 ++i) // lines without a length, which QPainter may draw as bars when they lie outside
                drawing.addLine(6000 + i, 0.5 * i, 135 + 0.3 * i, 0.5 * i, 135 + 0.3 * i, 2);
        });
        for (const double scale : {1.1, 4.0, 12.1, 30.0}) {
            chip.zoom(scale, {scale > 20 ? 20.0 : 200.0, 150});
            for (const QPoint way : {QPoint(50, 0), QPoint(0, -31), QPoint(-17, 40), QPoint(1, 1), QPoint(8, 0),
                     QPoint(0, 15), QPoint(-400, -300)}) {
                const QPoint to = chip.scrolled() + way;
                chip.view()->horizontalScrollBar()->setValue(to.x());
                chip.changeStates(way.x() & 3); // before it is painted
                chip.view()->verticalScrollBar()->setValue(to.y());
                QCOMPARE(chip.differing(1.0, 1), 0);
            }
            chip.scene()->elements().repaintAll();
            QCOMPARE(chip.verdict(), ViewIsRight);
        }
    }

    void turnedViewIsRightToo()
    {
        PixelView chip(600);
        const std::function<void()> changes[] = {
            [&] { chip.view()->rotate(30); },
            [&] { chip.view()->setTransform(QTransform::fromScale(2, 1.5)); },
            [&] { chip.view()->setRenderHint(QPainter::Antialiasing, false); },
            [&] { chip.scene()->setBackgroundBrush(QBrush(Qt::yellow, Qt::Dense5Pattern)); },
        };
        for (const auto& change : changes) {
            change();
            QCOMPARE(chip.differing(), 0);
        }
    }

    void whatAHostAddsIsShown()
    {
        PixelView chip(300);
        QCOMPARE(chip.verdict(), ViewIsRight);
        auto* ellipse = chip.scene()->addEllipse(50, 50, 90, 70, QPen(Qt::red, 3), QBrush(Qt::blue));
        ellipse->setZValue(140);
        QCOMPARE(chip.verdictAtRest(), QtIsRight);
        auto* rect = chip.scene()->addRect(250, 50, 20, 20, Qt::NoPen, Qt::green);
        QCoreApplication::processEvents();
        rect->moveBy(40, 0);
        delete ellipse;
        QCOMPARE(chip.verdictAtRest(), QtIsRight);
        rect->hide(); // then there is nothing to paint
        QCOMPARE(chip.verdictAtRest(), ViewIsRight);
        rect->show();
        QCOMPARE(chip.verdictAtRest(), QtIsRight);
        chip.database()->highlightedIds().assign({1, 2, 3, 4, 5});
        chip.scene()->removeItem(rect);
        delete rect;
        QCOMPARE(chip.verdictAtRest(), ViewIsRight);
    }

    // An attribute that has no record is of no kind.
    void elementsOfAHostArePaintedAsTheirClass()
    {
        PixelView chip(60);
        const std::vector<zel_Point> corners{{120, 90}, {180, 120}, {110, 160}};
        const auto add = [&chip](int loadNumber, auto* attribute, auto makeItem) {
            attribute->layer = 0;
            chip.database()->setGraphicAttribute(loadNumber, attribute);
            chip.scene()->addItem(makeItem(loadNumber));
        };
        add(1001, new ZELLineAttribute(20, 20, 130, 90, 0x336699, 3), [](int n) { return new ZELLineItem(n); });
        add(1002, new ZELPolygonAttribute(corners, 0x993366, 0, 0, {}), [](int n) { return new ZELPolygonItem(n); });
        std::vector<tspan> spans;
        add(1003, new ZELTextAttribute("own", 60, 140, 20, "DejaVu Sans", 0, 0, spans, 0, 0),
            [](int n) { return new ZELTextItem(n); });
        QCOMPARE(chip.verdictAtRest(), ViewIsRight);
        QCOMPARE(chip.colorAt({135, 120}), QColor(0x99, 0x33, 0x66));
    }

    void everyViewShowsTheLayersOfTheFirst()
    {
        PixelView chip(600);
        ZelGraphicsView second(chip.scene(), nullptr);
        second.resize(300, 200);
        second.show();
        for (const double scale : {1.0, 10.0}) { // different layers
            chip.zoom(scale, {170, 120});
            QCOMPARE(differingPixels(grabbed(second.viewport(), 1), paintedByItems(second, 1)), 0);
            QVERIFY(chip.scene()->elements().canPaintFromList());
        }
    }

    void whatAHostDoesToAnElementIsShown_data()
    {
        const Rows<Change> row;
        using Item = QGraphicsItem;
        row("moved", [](Item* i, bool isDone) { i->moveBy(isDone ? 30 : -30, isDone ? 20 : -20); });
        row("scaled", [](Item* i, bool isDone) { i->setScale(i->scale() * (isDone ? 2 : 0.5)); });
        row("turned", [](Item* i, bool isDone) { i->setRotation(isDone ? 9 : 0); });
        row("transformed",
            [](Item* i, bool isDone) { i->setTransform(isDone ? QTransform(1, 0.4, 0, 1, 9, 0) : QTransform()); });
        row("faded", [](Item* i, bool isDone) { i->setOpacity(isDone ? 0.5 : 1); });
        row("hidden", [](Item* i, bool isDone) { i->setVisible(!isDone); });
        row("selected in Qt's way", [](Item* i, bool isDone) {
            i->setFlag(Item::ItemIsSelectable);
            i->setSelected(isDone);
        });
    }

    void whatAHostDoesToAnElementIsShown()
    {
        const auto [change] = row<Change>();
        PixelView chip(300);
        QCOMPARE(chip.differing(), 0);
        QVERIFY(dynamic_cast<ZELTextItem*>(chip.item(15)));
        for (int loadNumber : {2, 15}) { // a rect, the text
            change(chip.item(loadNumber), true);
            QCOMPARE(chip.verdictAtRest(), QtIsRight);
            chip.database()->selectedIds().insert({50, 51, 52, 53, 54, 55, 56, 57, 58, 59 + loadNumber});
            QCOMPARE(chip.verdictAtRest(), QtIsRight); // which the view is to remember
            change(chip.item(loadNumber), false);
            QCOMPARE(chip.verdictAtRest(), ViewIsRight);
        }
    }

    // Every view of the scene shows it, however many attributes the host has asked for.
    void whatAHostWritesIntoAnAttributeIsShown_data()
    {
        // The load number of a rect, a line, a polygon, a text.
        const Rows<int, Writing> row;
        using Attribute = ZELGraphicItemAttribute;
        const auto into = [](zelgraphic_attribute_key key, auto value) {
            return Writing([=](Attribute& a) { *static_cast<decltype(value)*>(a.getAttribute(key)) = value; });
        };
        row("fill colour", 1, [](Attribute& a) { a.setFillColor(0x123456U); });
        row("fill colour through the pointer", 3, into(ATTR_FILL_COLOR, 0x123456U));
        row("a hidden layer", 1, [](Attribute& a) { a.layer = 77; });
        row("the layer of hidden elements", 5, [](Attribute& a) { a.layer = 0; });
        row("the layer of a hidden line", 6, [](Attribute& a) { a.layer = 0; });
        row("the id of a selected element", 1, [](Attribute& a) { a.itemId = 4711; });
        row("border colour", 1, into(ATTR_STROKE_COLOR, 0xff0000U));
        row("border width", 1, into(ATTR_STROKE_WIDTH, 30.0));
        row("line", 2, into(ATTR_LINE, QLineF(10, 200, 200, 30)));
        row("line width", 2, into(ATTR_STROKE_WIDTH, 20.0));
        row("text", 4, into(ATTR_TEXT, QString("a longer text than before")));
        row("font size", 4, into(ATTR_FONT_SIZE, 25.0));
        row("rotation", 4, into(ATTR_ROTATION, 60));
    }

    void whatAHostWritesIntoAnAttributeIsShown()
    {
        const auto [loadNumber, write] = row<int, Writing>();
        enum class Case { OneHandedOut, AllHandedOut, WhileQtPaints };
        for (const Case which : {Case::OneHandedOut, Case::AllHandedOut, Case::WhileQtPaints}) {
            ChipView chip;
            chip.drawing.addRect(1, 100, 80, 60, 40).strokeWidth = 2;
            chip.drawing.addLine(2, 40, 50, 160, 100, 1);
            chip.drawing.addPolygon(3, {{200, 100}, {260, 120}, {210, 160}});
            chip.drawing.addText(4, "text", 200, 60, 10);
            chip.drawing.addRect(5, 300, 200, 40, 30).layer = 99;
            chip.drawing.addLine(6, 240, 220, 290, 240, 3).layer = 99;
            fill(chip.drawing, 1200);
            chip.open();
            ZelGraphicsView second(chip.scene(), nullptr);
            second.resize(420, 320);
            second.show();
            QCoreApplication::processEvents();
            for (int i = 1; which == Case::AllHandedOut && i <= 1206; ++i)
                QVERIFY(chip.attribute(i));
            chip.database()->selectedIds().insert(4711);
            QCOMPARE(differingPixels(grabbed(second.viewport(), 1), paintedByItems(second, 1)), 0);
            const QImage before = chip.picture();
            if (which == Case::WhileQtPaints)
                chip.item(7)->hide();
            write(*chip.attribute(loadNumber));
            if (which == Case::WhileQtPaints) {
                chip.picture();
                chip.item(7)->show();
            }
            const QImage after = chip.picture();
            QVERIFY(before != after);
            QVERIFY(chip.scene()->elements().canPaintFromList());
            QCOMPARE(differingPixels(after, paintedByItems(*chip.view(), 1)), 0);
            QCOMPARE(differingPixels(grabbed(second.viewport(), 1), paintedByItems(second, 1)), 0);
            chip.database()->selectedIds().clear();
            QCOMPARE(differingPixels(chip.picture(), paintedByItems(*chip.view(), 1)), 0);
        }
    }

    void paintsOnlyWhatChanged()
    {
        PixelView chip(2000);
        DisplayList& list = chip.scene()->elements().displayList();
        ViewCanvas canvas(list);
        ViewCanvas::Scene scene;
        scene.toPicture = QTransform::fromScale(1.5, 1.5);
        scene.size = QSize(300, 200);
        scene.layers = {0, 1, 2};
        scene.states = {&chip.database()->selectedIds(), &chip.database()->highlightedIds(), nullptr};
        scene.listVersion = 1;
        scene.hints = QPainter::Antialiasing;
        scene.background = Qt::white;
        int painted = 0;
        double widest = 0; // in scene units
        scene.drawBackground = [&](QPainter&, const QRectF& area) {
            ++painted;
            widest = std::max(widest, area.width());
        };
        canvas.update(scene);
        QCOMPARE(painted, 1);
        canvas.update(scene);
        QCOMPARE(painted, 1); // nothing changed
        int place = 0; // of an element well inside
        while (!QRectF(20, 20, 160, 90).contains(list.boundsOf(place)))
            ++place;
        canvas.invalidate({place});
        widest = 0;
        canvas.update(scene);
        QCOMPARE(painted, 2);
        QVERIFY(widest < 100);
        scene.toPicture = QTransform::fromScale(1.5, 1.5) * QTransform::fromTranslate(0.5, 0);
        canvas.update(scene);
        QCOMPARE(painted, 3); // between two pixels nothing can be moved
    }

    // Whether the view or Qt paints the drawing below them.
    void layersLieOverTheDrawing()
    {
        PixelView chip(500);
        const auto picture = [&] { return grabbed(chip.view()->viewport(), 2); };
        const auto color = [&] { return picture().pixelColor(2 * Stripe::Place.center()); };
        const QImage bare = picture();
        new Stripe(chip.view(), Qt::red); // child of the view
        QGraphicsEllipseItem ofHost(0, 0, 10, 10);
        for (const bool isByQt : {false, true}) {
            if (isByQt)
                chip.scene()->addItem(&ofHost);
            QCoreApplication::processEvents();
            auto upper = std::make_unique<Stripe>(chip.view(), Qt::blue);
            QCOMPARE(color(), QColor(Qt::blue));
            QCOMPARE(chip.scene()->elements().canPaintFromList(), !isByQt);
            upper->setShown(false);
            QCOMPARE(color(), QColor(Qt::red));
        }
        chip.scene()->removeItem(&ofHost);
        delete chip.view()->findChild<ZelViewLayer*>(QString(), Qt::FindDirectChildrenOnly);
        QCOMPARE(differingPixels(picture(), bare), 0);
    }

    // The picture that follows an approximate one is the one that a fresh paint makes.
    void exactPictureFollowsInSlices()
    {
        PixelView chip(600);
        DisplayList& list = chip.scene()->elements().displayList();
        const auto sceneAt = [&](double scale, QPointF corner) {
            ViewCanvas::Scene scene = canvasScene(*chip.view(), *chip.scene());
            scene.toPicture = QTransform(scale, 0, 0, scale, -corner.x(), -corner.y());
            scene.size = QSize(Width, Height);
            scene.layers = {0, 2};
            return scene;
        };
        const ViewCanvas::Scene before = sceneAt(1.0, {});
        const ViewCanvas::Scene now = sceneAt(0.8, {-30, -20});
        ViewCanvas shown(list);
        shown.update(before);
        std::unique_ptr<ViewCanvas> finished;
        QuickPicture quick(list,
            {[] { return true; }, [&] { return now; }, [](const QRegion&) {},
                [&](std::unique_ptr<ViewCanvas>& next) {
                    finished = std::move(next);
                    next = std::make_unique<ViewCanvas>(list); // the one that was shown
                    next->update(before);
                }});
        quick.noteFullRepaint(1000, shown);
        QVERIFY(!quick.isWorthwhile(shown, now)); // nobody has allowed it
        quick.allow();
        QVERIFY(!quick.isWorthwhile(shown, sceneAt(1.0, {30, 20}))); // a scroll is quick
        QVERIFY(!quick.isWorthwhile(shown, sceneAt(20.0, {}))); // and so is a small part of the drawing
        QVERIFY(quick.isWorthwhile(shown, now));
        shown.invalidate({0});
        QVERIFY(!quick.isWorthwhile(shown, now)); // what has changed must be seen at once
        shown.update(before);
        const auto imageOf = [](const ViewCanvas& canvas) { return canvas.reduced(1); };
        for (const bool isInterrupted : {true, false}) {
            QImage screen(Width, Height, QImage::Format_RGB32);
            QPainter painter(&screen);
            quick.draw(painter, shown, now);
            painter.end();
            QVERIFY(!quick.isExact());
            if (isInterrupted) {
                quick.stop();
                QTest::qWait(20);
                QVERIFY(!finished);
                QVERIFY(quick.becomeExact());
                quick.allow();
            }
        }
        QTRY_VERIFY(finished);
        ViewCanvas fresh(list);
        fresh.update(now);
        QVERIFY(imageOf(*finished) == imageOf(fresh));
        QVERIFY(imageOf(*finished) != imageOf(shown));
        QVERIFY(quick.becomeExact());
        QVERIFY(!quick.readyFor(now) && quick.readyFor(before)); // the user may zoom back
        quick.invalidate({0});
        QVERIFY(!quick.readyFor(before));
    }

    // What is painted quickly goes straight to the window, where another widget keeps its place.
    void windowShowsWhatItemsPaint_data()
    {
        const Rows<int> row;
        row("painted quickly", 90);
        row("slowly", 3000);
    }

    void windowShowsWhatItemsPaint()
    {
        const auto [elements] = row<int>();
        PixelView chip(elements);
        QWidget* viewport = chip.view()->viewport();
        const qreal ratio = viewport->devicePixelRatioF();
        QWidget cover(chip.view()); // a child of the viewport would be scrolled
        QPalette palette;
        palette.setColor(cover.backgroundRole(), Qt::red);
        cover.setPalette(palette);
        cover.setAutoFillBackground(true);
        cover.setGeometry(50, 40, 60, 30);
        cover.show();
        const auto differing = [&] {
            QCoreApplication::processEvents();
            const auto* window = static_cast<const QImage*>(viewport->backingStore()->paintDevice());
            const QPoint corner = viewport->mapTo(viewport->window(), QPoint());
            const QImage shown = window->copy(QRect(corner * ratio, viewport->size() * ratio));
            QImage expected = paintedByItems(*chip.view(), ratio);
            QPainter(&expected).fillRect(cover.geometry().translated(-viewport->pos()), Qt::red);
            const int pixels = differingPixels(shown, expected, 1);
            return pixels > ThinRects * expected.width() * expected.height() ? pixels : 0;
        };
        const auto zoom = [&chip](double scale) { return [&chip, scale] { chip.zoom(scale, {170, 120}); }; };
        const auto pan = [&chip](int x, int y) {
            return [&chip, x, y] {
                for (const int part : {1, 3, -2, 4, -5}) // the comparison before has had all of the view painted anew
                    chip.scroll(QPoint(x, y) * part);
            };
        };
        const auto change = [&chip](int step) { return [&chip, step] { chip.changeStates(step); }; };
        const std::vector<std::function<void()>> steps = {zoom(2), zoom(4), change(0), zoom(3), pan(31, 0), zoom(1),
            change(1), [&cover] { cover.move(90, 90); }, zoom(7), change(2), [&cover] { cover.setGeometry(QRect()); },
            pan(-7, 4), pan(-20, -11), zoom(2), pan(5, 6), pan(-21, 3)};
        for (std::size_t n = 0; n < steps.size(); ++n) {
            steps[n]();
            QVERIFY2(differing() == 0, qPrintable(QString::number(n)));
        }
    }

    // A band over many small elements is painted in one go, wherever else something has changed.
    void crowdedPartsBecomeOne()
    {
        std::vector<QRect> parts{QRect(Width - 9, Height - 9, 9, 9), QRect(5, Height / 2, 3, 3)};
        for (int n = 0; n < 1000; ++n)
            parts.emplace_back(300 + n % 40, 70 + n / 40, 6, 6);
        DirtyParts dirty;
        dirty.add(parts, QSize(Width, Height));
        QVERIFY(dirty.all().size() < 8);
        QRegion region;
        for (const QRect& part : dirty.all())
            region |= part;
        for (const QRect& part : parts)
            QVERIFY((QRegion(part) - region).isEmpty());
        QVERIFY(!region.contains(QPoint(200, 200)) && !dirty.areMostOf(QSize(Width, Height)));
    }

    // However many elements change their states, and in whatever order, the picture is that of a fresh paint; going
    // back to the states from before a band over everything takes no full repaint.
    void pictureFollowsItsStates()
    {
        PixelView chip(24000);
        DisplayList& list = chip.scene()->elements().displayList();
        const auto placesOf = [&chip](const std::vector<int>& ids) { return chip.scene()->elements().placesOf(ids); };
        StatePictures pictures(chip.scene()->elements());
        ElementIdSet selected;
        ElementIdSet highlighted;
        ViewCanvas::Scene scene = canvasScene(*chip.view(), *chip.scene());
        scene.size = QSize(Width, Height);
        scene.layers = {0, 1};
        scene.states = {&selected, &highlighted, nullptr};
        const auto isRight = [&] {
            ViewCanvas fresh(list);
            fresh.update(scene);
            pictures.takeOverStates(scene);
            pictures.update(scene);
            return differingPixels(pictures.shown().reduced(1), fresh.reduced(1), 1) == 0;
        };
        Random random;
        const auto many = [&random](int count) {
            std::vector<int> ids(static_cast<std::size_t>(count));
            std::generate(ids.begin(), ids.end(), [&] { return 1 + random.below(24000); });
            return ids;
        };
        const auto selectFew = [&] {
            const std::vector<int> ids = many(90);
            selected.insert(ids);
            pictures.invalidate(placesOf(ids));
        };
        const std::function<void()> steps[] = {[&] { selected.insert(many(200000)); }, [&] { selected.clear(); },
            [&] { highlighted.insert(many(200000)); }, [&] { highlighted.insert(many(5000)); },
            [&] { highlighted.clear(); }, [&] { selected.insert(many(9)); }, selectFew, [&] { pictures.invalidate(); },
            [&] { scene.toPicture *= QTransform::fromTranslate(random.below(9) - 4, random.below(9) - 4); },
            [&] { scene.toPicture *= QTransform::fromScale(1.1, 1.1); }};
        constexpr int OfStates = 6; // the others tell what they change
        std::vector<int> order{0, 2, 1, 4, 6, 1, 6, 1, 6, 1};
        std::generate_n(
            std::back_inserter(order), 60, [&] { return random.below(static_cast<int>(std::size(steps))); });
        for (int step : order) {
            steps[step]();
            if (step < OfStates)
                pictures.invalidateStates();
            QVERIFY2(isRight(), qPrintable(QString::number(step)));
        }
        selected.clear();
        highlighted.clear();
        pictures.invalidate();
        QVERIFY(isRight());
        for (const auto& change : {steps[0], steps[1]}) {
            change();
            pictures.invalidateStates();
            pictures.takeOverStates(scene);
            QCOMPARE(pictures.shown().needsAll(scene), !selected.isEmpty());
            pictures.update(scene);
        }
        QVERIFY(isRight());
    }

    void topmostItemIsTheOneThatQtFinds()
    {
        PixelView chip(3000);
        Random random;
        int found = 0;
        for (const double scale : {0.37, 4.0}) { // different layers
            chip.zoom(scale, {170, 120});
            chip.changeStates(1);
            const QTransform toViewport = chip.view()->viewportTransform();
            const DisplayList& list = chip.scene()->elements().displayList();
            for (int i = 0; i < 3000; ++i) {
                // The point lies in or near an element, sometimes on a border or in a corner.
                const QRectF near = list.boundsOf(random.below(list.size())).adjusted(-1, -1, 1, 1);
                QPointF point{near.left() + random.upTo(near.width()), near.top() + random.upTo(near.height())};
                if (i % 3 == 0)
                    point = QPointF(std::floor(point.x()), std::floor(point.y()));
                else if (i % 3 == 1)
                    point = near.adjusted(1, 1, -1, -1).bottomRight();
                chip.scene()->elements().synchroniseAt(point);
                QGraphicsItem* expected = chip.scene()->itemAt(point, toViewport);
                QCOMPARE(chip.scene()->elements().topmostItemAt(point, toViewport), expected);
                found += expected ? 1 : 0;
            }
        }
        QVERIFY(found > 1000);
        QGraphicsEllipseItem added(100, 100, 20, 20);
        chip.scene()->addItem(&added);
        added.setZValue(1e6);
        QCoreApplication::processEvents();
        QCOMPARE(chip.scene()->elements().topmostItemAt({110, 110}, QTransform()), &added);
    }
};

ZEL_TEST_MAIN(TestPixels)
#include "tst_pixels.moc"
