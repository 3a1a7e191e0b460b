// SPDX-License-Identifier: MIT
#include "engine/referenceengine.h"
#include "tests/engine/projectfolder.h"
#include "tests/support/testmain.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

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
    void acceptsAwkwardNames_data();
    void acceptsAwkwardNames();
    void warnsOfUnknownKeys();
    void schemasNameTheSameKeys_data();
    void schemasNameTheSameKeys();
    void readsDeepDesigns();

private:
    static void refuse(const QString& fileName, const QByteArray& content, const QString& expected);
};

void TestEngineFiles::refuse(const QString& fileName, const QByteArray& content, const QString& expected)
{
    ProjectFolder folder;
    folder.write(fileName, content);
    QString error;
    QStringList warnings;
    QVERIFY(!ReferenceEngine::open(folder.path(), &error, &warnings));
    QCOMPARE(folder.withoutPath(error), expected);
}

void TestEngineFiles::resolvesPaths()
{
    ProjectFolder folder;
    QString error;
    QStringList warnings;
    const auto engine = ReferenceEngine::open(folder.path() + QStringLiteral("/."), &error, &warnings);
    QVERIFY2(engine, qPrintable(error));
    QCOMPARE(warnings, QStringList());
    const auto& project = engine->project();
    QCOMPARE(project.name, QStringLiteral("Test"));
    QCOMPARE(project.flow, QStringLiteral("Floorplanning"));
    QCOMPARE(project.directory, QDir(folder.path()).absolutePath());
    QCOMPARE(project.defaultImplementation, QStringLiteral("two"));
    QCOMPARE(project.implementation(QStringLiteral("one"))->directory, folder.path() + QStringLiteral("/one"));
    QCOMPARE(project.implementation(QStringLiteral("two"))->directory, folder.path() + QStringLiteral("/deux"));
    QVERIFY(!project.implementation(QStringLiteral("three")));
    // The folder's name holds blanks and letters that are no ASCII: file names cross as bytes.
    const QByteArray drawing = QFile::encodeName(folder.path() + QStringLiteral("/small.svg"));
    QCOMPARE(QByteArray::fromStdString(engine->chip()->drawingFile()), drawing);
    QVERIFY(!engine->chip()->filterFile().empty());
}

void TestEngineFiles::opensABareDrawing()
{
    const auto engine = ReferenceEngine::forDrawing(QStringLiteral("some dir/chip.x.svg"));
    QCOMPARE(engine->chip()->drawingFile(), QDir::current().absoluteFilePath("some dir/chip.x.svg").toStdString());
    QCOMPARE(engine->chip()->filterFile(), std::string());
    QVERIFY(engine->chip()->records().empty());
    QCOMPARE(engine->project().name, QStringLiteral("chip.x"));
    QVERIFY(engine->tree()->children->empty());
    QVERIFY(engine->getResources().empty());
    const std::string name = "5";
    QCOMPARE(engine->getResourceType(&name), -1);
    QVERIFY(!engine->hasDynamicDialog(&name));
    QVERIFY(!engine->canDrop(&name, &name));
}

void TestEngineFiles::namesMissingFiles()
{
    ProjectFolder folder;
    QString error;
    QStringList warnings;
    QVERIFY(!ReferenceEngine::open(folder.path() + QStringLiteral("/nowhere"), &error, &warnings));
    QVERIFY2(error.endsWith(QStringLiteral("nowhere: there is no such folder")), qPrintable(error));
    QFile::remove(folder.path() + QStringLiteral("/device.json"));
    QVERIFY(!ReferenceEngine::open(folder.path(), &error, &warnings));
    QVERIFY2(folder.withoutPath(error).startsWith(
                 QStringLiteral("project.json:4:13: \"device.json\" cannot be read: No such file")),
        qPrintable(error));
}

void TestEngineFiles::pointsAtBrokenJson_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("error");
    QTest::newRow("an empty file") << QByteArray() << "design\\.json:1:1: not valid JSON: .+";
    QTest::newRow("a bracket of the wrong kind")
        << QByteArray("{\n \"resources\": [}\n") << "design\\.json:2:1[67]: not valid JSON: .+";
    QTest::newRow("a text without an end")
        << QByteArray("{\n\"name\": \"a") << "design\\.json:2:\\d+: not valid JSON: .+";
    QTest::newRow("nested too deep") << designWith(QByteArray(1100, '[') + QByteArray(1100, ']'))
                                     << "design\\.json:2:102[45]: nested deeper than the 1024 levels that can be read";
}

