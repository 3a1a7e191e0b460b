// SPDX-License-Identifier: MIT
#include "benchmarks/results/texts.h"

namespace zelbench {

std::string sizeText(int elements)
{
    return elements >= 1000000 ? text("%g M", elements / 1e6) : text("%g k", elements / 1e3);
}

void printLeft(const std::string& cell, int width)
{
    std::printf("%-*s", width, cell.c_str());
}

void printRight(const std::string& cell, int width)
{
    std::printf("%*s", width, cell.c_str());
}

} // namespace zelbench
