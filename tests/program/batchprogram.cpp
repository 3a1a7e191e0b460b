// SPDX-License-Identifier: MIT
#include "tests/program/batchprogram.h"

#include <QFile>
#include <QFileInfo>

namespace {

constexpr int Patience = 60'000; // ms; what takes longer hangs

} // namespace

BatchProgram::BatchProgram(const QString& project, const QString& script)
{
    m_process.start(ZELCHIP_PROGRAM, {project, "--batch", script});
    (void)m_process.waitForStarted();
}

void BatchProgram::send(const QByteArray& line)
{
    m_process.write(line + '\n');
    while (m_process.bytesToWrite() > 0 && m_process.waitForBytesWritten(Patience)) { }
}

QByteArray BatchProgram::line()
{
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(Patience))
            return {};
    }
    QByteArray line = m_process.readLine();
    line.chop(1);
    return line;
}

QByteArrayList BatchProgram::kill()
{
    m_process.kill(); // SIGKILL
    (void)m_process.waitForFinished(Patience);
    // Killed between making its lock and writing into it, it leaves one of which the next program cannot tell whose it
    // is. Here nobody else can have made it.
    const QString lock = m_process.arguments().value(0) + "/impl1/journal.tcl.lock";
    if (QFileInfo(lock).size() == 0)
        QFile::remove(lock);
    QByteArrayList lines = m_process.readAllStandardOutput().split('\n');
    lines.removeLast(); // no line, for it has no end
    m_errors += m_process.readAllStandardError();
    return lines;
}

Outcome run(const QString& program, const QStringList& arguments, const QProcessEnvironment& environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    Outcome outcome;
    if (process.waitForFinished() && process.exitStatus() == QProcess::NormalExit)
        outcome.status = process.exitCode();
    outcome.output = process.readAllStandardOutput();
    outcome.errors = process.readAllStandardError();
    return outcome;
}
