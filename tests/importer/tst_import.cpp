// SPDX-License-Identifier: MIT
#include "engine/model/design.h"
#include "engine/model/device.h"
#include "engine/referenceengine.h"
#include "importer/tableimport.h"
#include "platform/contract/svgparser.h"
#include "tests/support/random.h"
#include "tests/support/testmain.h"
#include "tests/support/textcases.h"

#include <QDir>
#include <QLockFile>
#include <QMap>
#include <QPointF>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <sys/resource.h>

#include <algorithm>
#include <csignal>

using namespace mirn::zelimporter;

namespace {

const QByteArray Header = "name,kind,x,y,width,height";
const QByteArray TwoSites = Header + "\na,PAD,0,0,4,4\nb,PAD,5,0,4,4\n";

// Tables in a temporary folder, and the project that is made of them.
class Tables
{
public:
    Tables()
    {
        options.project = m_folder.filePath("made");
        sites(TwoSites);
    }

    void sites(const QByteArray& content) { options.sites = zeltest::writeFile(m_folder.filePath("S"), content); }
    void resources(const QByteArray& content)
    {
        options.resources = zeltest::writeFile(m_folder.filePath("R"), content);
    }
    void connections(const QByteArray& content)
    {
        options.connections = zeltest::writeFile(m_folder.filePath("C"), content);
    }

    // Returns the error without the folder.
    QString import()
    {
        TableImport::Result result = TableImport(options).run();
        warnings = result.warnings.join('\n').remove(m_folder.path() + '/');
        return result.error.remove(m_folder.path() + '/');
    }

    // Opens what was made; ends the test's patience with a sentence where that fails.
    std::unique_ptr<mirn::zelengine::ReferenceEngine> open(QString* error) const
    {
        QStringList ignored;
        auto engine = mirn::zelengine::ReferenceEngine::open(options.project, error, &ignored);
        if (engine && error->isEmpty())
            *error = engine->device().drawingError() + ignored.join('\n');
        return engine;
    }

    [[nodiscard]] QStringList files() const
    {
        return QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }
    [[nodiscard]] QByteArray made(const QString& file) const
    {
        return zeltest::contentOf(options.project + '/' + file);
    }

    ImportOptions options;
    QString warnings;

private:
    QTemporaryDir m_folder;
};

// The sites of the drawing in its order, as "id: x y width height" from the upper left corner of all.
QStringList drawnSites(const QString& project)
{
    QTemporaryDir working;
    SVGParser parser;
    if (!parser.loadSVGElements((project + "/drawing.svg").toStdString(), working.path().toStdString()))
        return {QString::fromStdString(parser.errorString())};
    std::vector<const zel_Rect*> sites;
    for (const zel_SingleGraphItem* item : parser.getGraphicItems()) {
        if (item->kind == ZEL_GRAPHIC_RECT && item->id > 0)
            sites.push_back(static_cast<const zel_Rect*>(item));
    }
    QPointF corner(1e9, 1e9);
    for (const zel_Rect* site : sites)
        corner = {std::min(corner.x(), site->x), std::min(corner.y(), site->y)};
    QStringList result;
    for (const zel_Rect* site : sites)
        result.append(QString("%1: %2 %3 %4 %5")
                          .arg(QString::number(site->id), QString::number(site->x - corner.x()),
                              QString::number(site->y - corner.y()), QString::number(site->width),
                              QString::number(site->height)));
    return result;
}

} // namespace

class TestImport final : public zeltest::Test
{
    Q_OBJECT

private Q_SLOTS:
    void refusesTables_data()
    {
        const Rows<QByteArray, QString> refused;
        for (const zeltest::TextCase& one : zeltest::casesIn("importer/refused.txt"))
            refused(one.name.constData(), one.content, one.result);
        refused("a NUL", "S " + Header + "\nS a,P" + QByteArray(1, '\0') + "D,0,0,1,1",
            "S:2: column \"kind\": value 2 holds a NUL character; expected text in UTF-8");
    }

    void refusesTables()
    {
        const auto [content, error] = row<QByteArray, QString>();
        QMap<char, QByteArray> tables;
        for (const QByteArray& line : content.split('\n'))
            tables[line.isEmpty() ? 'S' : line.at(0)] += line.mid(2) + '\n';
        Tables made;
        made.sites(tables.value('S').trimmed());
        if (tables.contains('R'))
            made.resources(tables.value('R'));
        if (tables.contains('C'))
            made.connections(tables.value('C'));
        const QStringList before = made.files();
        QCOMPARE(made.import(), error);
        QCOMPARE(made.files(), before);
    }