// The wording is the parser's, and by how much it points behind the mistake differs between versions of Qt.
void TestEngineFiles::pointsAtBrokenJson()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, error);
    ProjectFolder folder;
    folder.write(QStringLiteral("design.json"), content);
    QString actual;
    QStringList warnings;
    QVERIFY(!ReferenceEngine::open(folder.path(), &actual, &warnings));
    const QRegularExpression expected(QRegularExpression::anchoredPattern(error));
    QVERIFY2(expected.match(folder.withoutPath(actual)).hasMatch(), qPrintable(actual));
}

void TestEngineFiles::refusesProjects_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("error");
    QTest::newRow("an array") << QByteArray("[]") << "project.json:1:1: expected an object";
    QTest::newRow("no device") << QByteArray("{\"name\": \"p\"}")
                               << "project.json:1:1: \"device\" is missing, expected a text";
    QTest::newRow("columns count characters")
        << QByteArray("{\"name\": \"\xC3\xA4\xC3\xB6\", \"device\": 7}") << "project.json:1:26: expected a text";
    QTest::newRow("the default implementation is none of them")
        << QByteArray("{\"name\": \"p\", \"device\": \"d\",\n \"implementations\": [{\"name\": \"a\"}, {\"name\": "
                      "\"b\"}],\n \"defaultImplementation\": \"c\"}")
        << "project.json:3:27: there is no implementation \"c\", expected \"a\" or \"b\"";
    QTest::newRow("two implementations of one name") << QByteArray(
        "{\"name\": \"p\", \"device\": \"d\", \"implementations\": [\n{\"name\": \"a\"},\n{\"name\": \"a\"}]}")
                                                     << "project.json:3:10: the implementation \"a\" is there twice";
    QTest::newRow("a folder as device file") << QByteArray("{\"name\": \"p\",\n \"device\": \"..\"}")
                                             << "project.json:2:12: \"..\" cannot be read: it is a folder, expected a "
                                                "regular file";
    QTest::newRow("a design without an end")
        << QByteArray("{\"name\": \"p\", \"device\": \"device.json\",\n \"design\": \"/dev/zero\"}")
        << "project.json:2:12: \"/dev/zero\" cannot be read: it is a device, expected a regular file";
    QTest::newRow("a name as long as the file")
        << "{\"name\": \"p\", \"device\": \"" + QByteArray(300, 'd') + "\"}"
        << "project.json:1:25: \"" + QString(80, QLatin1Char('d')) + "...\" cannot be read: File name too long";
}

void TestEngineFiles::refusesProjects()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, error);
    refuse(QStringLiteral("project.json"), content, error);
}

