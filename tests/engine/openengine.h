// SPDX-License-Identifier: MIT
#pragma once

#include "engine/referenceengine.h"
#include "engine/resourceparameter.h"

#include <memory>

// The engine of a project with which nothing is wrong.
inline std::unique_ptr<mirn::zelengine::ReferenceEngine> openEngine(const QString& folder)
{
    QString error;
    QStringList warnings;
    auto engine = mirn::zelengine::ReferenceEngine::open(folder, &error, &warnings);
    if (!engine || !warnings.isEmpty())
        qFatal("%s", qPrintable(error + warnings.join(QLatin1Char('\n'))));
    return engine;
}

// What is where and set how in the design: all that a program that opens the project must find again.
inline QStringList factsOf(const mirn::zelengine::ReferenceEngine& engine)
{
    const mirn::zelengine::Design& design = engine.design();
    QStringList facts = design.removedPaths();
    for (int index : design.all()) {
        const auto& resource = design.resource(index);
        facts.append(resource.path + QLatin1Char('@') + QString::number(resource.site));
        for (const auto& parameter : mirn::zelengine::parametersOf(resource.type))
            facts.last() += QLatin1Char(',') + design.parameter(index, parameter.key);
    }
    const auto& settings = engine.settings().changes();
    for (auto site = settings.cbegin(); site != settings.cend(); ++site) {
        for (auto setting = site->cbegin(); setting != site->cend(); ++setting)
            facts.append(QString::number(site.key()) + QLatin1Char(' ') + setting.key() + '=' + setting.value());
    }
    return facts;
}

// What one of two states has and the other has not; empty: nothing.
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
