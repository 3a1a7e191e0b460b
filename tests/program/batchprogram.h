// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayList>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

// A `zelchip --batch` in the middle of its work, which can be ended without a chance to do anything about it.
class BatchProgram final
{
public:
    BatchProgram(const QString& project, const QString& script)
    {
        m_process.start(ZELCHIP_PROGRAM, {project, "--batch", script});
        (void)m_process.waitForStarted();
    }
    ~BatchProgram() { (void)kill(); }

    void send(const QByteArray& line)
    {
        m_process.write(line + '\n');
        while (m_process.bytesToWrite() > 0 && m_process.waitForBytesWritten(Patience)) { }
    }

    // The next line that the program prints; empty when there is none.
    [[nodiscard]] QByteArray line()
    {
        while (!m_process.canReadLine()) {
            if (!m_process.waitForReadyRead(Patience))
                return {};
        }
        return m_process.readLine().chopped(1);
    }

    // Returns the lines that were not read yet.
    QByteArrayList kill()
    {
        m_process.kill(); // SIGKILL
        (void)m_process.waitForFinished(Patience);
        // Killed between making its lock and writing into it, the program leaves one of which the next program cannot
        // tell whose it is. Here nobody else can have made it.
        const QString lock = m_process.arguments().value(0) + "/impl1/journal.tcl.lock";
        if (QFileInfo(lock).size() == 0)
            QFile::remove(lock);
        QByteArrayList lines = m_process.readAllStandardOutput().split('\n');
        lines.removeLast(); // which has no end and so is no line
        m_errors += m_process.readAllStandardError();
        return lines;
    }

    [[nodiscard]] QByteArray errors() { return m_errors + m_process.readAllStandardError(); }
    [[nodiscard]] qint64 id() const { return m_process.processId(); }

private:
    static constexpr int Patience = 60'000; // milliseconds; what takes longer hangs

    QProcess m_process;
    QByteArray m_errors;
};

struct Outcome
{
    int status = -1; // -1 for a program that did not come to its own end
    QByteArray output;
    QByteArray errors;
};

[[nodiscard]] inline Outcome run(const QString& program, const QStringList& arguments,
    const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment())
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    const bool hasEnded = process.waitForFinished() && process.exitStatus() == QProcess::NormalExit;
    return {hasEnded ? process.exitCode() : -1, process.readAllStandardOutput(), process.readAllStandardError()};
}
