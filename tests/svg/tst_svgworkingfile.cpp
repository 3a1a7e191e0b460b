// SPDX-License-Identifier: MIT
#include "tests/support/testmain.h"
#include "tests/svg/drawing.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QTest>

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

// The image of the records that spares the next load the parsing.
class TestSvgWorkingFile : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void givesTheSameDrawing();
    void handsItemsOutInTwoWays();
    void noticesChanges_data();
    void noticesChanges();
    void ignoresDamage();
    void ignoresEveryTruncation();
    void ignoresOtherFiles_data();
    void ignoresOtherFiles();
    void isNeverAnError_data();
    void isNeverAnError();
    void isNotWrittenForABadDrawing();
    void isAsOpenAsTheProcessMakesFiles();

private:
    [[nodiscard]] QString path(const char* name) const { return m_folder->filePath(QString::fromUtf8(name)); }
    bool load(SVGParser& parser) const;
    [[nodiscard]] bool isLoadedFromWorkingFile() const;

    static QByteArray contentOf(const QString& path);
    static void write(const QString& path, const QByteArray& content);
    static QString everything(const SVGParser& parser);
    static QString everything(const zel_SingleGraphItem& item);

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_drawing;
    QString m_working;
};

namespace {

int umaskCalls = 0;

} // namespace

// In the place of the system's, also for the library: whoever sets the mask, even for a moment, sets it for all
// threads.
extern "C" __attribute__((visibility("default"))) mode_t umask(mode_t mask) noexcept
{
    ++umaskCalls;
    return static_cast<mode_t>(::syscall(SYS_umask, mask));
}

namespace {

const QByteArray Content
    = "<svg xmlns='http://www.w3.org/2000/svg' xmlns:tovanel='urn:tovanel:chip-drawing' width='30' height='40' "
      "tovanel:initial-scale='2'><metadata><tovanel:layer number='-3' minimum='1' maximum='2'/></metadata><image/>"
      "<g tovanel:layer='-3' tovanel:popup='p\xC3\xA4'><rect id='r' width='1' height='2' stroke='red' "
      "tovanel:flag='true'/>"
      "<polygon tovanel:id='5' points='1,2 3,4 5,7' stroke='blue' stroke-width='2'/></g>"
      "<text x='1' transform='rotate(90)' font-family='Some Font'>A<tspan fill='red'>B\xC3\xA4</tspan></text>"
      "<line x2='5' stroke='red'/></svg>";

} // namespace

void TestSvgWorkingFile::init()
{
    Test::init();
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("with blanks and \u00E4\u4E2D")));
    m_drawing = path("with blanks and \u00E4\u4E2D/dra wing.svg");
    m_working = path("with blanks and \u00E4\u4E2D/zelsvg.temp");
    write(m_drawing, Content);
}

bool TestSvgWorkingFile::load(SVGParser& parser) const
{
    return parser.loadSVGElements(
        QFile::encodeName(m_drawing).toStdString(), QFile::encodeName(m_working).toStdString());
}

// Also checks that the drawing is right, wherever it comes from.
bool TestSvgWorkingFile::isLoadedFromWorkingFile() const
{
    SVGParser plain;
    plain.loadSVGElements(QFile::encodeName(m_drawing).toStdString(), {});
    SVGParser parser;
    if (!load(parser) || everything(parser) != everything(plain))
        qWarning("the drawing is wrong"); // fails the test
    return parser.isLoadedFromWorkingFile();
}

QByteArray TestSvgWorkingFile::contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TestSvgWorkingFile::write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qWarning("cannot write %s", qPrintable(path));
}

