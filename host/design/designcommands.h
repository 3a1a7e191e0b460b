// SPDX-License-Identifier: MIT
#pragma once

#include "engine/design.h"
#include "engine/settingstore.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace mirn::zelchip {

// Changes to a design as Tcl commands, in the one form in which they are sent, kept and read. Built as Tcl lists: no
// name is ever pasted into a text.
namespace designcommands {

[[nodiscard]] QString place(const QString& resource, int site);
[[nodiscard]] QString reset(const QString& resource);
[[nodiscard]] QString remove(const QString& resource);
[[nodiscard]] QString restore(const QString& resource);
[[nodiscard]] QString configure(const QString& resource, const QString& key, const QString& value);
[[nodiscard]] QString setting(int site, const QString& key, const QString& value);

// A resource that changed its site; -1 is none.
struct Move
{
    QString resource;
    int from = -1;
    int to = -1;
};

// Commands that make the moves, in an order in which the placement rules let each through: what is to move goes off its
// site before anything is put anywhere.
[[nodiscard]] QStringList moves(const std::vector<Move>& moves);

// Commands that lead from some settings of a device to others.
[[nodiscard]] QStringList settings(
    const zelengine::Device& device, const zelengine::SettingChanges& from, const zelengine::SettingChanges& to);

// Commands that lead from a design as its file has it to another state of the same design.
[[nodiscard]] QStringList between(const zelengine::Design& pristine, const zelengine::Design& to);

} // namespace designcommands
} // namespace mirn::zelchip
