// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <vector>

namespace mirn::zelengine {

// One setting of a site and its possible values.
struct SiteSetting
{
    QString key;
    QString value; // in force on a fresh device; empty if there is none
    QStringList choices;
};

struct Site
{
    int id = 0; // its element id in the drawing
    QString name;
    int kind = 0; // index into Device::kinds()
    QString group; // the bank or dual-channel unit that it belongs to; empty if none
    QStringList neighbours; // groups next to this site's group, where the parts of one IP may also be placed
    QStringList reaches; // groups that a source on this site can feed
    QMap<QString, QString> attributes;
    std::vector<SiteSetting> settings;
    QMap<QString, QStringList> disabledBy; // by key of the group's settings: the values that put this site out of use

    // The name of the unit that it is in: a site without a group is one by itself.
    [[nodiscard]] const QString& unitName() const { return group.isEmpty() ? name : group; }
};

} // namespace mirn::zelengine