QString TestSvgWorkingFile::everything(const SVGParser& parser)
{
    const zel_Parameter parameter = parser.getSVGParameter();
    QString all = QStringLiteral("%1 %2 %3 %4 %5 %6")
                      .arg(parameter.width)
                      .arg(parameter.height)
                      .arg(parameter.initialScale)
                      .arg(parameter.minimumScale)
                      .arg(parameter.maximumScale)
                      .arg(parameter.scaleStep);
    for (const auto& [layer, range] : parameter.layerRanges)
        all += QStringLiteral(" %1:%2-%3").arg(layer).arg(range.minimum).arg(range.maximum);
    for (const std::string& warning : parser.warnings())
        all += QString::fromStdString(warning);
    for (const zel_SingleGraphItem* item : parser.getGraphicItems())
        all += QLatin1Char('\n') + everything(*item);
    return all;
}

QString TestSvgWorkingFile::everything(const zel_SingleGraphItem& item)
{
    QString all = QStringLiteral("%1 %2 %3 %4 ").arg(item.kind).arg(item.id).arg(item.layer).arg(item.flag)
        + QString::fromLatin1(item.name) + QLatin1Char('/') + QString::fromLatin1(item.tooltip) + describe(&item);
    if (const auto* polygon = dynamic_cast<const zel_Polygon*>(&item))
        all += QStringLiteral(" %1 %2").arg(polygon->strokeColor).arg(polygon->strokeWidth);
    if (const auto* text = dynamic_cast<const zel_Text*>(&item)) {
        all += QStringLiteral(" %1 %2 ").arg(text->fontSize).arg(text->rotation)
            + QString::fromStdString(text->fontFamily);
        for (const tspan& span : text->spans)
            all += QStringLiteral(" %1,%2").arg(span.x).arg(span.y) + QString::fromLatin1(span.text.c_str());
    }
    return all;
}

void TestSvgWorkingFile::givesTheSameDrawing()
{
    SVGParser first;
    QVERIFY(load(first));
    QVERIFY(!first.isLoadedFromWorkingFile());
    QVERIFY(first.getGraphicItems().size() > 5);
    SVGParser second;
    QVERIFY(load(second));
    QVERIFY(second.isLoadedFromWorkingFile());
    QCOMPARE(everything(second), everything(first));
    const QStringList names = QDir(QFileInfo(m_working).path()).entryList(QDir::Files | QDir::Hidden);
    QCOMPARE(names, (QStringList{QStringLiteral("dra wing.svg"), QStringLiteral("zelsvg.temp")}));
}

// One after the other, and all together.
void TestSvgWorkingFile::handsItemsOutInTwoWays()
{
    for (bool isFromWorkingFile : {false, true}) {
        SVGParser parser;
        QVERIFY(load(parser));
        QCOMPARE(parser.isLoadedFromWorkingFile(), isFromWorkingFile);
        QStringList visited;
        QStringList all;
        parser.visitGraphicItems([&visited](const zel_SingleGraphItem& item) {
            visited.append(everything(item));
            return true;
        });
        for (const zel_SingleGraphItem* item : parser.getGraphicItems())
            all.append(everything(*item));
        QCOMPARE(visited, all);
        QCOMPARE(parser.graphicItemCount(), parser.getGraphicItems().size());
        int count = 0;
        parser.visitGraphicItems([&count](const zel_SingleGraphItem&) { return ++count < 3; });
        QCOMPARE(count, 3);
    }
}

void TestSvgWorkingFile::noticesChanges_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("keepsTime");
    QTest::newRow("a longer drawing of the same time") << Content + "\n" << true;
    QTest::newRow("another one of the same size and time") << QByteArray(Content).replace("x2='5'", "x2='6'") << true;
    QTest::newRow("the same one of another time") << Content << false;
}

void TestSvgWorkingFile::noticesChanges()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, keepsTime);
    const QDateTime time = QDateTime::fromSecsSinceEpoch(1'700'000'000);
    const auto writeAt = [this](const QByteArray& bytes, const QDateTime& at) {
        write(m_drawing, bytes);
        QFile file(m_drawing);
        return file.open(QIODevice::ReadWrite) && file.setFileTime(at, QFileDevice::FileModificationTime);
    };
    QVERIFY(writeAt(Content, time));
    QVERIFY(!isLoadedFromWorkingFile());
    QVERIFY(isLoadedFromWorkingFile());
    QVERIFY(writeAt(content, keepsTime ? time : time.addSecs(1)));
    QVERIFY(!isLoadedFromWorkingFile());
    QVERIFY(isLoadedFromWorkingFile());
}

