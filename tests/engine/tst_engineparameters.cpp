// SPDX-License-Identifier: MIT
#include "tests/engine/openengine.h"
#include "tests/engine/projectfolder.h"
#include "tests/support/testmain.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
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

// Resources are configured through the engine and through its dialog.
class TestEngineParameters : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        zeltest::Test::init();
        m_engine = openEngine(m_folder.path());
    }

    void configuresOrSaysWhyNot_data()
    {
        const Rows<QString, QString, QString, QString, QString> row;
        row("a frequency", "top/<b>pll", "frequency", "62.5", "62.5", "");
        row("a number is kept to thousandths", "top/<b>pll", "frequency", "33.33333", "33.333", "");
        row("other spellings of one number", "top/<b>pll", "frequency", " 1.000e2", "100", "");
        row("the lowest", "top/<b>pll", "frequency", "5", "5", "");
        row("below the lowest", "top/<b>pll", "frequency", "4.999", "100",
            "frequency cannot be \"4.999\", expected a number from 5 to 800");
        row("beyond the highest", "top/ip/ref", "frequency", "500.001", "156.25",
            "frequency cannot be \"500.001\", expected a number from 10 to 500");
        row("what is no number", "top/<b>pll", "frequency", "nan", "100",
            "frequency cannot be \"nan\", expected a number from 5 to 800");
        row("what is fixed", "top/ip/ref", "frequency", "125", "125", "");
        row("a rate", "top/ip", "rate", "1.250", "1.25", "");
        row("no such rate", "top/ip", "rate", "3", "5", "rate cannot be \"3\", expected 1.25, 2.5, 3.125, 5 or 6.25");
        row("a key of another type", "top/ip", "frequency", "100", "",
            "top/ip has no parameter \"frequency\", expected \"rate\"");
        row("a supply", "top/v", "voltage", "3", "", "top/v has nothing to configure");
        row("a group", "top/group", "rate", "5", "", "top/group has nothing to configure");
        row("no such resource", "top/x", "rate", "5", "", "there is no resource \"top/x\"");
    }

    void configuresOrSaysWhyNot()
    {
        const auto [resource, key, value, inForce, refusal] = row<QString, QString, QString, QString, QString>();
        QCOMPARE(m_engine->configure(resource, key, value), refusal);
        if (m_engine->design().find(resource) >= 0)
            QCOMPARE(valueOf(resource, key), inForce);
    }

    void restoredResourcesAreAsInTheFile()
    {
        const QString rate = "rate";
        QCOMPARE(valueOf("top/plain", rate), "2.5");
        QCOMPARE(m_engine->configure("top/ip", rate, "6.25"), QString());
        QCOMPARE(m_engine->remove("top/ip"), QString());
        QVERIFY(!m_engine->configure("top/ip", rate, "1.25").isEmpty());
        QCOMPARE(m_engine->restore("top/ip"), QString());
        QCOMPARE(valueOf("top/ip", rate), "5");
    }

    void dialogChangesWhatWasTyped_data()
    {
        const Rows<QString, QString, QString, QString, QString> row;
        row("a number and OK", "top/<b>pll", "62.5", "OK", "62.5", "changed");
        row("a number and Cancel", "top/<b>pll", "62.5", "Cancel", "100", "");
        row("OK and nothing else", "top/<b>pll", "", "OK", "100", "");
        row("the same number again", "top/ip/ref", "156.250", "OK", "156.25", "");
        row("keys that would lead out of the bounds are not taken", "top/<b>pll", "x9999", "OK", "99", "changed");
        row("a choice and OK", "top/ip", "1", "OK", "1.25", "changed");
        row("a choice and Cancel", "top/ip", "1", "Cancel", "5", "");
    }

    void dialogChangesWhatWasTyped()
    {
        const auto [resource, text, button, inForce, answer] = row<QString, QString, QString, QString, QString>();
        const Qt::Key key = button == "OK" ? Qt::Key_Return : Qt::Key_Escape;
        QCOMPARE(typeInto(resource.toStdString(), text, key), answer.isEmpty() ? 0 : 1);
        QCOMPARE(valueOf(resource, resource == "top/ip" ? "rate" : "frequency"), inForce);
        QVERIFY(!QApplication::activeModalWidget());
    }

    // A refusal is said, and what was refused is not in force.
    void dialogAsksTheWriter()
    {
        QStringList written;
        m_engine->setParameterWriter([&](const QString& resource, const QString& key, const QString& value) {
            written = QStringList{resource, key, value};
            return QString("the disk is full");
        });
        QCOMPARE(typeInto("top/<b>pll", "250", Qt::Key_Return), 0);
        QCOMPARE(written, (QStringList{"top/<b>pll", "frequency", "250"}));
        QCOMPARE(valueOf("top/<b>pll", "frequency"), "100");
        checkBox("the disk is full");
    }

    // The window over which the dialog stands is closed by something else.
    void dialogSurvivesItsWindow()
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

    void nothingToConfigureIsSaid()
    {
        for (const std::string name : {"top/group", "top/v", "top/ip/a", "top"}) {
            QCOMPARE(m_engine->config(&name), 0);
            checkBox(QString::fromStdString(name) + " has nothing to configure.");
        }
    }

private:
    [[nodiscard]] QString valueOf(const QString& resource, const QString& key) const
    {
        return m_engine->design().parameter(m_engine->design().find(resource), key);
    }

    // Asks to configure a resource and makes a gesture in the dialog that opens.
    int answer(const std::string& resource, const std::function<void(QWidget&)>& gesture)
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

    int typeInto(const std::string& resource, const QString& text, Qt::Key key)
    {
        return answer(resource, [&](QWidget& dialog) {
            QTest::keyClicks(dialog.focusWidget(), text);
            QTest::keyClick(dialog.focusWidget(), key);
        });
    }

    static void checkBox(const QString& text)
    {
        const QPointer<QMessageBox> box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(box);
        QCOMPARE(box->text(), text);
        QTest::keyClick(box, Qt::Key_Return);
        QTRY_VERIFY(!box);
    }

    const ProjectFolder m_folder{DESIGN};
    std::unique_ptr<ReferenceEngine> m_engine;
};

ZEL_TEST_MAIN(TestEngineParameters)
#include "tst_engineparameters.moc"
