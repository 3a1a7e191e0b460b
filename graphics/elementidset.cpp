// SPDX-License-Identifier: MIT
#include "graphics/elementidset.h"

#include <QtAlgorithms>

#include <utility>

namespace mirn::zelchipview {

void ElementIdSet::setListener(Listener listener)
{
    m_listener = std::move(listener);
}

QSet<int> ElementIdSet::ids() const
{
    const std::vector<int> all = list();
    return QSet<int>(all.begin(), all.end());
}

std::vector<int> ElementIdSet::list() const
{
    std::vector<int> ids;
    ids.reserve(m_count);
    for (std::size_t word = 0; word < m_words.size(); ++word) {
        for (std::uint64_t bits = m_words[word]; bits != 0; bits &= bits - 1)
            ids.push_back(static_cast<int>(word * WordBits + qCountTrailingZeroBits(static_cast<quint64>(bits))));
    }
    ids.insert(ids.end(), m_others.begin(), m_others.end());
    return ids;
}

bool ElementIdSet::set(int id)
{
    const auto word = static_cast<unsigned>(id) / WordBits;
    if (word >= MostWords) {
        if (m_others.contains(id))
            return false;
        m_others.insert(id);
        ++m_count;
        return true;
    }
    if (word >= m_words.size())
        m_words.resize(word + 1);
    const std::uint64_t bit = std::uint64_t(1) << (static_cast<unsigned>(id) % WordBits);
    if (m_words[word] & bit)
        return false;
    m_words[word] |= bit;
    ++m_count;
    return true;
}

bool ElementIdSet::unset(int id)
{
    const auto word = static_cast<unsigned>(id) / WordBits;
    if (!contains(id))
        return false;
    --m_count;
    if (word >= MostWords)
        m_others.remove(id);
    else
        m_words[word] &= ~(std::uint64_t(1) << (static_cast<unsigned>(id) % WordBits));
    return true;
}

void ElementIdSet::insert(int id)
{
    if (set(id))
        notify({id});
}

void ElementIdSet::insert(const std::vector<int>& ids)
{
    std::vector<int> added;
    added.reserve(ids.size());
    for (int id : ids) {
        if (set(id))
            added.push_back(id);
    }
    notify(added);
}

void ElementIdSet::remove(int id)
{
    if (unset(id))
        notify({id});
}

void ElementIdSet::assign(const QSet<int>& ids)
{
    std::vector<int> changed;
    for (int id : list()) {
        if (!ids.contains(id) && unset(id))
            changed.push_back(id);
    }
    for (int id : ids) {
        if (set(id))
            changed.push_back(id);
    }
    notify(changed);
}

void ElementIdSet::clear()
{
    const std::vector<int> removed = list();
    m_words.clear();
    m_others.clear();
    m_count = 0;
    notify(removed);
}

void ElementIdSet::notify(const std::vector<int>& changed) const
{
    if (m_listener && !changed.empty())
        m_listener(changed);
}

} // namespace mirn::zelchipview
