// SPDX-License-Identifier: MIT
#include "host/constraints/constraintexport.h"
#include "host/design/placementtable.h"
#include "tests/support/testmain.h"
#include "tests/tcl/editedproject.h"

#include <QTest>

using namespace zeltest;
using mirn::zelchip::constraintsOf;
using mirn::zelchip::exportConstraints;
using mirn::zelchip::placeFromTable;
using mirn::zelchip::TablePlacement;
using mirn::zelchip::templateNames;

namespace {

const QByteArray HardNames
    = "[{'name': 'a b;c', 'type': 'PLL', 'site': 'PLL_CORE'}, {'name': 'q\\'{x}`', 'type': 'EXTREF', 'site': 'REF_L'},"
      "{'name': 'ip', 'type': 'IP', 'rate': 5, 'children': ["
      "{'name': 'l,$[0]', 'type': 'DCUCHANNEL', 'site': 'U0_CH0'}]}]";

} // namespace

class TestConstraints : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    // A result that begins with ":" is an error, with its position in the template.
    void writesWhatTheTemplateSays_data()
    {
        const Rows<QByteArray, QString> row;
        row("Tcl", "@quoting tcl\n@resource\nset ${path} ${site}\n",
            "set {a b;c} PLL_CORE\nset q\\\"{x}` REF_L\nset {ip/l,$[0]} U0_CH0\n");
        row("CSV", "@quoting csv\n@resource\n${path},${id}\n", "\"a b;c\",50\n\"q\"\"{x}`\",40\n\"ip/l,$[0]\",11\n");
        row("JSON with a separator", "@separator ,\n@quoting json\n@resource\n${name}\n@head\n[\n@tail\n]\n",
            "[\n\"a b;c\",\n\"q\\\"{x}`\",\n\"l,$[0]\"\n]\n");
        row("an own quoting, a type and a dollar sign", "@types PLL\n@resource\n$$ ${resource|line}: ${type}\n",
            "$ top/a b;c: PLL\n");
        row("a kind and what only some have", "@kinds CHANNEL, PLL\n@resource\n<${parameter:frequency|line}>\n",
            "<100>\n<>\n");
        row("settings that changed", "@setting\n${site}.${key} = ${value}\n", "U0.CH0 = FAST\n");
        row("a setting of the resource's site", "@types DCUCHANNEL\n@resource\n${group} ${setting:CH0}\n", "U0 FAST\n");
        row("marks at the beginning of lines", "@# a comment\r\n@head\r\n@@ ${device|line}\n@tail\n@resource\n",
            ":5:1: the template writes nothing, expected a block @resource or @setting");
        row("nothing but blanks before", "\n@types PLL\n@resource\n@@x\n", "@x\n");
        row("a blank in plain", "@resource\n\n ${path}\n",
            ":3:2: the path \"a b;c\" of top/a b;c cannot be written with the quoting plain, expected a text that is "
            "not "
            "empty and has no blank, no control character and none of \" ' ` ; , = # \\ { }");
        row("a quote in quotes", "@types EXTREF\n@resource\n${path|quoted}\n",
            ":3:1: the path \"q\"{x}`\" of top/q\"{x}` cannot be written with the quoting quoted, expected a text "
            "without control characters, \" and \\");
        row("an unknown placeholder", "@head\n${path}\n",
            ":2:1: there is no placeholder \"path\" in this block, expected \"project\", \"design\" or \"device\"");
        row("a key too much", "@tail\n@@${design:x}\n",
            ":2:3: there is no placeholder \"design:x\" in this block, expected \"project\", \"design\" or \"device\"");
        row("an unknown key", "@resource\n${attribute:colour}\n", ":2:1: nothing has the attribute \"colour\"");
        row("an unknown quoting", "@resource\n${path|yaml}\n",
            ":2:1: there is no quoting \"yaml\", expected \"plain\", \"quoted\", \"line\", \"tcl\", \"csv\" or "
            "\"json\"");
        row("an unknown type", "@types PLL, BALL\n@resource\nx\n",
            ":1:13: there is no type of resources \"BALL\", expected \"IP\", \"DCUCHANNEL\", \"EXTREF\", \"PLL\" or "
            "\"UVCCIO\"");
        row("a placeholder without an end", "@resource\nx ${path\n", ":2:3: the placeholder does not end, expected }");
        row("a lonely dollar sign", "@resource\n5 $\n",
            ":2:3: a $ stands alone, expected $$ for a dollar sign or ${NAME}");
        row("text before the blocks", "x\n",
            ":1:1: the text belongs to no block, expected @head, @resource, @between, @setting or @tail before it");
        row("two of a kind", "@head\n@head\n", ":2:1: there is a second @head, expected one");
        row("a quoting that comes too late", "@head\nx\n@quoting tcl\n",
            ":3:1: @quoting is behind a block, expected it before all blocks");
        row("a block on the line of its name", "@head x\n",
            ":1:7: the block begins on the next line, expected nothing behind @head");
        row("other bytes", "@resource\n\xff\n", ":2:1: the line is not UTF-8");
    }

    void writesWhatTheTemplateSays()
    {
        const auto [content, expected] = row<QByteArray, QString>();
        EditedProject project({}, QByteArray(HardNames).replace('\'', '"'));
        project.run("zel_setting -id 10 -key CH0 -value FAST");
        const QString file = project.directory() + "/x.template";
        const QString output = project.directory() + "/out";
        writeFile(file, content);
        writeFile(output, "old");
        QString error;
        const auto written = constraintsOf(project.engine(), file, &error);
        QCOMPARE(written ? QString::fromUtf8(*written) : error.remove(file), expected);
        QCOMPARE(exportConstraints(project.engine(), file, output).isEmpty(), written.has_value());
        QCOMPARE(contentOf(output), written.value_or("old"));
    }

    // The columns of the table and the reasons follow the order of the lines, not that of the work.
    void placesFromATable_data()
    {
        const Rows<QByteArray, QString, QString> row;
        row("two that swap", "site,x,resource\nU0_CH1,,top/duo/a\n11,,duo/b\n", "2 0",
            "top/duo/a place U0_CH0>U0_CH1; top/duo/b place >U0_CH0");
        row("a reset, and what is there already", "resource,site\nduo/a,\nduo/ref,REF_L\ncore,\n", "1 2",
            "top/duo/a place U0_CH0>");
        row("a refused one keeps its site", "resource,site\n\"my ip/a[1]$x\",U0_CH0\nduo/a,PLL_CORE\n", "0 0",
            ":2: U0_CH0 is occupied by top/duo/a; :3: PLL_CORE (PLL) does not take resources of type DCUCHANNEL; ");
        row("what no line can have",
            "resource,site\nduo,U0\ncor,50\ncore,59\ncore,PLL_CORE\n{br}%2,PLL_CORE\nduo/ref,REF_R\n", "1 0",
            ":2: top/duo is placed by its parts, which have sites of their own; :3: there is no resource \"cor\"; :4: "
            "there is no site \"59\"; :6: PLL_CORE is occupied by top/core; :7: top/duo/ref is fixed on REF_L; "
            "top/core place >PLL_CORE");
        row("one resource twice", "resource,site\ncore,PLL_CORE\ncore,\n", "1 0",
            ":3: top/core is in line 2 already; top/core place >PLL_CORE");
        row("a column that is missing", "resource,place\ncore,50\n",
            ":1: there is no column \"site\"; expected the columns \"resource\" and \"site\"", "");
        row("a line that is cut off", "resource,site\ncore,50\nduo/a\n",
            ":3: the row has 1 values; expected 2 as in the header", "");
    }

    void placesFromATable()
    {
        const auto [table, counts, outcome] = row<QByteArray, QString, QString>();
        EditedProject project;
        const QStringList before = project.state();
        const QString file = project.directory() + "/t.csv";
        QVERIFY(QDir().mkpath(project.directory()));
        writeFile(file, table);
        const TablePlacement result = placeFromTable(project.editor(), file);
        QCOMPARE(result.error.isEmpty() ? QString("%1 %2").arg(result.placed).arg(result.reset)
                                        : QString(result.error).remove(file),
            counts);
        QStringList found = result.refused;
        found.replaceInStrings(file, "");
        QString text = found.isEmpty() ? QString() : found.join("; ") + "; ";
        QStringList moves;
        for (int index : project.engine().design().all()) {
            const auto& now = project.engine().design().resource(index);
            const auto& was = project.pristine().resource(index);
            const auto nameOf
                = [&](int site) { return site < 0 ? QString() : project.engine().device().site(site)->name; };
            if (now.site != was.site)
                moves.append(now.path + " place " + nameOf(was.site) + '>' + nameOf(now.site));
        }
        QCOMPARE(text + moves.join("; "), outcome);
        QCOMPARE(project.editor().undoStack().count(), moves.isEmpty() ? 0 : 1);
        QCOMPARE(project.reopen(), QString());
        if (!moves.isEmpty())
            QVERIFY(project.editor().undo().isEmpty());
        QCOMPARE(project.state(), before);
    }

    void whatWasExportedComesBack()
    {
        EditedProject project(ZEL_SAMPLE_FOLDER);
        const QStringList before = project.state();
        const QString file = project.directory() + "/placement.csv";
        QVERIFY(QDir().mkpath(project.directory()));
        QVERIFY(templateNames().contains("csv"));
        QCOMPARE(exportConstraints(project.engine(), "csv", file), QString());
        const auto lines = contentOf(file).count('\n') - 1;
        const QStringList all = TclInterpreter::words(project.run("zel_resource list")).value_or(QStringList());
        for (const QString& resource : all)
            project.run("zel_resource reset -ip {" + resource + "}");
        QVERIFY(project.state() != before);
        const TablePlacement result = placeFromTable(project.editor(), file);
        QCOMPARE(result.refused, QStringList());
        QCOMPARE(result.placed, static_cast<int>(lines));
        QCOMPARE(project.state(), before);
    }
};

ZEL_TEST_MAIN(TestConstraints)
#include "tst_constraints.moc"
