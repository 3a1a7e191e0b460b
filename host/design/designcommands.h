// SPDX-License-Identifier: MIT
#pragma once

#include "engine/model/design.h"
#include "engine/rules/settingstore.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace mirn::zelchip {

// Builds the Tcl commands for changes to a design, in the form in which the journal and the placement file hold them.
// They are built as Tcl lists: no name is ever pasted into a text. designtcl.h carries such commands out.
namespace designcommands {

[[nodiscard]] QString place(const QString& resource, int site);
[[nodiscard]] QString reset(const QString& resource);
[[nodiscard]] QString remove(const QString& resource);
[[nodiscard]] QString restore(const QString& resource);
[[nodiscard]] QString lock(const QString& resource);
[[nodiscard]] QString unlock(const QString& resource);
[[nodiscard]] QString configure(const QString& resource, const QString& key, const QString& value);
[[nodiscard]] QString setting(int site, const QString& key, const QString& value);

// A resource whose site changed; -1 means that it has none.
struct Move
{
    QString resource;
    int from = -1;
    int to = -1;
};

// Returns the commands that make these moves, in an order that the placement rules allow: all resets come before all
// placements, because a site must be free before another resource can take it.
[[nodiscard]] QStringList moves(const std::vector<Move>& moves);

// Returns the commands that lead from one state of the settings to another.
[[nodiscard]] QStringList settings(
    const zelengine::Device& device, const zelengine::SettingChanges& from, const zelengine::SettingChanges& to);

// Returns the commands that lead from the design as its file has it to another state of the same design.
[[nodiscard]] QStringList between(const zelengine::Design& pristine, const zelengine::Design& to);

} // namespace designcommands
} // namespace mirn::zelchip
