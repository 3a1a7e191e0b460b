// SPDX-License-Identifier: MIT
#include "dialogs/dynamicvalues.h"
#include "tests/support/fakeengine.h"
#include "tests/support/testmain.h"

using Values = std::map<std::string, std::string>;
using Records = QList<std::pair<unsigned int, Values>>;
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
    void recordsBecomeInfo_data()
    {
        const Rows<Records, QStringList> row;
        const Values both{{"tovanel:popup", "b\xe4r"}, {"fill", "#102030"}};
        row("none", {}, {});
        row("both", {{7, both}}, {QStringLiteral("7|b\u00e4r|#102030")});
        row("neither", {{7, {}}}, {"7|EMPTYDYNAMICSTRING|EMPTYDYNAMICSTRING"});
        row("an empty value is not a missing one", {{7, {{"tovanel:popup", ""}}}}, {"7||EMPTYDYNAMICSTRING"});
        row("the later of two with one id counts", {{7, both}, {7, {{"fill", "red"}}}}, {"7|EMPTYDYNAMICSTRING|red"});
        row("ids have no sign", {{4294967295u, {{"fill", "red"}}}}, {"4294967295|EMPTYDYNAMICSTRING|red"});
    }

    void recordsBecomeInfo()
    {
        const auto [records, info] = row<Records, QStringList>();
        FakeEngine engine;
        for (const auto& [id, values] : records)
            engine.device.addRecord(id, values);
        engine.device.recordList.insert(engine.device.recordList.begin(), nullptr);
        DynamicValues dynamicValues;
        dynamicValues.setEngine(&engine);
        const std::vector<std::string>& trace = traceFromNowOn();
        QCOMPARE(describe(dynamicValues.graphicsInfo()), info);
        QCOMPARE(trace,
            (std::vector<std::string>{
                "getGraphicsDynamicInfo: call ZEL engine API: chip()", "getGraphicsDynamicInfo: end"}));
    }

    void infoIsAskedForAnew()
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

    void valuesKeepTheEnginesOrder()
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

    void withoutValuesThereIsNoList()
    {
        for (const auto& [type, hasEngine, keptKeys] : // keptKeys: of what was asked for before
            {std::tuple(0, true, 1), std::tuple(1, true, 0), std::tuple(1, false, 0)}) {
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
            QCOMPARE(int(before->size()), keptKeys);
        }
    }
};

ZEL_TEST_MAIN(TestDynamicValues)
#include "tst_dynamicvalues.moc"
