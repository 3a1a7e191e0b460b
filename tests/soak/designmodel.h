// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayList>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QSet>

#include <algorithm>
#include <vector>

namespace soak {

inline constexpr int Somewhere = -2; // a site that only the program knows
inline constexpr char OffForBoth[] = "POWER DOWN"; // a setting that a unit's two channels always have together

inline bool isWithin(const QByteArray& path, const QByteArray& top)
{
    return path == top || path.startsWith(top + '/');
}

// The words of a command, written as the commands of this test are.
inline QByteArrayList wordsOf(const QByteArray& command)
{
    const QByteArrayList parts = command.split('{');
    QByteArrayList words = parts[0].trimmed().split(' ');
    if (parts.size() > 1)
        words.append(parts[1].left(parts[1].size() - 1));
    return words;
}

// Where everything is and how everything is set.
struct State
{
    [[nodiscard]] bool has(const QByteArray& path) const
    {
        return std::none_of(removed.begin(), removed.end(), [&](const QByteArray& top) { return isWithin(path, top); });
    }

    [[nodiscard]] bool operator==(const State& other) const
    {
        return removed == other.removed && sites == other.sites && locked == other.locked && values == other.values;
    }

    QSet<QByteArray> removed; // what a command has removed, without its parts
    QMap<QByteArray, int> sites; // by path; -1: none
    QSet<QByteArray> locked; // paths
    QMap<QByteArray, QByteArray> values; // a parameter's by its path, a setting's by "ID KEY"
};

// A project's files, which this class reads by itself so that the program's own reader does not judge itself.
class Plan
{
public:
    explicit Plan(const QString& folder)
    {
        const QJsonObject device = read(folder + "/device.json");
        QMap<QString, QJsonArray> accepts;
        for (const QJsonValue& kind : device["kinds"].toArray())
            accepts[kind["name"].toString()] = kind["accepts"].toArray();
        QMap<QString, int> siteIds;
        for (const QJsonValue& site : device["sites"].toArray()) {
            const int id = site["id"].toInt();
            siteIds[site["name"].toString()] = id;
            for (const QJsonValue& type : accepts[site["kind"].toString()])
                sites[type.toString().toUtf8()].push_back(id);
            const QJsonObject known = site["settings"].toObject();
            for (auto it = known.begin(); it != known.end(); ++it) {
                if (it.key().contains(':'))
                    continue;
                settings.append(QByteArray::number(id) + ' ' + it.key().toUtf8());
                fresh.values[settings.last()] = it.value().toObject()["value"].toString().toUtf8();
            }
        }
        const QJsonObject design = read(folder + "/design.json");
        readResources(design["name"].toString().toUtf8(), design["resources"].toArray(), siteIds);
    }

    // The paths of a resource and of all its parts.
    [[nodiscard]] QByteArrayList below(const QByteArray& top) const
    {
        QByteArrayList result = types.keys();
        const auto isElsewhere = [&](const QByteArray& path) { return !isWithin(path, top); };
        result.erase(std::remove_if(result.begin(), result.end(), isElsewhere), result.end());
        return result;
    }

    State fresh; // the state before anybody changes it
    QMap<QByteArray, QByteArray> types; // by path; empty for a folder
    QSet<QByteArray> fixed; // paths
    QMap<QByteArray, std::vector<int>> sites; // by the type that they take
    QByteArrayList settings; // "ID KEY"

private:
    static QJsonObject read(const QString& fileName)
    {
        QFile file(fileName);
        if (!file.open(QIODevice::ReadOnly))
            qFatal("cannot read %s", qPrintable(fileName));
        return QJsonDocument::fromJson(file.readAll()).object();
    }

    void readResources(const QByteArray& above, const QJsonArray& list, const QMap<QString, int>& siteIds)
    {
        for (const QJsonValue& value : list) {
            const QJsonObject object = value.toObject();
            const QByteArray path = above + '/' + object["name"].toString().toUtf8();
            const QByteArray type = object["type"].toString().toUtf8();
            types[path] = type;
            fresh.sites[path] = siteIds.value(object["site"].toString(), -1);
            if (object["fixed"].toBool())
                fixed.insert(path);
            if (type == "IP")
                fresh.values[path] = QByteArray::number(object["rate"].toDouble(2.5));
            else if (type == "PLL" || type == "EXTREF")
                fresh.values[path] = QByteArray::number(object["frequency"].toDouble(100));
            readResources(path, object["children"].toArray(), siteIds);
        }
    }
};

// What a user may rely on: the state, what undo and redo lead to, and what is there when the program starts again. The
// model follows the commands that the program said it made, and objects to those that it cannot have made. It does not
// know where the parts of an IP go nor which site a rule refuses; these it takes from the program.
class DesignModel final
{
public:
    explicit DesignModel(const Plan& plan)
        : m_plan(&plan)
        , m_history{plan.fresh}
        , m_kept{plan.fresh}
    { }

