// SPDX-License-Identifier: MIT
#include "importer/optiontexts.h"

#include "importer/tablecolumns.h"
#include "importer/translation.h"

#include <QStringList>

namespace mirn::zelimporter {

QString readColumnOption(const QString& text, ImportOptions& options)
{
    const QStringList items = text.split(QLatin1Char(','));
    for (const QString& item : items) {
        const QString role = item.section(QLatin1Char('='), 0, 0).trimmed();
        const QString column = item.section(QLatin1Char('='), 1).trimmed();
        const QString key = role.contains(QLatin1Char('.')) ? role : QStringLiteral("sites.") + role;
        if (!TableColumns::isRole(key) || column.isEmpty())
            return tr("\"%1\" names no column; expected for example \"width=W\" or \"resources.name=NET\"").arg(item);
        options.columns.insert(key, column);
    }
    return {};
}

QString readSeparatorOption(const QString& text, ImportOptions& options)
{
    if (text == QLatin1String("tab")) {
        options.separator = '\t';
        return {};
    }
    if (text.size() != 1 || text.at(0).unicode() > 0x7E || text == QLatin1String("\"") || text == QLatin1String("\n"))
        return tr("\"%1\" is no separator; expected one character, such as \";\", or \"tab\"").arg(text);
    options.separator = text.at(0).toLatin1();
    return {};
}

QString readUnitOption(const QString& text, ImportOptions& options)
{
    const auto slash = text.indexOf(QLatin1Char('/'));
    bool isNumber = true;
    options.unit = text.left(slash < 0 ? text.size() : slash).trimmed();
    options.unitScale = slash < 0 ? 0 : text.mid(slash + 1).toDouble(&isNumber);
    const bool isScale = slash < 0 || (isNumber && options.unitScale >= 1e-9 && options.unitScale <= 1e9);
    return isScale ? QString()
                   : tr("\"%1\" is no unit; expected its name, such as \"um\", or with the drawing units for one of "
                        "it, such as \"um/0.5\"")
                         .arg(text);
}

QString readAxisOption(const QString& text, ImportOptions& options)
{
    if (text != QLatin1String("up") && text != QLatin1String("down"))
        return tr("\"%1\" is no direction; expected \"up\" or \"down\"").arg(text);
    options.y = text == QLatin1String("up") ? VerticalAxis::Up : VerticalAxis::Down;
    return {};
}

} // namespace mirn::zelimporter
