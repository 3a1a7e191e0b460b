// SPDX-License-Identifier: MIT
#include "graphics/sceneelements.h"
#include "planning/linepicture.h"
#include "planning/locklayer.h"
#include "planning/namelayer.h"
#include "planning/planaids.h"
#include "platform/contract/zelplanengine.h"
#include "tests/support/chipviewfixture.h"
#include "tests/support/events.h"

#include <algorithm>
#include <cstdlib>

using namespace zeltest;

namespace {

using Shown = PlanAids::Connections;

const QColor Grey(0x80, 0x80, 0x80);

constexpr int OwnType = 6; // that the view does not know

// Its sites are 1 to 4; "top/clk" is on 1, "top/ch" on 2, and "top/new" on none.
class PlanEngine final : public FakeEngine, public zelplanengine
{
public:
    PlanEngine() { types = {{"top/new", OwnType}}; }

    std::vector<zelconnection> connections() override { return connected; }
    std::vector<int> sitesFor(const std::string*) override
    {
        ++questions;
        return candidates;
    }
    std::vector<zelconnection> connectionsOf(const std::string* rsc) override
    {
        return *rsc == "top/ch" ? pairs : zelplanengine::connectionsOf(rsc);
    }
    int siteOf(const std::string* rsc) override { return *rsc == "top/clk" ? 1 : *rsc == "top/ch" ? 2 : -1; }
    std::vector<std::string> partsOf(const std::string* rsc) override
    {
        return parts.empty() ? zelplanengine::partsOf(rsc) : parts;
    }
    std::string occupant(const std::string* site) override { return "r" + *site; }
    std::string refusalToPlace(const std::string* rsc) override { return *rsc == "top/held" ? "it is held" : ""; }
    std::string refusalReason(const std::string* rsc, const std::string* site) override
    {
        return *rsc + " is too large for " + *site;
    }

    std::vector<zelconnection> connected;
    std::vector<zelconnection> pairs; // those of top/ch
    std::vector<int> candidates{3};
    std::vector<std::string> parts; // of any resource; of none if empty
    int questions = 0;
};

// Four sites, of which 3 and 4 are on layer 1.
class Sites : public ChipView
{
public:
    Sites()
    {
        drawing.addRect(1, 20, 100, 40, 40);
        drawing.addRect(2, 220, 100, 40, 40);
        drawing.addRect(3, 20, 240, 40, 40).layer = 1;
        drawing.addRect(4, 220, 240, 40, 40).layer = 1;
        drawing.parameter.layerRanges[1] = {0.0, 100.0};
        open();
    }
};

// Sites with the aids on them and a tree whose rows are resources.
class Aided
{
public:
    Aided()
        : aids(new PlanAids(ChipView::view(), &tree, engine))
    { }

    void select(const QString& resource)
    {
        tree.clear();
        auto* row = new QTreeWidgetItem(&tree); // owned by the tree
        row->setData(0, RESOURCENAME, resource);
        tree.setCurrentItem(row);
        aids->settle();
    }

    // How many pixels of a part of the scene differ from the drawing without aids.
    [[nodiscard]] int changedPixels(const QRectF& area) const
    {
        const QRect pixels
            = QRect(ChipView::view()->mapFromScene(area.topLeft()), ChipView::view()->mapFromScene(area.bottomRight()));
        const QImage now = ChipView::picture();
        int changed = 0;
        for (int y = pixels.top(); y < pixels.bottom(); ++y) {
            for (int x = pixels.left(); x < pixels.right(); ++x)
                changed += now.pixel(x, y) != before.pixel(x, y) ? 1 : 0;
        }
        return changed;
    }

    PlanEngine engine;
    Sites chip;
    QTreeWidget tree;
    PlanAids* aids; // child of the view
    QImage before = ChipView::picture();
};

const QRectF NearFrom(40, 80, 100, 60); // from the middle of site 1 to the right, above it
const QRectF NearTo(170, 80, 50, 60);

} // namespace

