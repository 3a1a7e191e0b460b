// SPDX-License-Identifier: MIT
#include "platform/svg/reading/drawingreader.h"
#include "platform/svg/workingfile/workingfile.h"
#include "tests/svg/drawing.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QTextStream>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

int umaskCalls = 0;

const QByteArray Content
    = "<svg xmlns='http://www.w3.org/2000/svg' xmlns:tovanel='urn:tovanel:chip-drawing' width='30' height='40' "
      "tovanel:initial-scale='2'><metadata><tovanel:layer number='-3' minimum='1' maximum='2'/></metadata><image/><g "
      "tovanel:layer='-3' tovanel:popup='p\xC3\xA4'><rect id='r' width='1' height='2' stroke='red' "
      "tovanel:flag='true'/><polygon tovanel:id='5' points='1,2 3,4 5,7' stroke='blue' stroke-width='2'/></g><text "
      "x='1' transform='rotate(90)' font-family='Some Font'>A<tspan fill='red'>B\xC3\xA4</tspan></text><line x2='5' "
      "stroke='red'/></svg>";

} // namespace

// This takes the place of the system's function, in the library too: whoever sets the mask for a moment sets it for all
// threads.
extern "C" __attribute__((visibility("default"))) mode_t umask(mode_t mask) noexcept
{
    ++umaskCalls;
    return static_cast<mode_t>(::syscall(SYS_umask, mask));
}

// The image of the records that spares the next load the parsing.
class TestSvgWorkingFile : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        Test::init();
        m_folder = std::make_unique<QTemporaryDir>();
        const QString inside = m_folder->filePath("with blanks and \u00E4\u4E2D");
        QVERIFY(QDir().mkdir(inside));
        m_drawing = inside + "/dra wing.svg";
        m_working = inside + "/zelsvg.temp";
        zeltest::writeFile(m_drawing, Content);
    }

    // The items come one after the other, and all together.
    void handsItemsOutInTwoWays()
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
        const QStringList names = QDir(QFileInfo(m_working).path()).entryList(QDir::Files | QDir::Hidden);
        QCOMPARE(names, (QStringList{"dra wing.svg", "zelsvg.temp"}));
    }

    // Any bit of the file matters, and each is there. Each load writes it anew, which takes the file system's time, so
    // these take steps.
    void ignoresDamage()
    {
        const auto isIgnored = [this](const QByteArray& image) {
            zeltest::writeFile(m_working, image);
            SVGParser parser;
            return load(parser) && !parser.isLoadedFromWorkingFile();
        };
        QVERIFY(isIgnored({}));
        QFile file(m_working);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray image = file.readAll();
        for (int i = 0; i < image.size(); i += 5) {
            QByteArray damaged = image;
            damaged[i] = static_cast<char>(damaged[i] ^ (1 << i % 8));
            QVERIFY2(isIgnored(damaged), qPrintable(QString::number(i)));
        }
        for (int length = 0; length < image.size(); length += length < 300 ? 7 : 41)
            QVERIFY2(isIgnored(image.left(length)), qPrintable(QString::number(length)));
        for (const QByteArray& other : {image + '\0', QByteArray(5000, 'x'), QByteArray(5000, '\0'), Content})
            QVERIFY(isIgnored(other));
        QVERIFY(isLoadedFromWorkingFile()); // the load after the damage has written it anew
    }

    void isNeverAnErrorNorWrittenForABadDrawing()
    {
        const QString good = m_working;
        for (const char* working : {"", "/nowhere/at/all/zelsvg.temp", "/proc/zelsvg.temp", "/tmp", "/dev/null/x"}) {
            m_working = QString::fromLatin1(working);
            QVERIFY(!isLoadedFromWorkingFile());
            QVERIFY(!isLoadedFromWorkingFile());
        }
        m_working = good;
        zeltest::writeFile(m_drawing, Content.left(Content.size() - 3));
        SVGParser parser;
        QVERIFY(!load(parser));
        QVERIFY(!QFile::exists(m_working));
    }

    // A drawing is read for its hash only when the file system's word for it is not enough.
    void readsOnlyWhatMayHaveChanged_data()
    {
        const Rows<int, int, bool, bool> row;
        row("untouched", AtOnce, Nothing, true, false);
        row("untouched, but changed shortly before", InAnHour, Nothing, true, true);
        row("touched, but the same", AtOnce, ChangeRights, true, true);
        row("replaced by a copy", AtOnce, ReplaceByCopy, true, true);
        row("changed behind its size and time", AtOnce, ChangeContent, false, true);
        row("longer, of the same time", AtOnce, MakeLonger, false, false);
        row("the same, of another time", AtOnce, ChangeTime, false, false);
    }

    void readsOnlyWhatMayHaveChanged()
    {
        const auto [secondsToSettle, deed, isLoaded, isRead] = row<int, int, bool, bool>();
        save(secondsToSettle);
        touch(static_cast<Deed>(deed));
        const Outcome first = load(secondsToSettle);
        QCOMPARE(first.isLoaded, isLoaded);
        QCOMPARE(first.isRead, isRead);
        // A drawing that was read once need not be read again, unless it is still too new.
        const Outcome second = load(secondsToSettle);
        QCOMPARE(second.isLoaded, isLoaded);
        QCOMPARE(second.isRead, secondsToSettle == InAnHour || (isRead && !isLoaded));
    }

    void isAsOpenAsTheProcessMakesFiles()
    {
        const mode_t before = ::umask(0);
        const auto restore = qScopeGuard([before] { ::umask(before); });
        for (const mode_t mask : {0027, 0002, 0077}) {
            ::umask(mask);
            umaskCalls = 0;
            QFile::remove(m_working);
            SVGParser parser;
            QVERIFY(load(parser));
            QCOMPARE(statusOf(m_working).st_mode & 0777, 0666 & ~mask);
            QCOMPARE(umaskCalls, 0);
        }
    }

