// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QProcess>
#include <QString>

namespace soak {

// A `zelchip --batch` that makes the commands it is sent, one a line, and answers each with a line: "ok", with the
// sites that a placement led to; "no" and why; "state" and all there is to know, which is also the first thing it says.
class SoakProgram final
{
public:
    SoakProgram(const QString& project, const QString& script);
    ~SoakProgram();

    // The state that it opened with; nothing when it did not come so far.
    [[nodiscard]] QByteArray opened();

    void send(const QByteArray& commands) { m_process.write(commands + '\n'); }
    void flush();
    [[nodiscard]] QByteArray answer(); // the next one; nothing when there is none
    [[nodiscard]] QByteArray ask(const QByteArray& command);

    // The answers that were not read yet.
    QByteArrayList kill();

    [[nodiscard]] QByteArray errors() { return m_errors + m_process.readAllStandardError(); }
    [[nodiscard]] qint64 id() const { return m_process.processId(); }

    // What it is to run, for a file.
    [[nodiscard]] static QByteArray script();

private:
    QProcess m_process;
    QByteArray m_errors;
};

} // namespace soak
