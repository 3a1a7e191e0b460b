// SPDX-License-Identifier: MIT
#pragma once

#include "engine/resourcetype.h"

#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>

#include <vector>

namespace mirn::zelengine {

struct Resource
{
    QString name;
    QString path; // slash-separated from the root's name on: the name by which everyone else knows it
    ResourceType type = ResourceType::Folder;
    int parent = -1; // index of a resource, -1: top level
    std::vector<int> children;
    int site = -1; // id of the site it is placed on, -1: none
    bool fixed = false; // its placement cannot be changed
    QString voltage; // supplies only; empty: any
    QHash<QString, QString> parameters; // by key, where the design file does not leave the preset
    std::vector<int> feeds; // the IPs that a clock source serves besides the one it is part of
};

// The design: a tree of resources and where they are placed. A value: copy it to remember a state. Keeps the tree and
// the placements consistent, but knows no rules; indices of resources stay valid until the resource is removed.
class Design
{
public:
    explicit Design(QString rootName = {});

    [[nodiscard]] const QString& name() const { return m_name; }

    // Adds under `parent` (-1: at the top level) and sets parent and path. -1 when a sibling has this name.
    int add(int parent, Resource resource);
    void addFeed(int clock, int ip);
    // With everything below, which goes off its sites. restore() brings it back.
    void remove(int resource);
    // Brings back what remove() was called for: on its site what is fixed there, unplaced what is not; without what was
    // removed of it before. Its parent must be there, and such sites free.
    void restore(int resource);
    // What remove() was called for and restore() not since, in ascending order; a parent may be among them with its
    // children.
    [[nodiscard]] QStringList removedPaths() const { return m_removed.keys(); }
    // -1 for what is not among them.
    [[nodiscard]] int findRemoved(const QString& path) const { return m_removed.value(path, -1); }
    // The site onto which restore() would put a removed resource; -1: none.
    [[nodiscard]] int siteAfterReturn(int resource) const { return m_fixedSites.value(resource, -1); }

    [[nodiscard]] const Resource& resource(int index) const { return m_resources[static_cast<std::size_t>(index)]; }
    [[nodiscard]] const std::vector<int>& topLevel() const { return m_topLevel; }
    // -1 when there is none.
    [[nodiscard]] int find(const QString& path) const { return m_byPath.value(path, -1); }
    // All resources, each before its children, siblings in order.
    [[nodiscard]] std::vector<int> all() const;
    // The resource and everything below it, in the same order.
    [[nodiscard]] std::vector<int> subtree(int resource) const;

    // The index of what is placed on a site, -1 when it is free.
    [[nodiscard]] int occupant(int site) const { return m_occupants.value(site, -1); }
    [[nodiscard]] const QHash<int, int>& occupants() const { return m_occupants; } // by site id
    // Puts the resource on a site that is free; -1 takes it off.
    void setSite(int resource, int site);
    void setFixed(int resource, bool fixed) { at(resource).fixed = fixed; }

    // The value in force of a parameter that the resource's type has.
    [[nodiscard]] QString parameter(int resource, const QString& key) const;
    // What it is as long as nobody configures it. A resource that was removed and restored has this again.
    [[nodiscard]] QString originalParameter(int resource, const QString& key) const;
    void setParameter(int resource, const QString& key, const QString& value);

    // The nearest IP above a resource, or -1.
    [[nodiscard]] int ipOf(int resource) const;
    // What of one type belongs to an IP, without what belongs to an IP inside it.
    [[nodiscard]] std::vector<int> partsOf(int ip, ResourceType type) const;
    // The IPs that a clock source serves, without those that are removed.
    [[nodiscard]] std::vector<int> fedBy(int clock) const;
    // Whether there are some, be they removed or not.
    [[nodiscard]] bool isFeeder(int clock) const { return ipOf(clock) >= 0 || !resource(clock).feeds.empty(); }
    // The clock sources that serve an IP.
    [[nodiscard]] std::vector<int> clocksOf(int ip) const;

private:
    // The list in which a resource stands or stood.
    [[nodiscard]] std::vector<int>& siblings(int resource);
    [[nodiscard]] Resource& at(int index) { return m_resources[static_cast<std::size_t>(index)]; }

    QString m_name;
    std::vector<Resource> m_resources; // a removed one keeps its place, unreachable and unplaced
    std::vector<int> m_topLevel;
    QHash<QString, int> m_byPath;
    QHash<int, int> m_occupants; // by site id
    QMap<QString, int> m_removed; // by path
    QHash<int, int> m_fixedSites; // of fixed resources that were removed
    QHash<int, QHash<QString, QString>> m_configured; // by resource and key: what differs from the design file
    QHash<int, std::vector<int>> m_feeders; // by IP, in ascending order: the clocks that have it among their feeds
};

} // namespace mirn::zelengine
