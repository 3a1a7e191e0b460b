// SPDX-License-Identifier: MIT
#include "dialogs/dcupicker.h"
#include "dialogs/dynamicvalues.h"
#include "dialogs/zeldcusettingdlg.h"
#include "graphics/zelrectattribute.h"
#include "platform/contract/zelgraphicrecords.h"
#include "tests/support/chipviewfixture.h"

#include <QComboBox>
#include <QFontMetrics>
#include <QGraphicsRectItem>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QTimer>

#include <deque>

using namespace zeltest;

namespace {

using Values = std::map<std::string, std::vector<std::string>>;
using Calls = std::vector<std::string>;
using Record = std::map<std::string, std::string>;
using Records = QList<std::pair<unsigned int, Record>>;

constexpr int Site = 70;

class SettingsView : public ChipView
{
public:
    explicit SettingsView(const Values& values)
    {
        engine.dialogValues = std::make_unique<Values>(values);
        engine.sitesWithDialog = {"70"};
        drawing.addRect(Site, 10, 10, 40, 40);
        drawing.addRect(71, 60, 10, 40, 40);
        open();
        engine.calls.clear();
    }
};

QComboBox* box(const ZELDCUSettingDlg& dialog, const char* name)
{
    return dialog.findChild<QComboBox*>(QLatin1String(name));
}

QStringList texts(const QComboBox* box)
{
    QStringList all;
    for (int i = 0; i < box->count(); ++i)
        all.append(box->itemText(i));
    return all;
}

// An engine that notes of which element it is asked for values.
class AskedEngine final : public FakeEngine
{
public:
    const Values* getDynamicDialogValues(const std::string* id, unsigned int type) override
    {
        calls.push_back("values " + *id + " " + std::to_string(type));
        return FakeEngine::getDynamicDialogValues(id, type);
    }
};

QStringList describe(const DynamicValues::GraphicsInfo& info)
{
    QStringList texts;
    for (auto entry = info.cbegin(); entry != info.cend(); ++entry)
        texts.append(entry.key() + '|' + entry->popup + '|' + entry->fill);
    return texts;
}

} // namespace

