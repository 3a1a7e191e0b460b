// SPDX-License-Identifier: MIT
#include "planning/locklayer.h"
#include "tests/support/chipviewfixture.h"

#include <numeric>

using namespace zeltest;

// Sites in rows; the first one is larger, and of those that follow some are on a layer that can be hidden.
class TestLockLayer : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void onlyLargeSitesAreMarkedAmongMany_data()
    {
        const Rows<int, bool, bool> row; // small sites, whether most of them are hidden; whether small ones are marked
        row("1,000 in all", 999, false, true);
        row("1,001 in all", 1000, false, false);
        row("more, most on a hidden layer", 1200, true, true);
    }

    void onlyLargeSitesAreMarkedAmongMany()
    {
        const auto [count, areMostHidden, areMarked] = row<int, bool, bool>();
        ChipView chip;
        chip.drawing.setSize(640, 460);
        chip.drawing.parameter.layerRanges[1] = {0.0, 100.0};
        chip.drawing.addRect(0, 10, 10, 44, 44);
        for (int n = 1; n <= count; ++n)
            chip.drawing.addRect(n, 10 + (n - 1) % 45 * 14, 60 + (n - 1) / 45 * 14, 13, 13).layer = n > 100 ? 1 : 0;
        chip.open();
        chip.window->resize(1200, 700);
        QCoreApplication::processEvents();
        if (areMostHidden)
            ChipView::scene()->getVisibleLayers().removeAll(1);
        const QImage before = ChipView::picture();
        std::vector<int> ids(static_cast<std::size_t>(count) + 1);
        std::iota(ids.begin(), ids.end(), 0);
        (new LockLayer(ChipView::view()))->setElements(ids); // owned by the view
        const QImage after = ChipView::picture();
        const auto isMarked = [&](const QPoint& corner) {
            return before.copy(QRect(corner, QSize(9, 9))) != after.copy(QRect(corner, QSize(9, 9)));
        };
        const QPoint large = ChipView::view()->mapFromScene(QPointF(44, 10));
        const QPoint small = ChipView::view()->mapFromScene(QPointF(14, 60));
        QVERIFY(isMarked(large));
        QCOMPARE(isMarked(small), areMarked);
    }
};

ZEL_TEST_MAIN(TestLockLayer)
#include "tst_locklayer.moc"
