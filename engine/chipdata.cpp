// SPDX-License-Identifier: MIT
#include "engine/chipdata.h"

#include "engine/model/design.h"
#include "engine/model/device.h"
#include "engine/rules/settingstore.h"
#include "platform/contract/zeltext.h"

#include <QFile>

namespace mirn::zelengine {

namespace {

const std::string PopupKey = "tovanel:popup";
const std::string FillKey = "fill";

// The colour of a site that is occupied although a setting puts it out of use. Only the designer knows which of the two
// is wrong.
const std::string ConflictFill = "#ff4a2e";

bool hasOwnLook(const Site& site)
{
    return !site.attributes.isEmpty()
        && (site.attributes.contains(QString::fromStdString(PopupKey))
            || site.attributes.contains(QString::fromStdString(FillKey)));
}

void describeOccupant(
    AttributeBag& bag, const Site& site, const SiteKind& kind, const Resource& occupant, const QString& conflict)
{
    QString popup = QStringLiteral("%1 %2: %3").arg(kind.title, site.name, occupant.path);
    if (!conflict.isEmpty())
        popup += QStringLiteral("\nConflict: %1").arg(conflict);
    bag.insert(PopupKey, toEngineText(popup));
    if (!conflict.isEmpty())
        bag.insert(FillKey, ConflictFill);
    else if (!kind.occupiedFill.isEmpty())
        bag.insert(FillKey, toEngineText(kind.occupiedFill));
}

} // namespace

const std::string* AttributeBag::getAttributeValue(const std::string* key) const
{
    const auto it = m_values.find(*key);
    return it == m_values.end() ? nullptr : &it->second;
}

ChipData::ChipData(const Device& device)
    : m_drawingFile(QFile::encodeName(device.drawingFile()).toStdString())
    , m_filterFile(QFile::encodeName(device.filterFile()).toStdString())
{
    for (const Site& site : device.sites()) {
        if (hasOwnLook(site))
            m_told.insert(site.id);
    }
}

void ChipData::update(const Device& device, const Design& design, const SettingStore& settings)
{
    for (int resource : design.all()) {
        if (device.site(design.resource(resource).site))
            m_told.insert(design.resource(resource).site);
    }
    m_bags.assign(m_told.size(), {});
    m_records.assign(m_told.size(), {});
    m_recordPointers.clear();
    std::size_t i = 0;
    for (int id : m_told) {
        const Site& site = *device.site(id);
        AttributeBag& bag = m_bags[i];
        for (auto it = site.attributes.begin(); it != site.attributes.end(); ++it)
            bag.insert(toEngineText(it.key()), toEngineText(it.value()));
        const int occupant = design.occupant(id);
        if (occupant >= 0)
            describeOccupant(
                bag, site, device.kindOf(site), design.resource(occupant), settings.disablingSetting(site));
        m_records[i].id = static_cast<unsigned int>(id);
        m_records[i].attributes = &bag;
        m_recordPointers.push_back(&m_records[i++]);
    }
}

} // namespace mirn::zelengine
