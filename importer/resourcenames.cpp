// SPDX-License-Identifier: MIT
#include "importer/resourcenames.h"

#include "importer/translation.h"

namespace mirn::zelimporter {

ResourceNames::ResourceNames(ImportedDesign& design)
    : m_design(design)
{
    for (std::size_t i = 0; i < design.resources.size(); ++i) {
        Named& named = m_byName[design.resources[i].name];
        named.first = named.count++ == 0 ? static_cast<int>(i) : named.first;
    }
}

// Goes down from the top: whoever has a path is the parent of those that wait for it.
ResourceNames::Fault ResourceNames::resolve(const QStringList& parents)
{
    QHash<QString, std::vector<int>> waiting;
    for (int i = 0; i < parents.size(); ++i)
        waiting[parents.at(i)].push_back(i);
    for (const int top : waiting.take(QString())) {
        const QString sentence = add(top, ImportedDesign::None);
        if (!sentence.isEmpty())
            return {top, false, sentence};
    }
    for (std::size_t i = 0; i < m_reached.size(); ++i) {
        const int parent = m_reached[i];
        const ImportedDesign::Resource& resource = m_design.resources[static_cast<std::size_t>(parent)];
        std::vector<int> children = waiting.take(resource.path);
        if (isOnly(resource.name)) {
            const std::vector<int> others = waiting.take(resource.name);
            children.insert(children.end(), others.begin(), others.end());
        }
        for (const int child : children) {
            const QString sentence = add(child, parent);
            if (!sentence.isEmpty())
                return {child, false, sentence};
        }
    }
    return firstOrphan(parents);
}

// Returns why the resource cannot be there; empty if it can.
QString ResourceNames::add(int number, int parent)
{
    ImportedDesign::Resource& resource = m_design.resources[static_cast<std::size_t>(number)];
    resource.parent = parent;
    resource.path = parent == ImportedDesign::None
        ? resource.name
        : m_design.resources[static_cast<std::size_t>(parent)].path + QLatin1Char('/') + resource.name;
    const auto known = m_byPath.constFind(resource.path);
    if (known != m_byPath.constEnd())
        return tr("the resource \"%1\" is there twice at this level, first on line %2; expected names that differ")
            .arg(resource.name, QString::number(m_design.resources[static_cast<std::size_t>(*known)].line));
    if (resource.path.count(QLatin1Char('/')) == ImportedDesign::MostDepth)
        return tr("\"%1\" lies too deep; expected at most %2 levels")
            .arg(resource.name, QString::number(ImportedDesign::MostDepth));
    m_byPath.insert(resource.path, number);
    m_reached.push_back(number);
    return {};
}

ResourceNames::Fault ResourceNames::firstOrphan(const QStringList& parents) const
{
    for (int i = 0; i < parents.size(); ++i) {
        const QString& parent = parents.at(i);
        if (!m_design.resources[static_cast<std::size_t>(i)].path.isEmpty())
            continue;
        const bool isThere = isOnly(parent.section(QLatin1Char('/'), -1));
        return {i, true,
            isThere ? tr("\"%1\" does not lead to the top, because it lies in itself or in what is missing; expected "
                         "the name or the path of a resource")
                          .arg(parent)
                    : notFound(parent)};
    }
    return {};
}

QString ResourceNames::notFound(const QString& text) const
{
    const int count = m_byName.value(text).count;
    return count > 1 ? tr("there are %1 resources \"%2\"; expected the path of one, such as \"cpu/%2\"")
                           .arg(QString::number(count), text)
                     : tr("there is no resource \"%1\"; expected the name or the path of one").arg(text);
}

int ResourceNames::find(const QString& text, QString* sentence) const
{
    const auto known = m_byPath.constFind(text);
    if (known != m_byPath.constEnd())
        return *known;
    if (isOnly(text))
        return m_byName.value(text).first;
    *sentence = notFound(text);
    return ImportedDesign::None;
}

} // namespace mirn::zelimporter
