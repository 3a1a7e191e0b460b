// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace mirn::zelimporter {

// The resources of a design and what connects them, as tables describe them. A resource's number is its place in the
// table, from 0.
struct ImportedDesign
{
    static constexpr int None = -1;
    static constexpr int MostDepth = 400; // levels of a design file that can be read

    struct Resource
    {
        QString name;
        QString path; // the names from the top down to it, separated by slashes
        int kind = None; // number of a kind of sites; None for a group
        int parent = None; // number of a resource
        int site = None; // number of the site that it is placed on
        bool isFixed = false;
        std::uint32_t line = 0;
    };

    struct Connection
    {
        int from = None; // numbers of resources
        int to = None;
        QString rule; // empty for none
    };

    std::vector<Resource> resources;
    std::vector<Connection> connections;
};

} // namespace mirn::zelimporter
