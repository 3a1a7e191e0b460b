// SPDX-License-Identifier: MIT
#pragma once

#include "host/constraints/placeholder.h"

#include <QString>

#include <map>
#include <vector>

namespace mirn::zelchip {

struct Quoting;

// How a file of constraints is written, as a template file describes it (docs/formats.md): texts with placeholders for
// the beginning, a placed resource, what stands between resources and settings, a changed setting, and the end.
class ExportTemplate final
{
public:
    enum class Block { Head, Resource, Between, Setting, Tail };

    struct Position // in the file, counted from 1
    {
        int line = 1;
        int column = 1;
    };

    // A text, or if there is a placeholder what stands for it.
    struct Piece
    {
        QString text;
        const Placeholder* placeholder = nullptr;
        QString key; // of the placeholder, if it takes one
        const Quoting* quoting = nullptr;
        Position position;
    };

    // A name to which the output is limited.
    struct Filter
    {
        QString name;
        Position position;
    };

    // Ends with a line break unless it is empty.
    [[nodiscard]] const std::vector<Piece>& pieces(Block block) const;
    [[nodiscard]] const QString& separator() const { return m_separator; } // at the end of each line but the last
    // Empty for all resources and sites.
    [[nodiscard]] const std::vector<Filter>& types() const { return m_types; }
    [[nodiscard]] const std::vector<Filter>& kinds() const { return m_kinds; }

    // Returns "FILE:LINE:COLUMN: sentence".
    [[nodiscard]] QString located(const Position& position, const QString& sentence) const;

private:
    friend class TemplateParser;

    QString m_fileName;
    std::map<Block, std::vector<Piece>> m_blocks;
    QString m_separator;
    std::vector<Filter> m_types;
    std::vector<Filter> m_kinds;
};

} // namespace mirn::zelchip
