// SPDX-License-Identifier: MIT
#include "tests/engine/openengine.h"
#include "tests/engine/projectfolder.h"
#include "tests/support/rows.h"
#include "tests/support/testmain.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>

using mirn::zelengine::ReferenceEngine;

// What is wrong with project, device and design files, and where.
class TestEngineFiles : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void resolvesPaths();
    void opensABareDrawing();
    void namesMissingFiles();
    void pointsAtBrokenJson_data();
    void pointsAtBrokenJson();
    void refusesProjects_data();
    void refusesProjects();
    void refusesDevices_data();
    void refusesDevices();
    void refusesDesigns_data();
    void refusesDesigns();
    void acceptsAwkwardNames();
    void warnsOfUnknownKeys();
    void schemasNameTheSameKeys_data();
    void schemasNameTheSameKeys();
    void readsDeepDesigns();

private:
    // Of a project in which this file is another one; without the folder's path.
    static QString errorOf(const QString& fileName, const QByteArray& content);
};

QString TestEngineFiles::errorOf(const QString& fileName, const QByteArray& content)
{
    ProjectFolder folder;
    folder.write(fileName, content);
    QString error;
    QStringList warnings;
    return ReferenceEngine::open(folder.path(), &error, &warnings) ? QString() : folder.withoutPath(error);
}

void TestEngineFiles::resolvesPaths()
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
}

void TestEngineFiles::opensABareDrawing()
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

void TestEngineFiles::namesMissingFiles()
{
    QString error;
    QStringList warnings;
    QVERIFY(!ReferenceEngine::open("/nowhere", &error, &warnings));
    QCOMPARE(error, "/nowhere: there is no such folder");
    error = errorOf("project.json", "{\"name\": \"p\",\n \"device\": \"gone.json\"}");
    QVERIFY2(error.startsWith("project.json:2:12: \"gone.json\" cannot be read: No such file"), qPrintable(error));
}

void TestEngineFiles::pointsAtBrokenJson_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("error");
    QTest::newRow("an empty file") << QByteArray() << "1:1: not valid JSON: .+";
    QTest::newRow("a bracket of the wrong kind")
        << QByteArray("{\n \"resources\": [}\n") << "2:1[67]: not valid JSON: .+";
    QTest::newRow("a text without an end") << QByteArray("{\n\"name\": \"a") << "2:\\d+: not valid JSON: .+";
    QTest::newRow("nested too deep") << designWith(QByteArray(1100, '[') + QByteArray(1100, ']'))
                                     << "2:102[45]: nested deeper than the 1024 levels that can be read";
}

// The wording is the parser's, and by how much it points behind the mistake differs between versions of Qt.
void TestEngineFiles::pointsAtBrokenJson()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, error);
    const QRegularExpression expected(QRegularExpression::anchoredPattern("design\\.json:" + error));
    const QString actual = errorOf("design.json", content);
    QVERIFY2(expected.match(actual).hasMatch(), qPrintable(actual));
}

void TestEngineFiles::refusesProjects_data()
{
    zeltest::addRows({
        {"an array", "[]", "1:1: expected an object"},
        {"no device", R"({"name": "p"})", "1:1: \"device\" is missing, expected a text"},
        {"columns count characters", "{\"name\": \"\xC3\xA4\xC3\xB6\", \"device\": 7}", "1:26: expected a text"},
        {"the default implementation is none of them", R"({"name": "p", "device": "d",
"implementations": [{"name": "a"}, {"name": "b"}],
 "defaultImplementation": "c"})",
            "3:27: there is no implementation \"c\", expected \"a\" or \"b\""},
        {"two implementations of one name", R"({"name": "p", "device": "d", "implementations": [
{"name": "a"},
{"name": "a"}]})",
            "3:10: the implementation \"a\" is there twice"},
        {"a folder as device file", R"({"name": "p", "device": ".."})",
            "1:25: \"..\" cannot be read: it is a folder, expected a regular file"},
        {"a design without an end", R"({"name": "p", "device": "device.json", "design": "/dev/zero"})",
            "1:50: \"/dev/zero\" cannot be read: it is a device, expected a regular file"},
        {"a name as long as the file", R"({"name": "p", "device": "d*"})",
            "1:25: \"d*...\" cannot be read: File name too long"},
    });
}

// A star stands for as much as is told of a name, and for more.
void TestEngineFiles::refusesProjects()
{
    auto [content, error] = zeltest::currentRow<2>();
    content.replace('*', QString(299, 'd'));
    error.replace('*', QString(79, 'd'));
    QCOMPARE(errorOf("project.json", content.toUtf8()), "project.json:" + error);
}

