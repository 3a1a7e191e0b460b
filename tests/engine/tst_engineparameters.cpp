// SPDX-License-Identifier: MIT
#include "engine/referenceengine.h"
#include "tests/engine/projectfolder.h"
#include "tests/support/testmain.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QTest>
#include <QTimer>

using mirn::zelengine::ReferenceEngine;

namespace {

const char* const DESIGN = R"([
  {"name": "ip", "type": "IP", "rate": 5, "children": [
    {"name": "a", "type": "DCUCHANNEL"},
    {"name": "ref", "type": "EXTREF", "site": "REF_L", "fixed": true, "frequency": 156.25}]},
  {"name": "plain", "type": "IP"},
  {"name": "<b>pll", "type": "PLL"},
  {"name": "group"},
  {"name": "v", "type": "UVCCIO"}
])";

} // namespace

// What can be configured about resources: through the engine and through its dialog.
class TestEngineParameters : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void configuresOrSaysWhyNot_data();
    void configuresOrSaysWhyNot();
    void summariesTellValues();
    void restoredResourcesAreAsInTheFile();
    void dialogChangesWhatWasTyped_data();
    void dialogChangesWhatWasTyped();
    void dialogAsksTheWriter();
    void dialogSurvivesItsWindow();
    void nothingToConfigureIsSaid_data();
    void nothingToConfigureIsSaid();

private:
    [[nodiscard]] QString valueOf(const QString& resource, const QString& key) const;
    int answer(const std::string& resource, const std::function<void(QWidget&)>& gesture);

    ProjectFolder m_folder;
    std::unique_ptr<ReferenceEngine> m_engine;
};

void TestEngineParameters::init()
{
    zeltest::Test::init();
    m_folder.write(QStringLiteral("design.json"), designWith(DESIGN));
    QString error;
    QStringList warnings;
    m_engine = ReferenceEngine::open(m_folder.path(), &error, &warnings);
    QVERIFY2(m_engine, qPrintable(error));
}

QString TestEngineParameters::valueOf(const QString& resource, const QString& key) const
{
    return m_engine->design().parameter(m_engine->design().find(resource), key);
}

// Asks to configure a resource and makes a gesture in the dialog that opens.
int TestEngineParameters::answer(const std::string& resource, const std::function<void(QWidget&)>& gesture)
{
    QTimer timer;
    connect(&timer, &QTimer::timeout, &timer, [&] {
        if (QWidget* dialog = QApplication::activeModalWidget()) {
            timer.stop();
            gesture(*dialog);
        }
    });
    timer.start(0);
    return m_engine->config(&resource);
}

void TestEngineParameters::configuresOrSaysWhyNot_data()
{
    QTest::addColumn<QString>("resource");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("inForce");
    QTest::addColumn<QString>("refusal");
    const auto row
        = [](const char* name, const char* resource, const char* key, const char* value, const char* inForce,
              const char* refusal = "") { QTest::newRow(name) << resource << key << value << inForce << refusal; };
    row("a frequency", "top/<b>pll", "frequency", "62.5", "62.5");
    row("a number is kept to thousandths", "top/<b>pll", "frequency", "33.33333", "33.333");
    row("other spellings of one number", "top/<b>pll", "frequency", " 1.000e2", "100");
    row("the lowest", "top/<b>pll", "frequency", "5", "5");
    row("below the lowest", "top/<b>pll", "frequency", "4.999", "100",
        "frequency cannot be \"4.999\", expected a number from 5 to 800");
    row("beyond the highest", "top/ip/ref", "frequency", "500.001", "156.25",
        "frequency cannot be \"500.001\", expected a number from 10 to 500");
    row("what is no number", "top/<b>pll", "frequency", "nan", "100",
        "frequency cannot be \"nan\", expected a number from 5 to 800");
    row("what is fixed", "top/ip/ref", "frequency", "125", "125");
    row("a rate", "top/ip", "rate", "1.250", "1.25");
    row("a rate that there is not", "top/ip", "rate", "3", "5",
        "rate cannot be \"3\", expected 1.25, 2.5, 3.125, 5 or 6.25");
    row("a key of another type", "top/ip", "frequency", "100", "",
        "top/ip has no parameter \"frequency\", expected \"rate\"");
    row("a supply", "top/v", "voltage", "3", "", "top/v has nothing to configure");
    row("a group", "top/group", "rate", "5", "", "top/group has nothing to configure");
    row("no such resource", "top/x", "rate", "5", "", "there is no resource \"top/x\"");
}

void TestEngineParameters::configuresOrSaysWhyNot()
{
    QFETCH(QString, resource);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QString, inForce);
    QFETCH(QString, refusal);
    QCOMPARE(m_engine->configure(resource, key, value), refusal);
    if (m_engine->design().find(resource) >= 0)
        QCOMPARE(valueOf(resource, key), inForce);
}

void TestEngineParameters::summariesTellValues()
{
    const std::string reference = "top/ip/ref";
    const std::string pll = "top/<b>pll";
    QCOMPARE(m_engine->getResourceSummary(&reference), std::string("fixed on REF_L, 156.25 MHz"));
    QCOMPARE(m_engine->getResourceSummary(&pll), std::string("not placed, 100 MHz"));
    QCOMPARE(m_engine->configure(QString::fromStdString(pll), QStringLiteral("frequency"), QStringLiteral("75")), "");
    QCOMPARE(m_engine->getResourceSummary(&pll), std::string("not placed, 75 MHz"));
}

