// SPDX-License-Identifier: MIT
#include "platform/contract/zeltext.h"
#include "tests/engine/openengine.h"
#include "tests/engine/projectfolder.h"
#include "tests/support/testmain.h"

using mirn::zelengine::ReferenceEngine;

namespace {

const char* const DESIGN = R"([
  {"name": "ip", "type": "IP", "children": [
    {"name": "a", "type": "DCUCHANNEL", "site": "U0_CH0"},
    {"name": "b", "type": "DCUCHANNEL"},
    {"name": "ref", "type": "EXTREF", "site": "REF_L", "fixed": true}]},
  {"name": "clk", "children": [{"name": "pll", "type": "PLL", "site": "PLL_CORE", "fixed": true}]},
  {"name": "empty"},
  {"name": "vé", "type": "UVCCIO"}
])";

// The tree as indented text: name, type, id, flags.
void describe(const zeltreeviewcell& cell, const QString& indent, QStringList& lines)
{
    QString line = indent + fromEngineText(*cell.name) + ' ';
    line += cell.type ? fromEngineText(*cell.type) : "-";
    if (cell.ids)
        line += ' ' + fromEngineText(*cell.ids->begin()->second);
    if (!cell.columns->empty())
        line += ' ' + fromEngineText(*cell.columns->begin()->second);
    line += cell.draggable ? " drag" : QString();
    line += cell.resettable ? " reset" : QString();
    line += cell.uvccio ? " uvccio" : QString();
    lines.append(line);
    for (const zeltreeviewcell* child : *cell.children)
        describe(*child, indent + '.', lines);
}

} // namespace

