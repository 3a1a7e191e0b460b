// SPDX-License-Identifier: MIT
#include "tests/soak/sequence.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryFile>

#include <algorithm>

namespace {

constexpr int Grace = 120'000; // milliseconds that a program may take longer than it was told, before it hangs

const QByteArray Step = "at ";
const QByteArray Fault = "fault: ";

// From where the last window before a place was opened.
Gestures lastRound(const Gestures& gestures, std::size_t end)
{
    std::size_t begin = std::min(end, gestures.size());
    while (begin > 0 && gestures[--begin].kind != Gesture::Begin) { }
    return {gestures.begin() + static_cast<std::ptrdiff_t>(begin), gestures.begin() + static_cast<std::ptrdiff_t>(end)};
}

QString withoutElements(QString fault)
{
    static const QRegularExpression ids(QStringLiteral("[{0-9].*"));
    return fault.remove(ids);
}

} // namespace

Outcome runApart(const Gestures& gestures, int milliseconds)
{
    QTemporaryFile list;
    if (!list.open() || list.write(toText(gestures)) < 0 || !list.flush())
        return {QStringLiteral("cannot write the list of gestures"), {}, 0};
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QCoreApplication::applicationFilePath(),
        {QStringLiteral("--replay"), list.fileName(), QString::number(milliseconds)});
    const bool hasEnded = process.waitForFinished(milliseconds + Grace);
    if (!hasEnded) {
        process.kill();
        process.waitForFinished();
    }
    Outcome outcome;
    QByteArray rest;
    QByteArray fault;
    const QList<QByteArray> lines = process.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith(Step)) {
            outcome.done = line.mid(Step.size()).toUInt();
            continue;
        }
        if (line.startsWith(Fault))
            fault = line.mid(Fault.size());
        rest += line + '\n';
    }
    const bool isWell = hasEnded && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    outcome.output = rest.trimmed();
    if (!hasEnded)
        outcome.fault = QStringLiteral("hangs");
    else if (!isWell)
        outcome.fault
            = fault.isEmpty() ? QStringLiteral("ends with %1").arg(process.exitCode()) : QString::fromUtf8(fault);
    return outcome;
}

Gestures shortened(Gestures gestures, const QString& fault, int milliseconds)
{
    QElapsedTimer clock;
    clock.start();
    const auto left = [&] { return static_cast<int>(milliseconds - clock.elapsed()); };
    // A shorter sequence may meet another fault, or the same one with other elements.
    const auto fails = [&](const Gestures& candidate) {
        return left() > 0 && !candidate.empty() && candidate.front().kind == Gesture::Begin
            && withoutElements(runApart(candidate, left()).fault) == withoutElements(fault);
    };
    const Gestures last = lastRound(gestures, gestures.size());
    if (last.size() < gestures.size() && fails(last))
        gestures = last;
    for (std::size_t part = gestures.size() / 2; part > 0 && left() > 0;) {
        bool isShorter = false;
        for (std::size_t at = 0; at < gestures.size() && left() > 0;) {
            Gestures candidate = gestures;
            const auto from = candidate.begin() + static_cast<std::ptrdiff_t>(at);
            candidate.erase(from, from + static_cast<std::ptrdiff_t>(std::min(part, candidate.size() - at)));
            if (fails(candidate)) {
                gestures = candidate;
                isShorter = true;
            } else {
                at += part;
            }
        }
        if (!isShorter || part > gestures.size())
            part /= 2;
    }
    return gestures;
}
