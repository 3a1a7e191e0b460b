// SPDX-License-Identifier: MIT
#pragma once

namespace mirn::zeldevicegenerator {

// The drawing's layers. Names of blocks exist in several sizes, one of which is shown at a time: a name that is a
// caption in the full view would cover the details at the next level.
enum Layer {
    LAYER_BASE,
    LAYER_SITES,
    LAYER_BLOCK_NAMES,
    LAYER_SHORT_NAMES,
    LAYER_TILE_NAMES,
    LAYER_DETAIL,
    LAYER_DETAIL_NAMES,
    LAYER_HEADERS,
    LAYER_FINE_NAMES,
    LAYER_CLOSE_UP,
    LAYER_PIN_NAMES,
    LAYER_COUNT
};

struct LayerRange
{
    const char* name;
    double minimum; // scale values between which the layer is shown, both included
    double maximum;
};

inline constexpr double ScaleStep = 0.25;
inline constexpr double MinimumScale = 0.25;
inline constexpr double MaximumScale = 5.0;
// Exceeds any scale that zooming to an element or fitting into a small window reaches.
inline constexpr double Always = 100.0;

// Scale value s shows the drawing enlarged (1 + step)^((s - 1) / step) times: 1.5 is 1.6x, 2.5 is 3.8x, 3.5 is 9.3x,
// 4.25 is 18x and 5 is 36x. A layer of names begins where its letters become about 8 pixels high.
inline constexpr LayerRange LAYERS[LAYER_COUNT] = {
    {"Outline", -Always, Always},
    {"Sites", -Always, Always},
    {"Block names", 0.75, 2.25},
    {"Short names", 0.75, 1.25},
    {"Tile names", 1.5, 2.25},
    {"Detail", 2.5, Always},
    {"Detail names", 2.5, 3.75},
    {"Headers", 2.5, Always},
    {"Fine names", 3.5, Always},
    {"Close-up", 4.0, Always},
    {"Pin names", 4.25, Always},
};

} // namespace mirn::zeldevicegenerator
