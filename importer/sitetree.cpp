// SPDX-License-Identifier: MIT
#include "importer/sitetree.h"

#include "importer/translation.h"

#include <algorithm>
#include <cmath>

namespace mirn::zelimporter {

namespace {

// Whether one site reaches beyond another by more than rounding explains.
bool reachesBeyond(const ImportedSites::Site& site, const ImportedSites::Site& parent)
{
    const double tolerance
        = 1e-6 * std::max(parent.width, parent.height) + 1e-12 * (std::abs(parent.x) + std::abs(parent.y));
    return site.x < parent.x - tolerance || site.y < parent.y - tolerance
        || site.x + site.width > parent.x + parent.width + tolerance
        || site.y + site.height > parent.y + parent.height + tolerance;
}

} // namespace

SiteTree::SiteTree(ImportedSites& sites, const TextNumbers& parents)
    : m_sites(sites)
    , m_parents(parents)
{ }

SiteTree::Fault SiteTree::resolve()
{
    Fault fault = findParents();
    if (fault.sentence.isEmpty())
        fault = findLevels();
    if (fault.sentence.isEmpty())
        warnAboutBorders();
    return fault;
}

SiteTree::Fault SiteTree::findParents()
{
    std::vector<int> found;
    for (int i = 0; i < m_parents.size(); ++i)
        found.push_back(m_sites.names.find(m_parents.text(i)));
    for (ImportedSites::Site& site : m_sites.sites) {
        if (site.parent == ImportedSites::None)
            continue;
        const int parent = found[static_cast<std::size_t>(site.parent)];
        if (parent < 0)
            return {site.line,
                tr("there is no site \"%1\"; expected the name of a site, or nothing")
                    .arg(m_parents.string(site.parent))};
        site.parent = parent;
    }
    return {};
}

// Returns how many sites a site lies in, or MostLevels if they are too many.
int SiteTree::depthOf(int site) const
{
    int depth = 0;
    for (int i = m_sites.sites[static_cast<std::size_t>(site)].parent;
         i != ImportedSites::None && depth < ImportedSites::MostLevels; ++depth)
        i = m_sites.sites[static_cast<std::size_t>(i)].parent;
    return depth;
}

SiteTree::Fault SiteTree::findLevels()
{
    m_sites.levels = 1;
    for (int i = 0; i < m_sites.count(); ++i) {
        ImportedSites::Site& site = m_sites.sites[static_cast<std::size_t>(i)];
        const int depth = depthOf(i);
        if (depth == ImportedSites::MostLevels)
            return {site.line,
                tr("the site \"%1\" lies in itself, or in more than %2 others; expected a tree of fewer levels")
                    .arg(m_sites.names.string(i), QString::number(ImportedSites::MostLevels - 1))};
        if (site.level == ImportedSites::None)
            site.level = depth;
        m_sites.levels = std::max(m_sites.levels, site.level + 1);
    }
    return {};
}

void SiteTree::warnAboutBorders()
{
    int count = 0;
    int first = ImportedSites::None;
    for (int i = 0; i < m_sites.count(); ++i) {
        const ImportedSites::Site& site = m_sites.sites[static_cast<std::size_t>(i)];
        if (site.parent == ImportedSites::None
            || !reachesBeyond(site, m_sites.sites[static_cast<std::size_t>(site.parent)]))
            continue;
        first = count == 0 ? i : first;
        ++count;
    }
    if (count == 0)
        return;
    const ImportedSites::Site& site = m_sites.sites[static_cast<std::size_t>(first)];
    m_sites.warnings.append(
        tr("%1 sites reach beyond the one that they lie in, the first on line %2: \"%3\" in \"%4\".")
            .arg(QString::number(count), QString::number(site.line), m_sites.names.string(first),
                m_sites.names.string(site.parent)));
}

} // namespace mirn::zelimporter