void TestEngineParameters::restoredResourcesAreAsInTheFile()
{
    const QString rate = QStringLiteral("rate");
    QCOMPARE(valueOf(QStringLiteral("top/plain"), rate), QStringLiteral("2.5"));
    QCOMPARE(m_engine->configure(QStringLiteral("top/ip"), rate, QStringLiteral("6.25")), QString());
    QCOMPARE(m_engine->remove(QStringLiteral("top/ip")), QString());
    QVERIFY(!m_engine->configure(QStringLiteral("top/ip"), rate, QStringLiteral("1.25")).isEmpty());
    QCOMPARE(m_engine->restore(QStringLiteral("top/ip")), QString());
    QCOMPARE(valueOf(QStringLiteral("top/ip"), rate), QStringLiteral("5"));
}

void TestEngineParameters::dialogChangesWhatWasTyped_data()
{
    QTest::addColumn<QByteArray>("resource");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("inForce");
    QTest::addColumn<int>("answer");
    const auto row
        = [](const char* name, const char* resource, const char* text, Qt::Key key, const char* inForce, int answer) {
              QTest::newRow(name) << QByteArray(resource) << QString::fromLatin1(text) << int(key) << inForce << answer;
          };
    row("a number and OK", "top/<b>pll", "62.5", Qt::Key_Return, "62.5", 1);
    row("a number and Cancel", "top/<b>pll", "62.5", Qt::Key_Escape, "100", 0);
    row("OK and nothing else", "top/<b>pll", "", Qt::Key_Return, "100", 0);
    row("the same number again", "top/ip/ref", "156.250", Qt::Key_Return, "156.25", 0);
    row("keys that would lead out of the bounds are not taken", "top/<b>pll", "x9999", Qt::Key_Return, "99", 1);
    row("a choice and OK", "top/ip", "1", Qt::Key_Return, "1.25", 1);
    row("a choice and Cancel", "top/ip", "1", Qt::Key_Escape, "5", 0);
}

void TestEngineParameters::dialogChangesWhatWasTyped()
{
    QFETCH(QByteArray, resource);
    QFETCH(QString, text);
    QFETCH(int, key);
    QFETCH(QString, inForce);
    QFETCH(int, answer);
    const auto type = [&](QWidget& dialog) {
        QTest::keyClicks(dialog.focusWidget(), text);
        QTest::keyClick(dialog.focusWidget(), static_cast<Qt::Key>(key));
    };
    QCOMPARE(this->answer(resource.toStdString(), type), answer);
    const QString name = QString::fromLatin1(resource);
    QCOMPARE(
        valueOf(name, name == QLatin1String("top/ip") ? QStringLiteral("rate") : QStringLiteral("frequency")), inForce);
    QVERIFY(!QApplication::activeModalWidget());
}

// A refusal is said, and what was refused is not in force.
void TestEngineParameters::dialogAsksTheWriter()
{
    QStringList written;
    m_engine->setParameterWriter([&](const QString& resource, const QString& key, const QString& value) {
        written = QStringList{resource, key, value};
        return QStringLiteral("the disk is full");
    });
    const auto type = [](QWidget& dialog) {
        QTest::keyClicks(dialog.focusWidget(), QStringLiteral("250"));
        QTest::keyClick(&dialog, Qt::Key_Return);
    };
    QCOMPARE(answer("top/<b>pll", type), 0);
    QCOMPARE(written, (QStringList{"top/<b>pll", "frequency", "250"}));
    QCOMPARE(valueOf(QStringLiteral("top/<b>pll"), QStringLiteral("frequency")), QStringLiteral("100"));
    const QPointer<QMessageBox> box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    QVERIFY(box);
    QCOMPARE(box->text(), QStringLiteral("the disk is full"));
    QTest::keyClick(box, Qt::Key_Return);
    QTRY_VERIFY(!box);
}

// The window over which the dialog stands is closed by something else.
void TestEngineParameters::dialogSurvivesItsWindow()
{
    auto window = std::make_unique<QWidget>();
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    const auto closeWindow = [&](QWidget& dialog) {
        QCOMPARE(dialog.parentWidget(), window.get());
        window.reset();
    };
    QCOMPARE(answer("top/<b>pll", closeWindow), 0);
    QVERIFY(!QApplication::activeModalWidget());
}

void TestEngineParameters::nothingToConfigureIsSaid_data()
{
    QTest::addColumn<QByteArray>("resource");
    for (const char* name : {"top/group", "top/v", "top/ip/a", "top"})
        QTest::newRow(name) << QByteArray(name);
}

void TestEngineParameters::nothingToConfigureIsSaid()
{
    QFETCH(QByteArray, resource);
    const std::string name = resource.toStdString();
    QCOMPARE(m_engine->config(&name), 0);
    const QPointer<QMessageBox> box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    QVERIFY(box);
    QCOMPARE(box->text(), QString::fromLatin1(resource + " has nothing to configure."));
    QTest::keyClick(box, Qt::Key_Return);
    QTRY_VERIFY(!box);
}

ZEL_TEST_MAIN(TestEngineParameters)
#include "tst_engineparameters.moc"