// Any bit of the file matters: a flipped one makes it invalid. Each load writes it anew, which takes the file system's
// time, so these two take steps.
void TestSvgWorkingFile::ignoresDamage()
{
    SVGParser parser;
    QVERIFY(load(parser));
    const QByteArray image = contentOf(m_working);
    for (int i = 0; i < image.size(); i += 5) {
        QByteArray damaged = image;
        damaged[i] = static_cast<char>(damaged[i] ^ (1 << i % 8));
        write(m_working, damaged);
        QVERIFY(load(parser));
        QVERIFY2(!parser.isLoadedFromWorkingFile(), qPrintable(QString::number(i)));
    }
    QVERIFY(isLoadedFromWorkingFile()); // the load after the damage has written it anew
}

void TestSvgWorkingFile::ignoresEveryTruncation()
{
    SVGParser parser;
    QVERIFY(load(parser));
    const QByteArray image = contentOf(m_working);
    for (int length = 0; length < image.size(); length += length < 300 ? 7 : 41) {
        write(m_working, image.left(length));
        QVERIFY(load(parser));
        QVERIFY2(!parser.isLoadedFromWorkingFile(), qPrintable(QString::number(length)));
    }
    write(m_working, image + '\0');
    QVERIFY(!isLoadedFromWorkingFile());
}

void TestSvgWorkingFile::ignoresOtherFiles_data()
{
    QTest::addColumn<QByteArray>("other");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray(5000, 'x');
    QTest::newRow("zeros") << QByteArray(5000, '\0');
    QTest::newRow("the drawing itself") << Content;
}

void TestSvgWorkingFile::ignoresOtherFiles()
{
    QFETCH(QByteArray, other);
    write(m_working, other);
    QVERIFY(!isLoadedFromWorkingFile());
    QVERIFY(isLoadedFromWorkingFile());
}

void TestSvgWorkingFile::isNeverAnError_data()
{
    QTest::addColumn<QString>("working");
    QTest::newRow("no name") << QString();
    QTest::newRow("in a missing folder") << QStringLiteral("/nowhere/at/all/zelsvg.temp");
    QTest::newRow("in a folder nobody may write to") << QStringLiteral("/proc/zelsvg.temp");
    QTest::newRow("a folder of that name") << QStringLiteral("/tmp");
    QTest::newRow("a device") << QStringLiteral("/dev/null/x");
}

void TestSvgWorkingFile::isNeverAnError()
{
    QFETCH(QString, working);
    m_working = working;
    QVERIFY(!isLoadedFromWorkingFile());
    QVERIFY(!isLoadedFromWorkingFile());
}

void TestSvgWorkingFile::isNotWrittenForABadDrawing()
{
    write(m_drawing, Content.left(Content.size() - 3));
    SVGParser parser;
    QVERIFY(!load(parser));
    QVERIFY(!QFile::exists(m_working));
}

void TestSvgWorkingFile::isAsOpenAsTheProcessMakesFiles()
{
    const mode_t before = ::umask(0);
    const auto restore = qScopeGuard([before] { ::umask(before); });
    for (const mode_t mask : {0027, 0002, 0077}) {
        ::umask(mask);
        umaskCalls = 0;
        QFile::remove(m_working);
        SVGParser parser;
        QVERIFY(load(parser));
        struct stat status = {};
        QCOMPARE(::stat(QFile::encodeName(m_working).constData(), &status), 0);
        QCOMPARE(status.st_mode & 0777, 0666 & ~mask);
        QCOMPARE(umaskCalls, 0);
    }
}

ZEL_TEST_MAIN(TestSvgWorkingFile)
#include "tst_svgworkingfile.moc"
