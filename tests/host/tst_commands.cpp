// SPDX-License-Identifier: MIT
#include "host/tcl/commandhelp.h"
#include "host/tcl/commandtable.h"
#include "tests/host/shownwindow.h"
#include "tests/program/sampleproject.h"
#include "tests/support/testmain.h"

#include <QAction>
#include <QDir>
#include <QRegularExpression>
#include <QTextBrowser>

using namespace mirn::zelchip;

// The table of commands holds what it says, and docs/commands.md is its text.
class TestCommands : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void examplesAnswer()
    {
        const SampleProject sample;
        ShownWindow shown;
        shown.show(sample.path(), {1200, 800});
        QStringList written;
        connect(shown.window.get(), &MainWindow::scriptWrote, this, [&](const QString& text) { written.append(text); });
        QByteArray script = "cd [file dirname [info script]]\n";
        for (const CommandEntry& entry : commandTable())
            script += "puts [list [catch {" + QByteArray(entry.example) + "} answer] $answer]\n";
        const QString before = QDir::currentPath();
        QString error;
        const bool isOk = shown.window->runScript(sample.write("examples.tcl", script), &error);
        QDir::setCurrent(before);
        QVERIFY2(isOk, qPrintable(error));
        QVERIFY(QFile::exists(sample.file("floorplan.png")));
        written = written.filter(QRegularExpression("^[01] ")); // without what help wrote
        QCOMPARE(written.size(), static_cast<int>(commandTable().size()));
        for (const CommandEntry& entry : commandTable()) {
            const QStringList outcome = TclInterpreter::words(written.takeFirst()).value_or(QStringList());
            QVERIFY2(outcome.value(0) == "0", qPrintable(QString(entry.example) + ": " + outcome.value(1)));
            if (*entry.answer)
                QCOMPARE(outcome.value(1), entry.answer);
        }
    }

    void menuShowsThem()
    {
        const SampleProject sample;
        ShownWindow shown;
        shown.show(sample.path());
        for (QAction* action : shown.window->findChildren<QAction*>()) {
            if (action->text() == "&Commands")
                action->trigger();
        }
        const auto* text = shown.window->findChild<QTextBrowser*>();
        QVERIFY(text && text->isVisible());
        for (const CommandEntry& entry : commandTable())
            QVERIFY2(text->toPlainText().contains(entry.usage()), entry.example);
    }

    // What is out of date can be replaced by the text that this writes.
    void documentIsTheTable()
    {
        const QString text = commandReference();
        zeltest::writeFile("commands.md", text.toUtf8());
        QVERIFY2(zeltest::contentOf(ZEL_COMMANDS_DOCUMENT) == text,
            qPrintable("docs/commands.md is not " + QDir::current().filePath("commands.md")));
    }
};

ZEL_TEST_MAIN(TestCommands)
#include "tst_commands.moc"
