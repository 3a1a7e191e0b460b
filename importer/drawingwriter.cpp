// SPDX-License-Identifier: MIT
#include "importer/drawingwriter.h"

#include "importer/translation.h"

#include <QLocale>

#include <algorithm>
#include <numeric>
#include <string_view>

namespace mirn::zelimporter {

namespace {

constexpr std::string_view LetterColour = "#35332e";
constexpr std::string_view NoteColour = "#7c786c";
constexpr double BaseLine = 0.36; // below the middle of letters, as a share of their size
constexpr double NoteShare = 0.6; // of the size of the title
constexpr double Unlimited = 1000; // a scale value that no view reaches
constexpr double HalfStep = 0.125; // of the scale value, so that rounding does not matter

// For an attribute or a text; control characters were refused but for ends of lines.
void writeEscaped(OutputFile& file, std::string_view text)
{
    constexpr std::string_view Special = "&<>\"\n\r\t";
    while (!text.empty()) {
        const std::size_t plain = std::min(text.find_first_of(Special), text.size());
        file << text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty())
            return;
        file << "&#" << static_cast<int>(text.front()) << ';';
        text.remove_prefix(1);
    }
}

void writeEscaped(OutputFile& file, const QString& text)
{
    writeEscaped(file, text.toStdString());
}

void writeLayer(OutputFile& file, int number, double minimum, double maximum, const QString& name)
{
    file << "  <tovanel:layer number=\"" << number << "\" minimum=\"" << minimum << "\" maximum=\"" << maximum
         << "\" name=\"";
    writeEscaped(file, name);
    file << "\"/>\n";
}

} // namespace

DrawingWriter::DrawingWriter(const ImportedSites& sites, const DrawingLayout& layout, const KindColours& colours)
    : m_sites(sites)
    , m_layout(layout)
    , m_colours(colours)
    , m_isHolder(sites.sites.size())
{
    for (const ImportedSites::Site& site : sites.sites) {
        if (site.parent != ImportedSites::None)
            m_isHolder[static_cast<std::size_t>(site.parent)] = true;
    }
}

// Level by level. What covers more is drawn first, so that it hides nothing.
std::vector<DrawingWriter::Group> DrawingWriter::groups() const
{
    const auto kinds = static_cast<std::size_t>(m_sites.kinds.size());
    std::vector<Group> groups(kinds * static_cast<std::size_t>(m_sites.levels));
    std::vector<double> areas(groups.size()); // of all sites
    for (int i = 0; i < m_sites.count(); ++i) {
        const ImportedSites::Site& site = m_sites.sites[static_cast<std::size_t>(i)];
        const auto group = static_cast<std::size_t>(site.level) * kinds + static_cast<std::size_t>(site.kind);
        groups[group].push_back(i);
        areas[group] += site.width * site.height;
    }
    std::vector<std::size_t> order(groups.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        if (a / kinds != b / kinds)
            return a / kinds < b / kinds;
        return areas[a] * static_cast<double>(groups[b].size()) > areas[b] * static_cast<double>(groups[a].size());
    });
    std::vector<Group> sorted;
    for (const std::size_t group : order) {
        if (!groups[group].empty())
            sorted.push_back(std::move(groups[group]));
    }
    return sorted;
}

QString DrawingWriter::write(const QString& fileName, const QString& name, const ImportProgress& progress)
{
    OutputFile file(fileName);
    writeHead(file, name);
    writeGround(file, name);
    const std::vector<Group> all = groups();
    std::size_t done = 0;
    for (const Group& group : all) {
        writeSites(file, group);
        writeLids(file, group);
        done += group.size();
        if (file.isFailed() || (progress && !progress(0.8 * static_cast<double>(done) / m_sites.count())))
            return file.close();
    }
    LabelLayout labels(m_sites, m_layout);
    for (const Group& group : all)
        writeLabels(file, labels.labelsOf(group));
    writeLayers(file, labels);
    file << "</svg>\n";
    const QString error = file.close();
    if (progress)
        (void)progress(1.0);
    return error;
}

void DrawingWriter::writeHead(OutputFile& file, const QString& name) const
{
    file << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:tovanel=\"urn:tovanel:chip-drawing\" "
            "width=\""
         << m_layout.width() << "\" height=\"" << m_layout.height() << "\" viewBox=\"0 0 " << m_layout.width() << ' '
         << m_layout.height() << "\">\n <title>";
    writeEscaped(file, name);
    file << "</title>\n <desc>";
    writeEscaped(file,
        m_sites.unit.isEmpty() ? tr("%1 drawing units are 1 in the table of sites.").arg(m_layout.scale())
                               : tr("%1 drawing units are 1 %2.").arg(QString::number(m_layout.scale()), m_sites.unit));
    file << "</desc>\n";
}

