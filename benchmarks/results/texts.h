// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <string>

namespace zelbench {

constexpr int LabelWidth = 52; // columns of the tables, in characters
constexpr int TimeWidth = 13;
constexpr int RatioWidth = 9;

template <typename... Values> [[nodiscard]] std::string text(const char* format, Values... values)
{
    char buffer[80];
    std::snprintf(buffer, sizeof buffer, format, values...);
    return buffer;
}

// Returns a number of elements: "100 k", "1 M".
[[nodiscard]] std::string sizeText(int elements);

void printLeft(const std::string& cell, int width);
void printRight(const std::string& cell, int width);

} // namespace zelbench