    void importsTables_data()
    {
        QByteArray manyKinds = Header + '\n';
        for (int i = 0; i < 10000; ++i)
            manyKinds += "s" + QByteArray::number(i) + ",K" + QByteArray::number(i) + ",0,0,1,1\n";
        // The table, what is drawn (or how many sites), and the warnings.
        const Rows<QByteArray, QStringList, QString> tables;
        tables("only a header", Header, {}, "");
        tables("other separators, quotes, a mark and line ends",
            "\xEF\xBB\xBF\"name\";kind;x;y;width;height\r\n\r\n\"a;\"\"b\"\"\";P;0;0;1000;1000\r\nc;P;0;1000;10;10",
            {"1: 0 0 1000 1000", "2: 0 1000 10 10"}, "");
        tables("units and another order", "height [um],width [mm],kind,name,y,X [um]\n1000,1,P,a,0,0\n",
            {"1: 0 0 1000 1000"}, "");
        tables("a point, and a site without a height", Header + "\np,P,0,0,0,0\nq,P,1000,0,20,0\n",
            {"1: 0 0 5.1 5.1", "2: 1002.55 0 20 5.1"},
            "2 sites have no width or no height, and are drawn larger than they are.");
        tables("one beyond its parent", Header + ",parent\nin,P,990,0,20,20,out\nout,Q,0,0,1000,1000,\n",
            {"2: 0 0 1000 1000", "1: 990 0 20 20"},
            "1 sites reach beyond the one that they lie in, the first on line 2: \"in\" in \"out\".");
        tables("the same size again and again", manyKinds, {"10000"}, "");
        tables("far apart and tiny", Header + "\na,P,-1e9,-1e9,1e-6,1e-6\nb,P,1e9,1e9,1e-6,1e-6\n", {"2"}, "");
        tables("names that a project has for itself", Header + ",id,fill\na,P,0,0,1000,1000,7,red\n",
            {"1: 0 0 1000 1000"},
            "The column \"id\" became the attribute \"id_\".\nThe column \"fill\" became the attribute \"fill_\".");
    }

    void importsTables()
    {
        const auto [content, drawn, warnings] = row<QByteArray, QStringList, QString>();
        Tables tables;
        tables.sites(content);
        QCOMPARE(tables.import(), QString());
        QCOMPARE(tables.warnings, warnings);
        QString error;
        QVERIFY(tables.open(&error));
        QCOMPARE(error, QString());
        const QStringList found = drawnSites(tables.options.project);
        QCOMPARE(drawn.size() == 1 && !drawn.first().contains(':') ? QStringList(QString::number(found.size())) : found,
            drawn);
    }

    void drawsDetailWhereItIsLargeEnough()
    {
        Tables tables;
        QByteArray sites = Header + ",parent\n";
        for (int i = 0; i < 2500; ++i) {
            const QByteArray tile = "T" + QByteArray::number(i);
            const QByteArray y = QByteArray::number(21 * (i / 50));
            sites += tile + ",TILE," + QByteArray::number(21 * (i % 50)) + ',' + y + ",18,18,\n" + tile + "_S,SITE,"
                + QByteArray::number(21 * (i % 50) + 4) + ',' + y + ",4,4," + tile + '\n';
        }
        tables.sites(sites);
        tables.options.y = VerticalAxis::Up;
        QCOMPARE(tables.import(), QString());
        QTemporaryDir working;
        SVGParser parser;
        QVERIFY(parser.loadSVGElements(
            (tables.options.project + "/drawing.svg").toStdString(), working.path().toStdString()));
        const std::map<int, RangeScale> layers = parser.getSVGParameter().layerRanges;
        QVERIFY(layers.at(1).minimum < -100 && layers.at(1).maximum > 100); // tiles are always there
        QVERIFY(layers.at(2).minimum > 0.8 && layers.at(2).minimum < 2); // a site of 4 units has 4 pixels at 1
        QCOMPARE(layers.at(3).maximum, layers.at(2).minimum); // the lids go when the sites come
        QVERIFY(layers.at(4).minimum >= layers.at(3).minimum); // and labels come when they can be read
        const QStringList drawn = drawnSites(tables.options.project);
        QVERIFY(drawn.filter(QRegularExpression("^1: ")).first().endsWith("18 18"));
        // With y upwards the first row is the lowest.
        const auto yOf = [&drawn](const char* id) {
            return drawn.filter(QRegularExpression(id)).first().section(' ', 2, 2).toDouble();
        };
        QVERIFY(yOf("^1: ") > yOf("^4901: "));
    }

