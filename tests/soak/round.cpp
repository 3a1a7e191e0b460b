// SPDX-License-Identifier: MIT
#include "tests/soak/round.h"

namespace soak {

namespace {

constexpr int FewPaths = 7;

const char Script[] = R"(
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
    return "state [join $facts |]"
}
proc parts name {
    set facts {}
    foreach part [concat [list $name] [zel_resource list $name/*]] {lappend facts [fact $part]}
    return [join $facts |]
}
puts [state]
while {[gets stdin line] >= 0} {
    if {$line eq "state"} {
        puts [state]
    } elseif {[catch $line why]} {
        puts "no [string map {\n { }} $why]"
    } elseif {[lindex $line 1] eq "place"} {
        puts "ok [parts [lindex $line 3]]"
    } else {
        puts "ok "
    }
}
)";

} // namespace

Round::Round(const QString& where)
    : m_project(where)
    , m_script(m_project.write("soak.tcl", Script))
{ }

std::unique_ptr<BatchProgram> Round::newProgram() const
{
    return std::make_unique<BatchProgram>(m_project.path(), m_script);
}

QByteArray Round::figures() const
{
    const auto counted = [](int number, const char* what) { return QByteArray::number(number) + what; };
    return counted(m_figures.rounds, " rounds, ") + counted(m_figures.kills, " kills (")
        + counted(m_figures.killsOpening, " before the project was open, ")
        + counted(m_figures.killsInFlight, " with a command in flight), ")
        + counted(m_figures.damages, " damaged journals, ") + counted(m_figures.states, " states compared, ")
        + counted(m_figures.confirmed, " commands confirmed, ")
        + counted(m_figures.refusals, " refused for want of room or because of the other program");
}

void Round::chooseFew(zeltest::Random& random)
{
    const QByteArrayList paths = m_plan.types.keys();
    m_few.clear();
    while (m_few.size() < FewPaths) {
        const QByteArray path = random.oneOf(paths);
        m_few.append(path);
        const QByteArray above = path.left(path.lastIndexOf('/'));
        if (paths.contains(above) && random.below(2) == 0)
            m_few.append(above);
    }
}

QByteArray Round::randomCommand(zeltest::Random& random) const
{
    static const QByteArrayList rates{"1.25", "2.5", "3.125", "5"};
    static const QByteArrayList frequencies{"62.5", "75", "100", "148.5"};
    const QByteArray path = random.oneOf(m_few);
    const QByteArray type = m_plan.types[path];
    const int kind = random.below(100);
    if (kind < 28 && m_plan.sites.contains(type))
        return "zel_resource place -rsc " + path + " -id " + QByteArray::number(random.oneOf(m_plan.sites[type]));
    if (kind >= 28 && kind < 36)
        return "zel_resource reset -ip " + path;
    if (kind >= 36 && kind < 46)
        return "zel_resource remove -ip " + path;
    if (kind >= 46 && kind < 58)
        return "zel_resource restore -ip " + path;
    if (kind >= 58 && kind < 66 && m_plan.fresh.values.contains(path))
        return "zel_resource configure -ip " + path + " -key "
            + (type == "IP" ? "rate -value " + random.oneOf(rates) : "frequency -value " + random.oneOf(frequencies));
    if (kind < 76)
        return randomSetting(random);
    return kind < 88 ? "undo" : kind < 93 ? "redo" : kind < 98 ? "zel_project save" : "state";
}

QByteArray Round::randomSetting(zeltest::Random& random) const
{
    static const QByteArrayList plls{"X8", "X16", "X20"};
    static const QByteArrayList channels{"EXTREF A", "EXTREF B", "CORE CLOCK", "POWER DOWN"};
    const QByteArrayList words = random.oneOf(m_plan.settings).split(' ');
    return "zel_setting -id " + words[0] + " -key " + words[1] + " -value {"
        + random.oneOf(words[1] == "TXPLL" ? plls : channels) + '}';
}

} // namespace soak
