// SPDX-License-Identifier: MIT
#pragma once

#include "engine/model/resourceparameter.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace mirn::zelengine {

// A type of the design's resources with the rules that hold for all of them, as the device file describes it. Whoever
// points to one must not outlive the device. A resource without a type is a folder: it holds others and cannot be
// placed itself.
struct ResourceType
{
    QString name; // in files
    QString title; // for users
    int number = 0; // its place in ResourceTypes
    int code = 0; // the contract's kind code, or one of its own from FirstOwnCode on
    // Not null for an IP: what has no site of its own and is placed by its parts of this type.
    const ResourceType* parts = nullptr;
    bool feeds = false; // a source: it serves the parts of the IP that it belongs to, and of those that it names
    QStringList properties; // keys of the texts that the design file may state
    std::vector<ResourceParameter> parameters;

    // The rules. A group is a unit or a bank of the device.
    bool sharesUnit = false; // the parts of one IP are in one group or in neighbouring ones
    bool mustReach = false; // the site of a source reaches the groups of all parts that it serves
    QString agreesOn; // the resources in one group state no two values of this property; empty if they may
    int mostInGroup = 0; // how many of them one group takes; 0 for any number

    // Returns null if the type has no such parameter.
    [[nodiscard]] const ResourceParameter* parameter(const QString& key) const;
};

// The smallest code of types that the contract does not know.
constexpr int FirstOwnCode = 6;

// The types of a device, in an order that has no meaning but stays. They keep their places in memory.
using ResourceTypes = std::vector<std::shared_ptr<const ResourceType>>;

// The types and rules of a device whose file describes none.
[[nodiscard]] const ResourceTypes& standardTypes();

// Returns null if there is no such type.
[[nodiscard]] const ResourceType* findType(const ResourceTypes& types, const QString& name);

[[nodiscard]] QStringList namesOf(const ResourceTypes& types);

// The codes of the contract by the names that files use for them.
[[nodiscard]] const QStringList& contractTypeNames();

// Folders only hold others, and an IP is placed by its parts.
[[nodiscard]] inline bool hasOwnSite(const ResourceType* type)
{
    return type && !type->parts;
}

// Returns an empty text for a folder.
[[nodiscard]] inline QString nameOf(const ResourceType* type)
{
    return type ? type->name : QString();
}

// Empty for folders.
[[nodiscard]] const std::vector<ResourceParameter>& parametersOf(const ResourceType* type);

} // namespace mirn::zelengine
