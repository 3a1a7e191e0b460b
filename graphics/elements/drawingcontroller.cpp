// SPDX-License-Identifier: MIT
#include "graphics/elements/drawingcontroller.h"

namespace mirn::zelchipview {

namespace {

DrawingController::Provider currentProvider = nullptr; // NOLINT: the constructors of items have no parameter for it

} // namespace

DrawingController& DrawingController::current()
{
    return currentProvider();
}

void DrawingController::setProvider(Provider provider)
{
    currentProvider = provider;
}

} // namespace mirn::zelchipview
