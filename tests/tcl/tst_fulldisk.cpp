// SPDX-License-Identifier: MIT
#include "tests/support/testmain.h"
#include "tests/tcl/editedproject.h"

#include <QTest>

#include <cerrno>

using namespace zeltest;

namespace {

enum class Trouble {
    OneCall, // the disk is full for a moment
    AllCalls, // it stays full
    HalfAWrite, // it fills up in the middle of a write and stays full
    OneRead, // one call fails, and reading is among those that may
    KillBefore, // the program ends, and nothing that it asks for from then on happens
    KillAfter, // this still happens
};

// A disk in trouble from the n-th call on that changes something.
class FailingFileLayer final : public FileLayer
{
public:
    FailingFileLayer(Trouble trouble, int callsBefore)
        : m_trouble(trouble)
        , m_callsBefore(callsBefore)
    { }

    [[nodiscard]] bool wasReached() const { return m_calls > m_callsBefore; }

    int open(const char* name, int flags) override
    {
        return call([&] { return FileLayer::open(name, flags); });
    }
    long read(int file, char* bytes, std::size_t size) override
    {
        return m_trouble == Trouble::OneRead ? call([&] { return FileLayer::read(file, bytes, size); })
                                             : FileLayer::read(file, bytes, size);
    }
    long write(int file, const char* bytes, std::size_t size) override
    {
        if (m_calls == m_callsBefore && m_trouble == Trouble::HalfAWrite) {
            ++m_calls;
            return FileLayer::write(file, bytes, size / 2);
        }
        return call([&] { return FileLayer::write(file, bytes, size); });
    }
    int sync(int) override
    {
        return call([] { return 0; }); // no power is cut here
    }
    int truncate(int file, long size) override
    {
        return call([&] { return FileLayer::truncate(file, size); });
    }
    int rename(const char* from, const char* to) override
    {
        return call([&] { return FileLayer::rename(from, to); });
    }
    int link(const char* from, const char* to) override
    {
        return call([&] { return FileLayer::link(from, to); });
    }
    int unlink(const char* name) override
    {
        const bool isAlive = !wasReached() || (m_trouble != Trouble::KillBefore && m_trouble != Trouble::KillAfter);
        return isAlive ? FileLayer::unlink(name) : -1; // needs no room
    }

private:
    template <typename Function> auto call(const Function& function) -> decltype(function())
    {
        const int number = m_calls++;
        const bool isDone = number < m_callsBefore
            || (number > m_callsBefore && (m_trouble == Trouble::OneCall || m_trouble == Trouble::OneRead))
            || (number == m_callsBefore && m_trouble == Trouble::KillAfter);
        const auto result = isDone ? function() : -1;
        errno = isDone ? errno : ENOSPC;
        return result;
    }

    const Trouble m_trouble;
    const int m_callsBefore;
    int m_calls = 0;
};

// Saves in between and undoes what was saved.
QStringList workingDay()
{
    QStringList script = EachKind;
    script.insert(4, "save");
    script.insert(14, "undo"); // a removal of something locked
    return script + QStringList{"save", "undo", "undo", "save", "save", "redo"};
}

} // namespace

// Whatever the disk refuses, the answer says so, and everything else is there when the project is opened again.
class TestFullDisk : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void everyCallMayFail_data()
    {
        const Rows<Trouble, bool> row; // true where the program ends as well
        row("for a moment", Trouble::OneCall, false);
        row("from then on", Trouble::AllCalls, false);
        row("in the middle of a write", Trouble::HalfAWrite, false);
        row("the program ends before it is done", Trouble::KillBefore, true);
        row("the program ends in the middle of a write", Trouble::HalfAWrite, true);
        row("the program ends when it is done", Trouble::KillAfter, true);
    }

    // When the program ends, the change of the command without an answer may be there or not.
    void everyCallMayFail()
    {
        const auto [trouble, isEnd] = row<Trouble, bool>();
        bool wasReached = true;
        int call = 0;
        for (; wasReached; ++call) {
            EditedProject project;
            FailingFileLayer files(trouble, call);
            project.open(files);
            EditedProject untroubled;
            int refusals = 0;
            QList<QStringList> mayBe{project.state()};
            for (const QString& command : workingDay()) {
                const QString answer = project.run(command);
                if (isEnd) {
                    (void)untroubled.run(command);
                    mayBe = QList<QStringList>{mayBe.last(), untroubled.state()};
                    if (files.wasReached())
                        break;
                } else if (answer.isEmpty()) {
                    mayBe = {project.state()};
                } else {
                    // Later commands may be refused because this one was.
                    if (refusals++ == 0)
                        QVERIFY2(answer.contains("No space left on device"), qPrintable(answer));
                    QCOMPARE(project.state(), mayBe.last());
                }
            }
            wasReached = files.wasReached();
            const QString said = project.open().join("; ");
            QVERIFY2(mayBe.contains(project.state()), qPrintable(QString("call %1: %2").arg(call).arg(said)));
            QVERIFY2(!said.contains("another state"), qPrintable(said));
        }
        QVERIFY(call > 40); // all of them were tried
    }

    void whatCannotBeReadIsNotOverwritten()
    {
        EditedProject project;
        QCOMPARE(project.run({EachKind[0], EachKind[1], "save", EachKind[2], EachKind[3]}), QString());
        const QStringList state = project.state();
        for (int call = 0; call < 4; ++call) { // each file is read in one piece, and then its end
            FailingFileLayer files(Trouble::OneRead, call);
            const QString said = project.open(files).join("");
            QVERIFY2(said.contains("cannot be read: No space left on device"), qPrintable(said));
            for (const QString& command : QStringList{EachKind[5], "save"}) {
                const QString answer = project.run(command);
                QVERIFY(answer.contains("cannot be read: ") || answer.contains("cannot be kept in "));
            }
            project.open();
            QCOMPARE(project.state(), state);
        }
    }
};

ZEL_TEST_MAIN(TestFullDisk)
#include "tst_fulldisk.moc"
