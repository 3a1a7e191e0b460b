// SPDX-License-Identifier: MIT
#include "planning/namelayer.h"
#include "platform/contract/zelplanengine.h"
#include "tests/support/chipviewfixture.h"

using namespace zeltest;

namespace {

constexpr unsigned int Fill = 0x808080;

// Every site has a resource.
class OccupyingEngine final : public FakeEngine, public zelplanengine
{
public:
    std::string occupant(const std::string* site) override
    {
        asked.push_back(*site);
        return "top/r" + *site;
    }

    std::vector<std::string> asked;
};

} // namespace

class TestNameLayer : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void namesKeepOffLabels_data()
    {
        const Rows<QPointF, int, bool> row; // where the label begins and how it is turned; whether there is a name
        row("over the middle", {40, 54}, 0, true);
        row("turned, beside the name", {160, 20}, 90, true);
        row("turned, from the upper to the lower border", {96, 12}, 90, false);
        row("turned the other way", {104, 88}, -90, false);
    }

    void namesKeepOffLabels()
    {
        const auto [start, rotation, isNamed] = row<QPointF, int, bool>();
        OccupyingEngine engine;
        ChipView chip;
        chip.drawing.addRect(10, 10, 10, 180, 80, Fill);
        chip.drawing.addText(0, "HHHHHHHH", start.x(), start.y(), 12).rotation = rotation;
        chip.open();
        const QImage before = ChipView::picture();
        new NameLayer(ChipView::view(), engine); // owned by the view
        const QImage after = ChipView::picture();
        const QRect site(ChipView::view()->mapFromScene(QPointF(14, 14)), QSize(172, 72));
        int written = 0;
        for (int y = site.top(); y < site.bottom(); ++y) {
            for (int x = site.left(); x < site.right(); ++x) {
                const bool isLetter = before.pixelColor(x, y) != QColor(Fill);
                QVERIFY2(!isLetter || after.pixel(x, y) == before.pixel(x, y), "a name covers a label");
                written += after.pixel(x, y) != before.pixel(x, y) ? 1 : 0;
            }
        }
        QCOMPARE(written > 10, isNamed);
    }

    void asksOnceForWhatHasRoom_data()
    {
        const Rows<QRectF, bool> row;
        row("a large site", {10, 10, 180, 80}, true);
        row("a low one", {10, 10, 180, 8}, false);
        row("a narrow one", {10, 10, 4, 80}, false);
        row("one out of sight", {9000, 10, 180, 80}, false);
    }

    void asksOnceForWhatHasRoom()
    {
        const auto [site, isAsked] = row<QRectF, bool>();
        OccupyingEngine engine;
        ChipView chip({{10, site}});
        const std::size_t questions = isAsked ? 1 : 0;
        auto* names = new NameLayer(ChipView::view(), engine); // owned by the view
        (void)ChipView::picture();
        (void)ChipView::picture();
        QCOMPARE(engine.asked.size(), questions);
        names->refresh();
        (void)ChipView::picture();
        QCOMPARE(engine.asked.size(), 2 * questions);
    }
};

ZEL_TEST_MAIN(TestNameLayer)
#include "tst_namelayer.moc"
