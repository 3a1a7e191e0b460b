// SPDX-License-Identifier: MIT
#pragma once

#include "engine/rules/refusal.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <map>
#include <string>
#include <vector>

namespace mirn::zelengine {

class Device;
struct Resource;
struct Site;
struct SiteSetting;

// Differences from a fresh device: by key, and by the id of the site that carries the settings.
using SiteSettingChanges = QHash<QString, QString>;
using SettingChanges = QHash<int, SiteSettingChanges>;

// The settings of the device's sites: their choices and the values in force. The engine owns it; it stores only
// differences from a fresh device. A key of the form "A:B" offers choices that hold for A and B together; they are set
// through A or B and are then in force for both.
class SettingStore
{
public:
    explicit SettingStore(const Device& device);

    // Returns the site that carries the settings for a site: itself, or the one in its group that has settings. Null if
    // there is none.
    [[nodiscard]] const Site* carrier(int site) const;

    // The value in force; empty if there is none or no such setting.
    [[nodiscard]] QString value(int site, const QString& key) const;
    // The answer to "may this setting have that value": what all settings of the carrier would differ in then, or why
    // not.
    struct Proposal
    {
        int carrier = -1; // site id
        SiteSettingChanges changes;
        Refusal refusal;

        [[nodiscard]] bool isAllowed() const { return refusal.isEmpty(); }
    };
    [[nodiscard]] Proposal propose(int site, const QString& key, const QString& value) const;

    // Returns, for each key, the value in force followed by all choices, as 8-bit text; empty if the site has no
    // settings. The value in force of a key "A:B" is empty while A and B have different values: otherwise a dialog
    // would take choosing the common value for no change.
    [[nodiscard]] std::map<std::string, std::vector<std::string>> offers(int site) const;

    // The setting that puts a site out of use, as "KEY is VALUE"; empty if there is none.
    [[nodiscard]] QString disablingSetting(const Site& site) const;
    // Says that a resource is on a site that a setting puts out of use; empty if it is not.
    [[nodiscard]] QString outOfUse(const Resource& resource) const;

    // One sentence for each setting of a site that has a value which is offered for several keys together only, but is
    // not in force for all of them. propose() causes that only by going back to a fresh device that has it.
    [[nodiscard]] QStringList contradictions(const Site& carrier) const;

    [[nodiscard]] const SettingChanges& changes() const { return m_changes; }
    void setChanges(int carrier, const SiteSettingChanges& changes);

private:
    [[nodiscard]] QString valueOf(const Site& site, const SiteSetting& setting) const;
    [[nodiscard]] const SiteSetting* brokenCoupling(const Site& site, const SiteSetting& setting) const;
    [[nodiscard]] QString commonValueOf(const Site& site, const SiteSetting& coupled) const;
    void leaveCommonValue(const Site& site, const QString& key);
    void store(const Site& site, const SiteSetting& setting, const QString& value);

    const Device& m_device;
    SettingChanges m_changes;
};

} // namespace mirn::zelengine
