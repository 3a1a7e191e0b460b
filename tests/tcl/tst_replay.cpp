// SPDX-License-Identifier: MIT
#include "tests/engine/projectfolder.h"
#include "tests/support/testmain.h"
#include "tests/tcl/changingproject.h"

#include <QTest>

#include <algorithm>

using zeltest::ChangingProject;
using zeltest::Random;
using zeltest::Step;

namespace {

constexpr int LongestSequence = 30;

#ifdef __SANITIZE_ADDRESS__
constexpr int SequencesOfEach = 500;
#else
constexpr int SequencesOfEach = 5000;
#endif

// Everything that the rules know, and parts of it fixed: an IP inside an IP, clocks that feed each other's IPs, removed
// things inside removed things.
const char* const Tangle = R"([
  {"name": "outer", "type": "IP", "children": [
    {"name": "a", "type": "DCUCHANNEL", "site": "U0_CH0", "fixed": true},
    {"name": "b", "type": "DCUCHANNEL"},
    {"name": "inner", "type": "IP", "children": [
      {"name": "c", "type": "DCUCHANNEL"},
      {"name": "ref", "type": "EXTREF", "feeds": ["outer"]}]},
    {"name": "pll", "type": "PLL", "site": "PLL_EDGE"}]},
  {"name": "my group", "children": [
    {"name": "h", "children": [
      {"name": "duo", "type": "IP", "rate": 5, "children": [
        {"name": "a", "type": "DCUCHANNEL"}, {"name": "b", "type": "DCUCHANNEL"},
        {"name": "ref", "type": "EXTREF", "site": "REF_R", "fixed": true}]},
      {"name": "core", "type": "PLL", "site": "PLL_CORE", "fixed": true}]},
    {"name": "shared", "type": "PLL", "feeds": ["outer/inner", "my group/h/duo"]},
    {"name": "v33", "type": "UVCCIO", "voltage": "3.3 V", "site": "V0_1", "fixed": true}]},
  {"name": "ref", "type": "EXTREF", "feeds": ["my group/h/duo"]},
  {"name": "a[1]{$x}", "type": "DCUCHANNEL"},
  {"name": "spare", "type": "PLL", "frequency": 62.5},
  {"name": "v18", "type": "UVCCIO", "voltage": "1.8 V"},
  {"name": "v33b", "type": "UVCCIO", "voltage": "3.3 V"},
  {"name": "vany", "type": "UVCCIO"}
])";

// Takes random steps, then opens the project without having saved it, saves it and opens it again. Returns the steps up
// to the one that goes wrong; none when all is well.
std::vector<Step> stepsThatGoWrong(ChangingProject& project, unsigned int seed)
{
    static const std::vector<Step::Kind> end{Step::Kind::Reopen, Step::Kind::Save, Step::Kind::Reopen};
    Random random(seed);
    project.startOver();
    project.chooseFew(random);
    std::vector<Step> steps;
    const auto count = static_cast<std::size_t>(1 + random.below(LongestSequence));
    while (steps.size() < count + end.size()) {
        steps.push_back(steps.size() < count ? project.randomStep(random) : Step(end[steps.size() - count]));
        if (!project.perform(steps.back()).isEmpty())
            return steps;
    }
    return {};
}

// What goes wrong when the steps are taken; empty: nothing does.
QString faultOf(ChangingProject& project, const std::vector<Step>& steps)
{
    project.startOver();
    for (const Step& step : steps) {
        const QString fault = project.perform(step);
        if (!fault.isEmpty())
            return step.text() + QStringLiteral(": ") + fault;
    }
    return {};
}

// Without each part that is not needed to go wrong: large ones first, then single steps.
std::vector<Step> shortened(ChangingProject& project, std::vector<Step> steps)
{
    for (std::size_t length = std::max<std::size_t>(steps.size() / 2, 1); length > 0; length /= 2) {
        for (std::size_t from = 0; from < steps.size();) {
            std::vector<Step> shorter = steps;
            const auto first = shorter.begin() + static_cast<std::ptrdiff_t>(from);
            shorter.erase(first, first + static_cast<std::ptrdiff_t>(std::min(length, steps.size() - from)));
            if (faultOf(project, shorter).isEmpty()) {
                ++from;
            } else {
                steps = std::move(shorter);
                from = 0;
            }
        }
    }
    return steps;
}

QString told(unsigned int seed, const std::vector<Step>& steps, const QString& fault)
{
    QStringList lines{QStringLiteral("ZEL_REPLAY_SEED=%1").arg(seed)};
    for (const Step& step : steps)
        lines.append(step.text());
    lines.append(QStringLiteral("goes wrong at ") + fault);
    return lines.join(QStringLiteral("\n    "));
}

} // namespace

// What the editor accepts is the same after the next opening, saved or not, whatever was done before. The seed of a
// sequence that goes wrong is printed with the shortest part of it that still does; ZEL_REPLAY_SEED takes it alone,
// ZEL_REPLAY_SEQUENCES says how many there are to be.
class TestReplay : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void acceptedChangesAreThereAgain_data();
    void acceptedChangesAreThereAgain();

private:
    ProjectFolder m_tangle;
};

void TestReplay::acceptedChangesAreThereAgain_data()
{
    m_tangle.write(QStringLiteral("design.json"), designWith(Tangle));
    QTest::addColumn<QString>("folder");
    QTest::newRow("sample project") << QStringLiteral(ZEL_SAMPLE_FOLDER);
    QTest::newRow("small device, tangled design") << m_tangle.path();
}

void TestReplay::acceptedChangesAreThereAgain()
{
    QFETCH(QString, folder);
    ChangingProject project(folder);
    bool isOne = false;
    const unsigned int only = qEnvironmentVariable("ZEL_REPLAY_SEED").toUInt(&isOne);
    bool isCounted = false;
    const int wanted = qEnvironmentVariableIntValue("ZEL_REPLAY_SEQUENCES", &isCounted);
    const int count = isOne ? 1 : isCounted ? wanted : SequencesOfEach;
    for (int i = 0; i < count; ++i) {
        const unsigned int seed = isOne ? only : static_cast<unsigned int>(i);
        const std::vector<Step> steps = stepsThatGoWrong(project, seed);
        if (steps.empty())
            continue;
        const std::vector<Step> shortest = shortened(project, steps);
        QFAIL(qPrintable(told(seed, shortest, faultOf(project, shortest))));
    }
}

ZEL_TEST_MAIN(TestReplay)
#include "tst_replay.moc"
