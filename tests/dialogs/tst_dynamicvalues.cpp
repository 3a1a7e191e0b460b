// SPDX-License-Identifier: MIT
#include "dialogs/dynamicvalues.h"
#include "platform/contract/zeltrace.h"
#include "tests/support/fakeengine.h"
#include "tests/support/testmain.h"

#include <QTest>

Q_DECLARE_METATYPE(std::string)

using namespace mirn::zelchipview;
using namespace zeltest;

namespace {

// An engine that notes for what it is asked for values.
class AskedEngine final : public FakeEngine
{
public:
    const std::map<std::string, std::vector<std::string>>* getDynamicDialogValues(
        const std::string* id, unsigned int type) override
    {
        calls.push_back("values " + *id + " " + std::to_string(type));
        return FakeEngine::getDynamicDialogValues(id, type);
    }
};

QStringList describe(const DynamicValues::GraphicsInfo& info)
{
    QStringList texts;
    for (auto entry = info.cbegin(); entry != info.cend(); ++entry)
        texts.append(entry.key() + QLatin1Char('|') + entry->popup + QLatin1Char('|') + entry->fill);
    return texts;
}

} // namespace

class TestDynamicValues : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void recordsBecomeInfo_data();
    void recordsBecomeInfo();
    void infoIsAskedForAnew();
    void valuesKeepTheEnginesOrder();
    void withoutValuesThereIsNoList_data();
    void withoutValuesThereIsNoList();
};

void TestDynamicValues::recordsBecomeInfo_data()
{
    using Values = std::map<std::string, std::string>;
    QTest::addColumn<QList<unsigned int>>("ids");
    QTest::addColumn<QList<Values>>("values");
    QTest::addColumn<QStringList>("info");
    const Values both{{"tovanel:popup", "b\xe4r"}, {"fill", "#102030"}};
    QTest::newRow("none") << QList<unsigned int>{} << QList<Values>{} << QStringList{};
    QTest::newRow("both") << QList<unsigned int>{7} << QList<Values>{both}
                          << QStringList{QStringLiteral("7|b\u00e4r|#102030")};
    QTest::newRow("neither") << QList<unsigned int>{7} << QList<Values>{{}}
                             << QStringList{"7|EMPTYDYNAMICSTRING|EMPTYDYNAMICSTRING"};
    QTest::newRow("an empty value is not a missing one")
        << QList<unsigned int>{7} << QList<Values>{{{"tovanel:popup", ""}}} << QStringList{"7||EMPTYDYNAMICSTRING"};
    QTest::newRow("the later of two with one id counts") << QList<unsigned int>{
        7, 7} << QList<Values>{both, {{"fill", "red"}}} << QStringList{"7|EMPTYDYNAMICSTRING|red"};
    QTest::newRow("ids have no sign") << QList<unsigned int>{4294967295u} << QList<Values>{{{"fill", "red"}}}
                                      << QStringList{"4294967295|EMPTYDYNAMICSTRING|red"};
}

void TestDynamicValues::recordsBecomeInfo()
{
    using Values = std::map<std::string, std::string>;
    QFETCH(QList<unsigned int>, ids);
    QFETCH(QList<Values>, values);
    FakeEngine engine;
    for (int i = 0; i < ids.size(); ++i)
        engine.device.addRecord(ids[i], values[i]);
    engine.device.recordList.insert(engine.device.recordList.begin(), nullptr);
    DynamicValues dynamicValues;
    dynamicValues.setEngine(&engine);
    std::vector<std::string> trace;
    setDiagTraceSink(
        [&](const char* text, const char* function) { trace.push_back(std::string(function) + ": " + text); });
    QTEST(describe(dynamicValues.graphicsInfo()), "info");
    QCOMPARE(trace,
        (std::vector<std::string>{
            "getGraphicsDynamicInfo: call ZEL engine API: chip()", "getGraphicsDynamicInfo: end"}));
}

void TestDynamicValues::infoIsAskedForAnew()
{
    FakeEngine engine;
    engine.device.addRecord(7, {{"fill", "red"}});
    DynamicValues dynamicValues;
    QVERIFY(dynamicValues.graphicsInfo().isEmpty()); // no engine yet
    dynamicValues.setEngine(&engine);
    const DynamicValues::GraphicsInfo& info = dynamicValues.graphicsInfo();
    QCOMPARE(info.size(), 1);
    engine.device.clearRecords();
    QVERIFY(dynamicValues.graphicsInfo().isEmpty());
    QVERIFY(info.isEmpty()); // the one map of the process
}

void TestDynamicValues::valuesKeepTheEnginesOrder()
{
    AskedEngine engine;
    engine.dialogValues = std::make_unique<std::map<std::string, std::vector<std::string>>>();
    *engine.dialogValues = {{"TXPLL", {"z", "", "a", "z"}}, {"CH0", {"\xb5"}}, {"CH1", {}}};
    DynamicValues dynamicValues;
    dynamicValues.setEngine(&engine);
    const DynamicValues::ValueLists* lists = dynamicValues.valueLists(DYNAMIC_DIALOG_DCU, -5);
    QVERIFY(lists);
    QCOMPARE(lists->keys(), (QStringList{"CH0", "TXPLL"})); // a key without a value is none
    QCOMPARE(lists->value(QStringLiteral("TXPLL")), (QVector<QString>{"z", "", "a", "z"}));
    QCOMPARE(lists->value(QStringLiteral("CH0")), QVector<QString>{QStringLiteral("\u00b5")});
    QCOMPARE(engine.calls, std::vector<std::string>{"values -5 1"});
}

void TestDynamicValues::withoutValuesThereIsNoList_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("hasEngine");
    QTest::addColumn<int>("keptKeys"); // of what was asked for before
    QTest::newRow("another kind of dialog") << 0 << true << 1;
    QTest::newRow("an element without values") << 1 << true << 0;
    QTest::newRow("no engine") << 1 << false << 0;
}

void TestDynamicValues::withoutValuesThereIsNoList()
{
    QFETCH(int, type);
    QFETCH(bool, hasEngine);
    FakeEngine engine;
    engine.dialogValues = std::make_unique<std::map<std::string, std::vector<std::string>>>();
    *engine.dialogValues = {{"CH0", {"A"}}};
    DynamicValues dynamicValues;
    dynamicValues.setEngine(&engine);
    const DynamicValues::ValueLists* before = dynamicValues.valueLists(DYNAMIC_DIALOG_DCU, 7);
    QVERIFY(before);
    engine.dialogValues.reset();
    dynamicValues.setEngine(hasEngine ? &engine : nullptr);
    QVERIFY(!dynamicValues.valueLists(static_cast<Enum_Dynamic_Dialog_Type>(type), 7));
    QTEST(int(before->size()), "keptKeys");
}

ZEL_TEST_MAIN(TestDynamicValues)
#include "tst_dynamicvalues.moc"
