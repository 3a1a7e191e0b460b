// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <map>
#include <set>
#include <utility>
#include <vector>

namespace soak {

// What the files of a project say, read here once more so that the program's own reader is not what judges it.
struct Plan
{
    struct Resource
    {
        QByteArray type; // empty for a folder
        int site = -1;
        bool isFixed = false;
        QByteArray value; // of its only parameter, as the design file has it; empty where it has none
    };

    explicit Plan(const QString& folder);

    [[nodiscard]] QByteArrayList below(const QByteArray& top) const; // and itself

    std::map<QByteArray, Resource> resources; // by path
    std::map<QByteArray, std::vector<int>> sites; // by the type that they take
    std::map<std::pair<int, QByteArray>, QByteArray> settings; // of a new device
};

// Where everything is and how it is set.
struct State
{
    [[nodiscard]] bool has(const QByteArray& path) const;
    // In the form in which the program under test prints it.
    [[nodiscard]] QByteArray text(const Plan& plan) const;

    [[nodiscard]] bool operator==(const State& other) const
    {
        return removed == other.removed && sites == other.sites && values == other.values && settings == other.settings;
    }

    std::set<QByteArray> removed; // by a command of their own
    std::map<QByteArray, int> sites; // of what may be moved and is placed
    std::map<QByteArray, QByteArray> values; // of parameters that are not as the design file has them
    std::map<std::pair<int, QByteArray>, QByteArray> settings; // that are not as a new device has them
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
    [[nodiscard]] QByteArray compare(const QByteArray& state); // what differs
    void dropLastKept(); // a cut of the journal's end
    [[nodiscard]] bool hasKept() const { return m_kept.size() > 1; }
    void wasSaved() { m_kept = {state()}; } // perhaps although it was refused

    [[nodiscard]] const State& state() const { return m_history[m_index]; }
    [[nodiscard]] const std::vector<State>& kept() const { return m_kept; }
    void setKept(const std::vector<State>& kept) { m_kept = kept; }

private:
    // Changes the state; returns why it cannot have been done.
    [[nodiscard]] QByteArray make(const QByteArrayList& words, const QByteArray& told, State& next);
    [[nodiscard]] QByteArray place(const QByteArray& path, int site, const QByteArray& told, State& next);
    [[nodiscard]] QByteArray restore(const QByteArray& path, State& next) const;
    void set(int site, const QByteArray& key, const QByteArray& value, State& next) const;
    [[nodiscard]] bool mayBeRefused(const QByteArrayList& words) const;
    [[nodiscard]] QByteArray step(int by);
    void goTo(const State& next);
    [[nodiscard]] QByteArray objection(const State& state) const;

    const Plan* m_plan; // lives longer
    std::vector<State> m_history; // of this program
    std::size_t m_index = 0;
    std::vector<State> m_kept; // what was saved last and what followed it
    QByteArray m_unknown; // an IP whose parts went where the next state says
};

// Of a command as the commands of this test are written.
[[nodiscard]] QByteArrayList wordsOf(const QByteArray& command);

} // namespace soak
