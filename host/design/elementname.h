// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace mirn::zelengine {
class Device;
}

namespace mirn::zelchip {

// The element that an argument of a command means.
struct NamedElement
{
    int id = -1;
    QString error; // empty if there is an id

    // Takes a number for an id, which need not be that of a site, and anything else for the name of a site.
    [[nodiscard]] static NamedElement find(const zelengine::Device& device, const QString& text);

    // Takes nothing but an id.
    [[nodiscard]] static NamedElement fromId(const QString& text);
};

// Returns the names by which sites can be found.
[[nodiscard]] QStringList siteNames(const zelengine::Device& device);

} // namespace mirn::zelchip
