// SPDX-License-Identifier: MIT
#include "host/design/placementdiff.h"

#include "engine/model/resourceparameter.h"
#include "engine/referenceengine.h"
#include "host/design/designeditor.h"
#include "host/design/designtcl.h"
#include "host/design/journalreader.h"
#include "host/tcl/translation.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace mirn::zelchip {

using zelengine::ReferenceEngine;
using zelengine::Resource;
using zelengine::Site;
using What = PlacementDifference::What;

namespace {

QString flag(bool isSet)
{
    return QString::number(isSet ? 1 : 0);
}

// Compares two engines that have the same device and have read the same design file, so that an index means the same
// resource in both.
class Comparison
{
public:
    Comparison(const ReferenceEngine& from, const ReferenceEngine& to)
        : m_from(from)
        , m_to(to)
    { }

    [[nodiscard]] std::vector<PlacementDifference> differences()
    {
        for (int index : resources())
            compare(index);
        for (const Site& site : m_from.device().sites())
            compareSettings(site);
        return std::move(m_differences);
    }

private:
    // Those that exist in either, in the order of the design file, where a resource comes before its parts.
    [[nodiscard]] std::vector<int> resources() const
    {
        std::vector<int> indexes = m_from.design().all();
        const std::vector<int> others = m_to.design().all();
        indexes.insert(indexes.end(), others.begin(), others.end());
        std::sort(indexes.begin(), indexes.end());
        indexes.erase(std::unique(indexes.begin(), indexes.end()), indexes.end());
        return indexes;
    }

    void compare(int index)
    {
        const Resource& before = m_from.design().resource(index);
        const Resource& after = m_to.design().resource(index);
        const bool wasThere = exists(m_from, index);
        const bool isThere = exists(m_to, index);
        if (wasThere != isThere && !isToldOfParent(before.parent))
            add(What::Existence, index, {}, flag(wasThere), flag(isThere));
        if (before.site != after.site)
            add(What::Place, index, {}, siteName(before.site), siteName(after.site));
        if (!wasThere || !isThere)
            return;
        if (before.locked != after.locked)
            add(What::Lock, index, {}, flag(before.locked), flag(after.locked));
        for (const zelengine::ResourceParameter& parameter : zelengine::parametersOf(before.type)) {
            const QString value = m_from.design().parameter(index, parameter.key);
            const QString newValue = m_to.design().parameter(index, parameter.key);
            if (value != newValue)
                add(What::Parameter, index, parameter.key, value, newValue);
        }
    }

    // A key of the form "A:B" has no value of its own.
    void compareSettings(const Site& site)
    {
        if (m_from.settings().changes().value(site.id) == m_to.settings().changes().value(site.id))
            return;
        for (const zelengine::SiteSetting& setting : site.settings) {
            const QString before = m_from.settings().value(site.id, setting.key);
            const QString after = m_to.settings().value(site.id, setting.key);
            if (!setting.key.contains(QLatin1Char(':')) && before != after)
                m_differences.push_back({What::Setting, site.name, setting.key, before, after, {site.id}});
        }
    }

    void add(What what, int index, const QString& key, const QString& from, const QString& to)
    {
        std::vector<int> sites{m_from.design().resource(index).site, m_to.design().resource(index).site};
        sites.erase(std::remove(sites.begin(), sites.end(), -1), sites.end());
        sites.erase(std::unique(sites.begin(), sites.end()), sites.end());
        m_differences.push_back({what, m_from.design().resource(index).path, key, from, to, std::move(sites)});
    }

    // A removed resource keeps its index, but cannot be found.
    [[nodiscard]] static bool exists(const ReferenceEngine& engine, int index)
    {
        return engine.design().find(engine.design().resource(index).path) == index;
    }
    [[nodiscard]] bool isToldOfParent(int parent) const
    {
        return parent >= 0 && exists(m_from, parent) != exists(m_to, parent);
    }
    [[nodiscard]] QString siteName(int id) const
    {
        const Site* site = m_from.device().site(id);
        return site ? site->name : QString();
    }

    const ReferenceEngine& m_from;
    const ReferenceEngine& m_to;
    std::vector<PlacementDifference> m_differences;
};

// Replays the file into a copy. The folder matters to nobody, because nothing is written while a file is replayed.
std::unique_ptr<ReferenceEngine> replayed(const DesignEditor& editor, const QString& file, QString* error)
{
    std::unique_ptr<ReferenceEngine> engine = editor.engine().copyWith(editor.pristine());
    DesignEditor copy(*engine, QFileInfo(file).absolutePath());
    *error = copy.read(changeCommand(copy), file);
    return engine;
}

} // namespace

std::vector<PlacementDifference> placementDifferences(const ReferenceEngine& from, const ReferenceEngine& to)
{
    return Comparison(from, to).differences();
}

std::unique_ptr<ReferenceEngine> readPlacement(const DesignEditor& editor, const QString& fileName, QString* error)
{
    const QString file = QFileInfo(fileName).isDir() ? fileName + QLatin1String(PlacementFile) : fileName;
    std::unique_ptr<ReferenceEngine> engine;
    if (!QFileInfo::exists(file))
        *error = tr("%1: there is no such file").arg(file);
    else if (!JournalReader::baseOf(file).isEmpty())
        *error = tr("%1:1: the file is a journal").arg(file);
    else
        engine = replayed(editor, file, error);
    if (error->isEmpty())
        return engine;
    *error += tr("; expected a placement file of the design \"%1\"").arg(editor.engine().design().name());
    return nullptr;
}

std::unique_ptr<ReferenceEngine> readSavedPlacement(const DesignEditor& editor, QString* error)
{
    const bool isThere = QFileInfo::exists(editor.placementFile());
    return isThere ? readPlacement(editor, editor.placementFile(), error) : editor.engine().copyWith(editor.pristine());
}

} // namespace mirn::zelchip