void TestEngineFiles::refusesDevices_data()
{
    QTest::addColumn<QByteArray>("kinds");
    QTest::addColumn<QByteArray>("sites");
    QTest::addColumn<QString>("error");
    const QByteArray pad = "{\"name\": \"PAD\"}";
    const auto row = [](const char* name, const QByteArray& kinds, const QByteArray& sites, const char* error) {
        QTest::newRow(name) << kinds << sites << error;
    };
    row("an unknown kind of site", pad + ", {\"name\": \"DCU\"}", "{\"id\": 1, \"name\": \"a\", \"kind\": \"DCX\"}",
        "device.json:5:32: unknown kind \"DCX\", expected one of \"PAD\" or \"DCU\"");
    row("no kinds at all", "", "{\"id\": 1, \"name\": \"a\", \"kind\": \"PAD\"}",
        "device.json:5:32: unknown kind \"PAD\", for the file has no \"kinds\"");
    row("a kind without a name", "{}", "", "device.json:3:1: \"name\" is missing, expected a text");
    row("a kind that is there twice", pad + ',' + pad, "", "device.json:3:26: the kind \"PAD\" is there twice");
    row("an unknown resource type", "{\"name\": \"A\", \"accepts\": [\"PLL\", \"PL\"]}", "",
        "device.json:3:34: unknown resource type \"PL\", expected \"IP\", \"DCUCHANNEL\", \"EXTREF\", \"PLL\" or "
        "\"UVCCIO\"");
    row("a colour that is none", "{\"name\": \"A\", \"occupiedFill\": \"red\"}", "",
        "device.json:3:31: expected a colour as \"#rrggbb\"");
    row("a site without an id", pad, "{\"name\": \"a\", \"kind\": \"PAD\"}",
        "device.json:5:1: \"id\" is missing, expected a whole number");
    row("a negative id", pad, "{\"name\": \"a\", \"kind\": \"PAD\", \"id\": -1}",
        "device.json:5:36: expected a whole number from 0 to 2147483647");
    row("an id that is not whole", pad, "{\"id\": 1.5}",
        "device.json:5:8: expected a whole number from 0 to 2147483647");
    row("an id that is too large", pad, "{\"id\": 2147483648}",
        "device.json:5:8: expected a whole number from 0 to 2147483647");
    row("two sites with one id", pad,
        "{\"id\": 1, \"name\": \"a\", \"kind\": \"PAD\"},\n{\"id\": 1, \"name\": \"b\", \"kind\": \"PAD\"}",
        "device.json:6:8: another site has this id");
    row("two sites with one name", pad,
        "{\"id\": 1, \"name\": \"a\", \"kind\": \"PAD\"},\n{\"id\": 2, \"name\": \"a\", \"kind\": \"PAD\"}",
        "device.json:6:19: another site has this name");
    row("a name beyond 8 bits", pad, "{\"id\": 1, \"name\": \"a\xE2\x82\xAC\", \"kind\": \"PAD\"}",
        "device.json:5:19: the name holds \"\xE2\x82\xAC\", which is not in ISO 8859-1");
    row("a group that nobody belongs to", pad, "{\"id\": 1, \"name\": \"a\", \"kind\": \"PAD\", \"reaches\": [\"x\"]}",
        "device.json:5:51: no site belongs to a group \"x\"");
    row("a setting in force that is no choice", pad,
        "{\"id\": 1, \"name\": \"a\", \"kind\": \"PAD\", \"settings\": {\"K\": {\"value\": \"a\", \"choices\": "
        "[\"b\"]}}}",
        "device.json:5:67: \"a\" is not among the choices \"b\"");
    row("out of use by a setting that the group has not", pad,
        "{\"id\": 1, \"name\": \"a\", \"kind\": \"PAD\", \"disabledBy\": {\"K\": [\"x\"]}}",
        "device.json:5:60: element 1 has no settings");
    row("out of use by a value that nobody offers", pad,
        "{\"id\": 1, \"name\": \"a\", \"kind\": \"PAD\", \"settings\": {\"K\": {\"choices\": [\"b\"]}},\n"
        "\"disabledBy\": {\"K\": [\"b\", \"x\"]}}",
        "device.json:6:27: K cannot be \"x\", expected \"b\"");
    row("attributes that are no object", pad, "{\"id\": 1, \"name\": \"a\", \"attributes\": [1]}",
        "device.json:5:38: expected an object");
}

void TestEngineFiles::refusesDevices()
{
    QFETCH(QByteArray, kinds);
    QFETCH(QByteArray, sites);
    QFETCH(QString, error);
    const QByteArray head = "{\"name\": \"d\", \"drawing\": \"d.svg\",\n\"kinds\": [\n";
    refuse(QStringLiteral("device.json"), head + kinds + "],\n\"sites\": [\n" + sites + "]}", error);
}

