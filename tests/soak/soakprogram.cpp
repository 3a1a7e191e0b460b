// SPDX-License-Identifier: MIT
#include "tests/soak/soakprogram.h"

#include <QFile>
#include <QFileInfo>

namespace soak {

namespace {

constexpr int Patience = 60'000; // ms; what takes longer hangs

} // namespace

QByteArray SoakProgram::script()
{
    return R"(
proc fact name {
    array set found [zel_resource get -ip $name]
    return "$name=$found(id)=[lindex $found(parameters) 1]"
}
proc state {} {
    set facts {}
    foreach name [zel_resource list] {lappend facts [fact $name]}
    foreach id {8000000 8001000 8002000 8003000} {
        foreach key {CH0 CH1 TXPLL} {lappend facts "$id $key=[zel_setting -id $id -key $key]"}
    }
    return [join [lsort $facts] |]
}
proc parts name {
    set facts {}
    foreach part [concat [list $name] [zel_resource list $name/*]] {lappend facts [fact $part]}
    return [join $facts |]
}
puts "state [state]"
while {[gets stdin line] >= 0} {
    if {$line eq "state"} {
        puts "state [state]"
    } elseif {[catch $line why]} {
        puts "no [string map {\n { }} $why]"
    } elseif {[lindex $line 1] eq "place"} {
        puts "ok [parts [lindex $line 3]]"
    } else {
        puts "ok "
    }
}
)";
}

SoakProgram::SoakProgram(const QString& project, const QString& script)
{
    m_process.start(ZELCHIP_PROGRAM, {project, "--batch", script});
    (void)m_process.waitForStarted();
}

SoakProgram::~SoakProgram()
{
    (void)kill();
}

QByteArray SoakProgram::opened()
{
    return answer().mid(6);
}

void SoakProgram::flush()
{
    while (m_process.bytesToWrite() > 0 && m_process.waitForBytesWritten(Patience)) { }
}

QByteArray SoakProgram::answer()
{
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(Patience))
            return {};
    }
    QByteArray line = m_process.readLine();
    line.chop(1);
    return line;
}

QByteArray SoakProgram::ask(const QByteArray& command)
{
    send(command);
    return answer();
}

QByteArrayList SoakProgram::kill()
{
    m_process.kill(); // SIGKILL
    (void)m_process.waitForFinished(Patience);
    // Killed between making its lock and writing into it, it leaves one of which the next program cannot tell whose it
    // is. Here nobody else can have made it.
    const QString lock = m_process.arguments().value(0) + QStringLiteral("/impl1/journal.tcl.lock");
    if (QFileInfo(lock).size() == 0)
        QFile::remove(lock);
    QByteArrayList answers = m_process.readAllStandardOutput().split('\n');
    answers.removeLast(); // no line, for it has no end
    m_errors += m_process.readAllStandardError();
    return answers;
}

} // namespace soak
