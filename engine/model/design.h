// SPDX-License-Identifier: MIT
#pragma once

#include "engine/model/resourcetype.h"

#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>

#include <vector>

namespace mirn::zelengine {

struct Resource
{
    QString name;
    QString path; // slash-separated names from the root down; identifies the resource everywhere
    const ResourceType* type = nullptr; // null for a folder
    int parent = -1; // index of a resource; -1 at the top level
    std::vector<int> children;
    int site = -1; // id of the site it is placed on; -1 if none
    bool fixed = false; // the design file keeps it on its site, and nobody can change that
    bool locked = false; // it stays on its site until somebody unlocks it; only what is placed and not fixed is locked
    QHash<QString, QString> properties; // by key, if the design file states them
    QHash<QString, QString> parameters; // by key, if the design file sets them
    bool isRemoved = false; // it and what is below it keep their indices
    std::vector<int> feeds; // the IPs that a source serves in addition to the one it is part of

    [[nodiscard]] bool isHeld() const { return fixed || locked; }
    [[nodiscard]] bool isFolder() const { return !type; }
    [[nodiscard]] bool isIp() const { return type && type->parts; }
    [[nodiscard]] bool isSource() const { return type && type->feeds; }
    // What it states of the property on which the resources in one group agree; empty if any value will do.
    [[nodiscard]] QString statement() const { return type ? properties.value(type->agreesOn) : QString(); }
};

// A connection that the design file states between two resources.
struct Link
{
    enum class Rule {
        Near, // no rule: the nearer the better
        SameUnit, // both are in one group or in neighbouring ones
        Reachable, // the site of the first reaches the group of the second
    };
    int other = -1; // index of a resource
    Rule rule = Rule::Near;
    bool isFirst = false; // whether the link is from the resource that has it, and not to it
};

// The design: a tree of resources and their placements. It has value semantics, so a copy remembers a state. It keeps
// the tree and the placements consistent but knows no placement rules. The index of a resource never changes, not even
// while the resource is removed.
class Design
{
public:
    explicit Design(QString rootName = {});

    [[nodiscard]] const QString& name() const { return m_name; }

    // Adds a resource under `parent` (-1 for the top level) and sets its parent and path. Returns its index, or -1 if a
    // sibling has the same name.
    int add(int parent, Resource resource);
    void addFeed(int source, int ip);
    void addLink(int from, int to, Link::Rule rule);
    // Removes a resource and its subtree, frees their sites and takes off their locks. restore() undoes it.
    void remove(int resource);
    // Restores a resource for which remove() was called. Fixed parts return to their sites, all others stay unplaced,
    // also those that were locked, and parts that had been removed before stay removed. The parent must exist and these
    // sites must be free.
    void restore(int resource);
    // The paths for which remove() was called and restore() has not been called since, in ascending order. Both a
    // resource and its parent may be among them.
    [[nodiscard]] QStringList removedPaths() const { return m_removed.keys(); }
    // Returns -1 for a path that is not among them.
    [[nodiscard]] int findRemoved(const QString& path) const { return m_removed.value(path, -1); }
    // The site on which restore() would put a removed resource; -1 if none.
    [[nodiscard]] int restoredSite(int resource) const { return m_fixedSites.value(resource, -1); }

    [[nodiscard]] const Resource& resource(int index) const { return m_resources[static_cast<std::size_t>(index)]; }
    [[nodiscard]] const std::vector<int>& topLevel() const { return m_topLevel; }
    // Returns -1 if there is no such resource.
    [[nodiscard]] int find(const QString& path) const { return m_byPath.value(path, -1); }
    // All resources in preorder, siblings in order.
    [[nodiscard]] std::vector<int> all() const;
    // The resource and everything below it, in the same order.
    [[nodiscard]] std::vector<int> subtree(int resource) const;

    // Returns the index of the resource on a site, or -1 if the site is free.
    [[nodiscard]] int occupant(int site) const { return m_occupants.value(site, -1); }
    [[nodiscard]] const QHash<int, int>& occupants() const { return m_occupants; } // by site id
    // Places the resource on a free site; -1 takes it off its site.
    void setSite(int resource, int site);
    void setFixed(int resource, bool fixed) { at(resource).fixed = fixed; }
    void setLocked(int resource, bool locked) { at(resource).locked = locked; }

    // The value in force.
    [[nodiscard]] QString parameter(int resource, const QString& key) const;
    // The value that holds until the resource is configured, and again after it was removed and restored.
    [[nodiscard]] QString originalParameter(int resource, const QString& key) const;
    void setParameter(int resource, const QString& key, const QString& value);

    // Returns the nearest IP above a resource, or -1.
    [[nodiscard]] int ipOf(int resource) const;
    // The parts by which an IP is placed, without those of an IP inside it.
    [[nodiscard]] std::vector<int> partsOf(int ip) const;
    // The IP that the resource is one of the parts of; -1 if none.
    [[nodiscard]] int ipOfPart(int resource) const;
    // The IPs that a source serves, without removed ones.
    [[nodiscard]] std::vector<int> fedBy(int source) const;
    // Whether the source serves any IP, removed ones included.
    [[nodiscard]] bool isFeeder(int source) const { return ipOf(source) >= 0 || !resource(source).feeds.empty(); }
    // The sources that serve an IP.
    [[nodiscard]] std::vector<int> sourcesOf(int ip) const;
    // The links of a resource with others, without removed ones.
    [[nodiscard]] std::vector<Link> linksOf(int resource) const;
    [[nodiscard]] bool hasLinks(int resource) const { return m_links.contains(resource); }

private:
    template <typename Predicate> [[nodiscard]] std::vector<int> ownOf(int ip, const Predicate& isWanted) const;
    // The list of children that contains the resource, or did before it was removed.
    [[nodiscard]] std::vector<int>& siblings(int resource);
    [[nodiscard]] Resource& at(int index) { return m_resources[static_cast<std::size_t>(index)]; }

    QString m_name;
    std::vector<Resource> m_resources; // a removed one keeps its index, unreachable and unplaced
    std::vector<int> m_topLevel;
    QHash<QString, int> m_byPath;
    QHash<int, int> m_occupants; // by site id
    QMap<QString, int> m_removed; // by path
    QHash<int, int> m_fixedSites; // by resource: where fixed resources that were removed belong
    QHash<int, QHash<QString, QString>> m_configured; // by resource and key: values that differ from the design file
    QHash<int, std::vector<Link>> m_links; // by resource; each one twice
    QHash<int, std::vector<int>> m_feeders; // by IP: the sources that name it among their feeds, in ascending order
};

} // namespace mirn::zelengine
