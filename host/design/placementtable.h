// SPDX-License-Identifier: MIT
#pragma once

#include "engine/rules/proposal.h"
#include "host/tcl/tclinterpreter.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

namespace mirn::zelengine {
class Design;
class Device;
class TableReader;
struct TableRow;
} // namespace mirn::zelengine

namespace mirn::zelchip {

class DesignEditor;

// What became of a table that sets the placement.
struct TablePlacement
{
    QString error; // why nothing was done: one sentence, with the file's name; else empty
    int placed = 0; // lines whose resource is on their site, also if it was before
    int reset = 0; // lines without a site whose resource has none
    QStringList refused; // the other lines as "FILE:LINE: reason"
};

// Places resources as a table says that has the columns "resource" (a path, with or without the design's name) and
// "site" (a name, an id, or nothing for no site). The accepted lines are one change of the design, and their order does
// not matter; the refused ones leave their resources where they are. A table that cannot be read changes nothing.
[[nodiscard]] TablePlacement placeFromTable(DesignEditor& editor, const QString& fileName);

// Returns the outcome as a dictionary with placed, reset and refused, or the error.
[[nodiscard]] TclResult resultOf(const TablePlacement& outcome);

// Reads such a table: what its lines wish, each resource at most once. It knows no rule of placement.
class PlacementTable final
{
public:
    // Both must live as long.
    PlacementTable(const zelengine::Device& device, const zelengine::Design& design);

    // Returns an empty text for success, else one sentence with the file's name and line.
    [[nodiscard]] QString read(const QString& fileName);

    [[nodiscard]] const std::vector<zelengine::Placement>& wishes() const { return m_wishes; }
    [[nodiscard]] qint64 lineOf(std::size_t wish) const { return m_lines[wish]; }

    struct RefusedLine
    {
        qint64 line;
        QString reason;
    };
    // The lines that wish nothing, because they name nothing that there is.
    [[nodiscard]] const std::vector<RefusedLine>& refused() const { return m_refused; }

private:
    [[nodiscard]] QString readHeader(const zelengine::TableReader& reader, const zelengine::TableRow& header);
    void readRow(const zelengine::TableRow& row);
    [[nodiscard]] QString addWish(const QString& name, const QString& site, qint64 line);
    [[nodiscard]] int resourceOf(const QString& name) const;

    const zelengine::Device& m_device;
    const zelengine::Design& m_design;
    std::size_t m_resourceColumn = 0;
    std::size_t m_siteColumn = 0;
    std::vector<zelengine::Placement> m_wishes;
    std::vector<qint64> m_lines; // by wish
    QHash<int, qint64> m_lineOfResource;
    std::vector<RefusedLine> m_refused;
};

} // namespace mirn::zelchip
