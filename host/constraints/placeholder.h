// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <vector>

namespace mirn::zelengine {
class ReferenceEngine;
struct Resource;
struct Site;
} // namespace mirn::zelengine

namespace mirn::zelchip {

// What a block of a template is about: nothing but the whole project, a placed resource on its site, or a setting of a
// site.
struct BlockSubject
{
    const zelengine::ReferenceEngine& engine;
    int resource = -1; // -1 if the block is not about one, as in the next
    const zelengine::Site* site = nullptr;
    QString key; // of the setting
};

// A placeholder of templates: "${path}", or with a key "${attribute:voltage}".
struct Placeholder
{
    enum Block : unsigned { Whole = 1, OfResource = 2, OfSetting = 4, OfSite = OfResource | OfSetting, Any = 7 };

    const char* name;
    unsigned blocks; // where it may stand
    QString (*value)(const BlockSubject& subject, const QString& key);
    // Whether anything in the project has the key, so that a misspelt one is found. Null if it takes none.
    bool (*knowsKey)(const zelengine::ReferenceEngine& engine, const QString& key) = nullptr;
};

[[nodiscard]] const std::vector<Placeholder>& placeholders();

// Returns null if there is none of that name for that block.
[[nodiscard]] const Placeholder* findPlaceholder(const QString& name, Placeholder::Block block);

} // namespace mirn::zelchip
