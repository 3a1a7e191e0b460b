// SPDX-License-Identifier: MIT
#include "placement/commandtexts.h"

namespace mirn::zelchipview::commandtexts {

namespace {

QString command(const char* verb, const QString& resource)
{
    return QStringLiteral("zel_resource") + QLatin1String(verb) + QLatin1Char('{') + resource + QLatin1Char('}');
}

} // namespace

QString place(const QString& resource, const QString& site)
{
    return command(" place -rsc ", resource) + QStringLiteral(" -id ") + site;
}

QString swap(const QString& resource, const QString& other)
{
    return command(" swap -rsc ", resource) + QStringLiteral(" -with {") + other + QLatin1Char('}');
}

QString reset(const QString& resource)
{
    return command(" reset -ip ", resource);
}

QString remove(const QString& resource)
{
    return command(" remove -ip ", resource);
}

} // namespace mirn::zelchipview::commandtexts