void TestEngineFiles::refusesDesigns_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("error");
    const auto row = [](const char* name, const QByteArray& resources, const char* error) {
        QTest::newRow(name) << designWith(resources) << error;
    };
    row("an unknown type", "[{\"name\": \"a\", \"type\": \"PAL\"}]",
        "design.json:2:24: unknown type \"PAL\", expected \"IP\", \"DCUCHANNEL\", \"EXTREF\", \"PLL\" or \"UVCCIO\"");
    row("a name that is there twice", "[{\"name\": \"a\"},\n {\"name\": \"a\"}]",
        "design.json:3:11: the name \"a\" is there twice at this level");
    row("an open brace", "[{\"name\": \"a{b\"}]", "design.json:2:11: the braces in the name do not pair up");
    row("a closing brace first", "[{\"name\": \"}{\"}]", "design.json:2:11: the braces in the name do not pair up");
    row("a brace that pairs only with an escaped one", "[{\"name\": \"{\\\\}\"}]",
        "design.json:2:11: the braces in the name do not pair up");
    row("a backslash at the end", "[{\"name\": \"a\\\\\"}]", "design.json:2:11: the name ends in a backslash");
    row("a newline", "[{\"name\": \"a\\nb\"}]", "design.json:2:11: the name holds a control character");
    row("a slash", "[{\"name\": \"a/b\"}]", "design.json:2:11: the name holds \"/\", which separates names");
    row("behind a text with quotes and brackets", "[{\"name\": \"a\\\"],\"},\n {\"name\": \"a/b\"}]",
        "design.json:3:11: the name holds \"/\", which separates names");
    row("a name beyond 16 bits", "[{\"name\": \"a\\ud83d\\ude00\"}]",
        "design.json:2:11: the name holds \"\xF0\x9F\x98\x80\", which is not in ISO 8859-1");
    row("an empty name", "[{\"name\": \"\"}]", "design.json:2:11: \"name\" must not be empty");
    row("a site that is not there", "[{\"name\": \"a\", \"type\": \"PLL\", \"site\": \"X\"}]",
        "design.json:2:39: the device \"Small\" has no site \"X\"");
    row("an IP with a site", "[{\"name\": \"a\", \"type\": \"IP\", \"site\": \"U0\"}]",
        "design.json:2:38: only the parts of \"a\" have sites");
    row("a PLL with children", "[{\"name\": \"a\", \"type\": \"PLL\", \"children\": []}]",
        "design.json:2:43: a resource of type PLL has no children");
    row("a channel that feeds", "[{\"name\": \"a\", \"type\": \"DCUCHANNEL\", \"feeds\": []}]",
        "design.json:2:47: only a resource of type PLL or EXTREF feeds others");
    row("a clock that feeds what is no IP", "[{\"name\": \"a\", \"type\": \"PLL\", \"feeds\": [\"a\"]}]",
        "design.json:2:41: there is no IP \"a\"");
    row("a frequency beyond the bounds", "[{\"name\": \"a\", \"type\": \"PLL\", \"frequency\": 1e3}]",
        "design.json:2:44: expected a number from 5 to 800");
    row("a frequency that is a text", "[{\"name\": \"a\", \"type\": \"PLL\", \"frequency\": \"100\"}]",
        "design.json:2:44: expected a number");
    row("a rate that there is not", "[{\"name\": \"a\", \"type\": \"IP\", \"rate\": 4}]",
        "design.json:2:38: expected 1.25, 2.5, 3.125, 5 or 6.25");
    row("a rate of a clock", "[{\"name\": \"a\", \"type\": \"PLL\", \"rate\": 5}]",
        "design.json:2:39: a resource of type PLL has no rate");
    row("a rate of a group", "[{\"name\": \"a\", \"rate\": 5}]",
        "design.json:2:24: what only groups others has no rate");
    row("fixed nowhere", "[{\"name\": \"a\", \"type\": \"PLL\", \"fixed\": true}]",
        "design.json:2:40: what is fixed needs a \"site\"");
    row("two on one site",
        "[{\"name\": \"a\", \"type\": \"PLL\", \"site\": \"PLL_CORE\"},\n {\"name\": \"b\", \"type\": \"PLL\", "
        "\"site\": "
        "\"PLL_CORE\"}]",
        "design.json:3:39: PLL_CORE is occupied by top/a");
    row("a placement against the rules", "[{\"name\": \"a\", \"type\": \"PLL\", \"site\": \"REF_L\"}]",
        "design.json:2:39: REF_L (Reference) does not take resources of type PLL");
}

void TestEngineFiles::refusesDesigns()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, error);
    refuse(QStringLiteral("design.json"), content, error);
}

void TestEngineFiles::acceptsAwkwardNames_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("path");
    QTest::newRow("blanks and brackets") << QByteArray("my ip [3] $x") << "top/my ip [3] $x";
    QTest::newRow("braces that pair up") << QByteArray("a{b{}}c") << "top/a{b{}}c";
    QTest::newRow("an escaped brace needs no partner") << QByteArray("a\\\\{b") << "top/a\\{b";
    QTest::newRow("an even run of backslashes at the end") << QByteArray("a\\\\\\\\") << "top/a\\\\";
    QTest::newRow("letters of ISO 8859-1") << QByteArray("\xC3\xA4") << QString::fromUtf8("top/\xC3\xA4");
}

