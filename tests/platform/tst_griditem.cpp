// SPDX-License-Identifier: MIT
#include "platform/contract/griditem.h"
#include "tests/support/testmain.h"

#include <QTest>

#include <algorithm>

using mirn::itemviewgui::GridItem;

class TestGridItem : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void ordersNaturally_data();
    void ordersNaturally();
    void isATotalOrder();
};

void TestGridItem::ordersNaturally_data()
{
    QTest::addColumn<QString>("smaller");
    QTest::addColumn<QString>("larger");
    QTest::addColumn<int>("caseSensitivity");
    const int sensitive = Qt::CaseSensitive;
    const int insensitive = Qt::CaseInsensitive;
    QTest::newRow("digit runs are numbers") << "ip2"
                                            << "ip10" << sensitive;
    QTest::newRow("numbers longer than any integer type") << "n99999999999999999999999"
                                                          << "n100000000000000000000000" << sensitive;
    QTest::newRow("leading zeros break a tie only") << "a7b1"
                                                    << "a07b1" << sensitive;
    QTest::newRow("what follows outweighs leading zeros") << "a07b1"
                                                          << "a7b2" << sensitive;
    QTest::newRow("a prefix comes first") << "ip"
                                          << "ip0" << sensitive;
    QTest::newRow("upper case first when case counts") << "B"
                                                       << "a" << sensitive;
    QTest::newRow("letters only when it does not") << "a"
                                                   << "B" << insensitive;
    QTest::newRow("empty before anything") << ""
                                           << "0" << sensitive;
}

void TestGridItem::ordersNaturally()
{
    QFETCH(QString, smaller);
    QFETCH(QString, larger);
    QFETCH(int, caseSensitivity);
    const auto cs = static_cast<Qt::CaseSensitivity>(caseSensitivity);
    QVERIFY(GridItem::compareString(smaller, larger, cs) < 0);
    QVERIFY(GridItem::compareString(larger, smaller, cs) > 0);
    QCOMPARE(GridItem::compareString(smaller, smaller, cs), 0);
    QCOMPARE(GridItem::compareString(QStringLiteral("IP7"), QStringLiteral("ip7"), Qt::CaseInsensitive), 0);
}

// Every triple of a set of awkward texts: sorting by an order that is not transitive is undefined behaviour.
void TestGridItem::isATotalOrder()
{
    const QStringList texts{"", "0", "00", "1", "01", "10", "a", "A", "a0", "a00", "a1", "a01b2", "a1b02", "a1b2",
        "a1b10", "a-1", "a 1", "ß", "ss", "SS", "É1", "é01"};
    for (auto cs : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
        const auto less = [cs](const QString& l, const QString& r) { return GridItem::compareString(l, r, cs) < 0; };
        for (const QString& a : texts) {
            for (const QString& b : texts) {
                QVERIFY2(!(less(a, b) && less(b, a)), qPrintable(a + " / " + b));
                for (const QString& c : texts)
                    QVERIFY2(!(less(a, b) && less(b, c)) || less(a, c), qPrintable(a + " / " + b + " / " + c));
            }
        }
    }
}

ZEL_TEST_MAIN(TestGridItem)
#include "tst_griditem.moc"
