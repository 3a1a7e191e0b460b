// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayList>
#include <QMap>
#include <QSet>

#include <vector>

namespace soak {

// Where everything is and how it is set.
struct State
{
    [[nodiscard]] bool has(const QByteArray& path) const;
    [[nodiscard]] bool operator==(const State& other) const
    {
        return removed == other.removed && sites == other.sites && values == other.values;
    }

    QSet<QByteArray> removed; // by a command of their own
    QMap<QByteArray, int> sites; // by path; -1: none
    QMap<QByteArray, QByteArray> values; // of parameters by path, of settings by "ID KEY"
};

// What the files of a project say, read here once more so that the program's own reader is not what judges it.
struct Plan
{
    explicit Plan(const QString& folder);

    [[nodiscard]] QByteArrayList below(const QByteArray& top) const; // and itself

    State fresh; // as nobody has changed it
    QMap<QByteArray, QByteArray> types; // by path; empty for a folder
    QSet<QByteArray> fixed; // paths
    QMap<QByteArray, std::vector<int>> sites; // by the type that they take
    QByteArrayList settings; // "ID KEY"
};

// What a user may rely on: the state, what undo and redo lead to, and what is there when the program starts again. It
// follows the commands that the program said it made, and objects to those that it cannot have made. Where the parts of
// an IP go and which site a rule refuses it does not know and takes from the program.
class DesignModel final
{
public:
    explicit DesignModel(const Plan& plan);

    // "ok", with the sites that the placed parts have now; "no" with a reason; "state" with all of it; or nothing, for
    // a program that was stopped before it answered. Returns what cannot be, or nothing.
    [[nodiscard]] QByteArray follow(const QByteArray& command, const QByteArray& answer);

    void startAgain(); // what was kept is there, each step of it to be undone
    [[nodiscard]] QByteArray compare(const QByteArray& told); // what differs
    bool dropLastKept(); // a cut of the journal's end; false where there is nothing but what was saved
    void wasSaved() { m_kept = {state()}; } // perhaps although it was refused

    // What was saved last and what followed it.
    [[nodiscard]] const std::vector<State>& kept() const { return m_kept; }

private:
    [[nodiscard]] const State& state() const { return m_history[m_index]; }
    // Changes the state; returns why it cannot have been done.
    [[nodiscard]] QByteArray make(const QByteArrayList& words, const QByteArray& told, State& next);
    [[nodiscard]] QByteArray place(const QByteArray& path, int site, const QByteArray& told, State& next);
    void set(const QByteArray& site, const QByteArray& key, const QByteArray& value, State& next) const;
    [[nodiscard]] bool mayBeRefused(const QByteArrayList& words) const;
    [[nodiscard]] QByteArray objection() const;
    [[nodiscard]] QByteArrayList facts() const;

    const Plan* m_plan; // lives longer
    std::vector<State> m_history; // of this program
    std::size_t m_index = 0;
    std::vector<State> m_kept;
    QByteArray m_unknown; // an IP whose parts went where the next state says
};

} // namespace soak