    // The answer is "ok" with the sites that the placed parts have now, "no" with a reason, "state" with the whole
    // state, or empty when the program was stopped before it answered. Returns what cannot be true; empty when all can.
    [[nodiscard]] QByteArray follow(const QByteArray& command, const QByteArray& answer)
    {
        if (command == "state")
            return compare(answer.mid(6));
        const QByteArrayList words = wordsOf(command);
        if (answer.startsWith("no "))
            return mayBeRefused(words) ? QByteArray() : "must be accepted";
        if (words[0] == "undo" || words[0] == "redo") {
            if (mayBeRefused(words))
                return "there is nothing to go to";
            words[0] == "undo" ? --m_index : ++m_index;
            m_kept.push_back(state());
        } else if (words[1] == "save") {
            wasSaved();
        } else {
            State next = state();
            const QByteArray problem = make(words, answer, next);
            if (!problem.isEmpty() || next == state())
                return problem;
            m_history.resize(++m_index, next);
            m_history.push_back(next);
            m_kept.push_back(next);
            return objection();
        }
        return {};
    }

    // The program starts again: all that was kept is there, and each step of it can be undone.
    void startAgain()
    {
        m_history = m_kept;
        m_index = m_history.size() - 1;
    }

    // Returns what the program told differently from what the model expects.
    [[nodiscard]] QByteArray compare(const QByteArray& told)
    {
        const QByteArrayList found = told.split('|');
        if (!m_unknown.isEmpty()) {
            State& now = m_history[m_index];
            for (const QByteArray& fact : found) {
                const QByteArrayList words = fact.split('=');
                if (isWithin(words[0], m_unknown) && now.sites.value(words[0]) == Somewhere)
                    now.sites[words[0]] = words[1].toInt();
            }
            m_unknown.clear();
            m_kept = m_history;
        }
        const QByteArrayList expected = facts();
        QByteArray difference;
        for (const QByteArray& fact : expected + found) {
            if (!found.contains(fact) || !expected.contains(fact))
                difference += (found.contains(fact) ? " found " : " lost ") + fact;
        }
        return difference.isEmpty() ? objection() : difference;
    }

    // The journal's end was cut off. Returns false when there is nothing but what was saved.
    bool dropLastKept()
    {
        const bool isThere = m_kept.size() > 1;
        if (isThere)
            m_kept.pop_back();
        return isThere;
    }

    void wasSaved() { m_kept = {state()}; } // which may be so although the program refused it

    // The state that was saved last and those that followed it.
    [[nodiscard]] const std::vector<State>& kept() const { return m_kept; }

private:
    [[nodiscard]] const State& state() const { return m_history[m_index]; }
    // Changes the state. Returns why the program cannot have done so.
    [[nodiscard]] QByteArray make(const QByteArrayList& words, const QByteArray& told, State& next)
    {
        if (words[0] == "zel_setting")
            return set(words[2], words[4], words[6], next);
        const QByteArray& path = words[3];
        if (words[1] == "restore") {
            if (!next.removed.remove(path))
                return "it was not removed";
            return next.has(path) ? "" : "what it is a part of is not there";
        }
        if (!next.has(path))
            return "it is not there";
        if (words[1] == "place")
            return place(path, words[5].toInt(), told, next);
        if (words[1] == "configure") {
            next.values[path] = words[7];
            return {};
        }
        for (const QByteArray& part : m_plan->below(path))
            change(words[1], part, next);
        if (words[1] == "remove")
            next.removed.insert(path);
        return {};
    }

    // What a command does to each part of what it names.
    void change(const QByteArray& command, const QByteArray& part, State& next) const
    {
        const bool isRemoved = command == "remove";
        if (command == "lock" && isMovable(part))
            next.locked.insert(part);
        if (command == "unlock" || isRemoved)
            next.locked.remove(part);
        if (isRemoved ? !m_plan->fixed.contains(part) : command == "reset" && !isHeld(part))
            next.sites[part] = -1;
        if (isRemoved && m_plan->fresh.values.contains(part))
            next.values[part] = m_plan->fresh.values[part];
    }

