// SPDX-License-Identifier: MIT
#include "host/constraints/exporttemplate.h"

namespace mirn::zelchip {

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
