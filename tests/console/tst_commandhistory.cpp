// SPDX-License-Identifier: MIT
#include "host/console/commandhistory.h"
#include "tests/support/testmain.h"

#include <QTest>

using namespace mirn::zelchip;

class CommandHistoryTest final : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void keepsWhatIsWorthIt_data();
    void keepsWhatIsWorthIt();
    void aWalkKeepsWhatWasEdited();
    void enteringEndsTheWalk();
};

void CommandHistoryTest::keepsWhatIsWorthIt_data()
{
    QTest::addColumn<QStringList>("added");
    QTest::addColumn<QStringList>("kept");
    QTest::newRow("each in its order") << QStringList{"a", "b"} << QStringList{"a", "b"};
    QTest::newRow("equal ones in a row once") << QStringList{"a", "a", "b", "a"} << QStringList{"a", "b", "a"};
    QTest::newRow("no blank ones") << QStringList{"a", "", " \n\t", "a"} << QStringList{"a"};
    QTest::newRow("only the newest") << QStringList{"a", "b", "c", "d"} << QStringList{"b", "c", "d"};
}

void CommandHistoryTest::keepsWhatIsWorthIt()
{
    QFETCH(const QStringList, added);
    CommandHistory history(3);
    for (const QString& script : added)
        history.add(script);
    QTEST(history.entries(), "kept");
    CommandHistory restored(3);
    restored.setEntries(added);
    QTEST(restored.entries(), "kept");
}

void CommandHistoryTest::aWalkKeepsWhatWasEdited()
{
    CommandHistory history;
    history.setEntries({"old", "new"});
    QCOMPARE(history.newer("unfinished"), std::optional<QString>());
    QCOMPARE(history.older("unfinished"), std::optional<QString>("new"));
    QCOMPARE(history.older("new, edited"), std::optional<QString>("old"));
    QCOMPARE(history.older("old"), std::optional<QString>());
    QCOMPARE(history.newer("old"), std::optional<QString>("new, edited"));
    QCOMPARE(history.newer("new, edited"), std::optional<QString>("unfinished"));
    QCOMPARE(history.entries(), QStringList({"old", "new"}));
}

void CommandHistoryTest::enteringEndsTheWalk()
{
    CommandHistory history;
    history.setEntries({"old", "new"});
    history.older("unfinished");
    history.older("edited");
    history.add("old");
    QCOMPARE(history.older(QString()), std::optional<QString>("old"));
    QCOMPARE(history.older("old"), std::optional<QString>("new"));
}

ZEL_TEST_MAIN(CommandHistoryTest)
#include "tst_commandhistory.moc"
