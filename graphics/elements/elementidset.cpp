// SPDX-License-Identifier: MIT
#include "graphics/elements/elementidset.h"

#include <QtAlgorithms>

#include <algorithm>
#include <limits>
#include <utility>

namespace mirn::zelchipview {

namespace {

// 16 million ids in two megabytes. This is not a member: std::min() takes references, so the member of an exported
// class would become a unique symbol, which keeps the library in memory after dlclose().
constexpr unsigned MostWords = 1U << 18;

// Returns whether the bit was clear.
bool setBit(std::uint64_t& word, unsigned bit)
{
    const std::uint64_t mask = std::uint64_t(1) << bit;
    const bool isNew = (word & mask) == 0;
    word |= mask;
    return isNew;
}

// Appends the numbers of the bits that are set, counted from `first`.
void appendIds(std::uint64_t bits, std::size_t first, std::vector<int>& ids)
{
    for (; bits != 0; bits &= bits - 1)
        ids.push_back(static_cast<int>(first + qCountTrailingZeroBits(static_cast<quint64>(bits))));
}

} // namespace

ElementIdBatch::ElementIdBatch(ElementIdSet& set)
    : m_set(set)
    , m_before(set)
{
    m_set.m_listener = {};
}

ElementIdBatch::~ElementIdBatch()
{
    m_set.m_listener = m_before.m_listener;
    std::vector<int> changed;
    (void)m_before.findDifferences(m_set, std::numeric_limits<std::size_t>::max(), changed);
    m_set.notify(changed);
}

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
    for (std::size_t word = 0; word < m_words.size(); ++word)
        appendIds(m_words[word], word * WordBits, ids);
    ids.insert(ids.end(), m_others.begin(), m_others.end());
    return ids;
}

bool ElementIdSet::findDifferences(const ElementIdSet& other, std::size_t most, std::vector<int>& ids) const
{
    const std::size_t words = std::max(m_words.size(), other.m_words.size());
    ids.reserve(ids.size() + std::min(most, m_count + other.m_count));
    for (std::size_t word = 0; word < words && ids.size() <= most; ++word)
        appendIds(wordAt(word) ^ other.wordAt(word), word * WordBits, ids);
    const QSet<int> others = (m_others - other.m_others) + (other.m_others - m_others);
    ids.insert(ids.end(), others.begin(), others.end());
    return ids.size() <= most;
}

// Makes room for the id's bit unless the id belongs to m_others.
void ElementIdSet::makeRoomFor(int id)
{
    if (id < 0)
        return;
    const std::size_t words = std::min(static_cast<unsigned>(id) / WordBits + 1, MostWords);
    if (words > m_words.size())
        m_words.resize(words);
}

bool ElementIdSet::set(int id)
{
    const auto word = static_cast<unsigned>(id) / WordBits;
    makeRoomFor(id);
    if (word < m_words.size() ? !setBit(m_words[word], static_cast<unsigned>(id) % WordBits) : m_others.contains(id))
        return false;
    if (word >= m_words.size())
        m_others.insert(id);
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

// Does what set() does for each id, but keeps the loop free of reallocation and member access.
void ElementIdSet::insert(const std::vector<int>& ids)
{
    const auto largest = std::max_element(ids.begin(), ids.end());
    if (largest != ids.end())
        makeRoomFor(*largest);
    std::vector<int> added(ids.size());
    std::size_t count = 0;
    std::uint64_t* const words = m_words.data();
    const std::size_t wordCount = m_words.size();
    for (int id : ids) {
        const auto word = static_cast<unsigned>(id) / WordBits;
        added[count] = id;
        if (word < wordCount) {
            count += setBit(words[word], static_cast<unsigned>(id) % WordBits) ? 1 : 0;
        } else if (!m_others.contains(id)) {
            m_others.insert(id);
            ++count;
        }
    }
    m_count += count;
    added.resize(count);
    notify(added);
}

void ElementIdSet::remove(int id)
{
    if (unset(id))
        notify({id});
}

void ElementIdSet::assign(const QSet<int>& ids)
{
    ElementIdSet next;
    for (int id : ids)
        next.set(id);
    std::vector<int> changed;
    (void)findDifferences(next, std::numeric_limits<std::size_t>::max(), changed);
    m_words.swap(next.m_words);
    m_others.swap(next.m_others);
    m_count = next.m_count;
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
