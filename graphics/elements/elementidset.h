// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QSet>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace mirn::zelchipview {

// A set of element ids that share a state (selected, highlighted or filtered). It reports which ids a change touched,
// so that only those elements are repainted. The controller owns it. Ids from 0 to about 16 million take one bit each.
class ZELCHIPGUI_EXPORT ElementIdSet final
{
public:
    // Receives the ids whose membership changed.
    using Listener = std::function<void(const std::vector<int>& changed)>;

    // The listener is called after each real change, never with an empty list.
    void setListener(Listener listener);

    // Takes an element id. The time does not depend on the size of the set.
    [[nodiscard]] bool contains(int id) const
    {
        const auto word = static_cast<unsigned>(id) / WordBits;
        return word < m_words.size() ? ((m_words[word] >> (static_cast<unsigned>(id) % WordBits)) & 1) != 0
                                     : !m_others.isEmpty() && m_others.contains(id);
    }

    // Returns whether no element is in this state, and how many are.
    [[nodiscard]] bool isEmpty() const { return m_count == 0; }
    [[nodiscard]] std::size_t size() const { return m_count; }

    // Appends the ids that are in one of the two sets only. Returns false, and may not have appended all, if there are
    // more than `most` in `ids` then.
    [[nodiscard]] bool findDifferences(const ElementIdSet& other, std::size_t most, std::vector<int>& ids) const;

    // Builds a new QSet at each call.
    [[nodiscard]] QSet<int> ids() const;

    // Inserting an id that is present, or removing one that is absent, changes nothing.
    void insert(int id);
    void insert(const std::vector<int>& ids); // one notification for all of them
    void remove(int id);
    void assign(const QSet<int>& ids);
    void clear();

private:
    friend class ElementIdBatch;
    static constexpr unsigned WordBits = 64;

    // set() and unset() return whether anything changed; they do not notify the listener.
    bool set(int id);
    bool unset(int id);
    void makeRoomFor(int id);
    [[nodiscard]] std::vector<int> list() const;
    [[nodiscard]] std::uint64_t wordAt(std::size_t number) const
    {
        return number < m_words.size() ? m_words[number] : 0;
    }
    void notify(const std::vector<int>& changed) const;

    std::vector<std::uint64_t> m_words; // one bit for each id, starting with 0
    QSet<int> m_others; // negative and large ids
    std::size_t m_count = 0;
    Listener m_listener;
};

// While it exists, the listener of a set is not called; at its end, it is called once for all changes together.
class ElementIdBatch final
{
public:
    explicit ElementIdBatch(ElementIdSet& set); // not owned
    ~ElementIdBatch();
    ElementIdBatch(const ElementIdBatch&) = delete;
    ElementIdBatch& operator=(const ElementIdBatch&) = delete;

private:
    ElementIdSet& m_set;
    const ElementIdSet m_before; // with its listener
};

} // namespace mirn::zelchipview
