// SPDX-License-Identifier: MIT
#include "dialogs/dcupicker.h"
#include "dialogs/zeldcusettingdlg.h"
#include "graphics/zelrectattribute.h"
#include "platform/contract/zelgraphicrecords.h"
#include "tests/support/chipviewfixture.h"
#include "tests/support/testmain.h"

#include <QComboBox>
#include <QFontMetrics>
#include <QGraphicsRectItem>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QTimer>

using namespace zeltest;

namespace {

using Values = std::map<std::string, std::vector<std::string>>;
using Calls = std::vector<std::string>;

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

} // namespace

class TestDcuSettings : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void offersTheEnginesValues();
    void writesWhatWasChanged_data();
    void writesWhatWasChanged();
    void coupledValuesKeepTheChannelsInStep();
    void valuesForBothChannelsMayBeTheOnlyOnes();
    void withoutValuesNothingCanBeChosen();
    void emptyCurrentValueSelectsNothing();
    void cancelWritesNothing();
    void formIsAsAgreed_data();
    void formIsAsAgreed();
    void textsFitTheForm_data();
    void textsFitTheForm();
    void doubleClickOpensTheSiteBelow_data();
    void doubleClickOpensTheSiteBelow();
    void highestRectIsMeant_data();
    void highestRectIsMeant();
};

void TestDcuSettings::offersTheEnginesValues()
{
    SettingsView chip(
        {{"CH0", {"A", "A", "B"}}, {"CH1", {"B", "A", "B"}}, {"TXPLL", {"X", "", "X", "Y"}}, {"?", {"Z"}}});
    ZELDCUSettingDlg dialog(nullptr, Site);
    QCOMPARE(texts(box(dialog, "comboBoxCH0")), (QStringList{"A", "A", "B"}));
    QCOMPARE(box(dialog, "comboBoxCH0")->currentIndex(), 0);
    QCOMPARE(texts(box(dialog, "comboBoxCH1")), (QStringList{"B", "A", "B"}));
    QCOMPARE(box(dialog, "comboBoxCH1")->currentText(), QStringLiteral("B"));
    QCOMPARE(texts(box(dialog, "comboBoxTXPLL")), (QStringList{"X", "X", "Y"}));
}

void TestDcuSettings::writesWhatWasChanged_data()
{
    QTest::addColumn<QString>("txPll");
    QTest::addColumn<QStringList>("writes");
    QTest::newRow("nothing") << "X" << QStringList{"refresh 3"};
    QTest::newRow("one value") << "Y" << QStringList{"set 70 TXPLL=Y", "refresh 3"};
}

void TestDcuSettings::writesWhatWasChanged()
{
    QFETCH(QString, txPll);
    SettingsView chip({{"CH0", {"A", "A", "B"}}, {"TXPLL", {"X", "X", "Y"}}});
    ZELDCUSettingDlg dialog(nullptr, Site);
    box(dialog, "comboBoxTXPLL")->setCurrentText(txPll);
    QTimer::singleShot(0, dialog.findChild<QPushButton*>(QStringLiteral("pushButtonOK")), &QPushButton::click);
    QCOMPARE(dialog.exec(), DCUDLGSUCCESS);
    QStringList calls;
    for (const std::string& call : chip.engine.calls)
        calls.append(QString::fromLatin1(call.c_str()));
    QTEST(calls, "writes");
    QCOMPARE(chip.window->getDirtyFlag(), txPll == QStringLiteral("Y") ? 4 : 0);
}

void TestDcuSettings::coupledValuesKeepTheChannelsInStep()
{
    SettingsView chip({{"CH0", {"A", "A", "B"}}, {"CH1", {"B", "A", "B"}}, {"CH0:CH1", {"Q", "Q"}}});
    ZELDCUSettingDlg dialog(nullptr, Site);
    QComboBox* channel0 = box(dialog, "comboBoxCH0");
    QComboBox* channel1 = box(dialog, "comboBoxCH1");
    QCOMPARE(channel0->currentText() + channel1->currentText(), QStringLiteral("AB"));
    channel1->setCurrentIndex(channel1->findText(QStringLiteral("Q")));
    QCOMPARE(channel0->currentText(), QStringLiteral("Q"));
    channel0->setCurrentIndex(2);
    QCOMPARE(channel0->currentText() + channel1->currentText(), QStringLiteral("BQ"));
    dialog.accept();
    // Both were on "Q" when the dialog opened, whatever the single lists said.
    QCOMPARE(chip.engine.calls, (Calls{"set 70 CH0=B", "refresh 3"}));
}

