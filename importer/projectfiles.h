// SPDX-License-Identifier: MIT
#pragma once

#include "importer/importeddesign.h"
#include "importer/importedsites.h"
#include "importer/kindcolours.h"

#include <QString>

namespace mirn::zelimporter {

// The names of the files of an imported project.
namespace projectfiles {

inline const QString Project = QStringLiteral("project.json");
inline const QString Device = QStringLiteral("device.json");
inline const QString Sites = QStringLiteral("sites.csv");
inline const QString Design = QStringLiteral("design.json");
inline const QString Drawing = QStringLiteral("drawing.svg");
inline const QString Filter = QStringLiteral("filter.txt");

// All return an empty text for success, else what went wrong.
[[nodiscard]] QString writeProject(const QString& fileName, const QString& name, bool hasDesign);
[[nodiscard]] QString writeDevice(const QString& fileName, const QString& name, const ImportedSites& sites,
    const ImportedDesign& design, const KindColours& colours);
// Lists the sites by kind, so that each kind can be marked; of very many kinds only those with the most sites.
[[nodiscard]] QString writeFilter(const QString& fileName, const ImportedSites& sites);

} // namespace projectfiles

} // namespace mirn::zelimporter
