// SPDX-License-Identifier: MIT
#include "platform/contract/mirnprojectmanager.h"
#include "platform/contract/svgparser.h"
#include "platform/contract/zelchipdata.h"
#include "platform/contract/zelchipengine.h"
#include "platform/contract/zelproject.h"
#include "tests/host/hostfiles.h"
#include "tests/host/shownwindow.h"
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
    // The path is the folder, with a slash or without, or the project's file.
    void opensAProject()
    {
        HostFiles files;
        std::unique_ptr<ProjectSession> session;
        for (const char* file : {"", "/", "/project.json"}) {
            session = openSession(files.project.path() + file);
            QCOMPARE(session->title(), "Small/Test");
        }
        QVERIFY(session->hasFilter());

        session->activate();
        QCOMPARE(zelproject::getInstance()->flowName(), std::string("Floorplanning"));
        QCOMPARE(implementationDirectory(), QDir::cleanPath(files.project.path() + "/deux"));
        QCOMPARE(QFile::decodeName(session->engine()->chip()->drawingFile().c_str()), session->drawingFile());
        session.reset();
        QVERIFY(!openProject());
        QVERIFY(zelproject::getInstance()->flowName().empty());
    }

    void opensADrawing()
    {
        HostFiles files;
        const QString file = files.write("a drawing.svg", smallDrawing());
        auto session = openSession(file);
        QCOMPARE(session->title(), "a drawing.svg");
        QVERIFY(!session->hasFilter());
        QVERIFY(QFileInfo(QFile::decodeName(session->engine()->chip()->filterFile().c_str())).isFile());
        session->activate();
        QVERIFY(zelproject::getInstance()->flowName().empty());
        QVERIFY(QFileInfo(implementationDirectory()).isWritable());
        QVERIFY(implementationDirectory().startsWith(files.path("cache")));
        QVERIFY(QFileInfo::exists(implementationDirectory() + "/zelsvg.temp"));

        // The parser that the chip view gets has the records already, and returns them although the file is gone.
        QVERIFY(QFile::remove(file));
        const std::string name = session->engine()->chip()->drawingFile();
        const std::unique_ptr<SVGParser> parser = SVGParser::create();
        QVERIFY(parser->loadSVGElements(name, {}));
        QCOMPARE(parser->getGraphicItems().size(), std::size_t(6));
        QVERIFY(!parser->loadSVGElements(name, {}));
        QVERIFY(!SVGParser::create()->loadSVGElements(name, {}));

        QString error;
        QVERIFY(!ProjectSession::open(files.write("bad.svg", "bad"), &error));
        const QDir drawings(files.path("cache/") + QCoreApplication::applicationName() + "/drawings");
        QCOMPARE(drawings.entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 1); // and none for what was refused
    }

    void opensAProjectWithoutImplementations()
    {
        HostFiles files;
        files.project.write("project.json", R"({"name": "Bare", "device": "device.json"})");
        const auto session = openSession(files.project.path());
        session->activate();
        QVERIFY(QFileInfo(implementationDirectory()).isWritable());
    }

    void refuses_data()
    {
        // The path in the folder of files, the content that is written there unless it is null, the error as a pattern.
        const Rows<QString, QByteArray, QString> row;
        row("nothing of that name", "none.svg", {}, "^none\\.svg: there is no such file or folder");
        row("a folder that is no project", "", {}, "no project.*project\\.json");
        row("an empty file", "a.svg", "", "^a\\.svg:1:1: .*expected an <svg>");
        row("XML, but no drawing", "a.svg", "<html/>", "^a\\.svg:1:1: .*expected .*svg");
        row("a truncated drawing", "a.svg", smallDrawing().left(700), "^a\\.svg:\\d+:\\d+: .*truncated");
        row("a misspelt key is named with what is missing", "project.json", R"({"name": "a", "devise": "device.json"})",
            "(?s)^project\\.json:1:1: \"device\" is missing.*project\\.json:1:\\d+: unknown key \"devise\"");
    }

    void refuses()
    {
        const auto [path, content, error] = row<QString, QByteArray, QString>();
        HostFiles files;
        if (!content.isNull())
            files.write(path, content);
        const auto session = openSession(files.project.path());
        session->activate();
        const MirnProject* project = openProject();
        QString message;
        QVERIFY(!ProjectSession::open(files.path(path), &message));
        message = files.withoutPath(message);
        QVERIFY2(QRegularExpression(error).match(message).hasMatch(), qPrintable(message));
        // The session before goes on.
        QCOMPARE(openProject(), project);
        QCOMPARE(zelproject::getInstance()->flowName(), std::string("Floorplanning"));
        QVERIFY(SVGParser::create()->loadSVGElements(session->engine()->chip()->drawingFile(), {}));
    }

    void doesWithoutACacheFolder()
    {
        HostFiles files;
        files.write("cache", "a file where the folder should be");
        auto session = openSession(files.write("a.svg", smallDrawing()));
        session->activate();
        const QString scratch = implementationDirectory();
        QVERIFY(QFileInfo(scratch).isWritable());
        session.reset();
        QVERIFY(!QFileInfo::exists(scratch));
    }

    void collectsWarnings()
    {
        HostFiles files;
        files.project.write("small.svg", drawingWithWarnings());
        files.project.write("project.json", R"({"name": "a", "device": "device.json", "colour": "red"})");
        QVERIFY(QFile::remove(files.project.path() + "/filter.txt"));
        const auto session = openSession(files.project.path());
        QVERIFY(!session->hasFilter());
        const QString warnings = session->warnings().join('\n');
        QCOMPARE(session->warnings().size(), 4);
        for (const char* word : {"colour", "gradient", "device.json:4:13: \"filter.txt\" cannot be read"})
            QVERIFY2(warnings.contains(word), qPrintable(warnings));
    }
};

ZEL_TEST_MAIN(TestSession)
#include "tst_session.moc"
