// SPDX-License-Identifier: MIT
#pragma once

#include "engine/model/resourcetype.h"
#include "engine/model/site.h"
#include "engine/model/siteindex.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

namespace mirn::zelengine {

struct SiteKind
{
    QString name;
    QString title; // for users
    std::vector<const ResourceType*> accepts;
    QString occupiedFill; // colour of an occupied site as "#rrggbb"; empty if it keeps the drawing's
};

// Whether people and commands take a text for a number, and so for the id of a site and not for its name.
[[nodiscard]] bool readsAsId(const QString& text);

// The device as its file describes it: the types of resources, the kinds and the sites, found by id and by name. The
// engine owns it; it knows no design.
class Device
{
public:
    void setName(const QString& name) { m_name = name; }
    void setDrawingFile(const QString& fileName) { m_drawingFile = fileName; }
    void setFilterFile(const QString& fileName) { m_filterFile = fileName; }
    void setDrawingError(const QString& sentence) { m_drawingError = sentence; }
    void setFilterError(const QString& sentence) { m_filterError = sentence; }
    // Replaces the standard types; before any kind is added.
    void setTypes(ResourceTypes types) { m_types = std::move(types); }
    void addKind(SiteKind kind) { m_kinds.push_back(std::move(kind)); }
    // Returns false and adds nothing if the id or the name is taken.
    bool addSite(Site site);

    [[nodiscard]] const QString& name() const { return m_name; }
    [[nodiscard]] const QString& drawingFile() const { return m_drawingFile; } // absolute; empty if none
    [[nodiscard]] const QString& filterFile() const { return m_filterFile; }
    // Why the drawing or the filter file could not be read when the device file was read, with the position that names
    // it; empty if it could.
    [[nodiscard]] const QString& drawingError() const { return m_drawingError; }
    [[nodiscard]] const QString& filterError() const { return m_filterError; }
    [[nodiscard]] const ResourceTypes& types() const { return m_types; }
    [[nodiscard]] const std::vector<SiteKind>& kinds() const { return m_kinds; }
    [[nodiscard]] const std::vector<Site>& sites() const { return m_sites; }

    // Whether the kind takes an IP, by its parts.
    [[nodiscard]] bool isUnit(const Site& site) const;

    // Returns -1 if there is no such kind.
    [[nodiscard]] int kindIndex(const QString& name) const;
    [[nodiscard]] const SiteKind& kindOf(const Site& site) const;
    [[nodiscard]] bool accepts(const Site& site, const ResourceType* type) const;

    // Returns null if there is no such site; the pointer is valid until a site is added.
    [[nodiscard]] const Site* site(int id) const;
    [[nodiscard]] const Site* site(const QString& name) const;

    [[nodiscard]] bool hasGroup(const QString& name) const { return m_groups.contains(name); }
    // Both return the sites in the order of the file.
    [[nodiscard]] std::vector<const Site*> sitesOfGroup(const QString& group) const;
    [[nodiscard]] std::vector<const Site*> sitesAccepting(const ResourceType* type) const;
    // The groups that the sites of a group name as their neighbours; one may be there more than once.
    [[nodiscard]] QStringList neighboursOf(const QString& group) const;

private:
    struct Group
    {
        std::vector<int> sites; // indices into m_sites
        QStringList neighbours;
    };

    QString m_name;
    QString m_drawingFile;
    QString m_filterFile;
    QString m_drawingError;
    QString m_filterError;
    ResourceTypes m_types = standardTypes();
    std::vector<SiteKind> m_kinds;
    std::vector<Site> m_sites;
    SiteIndex m_index;
    QHash<QString, Group> m_groups;
};

} // namespace mirn::zelengine
