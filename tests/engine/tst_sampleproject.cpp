// SPDX-License-Identifier: MIT
#include "generator/benchmarkdrawing.h"
#include "generator/haldenfloorplan.h"
#include "generator/sampledrawing.h"
#include "generator/sampleproject.h"
#include "generator/sitedrawing.h"
#include "platform/contract/svgparser.h"
#include "platform/contract/zeltext.h"
#include "tests/engine/openengine.h"
#include "tests/support/testmain.h"

#include <QDir>
#include <QFile>
#include <QFontMetricsF>
#include <QMap>
#include <QRectF>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTransform>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <string>
#include <utility>

using mirn::zelengine::ReferenceEngine;
using namespace mirn::zeldevicegenerator;

namespace {

// The part of the scene that a text covers, as the view draws it.
QRectF extentOf(const zel_Text& text)
{
    QFont font(fromEngineText(text.fontFamily));
    font.setPixelSize(100);
    const double scale = std::floor(text.fontSize * 5 + 1e-9) / 500;
    QTransform transform;
    transform.translate(text.x, text.y);
    transform.rotate(text.rotation);
    transform.scale(scale, scale);
    return transform.mapRect(QFontMetricsF(font).tightBoundingRect(fromEngineText(text.text)));
}

// Pairs of rectangles that overlap, found along a sweep from left to right.
int countOverlaps(std::vector<QRectF> extents)
{
    std::sort(extents.begin(), extents.end(), [](const QRectF& l, const QRectF& r) { return l.left() < r.left(); });
    int overlaps = 0;
    for (std::size_t i = 0; i < extents.size(); ++i) {
        for (std::size_t k = i + 1; k < extents.size() && extents[k].left() < extents[i].right(); ++k)
            overlaps += extents[i].intersects(extents[k]) ? 1 : 0;
    }
    return overlaps;
}

} // namespace

