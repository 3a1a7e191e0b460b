// SPDX-License-Identifier: MIT
#pragma once

#include "tests/program/batchprogram.h"
#include "tests/program/sampleproject.h"
#include "tests/soak/designmodel.h"
#include "tests/support/random.h"

#include <QDir>

#include <memory>

namespace soak {

inline constexpr int FewPaths = 7;

inline constexpr char Script[] = R"(
proc fact name {
    array set found [zel_resource get -ip $name]
    return "$name=$found(id)=$found(locked)=[lindex $found(parameters) 1]"
}
proc state {} {
    set facts {}
    foreach name [zel_resource list] {lappend facts [fact $name]}
    foreach id {8000000 8001000 8002000 8003000 8004000 8005000} {
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

// A project to which things happen in steps. A step is a command to one of the programs that have the project open, as
// one would type it, or begins with two dashes. A program answers each command with a line: "ok" with the sites that a
// placement led to, "no" with the reason, or "state" with the whole state, which it also says first of all.
class Round
{
public:
    explicit Round(const QString& where = QDir::tempPath())
        : m_project(where)
        , m_script(m_project.write("soak.tcl", Script))
    { }

    virtual ~Round() = default;
    Round(const Round&) = delete;
    Round& operator=(const Round&) = delete;

    [[nodiscard]] virtual QByteArrayList randomSteps(zeltest::Random& random) = 0;

    // Returns what went wrong in the steps; empty when all went well.
    [[nodiscard]] virtual QByteArray run(const QByteArrayList& steps) = 0;
    // Does the same and leaves nothing to chance.
    [[nodiscard]] virtual QByteArray runAgain(const QByteArrayList& steps) { return run(steps); }
    // The steps that were really made when these were run.
    [[nodiscard]] virtual QByteArrayList made(const QByteArrayList& steps) const { return steps; }

    // The figures that the rounds came to.
    [[nodiscard]] QByteArray figures() const
    {
        QByteArrayList texts;
        for (auto figure = m_figures.cbegin(); figure != m_figures.cend(); ++figure)
            texts.append(figure.key() + ": " + QByteArray::number(figure.value()));
        return texts.join(", ");
    }

protected:
    // The random commands that follow are about a few resources, so that they have to do with each other.
    void chooseFew(zeltest::Random& random)
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

    [[nodiscard]] QByteArray randomCommand(zeltest::Random& random) const
    {
        static const QByteArrayList rates{"1.25", "2.5", "3.125", "5"};
        static const QByteArrayList frequencies{"62.5", "75", "100", "148.5"};
        const QByteArray path = random.oneOf(m_few);
        const QByteArray type = m_plan.types[path];
        const int kind = random.below(100);
        if (kind < 28 && m_plan.sites.contains(type))
            return "zel_resource place -rsc " + path + " -id " + QByteArray::number(random.oneOf(m_plan.sites[type]));
        if (kind >= 28 && kind < 58)
            return "zel_resource "
                + QByteArray(kind < 34 ? "reset"
                        : kind < 41    ? "remove"
                        : kind < 49    ? "restore"
                        : kind < 55    ? "lock"
                                       : "unlock")
                + " -ip " + path;
        if (kind >= 58 && kind < 66 && m_plan.fresh.values.contains(path))
            return "zel_resource configure -ip " + path + " -key "
                + (type == "IP" ? "rate -value " + random.oneOf(rates)
                                : "frequency -value " + random.oneOf(frequencies));
        if (kind < 76)
            return randomSetting(random);
        return kind < 88 ? "undo" : kind < 93 ? "redo" : kind < 98 ? "zel_project save" : "state";
    }

    [[nodiscard]] std::unique_ptr<BatchProgram> newProgram() const
    {
        return std::make_unique<BatchProgram>(m_project.path(), m_script);
    }

    const SampleProject m_project;
    const Plan m_plan{m_project.path()};
    QMap<QByteArray, int> m_figures; // how often what happened

private:
    [[nodiscard]] QByteArray randomSetting(zeltest::Random& random) const
    {
        static const QByteArrayList plls{"X8", "X16", "X20"};
        static const QByteArrayList channels{"EXTREF A", "EXTREF B", "CORE CLOCK", "POWER DOWN"};
        const QByteArrayList words = random.oneOf(m_plan.settings).split(' ');
        return "zel_setting -id " + words[0] + " -key " + words[1] + " -value {"
            + random.oneOf(words[1] == "TXPLL" ? plls : channels) + '}';
    }

    const QString m_script;
    QByteArrayList m_few; // paths
};

} // namespace soak
