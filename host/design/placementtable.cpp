// SPDX-License-Identifier: MIT
#include "host/design/placementtable.h"

#include "engine/input/tablereader.h"
#include "engine/referenceengine.h"
#include "engine/rules/jointplacement.h"
#include "host/design/designeditor.h"
#include "host/design/elementname.h"
#include "host/tcl/translation.h"

#include <QFileInfo>

#include <algorithm>
#include <string_view>

namespace mirn::zelchip {

using zelengine::Placement;
using zelengine::Refusal;
using zelengine::TableReader;
using zelengine::TableRow;

namespace {

constexpr std::string_view ResourceColumn = "resource";
constexpr std::string_view SiteColumn = "site";

QString textOf(std::string_view field)
{
    return QString::fromUtf8(field.data(), static_cast<int>(field.size()));
}

// Returns what is wrong with the column; empty if there is exactly one of that name.
QString findColumn(const TableRow& header, std::string_view name, std::size_t& column)
{
    const auto first = std::find(header.fields.begin(), header.fields.end(), name);
    column = static_cast<std::size_t>(first - header.fields.begin());
    const auto count = std::count(header.fields.begin(), header.fields.end(), name);
    if (count == 1)
        return {};
    return count == 0 ? tr("there is no column \"%1\"; expected the columns \"%2\" and \"%3\"")
                            .arg(textOf(name), textOf(ResourceColumn), textOf(SiteColumn))
                      : tr("there are several columns \"%1\"; expected one").arg(textOf(name));
}

// Puts the refused lines into the order of the file.
QStringList sentencesOf(const TableReader& reader, std::vector<PlacementTable::RefusedLine> lines)
{
    std::sort(lines.begin(), lines.end(), [](const auto& left, const auto& right) { return left.line < right.line; });
    QStringList sentences;
    for (const PlacementTable::RefusedLine& refused : lines)
        sentences.append(reader.located(refused.line, refused.reason));
    return sentences;
}

} // namespace

PlacementTable::PlacementTable(const zelengine::Device& device, const zelengine::Design& design)
    : m_device(device)
    , m_design(design)
{ }

QString PlacementTable::read(const QString& fileName)
{
    TableReader reader(fileName);
    return reader.read([&](const TableRow& header) { return readHeader(reader, header); },
        [this](const TableRow& row) {
            readRow(row);
            return QString();
        });
}

QString PlacementTable::readHeader(const TableReader& reader, const TableRow& header)
{
    QString error = findColumn(header, ResourceColumn, m_resourceColumn);
    if (error.isEmpty())
        error = findColumn(header, SiteColumn, m_siteColumn);
    return error.isEmpty() ? QString() : reader.located(header.line, error);
}

void PlacementTable::readRow(const TableRow& row)
{
    const QString error = addWish(textOf(row.fields[m_resourceColumn]), textOf(row.fields[m_siteColumn]), row.line);
    if (!error.isEmpty())
        m_refused.push_back({row.line, error});
}

QString PlacementTable::addWish(const QString& name, const QString& site, qint64 line)
{
    const int resource = resourceOf(name);
    if (resource < 0)
        return tr("there is no resource \"%1\"").arg(name);
    const auto known = m_lineOfResource.constFind(resource);
    if (known != m_lineOfResource.constEnd())
        return tr("%1 is in line %2 already").arg(m_design.resource(resource).path, QString::number(*known));
    Placement wish{resource, -1};
    if (!site.isEmpty()) {
        const NamedElement element = NamedElement::find(m_device, site);
        if (!element.error.isEmpty() || !m_device.site(element.id))
            return tr("there is no site \"%1\"").arg(site);
        wish.site = element.id;
    }
    m_lineOfResource.insert(resource, line);
    m_lines.push_back(line);
    m_wishes.push_back(wish);
    return {};
}

int PlacementTable::resourceOf(const QString& name) const
{
    const int resource = m_design.find(name);
    return resource >= 0 ? resource : m_design.find(m_design.name() + QLatin1Char('/') + name);
}

TablePlacement placeFromTable(DesignEditor& editor, const QString& fileName)
{
    const zelengine::ReferenceEngine& engine = editor.engine();
    PlacementTable table(engine.device(), engine.design());
    TablePlacement outcome;
    outcome.error = table.read(fileName);
    if (!outcome.error.isEmpty())
        return outcome;
    const zelengine::JointPlacement together(engine.device(), engine.design(), table.wishes());
    std::vector<PlacementTable::RefusedLine> refused = table.refused();
    std::vector<Placement> accepted;
    for (std::size_t wish = 0; wish < table.wishes().size(); ++wish) {
        const Refusal& refusal = together.refusals()[wish];
        if (!refusal.isEmpty()) {
            refused.push_back({table.lineOf(wish), refusal.sentence()});
            continue;
        }
        accepted.push_back(table.wishes()[wish]);
        ++(accepted.back().site < 0 ? outcome.reset : outcome.placed);
    }
    const Refusal refusal = editor.move(tr("Place from %1").arg(QFileInfo(fileName).fileName()), accepted);
    outcome.error = refusal.sentence();
    outcome.refused = sentencesOf(TableReader(fileName), std::move(refused));
    return outcome;
}

TclResult resultOf(const TablePlacement& outcome)
{
    if (!outcome.error.isEmpty())
        return TclResult::error(outcome.error);
    return TclResult::value(
        TclInterpreter::list({QStringLiteral("placed"), QString::number(outcome.placed), QStringLiteral("reset"),
            QString::number(outcome.reset), QStringLiteral("refused"), TclInterpreter::list(outcome.refused)}));
}

} // namespace mirn::zelchip
