// SPDX-License-Identifier: MIT
#include "tests/soak/roomround.h"

#include <QFile>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>

namespace soak {

namespace {

// Refusals by a rule say nothing of the kind.
bool isForWantOfRoom(const QByteArray& answer)
{
    const QByteArrayList signs{
        "cannot be kept", "cannot be saved", "cannot be made", "cannot be replaced", "cannot be set aside"};
    return std::any_of(signs.begin(), signs.end(), [&](const QByteArray& sign) { return answer.contains(sign); });
}

} // namespace

bool SmallDisk::mount(const QString& folder)
{
    m_folder = QFile::encodeName(folder);
    m_isMounted = ::unshare(CLONE_NEWNS) == 0 && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && ::mount("none", m_folder.constData(), "tmpfs", 0, "size=2m") == 0;
    return m_isMounted;
}

SmallDisk::~SmallDisk()
{
    if (m_isMounted)
        ::umount2(m_folder.constData(), MNT_DETACH);
}

void SmallDisk::leave(qint64 bytes, qint64)
{
    const QByteArray filler = m_folder + "/filler";
    ::unlink(filler.constData());
    struct statvfs disk;
    if (bytes < 0 || ::statvfs(m_folder.constData(), &disk) != 0)
        return;
    const qint64 taken = static_cast<qint64>(disk.f_bavail * disk.f_frsize) - bytes;
    const int file = ::open(filler.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    if (file < 0 || (taken > 0 && ::posix_fallocate(file, 0, taken) != 0))
        qFatal("cannot fill %s", m_folder.constData());
    ::close(file);
}

void FileSizeLimit::leave(qint64 bytes, qint64 process)
{
    const rlimit limit{bytes < 0 ? RLIM_INFINITY : static_cast<rlim_t>(bytes), RLIM_INFINITY};
    if (::prlimit(static_cast<pid_t>(process), RLIMIT_FSIZE, &limit, nullptr) != 0)
        qFatal("the size of files cannot be limited");
}

RoomRound::RoomRound(
    const SampleProject& project, const QString& script, const Plan& plan, Room& room, Figures& figures)
    : m_project(project)
    , m_script(script)
    , m_plan(plan)
    , m_room(room)
    , m_figures(figures)
{ }

Steps RoomRound::randomSteps(const Plan& plan, zeltest::Random& random)
{
    Steps steps;
    Commands commands(plan, random);
    for (int count = 20 + random.below(60); count > 0; --count) {
        const int kind = random.below(100);
        if (kind < 12)
            steps.push_back({Step::Kind::Room, {}, random.below(3) == 0 ? 4096 * random.below(4) : random.below(3000)});
        else if (kind < 18)
            steps.push_back({Step::Kind::Room, {}, -1});
        else if (kind < 21)
            steps.push_back({Step::Kind::Kill, {}, 0});
        else
            steps.push_back({Step::Kind::Command, kind < 30 ? "zel_project save" : commands.next(), 0});
    }
    return steps;
}

// With room again it goes on, and all is there.
QByteArray RoomRound::run(const Steps& steps)
{
    m_room.leave(-1, ::getpid());
    m_project.forgetWork();
    m_left = -1;
    m_models = {DesignModel(m_plan)};
    ++m_figures.rounds;
    Steps all = steps;
    const QByteArray change = "zel_setting -id 8003000 -key TXPLL -value ";
    all.insert(all.begin(), {Step::Kind::Kill, {}, 0});
    all.insert(all.end(),
        {{Step::Kind::Room, {}, -1}, {Step::Kind::Command, change + "X8", 0}, {Step::Kind::Command, change + "X10", 0},
            {Step::Kind::Kill, {}, 0}, {Step::Kind::Command, "zel_project save", 0}, {Step::Kind::Kill, {}, 0}});
    QByteArray problem;
    for (std::size_t i = 0; problem.isEmpty() && i < all.size(); ++i)
        problem = make(all[i]);
    m_program.reset();
    m_room.leave(-1, ::getpid());
    return problem;
}

QByteArray RoomRound::make(const Step& step)
{
    if (step.kind == Step::Kind::Kill) {
        m_figures.kills += m_program ? 1 : 0;
        return open();
    }
    if (step.kind == Step::Kind::Room) {
        m_left = step.number;
        m_room.leave(m_left, m_program->id());
        return {};
    }
    return make(step.command);
}

QByteArray RoomRound::open()
{
    m_program.reset();
    m_program = std::make_unique<SoakProgram>(m_project.path(), m_script);
    const QByteArray state = m_program->opened();
    m_room.leave(m_left, m_program->id());
    ++m_figures.states;
    QByteArray problem;
    std::vector<DesignModel> possible;
    for (DesignModel& model : m_models) {
        model.startAgain();
        problem = model.compare(state);
        if (problem.isEmpty())
            possible.push_back(model);
    }
    m_models = possible;
    return m_models.empty() ? "opened again: " + problem + '\n' + m_program->errors() : QByteArray();
}

QByteArray RoomRound::make(const QByteArray& command)
{
    const QByteArray answer = m_program->ask(command);
    if (answer.isEmpty())
        return command + ": it ended by itself: " + m_program->errors();
    m_figures.confirmed += answer.startsWith("ok") ? 1 : 0;
    const bool isFull = answer.startsWith("no ") && isForWantOfRoom(answer);
    m_figures.refusals += isFull ? 1 : 0;
    if (isFull && (m_left < 0 || !answer.contains(m_room.complaint())))
        return command + ": " + answer;
    std::vector<DesignModel> possible;
    QByteArray problem;
    for (DesignModel& model : m_models) {
        problem = isFull ? model.compare(m_program->ask("state").mid(6)) : model.follow(command, answer);
        if (!problem.isEmpty())
            continue;
        possible.push_back(model);
        if (isFull && command == "zel_project save") {
            possible.push_back(model);
            possible.back().wasSaved(); // the rest of it was refused
        }
    }
    m_models = possible;
    return m_models.empty() ? command + ": " + problem + " (" + answer + ')' : QByteArray();
}

} // namespace soak
