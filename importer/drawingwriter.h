// SPDX-License-Identifier: MIT
#pragma once

#include "importer/drawinglayout.h"
#include "importer/importedsites.h"
#include "importer/importoptions.h"
#include "importer/kindcolours.h"
#include "importer/labellayout.h"
#include "importer/outputfile.h"

#include <QString>

#include <vector>

namespace mirn::zelimporter {

// Writes the drawing: the ground with a title, the sites level by level with the large kinds below the small ones, then
// the labels. A site of the first level has a lid in the colour of its content, which goes when the content comes; both
// have its id. Everything that sites have in common is in their group, so that the file stays small.
class DrawingWriter
{
public:
    // Everything must outlive the writer.
    DrawingWriter(const ImportedSites& sites, const DrawingLayout& layout, const KindColours& colours);

    // Returns an empty text for success, else what went wrong. If the progress function ended it, the file is not
    // whole.
    [[nodiscard]] QString write(const QString& fileName, const QString& name, const ImportProgress& progress);

private:
    using Group = std::vector<int>; // sites of one kind and one level

    [[nodiscard]] std::vector<Group> groups() const;
    void writeHead(OutputFile& file, const QString& name) const;
    void writeGround(OutputFile& file, const QString& name) const;
    void writeSites(OutputFile& file, const Group& group) const;
    void writeLids(OutputFile& file, const Group& group) const;
    void writeSite(OutputFile& file, int number) const;
    static void writeLabels(OutputFile& file, const std::vector<LabelLayout::Label>& labels);
    void writeLayers(OutputFile& file, const LabelLayout& labels) const;

    const ImportedSites& m_sites;
    const DrawingLayout& m_layout;
    const KindColours& m_colours;
    std::vector<bool> m_isHolder; // by site
};

} // namespace mirn::zelimporter
