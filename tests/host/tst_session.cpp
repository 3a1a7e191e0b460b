// SPDX-License-Identifier: MIT
#include "host/project/projectsession.h"
#include "platform/contract/mirnprojectmanager.h"
#include "platform/contract/svgparser.h"
#include "platform/contract/zelchipdata.h"
#include "platform/contract/zelchipengine.h"
#include "platform/contract/zelproject.h"
#include "tests/host/hostfiles.h"
#include "tests/support/testmain.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

using mirn::zelchip::ProjectSession;

namespace {

const MirnProject* openProject()
{
    return MirnProjectManager::getProjectManager()->getProject();
}

QString implementationDirectory()
{
    const MirnImplementation* implementation
        = openProject()->getImplementation(openProject()->getDefaultImplementation());
    return implementation ? QFile::decodeName(implementation->getImplementFullPath().c_str()) : QString();
}

} // namespace

class TestSession : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void opensAProject_data();
    void opensAProject();
    void opensADrawing();
    void opensAProjectWithoutImplementations();
    void refuses_data();
    void refuses();
    void filterFileThatIsMissingIsWarnedOf();
    void refusedOneLeavesTheServicesAlone();
    void readsTheDrawingOnce();
    void cachesTheDrawing();
    void doesWithoutACacheFolder();
    void collectsWarnings();
};

void TestSession::opensAProject_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("its folder") << "";
    QTest::newRow("its folder with a slash") << "/";
    QTest::newRow("its file") << "/project.json";
}

void TestSession::opensAProject()
{
    QFETCH(QString, file);
    HostFiles files;
    QString error;
    std::unique_ptr<ProjectSession> session = ProjectSession::open(files.project.path() + file, &error);
    QVERIFY2(session, qPrintable(error));
    QCOMPARE(session->title(), QStringLiteral("Small/Test"));
    QVERIFY(session->hasFilter());

    session->activate();
    QCOMPARE(zelproject::getInstance()->flowName(), std::string("Floorplanning"));
    QCOMPARE(implementationDirectory(), QDir::cleanPath(files.project.path() + "/deux"));
    QCOMPARE(QFile::decodeName(session->engine()->chip()->drawingFile().c_str()), session->drawingFile());
    session.reset();
    QVERIFY(!openProject());
    QVERIFY(zelproject::getInstance()->flowName().empty());
}

void TestSession::opensADrawing()
{
    HostFiles files;
    QString error;
    auto session = ProjectSession::open(files.write("a drawing.svg", smallDrawing()), &error);
    QVERIFY2(session, qPrintable(error));
    QCOMPARE(session->title(), QStringLiteral("a drawing.svg"));
    QVERIFY(!session->hasFilter());
    QVERIFY(QFileInfo(QFile::decodeName(session->engine()->chip()->filterFile().c_str())).isFile());
    session->activate();
    QVERIFY(zelproject::getInstance()->flowName().empty());
    QVERIFY(QFileInfo(implementationDirectory()).isWritable());
    QVERIFY(implementationDirectory().startsWith(files.path("cache")));
}

void TestSession::opensAProjectWithoutImplementations()
{
    HostFiles files;
    files.project.write("project.json", R"({"name": "Bare", "device": "device.json"})");
    QString error;
    auto session = ProjectSession::open(files.project.path(), &error);
    QVERIFY2(session, qPrintable(error));
    session->activate();
    QVERIFY(QFileInfo(implementationDirectory()).isWritable());
}

void TestSession::refuses_data()
{
    QTest::addColumn<QString>("path"); // relative to the folder of files
    QTest::addColumn<QByteArray>("content"); // written there before, unless it is null
    QTest::addColumn<QString>("error"); // a pattern
    QTest::newRow("nothing of that name")
        << "none.svg" << QByteArray() << "^none\\.svg: there is no such file or folder";
    QTest::newRow("a folder that is no project") << "" << QByteArray() << "no project.*project\\.json";
    QTest::newRow("an empty file") << "a.svg" << QByteArray("") << "^a\\.svg:1:1: .*expected an <svg>";
    QTest::newRow("a text") << "a.svg" << QByteArray("hello") << "^a\\.svg:1:1: .*expected";
    QTest::newRow("XML, but no drawing") << "a.svg" << QByteArray("<html/>") << "^a\\.svg:1:1: .*expected .*svg";
    QTest::newRow("a truncated drawing") << "a.svg" << smallDrawing().left(700) << "^a\\.svg:\\d+:\\d+: .*truncated";
    QTest::newRow("a project that is no JSON")
        << "project.json" << QByteArray("{\n  \"name\":\n}") << "^project\\.json:\\d+:\\d+: ";
    QTest::newRow("a project without its device")
        << "project.json" << QByteArray(R"({"name": "a", "device": "gone.json"})") << "gone\\.json";
    QTest::newRow("a misspelt key is named with what is missing")
        << "project.json" << QByteArray(R"({"name": "a", "devise": "device.json"})")
        << "(?s)^project\\.json:1:1: \"device\" is missing.*project\\.json:1:\\d+: unknown key \"devise\"";
    QTest::newRow("a drawing that is called a project")
        << "project.json" << smallDrawing() << "^project\\.json:1:\\d+: ";
}

