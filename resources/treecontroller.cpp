// SPDX-License-Identifier: MIT
#include "resources/treecontroller.h"

namespace mirn::zelchipview {

namespace {

TreeController::Provider currentProvider
    = nullptr; // NOLINT: the constructors of tree and table have no parameter for it

} // namespace

TreeController& TreeController::current()
{
    return currentProvider();
}

void TreeController::setProvider(Provider provider)
{
    currentProvider = provider;
}

} // namespace mirn::zelchipview
