// SPDX-License-Identifier: MIT
#pragma once

#include "engine/design.h"
#include "engine/settingstore.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace mirn::zelchip {

// Changes to a design as Tcl commands, in the one form in which they are sent, kept and read. Built as Tcl lists: no
// name is ever pasted into a text.
namespace designcommands {

[[nodiscard]] QString place(const QString& resource, int site);
[[nodiscard]] QString reset(const QString& resource);
[[nodiscard]] QString remove(const QString& resource);
[[nodiscard]] QString restore(const QString& resource);
[[nodiscard]] QString setting(int site, const QString& key, const QString& value);

struct State
{
    zelengine::Design design;
    zelengine::SettingChanges settings;
};

// Commands that lead from one state of a design to another, in an order in which the placement rules let each through:
// whatever is to move goes off its site before anything is put anywhere. `valueOf` gives what a setting that is not
// among the changes of a state has.
using DefaultSetting = std::function<QString(int site, const QString& key)>;
[[nodiscard]] QStringList between(const State& from, const State& to, const DefaultSetting& valueOf);

} // namespace designcommands
} // namespace mirn::zelchip
