// SPDX-License-Identifier: MIT
#include "host/constraints/exporttemplate.h"

#include "host/constraints/templateparser.h"

namespace mirn::zelchip {

std::optional<ExportTemplate> ExportTemplate::parse(const QString& fileName, const QByteArray& content, QString* error)
{
    TemplateParser parser(fileName);
    *error = parser.parse(content);
    return error->isEmpty() ? std::make_optional(parser.take()) : std::nullopt;
}

const std::vector<ExportTemplate::Piece>& ExportTemplate::pieces(Block block) const
{
    static const std::vector<Piece> None;
    const auto it = m_blocks.find(block);
    return it == m_blocks.end() ? None : it->second;
}

QString ExportTemplate::located(const Position& position, const QString& sentence) const
{
    return QStringLiteral("%1:%2:%3: %4")
        .arg(m_fileName, QString::number(position.line), QString::number(position.column), sentence);
}

} // namespace mirn::zelchip
