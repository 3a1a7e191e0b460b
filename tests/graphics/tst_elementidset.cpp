// SPDX-License-Identifier: MIT
#include "graphics/elements/elementidset.h"
#include "tests/support/testmain.h"

#include <limits>
#include <random>
#include <vector>

using mirn::zelchipview::ElementIdSet;

// Ids of all sizes in one set, which keeps small ones in another way than the others.
class ElementIdSetTest final : public zeltest::Test
{
    Q_OBJECT

private Q_SLOTS:
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
            switch (random() % 6) {
            case 0:
                set.insert(id);
                expected.insert(id);
                break;
            case 1:
                set.insert(std::vector<int>{id, other, id});
                expected += {id, other};
                break;
            case 2:
            case 3:
                set.remove(id);
                expected.remove(id);
                break;
            case 4:
                if (step % 10 == 0) {
                    set.assign({id, other});
                    expected = {id, other};
                }
                break;
            default:
                if (step % 50 == 0) {
                    set.clear();
                    expected.clear();
                }
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
        const std::vector<std::vector<int>> expected = {{5, -3, 7}, {9}, {-3, 11}, {5, 7, 9, 11}};
        QCOMPARE(told, expected);
    }
};

ZEL_TEST_MAIN(ElementIdSetTest)
#include "tst_elementidset.moc"
