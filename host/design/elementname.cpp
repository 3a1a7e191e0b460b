// SPDX-License-Identifier: MIT
#include "host/design/elementname.h"

#include "engine/model/device.h"

namespace mirn::zelchip {

NamedElement NamedElement::find(const zelengine::Device& device, const QString& text)
{
    if (zelengine::readsAsId(text))
        return fromId(text);
    const zelengine::Site* site = device.site(text);
    return site ? NamedElement{site->id, {}} : NamedElement{-1, QStringLiteral("there is no site \"%1\"").arg(text)};
}

NamedElement NamedElement::fromId(const QString& text)
{
    bool isNumber = false;
    const int id = text.toInt(&isNumber);
    return isNumber ? NamedElement{id, {}}
                    : NamedElement{-1, QStringLiteral("expected integer but got \"%1\"").arg(text)};
}

QStringList siteNames(const zelengine::Device& device)
{
    QStringList names;
    for (const zelengine::Site& site : device.sites()) {
        if (!zelengine::readsAsId(site.name))
            names.append(site.name);
    }
    return names;
}

} // namespace mirn::zelchip
