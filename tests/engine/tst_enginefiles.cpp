// SPDX-License-Identifier: MIT
#include "tests/engine/openengine.h"
#include "tests/engine/projectfolder.h"
#include "tests/support/testmain.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>

using mirn::zelengine::ReferenceEngine;

// The engine says what is wrong with project, device and design files, and where.
class TestEngineFiles : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void resolvesPaths()
    {
        const ProjectFolder folder;
        const auto engine = openEngine(folder.path() + "/.");
        const auto& project = engine->project();
        QCOMPARE(project.name + ' ' + project.flow + ' ' + project.defaultImplementation, "Test Floorplanning two");
        QCOMPARE(project.directory, QDir(folder.path()).absolutePath());
        QCOMPARE(project.implementation("one")->directory, folder.path() + "/one");
        QCOMPARE(project.implementation("two")->directory, folder.path() + "/deux");
        QVERIFY(!project.implementation("three"));
        // The folder's name holds blanks and letters that are no ASCII: file names cross as bytes.
        const QByteArray drawing = QFile::encodeName(folder.path() + "/small.svg");
        QCOMPARE(QByteArray::fromStdString(engine->chip()->drawingFile()), drawing);
        QVERIFY(!engine->chip()->filterFile().empty());
        QString error;
        QStringList warnings;
        QVERIFY(!ReferenceEngine::open("/nowhere", &error, &warnings));
        QCOMPARE(error, "/nowhere: there is no such folder");
    }

    void opensABareDrawing()
    {
        const auto engine = ReferenceEngine::forDrawing("some dir/chip.x.svg");
        QCOMPARE(engine->chip()->drawingFile(), QDir::current().absoluteFilePath("some dir/chip.x.svg").toStdString());
        QCOMPARE(engine->chip()->filterFile(), std::string());
        QVERIFY(engine->chip()->records().empty());
        QCOMPARE(engine->project().name, "chip.x");
        QVERIFY(engine->tree()->children->empty());
        QVERIFY(engine->getResources().empty());
        const std::string name = "5";
        QCOMPARE(engine->getResourceType(&name), -1);
        QVERIFY(!engine->hasDynamicDialog(&name));
        QVERIFY(!engine->canDrop(&name, &name));
    }

    void pointsAtBrokenJson_data()
    {
        const Rows<QByteArray, QString> row;
        row("an empty file", "", "1:1: not valid JSON: .+");
        row("a bracket of the wrong kind", "{\n \"resources\": [}\n", "2:1[67]: not valid JSON: .+");
        row("a text without an end", "{\n\"name\": \"a", "2:\\d+: not valid JSON: .+");
        row("nested too deep", designWith(QByteArray(1100, '[') + QByteArray(1100, ']')),
            "2:102[45]: nested deeper than the 1024 levels that can be read");
    }

    // The wording is the parser's, and by how much it points behind the mistake differs between versions of Qt.
    void pointsAtBrokenJson()
    {
        const auto [content, error] = row<QByteArray, QString>();
        const QRegularExpression expected("^design\\.json:" + error + '$');
        const QString actual = errorOf("design.json", content);
        QVERIFY2(expected.match(actual).hasMatch(), qPrintable(actual));
    }

    void refuses_data()
    {
        // Content and error have ' for each ".
        const Rows<QString, QByteArray, QString> row;
        const auto project = [&row](const char* name, const QByteArray& content, const QString& error) {
            row(name, "project.json", content, error);
        };
        project("an array", "[]", "1:1: expected an object");
        project("no device", "{'name': 'p'}", "1:1: 'device' is missing, expected a text");
        project("columns count characters", "{'name': '\xC3\xA4\xC3\xB6', 'device': 7}", "1:26: expected a text");
        project("the default implementation is none of them",
            "{'name': 'p', 'device': 'd',\n'implementations': [{'name': 'a'}, {'name': 'b'}],\n "
            "'defaultImplementation': 'c'}",
            "3:27: there is no implementation 'c', expected 'a' or 'b'");
        project("two implementations of one name",
            "{'name': 'p', 'device': 'd', 'implementations': [\n{'name': 'a'},\n{'name': 'a'}]}",
            "3:10: the implementation 'a' is there twice");
        project("a device file that is missing", "{'name': 'p',\n 'device': 'gone.json'}",
            "2:12: 'gone.json' cannot be read: No such file or directory");
        project("a folder as device file", "{'name': 'p', 'device': '..'}",
            "1:25: '..' cannot be read: it is a folder, expected a regular file");
        project("a design without an end", "{'name': 'p', 'device': 'device.json', 'design': '/dev/zero'}",
            "1:50: '/dev/zero' cannot be read: it is a device, expected a regular file");
        project("a name as long as the file", "{'name': 'p', 'device': '" + QByteArray(300, 'd') + "'}",
            "1:25: '" + QString(80, 'd') + "...' cannot be read: File name too long");

        const char* const pad = "{'name': 'PAD'}";
        const auto device = [&row](auto name, const QByteArray& kinds, const QByteArray& sites, const char* error) {
            const QByteArray begin = "{'name': 'd', 'drawing': 'd.svg',\n'kinds': [\n";
            row(name, "device.json", begin + kinds + "],\n'sites': [\n" + sites + "]}", error);
        };
        device("an unknown kind of site", "{'name': 'PAD'}, {'name': 'DCU'}", "{'id': 1, 'name': 'a', 'kind': 'DCX'}",
            "5:32: unknown kind 'DCX', expected one of 'PAD' or 'DCU'");
        device("no kinds at all", "", "{'id': 1, 'name': 'a', 'kind': 'PAD'}",
            "5:32: unknown kind 'PAD', for the file has no 'kinds'");
        device("a kind without a name", "{}", "", "3:1: 'name' is missing, expected a text");
        device("a kind twice", "{'name': 'PAD'},{'name': 'PAD'}", "", "3:26: the kind 'PAD' is there twice");
        device("an unknown resource type", "{'name': 'A', 'accepts': ['PLL', 'PL']}", "",
            "3:34: unknown resource type 'PL', expected 'IP', 'DCUCHANNEL', 'EXTREF', 'PLL' or 'UVCCIO'");
        device("no colour", "{'name': 'A', 'occupiedFill': 'red'}", "", "3:31: expected a colour as '#rrggbb'");
        device("no id", pad, "{'name': 'a', 'kind': 'PAD'}", "5:1: 'id' is missing, expected a whole number");
        device("a negative id", pad, "{'name': 'a', 'kind': 'PAD', 'id': -1}",
            "5:36: expected a whole number from 0 to 2147483647");
        device("an id that is not whole", pad, "{'id': 1.5}", "5:8: expected a whole number from 0 to 2147483647");
        device("an id too large", pad, "{'id': 2147483648}", "5:8: expected a whole number from 0 to 2147483647");
        device("two sites with one id", pad,
            "{'id': 1, 'name': 'a', 'kind': 'PAD'}, {'id': 1, 'name': 'b', 'kind': 'PAD'}",
            "5:47: another site has this id");
        device("two sites with one name", pad,
            "{'id': 1, 'name': 'a', 'kind': 'PAD'}, {'id': 2, 'name': 'a', 'kind': 'PAD'}",
            "5:58: another site has this name");
        device("a name beyond 8 bits", pad, "{'id': 1, 'name': 'a\xE2\x82\xAC', 'kind': 'PAD'}",
            "5:19: the name holds '\xE2\x82\xAC', which is not in ISO 8859-1");
        device("a group that nobody belongs to", pad, "{'id': 1, 'name': 'a', 'kind': 'PAD', 'reaches': ['x']}",
            "5:51: no site belongs to a group 'x'");
        device("a setting in force that is no choice", pad,
            "{'id': 1, 'name': 'a', 'kind': 'PAD', 'settings': {'K': {'value': 'a', 'choices': ['b']}}}",
            "5:67: 'a' is not among the choices 'b'");
        device("out of use by a setting that the group has not", pad,
            "{'id': 1, 'name': 'a', 'kind': 'PAD', 'disabledBy': {'K': ['x']}}", "5:60: element 1 has no settings");
        device("out of use by a value that nobody offers", pad,
            "{'id': 1, 'name': 'a', 'settings': {'K': {'choices': ['b']}}, 'kind': 'PAD',\n'disabledBy': {'K': ['b', "
            "'x']}}",
            "6:27: K cannot be 'x', expected 'b'");
        device("attributes in an array", pad, "{'id': 1, 'name': 'a', 'attributes': [1]}", "5:38: expected an object");

        const auto design = [&row](const char* name, const QByteArray& resources, const char* error) {
            row(name, "design.json", designWith(resources), error);
        };
        const auto resource = [&design](const char* name, const QByteArray& fields, const char* error) {
            design(name, "[{'name': 'a', " + fields + "}]", error);
        };
        resource("an unknown type", "'type': 'PAL'",
            "2:24: unknown type 'PAL', expected 'IP', 'DCUCHANNEL', 'EXTREF', 'PLL' or 'UVCCIO'");
        design("a name twice", "[{'name': 'a'},\n {'name': 'a'}]", "3:11: the name 'a' is there twice at this level");
        design("an open brace", "[{'name': 'a{b'}]", "2:11: the braces in the name do not pair up");
        design("a closing brace first", "[{'name': '}{'}]", "2:11: the braces in the name do not pair up");
        design("an escaped brace that closes", "[{'name': '{\\\\}'}]", "2:11: the braces in the name do not pair up");
        design("a backslash at the end", "[{'name': 'a\\\\'}]", "2:11: the name ends in a backslash");
        design("a newline", "[{'name': 'a\\nb'}]", "2:11: the name holds a control character");
        design("a slash", "[{'name': 'a/b'}]", "2:11: the name holds '/', which separates names");
        design("behind a text with quotes and brackets", "[{'name': 'a\\'],'},\n {'name': 'a/b'}]",
            "3:11: the name holds '/', which separates names");
        design("a name beyond 16 bits", "[{'name': 'a\\ud83d\\ude00'}]",
            "2:11: the name holds '\xF0\x9F\x98\x80', which is not in ISO 8859-1");
        design("an empty name", "[{'name': ''}]", "2:11: 'name' must not be empty");
        resource("a site that is not there", "'type': 'PLL', 'site': 'X'", "2:39: the device 'Small' has no site 'X'");
        resource("an IP with a site", "'type': 'IP', 'site': 'U0'", "2:38: only the parts of 'a' have sites");
        resource("a PLL with parts", "'type': 'PLL', 'children': []", "2:43: a resource of type PLL has no children");
        resource("a channel that feeds", "'type': 'DCUCHANNEL', 'feeds': []",
            "2:47: only a resource of type PLL or EXTREF feeds others");
        resource("a clock that feeds what is no IP", "'type': 'PLL', 'feeds': ['a']", "2:41: there is no IP 'a'");
        resource("a frequency too high", "'type': 'PLL', 'frequency': 1e3", "2:44: expected a number from 5 to 800");
        resource("a frequency that is a text", "'type': 'PLL', 'frequency': '100'", "2:44: expected a number");
        resource("a rate that there is not", "'type': 'IP', 'rate': 4", "2:38: expected 1.25, 2.5, 3.125, 5 or 6.25");
        resource("a rate of a clock", "'type': 'PLL', 'rate': 5", "2:39: a resource of type PLL has no rate");
        resource("a rate of a group", "'rate': 5", "2:24: what only groups others has no rate");
        resource("fixed nowhere", "'type': 'PLL', 'fixed': true", "2:40: what is fixed needs a 'site'");
        design("two on one site",
            "[{'name': 'a', 'type': 'PLL', 'site': 'PLL_CORE'},\n {'name': 'b', 'type': 'PLL', 'site': 'PLL_CORE'}]",
            "3:39: PLL_CORE is occupied by top/a");
        resource("a placement against the rules", "'type': 'PLL', 'site': 'REF_L'",
            "2:39: REF_L (Reference) does not take resources of type PLL");
        resource("a voltage of a PLL", "'type': 'PLL', 'voltage': '3.3 V'",
            "2:42: only a resource of type UVCCIO has a voltage");
    }

    void refuses()
    {
        auto [file, content, error] = row<QString, QByteArray, QString>();
        QCOMPARE(errorOf(file, content.replace('\'', '"')), file + ':' + error.replace('\'', '"'));
    }

    void acceptsAwkwardNames()
    {
        const ProjectFolder folder(QByteArray("[{'name': 'my ip [3] $x'}, {'name': 'a{b{}}c'}, {'name': 'a\\\\{b'}, "
                                              "{'name': 'a\\\\\\\\'}, {'name': '\\u00e4'}]")
                                       .replace('\'', '"'));
        const auto engine = openEngine(folder.path());
        for (const QString name : {"my ip [3] $x", "a{b{}}c", "a\\{b", "a\\\\", "\xC3\xA4"})
            QVERIFY2(engine->design().find("top/" + name) >= 0, qPrintable(name));
    }

    void warnsOfUnknownKeys()
    {
        QByteArray resources = "[";
        for (int i = 0; i < 100; ++i)
            resources += (i ? ",\n{\"name\": \"" : "{\"name\": \"") + QByteArray::number(i) + "\", \"colour\": 1}";
        const ProjectFolder folder(resources + ']');
        QString error;
        QStringList warnings;
        QVERIFY(ReferenceEngine::open(folder.path(), &error, &warnings));
        QCOMPARE(warnings.size(), 20); // more than that nobody reads
        QCOMPARE(folder.withoutPath(warnings.at(1)),
            QString("design.json:3:15: unknown key 'colour' is ignored, known are 'name', 'type', 'children', 'site', "
                    "'fixed', 'feeds', 'voltage', 'frequency' or 'rate'")
                .replace('\'', '"'));
    }

    void warnsOfSitesNamedLikeNumbers()
    {
        for (const auto& [name, warning] : {std::pair("-07", true), std::pair("4711", true), std::pair("7a", false)}) {
            ProjectFolder folder;
            folder.write("device.json", smallDevice().replace("\"P1\"", QByteArray("\"") + name + '"'));
            QString error;
            QStringList warnings;
            QVERIFY(ReferenceEngine::open(folder.path(), &error, &warnings));
            QCOMPARE(warnings.size(), warning ? 1 : 0);
            QVERIFY(!warning || folder.withoutPath(warnings.first()).startsWith("device.json:44:24: commands take \""));
        }
    }

    void schemasNameTheSameKeys_data()
    {
        // The content has ' for each ". The last text is the path to the object's description in the schema.
        const Rows<QString, QString, QString> row;
        row("project", "project", "{'?': 0}", "");
        row("implementation", "project", "{'implementations': [{'?': 0}]}", "properties implementations items");
        row("device", "device", "{'?': 0}", "");
        row("kind", "device", "{'name': 'd', 'drawing': 'd', 'kinds': [{'?': 0}]}", "properties kinds items");
        row("site", "device", "{'name': 'd', 'drawing': 'd', 'sites': [{'?': 0}]}", "properties sites items");
        row("setting", "device",
            "{'name': 'd', 'drawing': 'd', 'sites': [{'id': 1, 'name': 'a', 'settings': {'K': {'?': 0}}}]}",
            "properties sites items properties settings additionalProperties");
        row("design", "design", "{'?': 0}", "");
        row("resource", "design", "{'resources': [{'?': 0}]}", "$defs resource");
    }

    // The reader lists the keys it knows when it meets one that it does not.
    void schemasNameTheSameKeys()
    {
        const auto [file, content, schemaPath] = row<QString, QString, QString>();
        ProjectFolder folder;
        folder.write(file + ".json", content.toUtf8().replace('\'', '"'));
        QString error;
        QStringList warnings;
        (void)ReferenceEngine::open(folder.path(), &error, &warnings);
        QCOMPARE(warnings.size(), 1);
        QSet<QString> known;
        auto match = QRegularExpression("\"([^\"]+)\"").globalMatch(warnings.first());
        for (match.next(); match.hasNext();) // the first is the unknown key
            known.insert(match.next().captured(1));

        QFile schemaFile(QStringLiteral(ZEL_SCHEMA_FOLDER "/") + file + ".schema.json");
        QVERIFY(schemaFile.open(QIODevice::ReadOnly));
        QJsonValue schema = QJsonDocument::fromJson(schemaFile.readAll()).object();
        for (const QString& step : schemaPath.split(' ', Qt::SkipEmptyParts))
            schema = schema.toObject().value(step);
        const QStringList described = schema.toObject().value("properties").toObject().keys();
        QCOMPARE(known, QSet<QString>(described.begin(), described.end()));
    }

    // Every level takes two of the parser's.
    void readsDeepDesigns()
    {
        constexpr int LEVELS = 500;
        QByteArray resources = "[]";
        for (int level = 0; level < LEVELS; ++level)
            resources = "[{\"name\": \"n\", \"children\": " + resources + "}]";
        const ProjectFolder folder(resources);
        const auto engine = openEngine(folder.path());
        int depth = 0;
        for (const zeltreeviewcell* cell = engine->tree(); !cell->children->empty(); cell = cell->children->front())
            ++depth;
        QCOMPARE(depth, LEVELS);
    }

private:
    // The error of a project in which this file is another one, without the folder's path.
    static QString errorOf(const QString& fileName, const QByteArray& content)
    {
        ProjectFolder folder;
        folder.write(fileName, content);
        QString error;
        QStringList warnings;
        return ReferenceEngine::open(folder.path(), &error, &warnings) ? QString() : folder.withoutPath(error);
    }
};

ZEL_TEST_MAIN(TestEngineFiles)
#include "tst_enginefiles.moc"