class TestDcuSettings : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void offersTheEnginesValues()
    {
        SettingsView chip(
            {{"CH0", {"A", "A", "B"}}, {"CH1", {"B", "A", "B"}}, {"TXPLL", {"X", "", "X", "Y"}}, {"?", {"Z"}}});
        ZELDCUSettingDlg dialog(nullptr, Site);
        QCOMPARE(texts(box(dialog, "comboBoxCH0")), (QStringList{"A", "A", "B"}));
        QCOMPARE(box(dialog, "comboBoxCH0")->currentIndex(), 0);
        QCOMPARE(texts(box(dialog, "comboBoxCH1")), (QStringList{"B", "A", "B"}));
        QCOMPARE(box(dialog, "comboBoxCH1")->currentText(), "B");
        QCOMPARE(texts(box(dialog, "comboBoxTXPLL")), (QStringList{"X", "X", "Y"}));
    }

    void writesWhatWasChangedUnlessItIsCancelled()
    {
        for (const bool isChanged : {false, true}) {
            SettingsView chip({{"CH0", {"A", "A", "B"}}, {"TXPLL", {"X", "X", "Y"}}});
            ZELDCUSettingDlg dialog(nullptr, Site);
            box(dialog, "comboBoxTXPLL")->setCurrentText(isChanged ? "Y" : "X");
            QTimer::singleShot(0, dialog.findChild<QPushButton*>("pushButtonOK"), &QPushButton::click);
            QCOMPARE(dialog.exec(), DCUDLGSUCCESS);
            QCOMPARE(chip.engine.calls, isChanged ? (Calls{"set 70 TXPLL=Y", "refresh 3"}) : Calls{"refresh 3"});
            QCOMPARE(chip.window->getDirtyFlag(), isChanged ? 4 : 0);
            chip.window->clearDirtyFlag();
            QCOMPARE(chip.window->getDirtyFlag(), 0);
            chip.engine.calls.clear();
            box(dialog, "comboBoxTXPLL")->setCurrentText(isChanged ? "X" : "Y");
            QTimer::singleShot(0, &dialog, [&] { QTest::keyClick(&dialog, Qt::Key_Escape); });
            QCOMPARE(dialog.exec(), 1);
            QVERIFY(chip.engine.calls.empty());
        }
    }

    void coupledValuesKeepTheChannelsInStep()
    {
        SettingsView chip({{"CH0", {"A", "A", "B"}}, {"CH1", {"B", "A", "B"}}, {"CH0:CH1", {"Q", "Q"}}});
        ZELDCUSettingDlg dialog(nullptr, Site);
        QComboBox* channel0 = box(dialog, "comboBoxCH0");
        QComboBox* channel1 = box(dialog, "comboBoxCH1");
        QCOMPARE(channel0->currentText() + channel1->currentText(), "AB");
        channel1->setCurrentIndex(channel1->findText("Q"));
        QCOMPARE(channel0->currentText(), "Q");
        channel0->setCurrentIndex(2);
        QCOMPARE(channel0->currentText() + channel1->currentText(), "BQ");
        dialog.accept();
        // Both were on "Q" when the dialog opened, whatever the single lists said.
        QCOMPARE(chip.engine.calls, (Calls{"set 70 CH0=B", "refresh 3"}));
    }

    void valuesForBothChannelsMayBeTheOnlyOnes()
    {
        SettingsView chip({{"CH0:CH1", {"Q", "Q", "R"}}});
        ZELDCUSettingDlg dialog(nullptr, Site);
        QCOMPARE(box(dialog, "comboBoxCH0")->currentText() + box(dialog, "comboBoxCH1")->currentText(), "QQ");
        dialog.accept();
        QCOMPARE(chip.engine.calls, Calls{"refresh 3"}); // nothing was chosen
        ZELDCUSettingDlg second(nullptr, Site);
        box(second, "comboBoxCH0")->setCurrentIndex(2);
        second.accept();
        QCOMPARE(chip.engine.calls, (Calls{"refresh 3", "set 70 CH0=R", "set 70 CH1=R", "refresh 3"}));
    }

    void withoutValuesNothingCanBeChosen()
    {
        SettingsView chip({{"CH0", {"", "A"}}, {"CH1", {}}});
        ZELDCUSettingDlg dialog(nullptr, Site);
        QVERIFY(box(dialog, "comboBoxCH0")->isEnabled() && !box(dialog, "comboBoxCH1")->isEnabled());
        QCOMPARE(box(dialog, "comboBoxCH0")->currentIndex(), -1); // its current value is empty
        chip.engine.dialogValues.reset();
        ZELDCUSettingDlg second(nullptr, Site);
        for (const QComboBox* list : second.findChildren<QComboBox*>())
            QVERIFY(!list->isEnabled());
        dialog.accept();
        second.accept();
        QCOMPARE(chip.engine.calls, (Calls{"refresh 3", "refresh 3"}));
    }

    void formIsAsAgreed_data()
    {
        const Rows<QRect, QString, QString> row; // in the parent
        row("groupBox", QRect(20, 100, 210, 91), "dcuSettingDlg", "RX Setting");
        row("comboBoxCH0", QRect(90, 24, 101, 20), "groupBox", "");
        row("comboBoxCH1", QRect(90, 50, 101, 20), "groupBox", "");
        row("label_2", QRect(10, 23, 48, 16), "groupBox", "Channel 0");
        row("label_3", QRect(10, 50, 48, 16), "groupBox", "Channel 1");
        row("groupBox_2", QRect(20, 30, 210, 51), "dcuSettingDlg", "TX Setting");
        row("comboBoxTXPLL", QRect(90, 20, 101, 20), "groupBox_2", "");
        row("label", QRect(10, 20, 70, 16), "groupBox_2", "TXPLL");
        row("pushButtonOK", QRect(70, 200, 71, 23), "dcuSettingDlg", "Ok");
        row("pushButtonCancel", QRect(160, 200, 71, 23), "dcuSettingDlg", "Cancel");
    }

    void formIsAsAgreed()
    {
        const auto [geometry, parent, text] = row<QRect, QString, QString>();
        SettingsView chip({{"CH0", {"A"}}, {"CH1", {"A"}}, {"TXPLL", {"X"}}});
        ZELDCUSettingDlg dialog(nullptr, Site);
        dialog.show();
        QCOMPARE(dialog.size(), QSize(252, 238));
        QCOMPARE(dialog.minimumSize(), dialog.maximumSize());
        QCOMPARE(dialog.windowTitle(), "DCU Settings");
        auto* widget = dialog.findChild<QWidget*>(QLatin1String(QTest::currentDataTag()));
        QVERIFY(widget);
        QCOMPARE(widget->geometry(), geometry);
        QCOMPARE(widget->parentWidget()->objectName(), parent);
        const QVariant title = widget->property("title");
        QCOMPARE((title.isValid() ? title : widget->property("text")).toString(), text);
        QStringList tabOrder;
        for (QWidget* next = box(dialog, "comboBoxTXPLL"); tabOrder.size() < 3; next = next->nextInFocusChain()) {
            if (next->focusPolicy() & Qt::TabFocus)
                tabOrder.append(next->objectName());
        }
        QCOMPARE(tabOrder, (QStringList{"comboBoxTXPLL", "comboBoxCH0", "comboBoxCH1"}));
    }

    void textsFitTheForm()
    {
        QFont font = QApplication::font();
        const auto restore = qScopeGuard([before = font] { QApplication::setFont(before); });
        const auto fits = [](const QWidget* widget, const QString& text, int width) {
            const QFontMetrics metrics(widget->font());
            return metrics.horizontalAdvance(text) <= width && metrics.height() <= 16;
        };
        for (const int pixels : {12, 20}) { // a normal desktop font, a large one
            font.setPixelSize(pixels);
            QApplication::setFont(font);
            SettingsView chip({{"CH0", {"EXTREF A", "POWER DOWN"}}, {"CH1", {"EXTREF A"}}, {"TXPLL", {"X20"}}});
            ZELDCUSettingDlg dialog(nullptr, Site);
            for (const QLabel* label : dialog.findChildren<QLabel*>())
                QVERIFY2(fits(label, label->text(), label->width()), qPrintable(label->text()));
            for (const QComboBox* list : dialog.findChildren<QComboBox*>())
                QVERIFY(fits(list, "POWER DOWN", list->width() - 24)); // beside the arrow
            for (const QPushButton* button : dialog.findChildren<QPushButton*>())
                QVERIFY(fits(button, button->text(), button->width() - 8));
            for (const QGroupBox* group : dialog.findChildren<QGroupBox*>())
                QVERIFY(fits(group, group->title(), group->width()));
        }
    }

    void doubleClickOpensTheSiteBelow()
    {
        SettingsView chip({{"TXPLL", {"X", "X"}}});
        for (const auto& [point, hasSettings] :
            {std::pair(QPointF(30, 30), true), std::pair(QPointF(80, 30), false), std::pair(QPointF(5, 5), false)}) {
            bool isOpened = false;
            QTimer::singleShot(0, qApp, [&isOpened] {
                auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
                isOpened = dialog != nullptr;
                if (dialog)
                    dialog->reject();
            });
            chip.mouse(QEvent::MouseButtonDblClick, chip.view()->mapFromScene(point));
            QCoreApplication::processEvents();
            QCOMPARE(isOpened, hasSettings);
        }
    }

    void highestRectIsMeant_data()
    {
        const Rows<QList<double>, int> row;
        row("above the whole number of the first", {3, 3.5}, 1);
        row("also when it is lower than the first itself", {3.5, 3.2}, 1);
        row("the first of two equal ones", {3, 3}, 0);
        row("none at or below the ground", {0, -1}, -1);
        row("nothing there", {}, -1);
    }

    void highestRectIsMeant()
    {
        const auto [heights, meant] = row<QList<double>, int>();
        std::deque<QGraphicsRectItem> rects;
        std::deque<ZELRectAttribute> attributes;
        QList<QGraphicsItem*> items;
        for (double height : heights) {
            items.append(&rects.emplace_back());
            items.last()->setZValue(height);
            items.last()->setData(ZEL_GRAPHIC_ITEM_Attribute_KEY, int(attributes.size()));
            attributes.emplace_back(0, 0, 1, 1, 0, 0, 0, "").kind = ZEL_GRAPHIC_RECT;
        }
        const auto attributeOf = [&](int number) -> ZELGraphicItemAttribute* { return &attributes[number]; };
        ZELGraphicItemAttribute* const expected = meant < 0 ? nullptr : &attributes[meant];
        QCOMPARE(dcuAmong(items, attributeOf), expected);
        for (ZELRectAttribute& attribute : attributes)
            attribute.kind = ZEL_GRAPHIC_POLYGON;
        QVERIFY(!dcuAmong(items, attributeOf));
    }

    void recordsBecomeInfo_data()
    {
        const Rows<Records, QStringList> row;
        const Record both{{"tovanel:popup", "b\xe4r"}, {"fill", "#102030"}};
        row("none", {}, {});
        row("both", {{7, both}}, {"7|b\u00e4r|#102030"});
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
        QVERIFY(dynamicValues.graphicsInfo().isEmpty()); // no engine yet
        dynamicValues.setEngine(&engine);
        engine.device.addRecord(99, {});
        QVERIFY(dynamicValues.graphicsInfo().contains("99"));
        engine.device.recordList.pop_back(); // which is noticed
        const Calls& trace = traceFromNowOn();
        const DynamicValues::GraphicsInfo& found = dynamicValues.graphicsInfo();
        QCOMPARE(describe(found), info);
        QCOMPARE(trace, (Calls{"getGraphicsDynamicInfo: call ZEL engine API: chip()", "getGraphicsDynamicInfo: end"}));
        engine.device.clearRecords();
        QVERIFY(dynamicValues.graphicsInfo().isEmpty()); // asked for anew
        QVERIFY(found.isEmpty()); // the one map of the process
    }

    // Whether one element has two records, and whatever a host does with the map or keeps of it.
    void changedValuesReplaceTheOldOnes()
    {
        const QString seven = "7|EMPTYDYNAMICSTRING|";
        const QString eight = "8|EMPTYDYNAMICSTRING|blue";
        for (const unsigned second : {7u, 8u}) {
            FakeEngine engine;
            engine.device.addRecord(7, {{"fill", "red"}});
            engine.device.addRecord(second, {{"fill", "blue"}});
            DynamicValues dynamicValues;
            dynamicValues.setEngine(&engine);
            DynamicValues::GraphicsInfo& found = dynamicValues.graphicsInfo();
            for (const char* fill : {"green", "black", "white"}) {
                const QStringList before = describe(found);
                const DynamicValues::GraphicsInfo kept
                    = QLatin1String(fill) == "white" ? DynamicValues::GraphicsInfo() : found;
                if (fill[0] == 'b')
                    found["7"].popup = "a host's";
                engine.device.attributes[0].values["fill"] = fill;
                QCOMPARE(&dynamicValues.graphicsInfo(), &found);
                QCOMPARE(
                    describe(found), second == 7 ? QStringList{seven + "blue"} : (QStringList{seven + fill, eight}));
                QVERIFY(kept.isEmpty() || describe(kept) == before);
            }
        }
    }

    void valuesKeepTheEnginesOrder()
    {
        AskedEngine engine;
        engine.dialogValues = std::make_unique<Values>();
        *engine.dialogValues = {{"TXPLL", {"z", "", "a", "z"}}, {"CH0", {"\xb5"}}, {"CH1", {}}};
        DynamicValues dynamicValues;
        dynamicValues.setEngine(&engine);
        const DynamicValues::ValueLists* lists = dynamicValues.valueLists(DYNAMIC_DIALOG_DCU, -5);
        QVERIFY(lists);
        QCOMPARE(lists->keys(), (QStringList{"CH0", "TXPLL"})); // a key without a value is none
        QCOMPARE(lists->value("TXPLL"), (QVector<QString>{"z", "", "a", "z"}));
        QCOMPARE(lists->value("CH0"), QVector<QString>{"\u00b5"});
        QCOMPARE(engine.calls, Calls{"values -5 1"});
    }

    void withoutValuesThereIsNoList()
    {
        for (const auto& [type, hasEngine, keptKeys] : // keptKeys: of what was asked for before
            {std::tuple(0, true, 1), std::tuple(1, true, 0), std::tuple(1, false, 0)}) {
            FakeEngine engine;
            engine.dialogValues = std::make_unique<Values>(Values{{"CH0", {"A"}}});
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

ZEL_TEST_MAIN(TestDcuSettings)
#include "tst_dcusettings.moc"