void TestEngineFiles::acceptsAwkwardNames()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, path);
    ProjectFolder folder;
    folder.write(QStringLiteral("design.json"), designWith("[{\"name\": \"" + json + "\"}]"));
    QString error;
    QStringList warnings;
    const auto engine = ReferenceEngine::open(folder.path(), &error, &warnings);
    QVERIFY2(engine, qPrintable(error));
    QVERIFY(engine->design().find(path) >= 0);
}

void TestEngineFiles::warnsOfUnknownKeys()
{
    ProjectFolder folder;
    QByteArray resources = "[";
    for (int i = 0; i < 100; ++i)
        resources += (i ? ",\n{\"name\": \"" : "{\"name\": \"") + QByteArray::number(i) + "\", \"colour\": 1}";
    folder.write(QStringLiteral("design.json"), designWith(resources + ']'));
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
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("schemaPath"); // to the object's description in the schema
    const auto row = [](const char* name, const char* file, const char* content, const char* path) {
        const QStringList steps = QString::fromLatin1(path).split(QLatin1Char(' '));
        QTest::newRow(name) << file << QByteArray(content) << (*path ? steps : QStringList());
    };
    row("project", "project", R"({"?": 0})", "");
    row("implementation", "project", R"({"implementations": [{"?": 0}]})", "properties implementations items");
    row("device", "device", R"({"?": 0})", "");
    row("kind", "device", R"({"name": "d", "drawing": "d", "kinds": [{"?": 0}]})", "properties kinds items");
    row("site", "device", R"({"name": "d", "drawing": "d", "sites": [{"?": 0}]})", "properties sites items");
    row("setting", "device",
        R"({"name": "d", "drawing": "d", "sites": [{"id": 1, "name": "a", "settings": {"K": {"?": 0}}}]})",
        "properties sites items properties settings additionalProperties");
    row("design", "design", R"({"?": 0})", "");
    row("resource", "design", R"({"resources": [{"?": 0}]})", "$defs resource");
}

// The reader lists the keys it knows when it meets one that it does not.
void TestEngineFiles::schemasNameTheSameKeys()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, content);
    QFETCH(QStringList, schemaPath);
    ProjectFolder folder;
    folder.write(file + QStringLiteral(".json"), content);
    QString error;
    QStringList warnings;
    (void)ReferenceEngine::open(folder.path(), &error, &warnings);
    QCOMPARE(warnings.size(), 1);
    QSet<QString> known;
    auto match = QRegularExpression(QStringLiteral("\"([^\"]+)\"")).globalMatch(warnings.first());
    for (match.next(); match.hasNext();) // the first is the unknown key
        known.insert(match.next().captured(1));

    QFile schemaFile(QStringLiteral(ZEL_SCHEMA_FOLDER "/") + file + QStringLiteral(".schema.json"));
    QVERIFY(schemaFile.open(QIODevice::ReadOnly));
    QJsonValue schema = QJsonDocument::fromJson(schemaFile.readAll()).object();
    for (const QString& step : schemaPath)
        schema = schema.toObject().value(step);
    const QStringList described = schema.toObject().value(QStringLiteral("properties")).toObject().keys();
    QCOMPARE(known, QSet<QString>(described.begin(), described.end()));
}

// Every level takes two of the parser's.
void TestEngineFiles::readsDeepDesigns()
{
    constexpr int LEVELS = 500;
    QByteArray resources = "[]";
    for (int level = 0; level < LEVELS; ++level)
        resources = "[{\"name\": \"n\", \"children\": " + resources + "}]";
    ProjectFolder folder;
    folder.write(QStringLiteral("design.json"), designWith(resources));
    QString error;
    QStringList warnings;
    const auto engine = ReferenceEngine::open(folder.path(), &error, &warnings);
    QVERIFY2(engine, qPrintable(error));
    int depth = 0;
    for (const zeltreeviewcell* cell = engine->tree(); !cell->children->empty(); cell = cell->children->front())
        ++depth;
    QCOMPARE(depth, LEVELS);
}

ZEL_TEST_MAIN(TestEngineFiles)
#include "tst_enginefiles.moc"
