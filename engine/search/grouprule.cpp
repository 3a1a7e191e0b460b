// SPDX-License-Identifier: MIT
#include "engine/search/grouprule.h"

#include "engine/model/device.h"

namespace mirn::zelengine {

std::vector<GroupRule> groupRulesOf(const Device& device)
{
    std::vector<GroupRule> rules;
    for (const auto& type : device.types()) {
        GroupRule rule;
        rule.type = type.get();
        if (!type->agreesOn.isEmpty()) {
            rule.textOf = [](const Resource& resource) { return resource.statement(); };
            rule.sentence
                = QStringLiteral("all of type %1 in one group have the same %2").arg(type->name, type->agreesOn);
            rule.same = PairRules::Agreement;
            rules.push_back(rule);
        }
        if (type->mostInGroup > 0) {
            rule.kind = GroupRule::Kind::AtMost;
            rule.most = type->mostInGroup;
            rule.sentence
                = QStringLiteral("one group takes at most %1 of type %2").arg(QString::number(rule.most), type->name);
            rule.same = PairRules::Capacity;
            rules.push_back(rule);
        }
    }
    return rules;
}

} // namespace mirn::zelengine
