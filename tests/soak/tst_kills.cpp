// SPDX-License-Identifier: MIT
#include "tests/soak/killround.h"
#include "tests/soak/sharedround.h"
#include "tests/support/shortened.h"
#include "tests/support/testmain.h"

#include <QRandomGenerator>
#include <QTest>

#include <cstdio>

#include <sys/mount.h>

using namespace soak;

namespace {

constexpr qint64 Second = 1000; // ms
constexpr qint64 LongestShrinking = 60 * Second;

void say(const QByteArray& text)
{
    std::printf("%s\n", text.constData());
    std::fflush(stdout);
}

} // namespace

// Whatever was confirmed is there, whenever the program is killed, whatever the disk refuses, and whoever else has the
// project. ZEL_SOAK_MINUTES says how long the test takes, ZEL_SOAK_SEED where its random numbers begin.
class TestKills : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void killedAtAnyMoment()
    {
        KillRound round;
        campaign("killed at any moment", 55, round);
    }

    void twoProgramsOnOneProject()
    {
        SharedRound round;
        campaign("two programs on one project", 20, round);
    }

    void diskIsFull()
    {
        const QTemporaryDir folder;
        const Room room = smallDisk(folder.path());
        if (!room.leave) {
            say("SKIP: no small file system can be mounted here to be filled");
            QSKIP("needs to be root");
        }
        {
            KillRound round(room, folder.path());
            campaign("the disk is full", 15, round);
        }
        ::umount2(QFile::encodeName(folder.path()).constData(), MNT_DETACH);
    }

    void filesMayNotGrow()
    {
        KillRound round(fileSizeLimit());
        campaign("files may not grow", 10, round);
    }

private:
    // Runs random rounds for a share of the time in percent.
    void campaign(const char* name, int share, Round& round)
    {
        QElapsedTimer timer;
        timer.start();
        unsigned int seed = m_seed;
        for (; timer.elapsed() < m_minutes * 60 * Second * share / 100; ++seed) {
            zeltest::Random random(seed);
            const QByteArrayList steps = round.randomSteps(random);
            const QByteArray problem = round.run(steps);
            if (problem.isEmpty())
                continue;
            const QByteArrayList made = round.made(steps);
            const auto goesWrong = [&](const QByteArrayList& fewer) { return !round.runAgain(fewer).isEmpty(); };
            const bool isRepeatable = goesWrong(made);
            const QByteArrayList shown = isRepeatable ? zeltest::shortened(made, goesWrong, LongestShrinking) : made;
            const QByteArray report = "ZEL_SOAK_SEED=" + QByteArray::number(seed) + ", after "
                + QByteArray::number(timer.elapsed() / Second) + " s: " + problem
                + (isRepeatable ? "\nthe shortest sequence:\n    " : "\nonly at some moment of this sequence:\n    ")
                + shown.join("\n    ") + (isRepeatable ? "\nwhere: " + round.runAgain(shown) : QByteArray());
            QFAIL(report.constData());
        }
        say(QByteArray(name) + ", seeds " + QByteArray::number(m_seed) + " to " + QByteArray::number(seed - 1) + ": "
            + round.figures());
    }

    const unsigned int m_seed = qEnvironmentVariableIsSet("ZEL_SOAK_SEED")
        ? qEnvironmentVariable("ZEL_SOAK_SEED").toUInt()
        : QRandomGenerator::global()->generate() / 2;
    const double m_minutes = qEnvironmentVariable("ZEL_SOAK_MINUTES", "0.33").toDouble(); // of all campaigns together
};

ZEL_TEST_MAIN(TestKills)
#include "tst_kills.moc"
