// SPDX-License-Identifier: MIT
#include "host/sites/sitetext.h"

#include "engine/model/device.h"
#include "host/tcl/translation.h"

#include <QRegularExpression>
#include <QStringList>

namespace mirn::zelchip {

namespace {

const QString Separator = QStringLiteral(" > ");

QString withRowAndColumn(const QString& name)
{
    static const QRegularExpression pattern(QStringLiteral("^(?:(.*)_)?R(\\d+)C(\\d+)$"));
    const QRegularExpressionMatch match = pattern.match(name);
    if (!match.hasMatch())
        return name;
    const QString cell = tr("row %1, column %2").arg(match.captured(2), match.captured(3));
    return match.captured(1).isEmpty() ? cell : match.captured(1) + Separator + cell;
}

} // namespace

QString placeOf(const zelengine::Site& site)
{
    if (site.group.isEmpty() || site.group == site.name)
        return withRowAndColumn(site.name);
    const bool isNamedAfterGroup = site.name.startsWith(site.group + QLatin1Char('_'));
    return site.group + Separator
        + withRowAndColumn(isNamedAfterGroup ? site.name.mid(site.group.size() + 1) : site.name);
}

} // namespace mirn::zelchip
