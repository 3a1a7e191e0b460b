// SPDX-License-Identifier: MIT
#include "dialogs/settingscontroller.h"

namespace mirn::zelchipview {

namespace {

SettingsController::Provider currentProvider = nullptr; // NOLINT: the dialog's constructor has no parameter for it

} // namespace

SettingsController& SettingsController::current()
{
    return currentProvider();
}

void SettingsController::setProvider(Provider provider)
{
    currentProvider = provider;
}

} // namespace mirn::zelchipview