// The chip view's side of a design: cells, summaries, kind codes, usage, chip records, settings.
class TestEngineTree : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        zeltest::Test::init();
        m_engine = openEngine(m_folder.path());
    }

    void makesCells()
    {
        QStringList lines;
        describe(*m_engine->tree(), {}, lines);
        const QStringList expected{"top -", ".ip IP drag reset", "..a DCUCHANNEL 11 U0_CH0 drag reset",
            "..b DCUCHANNEL drag", "..ref EXTREF 40 REF_L", ".clk GROUP", "..pll PLL 50 PLL_CORE", ".empty GROUP",
            QString::fromUtf8(".v\xC3\xA9 UVCCIO drag uvccio")};
        QCOMPARE(lines, expected);
        QVERIFY(!m_engine->tree()->children->at(0)->ids); // an IP has no site, its channels have
        QCOMPARE(m_engine->headers().size(), std::size_t(2));
    }

    void summarises_data()
    {
        const Rows<QString, QString> row;
        row("an IP counts its parts", "top/ip", "2 of 3 placed");
        row("what is placed names its site", "top/ip/a", "on U0_CH0");
        row("what is fixed says so", "top/ip/ref", "fixed on REF_L, 100 MHz");
        row("what is not placed", "top/ip/b", "not placed");
        row("a folder counts what is in it", "top/clk", "1 of 1 placed");
        row("nothing to count", "top/empty", "");
        row("nothing of that name", "top/ip/x", "");
    }

    void summarises()
    {
        const auto [name, summary] = row<QString, QString>();
        const std::string text = toEngineText(name);
        QCOMPARE(fromEngineText(m_engine->getResourceSummary(&text)), summary);
    }

    void tellsWhatIsLocked()
    {
        m_engine->setLocked(m_engine->proposeLock("top/ip").resources, true);
        const std::string ip = "top/ip";
        const std::string channel = "top/ip/a";
        QCOMPARE(m_engine->getResourceSummary(&ip), "2 of 3 placed, 1 locked");
        QCOMPARE(m_engine->getResourceSummary(&channel), "locked on U0_CH0");
        QVERIFY(!m_engine->tree()->children->at(0)->resettable);
    }

    void codesKinds()
    {
        const std::pair<const char*, int> kinds[] = {{"top/ip", ZEL_RESOURCE_IP}, {"top/ip/a", ZEL_RESOURCE_DCUCHANNEL},
            {"top/ip/ref", ZEL_RESOURCE_EXTREF}, {"top/clk/pll", ZEL_RESOURCE_PLL}, {"top/v\xe9", ZEL_RESOURCE_UVCCIO},
            {"top", ZEL_RESOURCE_ZEL}, {"top/clk", ZEL_RESOURCE_UNKNOWN}, {"10", ZEL_RESOURCE_IP},
            {"12", ZEL_RESOURCE_DCUCHANNEL}, {"62", ZEL_RESOURCE_UVCCIO}, {"70", ZEL_RESOURCE_UNKNOWN},
            {"-3", ZEL_RESOURCE_UNKNOWN}, {"", ZEL_RESOURCE_UNKNOWN}};
        for (const auto& [name, code] : kinds) {
            const std::string text = name;
            QVERIFY2(m_engine->getResourceType(&text) == code, name);
        }
    }

    void countsUsage()
    {
        using Row = std::vector<std::string>;
        const std::vector<Row> rows = m_engine->getResources();
        QCOMPARE(rows.size(), std::size_t(6)); // pads take nothing
        QCOMPARE(rows.at(0), (Row{"Unit", "1", "4", "25 %"}));
        QCOMPARE(rows.at(1), (Row{"Channel", "1", "6", "17 %"}));
        QCOMPARE(rows.at(4), (Row{"Reference", "1", "2", "50 %"}));
        QCOMPARE(rows.at(5), (Row{"Supply", "0", "4", "0 %"}));
        QCOMPARE(m_engine->getResourceHeader().size() + 1, rows.front().size());
    }

    void marksOccupiedAndConflictingSites()
    {
        const auto value = [this](const std::string& key) {
            const auto& records = m_engine->chip()->records();
            const auto record = std::find_if(records.begin(), records.end(), [](auto* one) { return one->id == 11; });
            const std::string* text
                = record == records.end() ? nullptr : (*record)->attributes->getAttributeValue(&key);
            return text ? *text : std::string("none");
        };
        const auto look = [&value] { return value("fill") + ' ' + value("tovanel:popup") + ' ' + value("lane"); };
        const std::string occupied = "#a690d2 Channel U0_CH0: top/ip/a 0";
        QCOMPARE(look(), occupied);
        QCOMPARE(m_engine->setSetting(10, "CH1", "OFF"), QString());
        QCOMPARE(look(), std::string("#ff4a2e Channel U0_CH0: top/ip/a\nConflict: CH0 is OFF 0"));
        m_engine->setSettingChanges(10, {}); // as undo does
        QCOMPARE(look(), occupied);
        QCOMPARE(m_engine->reset("top/ip/a"), QString());
        QCOMPARE(look(), std::string("none none 0"));
        QCOMPARE(m_engine->setSetting(10, "CH0", "OFF"), QString());
        QCOMPARE(look(), std::string("none none 0")); // nobody minds
    }

    void keepsNamesWithoutARoot()
    {
        ProjectFolder folder;
        folder.write("design.json", R"({"resources": [{"name": "a", "type": "PLL"}]})");
        const auto engine = openEngine(folder.path());
        QCOMPARE(*engine->tree()->name, std::string());
        const std::string name = "/a";
        QCOMPARE(engine->getResourceType(&name), int(ZEL_RESOURCE_PLL));
        const std::string root;
        QCOMPARE(engine->getResourceType(&root), int(ZEL_RESOURCE_UNKNOWN));
    }

    void settings_data()
    {
        const Rows<QString, QString, QString, QString> row;
        row("one channel", "CH0", "FAST", "FAST SLOW", "");
        row("what holds for both", "CH1", "OFF", "OFF OFF", "");
        row("no such value", "CH0", "LOUD", "SLOW SLOW", "CH0 cannot be \"LOUD\", expected \"SLOW\" or \"FAST\"");
        row("no such key", "CH2", "OFF", "SLOW SLOW", "U0 has no setting \"CH2\", expected \"CH0\" or \"CH1\"");
        row("a key of both", "CH0:CH1", "OFF", "SLOW SLOW",
            "U0 has no setting \"CH0:CH1\", expected \"CH0\" or \"CH1\"");
    }

    void settings()
    {
        const auto [key, value, inForce, refusal] = row<QString, QString, QString, QString>();
        const auto values
            = [this] { return m_engine->settings().value(10, "CH0") + ' ' + m_engine->settings().value(10, "CH1"); };
        QCOMPARE(m_engine->setSetting(10, key, value), refusal);
        QCOMPARE(values(), inForce);
        // Leaving a common value by one channel leaves it for the other as well.
        QCOMPARE(m_engine->setSetting(10, "CH0", "SLOW"), QString());
        QCOMPARE(values(), "SLOW SLOW");
        QVERIFY(m_engine->settings().changes().isEmpty());
    }

    void offersSettingsForTheWholeUnit()
    {
        using Values = std::vector<std::string>;
        const std::string channel = "12";
        const std::string pad = "70";
        QVERIFY(m_engine->hasDynamicDialog(&channel));
        QVERIFY(!m_engine->hasDynamicDialog(&pad));
        QVERIFY(!m_engine->getDynamicDialogValues(&channel, 0));
        QVERIFY(!m_engine->getDynamicDialogValues(&pad, 1));
        const std::string key = "CH0";
        const std::string value = "FAST";
        QCOMPARE(m_engine->setDynamicDialogValue(&channel, 1, &key, &value), 1);
        QCOMPARE(m_engine->setDynamicDialogValue(&pad, 1, &key, &value), 0);
        const auto* offers = m_engine->getDynamicDialogValues(&channel, 1);
        QVERIFY(offers);
        QCOMPARE(offers->at("CH0"), (Values{"FAST", "SLOW", "FAST"}));
        QCOMPARE(offers->at("CH0:CH1"), (Values{"", "OFF"}));
        const std::string common = "OFF";
        QCOMPARE(m_engine->setDynamicDialogValue(&channel, 1, &key, &common), 1);
        offers = m_engine->getDynamicDialogValues(&channel, 1);
        QCOMPARE(offers->at("CH1").front(), common);
        QCOMPARE(offers->at("CH0:CH1"), (Values{"OFF", "OFF"}));
        for (const QString value : {"X", ""}) { // what was empty at first can be so again
            QCOMPARE(m_engine->setSetting(30, "D", value), QString());
            QCOMPARE(m_engine->settings().value(30, "D"), value);
        }
    }

private:
    const ProjectFolder m_folder{DESIGN};
    std::unique_ptr<ReferenceEngine> m_engine;
};

ZEL_TEST_MAIN(TestEngineTree)
#include "tst_enginetree.moc"
