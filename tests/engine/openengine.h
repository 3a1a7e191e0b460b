// SPDX-License-Identifier: MIT
#pragma once

#include "engine/model/resourceparameter.h"
#include "engine/referenceengine.h"

#include <memory>

// The engine of a project with which nothing is wrong.
inline std::unique_ptr<mirn::zelengine::ReferenceEngine> openEngine(const QString& folder)
{
    QString error;
    QStringList warnings;
    auto engine = mirn::zelengine::ReferenceEngine::open(folder, &error, &warnings);
    if (!engine || !warnings.isEmpty())
        qFatal("%s", qPrintable(error + warnings.join('\n')));
    return engine;
}

// The place and settings of everything in the design: all that a program that opens the project must find again.
inline QStringList factsOf(const mirn::zelengine::ReferenceEngine& engine)
{
    const mirn::zelengine::Design& design = engine.design();
    QStringList facts = design.removedPaths();
    for (int index : design.all()) {
        const auto& resource = design.resource(index);
        facts.append(resource.path + '@' + QString::number(resource.site) + (resource.locked ? " locked" : ""));
        for (const auto& parameter : mirn::zelengine::parametersOf(resource.type))
            facts.last() += ',' + design.parameter(index, parameter.key);
    }
    const auto& settings = engine.settings().changes();
    QStringList set;
    for (auto site = settings.cbegin(); site != settings.cend(); ++site) {
        for (auto setting = site->cbegin(); setting != site->cend(); ++setting)
            set.append(QString::number(site.key()) + ' ' + setting.key() + '=' + setting.value());
    }
    set.sort(); // their order has no meaning
    return facts + set;
}

// The facts that only one of two states has; empty when they are the same.
inline QString differenceOf(QStringList found, QStringList expected)
{
    if (found == expected)
        return {};
    for (const QString& fact : QStringList(found)) {
        if (expected.removeOne(fact))
            found.removeOne(fact);
    }
    return '{' + found.join("; ") + "} instead of {" + expected.join("; ") + '}';
}
