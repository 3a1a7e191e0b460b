// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <map>
#include <string>
#include <vector>

namespace mirn::zelengine {

class Device;
struct Site;
struct SiteSetting;

// What differs from a fresh device: by key, and by the id of the site that carries the settings.
using SiteSettingChanges = QHash<QString, QString>;
using SettingChanges = QHash<int, SiteSettingChanges>;

// The settings of the device's sites: what can be chosen, what is in force. A key of the form "A:B" offers choices that
// hold for A and B together: they are set through A or B and then are in force for both.
class SettingStore
{
public:
    explicit SettingStore(const Device& device);

    // The site that carries the settings for a site: itself, or the one of its group that has some. Null: none.
    [[nodiscard]] const Site* carrier(int site) const;

    // What is in force; empty when nothing is or there is no such setting.
    [[nodiscard]] QString value(int site, const QString& key) const;
    // Empty on success, else why not.
    [[nodiscard]] QString setValue(int site, const QString& key, const QString& value);

    // Per key the value in force, then all choices, as 8-bit text; empty when the site has no settings. For a key "A:B"
    // the value in force is empty while A and B have values of their own: a dialog that was told otherwise would take
    // the choice of the common value for no change.
    [[nodiscard]] std::map<std::string, std::vector<std::string>> offers(int site) const;

    // What puts a site out of use, as "KEY is VALUE"; empty when nothing does.
    [[nodiscard]] QString obstacle(const Site& site) const;

    [[nodiscard]] const SettingChanges& changes() const { return m_changes; }
    void setChanges(int carrier, const SiteSettingChanges& changes);

private:
    [[nodiscard]] QString valueOf(const Site& site, const SiteSetting& setting) const;
    [[nodiscard]] QString commonValueOf(const Site& site, const SiteSetting& coupled) const;
    void leaveCommonValue(const Site& site, const QString& key);
    void store(const Site& site, const SiteSetting& setting, const QString& value);

    const Device& m_device;
    SettingChanges m_changes;
};

} // namespace mirn::zelengine