void TestDcuSettings::valuesForBothChannelsMayBeTheOnlyOnes()
{
    SettingsView chip({{"CH0:CH1", {"Q", "Q", "R"}}});
    {
        ZELDCUSettingDlg dialog(nullptr, Site);
        QCOMPARE(box(dialog, "comboBoxCH0")->currentText() + box(dialog, "comboBoxCH1")->currentText(), "QQ");
        dialog.accept();
        QCOMPARE(chip.engine.calls, Calls{"refresh 3"}); // nothing was chosen
    }
    ZELDCUSettingDlg dialog(nullptr, Site);
    box(dialog, "comboBoxCH0")->setCurrentIndex(2);
    dialog.accept();
    QCOMPARE(chip.engine.calls, (Calls{"refresh 3", "set 70 CH0=R", "set 70 CH1=R", "refresh 3"}));
}

void TestDcuSettings::withoutValuesNothingCanBeChosen()
{
    SettingsView chip({});
    chip.engine.dialogValues.reset();
    ZELDCUSettingDlg dialog(nullptr, Site);
    for (const char* name : {"comboBoxCH0", "comboBoxCH1", "comboBoxTXPLL"})
        QVERIFY(!box(dialog, name)->isEnabled());
    dialog.accept();
    QCOMPARE(chip.engine.calls, Calls{"refresh 3"});
}

void TestDcuSettings::emptyCurrentValueSelectsNothing()
{
    SettingsView chip({{"CH0", {"", "A"}}, {"CH1", {}}});
    ZELDCUSettingDlg dialog(nullptr, Site);
    QCOMPARE(box(dialog, "comboBoxCH0")->currentIndex(), -1);
    QVERIFY(box(dialog, "comboBoxCH0")->isEnabled());
    QVERIFY(!box(dialog, "comboBoxCH1")->isEnabled());
    dialog.accept();
    QCOMPARE(chip.engine.calls, Calls{"refresh 3"});
}

void TestDcuSettings::cancelWritesNothing()
{
    SettingsView chip({{"TXPLL", {"X", "X", "Y"}}});
    ZELDCUSettingDlg dialog(nullptr, Site);
    box(dialog, "comboBoxTXPLL")->setCurrentText(QStringLiteral("Y"));
    QTimer::singleShot(0, &dialog, [&] { QTest::keyClick(&dialog, Qt::Key_Escape); });
    QCOMPARE(dialog.exec(), 1);
    QVERIFY(chip.engine.calls.empty());
}

void TestDcuSettings::formIsAsAgreed_data()
{
    QTest::addColumn<QRect>("geometry"); // in the parent
    QTest::addColumn<QString>("parent");
    QTest::addColumn<QString>("text");
    QTest::newRow("groupBox") << QRect(20, 100, 210, 91) << "dcuSettingDlg"
                              << "RX Setting";
    QTest::newRow("comboBoxCH0") << QRect(90, 24, 101, 20) << "groupBox" << QString();
    QTest::newRow("comboBoxCH1") << QRect(90, 50, 101, 20) << "groupBox" << QString();
    QTest::newRow("label_2") << QRect(10, 23, 48, 16) << "groupBox"
                             << "Channel 0";
    QTest::newRow("label_3") << QRect(10, 50, 48, 16) << "groupBox"
                             << "Channel 1";
    QTest::newRow("groupBox_2") << QRect(20, 30, 210, 51) << "dcuSettingDlg"
                                << "TX Setting";
    QTest::newRow("comboBoxTXPLL") << QRect(90, 20, 101, 20) << "groupBox_2" << QString();
    QTest::newRow("label") << QRect(10, 20, 70, 16) << "groupBox_2"
                           << "TXPLL";
    QTest::newRow("pushButtonOK") << QRect(70, 200, 71, 23) << "dcuSettingDlg"
                                  << "Ok";
    QTest::newRow("pushButtonCancel") << QRect(160, 200, 71, 23) << "dcuSettingDlg"
                                      << "Cancel";
}

void TestDcuSettings::formIsAsAgreed()
{
    SettingsView chip({{"CH0", {"A"}}, {"CH1", {"A"}}, {"TXPLL", {"X"}}});
    ZELDCUSettingDlg dialog(nullptr, Site);
    dialog.show();
    QCOMPARE(dialog.size(), QSize(252, 238));
    QCOMPARE(dialog.minimumSize(), dialog.maximumSize());
    QCOMPARE(dialog.windowTitle(), QStringLiteral("DCU Settings"));
    auto* widget = dialog.findChild<QWidget*>(QLatin1String(QTest::currentDataTag()));
    QVERIFY(widget);
    QTEST(widget->geometry(), "geometry");
    QTEST(widget->parentWidget()->objectName(), "parent");
    const QVariant title = widget->property("title");
    QTEST((title.isValid() ? title : widget->property("text")).toString(), "text");
    QStringList tabOrder;
    for (QWidget* next = box(dialog, "comboBoxTXPLL"); tabOrder.size() < 3; next = next->nextInFocusChain()) {
        if (next->focusPolicy() & Qt::TabFocus)
            tabOrder.append(next->objectName());
    }
    QCOMPARE(tabOrder, (QStringList{"comboBoxTXPLL", "comboBoxCH0", "comboBoxCH1"}));
}