    [[nodiscard]] bool isHeld(const QByteArray& path) const
    {
        return m_plan->fixed.contains(path) || state().locked.contains(path);
    }
    [[nodiscard]] bool isMovable(const QByteArray& path) const
    {
        return state().has(path) && state().sites[path] != -1 && !isHeld(path);
    }

    [[nodiscard]] QByteArray place(const QByteArray& path, int site, const QByteArray& told, State& next)
    {
        if (isHeld(path))
            return "it is held on its site";
        if (m_plan->types[path] != "IP") {
            next.sites[path] = site;
            return {};
        }
        for (const QByteArray& part : m_plan->below(path)) {
            if (m_plan->types[part] == "DCUCHANNEL" && !isHeld(part) && next.has(part))
                next.sites[part] = Somewhere;
        }
        if (told.isEmpty())
            m_unknown = path;
        for (const QByteArray& fact : told.mid(3).split('|')) {
            const QByteArrayList words = fact.split('=');
            if (words.size() > 1 && next.sites.value(words[0]) == Somewhere)
                next.sites[words[0]] = words[1].toInt();
        }
        return {};
    }

    QByteArray set(const QByteArray& site, const QByteArray& key, const QByteArray& value, State& next) const
    {
        const bool isOfChannel = key.startsWith("CH");
        const auto isOff = [&](const QByteArray& channel) { return next.values[site + ' ' + channel] == OffForBoth; };
        const bool isLeft = isOfChannel && isOff("CH0") && isOff("CH1");
        if (isOfChannel && value == OffForBoth && isOff(key))
            return {}; // for both, or on a fresh device for one that shall not take the other with it
        for (const QByteArray& channel : {site + " CH0", site + " CH1"}) {
            if (isOfChannel && value == OffForBoth)
                next.values[channel] = value;
            else if (isLeft)
                next.values[channel] = m_plan->fresh.values[channel];
        }
        next.values[site + ' ' + key] = value;
        return {};
    }

    // Whether the program may refuse a command. Only the rules of placing are not known here.
    [[nodiscard]] bool mayBeRefused(const QByteArrayList& words) const
    {
        if (words[0] == "undo" || words[0] == "redo")
            return words[0] == "undo" ? m_index == 0 : m_index + 1 == m_history.size();
        if (words[0] == "zel_setting" || words[1] == "save")
            return false;
        if (words[1] == "place" || words[1] == "restore" || !state().has(words[3]))
            return true;
        const QByteArrayList parts = m_plan->below(words[3]);
        const auto isConcerned = [&](const QByteArray& part) {
            return words[1] == "unlock" ? state().locked.contains(part) : isMovable(part);
        };
        return (words[1] == "reset" || words[1] == "lock" || words[1] == "unlock")
            && std::none_of(parts.begin(), parts.end(), isConcerned);
    }

    // Returns what no rules allow in the present state.
    [[nodiscard]] QByteArray objection() const
    {
        QMap<int, QByteArray> occupants;
        for (auto it = state().sites.cbegin(); it != state().sites.cend(); ++it) {
            const int site = it.value();
            if (!state().has(it.key()) || site == -1 || (site == Somewhere && !m_unknown.isEmpty()))
                continue;
            const std::vector<int> allowed = m_plan->sites[m_plan->types[it.key()]];
            if (std::find(allowed.begin(), allowed.end(), site) == allowed.end())
                return it.key() + " is where it cannot be";
            if (occupants.contains(site))
                return it.key() + " and " + occupants[site] + " share a site";
            occupants[site] = it.key();
        }
        return {};
    }

    // The state in the form in which the program under test prints it.
    [[nodiscard]] QByteArrayList facts() const
    {
        QByteArrayList result;
        for (const QByteArray& path : m_plan->types.keys()) {
            const int site = state().sites[path];
            if (state().has(path))
                result.append(path + '=' + (site < 0 ? "" : QByteArray::number(site)) + '='
                    + (state().locked.contains(path) ? '1' : '0') + '=' + state().values[path]);
        }
        for (const QByteArray& setting : m_plan->settings)
            result.append(setting + '=' + state().values[setting]);
        return result;
    }

    const Plan* m_plan; // lives longer than the model
    std::vector<State> m_history; // since the program started
    std::size_t m_index = 0;
    std::vector<State> m_kept;
    QByteArray m_unknown; // an IP; the next state tells where its parts went
};

} // namespace soak