void TestSession::refuses()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, content);
    QFETCH(QString, error);
    HostFiles files;
    if (!content.isNull())
        files.write(path, content);
    QString message;
    QVERIFY(!ProjectSession::open(files.path(path), &message));
    message = files.withoutPath(message);
    QVERIFY2(QRegularExpression(error).match(message).hasMatch(), qPrintable(message));
}

void TestSession::filterFileThatIsMissingIsWarnedOf()
{
    HostFiles files;
    const QString filter = files.project.path() + QStringLiteral("/filter.txt");
    QVERIFY(QFile::remove(filter));
    QString error;
    const auto session = ProjectSession::open(files.project.path(), &error);
    QVERIFY2(session && !session->hasFilter(), qPrintable(error));
    QCOMPARE(session->warnings().size(), 1);
    QVERIFY2(session->warnings().first().contains(QStringLiteral("device.json:4:13: \"filter.txt\" cannot be read")),
        qPrintable(session->warnings().first()));
}

void TestSession::refusedOneLeavesTheServicesAlone()
{
    HostFiles files;
    QString error;
    auto session = ProjectSession::open(files.project.path(), &error);
    QVERIFY(session);
    session->activate();
    const MirnProject* project = openProject();
    QVERIFY(!ProjectSession::open(files.write("bad.svg", "bad"), &error));
    QCOMPARE(openProject(), project);
    QCOMPARE(zelproject::getInstance()->flowName(), std::string("Floorplanning"));
    QVERIFY(SVGParser::create()->loadSVGElements(session->engine()->chip()->drawingFile(), {}));
}

// The parser that the chip view gets has the records already: it gives them although the file is gone by now.
void TestSession::readsTheDrawingOnce()
{
    HostFiles files;
    const QString file = files.write("a.svg", smallDrawing());
    QString error;
    auto session = ProjectSession::open(file, &error);
    QVERIFY(session);
    session->activate();
    QVERIFY(QFile::remove(file));
    const std::string name = session->engine()->chip()->drawingFile();
    const std::unique_ptr<SVGParser> parser = SVGParser::create();
    QVERIFY(parser->loadSVGElements(name, {}));
    QCOMPARE(parser->getGraphicItems().size(), std::size_t(6));
    QVERIFY(!parser->loadSVGElements(name, {}));
    QVERIFY(!SVGParser::create()->loadSVGElements(name, {}));
}

void TestSession::cachesTheDrawing()
{
    HostFiles files;
    QString error;
    auto session = ProjectSession::open(files.write("a.svg", smallDrawing()), &error);
    QVERIFY(session);
    session->activate();
    QVERIFY(QFileInfo::exists(implementationDirectory() + "/zelsvg.temp"));

    QVERIFY(!ProjectSession::open(files.write("bad.svg", "bad"), &error));
    const QDir drawings(files.path("cache") + QStringLiteral("/") + QCoreApplication::applicationName() + "/drawings");
    QCOMPARE(drawings.entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 1); // and none for what was refused
}

void TestSession::doesWithoutACacheFolder()
{
    HostFiles files;
    files.write("cache", "a file where the folder should be");
    QString error;
    auto session = ProjectSession::open(files.write("a.svg", smallDrawing()), &error);
    QVERIFY2(session, qPrintable(error));
    session->activate();
    const QString scratch = implementationDirectory();
    QVERIFY(QFileInfo(scratch).isWritable());
    session.reset();
    QVERIFY(!QFileInfo::exists(scratch));
}

void TestSession::collectsWarnings()
{
    HostFiles files;
    files.project.write("small.svg", drawingWithWarnings());
    files.project.write("project.json", R"({"name": "a", "device": "device.json", "colour": "red"})");
    QString error;
    auto session = ProjectSession::open(files.project.path(), &error);
    QVERIFY2(session, qPrintable(error));
    const QString warnings = session->warnings().join('\n');
    QCOMPARE(session->warnings().size(), 3);
    QVERIFY2(warnings.contains("colour") && warnings.contains("gradient"), qPrintable(warnings));
}

ZEL_TEST_MAIN(TestSession)
#include "tst_session.moc"
