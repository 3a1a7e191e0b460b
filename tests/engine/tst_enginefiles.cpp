// SPDX-License-Identifier: MIT
#include "tests/engine/openengine.h"
#include "tests/engine/projectfolder.h"
#include "tests/support/testmain.h"
#include "tests/support/textcases.h"

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
        const Rows<QString, QByteArray, QString> row;
        for (const QString file : {"project", "device", "design"}) {
            for (const auto& each : zeltest::casesIn("engine/refused/" + file + ".txt"))
                row(each.name.constData(), file + ".json", each.content, each.result);
        }
        row("a name as long as the file", "project.json",
            "{\"name\": \"p\", \"device\": \"" + QByteArray(300, 'd') + "\"}",
            "1:25: \"" + QString(80, 'd') + "...\" cannot be read: File name too long");
    }

    void refuses()
    {
        const auto [file, content, error] = row<QString, QByteArray, QString>();
        QCOMPARE(errorOf(file, content), file + ':' + error);
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
                    "'fixed', 'feeds', 'rate', 'frequency' or 'voltage'")
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