class TestPlanAids : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void showsConnections_data()
    {
        const Rows<zelconnection, Shown, QString, int, QColor, bool> row; // selected row and element; colour, whole
        const zelconnection clock{"top/clk", "top/ch", 1, 2, ""};
        const zelconnection channels{"top/ch", "top/x", 1, 2, "", zelconnection::Together};
        const zelconnection supplies{"top/v", "top/w", 1, 2, "", zelconnection::OneGroup};
        const zelconnection broken{"top/clk", "top/ch", 1, 2, "too far"};
        const zelconnection open{"top/clk", "top/new", 1, -1, ""};
        const QColor clockColor(0x8a, 0x4a, 0x00);
        row("a clock", clock, Shown::OfSelection, "top/clk", 0, clockColor, true);
        row("channels", channels, Shown::OfSelection, "top/ch", 0, QColor(0x56, 0x3a, 0xa8), true);
        row("supplies", supplies, Shown::OfSelection, "top/v", 0, QColor(0x0a, 0x5f, 0x66), true);
        row("a broken rule", broken, Shown::OfSelection, "top/clk", 0, QColor(0xff, 0x4a, 0x2e), true);
        row("the branch above", clock, Shown::OfSelection, "top", 0, clockColor, true);
        row("a selected site", clock, Shown::OfSelection, "", 2, clockColor, true);
        row("a name that only begins like it", clock, Shown::OfSelection, "top/c", 0, Grey, false);
        row("nothing selected", clock, Shown::OfSelection, "", 0, Grey, false);
        row("switched off", clock, Shown::Off, "top/clk", 0, Grey, false);
        row("all, with nothing selected", clock, Shown::All, "", 0, clockColor, true);
        row("an unplaced end", open, Shown::OfSelection, "top/new", 0, clockColor, false);
        row("neither end placed", {"top/new", "top/clk", -1, -1, ""}, Shown::All, "", 0, Grey, false);
    }

    void showsConnections()
    {
        const auto [connection, shown, resource, element, color, isWhole]
            = row<zelconnection, Shown, QString, int, QColor, bool>();
        Aided aided;
        aided.engine.connected = {connection};
        aided.engine.candidates = {4};
        aided.aids->setCandidatesShown(false);
        aided.aids->setConnections(shown);
        if (!resource.isEmpty())
            aided.select(resource);
        if (element != 0)
            ChipView::database()->addSelctedItem(element, false);
        aided.aids->settle();
        QCOMPARE(ChipView::colorAt({40, 120}), color); // the dot at the end
        QCOMPARE(aided.changedPixels(NearTo) > 20, isWhole);
        QVERIFY(ChipView::scene()->elements().canPaintFromList());
        aided.aids->setConnections(Shown::Off);
        ChipView::scene()->clearSelectedItems();
        QCOMPARE(aided.changedPixels(NearFrom) + aided.changedPixels(NearTo), 0);
    }

    // Of a few selected resources all pairs are shown, each once, and among all resources the chain only.
    void showsAllPairsOfASelectedResource_data()
    {
        const Rows<Shown, QString, int, int> row; // selected row and element; lines at site 4, which the pair leads to
        row("its row", Shown::OfSelection, "top/ch", 0, 1);
        row("its site", Shown::OfSelection, "", 2, 1);
        row("another row", Shown::OfSelection, "top/clk", 0, 0);
        row("all", Shown::All, "top/ch", 2, 0);
    }

    void showsAllPairsOfASelectedResource()
    {
        const auto [shown, resource, element, count] = row<Shown, QString, int, int>();
        Aided aided;
        aided.engine.connected = {{"top/clk", "top/ch", 1, 2, ""}};
        aided.engine.pairs
            = {{"top/ch", "top/clk", 2, 1, ""}, {"top/ch", "top/far", 2, 4, "too far", zelconnection::Together}};
        aided.aids->setCandidatesShown(false);
        aided.aids->setConnections(shown);
        if (!resource.isEmpty())
            aided.select(resource);
        if (element != 0)
            ChipView::database()->addSelctedItem(element, false);
        aided.aids->settle();
        QCOMPARE(ChipView::colorAt({240, 260}) != Grey, count > 0);
        const QPoint middle = ChipView::view()->mapFromScene(QPointF(221, 190));
        QCOMPARE(aided.aids->toolTipAt(middle).contains("top/ch and top/far belong together"), count > 0);
    }

    // The stub is short, dashed, and leads to the nearest site that takes the resource.
    void stubLeadsToTheNearestSite()
    {
        Aided aided;
        aided.engine.connected = {{"top/clk", "top/new", 1, -1, ""}};
        aided.engine.candidates = {4, 3};
        aided.aids->setCandidatesShown(false);
        aided.select("top/new");
        QVERIFY(aided.changedPixels({35, 145, 10, 50}) > 20);
        QCOMPARE(aided.changedPixels({35, 222, 10, 20}), 0);
        QCOMPARE(aided.changedPixels({70, 100, 150, 130}), 0);
        aided.engine.candidates.clear();
        aided.aids->refresh();
        QCOMPARE(ChipView::colorAt({40, 120}), Grey);
    }

    // A line leads to where a hidden site is, but nothing is painted on it, and no stub leads there.
    void hiddenSitesHaveNoMarks_data()
    {
        const Rows<zelconnection, QString, QRectF, QRectF, bool> row; // selected row; where nothing is, where a line is
        const QRectF site3(20, 240, 40, 40);
        row("a candidate", {"", "", -1, -1, ""}, "top/new", site3, NearFrom, false);
        row("a stub", {"top/clk", "top/new", 1, -1, ""}, "top/new", {0, 142, 100, 95}, NearFrom, false);
        row("the end of a line", {"top/clk", "top/x", 1, 3, ""}, "top/clk", {20, 262, 40, 20}, {40, 180, 40, 20}, true);
    }

    void hiddenSitesHaveNoMarks()
    {
        const auto [connection, resource, empty, way, isLine] = row<zelconnection, QString, QRectF, QRectF, bool>();
        Aided aided;
        aided.engine.connected = {connection};
        aided.select(resource);
        QVERIFY(aided.changedPixels(empty) > 0);
        const auto show = [&aided](bool areShown) {
            aided.aids->setConnections(areShown ? Shown::OfSelection : Shown::Off);
            aided.aids->setCandidatesShown(areShown);
        };
        show(false);
        ChipView::scene()->getVisibleLayers().removeAll(1);
        aided.before = ChipView::picture();
        show(true);
        QCOMPARE(aided.changedPixels(empty), 0);
        QCOMPARE(aided.changedPixels(way) > 10, isLine);
        QCOMPARE(!aided.aids->toolTipAt(ChipView::view()->mapFromScene(QPointF(59, 190))).isEmpty(), isLine);
    }

    // A host may load another drawing into the same view.
    void placesFollowAnotherDrawing_data()
    {
        const Rows<QString, bool, bool> row; // the selected row; whether there are names, padlocks
        row("candidates", "top/new", false, false);
        row("connections", "top/clk", false, false);
        row("names", "", true, false);
        row("padlocks", "", false, true);
    }

    void placesFollowAnotherDrawing()
    {
        const auto [resource, hasNames, hasPadlocks] = row<QString, bool, bool>();
        Aided aided;
        aided.engine.connected = {{"top/clk", "top/x", 1, 3, ""}};
        auto* names = hasNames ? new NameLayer(ChipView::view(), aided.engine) : nullptr; // owned by the view
        auto* padlocks = hasPadlocks ? new LockLayer(ChipView::view()) : nullptr; // owned by the view
        const QRectF old(20, 240, 40, 40);
        const QRectF moved(320, 20, 40, 40);
        const auto refresh = [&] {
            if (names)
                names->refresh();
            if (padlocks)
                padlocks->setElements({3});
            aided.aids->refresh();
        };
        refresh();
        if (!resource.isEmpty())
            aided.select(resource);
        QVERIFY(aided.changedPixels(old) > 0);
        static_cast<zel_Rect*>(aided.chip.drawing.records[2])->x = moved.x();
        static_cast<zel_Rect*>(aided.chip.drawing.records[2])->y = moved.y();
        ChipView::scene()->clear(); // else the new drawing would lie on the old one
        QVERIFY(aided.chip.window->initGrahpicView());
        refresh();
        const auto isMarked = [](const QRectF& site) {
            const QImage picture = ChipView::picture();
            const QPoint corner = ChipView::view()->mapFromScene(site.topLeft());
            QImage bare(36, 36, picture.format());
            bare.fill(Grey);
            return picture.copy(QRect(corner + QPoint(2, 2), bare.size())) != bare;
        };
        QVERIFY(isMarked(moved));
        QCOMPARE(ChipView::colorAt(old.center()), ChipView::colorAt(old.topLeft() - QPointF(10, 10)));
    }

    // A scroll of any length leaves the picture of thousands of lines as it would be drawn anew.
    void scrolledPictureIsTheSame_data()
    {
        const Rows<QPoint, int> row; // one step, and how often
        row("within a tile", {5, -3}, 4);
        row("to the left and down", {-90, 70}, 12);
        row("to the right and up", {110, -60}, 12);
        row("by more than a tile", {700, 0}, 1);
        row("out of sight", {3000, 0}, 1);
    }

    void scrolledPictureIsTheSame()
    {
        const auto [step, times] = row<QPoint, int>();
        const std::vector<PlanLine> lines = manyLines();
        QTransform transform(1.37, 0, 0, 1.37, 3.25, 0.5);
        LinePicture moved;
        LinePicture ahead;
        (void)pictureOf(moved, lines, transform);
        for (int n = 0; n < times; ++n) {
            (void)pictureOf(ahead, lines, transform);
            while (n % 2 == 0 && ahead.drawAhead()) { }
            transform *= QTransform::fromTranslate(step.x(), step.y());
            (void)pictureOf(moved, lines, transform);
        }
        LinePicture fresh;
        const QImage expected = pictureOf(fresh, lines, transform);
        QVERIFY(pictureOf(moved, lines, transform) == expected);
        QVERIFY(pictureOf(ahead, lines, transform) == expected);
    }

    // A line has one pixel for each step of its longer direction, wherever tiles meet.
    void lineHasNoGap()
    {
        for (int n = 1; n < 200; ++n) {
            const QPoint from(n * 619 % 1400, n * 367 % 1100);
            const QPoint to(n * 31 % 1400, n * 577 % 1100);
            PlanLine line;
            line.from = from;
            line.to = to;
            LinePicture picture;
            const QImage image = pictureOf(picture, {line}, QTransform(), {1400, 1100});
            int pixels = 0;
            for (int y = 0; y < image.height(); ++y) {
                const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
                pixels += static_cast<int>(std::count_if(row, row + image.width(), [](QRgb p) { return p != ~0U; }));
            }
            QCOMPARE(pixels, std::max(std::abs(to.x() - from.x()), std::abs(to.y() - from.y())) + 1);
        }
    }

    void thousandsOfLinesAreOnTheDrawing()
    {
        Aided aided;
        for (int n = 0; n < 500; ++n)
            aided.engine.connected.push_back({"top/clk", "top/ch", 1, 2, n == 250 ? "too far" : ""});
        aided.engine.connected.push_back({"top/clk", "top/new", 1, -1, ""});
        aided.aids->setConnections(Shown::All);
        QCOMPARE(aided.engine.questions, 0); // no stub is searched for
        QCOMPARE(aided.changedPixels({100, 110, 100, 20}), 100); // they cover each other
        const QColor seen = ChipView::colorAt({150, 120});
        QVERIFY(seen.red() > 200 && seen.blue() < 120); // the broken one is on top
        QVERIFY(aided.aids->toolTipAt(ChipView::view()->mapFromScene(QPointF(150, 120))).contains("Too far"));
    }

    void tintsCandidates_data()
    {
        using Names = std::vector<std::string>;
        const Rows<QString, Names, bool> row;
        row("an unplaced resource", "top/new", Names{}, true);
        row("a placed one", "top/ch", Names{}, false);
        row("a group with an unplaced part", "top/ip", Names{"top/ch", "top/new"}, true);
        row("a group whose parts are placed", "top/ip", Names{"top/ch", "top/clk"}, false);
        row("a group that nobody can place", "top/held", Names{"top/new"}, false);
    }

    void tintsCandidates()
    {
        const auto [resource, parts, isTinted] = row<QString, std::vector<std::string>, bool>();
        Aided aided;
        aided.engine.parts = parts;
        aided.select(resource);
        QCOMPARE(ChipView::colorAt({40, 260}) != Grey, isTinted);
        QCOMPARE(aided.aids->marks().testFlag(PlanAids::Mark::Candidate), isTinted);
        QCOMPARE(aided.changedPixels({0, 60, 300, 170}), 0); // nothing else changes
        if (!isTinted) {
            QCOMPARE(aided.aids->toolTipAt(ChipView::view()->mapFromScene(QPointF(240, 260))), QString());
            return;
        }
        QWidget* viewport = ChipView::view()->viewport();
        drag<QDragEnterEvent>(viewport, {5, 5});
        QCOMPARE(ChipView::colorAt({40, 260}), Grey);
        leaveDrag(viewport);
        QVERIFY(ChipView::colorAt({40, 260}) != Grey);
        aided.aids->setCandidatesShown(false);
        QCOMPARE(ChipView::colorAt({40, 260}), Grey);
        aided.aids->setCandidatesShown(true);
        QCOMPARE(aided.engine.questions, 1);
        aided.engine.candidates = {4};
        aided.aids->refresh();
        QCOMPARE(ChipView::colorAt({40, 260}), Grey);
        QVERIFY(ChipView::colorAt({240, 260}) != Grey);
        QCOMPARE(aided.engine.questions, 2);
    }

    void answersAPointer_data()
    {
        const Rows<QString, QPointF, QString> row; // the selected row, where the pointer is
        // From (40, 120) to (40, 260), bent to the right.
        row("on a line", "top/clk", {59, 190}, "top/clk feeds top/<ch>\nLength 140.0");
        row("within four pixels of it", "top/clk", {63, 190}, "top/clk feeds top/<ch>\nLength 140.0");
        row("further away", "top/clk", {67, 190}, "");
        row("a site that is no candidate", "top/new", {240, 260}, "top/new is too large for 4");
        row("a candidate", "top/new", {40, 260}, "");
        row("beside the sites", "top/new", {140, 200}, "");
        row("a placed resource", "top/ch", {240, 260}, "");
    }

    void answersAPointer()
    {
        const auto [resource, position, text] = row<QString, QPointF, QString>();
        Aided aided;
        aided.engine.connected = {{"top/clk", "top/<ch>", 1, 3, ""}};
        aided.select(resource);
        QCOMPARE(aided.aids->toolTipAt(ChipView::view()->mapFromScene(position)), text);
    }

private:
    static QImage pictureOf(LinePicture& picture, const std::vector<PlanLine>& lines, const QTransform& transform,
        const QSize& size = {500, 300})
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        picture.paint(painter, lines, {transform, image.rect(), image.rect(), 1.0});
        return image;
    }

    static std::vector<PlanLine> manyLines()
    {
        std::vector<PlanLine> lines;
        for (int n = 0; n < 3000; ++n) {
            PlanLine line;
            line.from = QPointF(n * 619 % 2000, n * 367 % 1300) - QPointF(700, 500);
            line.to = line.from + QPointF(n * 31 % 400 - 200, n * 57 % 300 - 150);
            line.kind = static_cast<PlanLine::Kind>(n % 3);
            line.isBroken = n % 50 == 0;
            lines.push_back(line);
        }
        return lines;
    }
};

ZEL_TEST_MAIN(TestPlanAids)
#include "tst_planaids.moc"
