// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>

#include <cstddef>
#include <functional>
#include <memory>
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

    // Returns null if there is no attribute with this number. Makes it if makeOnDemand() said so.
    [[nodiscard]] ZELGraphicItemAttribute* find(int loadNumber) const;

    [[nodiscard]] bool isEmpty() const { return m_first.empty() && m_others.isEmpty(); }

    // Takes ownership of the attribute. An attribute that it replaces belongs to the caller from now on; null only
    // removes it.
    void set(int loadNumber, ZELGraphicItemAttribute* attribute);

    // Marks an attribute as known to a host, which may change its values without notice. Returns false if it was marked
    // before.
    static bool handOut(ZELGraphicItemAttribute& attribute);

    // From now on find() makes the attributes with the numbers 1 to `count` when they are first looked for. There must
    // be none yet.
    using Maker = std::function<std::unique_ptr<ZELGraphicItemAttribute>(int loadNumber)>;
    void makeOnDemand(int count, Maker make);

    // Returns whether the attribute with this number is still to be made.
    [[nodiscard]] bool isLatent(int loadNumber) const;

    // Deletes all attributes, and makes no more.
    void deleteAll();

private:
    [[nodiscard]] ZELGraphicItemAttribute* made(std::size_t index) const;

    // The numbers of a drawing are 1, 2, 3 and so on, so a vector finds them without a search.
    mutable std::vector<ZELGraphicItemAttribute*> m_first; // starts with number 1; find() makes what is latent
    mutable std::vector<bool> m_isLatent; // the same indexes; may be shorter
    Maker m_maker;
    QMap<int, ZELGraphicItemAttribute*> m_others;
};

} // namespace mirn::zelchipview
