// SPDX-License-Identifier: MIT
#pragma once

#include "host/constraints/exporttemplate.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace mirn::zelengine {
class ReferenceEngine;
struct Site;
} // namespace mirn::zelengine

namespace mirn::zelchip {

// Writes the placement of a design, and the settings that differ from the fresh device, as a template says.
class ConstraintWriter final
{
public:
    // Both must live as long.
    ConstraintWriter(const ExportTemplate& format, const zelengine::ReferenceEngine& engine);

    // Returns the file in UTF-8, or nothing, with a sentence in *error that names the place in the template.
    [[nodiscard]] std::optional<QByteArray> write(QString* error);

private:
    using Block = ExportTemplate::Block;

    [[nodiscard]] QString refusalOfNames() const;
    [[nodiscard]] std::vector<BlockSubject> resources() const;
    [[nodiscard]] std::vector<BlockSubject> settings() const;
    void writeBlock(Block block, const BlockSubject& subject, const QString& separator = {});
    void writeBlocks(Block block, const std::vector<BlockSubject>& subjects);
    [[nodiscard]] QString valueOf(const ExportTemplate::Piece& piece, const BlockSubject& subject);

    const ExportTemplate& m_format;
    const zelengine::ReferenceEngine& m_engine;
    QString m_text;
    QString m_error;
};

} // namespace mirn::zelchip
