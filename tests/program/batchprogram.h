// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayList>
#include <QProcess>

// A `zelchip --batch` in the middle of its work, which can be ended without a chance to do anything about it.
class BatchProgram final
{
public:
    BatchProgram(const QString& project, const QString& script);
    ~BatchProgram() { (void)kill(); }

    void send(const QByteArray& line);
    [[nodiscard]] QByteArray line(); // the next one that it prints; nothing when there is none
    QByteArrayList kill(); // returns the lines that were not read yet

    [[nodiscard]] QByteArray errors() { return m_errors + m_process.readAllStandardError(); }
    [[nodiscard]] qint64 id() const { return m_process.processId(); }

private:
    QProcess m_process;
    QByteArray m_errors;
};

struct Outcome
{
    int status = -1; // of a run that did not come to its own end
    QByteArray output;
    QByteArray errors;
};

[[nodiscard]] Outcome run(const QString& program, const QStringList& arguments,
    const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment());
