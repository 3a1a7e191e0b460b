// SPDX-License-Identifier: MIT
#include "tests/soak/designmodel.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace soak {

namespace {

const char OffForBoth[] = "POWER DOWN"; // of a unit's two channels, always together

QJsonObject read(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(fileName));
    return QJsonDocument::fromJson(file.readAll()).object();
}

// As it is where the design file does not say it.
QByteArray presetOf(const QByteArray& type)
{
    if (type == "IP")
        return "2.5";
    return type == "PLL" || type == "EXTREF" ? "100" : "";
}

QByteArray keyOf(const QByteArray& type)
{
    return type == "IP" ? "rate" : "frequency";
}

bool isWithin(const QByteArray& path, const QByteArray& top)
{
    return path == top || path.startsWith(top + '/');
}

void readResources(Plan& plan, const QByteArray& above, const QJsonArray& list, const std::map<QString, int>& siteIds)
{
    for (const QJsonValue& value : list) {
        const QJsonObject object = value.toObject();
        const QByteArray path = above + '/' + object["name"].toString().toUtf8();
        Plan::Resource resource;
        resource.type = object["type"].toString().toUtf8();
        resource.isFixed = object["fixed"].toBool();
        const auto site = siteIds.find(object["site"].toString());
        resource.site = site == siteIds.end() ? -1 : site->second;
        resource.value = presetOf(resource.type);
        const QJsonValue given = object[QLatin1String(keyOf(resource.type))];
        if (!resource.value.isEmpty() && given.isDouble())
            resource.value = QByteArray::number(given.toDouble());
        plan.resources[path] = resource;
        readResources(plan, path, object["children"].toArray(), siteIds);
    }
}

} // namespace

QByteArrayList wordsOf(const QByteArray& command)
{
    QByteArrayList words;
    const QByteArrayList parts = command.split('{');
    words = parts[0].trimmed().split(' ');
    if (parts.size() > 1)
        words.append(parts[1].left(parts[1].size() - 1));
    return words;
}

Plan::Plan(const QString& folder)
{
    const QJsonObject device = read(folder + "/device.json");
    std::map<QString, QJsonArray> accepts;
    for (const QJsonValue& kind : device["kinds"].toArray())
        accepts[kind["name"].toString()] = kind["accepts"].toArray();
    std::map<QString, int> siteIds;
    for (const QJsonValue& site : device["sites"].toArray()) {
        const int id = site["id"].toInt();
        siteIds[site["name"].toString()] = id;
        for (const QJsonValue& type : accepts[site["kind"].toString()])
            sites[type.toString().toUtf8()].push_back(id);
        const QJsonObject known = site["settings"].toObject();
        for (auto it = known.begin(); it != known.end(); ++it) {
            if (!it.key().contains(':'))
                settings[{id, it.key().toUtf8()}] = it.value().toObject()["value"].toString().toUtf8();
        }
    }
    const QJsonObject design = read(folder + "/design.json");
    readResources(*this, design["name"].toString().toUtf8(), design["resources"].toArray(), siteIds);
}

QByteArrayList Plan::below(const QByteArray& top) const
{
    QByteArrayList result;
    for (const auto& [path, resource] : resources) {
        if (isWithin(path, top))
            result.append(path);
    }
    return result;
}

bool State::has(const QByteArray& path) const
{
    return std::none_of(removed.begin(), removed.end(), [&](const QByteArray& top) { return isWithin(path, top); });
}

QByteArray State::text(const Plan& plan) const
{
    QByteArrayList facts;
    for (const auto& [path, resource] : plan.resources) {
        if (!has(path))
            continue;
        const auto moved = sites.find(path);
        const int site = resource.isFixed ? resource.site : moved == sites.end() ? -1 : moved->second;
        const auto changed = values.find(path);
        const QByteArray value = changed == values.end() ? resource.value : changed->second;
        facts.append(path + '=' + (site < 0 ? QByteArray() : QByteArray::number(site)) + '=' + value);
    }
    for (const auto& [key, original] : plan.settings) {
        const auto changed = settings.find(key);
        const QByteArray value = changed == settings.end() ? original : changed->second;
        facts.append(QByteArray::number(key.first) + ' ' + key.second + '=' + value);
    }
    std::sort(facts.begin(), facts.end());
    return facts.join('|');
}

DesignModel::DesignModel(const Plan& plan)
    : m_plan(&plan)
{
    State state;
    for (const auto& [path, resource] : plan.resources) {
        if (resource.site >= 0 && !resource.isFixed)
            state.sites[path] = resource.site;
    }
    m_history = m_kept = {state};
}

void DesignModel::startAgain()
{
    m_history = m_kept;
    m_index = m_history.size() - 1;
}

void DesignModel::dropLastKept()
{
    if (m_kept.size() > 1)
        m_kept.pop_back();
}

QByteArray DesignModel::follow(const QByteArray& command, const QByteArray& answer)
{
    if (command == "state")
        return compare(answer.mid(6));
    const QByteArrayList words = wordsOf(command);
    if (answer.startsWith("no "))
        return mayBeRefused(words) ? QByteArray() : "must be accepted";
    if (words[0] == "undo" || words[0] == "redo")
        return step(words[0] == "undo" ? -1 : 1);
    if (words[1] == "save") {
        wasSaved();
        return {};
    }
    State next = state();
    const QByteArray problem = make(words, answer, next);
    if (!problem.isEmpty() || next == state())
        return problem;
    m_history.resize(m_index + 1);
    m_history.push_back(next);
    ++m_index;
    m_kept.push_back(next);
    return objection(next);
}