void TestEngineFiles::refusesDevices_data()
{
    const char* const pad = R"({"name": "PAD"})";
    zeltest::addRows({
        {"an unknown kind of site", R"({"name": "PAD"}, {"name": "DCU"})", R"({"id": 1, "name": "a", "kind": "DCX"})",
            R"(5:32: unknown kind "DCX", expected one of "PAD" or "DCU")"},
        {"no kinds at all", "", R"({"id": 1, "name": "a", "kind": "PAD"})",
            R"(5:32: unknown kind "PAD", for the file has no "kinds")"},
        {"a kind without a name", "{}", "", R"(3:1: "name" is missing, expected a text)"},
        {"a kind that is there twice", R"({"name": "PAD"},{"name": "PAD"})", "",
            R"(3:26: the kind "PAD" is there twice)"},
        {"an unknown resource type", R"({"name": "A", "accepts": ["PLL", "PL"]})", "",
            R"(3:34: unknown resource type "PL", expected "IP", "DCUCHANNEL", "EXTREF", "PLL" or "UVCCIO")"},
        {"a colour that is none", R"({"name": "A", "occupiedFill": "red"})", "",
            R"(3:31: expected a colour as "#rrggbb")"},
        {"a site without an id", pad, R"({"name": "a", "kind": "PAD"})",
            R"(5:1: "id" is missing, expected a whole number)"},
        {"a negative id", pad, R"({"name": "a", "kind": "PAD", "id": -1})",
            "5:36: expected a whole number from 0 to 2147483647"},
        {"an id that is not whole", pad, R"({"id": 1.5})", "5:8: expected a whole number from 0 to 2147483647"},
        {"an id that is too large", pad, R"({"id": 2147483648})", "5:8: expected a whole number from 0 to 2147483647"},
        {"two sites with one id", pad,
            R"({"id": 1, "name": "a", "kind": "PAD"}, {"id": 1, "name": "b", "kind": "PAD"})",
            "5:47: another site has this id"},
        {"two sites with one name", pad,
            R"({"id": 1, "name": "a", "kind": "PAD"}, {"id": 2, "name": "a", "kind": "PAD"})",
            "5:58: another site has this name"},
        {"a name beyond 8 bits", pad, "{\"id\": 1, \"name\": \"a\xE2\x82\xAC\", \"kind\": \"PAD\"}",
            "5:19: the name holds \"\xE2\x82\xAC\", which is not in ISO 8859-1"},
        {"a group that nobody belongs to", pad, R"({"id": 1, "name": "a", "kind": "PAD", "reaches": ["x"]})",
            R"(5:51: no site belongs to a group "x")"},
        {"a setting in force that is no choice", pad,
            R"({"id": 1, "name": "a", "kind": "PAD", "settings": {"K": {"value": "a", "choices": ["b"]}}})",
            R"(5:67: "a" is not among the choices "b")"},
        {"out of use by a setting that the group has not", pad,
            R"({"id": 1, "name": "a", "kind": "PAD", "disabledBy": {"K": ["x"]}})", "5:60: element 1 has no settings"},
        {"out of use by a value that nobody offers", pad,
            R"({"id": 1, "name": "a", "settings": {"K": {"choices": ["b"]}}, "kind": "PAD",
"disabledBy": {"K": ["b", "x"]}})",
            R"(6:27: K cannot be "x", expected "b")"},
        {"attributes that are no object", pad, R"({"id": 1, "name": "a", "attributes": [1]})",
            "5:38: expected an object"},
    });
}

void TestEngineFiles::refusesDevices()
{
    const auto [kinds, sites, error] = zeltest::currentRow<3>();
    const QString content
        = "{\"name\": \"d\", \"drawing\": \"d.svg\",\n\"kinds\": [\n" + kinds + "],\n\"sites\": [\n" + sites + "]}";
    QCOMPARE(errorOf("device.json", content.toUtf8()), "device.json:" + error);
}

