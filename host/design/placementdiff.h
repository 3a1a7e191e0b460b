// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <memory>
#include <vector>

namespace mirn::zelengine {
class ReferenceEngine;
}

namespace mirn::zelchip {

class DesignEditor;

// One thing in which two placements of a design differ.
struct PlacementDifference
{
    enum class What { Existence, Place, Lock, Parameter, Setting };

    What what = What::Place;
    QString name; // of the resource; of the site if a setting differs
    QString key; // of the parameter or setting; else empty
    // The name of the site, which is empty if there is none, or the value; for existence and lock "1" or "0".
    QString from;
    QString to;
    std::vector<int> sites; // the ids of the elements that it concerns
};

// Returns the differences between two placements of the same design, resources in the order of the tree, then settings.
// A resource that is removed in one of them has no place there; what is removed with it is told only if it had one.
[[nodiscard]] std::vector<PlacementDifference> placementDifferences(
    const zelengine::ReferenceEngine& from, const zelengine::ReferenceEngine& to);

// Reads a placement file of the editor's design, or the one in an implementation's folder, as a program does that opens
// the project, but into an engine of its own: nothing else changes. Returns null, with a sentence in *error that says
// where the file is wrong and what was expected.
[[nodiscard]] std::unique_ptr<zelengine::ReferenceEngine> readPlacement(
    const DesignEditor& editor, const QString& fileName, QString* error);

// The same for the saved placement; without a file that is the placement in the design file.
[[nodiscard]] std::unique_ptr<zelengine::ReferenceEngine> readSavedPlacement(
    const DesignEditor& editor, QString* error);

} // namespace mirn::zelchip
