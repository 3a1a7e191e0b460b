// SPDX-License-Identifier: MIT
#include "tests/soak/soaksteps.h"

#include <QElapsedTimer>

#include <algorithm>

namespace soak {

namespace {

constexpr int FewPaths = 7;

QByteArray text(const Step& step)
{
    const QByteArray number = QByteArray::number(step.number);
    switch (step.kind) {
    case Step::Kind::Command:
        return step.number == 0 ? step.command : number + ": " + step.command;
    case Step::Kind::Kill:
        return "-- killed (" + number + ")";
    case Step::Kind::KillOpening:
        return "-- opened and killed meanwhile";
    case Step::Kind::Torn:
        return "-- half a line at the journal's end";
    case Step::Kind::Refused:
        return "-- a line at the journal's end that is refused";
    case Step::Kind::Cut:
        return "-- the journal's end is cut off";
    case Step::Kind::Large:
        return "-- " + number + " more lines in the journal";
    case Step::Kind::Room:
        return step.number < 0 ? QByteArray("-- enough room") : "-- room for " + number + " bytes";
    case Step::Kind::Together:
        return "-- both at once: " + QByteArray(step.command).replace('\n', " | ");
    case Step::Kind::Race:
        return "-- opened by the other one during: " + step.command;
    }
    return {};
}

} // namespace

QByteArray text(const Steps& steps)
{
    QByteArray result;
    for (const Step& step : steps)
        result += "    " + text(step) + '\n';
    return result;
}

Steps shortest(Steps steps, const Trial& trial, qint64 limit)
{
    QElapsedTimer timer;
    timer.start();
    for (std::size_t length = std::max<std::size_t>(steps.size() / 2, 1);; length /= 2) {
        bool isShorter = false;
        for (std::size_t begin = 0; begin < steps.size() && timer.elapsed() < limit;) {
            Steps fewer = steps;
            const auto from = fewer.begin() + static_cast<std::ptrdiff_t>(begin);
            fewer.erase(from, from + static_cast<std::ptrdiff_t>(std::min(length, steps.size() - begin)));
            if (trial(fewer).isEmpty()) {
                begin += length;
                continue;
            }
            steps = fewer;
            isShorter = true;
        }
        if (timer.elapsed() >= limit || (length == 1 && !isShorter))
            return steps;
        length = std::max<std::size_t>(length, 2);
    }
}

Commands::Commands(const Plan& plan, zeltest::Random& random)
    : m_plan(plan)
    , m_random(random)
{
    while (m_paths.size() < FewPaths) {
        const QByteArray path = oneOf(plan.resources).first;
        m_paths.push_back(path);
        const QByteArray above = path.left(path.lastIndexOf('/'));
        if (plan.resources.count(above) > 0 && random.below(2) == 0)
            m_paths.push_back(above);
    }
}

QByteArray Commands::next()
{
    const QByteArray path = oneOf(m_paths);
    const int kind = m_random.below(100);
    if (kind < 28)
        return placement(path);
    if (kind < 36)
        return "zel_resource reset -ip " + path;
    if (kind < 46)
        return "zel_resource remove -ip " + path;
    if (kind < 58)
        return "zel_resource restore -ip " + path;
    if (kind < 66)
        return configuration(path);
    if (kind < 76)
        return setting();
    if (kind < 88)
        return "undo";
    return kind < 93 ? "redo" : kind < 98 ? "zel_project save" : "state";
}

QByteArray Commands::placement(const QByteArray& path)
{
    const auto sites = m_plan.sites.find(m_plan.resources.at(path).type);
    return sites == m_plan.sites.end()
        ? setting()
        : "zel_resource place -rsc " + path + " -id " + QByteArray::number(oneOf(sites->second));
}

QByteArray Commands::configuration(const QByteArray& path)
{
    const Plan::Resource& resource = m_plan.resources.at(path);
    if (resource.value.isEmpty())
        return setting();
    const bool isIp = resource.type == "IP";
    const QByteArrayList values
        = isIp ? QByteArrayList{"1.25", "2.5", "3.125", "5"} : QByteArrayList{"62.5", "75", "100", "148.5"};
    return "zel_resource configure -ip " + path + " -key " + (isIp ? "rate" : "frequency") + " -value " + oneOf(values);
}

QByteArray Commands::setting()
{
    const auto key = oneOf(m_plan.settings).first;
    const QByteArrayList values = key.second == "TXPLL"
        ? QByteArrayList{"X8", "X16", "X20"}
        : QByteArrayList{"EXTREF A", "EXTREF B", "CORE CLOCK", "POWER DOWN"};
    return "zel_setting -id " + QByteArray::number(key.first) + " -key " + key.second + " -value {" + oneOf(values)
        + '}';
}

} // namespace soak
