// SPDX-License-Identifier: MIT
#include "importer/designwriter.h"

#include "importer/jsontext.h"

namespace mirn::zelimporter {

DesignWriter::DesignWriter(const ImportedDesign& design, const ImportedSites& sites)
    : m_design(design)
    , m_sites(sites)
    , m_children(design.resources.size())
{
    for (std::size_t i = 0; i < design.resources.size(); ++i) {
        const int parent = design.resources[i].parent;
        (parent == ImportedDesign::None ? m_top : m_children[static_cast<std::size_t>(parent)])
            .push_back(static_cast<int>(i));
    }
}

QString DesignWriter::write(const QString& fileName, const QString& name)
{
    OutputFile file(fileName);
    file << "{\n  \"name\": " << jsonText(name) << ",\n  \"resources\": ";
    writeResources(file, m_top, 1);
    if (!m_design.connections.empty())
        writeConnections(file);
    file << "\n}\n";
    return file.close();
}

// Recurses once per level, of which there are not many.
void DesignWriter::writeResources(OutputFile& file, const std::vector<int>& resources, int depth) const
{
    const std::string indentation(static_cast<std::size_t>(depth) * 2, ' ');
    const char* comma = "\n";
    file << '[';
    for (const int number : resources) {
        file << comma << indentation << "  {";
        writeMembers(file, m_design.resources[static_cast<std::size_t>(number)]);
        const std::vector<int>& children = m_children[static_cast<std::size_t>(number)];
        if (!children.empty()) {
            file << ", \"children\": ";
            writeResources(file, children, depth + 1);
        }
        file << '}';
        comma = ",\n";
    }
    file << '\n' << indentation << ']';
}

void DesignWriter::writeMembers(OutputFile& file, const ImportedDesign::Resource& resource) const
{
    file << "\"name\": " << jsonText(resource.name);
    if (resource.kind != ImportedDesign::None)
        file << ", \"type\": " << jsonText(m_sites.kinds.string(resource.kind));
    if (resource.site != ImportedDesign::None)
        file << ", \"site\": " << jsonText(m_sites.names.string(resource.site));
    if (resource.isFixed)
        file << ", \"fixed\": true";
}

void DesignWriter::writeConnections(OutputFile& file) const
{
    file << ",\n  \"connections\": [";
    const char* comma = "\n";
    for (const ImportedDesign::Connection& connection : m_design.connections) {
        file << comma
             << "    {\"from\": " << jsonText(m_design.resources[static_cast<std::size_t>(connection.from)].path)
             << ", \"to\": " << jsonText(m_design.resources[static_cast<std::size_t>(connection.to)].path);
        if (!connection.rule.isEmpty())
            file << ", \"rule\": " << jsonText(connection.rule);
        file << '}';
        comma = ",\n";
    }
    file << "\n  ]";
}

} // namespace mirn::zelimporter