// The sample project as it is kept in the tree: made by the generator, free of faults, and legible at every scale.
class TestSampleProject : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        m_engine = openEngine(m_folder);
        QVERIFY2(m_drawing.loadSVGElements(m_engine->chip()->drawingFile(), {}), m_drawing.errorString().c_str());
    }

    void isWhatTheGeneratorMakes()
    {
        const std::vector<GeneratedFile> files = sampleProject();
        const QStringList present = QDir(m_folder).entryList(QDir::Files);
        QCOMPARE(static_cast<int>(present.size()), static_cast<int>(files.size()));
        for (const GeneratedFile& file : files) {
            const QString name = QString::fromStdString(file.name);
            QVERIFY2(zeltest::contentOf(m_folder + '/' + name).toStdString() == file.content, qPrintable(name));
        }
    }

    void hasLabelsThatFitAndNoWarnings()
    {
        for (const std::string& label : sampleDrawing(halden::sites()).misfits)
            QFAIL(label.c_str());
        QVERIFY(m_drawing.warnings().empty());
        const auto count = m_drawing.getGraphicItems().size();
        QVERIFY2(count > 5000 && count <= 25000, qPrintable(QString::number(count)));
    }

    // The texts are compared at every scale that can be reached in steps, on the layers that show there.
    void hasNoTextsThatOverlap()
    {
        const zel_Parameter parameter = m_drawing.getSVGParameter();
        QMap<int, std::vector<QRectF>> byLayer;
        for (const zel_SingleGraphItem* item : m_drawing.getGraphicItems()) {
            if (item->kind == ZEL_GRAPHIC_TEXT)
                byLayer[item->layer].push_back(extentOf(static_cast<const zel_Text&>(*item)));
        }
        for (double scale = parameter.minimumScale; scale <= parameter.maximumScale; scale += parameter.scaleStep) {
            std::vector<QRectF> shown;
            for (const auto& [layer, range] : parameter.layerRanges) {
                if (range.minimum <= scale && scale <= range.maximum)
                    shown.insert(shown.end(), byLayer[layer].begin(), byLayer[layer].end());
            }
            QVERIFY2(countOverlaps(shown) == 0, qPrintable(QString("at %1").arg(scale)));
        }
    }

    // Only rects take drops, and an id must not be mistaken for a load number.
    void drawsEverySiteAsARect()
    {
        QSet<int> rects;
        for (const zel_SingleGraphItem* item : m_drawing.getGraphicItems()) {
            if (item->kind == ZEL_GRAPHIC_RECT && item->tooltip && *item->tooltip)
                rects.insert(item->id);
        }
        const int elements = static_cast<int>(m_drawing.getGraphicItems().size());
        for (const auto& site : m_engine->device().sites()) {
            QVERIFY2(rects.contains(site.id), qPrintable(site.name));
            QVERIFY(site.id > elements);
        }
    }

    void filtersKnownElements()
    {
        QSet<QString> kinds;
        const QRegularExpression pattern("^\"([^\"]+)\" (\\d+)$");
        const QByteArray content = zeltest::contentOf(m_engine->device().filterFile());
        for (const QByteArray& line : content.trimmed().split('\n')) {
            const auto match = pattern.match(QString::fromLatin1(line));
            QVERIFY2(match.hasMatch(), line.constData());
            QVERIFY2(m_engine->device().site(match.captured(2).toInt()), line.constData());
            kinds.insert(match.captured(1));
        }
        QVERIFY(kinds.size() >= 8);
    }

    // What goes wrong with the sample as it comes, and after commands that a user may give.
    void hasErrorsThatCommandsMend_data()
    {
        const QString pll = "gateway/hdmi/txpll is on DCU4_TXPLL, which is out of use because TXPLL is OFF";
        const QString half = "CH1 of DCU5 is POWER DOWN, which is possible for CH0 and CH1 together only";
        const Rows<QStringList, QStringList> row; // "RESOURCE@SITE" or "SITE KEY=VALUE"; the errors
        row("as it comes", {}, {pll, half});
        row("moved away", {"hdmi/txpll@PLL_BR1"}, {half});
        row("both set", {"DCU4 TXPLL=X20", "DCU5 CH1=EXTREF A"}, {});
        row("powered down as a whole", {"hdmi/txpll@DCU5_TXPLL", "DCU5 CH0=POWER DOWN"}, {});
        row("the dialog writes what it shows", {"DCU5 CH0=EXTREF A", "DCU5 CH1=POWER DOWN"}, {pll, half});
        row("back to the fresh device", {"DCU5 CH0=POWER DOWN", "DCU5 CH0=EXTREF A"}, {pll, half});
    }

    void hasErrorsThatCommandsMend()
    {
        const auto [steps, expected] = row<QStringList, QStringList>();
        const auto engine = openEngine(m_folder);
        const auto idOf = [&engine](const QString& site) { return engine->device().site(site)->id; };
        QVERIFY(!engine->connections().empty()); // the steps below change them
        for (const QString& step : steps) {
            const QStringList words = step.split(QRegularExpression("[@=]| (?=\\S+=)"));
            QCOMPARE(step.contains('@') ? engine->place("gateway/" + words[0], idOf(words[1]))
                                        : engine->setSetting(idOf(words[0]), words[1], words[2]),
                QString());
        }
        QStringList errors;
        for (const auto& problem : engine->problems()) {
            if (problem.severity == mirn::zelengine::Problem::Severity::Error)
                errors.append(problem.sentence);
        }
        QCOMPARE(errors, expected);
        QSet<QString> broken;
        for (const zelconnection& connection : engine->connections())
            broken.insert(QString::fromStdString(connection.broken));
        broken.remove(QString());
        const QStringList ofResources = expected.filter("hdmi");
        QCOMPARE(broken, QSet<QString>(ofResources.begin(), ofResources.end()));
    }

    // The sample can be solved, even for the IPs that fit in one place only.
    void canBePlacedCompletely()
    {
        const auto start = m_engine->design();
        const auto place = [this](const char* resource, const char* site) {
            const auto* target = m_engine->device().site(QString::fromLatin1(site));
            return m_engine->place("gateway/" + QLatin1String(resource), target->id);
        };
        QVERIFY(!place("hdmi", "DCU4").isEmpty()); // its PLL does not reach the second unit
        QCOMPARE(place("hdmi/txpll", "PLL_BR1"), QString());
        QVERIFY(!place("hdmi", "DCU3").isEmpty()); // out of its clock's reach
        QCOMPARE(place("hdmi", "DCU4"), QString());
        QCOMPARE(place("xaui", "DCU2"), QString());
        QVERIFY(!place("xaui/txpll", "DCU2_TXPLL").isEmpty()); // does not reach the channels in DCU3
        const std::pair<const char*, const char*> others[]
            = {{"xaui/txpll", "PLL_BR0"}, {"xaui/refclk", "EXTREF2"}, {"cpri", "DCU1"}, {"cpri/txpll", "DCU1_TXPLL"},
                {"clocks/pll_eth", "PLL_BL1"}, {"clocks/pll_video", "PLL_TL1"}, {"supplies/vccio_host_b", "VCCIO0_2"},
                {"supplies/vccio_ddr_b", "VCCIO3_2"}, {"supplies/vccio_lvds", "VCCIO2_1"}};
        for (const auto& [resource, site] : others)
            QCOMPARE(place(resource, site), QString());
        for (const char* name : {"pcie", "xaui", "sgmii", "cpri", "hdmi", "clocks", "supplies"}) {
            const std::string path = std::string("gateway/") + name;
            const QStringList words = fromEngineText(m_engine->getResourceSummary(&path)).split(' ');
            QCOMPARE(words.at(0), words.at(2)); // "4 of 4 placed"
        }
        m_engine->setDesign(start);
    }

    void makesDrawingsOfSites()
    {
        QTemporaryDir folder;
        QCOMPARE(writeFiles({{"s.svg", siteDrawing(1000)}}, folder.path().toStdString()), std::string());
        SVGParser parser;
        QVERIFY(parser.loadSVGElements(folder.filePath("s.svg").toStdString(), {}));
        const QRectF area(0, 0, parser.getSVGParameter().width, parser.getSVGParameter().height);
        std::set<std::pair<std::string, unsigned>> looks;
        for (const zel_SingleGraphItem* item : parser.getGraphicItems()) {
            const auto* rect = dynamic_cast<const zel_Rect*>(item);
            QVERIFY(rect && area.contains(QRectF(rect->x, rect->y, rect->width, rect->height)));
            QVERIFY(rect->strokeWidth > 0);
            looks.emplace(rect->name, rect->fillColor);
        }
        QCOMPARE(looks.size(), std::size_t(1000)); // each name is there once
    }

    void makesBenchmarkDrawings()
    {
        for (const auto& [elements, layers] : {std::pair(1, 1), std::pair(10000, 1), std::pair(2000, 4)}) {
            QTemporaryDir folder;
            const std::string drawing = benchmarkDrawing(elements, layers);
            QVERIFY(drawing == benchmarkDrawing(elements, layers));
            QCOMPARE(writeFiles({{"b.svg", drawing}}, folder.path().toStdString()), std::string());
            SVGParser parser;
            QVERIFY(parser.loadSVGElements(folder.filePath("b.svg").toStdString(), {}));
            std::array<int, 4> counts{};
            QSet<int> usedLayers;
            const QRectF area(0, 0, parser.getSVGParameter().width, parser.getSVGParameter().height);
            for (const zel_SingleGraphItem* item : parser.getGraphicItems()) {
                ++counts[static_cast<std::size_t>(item->kind)];
                usedLayers.insert(item->layer);
                if (const auto* rect = dynamic_cast<const zel_Rect*>(item))
                    QVERIFY(area.contains(QRectF(rect->x, rect->y, rect->width, rect->height)));
            }
            QCOMPARE(usedLayers.size(), layers);
            QCOMPARE(counts[0] + counts[1] + counts[2] + counts[3], elements);
            if (elements > 1) {
                const std::array<int, 4> expected{elements / 10, elements / 5 * 4, elements / 20, elements / 20};
                QCOMPARE(counts, expected);
            }
        }
    }

private:
    const QString m_folder = QStringLiteral(ZEL_SAMPLE_FOLDER);
    std::unique_ptr<ReferenceEngine> m_engine;
    SVGParser m_drawing;
};

ZEL_TEST_MAIN(TestSampleProject)
#include "tst_sampleproject.moc"