void DrawingWriter::writeGround(OutputFile& file, const QString& name) const
{
    const DrawingLayout::Area& body = m_layout.body();
    const double padding = m_layout.margin() / 2;
    file << " <rect x=\"" << body.x - padding << "\" y=\"" << body.y - padding << "\" width=\""
         << body.width + 2 * padding << "\" height=\"" << body.height + 2 * padding
         << "\" fill=\"#fbfaf7\" stroke=\"#c9c5b8\" stroke-width=\"" << padding / 20 << "\"/>\n <text x=\""
         << body.x - padding << "\" y=\"" << body.y - padding - 0.8 * m_layout.titleSize() << "\" font-size=\""
         << m_layout.titleSize() << "\" fill=\"" << LetterColour << "\">";
    writeEscaped(file, name);
    file << "<tspan dx=\"" << m_layout.titleSize() << "\" font-size=\"" << m_layout.titleSize() * NoteShare
         << "\" fill=\"" << NoteColour << "\">";
    writeEscaped(file,
        m_sites.kinds.size() == 1 ? tr("%1 sites of one kind").arg(QLocale(QLocale::English).toString(m_sites.count()))
                                  : tr("%1 sites of %2 kinds")
                                        .arg(QLocale(QLocale::English).toString(m_sites.count()),
                                            QLocale(QLocale::English).toString(m_sites.kinds.size())));
    file << "</tspan></text>\n";
}

void DrawingWriter::writeSites(OutputFile& file, const Group& group) const
{
    const ImportedSites::Site& first = m_sites.sites[static_cast<std::size_t>(group.front())];
    const DrawingLayout::Level& level = m_layout.level(first.level);
    const KindColours::Look& look = m_colours.of(first.kind);
    file << " <g tovanel:layer=\"" << first.level + 1 << "\" fill=\"" << look.fill << '"';
    if (level.border > 0)
        file << " stroke=\"" << look.border << "\" stroke-width=\"" << level.border << '"';
    file << ">\n";
    for (const int site : group)
        writeSite(file, site);
    file << " </g>\n";
}

void DrawingWriter::writeLids(OutputFile& file, const Group& group) const
{
    const ImportedSites::Site& first = m_sites.sites[static_cast<std::size_t>(group.front())];
    const bool hasHolder = std::any_of(
        group.begin(), group.end(), [this](int site) { return m_isHolder[static_cast<std::size_t>(site)]; });
    if (first.level > 0 || !hasHolder || !m_layout.hasLids())
        return;
    file << " <g tovanel:layer=\"" << m_layout.lidLayer() << "\" fill=\"" << m_colours.of(first.kind).closedFill
         << "\">\n";
    for (const int site : group) {
        if (m_isHolder[static_cast<std::size_t>(site)])
            writeSite(file, site);
    }
    file << " </g>\n";
}

void DrawingWriter::writeSite(OutputFile& file, int number) const
{
    const ImportedSites::Site& site = m_sites.sites[static_cast<std::size_t>(number)];
    const DrawingLayout::Area area = m_layout.areaOf(site);
    file << "<rect x=\"" << area.x << "\" y=\"" << area.y << "\" width=\"" << area.width << "\" height=\""
         << area.height << "\" tovanel:id=\"" << number + 1 << "\" tovanel:popup=\"";
    if (site.tooltip == ImportedSites::None) {
        writeEscaped(file, m_sites.kinds.text(site.kind));
        file << ' ';
        writeEscaped(file, m_sites.names.text(number));
    } else {
        writeEscaped(file, m_sites.tooltips.text(site.tooltip));
    }
    file << "\"/>\n";
}

void DrawingWriter::writeLabels(OutputFile& file, const std::vector<LabelLayout::Label>& labels)
{
    int layer = -1;
    for (const LabelLayout::Label& label : labels) {
        if (label.layer != layer) {
            if (layer >= 0)
                file << " </g>\n";
            layer = label.layer;
            file << " <g tovanel:layer=\"" << layer << "\" fill=\"" << LetterColour << "\" text-anchor=\"middle\">\n";
        }
        const double shift = BaseLine * label.size;
        file << "<text x=\"" << label.x + (label.isUpright ? shift : 0) << "\" y=\""
             << label.y + (label.isUpright ? 0 : shift) << "\" font-size=\"" << label.size << '"';
        if (label.isUpright)
            file << " transform=\"rotate(-90 " << label.x + shift << ' ' << label.y << ")\"";
        file << '>';
        writeEscaped(file, label.text);
        file << "</text>\n";
    }
    if (layer >= 0)
        file << " </g>\n";
}

void DrawingWriter::writeLayers(OutputFile& file, const LabelLayout& labels) const
{
    file << " <metadata>\n";
    for (int i = 0; i < m_sites.levels; ++i) {
        const int first = m_layout.level(i).firstStep;
        writeLayer(file, i + 1,
            first == DrawingLayout::Always ? -Unlimited : DrawingLayout::scaleValue(first) - HalfStep, Unlimited,
            tr("Sites, level %1").arg(i));
    }
    if (m_layout.hasLids())
        writeLayer(file, m_layout.lidLayer(), -Unlimited,
            DrawingLayout::scaleValue(m_layout.level(1).firstStep) - HalfStep, tr("Lids"));
    for (const auto& [number, range] : labels.layers())
        writeLayer(file, number, DrawingLayout::scaleValue(range.first) - HalfStep,
            std::min(Unlimited, DrawingLayout::scaleValue(range.last) + HalfStep), tr("Labels %1").arg(number));
    file << " </metadata>\n";
}

} // namespace mirn::zelimporter
