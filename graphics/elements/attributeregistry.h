// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>

#include <vector>

namespace mirn::zelchipview {

class ZELGraphicItemAttribute;

// The attributes of a drawing by load number. Owns them.
class AttributeRegistry final
{
public:
    AttributeRegistry();
    ~AttributeRegistry();
    AttributeRegistry(const AttributeRegistry&) = delete;
    AttributeRegistry& operator=(const AttributeRegistry&) = delete;

    // Null where there is none.
    [[nodiscard]] ZELGraphicItemAttribute* find(int loadNumber) const;

    // What was kept under the number before is the caller's. Null takes it out.
    void set(int loadNumber, ZELGraphicItemAttribute* attribute);

    // From now on the values may change without a word. Returns false where that was so already.
    static bool handOut(ZELGraphicItemAttribute& attribute);

    // Deletes all attributes and forgets them.
    void deleteAll();

private:
    // A drawing's numbers are 1, 2, 3 and so on: a list finds them without a search.
    std::vector<ZELGraphicItemAttribute*> m_first; // number 1 comes first
    QMap<int, ZELGraphicItemAttribute*> m_others;
};

} // namespace mirn::zelchipview
