// SPDX-License-Identifier: MIT
#include "graphics/elementidset.h"

#include <utility>

namespace mirn::zelchipview {

void ElementIdSet::setListener(Listener listener)
{
    m_listener = std::move(listener);
}

void ElementIdSet::insert(int id)
{
    if (m_ids.contains(id))
        return;
    m_ids.insert(id);
    notify({id});
}

void ElementIdSet::remove(int id)
{
    if (m_ids.remove(id))
        notify({id});
}

void ElementIdSet::assign(const QSet<int>& ids)
{
    const QSet<int> previous = std::exchange(m_ids, ids);
    notify((previous - ids) + (ids - previous));
}

void ElementIdSet::clear()
{
    notify(std::exchange(m_ids, {}));
}

void ElementIdSet::notify(const QSet<int>& changed) const
{
    if (m_listener && !changed.isEmpty())
        m_listener(changed);
}

} // namespace mirn::zelchipview
