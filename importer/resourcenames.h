// SPDX-License-Identifier: MIT
#pragma once

#include "importer/importeddesign.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

namespace mirn::zelimporter {

// Finds resources by the texts with which tables mean them: a path, such as "cpu/alu", or a name alone, where it is
// that of a top-level resource or of only one.
class ResourceNames
{
public:
    explicit ResourceNames(ImportedDesign& design);

    // What is wrong with a resource; None for nothing.
    struct Fault
    {
        int resource = ImportedDesign::None;
        bool isOfParent = false; // else of the name
        QString sentence;
    };

    // Sets the parents and the paths of all resources. `parents` are the texts that mean the parents, by resource; a
    // parent may stand behind its children.
    [[nodiscard]] Fault resolve(const QStringList& parents);

    // Returns None, with the reason in *sentence, if the text means no resource or several. Only after resolve().
    [[nodiscard]] int find(const QString& text, QString* sentence) const;

private:
    [[nodiscard]] QString add(int resource, int parent);
    [[nodiscard]] bool isOnly(const QString& name) const { return m_byName.value(name).count == 1; }
    [[nodiscard]] Fault firstOrphan(const QStringList& parents) const;
    [[nodiscard]] QString notFound(const QString& text) const;

    struct Named
    {
        int first = ImportedDesign::None;
        int count = 0;
    };

    ImportedDesign& m_design;
    QHash<QString, Named> m_byName;
    QHash<QString, int> m_byPath;
    std::vector<int> m_reached; // the resources whose path is known, parents first
};

} // namespace mirn::zelimporter
