// SPDX-License-Identifier: MIT
#include "graphics/elements/chipscene.h"

namespace mirn::zelchipview {

ChipScene::~ChipScene() = default;

} // namespace mirn::zelchipview
