// SPDX-License-Identifier: MIT
#pragma once

#include <map>

// The range of scale values, both ends included, in which a layer is shown.
struct RangeScale
{
    double minimum = 0.0; // scale value
    double maximum = 0.0; // scale value
};

// The global parameters of a drawing. The defaults are usable as they are: nothing that enters a transform is zero.
struct zel_Parameter
{
    double width = 1000.0; // scene units, > 0
    double height = 1000.0; // scene units, > 0
    double initialScale = 1.0; // transform scale and scale value right after loading, > 0
    double minimumScale = 0.25; // the smallest scale value that zooming in steps reaches
    double maximumScale = 16.0; // the largest scale value that zooming in steps reaches
    double scaleStep = 0.25; // one zoom step scales by (1 + step) and adds step to the scale value, > 0
    std::map<int, RangeScale> layerRanges; // by layer number; a layer without a range is never shown
};
