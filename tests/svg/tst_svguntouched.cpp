// SPDX-License-Identifier: MIT
#include "platform/svg/reading/drawingreader.h"
#include "platform/svg/workingfile/workingfile.h"
#include "tests/support/testmain.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>

// When a drawing with a working file has to be read for its hash, and when the file system's word for it is enough.
class TestSvgUntouched : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void readsOnlyWhatMayHaveChanged_data();
    void readsOnlyWhatMayHaveChanged();

public:
    enum Deed { Nothing, ChangeRights, ReplaceByCopy, ChangeContent };

private:
    struct Outcome
    {
        bool isLoaded;
        bool isRead;
    };

    [[nodiscard]] Outcome load(int secondsToSettle) const;
    void save(int secondsToSettle) const;
    void touch(Deed deed) const;
    void write(const QByteArray& content) const;
    [[nodiscard]] struct stat status() const;
    void setTime(const struct timespec& modified) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::string m_drawing;
    std::string m_working;
};

namespace {

const QByteArray Content = "<svg><rect width='1' height='1'/></svg>";
constexpr int AtOnce = -1; // the clock that stamps files may be ahead of ours
constexpr int InAnHour = 3600;

} // namespace

void TestSvgUntouched::init()
{
    Test::init();
    m_folder = std::make_unique<QTemporaryDir>();
    m_drawing = m_folder->filePath(QStringLiteral("drawing.svg")).toStdString();
    m_working = m_folder->filePath(QStringLiteral("zelsvg.temp")).toStdString();
    write(Content);
}

void TestSvgUntouched::write(const QByteArray& content) const
{
    QFile file(QString::fromStdString(m_drawing));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), static_cast<qint64>(content.size()));
}

struct stat TestSvgUntouched::status() const
{
    struct stat result = {};
    ::stat(m_drawing.c_str(), &result);
    return result;
}

void TestSvgUntouched::setTime(const struct timespec& modified) const
{
    const struct timespec times[] = {modified, modified};
    QCOMPARE(::utimensat(AT_FDCWD, m_drawing.c_str(), times, 0), 0);
}

// Leaves size and time as they are.
void TestSvgUntouched::touch(Deed deed) const
{
    const struct stat before = status();
    struct stat after = before;
    // File systems need not tell two moments apart that follow each other closely.
    while (deed != Nothing && after.st_ctim.tv_sec == before.st_ctim.tv_sec
        && after.st_ctim.tv_nsec == before.st_ctim.tv_nsec) {
        if (deed == ReplaceByCopy)
            QVERIFY(QFile::remove(QString::fromStdString(m_drawing)));
        if (deed == ChangeRights)
            QCOMPARE(::chmod(m_drawing.c_str(), 0600), 0);
        else
            write(deed == ChangeContent ? QByteArray(Content).replace("width='1'", "width='2'") : Content);
        setTime(before.st_mtim);
        after = status();
    }
}

TestSvgUntouched::Outcome TestSvgUntouched::load(int secondsToSettle) const
{
    zelsvg::DrawingFile file(secondsToSettle);
    zelsvg::Drawing drawing;
    std::string reason;
    const bool isLoaded = file.open(m_drawing, reason) && zelsvg::WorkingFile(m_working).load(file, drawing);
    return {isLoaded, file.isComplete()};
}

void TestSvgUntouched::save(int secondsToSettle) const
{
    zelsvg::DrawingFile file(secondsToSettle);
    zelsvg::Diagnostics diagnostics(m_drawing);
    zelsvg::Drawing drawing;
    std::string reason;
    QVERIFY(file.open(m_drawing, reason));
    readDrawing(file, diagnostics, zelsvg::Limits(), drawing);
    zelsvg::WorkingFile(m_working).save(file.key(), drawing);
}

void TestSvgUntouched::readsOnlyWhatMayHaveChanged_data()
{
    QTest::addColumn<int>("secondsToSettle");
    QTest::addColumn<int>("deed");
    QTest::addColumn<bool>("isLoaded");
    QTest::addColumn<bool>("isRead");
    QTest::newRow("untouched") << AtOnce << int(Nothing) << true << false;
    QTest::newRow("untouched, but changed shortly before") << InAnHour << int(Nothing) << true << true;
    QTest::newRow("touched, but the same") << AtOnce << int(ChangeRights) << true << true;
    QTest::newRow("replaced by a copy") << AtOnce << int(ReplaceByCopy) << true << true;
    QTest::newRow("changed behind its size and time") << AtOnce << int(ChangeContent) << false << true;
}

void TestSvgUntouched::readsOnlyWhatMayHaveChanged()
{
    QFETCH(int, secondsToSettle);
    QFETCH(int, deed);
    QFETCH(bool, isLoaded);
    QFETCH(bool, isRead);
    save(secondsToSettle);
    touch(static_cast<Deed>(deed));
    const Outcome first = load(secondsToSettle);
    QCOMPARE(first.isLoaded, isLoaded);
    QCOMPARE(first.isRead, isRead);
    // What was read once need not be read again, unless it is still too new.
    const Outcome second = load(secondsToSettle);
    QCOMPARE(second.isLoaded, isLoaded);
    QCOMPARE(second.isRead, secondsToSettle == InAnHour || !isLoaded);
}

ZEL_TEST_MAIN(TestSvgUntouched)
#include "tst_svguntouched.moc"
