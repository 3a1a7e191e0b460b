// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace mirn::zelengine {
class ReferenceEngine;
}

namespace mirn::zelchip {

// The templates that come with the program, by their names.
[[nodiscard]] QStringList templateNames();

// The file of a template: of one that comes with the program if there is one of that name, else the name is a file's.
[[nodiscard]] QString templateFile(const QString& nameOrFile);

// Returns the constraints in the form of a template, or nothing, with a sentence in *error that says why not.
[[nodiscard]] std::optional<QByteArray> constraintsOf(
    const zelengine::ReferenceEngine& engine, const QString& templateNameOrFile, QString* error);

// Writes them into a file, which keeps its content if that fails. Returns an empty text for success, else a sentence.
[[nodiscard]] QString exportConstraints(
    const zelengine::ReferenceEngine& engine, const QString& templateNameOrFile, const QString& fileName);

} // namespace mirn::zelchip
