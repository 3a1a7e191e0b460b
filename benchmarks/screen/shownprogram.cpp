// SPDX-License-Identifier: MIT
#include "benchmarks/screen/shownprogram.h"

#include "benchmarks/subjects/designproject.h"
#include "generator/benchmarkdrawing.h"
#include "tests/program/virtualscreen.h"

#include <sys/resource.h>

#include <algorithm>
#include <ctime>

using zelbench::DesignProject;

namespace zelscreen {

namespace {

constexpr int Sites = 10000;
constexpr int Supplies = 16; // so few that all rows of the tree are in sight
constexpr int PlacedSupplies = 8;
constexpr int StartMilliseconds = 120'000; // of patience
constexpr int EndMilliseconds = 60'000;

// Places resources, and writes where everything is that the pointer will be at.
QByteArray script(const DesignProject& project, int elements)
{
    QByteArray text = "cd {" + project.path().toUtf8() + "}\n";
    for (int n = 0; n < PlacedSupplies; ++n)
        text += "zel_resource place -rsc " + DesignProject::supply(n).toUtf8() + " -id "
            + QByteArray::number(project.site(n)) + '\n';
    text += "zel_project save\nset out [open positions.part w]\n";
    for (int id : {1, elements})
        text += "puts $out [zel_view where -id " + QByteArray::number(id) + "]\n";
    for (int n = 0; n < Supplies; ++n)
        text += "puts $out [zel_tree where -rsc " + DesignProject::supply(n).toUtf8() + "]\n";
    return text + "close $out\nfile rename positions.part positions\n";
}

double secondsIn(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

// Returns what all programs have used that have ended.
double secondsOfEnded()
{
    rusage used{};
    getrusage(RUSAGE_CHILDREN, &used);
    return secondsIn(used.ru_utime) + secondsIn(used.ru_stime);
}

} // namespace

struct ShownProgram::Parts
{
    explicit Parts(int elements)
        : project(Sites, Supplies, elements / Sites)
    {
        zeltest::writeFile(project.path() + "/drawing.svg",
            QByteArray::fromStdString(mirn::zeldevicegenerator::benchmarkDrawing(elements)));
        zeltest::writeFile(project.path() + "/positions.tcl", script(project, elements));
    }

    [[nodiscard]] QString file(const char* name) const { return project.path() + '/' + name; }

    DesignProject project;
    VirtualScreen screen;
    QProcess program;
};

ShownProgram::ShownProgram(int elements)
    : m_parts(std::make_unique<Parts>(elements))
{ }

ShownProgram::~ShownProgram()
{
    m_parts->program.kill();
    m_parts->program.waitForFinished();
    m_screen.reset(); // before the server ends
}

QString ShownProgram::start()
{
    const QString problem = m_parts->screen.start();
    if (!problem.isEmpty())
        return problem;
    m_screen = std::make_unique<XScreen>(m_parts->screen.environment().value("DISPLAY").toStdString());
    if (!m_screen->isOpen())
        return "The screen lacks the extensions XTEST or DAMAGE.";
    QProcess& program = m_parts->program;
    program.setProcessEnvironment(m_parts->screen.environment());
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    endWithParent(program);
    program.start(ZELSCREEN_PROGRAM,
        {m_parts->project.path(), "--fresh", "--size", "1500x1100", "--script", m_parts->file("positions.tcl")});
    QElapsedTimer clock;
    clock.start();
    while (!QFile::exists(m_parts->file("positions"))) {
        if (clock.elapsed() > StartMilliseconds || program.waitForFinished(100))
            return "The program did not show the drawing.";
    }
    m_screen->settle();
    return readPositions();
}

QString ShownProgram::readPositions()
{
    std::vector<Point> points;
    for (const QByteArray& line : zeltest::contentOf(m_parts->file("positions")).trimmed().split('\n')) {
        const QByteArrayList numbers = line.split(' ');
        points.push_back({numbers.value(0).toInt(), numbers.value(1).toInt()});
    }
    if (points.size() != 2 + Supplies)
        return "The program did not tell where everything is.";
    m_drawing = {points[0].x, points[0].y, points[1].x, points[1].y};
    const auto rows = points.begin() + 2;
    m_placedRows.assign(rows, rows + PlacedSupplies);
    m_unplacedRows.assign(rows + PlacedSupplies, points.end());
    return {};
}

double ShownProgram::processorSeconds() const
{
    clockid_t clock{};
    timespec used{};
    if (clock_getcpuclockid(static_cast<pid_t>(m_parts->program.processId()), &clock) != 0
        || clock_gettime(clock, &used) != 0)
        return 0.0;
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) * 1e-9;
}

ShownProgram::End ShownProgram::quit()
{
    m_screen->settle();
    const double before = processorSeconds();
    const double ended = secondsOfEnded();
    QElapsedTimer clock;
    clock.start();
    m_screen->pressKey("Control_L");
    m_screen->typeKey("q");
    m_screen->releaseKey("Control_L");
    End end;
    end.hasCome
        = m_parts->program.waitForFinished(EndMilliseconds) && m_parts->program.exitStatus() == QProcess::NormalExit;
    end.wallSeconds = static_cast<double>(clock.nsecsElapsed()) * 1e-9;
    end.processorSeconds = secondsOfEnded() - ended - before;
    return end;
}

} // namespace zelscreen
