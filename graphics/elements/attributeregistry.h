// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>

#include <vector>

namespace mirn::zelchipview {

class ZELGraphicItemAttribute;

// Owns the attributes of a drawing and finds them by load number. The controller owns the registry. Element ids mean
// nothing here.
class AttributeRegistry final
{
public:
    AttributeRegistry();
    ~AttributeRegistry();
    AttributeRegistry(const AttributeRegistry&) = delete;
    AttributeRegistry& operator=(const AttributeRegistry&) = delete;

    // Returns null if there is no attribute with this number.
    [[nodiscard]] ZELGraphicItemAttribute* find(int loadNumber) const;

    // Takes ownership of the attribute. An attribute that it replaces belongs to the caller from now on; null only
    // removes it.
    void set(int loadNumber, ZELGraphicItemAttribute* attribute);

    // Marks an attribute as known to a host, which may change its values without notice. Returns false if it was marked
    // before.
    static bool handOut(ZELGraphicItemAttribute& attribute);

    // Deletes all attributes.
    void deleteAll();

private:
    // The numbers of a drawing are 1, 2, 3 and so on, so a vector finds them without a search.
    std::vector<ZELGraphicItemAttribute*> m_first; // starts with number 1
    QMap<int, ZELGraphicItemAttribute*> m_others;
};

} // namespace mirn::zelchipview
