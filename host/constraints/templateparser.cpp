// SPDX-License-Identifier: MIT
#include "host/constraints/templateparser.h"

#include "engine/input/jsonnode.h"
#include "host/constraints/quoting.h"
#include "host/tcl/translation.h"

#include <QMap>

#include <utility>

namespace mirn::zelchip {

namespace {

using Block = ExportTemplate::Block;

const QByteArray TemplateByteOrderMark("\xEF\xBB\xBF");
const QString Opening = QStringLiteral("${");

const QMap<QString, Block>& blocksByName()
{
    static const QMap<QString, Block> Names{{QStringLiteral("head"), Block::Head},
        {QStringLiteral("resource"), Block::Resource}, {QStringLiteral("between"), Block::Between},
        {QStringLiteral("setting"), Block::Setting}, {QStringLiteral("tail"), Block::Tail}};
    return Names;
}

QStringList namesFor(Placeholder::Block block)
{
    QStringList names;
    for (const Placeholder& known : placeholders()) {
        if (known.blocks & block)
            names.append(QString::fromLatin1(known.name) + QLatin1String(known.knowsKey ? ":KEY" : ""));
    }
    return names;
}

QStringList quotingNames()
{
    QStringList names;
    for (const Quoting& known : quotings())
        names.append(QString::fromLatin1(known.name));
    return names;
}

QString unknownQuoting(const QString& name)
{
    return tr("there is no quoting \"%1\", expected %2").arg(name, zelengine::quotedAlternatives(quotingNames()));
}

} // namespace

std::optional<ExportTemplate> parseTemplate(const QString& fileName, const QByteArray& content, QString* error)
{
    TemplateParser parser(fileName);
    *error = parser.parse(content);
    return error->isEmpty() ? std::make_optional(parser.take()) : std::nullopt;
}

TemplateParser::TemplateParser(const QString& fileName)
    : m_quoting(findQuoting(QStringLiteral("plain")))
{
    m_template.m_fileName = fileName;
}

QString TemplateParser::parse(const QByteArray& content)
{
    const QByteArray bytes = content.startsWith(TemplateByteOrderMark) ? content.mid(3) : content;
    QStringList lines = QString::fromUtf8(bytes).split(QLatin1Char('\n'));
    if (lines.last().isEmpty())
        lines.removeLast(); // the line break at the end
    const QByteArrayList byteLines = bytes.split('\n');
    for (QString& line : lines) {
        if (line.toUtf8() != byteLines.at(m_line++))
            fail(1, tr("the line is not UTF-8"));
        else
            readLine(line.endsWith(QLatin1Char('\r')) ? line.chopped(1) : line);
        if (!m_error.isEmpty())
            return m_error;
    }
    if (m_template.pieces(Block::Resource).empty() && m_template.pieces(Block::Setting).empty())
        fail(1, tr("the template writes nothing, expected a block @resource or @setting"));
    return m_error;
}

void TemplateParser::readLine(const QString& line)
{
    const QChar at = QLatin1Char('@');
    const bool isEscaped = line.startsWith(QLatin1String("@@"));
    if (line.startsWith(at) && !isEscaped)
        readDirective(line);
    else if (m_block)
        readText(line.mid(isEscaped ? 1 : 0), isEscaped ? 2 : 1);
    else if (!line.trimmed().isEmpty())
        fail(1, tr("the text belongs to no block, expected @head, @resource, @between, @setting or @tail before it"));
}

void TemplateParser::readDirective(const QString& line)
{
    if (line.startsWith(QLatin1String("@#")))
        return; // a comment
    const QString word = line.section(QLatin1Char(' '), 0, 0).mid(1);
    const QString rest = line.section(QLatin1Char(' '), 1);
    const int column = word.size() + 3; // of the rest
    if (m_directives.contains(word))
        return fail(1, tr("there is a second @%1, expected one").arg(word));
    m_directives.insert(word);
    if (blocksByName().contains(word))
        return beginBlock(word, rest);
    m_block.reset();
    if (word == QLatin1String("quoting"))
        readQuoting(rest.trimmed(), column);
    else if (word == QLatin1String("separator"))
        m_template.m_separator = rest;
    else if (word == QLatin1String("types"))
        readNames(rest, column, m_template.m_types);
    else if (word == QLatin1String("kinds"))
        readNames(rest, column, m_template.m_kinds);
    else
        fail(1,
            tr("there is no directive \"@%1\", expected @head, @resource, @between, @setting, @tail, @quoting, "
               "@separator, @types, @kinds, or @@ for a line that begins with @")
                .arg(word));
}

void TemplateParser::beginBlock(const QString& word, const QString& rest)
{
    m_block = blocksByName().value(word);
    if (!rest.trimmed().isEmpty())
        fail(word.size() + 3, tr("the block begins on the next line, expected nothing behind @%1").arg(word));
}

// It holds for all blocks, so it may not come too late for some.
void TemplateParser::readQuoting(const QString& name, int column)
{
    m_quoting = findQuoting(name);
    if (!m_quoting)
        fail(column, unknownQuoting(name));
    else if (!m_template.m_blocks.empty())
        fail(1, tr("@quoting is behind a block, expected it before all blocks"));
}

void TemplateParser::readNames(const QString& names, int column, std::vector<ExportTemplate::Filter>& filters)
{
    for (const QString& part : names.split(QLatin1Char(','))) {
        const QString name = part.trimmed();
        if (name.isEmpty())
            return fail(column, tr("a name is missing, expected names with commas between them"));
        filters.push_back({name, {m_line, column + static_cast<int>(part.indexOf(name))}});
        column += static_cast<int>(part.size()) + 1;
    }
}

void TemplateParser::readText(const QString& text, int firstColumn)
{
    int begin = 0;
    while (begin < text.size() && m_error.isEmpty()) {
        const int dollar = static_cast<int>(text.indexOf(QLatin1Char('$'), begin));
        addText(text.mid(begin, dollar < 0 ? -1 : dollar - begin));
        if (dollar < 0)
            break;
        begin = readPlaceholder(text, dollar, firstColumn);
    }
    addText(QStringLiteral("\n"));
}

int TemplateParser::readPlaceholder(const QString& text, int begin, int firstColumn)
{
    const QString two = text.mid(begin, 2);
    const int end = static_cast<int>(text.indexOf(QLatin1Char('}'), begin));
    if (two == QLatin1String("$$"))
        addText(QStringLiteral("$"));
    else if (two != Opening)
        fail(begin + firstColumn, tr("a $ stands alone, expected $$ for a dollar sign or ${NAME}"));
    else if (end < 0)
        fail(begin + firstColumn, tr("the placeholder does not end, expected }"));
    else {
        addPlaceholder(text.mid(begin + 2, end - begin - 2), {m_line, begin + firstColumn});
        return end + 1;
    }
    return begin + 2;
}

// "NAME", "NAME:KEY", and both also with "|QUOTING".
void TemplateParser::addPlaceholder(const QString& content, const ExportTemplate::Position& position)
{
    const int bar = static_cast<int>(content.lastIndexOf(QLatin1Char('|')));
    const QString whole = bar < 0 ? content : content.left(bar);
    const int colon = static_cast<int>(whole.indexOf(QLatin1Char(':')));
    const QString name = colon < 0 ? whole : whole.left(colon);
    ExportTemplate::Piece piece;
    piece.placeholder = findPlaceholder(name, kindOfBlock());
    piece.key = colon < 0 ? QString() : whole.mid(colon + 1);
    piece.quoting = bar < 0 ? m_quoting : findQuoting(content.mid(bar + 1));
    piece.position = position;
    if (!piece.placeholder || (piece.placeholder->knowsKey != nullptr) != (colon >= 0))
        fail(position.column,
            tr("there is no placeholder \"%1\" in this block, expected %2")
                .arg(whole, zelengine::quotedAlternatives(namesFor(kindOfBlock()))));
    else if (!piece.quoting)
        fail(position.column, unknownQuoting(content.mid(bar + 1)));
    m_template.m_blocks[*m_block].push_back(std::move(piece));
}

Placeholder::Block TemplateParser::kindOfBlock() const
{
    return m_block == Block::Resource ? Placeholder::OfResource
        : m_block == Block::Setting   ? Placeholder::OfSetting
                                      : Placeholder::Whole;
}

void TemplateParser::addText(const QString& text)
{
    std::vector<ExportTemplate::Piece>& pieces = m_template.m_blocks[*m_block];
    if (pieces.empty() || pieces.back().placeholder)
        pieces.emplace_back();
    pieces.back().text += text;
}

void TemplateParser::fail(int column, const QString& sentence)
{
    if (m_error.isEmpty())
        m_error = m_template.located({m_line, column}, sentence);
}

} // namespace mirn::zelchip