private:
    enum Deed { Nothing, ChangeRights, ReplaceByCopy, ChangeContent, MakeLonger, ChangeTime };
    static constexpr int AtOnce = -1; // the clock that stamps files may be ahead of ours
    static constexpr int InAnHour = 3600;

    struct Outcome
    {
        bool isLoaded;
        bool isRead;
    };

    [[nodiscard]] Outcome load(int secondsToSettle) const
    {
        mirn::zelsvg::DrawingFile file(secondsToSettle);
        mirn::zelsvg::Drawing drawing;
        std::string reason;
        const bool isLoaded
            = file.open(bytes(m_drawing), reason) && mirn::zelsvg::WorkingFile(bytes(m_working)).load(file, drawing);
        return {isLoaded, file.isComplete()};
    }

    void save(int secondsToSettle) const
    {
        mirn::zelsvg::DrawingFile file(secondsToSettle);
        mirn::zelsvg::Diagnostics diagnostics(bytes(m_drawing));
        mirn::zelsvg::Drawing drawing;
        std::string reason;
        QVERIFY(file.open(bytes(m_drawing), reason));
        readDrawing(file, diagnostics, mirn::zelsvg::Limits(), drawing);
        mirn::zelsvg::WorkingFile(bytes(m_working)).save(file.key(), drawing);
    }

    // Leaves size and time as they are, unless they are to change.
    void touch(Deed deed) const
    {
        const struct stat before = statusOf(m_drawing);
        struct stat after = before;
        // File systems need not tell two moments apart that follow each other closely.
        while (deed != Nothing && after.st_ctim.tv_sec == before.st_ctim.tv_sec
            && after.st_ctim.tv_nsec == before.st_ctim.tv_nsec) {
            if (deed == ReplaceByCopy)
                QVERIFY(QFile::remove(m_drawing));
            if (deed == ChangeRights)
                QCOMPARE(::chmod(bytes(m_drawing).c_str(), 0600), 0);
            else if (deed == ChangeContent)
                zeltest::writeFile(m_drawing, QByteArray(Content).replace("x2='5'", "x2='6'"));
            else
                zeltest::writeFile(m_drawing, deed == MakeLonger ? Content + '\n' : Content);
            struct timespec times[] = {before.st_mtim, before.st_mtim};
            times[1].tv_sec += deed == ChangeTime ? 1 : 0;
            QCOMPARE(::utimensat(AT_FDCWD, bytes(m_drawing).c_str(), times, 0), 0);
            after = statusOf(m_drawing);
        }
    }

    static std::string bytes(const QString& path) { return QFile::encodeName(path).toStdString(); }

    static struct stat statusOf(const QString& path)
    {
        struct stat status = {};
        ::stat(bytes(path).c_str(), &status);
        return status;
    }

    bool load(SVGParser& parser) const { return parser.loadSVGElements(bytes(m_drawing), bytes(m_working)); }

    // Checks as well that the drawing is right, wherever it comes from.
    [[nodiscard]] bool isLoadedFromWorkingFile() const
    {
        SVGParser plain;
        plain.loadSVGElements(bytes(m_drawing), {});
        SVGParser parser;
        if (!load(parser) || everything(parser) != everything(plain))
            qWarning("the drawing is wrong"); // fails the test
        return parser.isLoadedFromWorkingFile();
    }

    static QString everything(const SVGParser& parser)
    {
        const zel_Parameter p = parser.getSVGParameter();
        QString all;
        QTextStream out(&all);
        for (double value : {p.width, p.height, p.initialScale, p.minimumScale, p.maximumScale, p.scaleStep})
            out << value << ' ';
        for (const auto& [layer, range] : p.layerRanges)
            out << layer << ':' << range.minimum << '-' << range.maximum << ' ';
        for (const std::string& warning : parser.warnings())
            out << warning.c_str();
        for (const zel_SingleGraphItem* item : parser.getGraphicItems())
            out << '\n' << everything(*item);
        return all;
    }

    static QString everything(const zel_SingleGraphItem& item)
    {
        QString all;
        QTextStream out(&all);
        out << item.kind << ' ' << item.id << ' ' << item.layer << ' ' << item.flag << ' '
            << QString::fromLatin1(item.name) << '/' << QString::fromLatin1(item.tooltip) << describe(&item);
        if (const auto* polygon = dynamic_cast<const zel_Polygon*>(&item))
            out << ' ' << polygon->strokeColor << ' ' << polygon->strokeWidth;
        if (const auto* text = dynamic_cast<const zel_Text*>(&item)) {
            out << ' ' << text->fontSize << ' ' << text->rotation << ' ' << text->fontFamily.c_str();
            for (const tspan& span : text->spans)
                out << ' ' << span.x << ',' << span.y << QString::fromLatin1(span.text.c_str());
        }
        return all;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_drawing;
    QString m_working;
};

ZEL_TEST_MAIN(TestSvgWorkingFile)
#include "tst_svgworkingfile.moc"
