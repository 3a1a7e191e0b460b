// SPDX-License-Identifier: MIT
#include "tests/soak/killround.h"
#include "tests/soak/roomround.h"
#include "tests/soak/sharedround.h"
#include "tests/support/testmain.h"

#include <QDir>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

using namespace soak;

namespace {

constexpr qint64 Second = 1000; // ms
constexpr qint64 ShortRun = 20 * Second; // of all campaigns together
constexpr qint64 LongestShrinking = 60 * Second;

void say(const QByteArray& text)
{
    std::printf("%s\n", text.constData());
    std::fflush(stdout);
}

QByteArray text(const Figures& figures)
{
    return QStringLiteral(
        "%1 rounds, %2 kills (%3 before the project was open, %4 with a command in flight), %5 damaged "
        "journals, %6 states compared, %7 commands confirmed, %8 refused for want of room or because "
        "of the other program")
        .arg(figures.rounds)
        .arg(figures.kills)
        .arg(figures.killsOpening)
        .arg(figures.killsInFlight)
        .arg(figures.damages)
        .arg(figures.states)
        .arg(figures.confirmed)
        .arg(figures.refusals)
        .toUtf8();
}

} // namespace

// What was confirmed is there, whenever the program is killed, whatever the disk refuses, and whoever else has the
// project. ZEL_SOAK_MINUTES says how long all of it takes, ZEL_SOAK_SEED where its random numbers begin.
class TestKills : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void killedAtAnyMoment();
    void twoProgramsOnOneProject();
    void diskIsFull();
    void filesMayNotGrow();

private:
    using MakeSteps = std::function<Steps(zeltest::Random&)>;
    // For a share of the time in percent.
    void campaign(const char* name, int share, const Figures& figures, const MakeSteps& makeSteps, const Trial& trial,
        const std::function<Steps(const Steps&)>& made = {}, const Trial& again = {});

    unsigned int m_seed = 0;
    qint64 m_time = ShortRun;
    qint64 m_shrinking = LongestShrinking;
    QTemporaryDir m_folder;
    QString m_script;
    const Plan m_plan{QStringLiteral(ZEL_SAMPLE_FOLDER)};
};

void TestKills::initTestCase()
{
    m_seed = qEnvironmentVariableIsSet("ZEL_SOAK_SEED") ? qEnvironmentVariable("ZEL_SOAK_SEED").toUInt()
                                                        : QRandomGenerator::global()->generate() / 2;
    bool isGiven = false;
    const double minutes = qEnvironmentVariable("ZEL_SOAK_MINUTES").toDouble(&isGiven);
    if (isGiven)
        m_time = static_cast<qint64>(minutes * 60 * Second);
    m_script = m_folder.filePath(QStringLiteral("soak.tcl"));
    QFile file(m_script);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(SoakProgram::script()) > 0);
}

void TestKills::campaign(const char* name, int share, const Figures& figures, const MakeSteps& makeSteps,
    const Trial& trial, const std::function<Steps(const Steps&)>& made, const Trial& again)
{
    QElapsedTimer timer;
    timer.start();
    unsigned int seed = m_seed;
    for (; timer.elapsed() < m_time * share / 100; ++seed) {
        zeltest::Random random(seed);
        const Steps steps = makeSteps(random);
        const QByteArray problem = trial(steps);
        if (problem.isEmpty())
            continue;
        const Steps done = made ? made(steps) : steps;
        const Trial& repeated = again ? again : trial;
        const bool isRepeatable = !repeated(done).isEmpty();
        const Steps fewer = isRepeatable ? shortest(done, repeated, m_shrinking) : done;
        const QByteArray report = QByteArray("ZEL_SOAK_SEED=") + QByteArray::number(seed) + ", after "
            + QByteArray::number(timer.elapsed() / Second) + " s: " + problem
            + (isRepeatable ? "\nthe shortest sequence:\n" : "\nonly at some moment of this sequence:\n")
            + soak::text(fewer) + (isRepeatable ? "where: " + repeated(fewer) : QByteArray());
        QFAIL(report.constData());
    }
    say(QByteArray(name) + ", seeds " + QByteArray::number(m_seed) + " to " + QByteArray::number(seed - 1) + ": "
        + text(figures));
}

void TestKills::killedAtAnyMoment()
{
    const SampleProject project;
    Figures figures;
    Figures again;
    KillRound round(project, m_script, m_plan, figures);
    KillRound repeated(project, m_script, m_plan, again);
    campaign(
        "killed at any moment", 55, figures,
        [&](zeltest::Random& random) { return KillRound::randomSteps(m_plan, random); },
        [&](const Steps& steps) { return round.run(steps, KillRound::Moments::Random); },
        [&](const Steps&) { return round.made(); },
        [&](const Steps& steps) { return repeated.run(steps, KillRound::Moments::AfterTheLastAnswer); });
}

void TestKills::twoProgramsOnOneProject()
{
    const SampleProject project;
    Figures figures;
    SharedRound round(project, m_script, m_plan, figures);
    campaign(
        "two programs on one project", 20, figures,
        [&](zeltest::Random& random) { return SharedRound::randomSteps(m_plan, random); },
        [&](const Steps& steps) { return round.run(steps); });
}

void TestKills::diskIsFull()
{
    const QTemporaryDir folder;
    SmallDisk disk;
    if (!disk.mount(folder.path())) {
        say("SKIP: no small file system can be mounted here to be filled");
        QSKIP("needs to be root");
    }
    Figures figures;
    const SampleProject project(folder.path());
    RoomRound round(project, m_script, m_plan, disk, figures);
    campaign(
        "the disk is full", 15, figures,
        [&](zeltest::Random& random) { return RoomRound::randomSteps(m_plan, random); },
        [&](const Steps& steps) { return round.run(steps); });
}

void TestKills::filesMayNotGrow()
{
    const SampleProject project;
    FileSizeLimit limit;
    Figures figures;
    RoomRound round(project, m_script, m_plan, limit, figures);
    campaign(
        "files may not grow", 10, figures,
        [&](zeltest::Random& random) { return RoomRound::randomSteps(m_plan, random); },
        [&](const Steps& steps) { return round.run(steps); });
}

ZEL_TEST_MAIN(TestKills)
#include "tst_kills.moc"