void TestEngineFiles::refusesDesigns_data()
{
    zeltest::addRows({
        {"an unknown type", R"([{"name": "a", "type": "PAL"}])",
            R"(2:24: unknown type "PAL", expected "IP", "DCUCHANNEL", "EXTREF", "PLL" or "UVCCIO")"},
        {"a name that is there twice", "[{\"name\": \"a\"},\n {\"name\": \"a\"}]",
            R"(3:11: the name "a" is there twice at this level)"},
        {"an open brace", R"([{"name": "a{b"}])", "2:11: the braces in the name do not pair up"},
        {"a closing brace first", R"([{"name": "}{"}])", "2:11: the braces in the name do not pair up"},
        {"a brace that pairs only with an escaped one", "[{\"name\": \"{\\\\}\"}]",
            "2:11: the braces in the name do not pair up"},
        {"a backslash at the end", "[{\"name\": \"a\\\\\"}]", "2:11: the name ends in a backslash"},
        {"a newline", "[{\"name\": \"a\\nb\"}]", "2:11: the name holds a control character"},
        {"a slash", R"([{"name": "a/b"}])", R"(2:11: the name holds "/", which separates names)"},
        {"behind a text with quotes and brackets", "[{\"name\": \"a\\\"],\"},\n {\"name\": \"a/b\"}]",
            R"(3:11: the name holds "/", which separates names)"},
        {"a name beyond 16 bits", "[{\"name\": \"a\\ud83d\\ude00\"}]",
            "2:11: the name holds \"\xF0\x9F\x98\x80\", which is not in ISO 8859-1"},
        {"an empty name", R"([{"name": ""}])", R"(2:11: "name" must not be empty)"},
        {"a site that is not there", R"([{"name": "a", "type": "PLL", "site": "X"}])",
            R"(2:39: the device "Small" has no site "X")"},
        {"an IP with a site", R"([{"name": "a", "type": "IP", "site": "U0"}])",
            R"(2:38: only the parts of "a" have sites)"},
        {"a PLL with children", R"([{"name": "a", "type": "PLL", "children": []}])",
            "2:43: a resource of type PLL has no children"},
        {"a channel that feeds", R"([{"name": "a", "type": "DCUCHANNEL", "feeds": []}])",
            "2:47: only a resource of type PLL or EXTREF feeds others"},
        {"a clock that feeds what is no IP", R"([{"name": "a", "type": "PLL", "feeds": ["a"]}])",
            R"(2:41: there is no IP "a")"},
        {"a frequency beyond the bounds", R"([{"name": "a", "type": "PLL", "frequency": 1e3}])",
            "2:44: expected a number from 5 to 800"},
        {"a frequency that is a text", R"([{"name": "a", "type": "PLL", "frequency": "100"}])",
            "2:44: expected a number"},
        {"a rate that there is not", R"([{"name": "a", "type": "IP", "rate": 4}])",
            "2:38: expected 1.25, 2.5, 3.125, 5 or 6.25"},
        {"a rate of a clock", R"([{"name": "a", "type": "PLL", "rate": 5}])",
            "2:39: a resource of type PLL has no rate"},
        {"a rate of a group", R"([{"name": "a", "rate": 5}])", "2:24: what only groups others has no rate"},
        {"fixed nowhere", R"([{"name": "a", "type": "PLL", "fixed": true}])", R"(2:40: what is fixed needs a "site")"},
        {"two on one site",
            R"([{"name": "a", "type": "PLL", "site": "PLL_CORE"},
 {"name": "b", "type": "PLL", "site": "PLL_CORE"}])",
            "3:39: PLL_CORE is occupied by top/a"},
        {"a placement against the rules", R"([{"name": "a", "type": "PLL", "site": "REF_L"}])",
            "2:39: REF_L (Reference) does not take resources of type PLL"},
        {"a voltage of a PLL", R"([{"name": "a", "type": "PLL", "voltage": "3.3 V"}])",
            "2:42: only a resource of type UVCCIO has a voltage"},
    });
}

void TestEngineFiles::refusesDesigns()
{
    const auto [resources, error] = zeltest::currentRow<2>();
    QCOMPARE(errorOf("design.json", designWith(resources.toUtf8())), "design.json:" + error);
}

void TestEngineFiles::acceptsAwkwardNames()
{
    const ProjectFolder folder(R"([{"name": "my ip [3] $x"}, {"name": "a{b{}}c"}, {"name": "a\\{b"}, {"name": "a\\\\"},
        {"name": "\u00e4"}])");
    const auto engine = openEngine(folder.path());
    for (const QString name : {"my ip [3] $x", "a{b{}}c", "a\\{b", "a\\\\", "\xC3\xA4"})
        QVERIFY2(engine->design().find("top/" + name) >= 0, qPrintable(name));
}

void TestEngineFiles::warnsOfUnknownKeys()
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
        QStringLiteral(
            "design.json:3:15: unknown key \"colour\" is ignored, known are \"name\", \"type\", \"children\", "
            "\"site\", \"fixed\", \"feeds\", \"voltage\", \"frequency\" or \"rate\""));
}

void TestEngineFiles::schemasNameTheSameKeys_data()
{
    // With the path to the object's description in the schema.
    zeltest::addRows({
        {"project", "project", R"({"?": 0})"},
        {"implementation", "project", R"({"implementations": [{"?": 0}]})", "properties implementations items"},
        {"device", "device", R"({"?": 0})"},
        {"kind", "device", R"({"name": "d", "drawing": "d", "kinds": [{"?": 0}]})", "properties kinds items"},
        {"site", "device", R"({"name": "d", "drawing": "d", "sites": [{"?": 0}]})", "properties sites items"},
        {"setting", "device",
            R"({"name": "d", "drawing": "d", "sites": [{"id": 1, "name": "a", "settings": {"K": {"?": 0}}}]})",
            "properties sites items properties settings additionalProperties"},
        {"design", "design", R"({"?": 0})"},
        {"resource", "design", R"({"resources": [{"?": 0}]})", "$defs resource"},
    });
}

// The reader lists the keys it knows when it meets one that it does not.
void TestEngineFiles::schemasNameTheSameKeys()
{
    const auto [file, content, schemaPath] = zeltest::currentRow<3>();
    ProjectFolder folder;
    folder.write(file + ".json", content.toUtf8());
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
void TestEngineFiles::readsDeepDesigns()
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

ZEL_TEST_MAIN(TestEngineFiles)
#include "tst_enginefiles.moc"
