// SPDX-License-Identifier: MIT
#include "host/constraints/placeholder.h"

#include "engine/referenceengine.h"

#include <algorithm>

namespace mirn::zelchip {

namespace {

using zelengine::ReferenceEngine;
using zelengine::Resource;
using zelengine::Site;

const Resource& resourceOf(const BlockSubject& subject)
{
    return subject.engine.design().resource(subject.resource);
}

template <typename IsWanted> bool hasSite(const ReferenceEngine& engine, const IsWanted& isWanted)
{
    const std::vector<Site>& sites = engine.device().sites();
    return std::any_of(sites.begin(), sites.end(), isWanted);
}

template <typename IsWanted> bool hasType(const ReferenceEngine& engine, const IsWanted& isWanted)
{
    const zelengine::ResourceTypes& types = engine.device().types();
    return std::any_of(types.begin(), types.end(), [&](const auto& type) { return isWanted(*type); });
}

bool hasSetting(const Site& site, const QString& key)
{
    return std::any_of(site.settings.begin(), site.settings.end(), [&](const auto& known) { return known.key == key; });
}

bool knowsAttribute(const ReferenceEngine& engine, const QString& key)
{
    return hasSite(engine, [&](const Site& site) { return site.attributes.contains(key); });
}

bool knowsSetting(const ReferenceEngine& engine, const QString& key)
{
    return hasSite(engine, [&](const Site& site) { return hasSetting(site, key); });
}

bool knowsProperty(const ReferenceEngine& engine, const QString& key)
{
    return hasType(engine, [&](const zelengine::ResourceType& type) { return type.properties.contains(key); });
}

bool knowsParameter(const ReferenceEngine& engine, const QString& key)
{
    return hasType(engine, [&](const zelengine::ResourceType& type) { return type.parameter(key) != nullptr; });
}

QString projectName(const BlockSubject& subject, const QString&)
{
    return subject.engine.project().name;
}

QString designName(const BlockSubject& subject, const QString&)
{
    return subject.engine.design().name();
}

QString deviceName(const BlockSubject& subject, const QString&)
{
    return subject.engine.device().name();
}

QString wholePath(const BlockSubject& subject, const QString&)
{
    return resourceOf(subject).path;
}

QString pathBelowRoot(const BlockSubject& subject, const QString&)
{
    return resourceOf(subject).path.mid(subject.engine.design().name().size() + 1);
}

QString lastName(const BlockSubject& subject, const QString&)
{
    return resourceOf(subject).name;
}

QString typeName(const BlockSubject& subject, const QString&)
{
    return nameOf(resourceOf(subject).type);
}

QString property(const BlockSubject& subject, const QString& key)
{
    return resourceOf(subject).properties.value(key);
}

QString parameter(const BlockSubject& subject, const QString& key)
{
    const zelengine::ResourceType* type = resourceOf(subject).type;
    return type && type->parameter(key) ? subject.engine.design().parameter(subject.resource, key) : QString();
}

QString siteName(const BlockSubject& subject, const QString&)
{
    return subject.site->name;
}

QString siteId(const BlockSubject& subject, const QString&)
{
    return QString::number(subject.site->id);
}

QString kindName(const BlockSubject& subject, const QString&)
{
    return subject.engine.device().kindOf(*subject.site).name;
}

QString groupName(const BlockSubject& subject, const QString&)
{
    return subject.site->group;
}

QString attribute(const BlockSubject& subject, const QString& key)
{
    return subject.site->attributes.value(key);
}

QString settingOfSite(const BlockSubject& subject, const QString& key)
{
    return subject.engine.settings().value(subject.site->id, key);
}

QString settingKey(const BlockSubject& subject, const QString&)
{
    return subject.key;
}

QString settingValue(const BlockSubject& subject, const QString&)
{
    return subject.engine.settings().value(subject.site->id, subject.key);
}

} // namespace

const std::vector<Placeholder>& placeholders()
{
    static const std::vector<Placeholder> Table{
        {"project", Placeholder::Any, projectName},
        {"design", Placeholder::Any, designName},
        {"device", Placeholder::Any, deviceName},
        {"resource", Placeholder::OfResource, wholePath},
        {"path", Placeholder::OfResource, pathBelowRoot},
        {"name", Placeholder::OfResource, lastName},
        {"type", Placeholder::OfResource, typeName},
        {"property", Placeholder::OfResource, property, knowsProperty},
        {"parameter", Placeholder::OfResource, parameter, knowsParameter},
        {"site", Placeholder::OfSite, siteName},
        {"id", Placeholder::OfSite, siteId},
        {"kind", Placeholder::OfSite, kindName},
        {"group", Placeholder::OfSite, groupName},
        {"attribute", Placeholder::OfSite, attribute, knowsAttribute},
        {"setting", Placeholder::OfSite, settingOfSite, knowsSetting},
        {"key", Placeholder::OfSetting, settingKey},
        {"value", Placeholder::OfSetting, settingValue},
    };
    return Table;
}

const Placeholder* findPlaceholder(const QString& name, Placeholder::Block block)
{
    const auto it = std::find_if(placeholders().begin(), placeholders().end(),
        [&](const Placeholder& known) { return name == QLatin1String(known.name) && (known.blocks & block) != 0; });
    return it == placeholders().end() ? nullptr : &*it;
}

} // namespace mirn::zelchip