QByteArray DesignModel::step(int by)
{
    if (by < 0 ? m_index == 0 : m_index + 1 == m_history.size())
        return "there is nothing to go to";
    m_index += static_cast<std::size_t>(by);
    m_kept.push_back(state());
    return {};
}

QByteArray DesignModel::compare(const QByteArray& told)
{
    if (!m_unknown.isEmpty()) {
        for (const QByteArray& fact : told.split('|')) {
            const QByteArrayList words = fact.split('=');
            if (isWithin(words[0], m_unknown) && m_history[m_index].sites.count(words[0]) > 0)
                m_history[m_index].sites[words[0]] = words[1].toInt();
        }
        m_unknown.clear();
        m_kept = m_history;
    }
    const QByteArrayList expected = state().text(*m_plan).split('|');
    const QByteArrayList found = told.split('|');
    QByteArray difference;
    for (const QByteArray& fact : expected) {
        if (!found.contains(fact))
            difference += " lost " + fact;
    }
    for (const QByteArray& fact : found) {
        if (!expected.contains(fact))
            difference += " found " + fact;
    }
    return difference.isEmpty() ? objection(state()) : difference;
}

QByteArray DesignModel::make(const QByteArrayList& words, const QByteArray& told, State& next)
{
    if (words[0] == "zel_setting") {
        set(words[2].toInt(), words[4], words[6], next);
        return {};
    }
    const QByteArray path = words[3];
    if (words[1] == "restore")
        return restore(path, next);
    if (!next.has(path))
        return "it is not there";
    if (words[1] == "place")
        return place(path, words[5].toInt(), told, next);
    if (words[1] == "configure") {
        next.values[path] = words[7];
        if (words[7] == m_plan->resources.at(path).value)
            next.values.erase(path);
        return {};
    }
    if (words[1] == "remove")
        next.removed.insert(path);
    for (const QByteArray& part : m_plan->below(path)) {
        next.sites.erase(part);
        if (words[1] == "remove")
            next.values.erase(part);
    }
    return {};
}

QByteArray DesignModel::place(const QByteArray& path, int site, const QByteArray& told, State& next)
{
    if (m_plan->resources.at(path).type != "IP") {
        next.sites[path] = site;
        return {};
    }
    for (const QByteArray& part : m_plan->below(path)) {
        const Plan::Resource& resource = m_plan->resources.at(part);
        if (resource.type == "DCUCHANNEL" && !resource.isFixed && next.has(part))
            next.sites[part] = -2; // at least somewhere
    }
    if (told.isEmpty())
        m_unknown = path;
    for (const QByteArray& fact : told.mid(3).split('|')) {
        const QByteArrayList words = fact.split('=');
        if (words.size() > 1 && next.sites.count(words[0]) > 0)
            next.sites[words[0]] = words[1].toInt();
    }
    return {};
}

QByteArray DesignModel::restore(const QByteArray& path, State& next) const
{
    if (next.removed.erase(path) == 0)
        return "it was not removed";
    return next.has(path) ? "" : "what it is a part of is not there";
}

void DesignModel::set(int site, const QByteArray& key, const QByteArray& value, State& next) const
{
    const auto put = [&](const QByteArray& which, const QByteArray& what) {
        next.settings[{site, which}] = what;
        if (m_plan->settings.at({site, which}) == what)
            next.settings.erase({site, which});
    };
    const bool isOfChannel = key == "CH0" || key == "CH1";
    const auto old = next.settings.find({site, key});
    const bool isLeft = isOfChannel && old != next.settings.end() && old->second == OffForBoth;
    for (const QByteArray& channel : {QByteArray("CH0"), QByteArray("CH1")}) {
        if (isOfChannel && value == OffForBoth)
            put(channel, value);
        else if (isLeft)
            put(channel, m_plan->settings.at({site, channel}));
    }
    put(key, value);
}

// The rules of placing are not known here; everything else is.
bool DesignModel::mayBeRefused(const QByteArrayList& words) const
{
    if (words[0] == "undo" || words[0] == "redo")
        return words[0] == "undo" ? m_index == 0 : m_index + 1 == m_history.size();
    if (words[0] == "zel_setting" || words[1] == "save")
        return false;
    if (words[1] == "place" || words[1] == "restore")
        return true;
    if (!state().has(words[3]))
        return true;
    const QByteArrayList parts = m_plan->below(words[3]);
    return words[1] == "reset" && std::none_of(parts.begin(), parts.end(), [&](const QByteArray& part) {
        return state().sites.count(part) > 0;
    });
}

// What no rules allow.
QByteArray DesignModel::objection(const State& state) const
{
    std::map<int, QByteArray> occupants;
    for (const auto& [path, resource] : m_plan->resources) {
        const auto moved = state.sites.find(path);
        const int site = resource.isFixed ? resource.site : moved == state.sites.end() ? -1 : moved->second;
        if (!state.has(path) || site == -1 || (site == -2 && !m_unknown.isEmpty()))
            continue;
        const std::vector<int>& allowed = m_plan->sites.at(resource.type);
        if (std::find(allowed.begin(), allowed.end(), site) == allowed.end())
            return path + " is where it cannot be";
        if (!occupants.insert({site, path}).second)
            return path + " and " + occupants[site] + " share a site";
    }
    return {};
}

} // namespace soak