    void importsADesign()
    {
        Tables tables;
        tables.sites(Header + ",group,reaches\na,RAM,0,0,4,4,G,\nb,RAM,5,0,4,4,G,\nc,CLK,9,0,4,4,,G\n");
        tables.resources("name,kind,parent,site,fixed\nr1,RAM,cpu/"
                         "core,a,1\ncore,,cpu,,\nr2,RAM,core,b,\ncpu,block,,,\nclk,CLK,,c,no\n");
        tables.connections("from,to,rule\ncpu/core/r1,r2,same-unit\nclk,r1,reachable\nr1,r2,\n");
        QCOMPARE(tables.import(), QString());
        QString error;
        const auto engine = tables.open(&error);
        QCOMPARE(error, QString());
        const mirn::zelengine::Design& design = engine->design();
        const int first = design.find("R/cpu/core/r1");
        QVERIFY(first >= 0);
        QCOMPARE(design.resource(first).site, 1);
        QVERIFY(design.resource(first).fixed);
        QCOMPARE(design.linksOf(first).size(), std::size_t(3));
        QCOMPARE(design.resource(design.find("R/clk")).site, 3);
    }

    void keepsWhatIsThere_data()
    {
        const Rows<QString> rows;
        for (const char* fault : {"no wish to replace it", "a table with an error", "a full disk",
                 "a program that has it", "a cancelled import", "no project there"})
            rows(fault, fault);
    }

    void keepsWhatIsThere()
    {
        const auto [fault] = row<QString>();
        Tables tables;
        QCOMPARE(tables.import(), QString());
        const QString lockFile = tables.options.project + "/impl1/journal.tcl.lock";
        QVERIFY(QDir().mkpath(tables.options.project + "/impl1"));
        zeltest::writeFile(tables.options.project + "/impl1/placement.tcl", "mine");
        QLockFile lock(lockFile);
        QVERIFY(fault != "a program that has it" || lock.tryLock());
        if (fault == "no project there")
            QVERIFY(QFile::remove(tables.options.project + "/project.json"));
        tables.options.replaces = fault != "no wish to replace it";
        tables.sites(fault == "a table with an error" ? TwoSites + "a" : TwoSites + "c,PAD,9,0,4,4\n");
        const QByteArray device = tables.made("sites.csv");
        const QStringList files = tables.files();
        QCOMPARE(runWith(fault, tables), fault != "a cancelled import");
        QCOMPARE(tables.made("sites.csv"), device);
        QCOMPARE(tables.made("impl1/placement.tcl"), QByteArray("mine"));
        QCOMPARE(tables.files(), files);
    }

    void replacesOnRequest()
    {
        Tables tables;
        QCOMPARE(tables.import(), QString());
        tables.options.replaces = true;
        tables.sites(Header);
        QCOMPARE(tables.import(), QString());
        QCOMPARE(tables.made("sites.csv"), QByteArray("id,name,kind\n"));
        QCOMPARE(tables.warnings, QString("The former project is kept as made.before-1."));
        QVERIFY(zeltest::contentOf(tables.options.project + ".before-1/sites.csv").contains("2,b,PAD"));
    }

    // Whatever the damage, there is an error with its place, or a project that opens.
    void survivesDamage()
    {
        zeltest::Random random(1);
        const QByteArray sites = Header
            + ",parent,group,reaches,note\n\"a\",P,0,0,9,9,,G,G,\"x,\"\"y\"\n b ,P,1.5,1e0,+2,3,a,H,G H,\xC3\xA4\n";
        for (int i = 0; i < 300; ++i) {
            Tables tables;
            QByteArray damaged = sites;
            for (int change = random.below(3); change >= 0; --change) {
                const int place = random.below(static_cast<int>(damaged.size()));
                const QByteArray piece = random.below(2)
                    ? QByteArray(1, static_cast<char>(random.below(256)))
                    : sites.mid(random.below(static_cast<int>(sites.size())), random.below(20));
                damaged.replace(place, random.below(8), piece);
            }
            tables.sites(damaged);
            const QString error = tables.import();
            QVERIFY2(error.isEmpty() || error.startsWith("S:"), qPrintable(error));
            QString opening;
            QVERIFY2(!error.isEmpty() || (tables.open(&opening) && opening.isEmpty()), qPrintable(opening + damaged));
        }
    }

private:
    // Returns whether the import failed with an error.
    static bool runWith(const QString& fault, Tables& tables)
    {
        TableImport import(tables.options);
        if (fault == "a cancelled import")
            import.cancel();
        rlimit limit{};
        (void)::getrlimit(RLIMIT_FSIZE, &limit);
        const rlimit small{20, limit.rlim_max};
        const auto before = std::signal(SIGXFSZ, SIG_IGN);
        if (fault == "a full disk")
            (void)::setrlimit(RLIMIT_FSIZE, &small);
        const TableImport::Result result = import.run();
        (void)::setrlimit(RLIMIT_FSIZE, &limit);
        (void)std::signal(SIGXFSZ, before);
        return !result.isCancelled && !result.error.isEmpty();
    }
};

ZEL_TEST_MAIN(TestImport)
#include "tst_import.moc"
