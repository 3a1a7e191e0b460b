// SPDX-License-Identifier: MIT
#include "engine/rules/settingstore.h"

#include "engine/input/jsonnode.h"
#include "engine/model/design.h"
#include "engine/model/device.h"
#include "platform/contract/zeltext.h"

#include <algorithm>

namespace mirn::zelengine {

namespace {

const SiteSetting* settingOf(const Site& site, const QString& key)
{
    const auto it = std::find_if(
        site.settings.begin(), site.settings.end(), [&key](const SiteSetting& setting) { return setting.key == key; });
    return it == site.settings.end() ? nullptr : &*it;
}

bool isCoupled(const SiteSetting& setting)
{
    return setting.key.contains(QLatin1Char(':'));
}

// Finds the setting that offers a value for `key` together with other keys.
const SiteSetting* coupledSettingOf(const Site& site, const QString& key, const QString& value)
{
    for (const SiteSetting& setting : site.settings) {
        if (isCoupled(setting) && setting.key.split(QLatin1Char(':')).contains(key) && setting.choices.contains(value))
            return &setting;
    }
    return nullptr;
}

std::vector<std::string> engineTexts(const QStringList& texts)
{
    std::vector<std::string> result;
    for (const QString& text : texts)
        result.push_back(toEngineText(text));
    return result;
}

} // namespace

SettingStore::SettingStore(const Device& device)
    : m_device(device)
{ }

const Site* SettingStore::carrier(int siteId) const
{
    const Site* site = m_device.site(siteId);
    if (!site || !site->settings.empty())
        return site;
    for (const Site* candidate : m_device.sitesOfGroup(site->group)) {
        if (!candidate->settings.empty())
            return candidate;
    }
    return nullptr;
}

QString SettingStore::value(int siteId, const QString& key) const
{
    const Site* site = carrier(siteId);
    const SiteSetting* setting = site ? settingOf(*site, key) : nullptr;
    return setting ? valueOf(*site, *setting) : QString();
}

SettingStore::Proposal SettingStore::propose(int siteId, const QString& key, const QString& value) const
{
    const Site* site = carrier(siteId);
    if (!site)
        return {-1, {}, QStringLiteral("element %1 has no settings").arg(siteId)};
    const SiteSetting* setting = settingOf(*site, key);
    if (!setting || isCoupled(*setting)) {
        QStringList keys;
        for (const SiteSetting& known : site->settings) {
            if (!isCoupled(known))
                keys.append(known.key);
        }
        return {site->id, {},
            QStringLiteral("%1 has no setting \"%2\", expected %3").arg(site->name, key, quotedAlternatives(keys))};
    }
    // A dialog writes what it shows, also where that contradicts itself, and must not switch another key by it.
    if (value == valueOf(*site, *setting) && brokenCoupling(*site, *setting))
        return {site->id, m_changes.value(site->id), {}};
    const SiteSetting* coupled = coupledSettingOf(*site, key, value);
    // The value of a fresh device can always be restored, even if it is empty.
    if (!coupled && value != setting->value && !setting->choices.contains(value))
        return {site->id, {},
            QStringLiteral("%1 cannot be \"%2\", expected %3").arg(key, value, quotedAlternatives(setting->choices))};

    const QStringList keys = coupled ? coupled->key.split(QLatin1Char(':')) : QStringList(key);
    SettingStore changed = *this;
    for (const QString& each : keys)
        changed.leaveCommonValue(*site, each);
    for (const QString& each : keys) {
        if (const SiteSetting* target = settingOf(*site, each))
            changed.store(*site, *target, value);
    }
    return {site->id, changed.m_changes.value(site->id), {}};
}

// A common value ends for all its keys at once; the others return to the value of a fresh device.
void SettingStore::leaveCommonValue(const Site& site, const QString& key)
{
    for (const SiteSetting& setting : site.settings) {
        const QStringList keys = setting.key.split(QLatin1Char(':'));
        if (!isCoupled(setting) || !keys.contains(key) || commonValueOf(site, setting).isEmpty())
            continue;
        for (const QString& other : keys) {
            if (const SiteSetting* target = settingOf(site, other))
                store(site, *target, target->value);
        }
    }
}

std::map<std::string, std::vector<std::string>> SettingStore::offers(int siteId) const
{
    std::map<std::string, std::vector<std::string>> result;
    const Site* site = carrier(siteId);
    if (!site)
        return result;
    for (const SiteSetting& setting : site->settings) {
        QStringList texts = setting.choices;
        texts.prepend(isCoupled(setting) ? commonValueOf(*site, setting) : valueOf(*site, setting));
        result[toEngineText(setting.key)] = engineTexts(texts);
    }
    return result;
}

QString SettingStore::disablingSetting(const Site& site) const
{
    for (auto it = site.disabledBy.begin(); it != site.disabledBy.end(); ++it) {
        const QString inForce = value(site.id, it.key());
        if (it.value().contains(inForce))
            return QStringLiteral("%1 is %2").arg(it.key(), inForce);
    }
    return {};
}

QString SettingStore::outOfUse(const Resource& resource) const
{
    const Site* site = m_device.site(resource.site);
    const QString setting = site ? disablingSetting(*site) : QString();
    return setting.isEmpty()
        ? QString()
        : QStringLiteral("%1 is on %2, which is out of use because %3").arg(resource.path, site->name, setting);
}

QStringList SettingStore::contradictions(const Site& site) const
{
    QStringList sentences;
    for (const SiteSetting& setting : site.settings) {
        const SiteSetting* coupled = isCoupled(setting) ? nullptr : brokenCoupling(site, setting);
        if (coupled)
            sentences.append(QStringLiteral("%1 of %2 is %3, which is possible for %4 together only")
                                 .arg(setting.key, site.name, valueOf(site, setting),
                                     QString(coupled->key).replace(QLatin1Char(':'), QLatin1String(" and "))));
    }
    return sentences;
}

// Returns a setting that offers the value in force for this key and others together, if none of these is in force and
// the key alone may not have it; null otherwise.
const SiteSetting* SettingStore::brokenCoupling(const Site& site, const SiteSetting& setting) const
{
    const QString inForce = valueOf(site, setting);
    const SiteSetting* broken = nullptr;
    if (setting.choices.contains(inForce))
        return broken;
    for (const SiteSetting& coupled : site.settings) {
        if (!isCoupled(coupled) || !coupled.key.split(QLatin1Char(':')).contains(setting.key))
            continue;
        if (commonValueOf(site, coupled) == inForce)
            return nullptr;
        if (coupled.choices.contains(inForce))
            broken = &coupled;
    }
    return broken;
}

void SettingStore::setChanges(int carrier, const SiteSettingChanges& changes)
{
    if (changes.isEmpty())
        m_changes.remove(carrier);
    else
        m_changes.insert(carrier, changes);
}

QString SettingStore::valueOf(const Site& site, const SiteSetting& setting) const
{
    return m_changes.value(site.id).value(setting.key, setting.value);
}

// The value that is in force for all keys of a coupled setting; empty if there is none.
QString SettingStore::commonValueOf(const Site& site, const SiteSetting& coupled) const
{
    const QStringList keys = coupled.key.split(QLatin1Char(':'));
    QStringList values;
    for (const QString& key : keys) {
        const SiteSetting* setting = settingOf(site, key);
        values.append(setting ? valueOf(site, *setting) : QString());
    }
    const bool isCommon = values.count(values.first()) == values.size() && coupled.choices.contains(values.first());
    return isCommon ? values.first() : QString();
}

void SettingStore::store(const Site& site, const SiteSetting& setting, const QString& value)
{
    if (value != setting.value) {
        m_changes[site.id].insert(setting.key, value);
        return;
    }
    const auto it = m_changes.find(site.id);
    if (it == m_changes.end())
        return;
    it->remove(setting.key);
    if (it->isEmpty())
        m_changes.erase(it);
}

} // namespace mirn::zelengine
