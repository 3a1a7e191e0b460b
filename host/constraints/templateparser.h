// SPDX-License-Identifier: MIT
#pragma once

#include "host/constraints/exporttemplate.h"

#include <QByteArray>
#include <QSet>
#include <QString>

#include <optional>
#include <utility>
#include <vector>

namespace mirn::zelchip {

// Returns nothing, with a sentence in *error that says where the template is wrong and what was expected.
[[nodiscard]] std::optional<ExportTemplate> parseTemplate(
    const QString& fileName, const QByteArray& content, QString* error);

// Reads a template line by line. It is used once.
class TemplateParser final
{
public:
    explicit TemplateParser(const QString& fileName);

    // Returns an empty text for success, else what is wrong, with its position.
    [[nodiscard]] QString parse(const QByteArray& content);

    [[nodiscard]] ExportTemplate take() { return std::move(m_template); }

private:
    void readLine(const QString& line);
    void readDirective(const QString& line);
    void beginBlock(const QString& word, const QString& rest);
    void readQuoting(const QString& name, int column);
    void readNames(const QString& names, int column, std::vector<ExportTemplate::Filter>& filters);
    void readText(const QString& text, int firstColumn);
    // Reads the placeholder that begins at an index; returns the index behind it.
    int readPlaceholder(const QString& text, int begin, int firstColumn);
    void addPlaceholder(const QString& content, const ExportTemplate::Position& position);
    [[nodiscard]] Placeholder::Block kindOfBlock() const;
    void addText(const QString& text);
    void fail(int column, const QString& sentence);

    ExportTemplate m_template;
    const Quoting* m_quoting; // unless a placeholder names its own
    QSet<QString> m_directives; // that were read
    std::optional<ExportTemplate::Block> m_block; // that is being read
    int m_line = 0;
    QString m_error;
};

} // namespace mirn::zelchip