void TestDcuSettings::textsFitTheForm_data()
{
    QTest::addColumn<int>("fontPixels");
    QTest::newRow("a normal desktop font") << 12;
    QTest::newRow("a large one") << 20;
}

void TestDcuSettings::textsFitTheForm()
{
    QFETCH(int, fontPixels);
    const QFont before = QApplication::font();
    QFont font = before;
    font.setPixelSize(fontPixels);
    QApplication::setFont(font);
    const auto restore = qScopeGuard([&] { QApplication::setFont(before); });
    SettingsView chip({{"CH0", {"EXTREF A", "POWER DOWN"}}, {"CH1", {"EXTREF A"}}, {"TXPLL", {"X20"}}});
    ZELDCUSettingDlg dialog(nullptr, Site);
    const auto fits = [](const QWidget* widget, const QString& text, int width) {
        const QFontMetrics metrics(widget->font());
        return metrics.horizontalAdvance(text) <= width && metrics.height() <= 16;
    };
    for (const QLabel* label : dialog.findChildren<QLabel*>())
        QVERIFY2(fits(label, label->text(), label->width()), qPrintable(label->text()));
    for (const QComboBox* list : dialog.findChildren<QComboBox*>())
        QVERIFY(fits(list, QStringLiteral("POWER DOWN"), list->width() - 24)); // beside the arrow
    for (const QPushButton* button : dialog.findChildren<QPushButton*>())
        QVERIFY(fits(button, button->text(), button->width() - 8));
    for (const QGroupBox* group : dialog.findChildren<QGroupBox*>())
        QVERIFY(fits(group, group->title(), group->width()));
}

void TestDcuSettings::doubleClickOpensTheSiteBelow_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<bool>("isOpened");
    QTest::newRow("a site with settings") << QPointF(30, 30) << true;
    QTest::newRow("a site without") << QPointF(80, 30) << false;
    QTest::newRow("beside the sites") << QPointF(5, 5) << false;
}

void TestDcuSettings::doubleClickOpensTheSiteBelow()
{
    QFETCH(QPointF, point);
    SettingsView chip({{"TXPLL", {"X", "X"}}});
    bool isOpened = false;
    QTimer::singleShot(0, qApp, [&] {
        if (QWidget* dialog = QApplication::activeModalWidget()) {
            isOpened = true;
            static_cast<QDialog*>(dialog)->reject();
        }
    });
    const QPoint position = chip.view()->mapFromScene(point);
    chip.mouse(QEvent::MouseButtonDblClick, position);
    QCoreApplication::processEvents();
    QTEST(isOpened, "isOpened");
}

void TestDcuSettings::highestRectIsMeant_data()
{
    QTest::addColumn<QList<double>>("heights");
    QTest::addColumn<int>("meant");
    QTest::newRow("above the whole number of the first") << QList<double>{3, 3.5} << 1;
    QTest::newRow("also when it is lower than the first itself") << QList<double>{3.5, 3.2} << 1;
    QTest::newRow("the first of two equal ones") << QList<double>{3, 3} << 0;
    QTest::newRow("none at or below the ground") << QList<double>{0, -1} << -1;
    QTest::newRow("nothing there") << QList<double>{} << -1;
}

void TestDcuSettings::highestRectIsMeant()
{
    QFETCH(QList<double>, heights);
    std::vector<std::unique_ptr<QGraphicsRectItem>> rects;
    std::vector<std::unique_ptr<ZELRectAttribute>> attributes;
    QList<QGraphicsItem*> items;
    for (double height : heights) {
        rects.push_back(std::make_unique<QGraphicsRectItem>());
        rects.back()->setZValue(height);
        rects.back()->setData(ZEL_GRAPHIC_ITEM_Attribute_KEY, int(attributes.size()));
        attributes.push_back(std::make_unique<ZELRectAttribute>(0, 0, 1, 1, 0, 0, 0, ""));
        attributes.back()->kind = ZEL_GRAPHIC_RECT;
        items.append(rects.back().get());
    }
    const auto attributeOf = [&](int number) -> ZELGraphicItemAttribute* { return attributes[number].get(); };
    const ZELGraphicItemAttribute* best = dcuAmong(items, attributeOf);
    int meant = -1;
    for (int i = 0; i < int(attributes.size()); ++i)
        meant = attributes[i].get() == best ? i : meant;
    QTEST(meant, "meant");
    for (const auto& attribute : attributes)
        attribute->kind = ZEL_GRAPHIC_POLYGON;
    QVERIFY(!dcuAmong(items, attributeOf));
}

ZEL_TEST_MAIN(TestDcuSettings)
#include "tst_dcusettings.moc"
