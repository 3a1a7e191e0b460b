// SPDX-License-Identifier: MIT
#include "platform/contract/griditem.h"
#include "tests/support/testmain.h"

using mirn::itemviewgui::GridItem;

class TestGridItem : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void ordersNaturally_data()
    {
        const Rows<QString, QString, bool> row; // the smaller, the larger, whether case counts
        row("digit runs are numbers", "ip2", "ip10", true);
        row("numbers longer than any integer type", "n99999999999999999999999", "n100000000000000000000000", true);
        row("leading zeros break a tie only", "a7b1", "a07b1", true);
        row("what follows outweighs leading zeros", "a07b1", "a7b2", true);
        row("a prefix comes first", "ip", "ip0", true);
        row("upper case first when case counts", "B", "a", true);
        row("letters only when it does not", "a", "B", false);
        row("empty before anything", "", "0", true);
    }

    void ordersNaturally()
    {
        const auto [smaller, larger, isCaseCounted] = row<QString, QString, bool>();
        const auto cs = isCaseCounted ? Qt::CaseSensitive : Qt::CaseInsensitive;
        QVERIFY(GridItem::compareString(smaller, larger, cs) < 0);
        QVERIFY(GridItem::compareString(larger, smaller, cs) > 0);
        QCOMPARE(GridItem::compareString(smaller, smaller.toUpper(), Qt::CaseInsensitive), 0);
    }

    // Every triple of a set of awkward texts: sorting by an order that is not transitive is undefined behaviour.
    void isATotalOrder()
    {
        const QStringList texts{"", "0", "00", "1", "01", "10", "a", "A", "a0", "a00", "a1", "a01b2", "a1b02", "a1b2",
            "a1b10", "a-1", "a 1", "ß", "ss", "SS", "É1", "é01"};
        for (auto cs : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
            const auto less
                = [cs](const QString& l, const QString& r) { return GridItem::compareString(l, r, cs) < 0; };
            for (const QString& a : texts) {
                for (const QString& b : texts) {
                    QVERIFY2(!(less(a, b) && less(b, a)), qPrintable(a + " / " + b));
                    for (const QString& c : texts)
                        QVERIFY2(!(less(a, b) && less(b, c)) || less(a, c), qPrintable(a + " / " + b + " / " + c));
                }
            }
        }
    }
};

ZEL_TEST_MAIN(TestGridItem)
#include "tst_griditem.moc"
