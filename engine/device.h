// SPDX-License-Identifier: MIT
#pragma once

#include "engine/resourcetype.h"

#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

namespace mirn::zelengine {

struct SiteKind
{
    QString name;
    QString title; // for people
    std::vector<ResourceType> accepts;
    QString occupiedFill; // colour of an occupied site as "#rrggbb"; empty: as drawn
};

// What can be chosen for one key of a site's settings dialog.
struct SiteSetting
{
    QString key;
    QString value; // in force on a fresh device; may be empty: nothing
    QStringList choices;
};

struct Site
{
    int id = 0; // the element id in the drawing
    QString name;
    int kind = 0; // index into Device::kinds()
    QString group; // sites that belong together: a bank, a dual-channel unit; empty: stands alone
    QStringList neighbours; // groups to which the channels of one IP may spread from this site's group
    QStringList reaches; // groups that this clock source can feed
    QMap<QString, QString> attributes;
    std::vector<SiteSetting> settings;
    QMap<QString, QStringList>
        disabledBy; // per key of the group's settings, the values with which this site is out of use
};

// The device as its file describes it: the kinds and the sites, found by id and by name. Knows nothing of a design.
class Device
{
public:
    void setName(const QString& name) { m_name = name; }
    void setDrawingFile(const QString& fileName) { m_drawingFile = fileName; }
    void setFilterFile(const QString& fileName) { m_filterFile = fileName; }
    void setDrawingObjection(const QString& sentence) { m_drawingObjection = sentence; }
    void setFilterObjection(const QString& sentence) { m_filterObjection = sentence; }
    void addKind(SiteKind kind) { m_kinds.push_back(std::move(kind)); }
    // False, and nothing added, when the id or the name is taken.
    bool addSite(Site site);

    [[nodiscard]] const QString& name() const { return m_name; }
    [[nodiscard]] const QString& drawingFile() const { return m_drawingFile; } // absolute; empty: none
    [[nodiscard]] const QString& filterFile() const { return m_filterFile; }
    // Why such a file could not be read when the device file was, with the place that names it; empty: it could.
    [[nodiscard]] const QString& drawingObjection() const { return m_drawingObjection; }
    [[nodiscard]] const QString& filterObjection() const { return m_filterObjection; }
    [[nodiscard]] const std::vector<SiteKind>& kinds() const { return m_kinds; }
    [[nodiscard]] const std::vector<Site>& sites() const { return m_sites; }

    // -1 when there is no such kind.
    [[nodiscard]] int kindIndex(const QString& name) const;
    [[nodiscard]] const SiteKind& kindOf(const Site& site) const;
    [[nodiscard]] bool accepts(const Site& site, ResourceType type) const;

    // Null when there is none; valid until a site is added.
    [[nodiscard]] const Site* site(int id) const;
    [[nodiscard]] const Site* site(const QString& name) const;

    [[nodiscard]] bool hasGroup(const QString& name) const { return m_groups.contains(name); }
    // In the order of the file.
    [[nodiscard]] std::vector<const Site*> sitesOfGroup(const QString& group) const;
    [[nodiscard]] std::vector<const Site*> sitesAccepting(ResourceType type) const;

private:
    QString m_name;
    QString m_drawingFile;
    QString m_filterFile;
    QString m_drawingObjection;
    QString m_filterObjection;
    std::vector<SiteKind> m_kinds;
    std::vector<Site> m_sites;
    QHash<int, int> m_byId; // the values are indices into m_sites
    QHash<QString, int> m_byName;
    QHash<QString, std::vector<int>> m_groups;
};

} // namespace mirn::zelengine
