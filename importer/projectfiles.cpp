// SPDX-License-Identifier: MIT
#include "importer/projectfiles.h"

#include "importer/jsontext.h"
#include "importer/outputfile.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace mirn::zelimporter::projectfiles {

namespace {

constexpr int MostFilterKinds = 200; // more would not fit into a menu

// Whether resources are of a kind, by kind.
std::vector<bool> typesOf(const ImportedSites& sites, const ImportedDesign& design)
{
    std::vector<bool> isType(static_cast<std::size_t>(sites.kinds.size()));
    for (const ImportedDesign::Resource& resource : design.resources) {
        if (resource.kind != ImportedDesign::None)
            isType[static_cast<std::size_t>(resource.kind)] = true;
    }
    return isType;
}

// The kinds with a filter, by kind.
std::vector<bool> filterKinds(const ImportedSites& sites)
{
    const auto count = static_cast<std::size_t>(sites.kinds.size());
    std::vector<int> sitesOf(count);
    for (const ImportedSites::Site& site : sites.sites)
        ++sitesOf[static_cast<std::size_t>(site.kind)];
    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::stable_sort(
        order.begin(), order.end(), [&sitesOf](std::size_t a, std::size_t b) { return sitesOf[a] > sitesOf[b]; });
    std::vector<bool> result(count);
    for (std::size_t i = 0; i < std::min<std::size_t>(count, MostFilterKinds); ++i)
        result[order[i]] = true;
    return result;
}

} // namespace

QString writeProject(const QString& fileName, const QString& name, bool hasDesign)
{
    OutputFile file(fileName);
    file << "{\n  \"name\": " << jsonText(name)
         << ",\n  \"flow\": \"Floorplanning\",\n  \"device\": " << jsonText(Device) << ",\n";
    if (hasDesign)
        file << "  \"design\": " << jsonText(Design) << ",\n";
    file << "  \"implementations\": [{\"name\": \"impl1\", \"directory\": \"impl1\"}],\n"
            "  \"defaultImplementation\": \"impl1\"\n}\n";
    return file.close();
}

QString writeDevice(const QString& fileName, const QString& name, const ImportedSites& sites,
    const ImportedDesign& design, const KindColours& colours)
{
    const std::vector<bool> isType = typesOf(sites, design);
    OutputFile file(fileName);
    file << "{\n  \"name\": " << jsonText(name) << ",\n  \"drawing\": " << jsonText(Drawing)
         << ",\n  \"filter\": " << jsonText(Filter) << ",\n  \"types\": [";
    const char* comma = "\n";
    for (int kind = 0; kind < sites.kinds.size(); ++kind) {
        if (!isType[static_cast<std::size_t>(kind)])
            continue;
        file << comma << "    {\"name\": " << jsonText(sites.kinds.string(kind)) << '}';
        comma = ",\n";
    }
    file << "\n  ],\n  \"kinds\": [";
    comma = "\n";
    for (int kind = 0; kind < sites.kinds.size(); ++kind) {
        const QByteArray text = jsonText(sites.kinds.string(kind));
        file << comma << "    {\"name\": " << text;
        if (isType[static_cast<std::size_t>(kind)])
            file << ", \"accepts\": [" << text << "]";
        file << ", \"occupiedFill\": \"" << colours.of(kind).occupiedFill << "\"}";
        comma = ",\n";
    }
    file << "\n  ],\n  \"sites\": " << jsonText(Sites) << "\n}\n";
    return file.close();
}

QString writeFilter(const QString& fileName, const ImportedSites& sites)
{
    const std::vector<bool> isListed = filterKinds(sites);
    std::vector<std::string> names;
    for (int kind = 0; kind < sites.kinds.size(); ++kind)
        names.push_back(sites.kinds.string(kind).toLatin1().toStdString());
    OutputFile file(fileName);
    for (int i = 0; i < sites.count(); ++i) {
        const auto kind = static_cast<std::size_t>(sites.sites[static_cast<std::size_t>(i)].kind);
        if (isListed[kind])
            file << '"' << names[kind] << "\" " << i + 1 << '\n';
    }
    return file.close();
}

} // namespace mirn::zelimporter::projectfiles
