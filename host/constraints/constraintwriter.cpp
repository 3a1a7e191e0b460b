// SPDX-License-Identifier: MIT
#include "host/constraints/constraintwriter.h"

#include "engine/input/jsonnode.h"
#include "engine/referenceengine.h"
#include "host/constraints/quoting.h"
#include "host/tcl/translation.h"

#include <algorithm>
#include <utility>

namespace mirn::zelchip {

namespace {

using zelengine::Site;
using Filters = std::vector<ExportTemplate::Filter>;

bool passes(const Filters& filters, const QString& name)
{
    return filters.empty()
        || std::any_of(filters.begin(), filters.end(), [&](const auto& filter) { return filter.name == name; });
}

// Returns what is wrong with the first filter that names nothing; empty if there is none.
QString unknownName(
    const ExportTemplate& format, const Filters& filters, const QStringList& known, const char* sentence)
{
    for (const ExportTemplate::Filter& filter : filters) {
        if (!known.contains(filter.name))
            return format.located(filter.position, tr(sentence).arg(filter.name, zelengine::quotedAlternatives(known)));
    }
    return {};
}

QString subjectName(const BlockSubject& subject)
{
    if (subject.resource >= 0)
        return subject.engine.design().resource(subject.resource).path;
    return subject.site ? subject.site->name : subject.engine.design().name();
}

} // namespace

ConstraintWriter::ConstraintWriter(const ExportTemplate& format, const zelengine::ReferenceEngine& engine)
    : m_format(format)
    , m_engine(engine)
{ }

std::optional<QByteArray> ConstraintWriter::write(QString* error)
{
    m_text.clear();
    m_error = refusalOfNames();
    const BlockSubject whole{m_engine, -1, nullptr, {}};
    writeBlock(Block::Head, whole);
    writeBlocks(Block::Resource, resources());
    writeBlock(Block::Between, whole);
    writeBlocks(Block::Setting, settings());
    writeBlock(Block::Tail, whole);
    *error = m_error;
    return m_error.isEmpty() ? std::make_optional(m_text.toUtf8()) : std::nullopt;
}

// Whether the device and the design have all that the template names.
QString ConstraintWriter::refusalOfNames() const
{
    for (const Block block : {Block::Resource, Block::Setting}) {
        for (const ExportTemplate::Piece& piece : m_format.pieces(block)) {
            if (piece.placeholder && piece.placeholder->knowsKey && !piece.placeholder->knowsKey(m_engine, piece.key))
                return m_format.located(piece.position,
                    tr("nothing has the %1 \"%2\"").arg(QLatin1String(piece.placeholder->name), piece.key));
        }
    }
    QStringList kinds;
    for (const zelengine::SiteKind& kind : m_engine.device().kinds())
        kinds.append(kind.name);
    const QString error = unknownName(m_format, m_format.types(), zelengine::namesOf(m_engine.device().types()),
        "there is no type of resources \"%1\", expected %2");
    return error.isEmpty()
        ? unknownName(m_format, m_format.kinds(), kinds, "there is no kind of sites \"%1\", expected %2")
        : error;
}

std::vector<BlockSubject> ConstraintWriter::resources() const
{
    std::vector<BlockSubject> subjects;
    for (const int index : m_engine.design().all()) {
        const zelengine::Resource& resource = m_engine.design().resource(index);
        const Site* site = m_engine.device().site(resource.site);
        if (site && passes(m_format.types(), nameOf(resource.type))
            && passes(m_format.kinds(), m_engine.device().kindOf(*site).name))
            subjects.push_back({m_engine, index, site, {}});
    }
    return subjects;
}

// In the order of the device file.
std::vector<BlockSubject> ConstraintWriter::settings() const
{
    std::vector<BlockSubject> subjects;
    const zelengine::SettingChanges& changes = m_engine.settings().changes();
    std::vector<const Site*> sites;
    for (auto it = changes.begin(); it != changes.end(); ++it)
        sites.push_back(m_engine.device().site(it.key()));
    std::sort(sites.begin(), sites.end()); // they are items of one list
    for (const Site* site : sites) {
        if (!passes(m_format.kinds(), m_engine.device().kindOf(*site).name))
            continue;
        for (const zelengine::SiteSetting& setting : site->settings) {
            if (changes.value(site->id).contains(setting.key))
                subjects.push_back({m_engine, -1, site, setting.key});
        }
    }
    return subjects;
}

void ConstraintWriter::writeBlocks(Block block, const std::vector<BlockSubject>& subjects)
{
    for (std::size_t i = 0; i < subjects.size() && m_error.isEmpty(); ++i)
        writeBlock(block, subjects[i], i + 1 < subjects.size() ? m_format.separator() : QString());
}

// The separator comes before the line break at the end of the block.
void ConstraintWriter::writeBlock(Block block, const BlockSubject& subject, const QString& separator)
{
    for (const ExportTemplate::Piece& piece : m_format.pieces(block)) {
        if (!m_error.isEmpty())
            return;
        m_text += piece.placeholder ? valueOf(piece, subject) : piece.text;
    }
    if (!separator.isEmpty() && !m_format.pieces(block).empty())
        m_text.insert(m_text.size() - 1, separator);
}

QString ConstraintWriter::valueOf(const ExportTemplate::Piece& piece, const BlockSubject& subject)
{
    const QString value = piece.placeholder->value(subject, piece.key);
    std::optional<QString> text = piece.quoting->quoted(value);
    if (!text)
        m_error = m_format.located(piece.position,
            tr("the %1 \"%2\" of %3 cannot be written with the quoting %4, expected %5")
                .arg(QLatin1String(piece.placeholder->name), value, subjectName(subject),
                    QLatin1String(piece.quoting->name), QLatin1String(piece.quoting->accepted)));
    return std::move(text).value_or(QString());
}

} // namespace mirn::zelchip
