// SPDX-License-Identifier: MIT
#include "platform/contract/baseaction.h"
#include "platform/contract/griditem.h"
#include "platform/contract/mirnprojectmanager.h"
#include "platform/contract/utfilemanager.h"
#include "platform/contract/zeltext.h"
#include "platform/contract/zeltrace.h"
#include "tests/support/testmain.h"

#include <QActionGroup>
#include <QTemporaryDir>

using mirn::itemviewgui::GridItem;

namespace {

QByteArray writtenTo(const QTemporaryDir& folder, const QByteArray& content)
{
    return QFile::encodeName(zeltest::writeFile(folder.filePath("täst file.txt"), content));
}

} // namespace

// The platform's services and its comparison of texts.

class TestServices : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void streamsComeInPieces_data()
    {
        const Rows<QByteArray, int, QByteArrayList> row;
        row("empty", "", 10, {});
        row("lines keep their ends", "a\r\nb\n", 10, {"a\r\n", "b\n"});
        row("the last line needs no end", "a\nbc", 10, {"a\n", "bc"});
        row("a long line comes in parts", "abcdefg\nh", 3, {"abc", "def", "g\n", "h"});
        row("an end just behind a full part", "abc\nd", 3, {"abc", "\n", "d"});
        row("zero bytes are bytes", QByteArray("a\0b\nc", 5), 10, {QByteArray("a\0b\n", 4), "c"});
        const QByteArray block(65536, 'x');
        row("a line across two blocks", block + "y\nz", 70000, {block + "y\n", "z"});
    }

    void streamsComeInPieces()
    {
        const auto [content, size, expected] = row<QByteArray, int, QByteArrayList>();
        QTemporaryDir folder;
        UT_STREAM* stream = ut_file.add_ofile(writtenTo(folder, content).constData(), UT_ACCESS_READ, nullptr, 1);
        QVERIFY(stream);
        QByteArrayList pieces;
        QByteArray buffer(size + 1, 'X');
        auto* bytes = reinterpret_cast<unsigned char*>(buffer.data());
        for (int count = 0; (count = stream->readkey(bytes, size, "\n")) > 0;) {
            QCOMPARE(buffer[count], '\0');
            pieces.append(buffer.left(count));
        }
        QCOMPARE(pieces, expected);
        QCOMPARE(stream->readkey(bytes, size, "\n"), 0);
        QCOMPARE(stream->readkey(nullptr, size, "\n"), -1);
        ut_file.rm_ofile(stream);
    }

    void onlyRegularFilesOpen()
    {
        for (const char* path : {"/nowhere/to/be/found", "/", "/dev/zero", "", static_cast<const char*>(nullptr)})
            QVERIFY2(!ut_file.add_ofile(path, UT_ACCESS_READ, nullptr, 1), path);
    }

    void streamsAreClosedOnce()
    {
        QTemporaryDir folder;
        const QByteArray path = writtenTo(folder, "text");
        UT_STREAM* first = ut_file.add_ofile(path.constData(), UT_ACCESS_READ, nullptr, 1);
        UT_STREAM* second = ut_file.add_ofile(path.constData(), UT_ACCESS_READ, first, 1); // closes the first
        ut_file.rm_ofile(first);
        unsigned char buffer[8];
        QCOMPARE(second->readkey(buffer, 7, "\n"), 4);
        ut_file.rm_ofile(second);
        ut_file.rm_ofile(second);
        ut_file.rm_ofile(nullptr);
        QVERIFY(!ut_file.add_ofile(path.constData(), static_cast<UT_ACCESS>(2), nullptr, 1));
    }

    void projectFindsItsImplementations()
    {
        auto* manager = MirnProjectManager::getProjectManager();
        QVERIFY(!manager->getProject());
        manager->setProject(std::make_unique<MirnProject>("p"));
        MirnProject* project = manager->getProject();
        QVERIFY(!project->getImplementation(project->getDefaultImplementation()));
        project->addImplementation(std::make_unique<MirnImplementation>("a", "/x"));
        project->addImplementation(std::make_unique<MirnImplementation>("b", "/y"));
        project->addImplementation(std::make_unique<MirnImplementation>("a", "/z"));
        QCOMPARE(project->getImplementation("a")->getImplementFullPath(), std::string("/z"));
        QVERIFY(!project->getImplementation("c"));
    }

    // Everything that a sink holds is still there when it goes on.
    void sinksMayRemoveThemselves()
    {
        QVERIFY(!isDiagTraceEnabled());
        diagTrace("lost", "nowhere");
        std::vector<std::string> lines;
        const std::string prefix = "text of more than fits into the string itself: ";
        setDiagTraceSink([&lines, prefix](const char* text, const char*) {
            setDiagTraceSink(nullptr);
            lines.push_back(prefix + text);
        });
        TRQDebug::getInstance()->setSink([&lines, prefix](const std::string& text, const std::string&) {
            TRQDebug::getInstance()->setSink(nullptr);
            lines.push_back(prefix + text);
        });
        for (const char* text : {"first", "second"}) {
            diagTrace(text, "place");
            TRQDebug::getInstance()->trqDebugOut(text, "a");
        }
        QCOMPARE(lines, (std::vector<std::string>{prefix + "first", prefix + "first"}));
        int count = 0;
        setDiagTraceSink([count, &lines](const char* text, const char* place) mutable {
            lines.push_back(std::to_string(++count) + text + place);
        });
        QVERIFY(isDiagTraceEnabled());
        diagTrace("third %1", "place");
        diagTrace("fourth %1", "place");
        QCOMPARE(lines.back(), std::string("2fourth %1place")); // its own state is kept from line to line
    }

    void engineTextsKeepEveryByte()
    {
        std::string bytes;
        for (int byte = 0; byte < 256; ++byte)
            bytes.push_back(static_cast<char>(byte));
        QCOMPARE(toEngineText(fromEngineText(bytes)), bytes);
        QCOMPARE(toEngineText("\u03a9\u00b5"), std::string("?\xb5"));
        QVERIFY(fromEngineText(nullptr).isEmpty());
    }

    void actionsJoinTheirGroup()
    {
        QActionGroup group(nullptr);
        auto* first = new BaseAction("first", &group); // the group's
        auto* second = new BaseAction("second", &group);
        first->setChecked(true);
        second->setChecked(true);
        QVERIFY(!first->isChecked());
        BaseAction alone("alone", nullptr);
        QVERIFY(alone.isCheckable());
    }

    void ordersNaturally_data()
    {
        const Rows<QString, QString, bool> row; // the smaller, the larger, whether case counts
        row("digit runs are numbers", "ip2", "ip10", true);
        row("numbers longer than any integer type", "n99999999999999999999999", "n100000000000000000000000", true);
        row("leading zeros break a tie only", "a7b1", "a07b1", true);
        row("what follows outweighs leading zeros", "a07b1", "a7b2", true);
        row("a prefix comes first", "ip", "ip0", true);
        row("upper case first when case counts", "B", "a", true);
        row("letters only when it does not", "a", "B", false);
        row("empty before anything", "", "0", true);
    }

    void ordersNaturally()
    {
        const auto [smaller, larger, isCaseCounted] = row<QString, QString, bool>();
        const auto cs = isCaseCounted ? Qt::CaseSensitive : Qt::CaseInsensitive;
        QVERIFY(GridItem::compareString(smaller, larger, cs) < 0);
        QVERIFY(GridItem::compareString(larger, smaller, cs) > 0);
        QCOMPARE(GridItem::compareString(smaller, smaller.toUpper(), Qt::CaseInsensitive), 0);
    }

    // Every triple of a set of awkward texts: sorting by an order that is not transitive is undefined behaviour.
    void isATotalOrder()
    {
        const QStringList texts{"", "0", "00", "1", "01", "10", "a", "A", "a0", "a00", "a1", "a01b2", "a1b02", "a1b2",
            "a1b10", "a-1", "a 1", "ß", "ss", "SS", "É1", "é01"};
        for (auto cs : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
            const auto less
                = [cs](const QString& l, const QString& r) { return GridItem::compareString(l, r, cs) < 0; };
            for (const QString& a : texts) {
                for (const QString& b : texts) {
                    QVERIFY2(!(less(a, b) && less(b, a)), qPrintable(a + " / " + b));
                    for (const QString& c : texts)
                        QVERIFY2(!(less(a, b) && less(b, c)) || less(a, c), qPrintable(a + " / " + b + " / " + c));
                }
            }
        }
    }
};

ZEL_TEST_MAIN(TestServices)
#include "tst_services.moc"
