// SPDX-License-Identifier: MIT
#include "tests/soak/designmodel.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace soak {

namespace {

constexpr int Somewhere = -2; // a site that only the program knows
const char OffForBoth[] = "POWER DOWN"; // of a unit's two channels, always together

QJsonObject read(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(fileName));
    return QJsonDocument::fromJson(file.readAll()).object();
}

bool isWithin(const QByteArray& path, const QByteArray& top)
{
    return path == top || path.startsWith(top + '/');
}

void readResources(Plan& plan, const QByteArray& above, const QJsonArray& list, const QMap<QString, int>& siteIds)
{
    for (const QJsonValue& value : list) {
        const QJsonObject object = value.toObject();
        const QByteArray path = above + '/' + object["name"].toString().toUtf8();
        const QByteArray type = object["type"].toString().toUtf8();
        plan.types[path] = type;
        plan.fresh.sites[path] = siteIds.value(object["site"].toString(), -1);
        if (object["fixed"].toBool())
            plan.fixed.insert(path);
        if (type == "IP")
            plan.fresh.values[path] = QByteArray::number(object["rate"].toDouble(2.5));
        else if (type == "PLL" || type == "EXTREF")
            plan.fresh.values[path] = QByteArray::number(object["frequency"].toDouble(100));
        readResources(plan, path, object["children"].toArray(), siteIds);
    }
}

// The words of a command as the commands of this test are written.
QByteArrayList wordsOf(const QByteArray& command)
{
    const QByteArrayList parts = command.split('{');
    QByteArrayList words = parts[0].trimmed().split(' ');
    if (parts.size() > 1)
        words.append(parts[1].left(parts[1].size() - 1));
    return words;
}

} // namespace

Plan::Plan(const QString& folder)
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
    readResources(*this, design["name"].toString().toUtf8(), design["resources"].toArray(), siteIds);
}

QByteArrayList Plan::below(const QByteArray& top) const
{
    QByteArrayList result = types.keys();
    const auto isElsewhere = [&](const QByteArray& path) { return !isWithin(path, top); };
    result.erase(std::remove_if(result.begin(), result.end(), isElsewhere), result.end());
    return result;
}

bool State::has(const QByteArray& path) const
{
    return std::none_of(removed.begin(), removed.end(), [&](const QByteArray& top) { return isWithin(path, top); });
}

DesignModel::DesignModel(const Plan& plan)
    : m_plan(&plan)
    , m_history{plan.fresh}
    , m_kept{plan.fresh}
{ }

void DesignModel::startAgain()
{
    m_history = m_kept;
    m_index = m_history.size() - 1;
}

bool DesignModel::dropLastKept()
{
    const bool isThere = m_kept.size() > 1;
    if (isThere)
        m_kept.pop_back();
    return isThere;
}

QByteArray DesignModel::follow(const QByteArray& command, const QByteArray& answer)
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
        return {};
    }
    if (words[1] == "save") {
        wasSaved();
        return {};
    }
    State next = state();
    const QByteArray problem = make(words, answer, next);
    if (!problem.isEmpty() || next == state())
        return problem;
    m_history.resize(++m_index, next);
    m_history.push_back(next);
    m_kept.push_back(next);
    return objection();
}

// In the form in which the program under test prints it.
QByteArrayList DesignModel::facts() const
{
    QByteArrayList result;
    const QByteArrayList paths = m_plan->types.keys();
    for (const QByteArray& path : paths) {
        const int site = state().sites[path];
        if (state().has(path))
            result.append(path + '=' + (site < 0 ? "" : QByteArray::number(site)) + '=' + state().values[path]);
    }
    for (const QByteArray& setting : m_plan->settings)
        result.append(setting + '=' + state().values[setting]);
    return result;
}

QByteArray DesignModel::compare(const QByteArray& told)
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
    for (const QByteArray& fact : expected)
        difference += found.contains(fact) ? QByteArray() : " lost " + fact;
    for (const QByteArray& fact : found)
        difference += expected.contains(fact) ? QByteArray() : " found " + fact;
    return difference.isEmpty() ? objection() : difference;
}

QByteArray DesignModel::make(const QByteArrayList& words, const QByteArray& told, State& next)
{
    if (words[0] == "zel_setting") {
        set(words[2], words[4], words[6], next);
        return {};
    }
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
    const bool isRemoved = words[1] == "remove";
    if (isRemoved)
        next.removed.insert(path);
    const QByteArrayList parts = m_plan->below(path);
    for (const QByteArray& part : parts) {
        if (!m_plan->fixed.contains(part))
            next.sites[part] = -1;
        if (isRemoved && m_plan->fresh.values.contains(part))
            next.values[part] = m_plan->fresh.values[part];
    }
    return {};
}

QByteArray DesignModel::place(const QByteArray& path, int site, const QByteArray& told, State& next)
{
    if (m_plan->types[path] != "IP") {
        next.sites[path] = site;
        return {};
    }
    const QByteArrayList parts = m_plan->below(path);
    for (const QByteArray& part : parts) {
        if (m_plan->types[part] == "DCUCHANNEL" && !m_plan->fixed.contains(part) && next.has(part))
            next.sites[part] = Somewhere;
    }
    if (told.isEmpty())
        m_unknown = path;
    const QByteArrayList facts = told.mid(3).split('|');
    for (const QByteArray& fact : facts) {
        const QByteArrayList words = fact.split('=');
        if (words.size() > 1 && next.sites.value(words[0]) == Somewhere)
            next.sites[words[0]] = words[1].toInt();
    }
    return {};
}

void DesignModel::set(const QByteArray& site, const QByteArray& key, const QByteArray& value, State& next) const
{
    const bool isOfChannel = key.startsWith("CH");
    const bool isLeft = isOfChannel && next.values[site + ' ' + key] == OffForBoth;
    for (const QByteArray& channel : {site + " CH0", site + " CH1"}) {
        if (isOfChannel && value == OffForBoth)
            next.values[channel] = value;
        else if (isLeft)
            next.values[channel] = m_plan->fresh.values[channel];
    }
    next.values[site + ' ' + key] = value;
}

// The rules of placing are not known here; everything else is.
bool DesignModel::mayBeRefused(const QByteArrayList& words) const
{
    if (words[0] == "undo" || words[0] == "redo")
        return words[0] == "undo" ? m_index == 0 : m_index + 1 == m_history.size();
    if (words[0] == "zel_setting" || words[1] == "save")
        return false;
    if (words[1] == "place" || words[1] == "restore" || !state().has(words[3]))
        return true;
    const QByteArrayList parts = m_plan->below(words[3]);
    return words[1] == "reset" && std::none_of(parts.begin(), parts.end(), [&](const QByteArray& part) {
        return state().sites[part] != -1 && !m_plan->fixed.contains(part) && state().has(part);
    });
}

// What no rules allow.
QByteArray DesignModel::objection() const
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

} // namespace soak
